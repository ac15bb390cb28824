#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The two import entries of the File menu. Each ends without a message, whatever came of it; a
// failure leaves the lists as they were.
namespace Main {

// Imports the one report that the player chooses.
void mnuFileImport_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Imports all reports of a folder, which the player chooses by any file in it. A failure of one
// report ends the batch.
void mnuFileBatch_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

} // namespace Main
