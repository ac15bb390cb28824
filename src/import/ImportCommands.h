#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The import entries of the File menu. Both throw what the dialog or ProcessTurn throws, and then
// do not refill the lists.
namespace Main {

// Imports one report, chosen by the player.
void mnuFileImport_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Imports all reports of the folder of the chosen file. A failure in one report ends the batch.
void mnuFileBatch_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

} // namespace Main
