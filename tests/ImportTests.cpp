#include "ScriptedDesktop.h"
#include "System.h"

TEST(Import, FiltersTurns) {
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/turn-filter.md")) {
        World world;
        world.Window.txtTurnStart.Text = row[0];
        world.Window.txtTurnEnd.Text = row[1];
        for (const std::string turn : {"  -8", "   0", "   5", "   6", "   7"}) {
            world.ImportText("Turn# 9" + turn + "9/A: killing 1 T" + turn.back() + "//");
        }
        EXPECT_EQ(world.Tallies(), row[2]) << row[0];
        const int imported = world.Ledger.CharacterKills[1];
        EXPECT_EQ(world.Ledger.TurnHashes[imported + 1], "") << "what is left out can come later";
    }
}

TEST(Import, TakesAReportOnlyOnce) {
    World world;
    world.Ledger.TurnFileLengths[1] = 1; // either of the two takes a slot
    world.Ledger.TurnHashes[2] = "x";
    for (const std::string monster : {"Rat", "Bat", "Rat"}) {
        world.ImportText("A: killing 1//Turn#  0005/A: killing 2 " + monster + "//");
    }
    EXPECT_EQ(world.Tallies(), "A: PC 3, Rat 2, Bat 2");
    EXPECT_EQ(world.Ledger.TurnFileLengths[4], 44);
    EXPECT_EQ(world.Ledger.TurnHashes[5] + std::to_string(world.Ledger.TurnFileLengths[5]), "0");
}

// What finds no slot is lost, and the turn is refused.
TEST(Import, SaysWhatIsFull) {
    World world;
    for (int i = 1; i <= MaxTurns; ++i) {
        world.Ledger.CharacterNames[1 + i % MaxCharacters] = "No " + std::to_string(i);
        world.Ledger.MonsterNames[i] = "Rat" + std::to_string(i);
        world.Ledger.TurnFileLengths[i] = 1;
    }
    world.ImportText("A: killing 3 Bats//Turn#  0005/No 9999: killing 2 Rat9999//");
    EXPECT_EQ(world.Ledger.CharacterKills[0] + world.Ledger.KillTable(0, 0), 6);
    EXPECT_EQ(world.Ledger.KillTable(1 + MaxTurns % MaxCharacters, MaxMonsters), 0);
    const std::string hit = "There was an error with processing - already hit maximum ";
    EXPECT_EQ(world.TakeBoxes(),
              (Lines{Box(hit + "99 characters?"), Box(hit + "9,999 monster types?"),
                     Box("Error importing turn - already hit a 9999 turn import limit? 9999 turns "
                         "hashed and stored?")}));
}

// First all that end in .htm, then those in .html, each in the byte order of the names.
TEST(Import, TakesAFolderInItsOrder) {
    World world;
    for (const std::string& name :
         Fields("b.htm,a.html,C.HTM,10.htm,9.htm,.d.htm,.htm,htm,e.txt,f.htm.bak", ',')) {
        world.Folder.Write(name, name + ": killing 1 Rat\n\n");
    }
    std::filesystem::create_directory(world.Folder.Path / "folder.htm");
    (void)NoRegularFiles(world.Folder.Path);
    world.Batch(world.Folder.Path / "e.txt");
    const std::string names = "10.htm: Rat 1 + 9.htm: Rat 1 + C.HTM: Rat 1 + b.htm: Rat 1";
    EXPECT_EQ(world.Tallies(), names + " + a.html: Rat 1");
    // The first failure ends it, with the lists as they were.
    world.Folder.Write("0.htm", "I: killing 1 Rat");
    world.TakeShown();
    world.Batch(world.Folder.Path / "e.txt");
    EXPECT_EQ(world.Tallies(), names + " + a.html: Rat 1");
    EXPECT_EQ(world.TakeShown(), "[Please wait, batch importing turns...] busy free[]");
}
