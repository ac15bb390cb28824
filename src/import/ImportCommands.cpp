#include "import/ImportCommands.h"

#include "controls/Desktop.h"
#include "files/Files.h"
#include "import/TurnScanner.h"
#include "ui/ListViews.h"
#include "ui/StatusRule.h"

#include <string_view>

namespace Main {
namespace {

// Lets the player choose a file and passes its path to `import`.
template <class Import>
void ImportChosen(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                  std::string_view dialogTitle, std::string_view status, Import import) {
    CommonDialog& dialog = window.cmdImportTurn;
    dialog.DialogTitle = dialogTitle;
    dialog.Filter = "HTML File (*.html)|*.htm*";
    dialog.Flags = CommonDialog::FileMustExist | CommonDialog::HideReadOnly;
    if (!desktop.ShowOpen(dialog) || !Files::HoldsSeparator(dialog.FileName)) {
        return;
    }
    ShowStatus(window, status);
    import(dialog.FileName);
    FillCharacterList(ledger, window, desktop);
    ClearStatus(window);
}

} // namespace

void mnuFileImport_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    ImportChosen(
        ledger, window, desktop, "Import HTML Turn...", "Please wait, importing turn...",
        [&](const std::filesystem::path& report) { ProcessTurn(ledger, window, desktop, report); });
}

void mnuFileBatch_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    ImportChosen(ledger, window, desktop, "Select folder with HTML turns...",
                 "Please wait, batch importing turns...", [&](const std::filesystem::path& picked) {
                     const std::filesystem::path ImportFolder = picked.parent_path();
                     for (const std::string_view extension : {".htm", ".html"}) {
                         for (const auto& report : Files::InFolder(ImportFolder, extension)) {
                             ProcessTurn(ledger, window, desktop, report);
                         }
                     }
                 });
}

} // namespace Main
