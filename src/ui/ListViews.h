#pragma once

#include "ledger/KillLedger.h"
#include "ui/ListSorter.h"
#include "ui/Slaying_Tallies.h"

// The lists are views of the ledger. They are never updated row by row: each command that
// changes the ledger refills them at its end.
namespace Main {

// Column widths of both lists, in twips.
constexpr int NameColumnWidth = 2300;
constexpr int KillsColumnWidth = 800;

// How a column of lstCharacters, from 1, is sorted.
SortKind CharacterSortKind(int column);

// Rebuilds lstCharacters, in the order that the player last chose, and lstMonsters for the lowest
// character slot in use.
void FillCharacterList(const KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Rebuilds lstMonsters with the kills of one character; for slot 0 the list is empty.
void FillMonsterList(const KillLedger& ledger, Slaying_Tallies& window, int CharacterSlot);

} // namespace Main
