#include "import/ImportCommands.h"

#include "import/TurnScanner.h"
#include "platform/Files.h"
#include "ui/ListViews.h"
#include "ui/StatusRule.h"

#include <exception>
#include <string_view>

namespace Main {
namespace {

// What both commands share: the dialog, the status, the one trap. `import` is given the path of
// the chosen file.
template <class Import>
void ImportChosen(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                  std::string_view dialogTitle, std::string_view status, Import import) {
    try {
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
    } catch (const std::exception&) {
        // Ends without a word: what was credited stays, and so do the lists.
    }
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
                     const std::filesystem::path importFolder = picked.parent_path();
                     for (const std::string_view extension : {".htm", ".html"}) {
                         for (const auto& report : Files::InFolder(importFolder, extension)) {
                             ProcessTurn(ledger, window, desktop, report);
                         }
                     }
                 });
}

} // namespace Main
