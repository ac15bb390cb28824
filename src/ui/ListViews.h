#pragma once

#include "ledger/KillLedger.h"
#include "ui/ListSorter.h"
#include "ui/Slaying_Tallies.h"

// The two lists are views of the ledger. They are never updated row by row: whatever changed the
// ledger asks for a refill.
namespace Main {

// Widths of the two columns of either list, in twips.
constexpr int NameColumnWidth = 2300;
constexpr int KillsColumnWidth = 800;

// What a column of lstCharacters, from 1, is sorted as.
SortKind CharacterSortKind(int column);

// Rebuilds lstCharacters from the slots in use, in the order last chosen, and for the lowest of
// them lstMonsters.
void FillCharacterList(const KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Rebuilds lstMonsters with the kills of one character; slot 0 leaves the list empty.
void FillMonsterList(const KillLedger& ledger, Slaying_Tallies& window, int characterSlot);

} // namespace Main
