#pragma once

#include "import/Scan.h"
#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

#include <string_view>

// The gates decide whether a report counts: it must belong to the ledger's game and party, be in
// the turn filter, and not have been imported before. Only a full turn ledger shows a message. Both
// take the trimmed header line.
namespace Main {

// Returns the turn filter as typed into its boxes; 0 or less is no limit. Throws Failure on a
// number beyond the range of a double.
TurnFilter ReadTurnFilter(const Slaying_Tallies& window);

// Sets the ledger's game and party if they are 0, and refuses a report of any other. Throws Failure
// if a number to be set does not fit 16 bits.
void PartyGate(Scan& scan, KillLedger& ledger, Slaying_Tallies& window, std::string_view line);

// Refuses a report that is outside the filter or in the turn ledger, and adds any other to the turn
// ledger. That happens before the kills after the header are read, so no failure later lets the
// report count twice. Throws if the size of the report cannot be read.
void TurnGate(Scan& scan, KillLedger& ledger, const Desktop& desktop, std::string_view line);

} // namespace Main
