#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The lists are views of the ledger. They are never updated row by row: each command that
// changes the ledger refills them at its end.
namespace Main {

// Sorts lstCharacters by a column, from 1. Throws std::out_of_range if there is none.
void SortCharacters(Slaying_Tallies& window, const Desktop& desktop, int column, bool ascending);

// Rebuilds lstCharacters, in the order that the player last chose, and lstMonsters for the lowest
// character slot in use. Throws std::out_of_range if the lists have no columns yet.
void FillCharacterList(const KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Rebuilds lstMonsters with the kills of one character; for slot 0 the list is empty.
void FillMonsterList(const KillLedger& ledger, Slaying_Tallies& window, int CharacterSlot);

} // namespace Main
