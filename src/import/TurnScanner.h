#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

#include <filesystem>

namespace Main {

// Imports one report into the ledger. A refused report is no failure. Sets DataChanged to 1
// whatever happens. Throws if the report cannot be opened or read, if it ends while a sentence can
// still go on, and as the gates and ParseKillSentence do; what was done before stays done.
void ProcessTurn(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                 const std::filesystem::path& report);

} // namespace Main
