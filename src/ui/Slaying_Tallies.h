#pragma once

#include "controls/Controls.h"
#include "ui/ListSorter.h"

#include <array>

// A column of a list.
struct ListColumn {
    const char* Header;
    int Width; // twips
    Alignment Align = Alignment::Left;
    Main::SortKind Sort = Main::SortText; // by a click on the header, in lstCharacters only
};

// The main window: its controls with their places (left, top, width, height, in twips, inside their
// frame) and captions, from the top down. No logic.
struct Slaying_Tallies {
    Slaying_Tallies();

    Form Window;

    Line Line1{.At = {15, 0, 6885, 15}};
    Frame Frame1{.At = {0, 0, 6915, 5745}, .Caption = "Slaying Tallies:"};

    // The widths leave room for a font a fifth wider than usual.
    Label Label1{.At = {75, 360, 900, 240}, .Caption = "Game #:"};
    TextBox txtGame{.At = {975, 330, 690, 300}, .TabIndex = 3};
    Label Label2{.At = {1770, 360, 825, 240}, .Caption = "Party #:"};
    TextBox txtParty{.At = {2595, 330, 690, 300}, .TabIndex = 4};
    Label Label5{.At = {3390, 360, 1050, 240}, .Caption = "Turn Start:"};
    TextBox txtTurnStart{.At = {4440, 330, 690, 300}, .TabIndex = 5};
    Label Label6{.At = {5235, 360, 960, 240}, .Caption = "Turn End:"};
    TextBox txtTurnEnd{.At = {6195, 330, 690, 300}, .TabIndex = 6};

    // The headings begin where the texts in their lists do.
    Label Label3{.At = {75, 660, 3360, 225}, .Caption = "Characters:"};
    Label Label4{.At = {3525, 660, 3360, 225}, .Caption = "Monster Kills:"};
    ListView lstCharacters{{30, 885, 3405, 4455}, 0};
    ListView lstMonsters{{3480, 885, 3405, 4455}, 1};

    Button cmdClipboard{{2340, 5370, 2235, 330}, 2, "Send to Clipboard"};
    TextBox txtClipboard{.Visible = false};
    Label lblStatus{.At = {75, 5775, 6855, 255}};

    // File dialogs.
    CommonDialog cmdImportTurn;
    CommonDialog cmdLoadMap;
    CommonDialog cmdSaveMap;

    Menu mnuFile{.Caption = "File"};
    Menu mnuFileNew{.Parent = &mnuFile, .Caption = "&Blank all data"};
    Menu mnuFileSep1{.Parent = &mnuFile, .Caption = "-"};
    Menu mnuFileImport{.Parent = &mnuFile, .Caption = "&Import HTML turn for kills"};
    Menu mnuFileBatch{.Parent = &mnuFile, .Caption = "&Batch Import HTML for kills"};
    Menu mnuFileSep2{.Parent = &mnuFile, .Caption = "-"};
    Menu mnuFileOpen{.Parent = &mnuFile, .Caption = "&Open saved data"};
    Menu mnuFileSave{.Parent = &mnuFile, .Caption = "&Save data"};
    Menu mnuFileSaveAs{.Parent = &mnuFile, .Caption = "Save data &As"};
    Menu mnuFileExit{.Parent = &mnuFile, .Caption = "E&xit program"};
    Menu mnuHelp{.Caption = "Help"};
    Menu mnuHelpAbout{.Parent = &mnuHelp, .Caption = "&About Report Digest"};

    // The columns of lstCharacters and of lstMonsters, from the left.
    static constexpr auto CharacterColumns = std::to_array<ListColumn>(
        {{"Character Name", 2300}, {"Kills", 800, Alignment::Right, Main::SortNumber}});
    static constexpr auto MonsterColumns =
        std::to_array<ListColumn>({{"Monster Name", 2300}, {"Kills", 800, Alignment::Right}});

    // For each column of lstCharacters: whether the last header click sorted it in ascending order.
    std::array<bool, CharacterColumns.size()> SortAscending{};
};
