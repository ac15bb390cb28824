#include "datafile/FileCommands.h"

#include "controls/Desktop.h"
#include "datafile/DataFile.h"
#include "files/Files.h"
#include "text/Numbers.h"
#include "ui/ListViews.h"
#include "ui/StatusRule.h"

#include <exception>

namespace Main {
namespace {

constexpr const char* DataFileFilter = "Marrowquill Kill Files (*.qvt)|*.qvt";

bool IsSure(const Desktop& desktop, const char* prompt, Icon sign) {
    return desktop.ShowMessage({prompt, "Sure?", Buttons::YesNo, sign}) == Answer::Yes;
}

void ShowNumbers(const KillLedger& ledger, Slaying_Tallies& window) {
    window.txtGame.Text = Numbers::PlainDigits(ledger.GameNumber);
    window.txtParty.Text = Numbers::PlainDigits(ledger.PartyNumber);
}

void SaveData(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    if (ledger.SaveAsRequested == 1) {
        CommonDialog& dialog = window.cmdSaveMap;
        dialog.DialogTitle = "Save Data File As...";
        dialog.Filter = DataFileFilter;
        dialog.FileName.clear();
        if (!desktop.ShowSave(dialog) || !Files::HoldsSeparator(dialog.FileName)) {
            return;
        }
        if (Files::FileExists(dialog.FileName) &&
            !IsSure(desktop, "Are you sure you wish to over-write this file?", Icon::Question)) {
            return;
        }
        ledger.DataFilePath = dialog.FileName;
    }
    ledger.DataChanged = 0;
    ShowStatus(window, "Please wait, saving data...");
    WriteDataFile(ledger, ledger.DataFilePath);
    ClearStatus(window);
}

void LoadData(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    CommonDialog& dialog = window.cmdLoadMap;
    dialog.DialogTitle = "Load Data File...";
    dialog.Filter = DataFileFilter;
    if (!desktop.ShowOpen(dialog) || !Files::HoldsSeparator(dialog.FileName)) {
        return;
    }
    ledger.DataChanged = 0;
    ShowStatus(window, "Please wait, loading data...");
    ledger.DataFilePath = dialog.FileName;
    if (!ReadDataFile(ledger, ledger.DataFilePath)) {
        desktop.ShowMessage({"Sorry, this data file is from early beta versions, and is no longer "
                             "supported."});
    }
    ClearStatus(window);
}

} // namespace

void mnuFileNew_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    if (!IsSure(desktop, "Are you sure you wish to blank all data?", Icon::Question)) {
        return;
    }
    BlankLedger(ledger);
    ShowNumbers(ledger, window);
    FillCharacterList(ledger, window, desktop);
    FillMonsterList(ledger, window, 0);
    ClearStatus(window);
}

void mnuFileOpen_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    if (ledger.DataChanged == 1 &&
        IsSure(desktop, "Are you sure you wish to load a new data file without saving?",
               Icon::Stop)) {
        ledger.DataChanged = 0;
    }
    if (ledger.DataChanged == 0) {
        try {
            LoadData(ledger, window, desktop);
        } catch (const std::exception&) {
            ClearStatus(window); // and show what was loaded
        }
        ShowNumbers(ledger, window);
        FillCharacterList(ledger, window, desktop);
    }
}

void mnuFileSave_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    ledger.SaveAsRequested = Files::HoldsSeparator(ledger.DataFilePath) ? 0 : 1;
    SaveData(ledger, window, desktop);
}

void mnuFileSaveAs_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    ledger.SaveAsRequested = 1;
    SaveData(ledger, window, desktop);
}

} // namespace Main
