#include "ScriptedDesktop.h"

namespace {

// The rows of a list, in each the two cells as they are.
std::string Rows(const ListView& list) {
    std::string rows;
    for (int row = 1; row <= list.Count(); ++row) {
        rows += list.Item(row).Text + list.Item(row).ListSubItems[0].Text + ';';
    }
    return rows;
}

// Bela in slot 3 and Ciri in slot 5, both with kills; Dora in slot 99 with none.
struct ListWorld : World {
    ListWorld() {
        for (const auto& [c, name, kills] :
             {std::tuple(3, "Bela", 12), {5, "Ciri", -1}, {99, "Dora", 0}}) {
            Ledger.CharacterNames[c] = name;
            Ledger.CharacterKills[c] = kills;
        }
        for (const auto& [m, name, belas, ciris] : {std::tuple(1, "Rat", 2, 0),
                                                    {2, "Bat", -1, 1},
                                                    {5000, "", 4, 4},
                                                    {9999, "Cat", 7, 0}}) {
            Ledger.MonsterNames[m] = name;
            Ledger.KillTable(3, m) = belas;
            Ledger.KillTable(5, m) = ciris;
        }
        Refill();
    }
    ListView& Characters = Window.lstCharacters;
    ListView& Monsters = Window.lstMonsters;
};

} // namespace

TEST(MainWindow, StartsEmptyWithItsColumns) {
    World world;
    Slaying_Tallies& window = world.Window;
    window.Window.Show(); // loads no second time
    EXPECT_EQ(world.Ledger.ApplicationPath, "/opt/tallies");
    for (auto [list, header] : {std::pair(&window.lstCharacters, "Character Name"),
                                {&window.lstMonsters, "Monster Name"}}) {
        ASSERT_EQ(list->ColumnHeaders.size(), 2U);
        EXPECT_EQ(list->Column(1).Text + list->Column(2).Text, std::string(header) + "Kills");
        EXPECT_EQ(list->Column(1).Width, 2300);
        EXPECT_EQ(list->Column(2).Width, 800);
        EXPECT_EQ(list->Column(2).Align.Get(), Alignment::Right);
        EXPECT_EQ(list->Count(), 0);
    }
    for (const TextBox* box : {&window.txtGame, &window.txtParty, &window.txtTurnStart}) {
        EXPECT_EQ(box->Text.Get(), "");
    }
}

TEST(Lists, ShowTheLedgerAfterARefill) {
    ListWorld world;
    EXPECT_EQ(Rows(world.Characters), "Bela 12;Ciri-1;Dora 0;");
    EXPECT_EQ(Rows(world.Monsters), "Rat 2;Cat 7;");
    EXPECT_EQ(world.Characters.SelectedRow() + world.Monsters.SelectedRow(), 2);
    EXPECT_TRUE(world.Characters.Enabled && world.Monsters.Enabled);
    // The selection is forgotten; the first character may have no kills.
    world.Characters.Select(2);
    world.Ledger.CharacterNames[1] = "Aron";
    world.Refill();
    EXPECT_EQ(world.Characters.SelectedItem()->Text, "Aron");
    EXPECT_EQ(Rows(world.Monsters), "");
    EXPECT_TRUE(world.Characters.Enabled && !world.Monsters.Enabled);

    Main::BlankLedger(world.Ledger);
    world.Refill();
    EXPECT_EQ(Rows(world.Characters) + Rows(world.Monsters), "");
    EXPECT_FALSE(world.Characters.Enabled || world.Monsters.Enabled);
}

TEST(Lists, FollowTheSelectedCharacter) {
    ListWorld world;
    world.Monsters.Column(1).Width = world.Monsters.Column(2).Width = 100;
    world.Characters.Select(2);
    for (const int otherKey : {13, 33, 34, 35, 36, 37, 39, 67, 112}) {
        world.Characters.RaiseKeyUp(otherKey, 0);
        EXPECT_EQ(Rows(world.Monsters), "Rat 2;Cat 7;") << otherKey;
    }
    world.Characters.RaiseKeyUp(40, 0);
    EXPECT_EQ(Rows(world.Monsters), "Bat 1;");
    world.Characters.Select(1);
    world.Characters.RaiseKeyUp(38, 1);
    EXPECT_EQ(Rows(world.Monsters), "Rat 2;Cat 7;");
    EXPECT_EQ(world.Monsters.Column(1).Width, 100);
    world.Characters.Select(3);
    world.Characters.RaiseClick();
    EXPECT_EQ(Rows(world.Monsters), "");
    EXPECT_EQ(world.Monsters.Column(1).Width, 2300);
    EXPECT_EQ(world.Monsters.Column(2).Width, 800);
}

