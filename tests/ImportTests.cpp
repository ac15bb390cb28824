#include "ScriptedDesktop.h"
#include "Twin.h"

#include <random>

// Worked by hand. The sentence of A behind "killing", or a report in which '/' ends a line > the
// tallies. B, who kills last, tells whether the scan of a sentence came to its end.
TEST(Import, CreditsKillSentences) {
    const std::string_view cases = R"(
        3 Rats, 2 Bats and 1 Cave Wolf. > A: Rats 3, Bats 2, Cave Wolf. 1 + B: PC 9;
        3 > A: PC 3 + B: PC 9; 3, 2 Rats > A:; 2 Cats, 3, 2 Rats > A: Cats 2; > A: + B: PC 9;
        3 Rats 2 Bats and 1 Wolf > A: Rats 3, Bats 2, Wolf 1 + B: PC 9; 3 Rats, 1 R > A: Rats 3;
        3 Rats, and 2 Bats > A: Rats 3 + B: PC 9; 4 and 2 Bats > A: Bats 6 + B: PC 9;
        2 Rats and 2 Bats, 3 Wolves > A: Rats and 2 Bats 2, Wolves 3 + B: PC 9;
        1 Cat, 3000000000 Bats > A: Cat 1; 2.5 Rats and 3.5x Bats > A: Rats 2, Bats 4 + B: PC 9;
        3 Big /Rats/no killing > A: Big Rats 3 + B: PC 9; 3 Big / Rats > A: Big  Rats 3 + B: PC 9;
        : killing 3 Rats//A: killing 1 Rat// > A: Rat 4; killing 3 R2: A// > killing 3 R2: R2: A 3;
        A: crowd, killing 3 Rats/(During our journey/and 2)// > A: Rats 3;
        crowd/When we approached/A: killing 3 Rats and 2// > A: Rats 3, PC Arena 2;
        A: killing 1//Turn#  0005/A: killing 1//Turn#  0006/A: killing 1// > A: PC 2;
        Party# 47   of Game # 12/A: killing 1//Party# 48   of Game # 12/A: killing 1// > A: PC 1)";
    for (const std::string& row : Fields(cases, ';')) {
        World world;
        const std::string text = Fields(row, '>')[0];
        const bool isReport = text.find(':') != std::string::npos;
        world.ImportText(isReport ? text : "A: killing " + text + "//B: killing 9//");
        EXPECT_EQ(world.Tallies(), Fields(row, '>')[1]) << row;
    }
}

TEST(Import, DoesWhatItsTwinDoes) {
    const TemporaryFolder folder;
    Twins empty(folder.Path / "report", 0, 1);
    Twins used(folder.Path / "report", 99, 2);
    Twins full(folder.Path / "report", MaxMonsters, 1);
    std::mt19937 random(11);
    const auto upTo = [&random](std::size_t last) { return random() % (last + 1); };
    for (std::size_t round = 0; round < 400; ++round) {
        // A report is made of a few pieces only: some are one sentence, some are all headers.
        std::string pieces = "\x80";
        for (std::size_t i = upTo(25); i > 0; --i) {
            pieces += static_cast<char>(0x80 + upTo(upTo(2) == 0 ? 127 : 8));
        }
        // The first ones go from below to above the limits of clauses and lines.
        std::string bytes(1, '\x80');
        bytes.append(round < 16 ? 20 + round / 2 : 0, round % 2 == 0 ? '\x81' : '\xA0');
        for (std::size_t i = round < 16 ? 0 : upTo(150); i > 0; --i) {
            bytes += pieces[upTo(pieces.size() - 1)];
        }
        Twins& twins = round % 200 == 199 ? full : round % 2 == 0 ? empty : used;
        twins.Slow.TurnStart = upTo(5) == 0 ? "6" : "";
        twins.Slow.TurnEnd = upTo(5) == 0 ? "6.5" : "";
        const std::string report = Compose(bytes) + "\n\n";
        ASSERT_EQ(twins.Import(report), "") << report;
    }
}

