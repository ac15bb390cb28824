#include "app/Events.h"

#include "datafile/FileCommands.h"
#include "import/ImportCommands.h"
#include "ui/AboutWindow.h"
#include "ui/ClipboardReport.h"
#include "ui/ListEvents.h"
#include "ui/ListViews.h"
#include "ui/NumberBoxes.h"
#include "ui/StatusRule.h"

#include <exception>

namespace Main {
namespace {

void AddColumns(ListView& list, const char* nameHeader) {
    list.ColumnHeaders.push_back({nameHeader});
    list.ColumnHeaders.push_back({"Kills"});
    list.Column(1).Width = NameColumnWidth;
    list.Column(2).Width = KillsColumnWidth;
    list.Column(2).Align = Alignment::Right;
}

// The Enter key and every loss of focus commit what was typed.
template <class Commit>
void WireBox(TextBox& box, Commit commit) {
    box.KeyPress = [commit](int character) {
        if (character == KeyEnter) {
            commit();
        }
    };
    box.LostFocus = commit;
}

} // namespace

void Form_Load(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
               const Desktop& desktop) {
    ledger.ApplicationPath = desktop.AppPath();
    ledger.DataChanged = 0;
    about.Window.Show();
    AddColumns(window.lstCharacters, "Character Name");
    AddColumns(window.lstMonsters, "Monster Name");
}

void WireEvents(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
                const Desktop& desktop) {
    // A failure that leaves a routine ends here; status and pointer are put back.
    const auto trapped = [&window](auto routine) {
        return [&window, routine](auto... arguments) {
            try {
                routine(arguments...);
            } catch (const std::exception&) {
                ClearStatus(window);
            }
        };
    };

    window.Window.Load = [&] { Form_Load(ledger, window, about, desktop); };

    window.mnuFileNew.Click = trapped([&] { mnuFileNew_Click(ledger, window, desktop); });
    window.mnuFileImport.Click = trapped([&] { mnuFileImport_Click(ledger, window, desktop); });
    window.mnuFileBatch.Click = trapped([&] { mnuFileBatch_Click(ledger, window, desktop); });
    window.mnuFileOpen.Click = trapped([&] { mnuFileOpen_Click(ledger, window, desktop); });
    window.mnuFileSave.Click = trapped([&] { mnuFileSave_Click(ledger, window, desktop); });
    window.mnuFileSaveAs.Click = trapped([&] { mnuFileSaveAs_Click(ledger, window, desktop); });
    window.mnuFileExit.Click = trapped([&] { desktop.CloseAllWindows(); });
    window.mnuHelpAbout.Click = trapped([&] { about.Window.Show(); });

    window.cmdClipboard.Click = trapped([&] { SendStatsToClipboard(ledger, window, desktop); });

    window.lstCharacters.Click = trapped([&] { lstCharacters_Click(ledger, window, desktop); });
    window.lstCharacters.ColumnClick =
        trapped([&](int column) { lstCharacters_ColumnClick(window, desktop, column); });
    window.lstCharacters.KeyUp = trapped(
        [&](int keyCode, int /*shift*/) { lstCharacters_KeyUp(ledger, window, desktop, keyCode); });
    window.lstMonsters.KeyUp = trapped(
        [&](int keyCode, int /*shift*/) { lstMonsters_KeyUp(ledger, window, desktop, keyCode); });

    WireBox(window.txtGame, trapped([&] { CommitNumber(ledger.GameNumber, window.txtGame); }));
    WireBox(window.txtParty, trapped([&] { CommitNumber(ledger.PartyNumber, window.txtParty); }));
    WireBox(window.txtTurnStart, trapped([&] { CommitTurn(window.txtTurnStart); }));
    WireBox(window.txtTurnEnd, trapped([&] { CommitTurn(window.txtTurnEnd); }));

    about.Window.Load = trapped([&] { frmAbout_Load(ledger, about, desktop); });
    about.Window.Unloading = trapped([&] { frmAbout_Unload(window); });
    const auto close = [&] { about.Window.Unload(); };
    about.Frame1.Click = close;
    about.Picture1.Click = close;
    for (Label* const label : {&about.Label1, &about.Label2, &about.Label3, &about.Label4}) {
        label->Click = close;
    }
}

} // namespace Main
