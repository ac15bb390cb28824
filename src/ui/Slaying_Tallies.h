#pragma once

#include "platform/Controls.h"

#include <array>

// The main window: its controls with their captions and places, and no logic.
struct Slaying_Tallies {
    Slaying_Tallies();

    Form Window;

    Line Line1;
    Frame Frame1;
    Label Label1; // names txtGame
    TextBox txtGame;
    Label Label2; // names txtParty
    TextBox txtParty;
    Label Label5; // names txtTurnStart
    TextBox txtTurnStart;
    Label Label6; // names txtTurnEnd
    TextBox txtTurnEnd;
    Label Label3; // heads lstCharacters
    Label Label4; // heads lstMonsters
    ListView lstCharacters;
    ListView lstMonsters;
    Button cmdClipboard;
    TextBox txtClipboard; // never shown
    Label lblStatus;

    CommonDialog cmdImportTurn;
    CommonDialog cmdLoadMap;
    CommonDialog cmdSaveMap;

    Menu mnuFile;
    Menu mnuFileNew;
    Menu mnuFileSep1;
    Menu mnuFileImport;
    Menu mnuFileBatch;
    Menu mnuFileSep2;
    Menu mnuFileOpen;
    Menu mnuFileSave;
    Menu mnuFileSaveAs;
    Menu mnuFileExit;
    Menu mnuHelp;
    Menu mnuHelpAbout;

    // Of the two columns of lstCharacters: whether the last header click sorted it upwards.
    std::array<bool, 2> SortAscending{};
};