namespace {

// Logs what shows while a command works.
struct WatchedWorld : World {
    WatchedWorld() {
        Window.lblStatus.Repaint = [this] { Shown += '[' + Window.lblStatus.Caption.Get() + ']'; };
        Window.Window.MousePointer.Changed = [this] {
            Shown += Window.Window.MousePointer.Get() == Pointer::Hourglass ? " busy" : " free";
        };
        Window.txtGame.Repaint = [this] { Shown += " game " + Window.txtGame.Text.Get(); };
        Window.txtParty.Repaint = [this] { Shown += " party " + Window.txtParty.Text.Get(); };
        Window.lstCharacters.RowsChanged = [this] {
            Shown += Shown.ends_with(" refill") ? "" : " refill"; // one of many changes
        };
    }
    std::string TakeShown() { return std::exchange(Shown, {}); }

    std::string Shown;
};

} // namespace

TEST(ImportCommands, ShowThatTheyWorkAndEndInSilence) {
    WatchedWorld world;
    world.ImportText("Party# 1047 of Game # 12/Aron: killing 1 Rat//");
    EXPECT_EQ(world.TakeShown(),
              "[Please wait, importing turn...] busy game 12 party 1047 refill free[]");
    world.Batch(world.Folder.Path / "picked");
    EXPECT_EQ(world.TakeShown(), "[Please wait, batch importing turns...] busy refill free[]");
    EXPECT_EQ(world.Screen.Transcript,
              (Lines{"Open: Import HTML Turn... (HTML File (*.html)|*.htm*) 4100",
                     "Open: Select folder with HTML turns... (HTML File (*.html)|*.htm*) 4100"}));
    // A cancel, a choice without a folder; an earlier choice still stands in the dialog.
    world.Ledger.DataChanged = 0;
    world.Screen.Choices = {std::nullopt, std::nullopt, "report.htm", "report.htm"};
    while (!world.Screen.Choices.empty()) {
        world.Window.mnuFileImport.Click();
        world.Window.mnuFileBatch.Click();
    }
    EXPECT_EQ(world.TakeShown(), "");
    EXPECT_EQ(world.Ledger.DataChanged, 0);
    world.Import(world.Folder.Path / "none.html");
    EXPECT_EQ(world.TakeShown(), "[Please wait, importing turn...] busy free[]");
    EXPECT_EQ(world.Ledger.DataChanged, 1);
    world.Screen.WhileAsking = [] { throw std::runtime_error("no dialog"); };
    world.Window.mnuFileImport.Click();
    EXPECT_EQ(world.TakeShown(), " free[]");
    EXPECT_EQ(world.TakeBoxes(), Lines{});
}

TEST(ImportCommands, BatchImportsAFolder) {
    WatchedWorld world;
    for (const std::string& name : Fields("b.htm,a.html,C.HTM,.d.htm,e.txt,f.htm.bak", ',')) {
        world.Folder.Write(name, name + ": killing 1 Rat\n\n");
    }
    std::filesystem::create_directory(world.Folder.Path / "g.htm");
    world.Folder.Write("g.htm/h.txt", "H: killing 1 Rat\n\n");
    world.Batch(world.Folder.Path / "e.txt");
    EXPECT_EQ(world.Tallies(), "C.HTM: Rat 1 + b.htm: Rat 1 + a.html: Rat 1");
    EXPECT_EQ(world.Window.lstCharacters.Count(), 3);
    // Without a report nothing changes, and the lists come up to date all the same.
    world.Ledger.DataChanged = 0;
    world.Ledger.CharacterNames[4] = "Aron";
    world.Batch(world.Folder.Path / "g.htm" / "h.txt");
    EXPECT_EQ(world.Ledger.DataChanged, 0);
    EXPECT_EQ(world.Window.lstCharacters.Count(), 4);
    // The first failure ends it.
    world.Folder.Write("a.htm", "I: killing 1 Rat");
    world.TakeShown();
    world.Batch(world.Folder.Path / "e.txt");
    EXPECT_EQ(world.Tallies(), "C.HTM: Rat 2 + b.htm: Rat 1 + a.html: Rat 1 + Aron:");
    EXPECT_EQ(world.TakeShown(), "[Please wait, batch importing turns...] busy free[]");
}