TEST(Lists, RaiseRowEventsOnlyWithARowAndWhileOn) {
    ListWorld world;
    std::string raised;
    world.Characters.Click = [&] { raised += 'c'; };
    world.Characters.KeyUp = [&](int, int) { raised += 'k'; };
    world.Characters.ColumnClick = [&](int column) { raised += std::to_string(column); };
    const auto raiseAll = [&] {
        world.Characters.RaiseClick();
        world.Characters.RaiseKeyUp(46, 0);
        world.Characters.RaiseColumnClick(2);
        return std::exchange(raised, "");
    };
    EXPECT_EQ(raiseAll(), "ck2");
    world.Characters.Enabled = false;
    EXPECT_EQ(raiseAll(), "2");
    world.Characters.Clear();
    world.Characters.Enabled = true; // as before the first refill
    world.Characters.Select(1);
    EXPECT_EQ(raiseAll(), "2");
}

TEST(ListSorter, SortsByTextNumberAndDate) {
    const Desktop services = ScriptedDesktop().Services;
    const auto sorted = [&services](Main::SortKind kind, bool ascending, const std::string& cells) {
        ListView list;
        list.ColumnHeaders.resize(3);
        for (const std::string& cell : Fields(cells, '|')) {
            ListItem& row = list.Add(cell + "!");
            row.ListSubItems[1] = {cell, std::string("tag\0" + cell).append(1, '\0')};
        }
        list.Select(1);
        const std::string selected = list.SelectedItem()->Text;
        Main::SortListView(services, list, 3, kind, ascending);
        EXPECT_EQ(list.SelectedItem()->Text, selected);
        std::string order;
        for (int l = 1; l <= list.Count(); ++l) {
            const ListItem& row = list.Item(l);
            const std::string& cell = row.ListSubItems[1].Text;
            EXPECT_EQ(row.Text, cell + "!");
            EXPECT_EQ(row.ListSubItems[1].Tag, std::string("tag\0" + cell).append(1, '\0'));
            order += (l == 1 ? "" : "|") + cell;
        }
        EXPECT_EQ(list.SortKey, 2);
        EXPECT_EQ(list.SortOrder, ascending ? 0 : 1);
        return order;
    };
    using Main::SortDate, Main::SortNumber, Main::SortText;
    for (const auto& [kind, cells, up] :
         {std::tuple(SortText, "b|A|100|a|9|B|\xDC|&|\xFC", "&|100|9|A|a|b|B|\xDC|\xFC"),
          {SortNumber, "10|9|100|2.5", "2.5|9|10|100"},
          {SortNumber, "0|-5|x|-10|1e3|-2.5|7x", "x|7x|-10|-5|-2.5|0|1e3"},
          {SortDate, "2004-06-16|2004-06-15 23:59|2004-06-15 23:59:01|1899-01-01",
           "1899-01-01|2004-06-15 23:59|2004-06-15 23:59:01|2004-06-16"},
          // No date: as the one in front, or the zero date.
          {SortDate, "x|1900-01-01|y|1899-12-29|2003-02-29",
           "1899-12-29|2003-02-29|x|1900-01-01|y"}}) {
        EXPECT_EQ(sorted(kind, true, cells), up);
    }
    EXPECT_EQ(sorted(SortNumber, false, "9|100|x|10"), "100|10|9|x");
    EXPECT_EQ(Main::InvertDigits("-1.25"), " 8.74");
}

