#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// What the player does in the lists. The list control raises row events only while a row is
// selected.
namespace Main {

// Shows the kills of the selected character and puts the monster columns back to their widths.
void lstCharacters_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Up and down: shows the kills of the character that the key moved to. Delete: takes the selected
// character out of the ledger, if the player is sure.
void lstCharacters_KeyUp(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                         int keyCode);

// Delete: takes the selected character's kills of the selected monster out of the ledger, if the
// player is sure.
void lstMonsters_KeyUp(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                       int keyCode);

// Sorts by the column, from 1; each further click on the same header turns the order round.
void lstCharacters_ColumnClick(Slaying_Tallies& window, const Desktop& desktop, int column);

} // namespace Main
