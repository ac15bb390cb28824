#include "ui/ListEvents.h"

#include "controls/Desktop.h"
#include "ledger/Corrections.h"
#include "ledger/MonsterNames.h"
#include "ui/ListViews.h"

#include <exception>
#include <string>

namespace Main {
namespace {

int SelectedCharacter(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    return FindCharacter(ledger, desktop, window.lstCharacters.SelectedItem()->Text);
}

void ShowSelectedCharacter(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    FillMonsterList(ledger, window, SelectedCharacter(ledger, window, desktop));
}

bool IsSureToDelete(const Desktop& desktop, const char* question) {
    const Message message{std::string(question) +
                              "\r\nRemember you cannot re-import turns already imported without "
                              "blanking all data!",
                          "Sure?", Buttons::YesNo, Icon::Question};
    return desktop.ShowMessage(message) == Answer::Yes;
}

void DeleteSelectedKills(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    const int c = SelectedCharacter(ledger, window, desktop);
    const int m = ResolveMonster(ledger, desktop, window.lstMonsters.SelectedItem()->Text);
    DeleteKills(ledger, c, m);
}

} // namespace

void lstCharacters_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    ShowSelectedCharacter(ledger, window, desktop);
    int number = 0;
    for (const ListColumn& column : Slaying_Tallies::MonsterColumns) {
        window.lstMonsters.Column(++number).Width = column.Width;
    }
}

void lstCharacters_KeyUp(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                         int keyCode, int /*shift*/) {
    if (keyCode == KeyUpArrow || keyCode == KeyDownArrow) {
        ShowSelectedCharacter(ledger, window, desktop);
    }
    if (keyCode == KeyDelete &&
        IsSureToDelete(desktop, "Really delete this character from the list?")) {
        DeleteCharacter(ledger, SelectedCharacter(ledger, window, desktop));
        FillCharacterList(ledger, window, desktop);
    }
}

void lstMonsters_KeyUp(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                       int keyCode, int /*shift*/) {
    if (keyCode == KeyDelete &&
        IsSureToDelete(desktop, "Really delete this characters kills for this monster?")) {
        try {
            DeleteSelectedKills(ledger, window, desktop);
        } catch (const std::exception&) {
            // Nothing is deleted, but a monster may have been renamed: refill the lists.
        }
        FillCharacterList(ledger, window, desktop);
    }
}

void lstCharacters_ColumnClick(Slaying_Tallies& window, const Desktop& desktop, int column) {
    bool& ascending = window.SortAscending.at(static_cast<std::size_t>(column) - 1);
    ascending = !ascending;
    SortCharacters(window, desktop, column, ascending);
}

} // namespace Main
