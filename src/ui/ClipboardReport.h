#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

namespace Main {

// Puts the whole ledger on the clipboard as plain text: what each character killed, then what the
// party killed of each monster, both in slot order. Group totals wrap at 16 bits, and one that
// is not above 0 has no line. Fails when the clipboard cannot be opened.
void SendStatsToClipboard(const KillLedger& ledger, Slaying_Tallies& window,
                          const Desktop& desktop);

} // namespace Main
