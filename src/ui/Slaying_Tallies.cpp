#include "ui/Slaying_Tallies.h"

#include "platform/Desktop.h"

// All places in twips, relative to the container.
Slaying_Tallies::Slaying_Tallies()
    : Line1{.At = {15, 0, 6885, 15}}, Frame1{.At = {0, 0, 6915, 5745},
                                             .Caption = "Slaying Tallies:"},
      // The row of boxes. The widths leave room for a font a fifth wider than usual.
      Label1{.At = {105, 360, 900, 240}, .Caption = "Game #:"},
      txtGame{.At = {1005, 330, 645, 300}, .TabIndex = 3}, Label2{.At = {1770, 360, 825, 240},
                                                                  .Caption = "Party #:"},
      txtParty{.At = {2595, 330, 645, 300}, .TabIndex = 4}, Label5{.At = {3360, 360, 1050, 240},
                                                                   .Caption = "Turn Start:"},
      txtTurnStart{.At = {4410, 330, 645, 300}, .TabIndex = 5}, Label6{.At = {5175, 360, 945, 240},
                                                                       .Caption = "Turn End:"},
      txtTurnEnd{.At = {6120, 330, 645, 300}, .TabIndex = 6},
      // The lists and what heads them.
      Label3{.At = {60, 660, 3375, 225}, .Caption = "Characters:"}, Label4{.At = {3480, 660, 3375,
                                                                                  225},
                                                                           .Caption =
                                                                               "Monster Kills:"},
      cmdClipboard{.At = {2340, 5370, 2235, 330}, .TabIndex = 2, .Caption = "Send to Clipboard"},
      txtClipboard{.Visible = false}, lblStatus{.At = {45, 5775, 6855, 255}},

      mnuFile{.Caption = "File"}, mnuFileNew{.Parent = &mnuFile, .Caption = "&Blank all data"},
      mnuFileSep1{.Parent = &mnuFile, .Caption = "-"},
      mnuFileImport{.Parent = &mnuFile, .Caption = "&Import HTML turn for kills"},
      mnuFileBatch{.Parent = &mnuFile, .Caption = "&Batch Import HTML for kills"},
      mnuFileSep2{.Parent = &mnuFile, .Caption = "-"}, mnuFileOpen{.Parent = &mnuFile,
                                                                   .Caption = "&Open saved data"},
      mnuFileSave{.Parent = &mnuFile, .Caption = "&Save data"}, mnuFileSaveAs{.Parent = &mnuFile,
                                                                              .Caption =
                                                                                  "Save data &As"},
      mnuFileExit{.Parent = &mnuFile, .Caption = "E&xit program"}, mnuHelp{.Caption = "Help"},
      mnuHelpAbout{.Parent = &mnuHelp, .Caption = "&About Report Digest"} {
    lstCharacters.At = {45, 885, 3405, 4455};
    lstCharacters.TabIndex = 0;
    lstMonsters.At = {3465, 885, 3405, 4455};
    lstMonsters.TabIndex = 1;

    Window.Caption = ApplicationTitle;
    Window.ClientWidth = 6930;
    Window.ClientHeight = 6060;
    // A label stands before the control that it names.
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