TEST(ListSorter, FollowsTheHeaderAndOutlivesARefill) {
    ListWorld world;
    Lines locks;
    world.Screen.Services.LockWindowUpdate = [&](const ListView* list) {
        locks.push_back(list == &world.Characters ? "lock" : "free");
        throw std::runtime_error("skipped");
    };
    for (const auto& [column, order] : {std::pair(1, "Bela 12;Ciri-1;Dora 0;"),
                                        {2, "Ciri-1;Dora 0;Bela 12;"},
                                        {1, "Dora 0;Ciri-1;Bela 12;"},
                                        {2, "Bela 12;Dora 0;Ciri-1;"}}) {
        world.Characters.RaiseColumnClick(column);
        EXPECT_EQ(Rows(world.Characters), order);
        EXPECT_EQ(std::exchange(locks, {}), (Lines{"lock", "free"}));
        EXPECT_EQ(world.Characters.MousePointer.Get(), Pointer::Default);
    }
    world.Monsters.RaiseColumnClick(2);
    EXPECT_EQ(Rows(world.Monsters), "Rat 2;Cat 7;");
    world.Ledger.CharacterKills[99] = 50;
    world.Refill();
    EXPECT_EQ(Rows(world.Characters), "Dora 50;Bela 12;Ciri-1;");
    EXPECT_EQ(world.Characters.SelectedItem()->Text, "Bela") << "the first one added";
    EXPECT_EQ(Rows(world.Monsters), "Rat 2;Cat 7;");
}

TEST(ClipboardReport, TellsTheWholeLedger) {
    ListWorld world;
    world.Screen.Clipboard = "something else";
    world.Ledger.PartyNumber = 7;
    world.Ledger.KillTable(5, 9999) = 3;
    world.Ledger.MonsterNames[8] = "Imp";
    world.Ledger.KillTable(3, 8) = 32767;
    world.Ledger.KillTable(99, 8) = 1;     // wraps below 0
    world.Ledger.KillTable(98, 9999) = 40; // of no character
    const std::string expected =
        "Stats for party #7 in game #0\r\n"
        "(generated by Slaying Tallies, available from https://tallies.marrowquill.example/)\r\n"
        "Individual kill stats:\r\n======================\r\n"
        "Bela (12 total kills)\r\n  Rat : 2 kills\r\n  Imp : 32767 kills\r\n  Cat : 7 kills\r\n"
        "Ciri (-1 total kills)\r\n  Bat : 1 kills\r\n  Cat : 3 kills\r\n"
        "Dora (0 total kills)\r\n  Imp : 1 kills\r\n"
        "\r\nOverall group kill stats:\r\n=========================\r\n"
        "Rat : 2 group kills\r\nBat : 1 group kills\r\nCat : 10 group kills\r\n";
    for (int run = 0; run < 2; ++run) {
        world.Window.cmdClipboard.Click();
        EXPECT_EQ(world.Screen.Clipboard, expected);
        world.Characters.RaiseColumnClick(2);
    }
    // A clipboard that another program holds.
    world.Screen.Services.ClipboardClear = [] { throw std::runtime_error("held"); };
    world.Window.cmdClipboard.Click();
    EXPECT_EQ(world.Window.lblStatus.Caption.Get(), "");
    EXPECT_EQ(world.Window.Window.MousePointer.Get(), Pointer::Default);
}

TEST(Corrections, TakeKillsOutOfTheLedger) {
    ListWorld world;
    world.Ledger.DataChanged = 0;
    const auto remove = [&world](ListView& list, int row, Answer answer) {
        world.Screen.Answers = {answer};
        list.Select(row);
        list.RaiseKeyUp(46, 1);
        return world.TakeBoxes();
    };
    const std::string reminder = "\r\nRemember you cannot re-import turns already imported without "
                                 "blanking all data! [Yes, No] [question]";
    const Lines killsPrompt{"[Sure?] Really delete this characters kills for this monster?" +
                            reminder};
    const Lines characterPrompt{"[Sure?] Really delete this character from the list?" + reminder};

    EXPECT_EQ(remove(world.Monsters, 2, Answer::No), killsPrompt);
    EXPECT_EQ(Rows(world.Monsters), "Rat 2;Cat 7;");
    EXPECT_EQ(remove(world.Monsters, 2, Answer::Yes), killsPrompt);
    EXPECT_EQ(Rows(world.Monsters), "Rat 2;");
    EXPECT_EQ(Rows(world.Characters), "Bela 5;Ciri-1;Dora 0;");
    // The character selected counts, not the one whose rows show; a lower slot that the name
    // reconciles with wins.
    world.Ledger.MonsterNames[1] = "Bats";
    world.Characters.Select(2);
    world.Characters.RaiseKeyUp(40, 0);
    world.Ledger.KillTable(5, 1) = 6;
    remove(world.Monsters, 1, Answer::Yes);
    EXPECT_EQ(world.Ledger.CharacterKills[5], -7);
    EXPECT_EQ(world.Ledger.KillTable(5, 2), 1);
    EXPECT_EQ(Rows(world.Monsters), "Bat 2;") << "the name was rewritten";
    // A monster that cannot be looked up, and a total that would leave its range.
    world.Ledger.MonsterNames[4] = "X";
    remove(world.Monsters, 1, Answer::Yes);
    world.Ledger.MonsterNames[4] = "";
    world.Ledger.CharacterKills[3] = std::numeric_limits<std::int32_t>::min();
    remove(world.Monsters, 1, Answer::Yes);
    EXPECT_EQ(world.Ledger.KillTable(3, 1), 2);

    EXPECT_EQ(remove(world.Characters, 2, Answer::No), characterPrompt);
    EXPECT_EQ(remove(world.Characters, 2, Answer::Yes), characterPrompt);
    EXPECT_EQ(Rows(world.Characters), "Bela-2147483648;Dora 0;");
    EXPECT_EQ(world.Ledger.CharacterKills[5] + world.Ledger.KillTable(5, 2), 0);
    remove(world.Characters, 1, Answer::Yes);
    remove(world.Characters, 1, Answer::Yes);
    EXPECT_EQ(Rows(world.Characters) + Rows(world.Monsters), "");
    world.Characters.RaiseKeyUp(46, 0);
    world.Monsters.RaiseKeyUp(46, 0);
    EXPECT_EQ(world.TakeBoxes(), Lines{}) << "no row, no question";
    EXPECT_EQ(world.Ledger.DataChanged, 0);
}

