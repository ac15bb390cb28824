#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

namespace Main {

// Puts the ledger on the clipboard as plain text: the kills of each character, then those of the
// whole party, both in slot order. Group totals wrap at 16 bits; one of 0 or less has no line.
// Throws if the clipboard cannot be opened.
void SendStatsToClipboard(const KillLedger& ledger, Slaying_Tallies& window,
                          const Desktop& desktop);

} // namespace Main
