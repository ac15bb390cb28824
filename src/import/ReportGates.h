#pragma once

#include "import/Scan.h"
#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

#include <string_view>

// The gates decide whether a report counts: it must belong to the ledger's game and party, be in
// the turn filter, and not have been imported before. A report is scanned from the top, and each
// header line goes to its gate; a refusal holds for the rest of the report. A full turn ledger
// shows a message, as does a report that cannot be read for its fingerprint; nothing else does.
// Both gates take the trimmed header line, with its fields at fixed positions:
//     Party# 1047 of Game # 12
//     Turn#  0031
namespace Main {

// Returns the turn filter as typed into its boxes; 0 or less is no limit. Throws Failure on a
// number beyond the range of a double.
TurnFilter ReadTurnFilter(const Slaying_Tallies& window);

// Game first, then party: sets the ledger's number if it is 0, and refuses a report of any other.
// Throws Failure if a number to be set does not fit 16 bits.
void PartyGate(Scan& scan, KillLedger& ledger, Slaying_Tallies& window, std::string_view line);

// Refuses a report that is outside the filter or in the turn ledger, and adds any other to the turn
// ledger. That happens before the kills after the header are read, so no failure later lets the
// report count twice. Throws if the size of the report cannot be read.
void TurnGate(Scan& scan, KillLedger& ledger, const Desktop& desktop, std::string_view line);

} // namespace Main
