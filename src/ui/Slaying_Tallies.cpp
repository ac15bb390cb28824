#include "ui/Slaying_Tallies.h"

#include "controls/Desktop.h"

Slaying_Tallies::Slaying_Tallies() {
    Window.Caption = ApplicationTitle;
    Window.ClientWidth = 6930;
    Window.ClientHeight = 6060;
    // The control, and the frame that it is in. A label comes before the control that it names.
    Window.Controls = {
        {&Frame1},
        {&Line1},
        {&Label1, &Frame1},
        {&txtGame, &Frame1},
        {&Label2, &Frame1},
        {&txtParty, &Frame1},
        {&Label5, &Frame1},
        {&txtTurnStart, &Frame1},
        {&Label6, &Frame1},
        {&txtTurnEnd, &Frame1},
        {&Label3, &Frame1},
        {&lstCharacters, &Frame1},
        {&Label4, &Frame1},
        {&lstMonsters, &Frame1},
        {&cmdClipboard, &Frame1},
        {&txtClipboard, &Frame1},
        {&lblStatus},
        {&mnuFile},
        {&mnuFileNew},
        {&mnuFileSep1},
        {&mnuFileImport},
        {&mnuFileBatch},
        {&mnuFileSep2},
        {&mnuFileOpen},
        {&mnuFileSave},
        {&mnuFileSaveAs},
        {&mnuFileExit},
        {&mnuHelp},
        {&mnuHelpAbout},
    };
}
