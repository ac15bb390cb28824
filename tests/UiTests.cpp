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