TEST(NumberBoxes, CommitWhatWasTyped) {
    World world;
    const auto [ledger, window] = std::tie(world.Ledger, world.Window);
    const std::string big(400, '9');
    for (const auto& [typed, game, field, turn] : {std::tuple("12abc", "12", 12, "12"),
                                                   {"abc", "", 0, ""},
                                                   {"", "", 0, ""},
                                                   {"-5", "", 0, ""},
                                                   {"007", "7", 7, "7"},
                                                   {"12.5", "12", 12, "12.5"},
                                                   {"13.5", "14", 14, "13.5"},
                                                   {"0.25", "0", 0, "0.25"},
                                                   {"1e3", "1000", 1000, "1000"},
                                                   {"32767.4", "32767", 32767, "32767.4"},
                                                   {"32767.5", "99", 99, "32767.5"},
                                                   {big.c_str(), "99", 99, big.c_str()}}) {
        for (const auto& [box, number] : {std::pair(&window.txtGame, &ledger.GameNumber),
                                          {&window.txtParty, &ledger.PartyNumber}}) {
            *number = 99;
            box->Text = typed;
            box->KeyPress('5');
            EXPECT_EQ(box->Text.Get(), typed);
            box->KeyPress(13);
            EXPECT_EQ(box->Text.Get(), game) << typed;
            EXPECT_EQ(*number, field) << typed;
        }
        for (TextBox* const box : {&window.txtTurnStart, &window.txtTurnEnd}) {
            box->Text = typed;
            box->LostFocus();
            EXPECT_EQ(box->Text.Get(), turn) << typed;
        }
    }
    ledger.GameNumber = 0;
    window.txtGame.Text = "40000";
    window.txtGame.LostFocus();
    EXPECT_EQ(window.txtGame.Text.Get(), "");
    EXPECT_EQ(ledger.DataChanged, 0);
}

TEST(AboutWindow, OpensAheadOfTheMainWindowAndClosesAtAClick) {
    World world;
    Form& about = world.About.Window;
    EXPECT_TRUE(about.Visible);
    world.Screen.Services.LoadPicture = [](const std::filesystem::path& path) {
        return path.generic_string();
    };
    for (const auto& click :
         {world.About.Frame1.Click, world.About.Picture1.Click, world.About.Label1.Click,
          world.About.Label2.Click, world.About.Label3.Click, world.About.Label4.Click}) {
        world.Window.Window.Enabled = false;
        click();
        EXPECT_FALSE(about.Visible);
        EXPECT_TRUE(world.Window.Window.Enabled);
        world.Window.mnuHelpAbout.Click();
        EXPECT_TRUE(about.Visible);
        EXPECT_EQ(world.About.Picture1.Picture.Get(), "/opt/tallies/graphics/marrowquill.gif");
    }
    world.Window.mnuFileExit.Click();
    EXPECT_EQ(world.Screen.Transcript, Lines{"Close"});
}
