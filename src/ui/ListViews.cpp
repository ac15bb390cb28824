#include "ui/ListViews.h"

#include "text/Numbers.h"

namespace Main {
namespace {

void AddRow(ListView& list, const std::string& name, std::int32_t kills) {
    list.Add(name).ListSubItems.at(0).Text = Numbers::NumberText(kills);
}

} // namespace

void SortCharacters(Slaying_Tallies& window, const Desktop& desktop, int column, bool ascending) {
    const auto& sorted = Slaying_Tallies::CharacterColumns.at(static_cast<std::size_t>(column) - 1);
    SortListView(desktop, window.lstCharacters, column, sorted.Sort, ascending);
}

void FillCharacterList(const KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    ListView& list = window.lstCharacters;
    int firstSlot = 0;
    list.Enabled = false;
    list.Clear();
    for (int c = 1; c <= MaxCharacters; ++c) {
        if (!ledger.CharacterNames[c].empty()) {
            if (firstSlot == 0) {
                firstSlot = c;
            }
            AddRow(list, ledger.CharacterNames[c], ledger.CharacterKills[c]);
        }
    }
    if (firstSlot != 0) {
        list.Enabled = true;
    }
    FillMonsterList(ledger, window, firstSlot);
    if (list.Sorted()) {
        SortCharacters(window, desktop, list.SortKey + 1, list.SortOrder == 0);
    }
}

void FillMonsterList(const KillLedger& ledger, Slaying_Tallies& window, int CharacterSlot) {
    ListView& list = window.lstMonsters;
    list.Enabled = false;
    list.Clear();
    if (CharacterSlot > 0) {
        for (int m = 1; m <= MaxMonsters; ++m) {
            const std::int32_t kills = ledger.KillTable(CharacterSlot, m);
            if (kills >= 1 && !ledger.MonsterNames[m].empty()) {
                AddRow(list, ledger.MonsterNames[m], kills);
            }
        }
    }
    if (list.Count() > 0) {
        list.Enabled = true;
    }
}

} // namespace Main
