#pragma once

#include "import/Scan.h"
#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

#include <string_view>

// The gates decide whether a report counts: it must be of the ledger's game and party, lie in
// the turn filter of the window, and not have been imported before. They refuse without a word,
// a full turn ledger excepted. Each is given the trimmed header line.
namespace Main {

// The turn filter that stands in its two boxes. Fails (Overflow) on a number beyond a double.
TurnFilter ReadTurnFilter(const Slaying_Tallies& window);

// Fixes game and party in a ledger that has none, and refuses a report of another. Fails
// (Overflow) on a number to be fixed that does not fit 16 bits.
void PartyGate(Scan& scan, KillLedger& ledger, Slaying_Tallies& window, std::string_view line);

// Takes the turn number; refuses a report outside the filter or already in the turn ledger, and
// enters any other there, before any kill behind the header is read. Fails when the size of the
// report cannot be taken.
void TurnGate(Scan& scan, KillLedger& ledger, const Desktop& desktop, std::string_view line);

} // namespace Main
