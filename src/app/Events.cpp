#include "app/Events.h"

#include "controls/Desktop.h"
#include "datafile/FileCommands.h"
#include "import/ImportCommands.h"
#include "ui/ClipboardReport.h"
#include "ui/ListEvents.h"
#include "ui/NumberBoxes.h"
#include "ui/StatusRule.h"

#include <exception>
#include <span>

namespace Main {
namespace {

void AddColumns(ListView& list, std::span<const ListColumn> columns) {
    for (const ListColumn& column : columns) {
        list.ColumnHeaders.push_back({column.Header, column.Width, column.Align});
    }
}

} // namespace

void Form_Load(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
               const Desktop& desktop) {
    ledger.ApplicationPath = desktop.AppPath();
    ledger.DataChanged = 0;
    about.Window.Show();
    AddColumns(window.lstCharacters, Slaying_Tallies::CharacterColumns);
    AddColumns(window.lstMonsters, Slaying_Tallies::MonsterColumns);
}

void WireEvents(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
                const Desktop& desktop) {
    // An exception ends its command here, without a message.
    const auto trap = [&window](auto& event, auto work) {
        event = [&window, work](auto... arguments) {
            try {
                work(arguments...);
            } catch (const std::exception&) {
                ClearStatus(window);
            }
        };
    };
    // For the routines that take ledger, window and desktop.
    const auto wire = [&](auto& event, auto routine) {
        trap(event, [&ledger, &window, &desktop, routine](auto... arguments) {
            routine(ledger, window, desktop, arguments...);
        });
    };
    // The Enter key and any loss of the focus commit a number.
    const auto wireBox = [&trap](TextBox& box, auto commit) {
        trap(box.LostFocus, commit);
        trap(box.KeyPress, [commit](int character) {
            if (character == KeyEnter) {
                commit();
            }
        });
    };

    window.Window.Load = [&] { Form_Load(ledger, window, about, desktop); };

    wire(window.mnuFileNew.Click, mnuFileNew_Click);
    wire(window.mnuFileImport.Click, mnuFileImport_Click);
    wire(window.mnuFileBatch.Click, mnuFileBatch_Click);
    wire(window.mnuFileOpen.Click, mnuFileOpen_Click);
    wire(window.mnuFileSave.Click, mnuFileSave_Click);
    wire(window.mnuFileSaveAs.Click, mnuFileSaveAs_Click);
    trap(window.mnuFileExit.Click, [&] { desktop.CloseAllWindows(); });
    trap(window.mnuHelpAbout.Click, [&] { about.Window.Show(); });

    wireBox(window.txtGame, [&] { CommitNumber(ledger.GameNumber, window.txtGame); });
    wireBox(window.txtParty, [&] { CommitNumber(ledger.PartyNumber, window.txtParty); });
    wireBox(window.txtTurnStart, [&] { CommitTurn(window.txtTurnStart); });
    wireBox(window.txtTurnEnd, [&] { CommitTurn(window.txtTurnEnd); });

    wire(window.lstCharacters.Click, lstCharacters_Click);
    trap(window.lstCharacters.ColumnClick,
         [&](int column) { lstCharacters_ColumnClick(window, desktop, column); });
    wire(window.lstCharacters.KeyUp, lstCharacters_KeyUp);
    wire(window.lstMonsters.KeyUp, lstMonsters_KeyUp);
    wire(window.cmdClipboard.Click, SendStatsToClipboard);

    trap(about.Window.Load, [&] { frmAbout_Load(ledger, about, desktop); });
    trap(about.Window.Unloading, [&] { frmAbout_Unload(window); });
    const auto close = [&about] { about.Window.Unload(); };
    about.Frame1.Click = close;
    about.Picture1.Click = close;
    about.Label1.Click = close;
    about.Label2.Click = close;
    about.Label3.Click = close;
    about.Label4.Click = close;
}

} // namespace Main
