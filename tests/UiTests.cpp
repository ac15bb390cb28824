#include "ScriptedDesktop.h"

#include <limits>
#include <map>

namespace {

// The rows of a list, in each the two cells as they are.
std::string Cells(const ListView& list) {
    std::string cells;
    for (int row = 1; row <= list.Count(); ++row) {
        cells += list.Item(row).Text + list.Item(row).ListSubItems[0].Text + ';';
    }
    return cells;
}

// Bela in slot 3 and Ciri in slot 5, both with kills; Dora in slot 99 with none.
struct ListWorld : World {
    ListWorld() {
        Ledger.CharacterNames[99] = "Dora";
        for (const auto& [c, name, m, monster, kills] : {std::tuple(3, "Bela", 1, "Rat", 2),
                                                         {3, "Bela", 2, "Bat", -1},
                                                         {3, "Bela", 5000, "", 4},
                                                         {3, "Bela", 9999, "Cat", 7},
                                                         {5, "Ciri", 1, "Rat", -6},
                                                         {5, "Ciri", 2, "Bat", 1},
                                                         {5, "Ciri", 5000, "", 4}}) {
            Ledger.CharacterNames[c] = name;
            Ledger.CharacterKills[c] += kills;
            Ledger.MonsterNames[m] = monster;
            Ledger.KillTable(c, m) = kills;
        }
        Main::FillCharacterList(Ledger, Window, Screen.Services);
    }
    ListView& Characters = Window.lstCharacters;
    ListView& Monsters = Window.lstMonsters;
};

} // namespace

TEST(ListSorter, SortsByTextNumberAndDate) {
    const Desktop services = ScriptedDesktop().Services;
    const std::map<std::string, Main::SortKind> kinds = {
        {"text", Main::SortText}, {"number", Main::SortNumber}, {"date", Main::SortDate}};
    const std::string tag("tag\0", 4);
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/sorting.md")) {
        const Lines kind = Fields(row[0], ' ');
        ListView list;
        list.ColumnHeaders.resize(3);
        for (const std::string& cell : Fields(row[1], ',')) {
            list.Add("row " + cell).ListSubItems[1] = {cell, tag + cell};
        }
        Main::SortListView(services, list, 3, kinds.at(kind[0]), kind.back() != "descending");
        EXPECT_EQ(list.SelectedItem()->Text, "row " + Fields(row[1], ',')[0]);
        std::string sorted;
        for (int l = 1; l <= list.Count(); ++l) {
            const ListSubItem& cell = list.Item(l).ListSubItems[1];
            EXPECT_EQ(list.Item(l).Text, "row " + cell.Text);
            EXPECT_EQ(cell.Tag, tag + cell.Text);
            sorted += (l == 1 ? "" : ",") + cell.Text;
        }
        EXPECT_EQ(sorted, row[2]);
    }
    EXPECT_EQ(Main::InvertDigits("-1.25"), " 8.74");
}

TEST(Events, AreWiredToTheirRoutines) {
    ListWorld world;
    EXPECT_EQ(world.About.Picture1.Picture.Get(), "/opt/tallies/graphics/marrowquill.gif");
    // A click on a character shows its kills.
    world.Characters.Select(2);
    world.Characters.RaiseClick();
    EXPECT_EQ(Cells(world.Monsters), "Bat 1;");
    world.Characters.RaiseColumnClick(2);
    EXPECT_EQ(Cells(world.Characters), "Ciri-1;Dora 0;Bela 12;");
    // The window starts with nothing to save.
    world.Ledger.DataChanged = 1;
    world.Window.Window.Unload();
    world.Window.Window.Show();
    EXPECT_EQ(world.Ledger.DataChanged, 0);
}

TEST(ClipboardReport, HoldsTheWholeLedger) {
    ListWorld world;
    world.Screen.Clipboard = "something else";
    world.Ledger.PartyNumber = 7;
    world.Ledger.MonsterNames[8] = "Imp";
    world.Ledger.KillTable(3, 8) = 32767;
    world.Ledger.KillTable(99, 8) = 1; // wraps below 0
    world.Ledger.KillTable(5, 9999) = 3;
    world.Ledger.KillTable(98, 9999) = 40; // of no character
    world.Window.cmdClipboard.Click();
    EXPECT_EQ(world.Screen.Clipboard, ReadAll(SHELF_FOLDER "/cases/clipboard.txt"));
    const std::string works = "[Please wait, sending stats to clipboard...]";
    EXPECT_EQ(world.TakeShown(), " refill busy" + works + " free[]");
}

