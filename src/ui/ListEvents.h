#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The events of the lists. Clicks and keys arrive only while a row is selected.
namespace Main {

// Shows the kills of the selected character and resets the widths of the monster columns.
void lstCharacters_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Up and down: shows the kills of the character that is now selected. Delete: deletes the selected
// character if the player answers Yes.
void lstCharacters_KeyUp(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                         int keyCode, int shift);

// Delete: deletes the selected character's kills of the selected monster if the player answers Yes.
void lstMonsters_KeyUp(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                       int keyCode, int shift);

// Sorts by a column, from 1. Each click on the same header reverses the order.
void lstCharacters_ColumnClick(Slaying_Tallies& window, const Desktop& desktop, int column);

} // namespace Main
