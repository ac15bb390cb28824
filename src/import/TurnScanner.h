#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

#include <filesystem>

namespace Main {

// Imports one report: reads its lines, hands the headers to the gates and the kill sentences to
// their parser. What came of it stands in the ledger and in the boxes; a refused report passes
// in silence. DataChanged becomes 1 whatever happens.
// Fails when the report cannot be opened or read, when it ends in the middle of a sentence, and
// as the gates and the parser do; what was done before stays done.
void ProcessTurn(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                 const std::filesystem::path& report);

} // namespace Main