TEST(Corrections, TakeKillsOutOfTheLedger) {
    ListWorld world;
    const auto [ledger, characters, monsters] =
        std::tie(world.Ledger, world.Characters, world.Monsters);
    // Deletes in a list; returns what both lists show then.
    const auto remove = [&](ListView& list, int row, Answer answer) {
        world.Screen.Answers = {answer};
        list.Select(row);
        list.RaiseKeyUp(KeyDelete, 1);
        return Cells(world.Characters) + '|' + Cells(world.Monsters);
    };
    EXPECT_EQ(remove(monsters, 2, Answer::No), "Bela 12;Ciri-1;Dora 0;|Rat 2;Cat 7;");
    EXPECT_EQ(remove(monsters, 2, Answer::Yes), "Bela 5;Ciri-1;Dora 0;|Rat 2;");
    const std::string reminder = "\r\nRemember you cannot re-import turns already imported without "
                                 "blanking all data! [Yes, No] [question]";
    EXPECT_EQ(world.TakeBoxes().at(1),
              "[Sure?] Really delete this characters kills for this monster?" + reminder);
    EXPECT_EQ(remove(characters, 1, Answer::No), "Bela 5;Ciri-1;Dora 0;|Rat 2;");
    EXPECT_EQ(world.TakeBoxes().at(0),
              "[Sure?] Really delete this character from the list?" + reminder);
    // The character selected counts, not the one whose rows show; a lower slot with which the
    // name is reconciled comes first, and is rewritten.
    ledger.MonsterNames[1] = "Bats";
    characters.Select(2);
    characters.RaiseKeyUp(KeyDownArrow, 0);
    EXPECT_EQ(remove(monsters, 1, Answer::Yes), "Bela 5;Ciri 5;Dora 0;|Bat 2;");
    // A monster that cannot be looked up, and a total that would leave its range.
    ledger.MonsterNames[4] = "X";
    EXPECT_EQ(remove(monsters, 1, Answer::Yes), "Bela 5;Ciri 5;Dora 0;|Bat 2;");
    ledger.MonsterNames[4] = "";
    ledger.CharacterKills[3] = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(remove(monsters, 1, Answer::Yes), "Bela-2147483648;Ciri 5;Dora 0;|Bat 2;");

    EXPECT_EQ(remove(characters, 2, Answer::Yes), "Bela-2147483648;Dora 0;|Bat 2;");
    EXPECT_EQ(ledger.CharacterKills[5] + ledger.KillTable(5, 2), 0);
    EXPECT_EQ(remove(characters, 1, Answer::Yes), "Dora 0;|");
    EXPECT_EQ(remove(characters, 1, Answer::Yes), "|");
    EXPECT_FALSE(characters.Enabled || monsters.Enabled);
    characters.RaiseKeyUp(KeyDelete, 0); // no row, no question: it would find no answer
    monsters.RaiseKeyUp(KeyDelete, 0);
}

TEST(NumberBoxes, CommitWhatWasTyped) {
    World world;
    const auto [ledger, window] = std::tie(world.Ledger, world.Window);
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/number-boxes.md")) {
        ledger.GameNumber = 99;
        ledger.PartyNumber = 99;
        Lines shown;
        for (TextBox* const box :
             {&window.txtGame, &window.txtParty, &window.txtTurnStart, &window.txtTurnEnd}) {
            box->Text = row[0];
            box->KeyPress(KeyEnter);
            shown.push_back(box->Text);
        }
        EXPECT_EQ(shown, (Lines{row[1], row[1], row[3], row[3]}));
        EXPECT_EQ(std::to_string(ledger.GameNumber), row[2]);
        EXPECT_EQ(std::to_string(ledger.PartyNumber), row[2]);
    }
    window.lstCharacters.RaiseClick(); // there is no row yet
    ledger.GameNumber = 0;
    window.txtGame.Text = "40000";
    window.txtGame.LostFocus();
    EXPECT_EQ(window.txtGame.Text.Get(), "");
}
