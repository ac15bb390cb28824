#include "ScriptedDesktop.h"
#include "Twin.h"

#include <random>

namespace {

// A report of game 12 and party 1047 with one kill.
std::string Turn(const std::string& number) {
    return "Party# 1047 of Game # 12/  Turn#  " + number + " and more/Aron: killing 1 Rat//";
}

} // namespace

// A report, or the sentence of A behind "killing" > what is credited, behind '!' where the scan
// fails > all monster names, if told. A last sentence tells whether the scan came to its end.
TEST(Import, CreditsKillSentences) {
    const std::string_view cases = R"(
        3 Rats > Rats 3; 3 Rats, 2 Bats and 1 Wolf > Rats 3, Bats 2, Wolf 1;
        1 Rat and 2 Bats and 1 Wolf > Rat 1, Bats 2, Wolf 1;
        1 Giant Rat, 2 Cave Bats > Giant Rat 1, Cave Bats 2; 3 > PC 3;
        A: crowd, killing 3// > A: PC Arena 3; 3 Rats and 2 > Rats 3, PC 2; a Rat >  > Rat,Zebra;
        Rats >  > PC,Zebra;  >  > PC,Zebra; 3 Rats 2 Bats and 1 Wolf > Rats 3, Bats 2, Wolf 1;
        2 Rats 0 Bats and 1 Wolf > Rats 0 Bats 2, Wolf 1;
        2 Rats 05 Bats and 1 Wolf > Rats 2, Bats 5, Wolf 1;
        2 Rats and 2 Bats, 3 Wolves > Rats and 2 Bats 2, Wolves 3; 4 and 2 Bats > Bats 6;
        2, 3 Rats and 1 Wolf > Rats 5, Wolf 1; 3 Rats, and 2 Bats > Rats 3 > Rats,2 Bats,Zebra;
        2 Rats and 1 Wolf. > Rats 2, Wolf. 1; 3, 2 Rats > !; 1 Cat, 3, 2 Rats > !Cat 1;
        3 Rats, 4 and 2 Bats > !Rats 3; 3 Rats, 1 R > !Rats 3;
        3 Rats,  2 Bats > Rats 3 > Rats,2 Bats,Zebra; 3 Rats and  2 Bats and 1 Wolf > !Rats 3;
        3  Rats 2 Bats and 1 Wolf > !Rats 3; A B  : killing   3   Cave Rats  // > A B: Cave Rats 3;
        2.5 Rats and 3.5 Bats > Rats 2, Bats 4; 3x Rats > Rats 3; 1 Rat, 3000000000 Bats > !Rat 1;
        A:skilling,3 Rats:killing 2// > A: Rats:killing 2 3;
        killing 3 Rats: A// > killing 3 Rats: Rats: A 3;
        : killing 3 Rats//A: killing 1 Rat// > A: Rat 4; 3 Giant/Rats > Giant Rats 3;
        3 Giant /Rats > Giant Rats 3; 3 Giant/  Rats > Giant  Rats 3;
        3 Giant / Rats > Giant  Rats 3; /3 Rats/and 2 Bats > Rats 3, Bats 2;
        3 Rats/  /behind > Rats 3; 3 Rats/no more killing > Rats 3;
        A: killing 3 Rats/Note:// > A: Rats 3;
        3 Rats/during our journey > Rats during our journey 3; 3 Rats/During our journey > Rats 3;
        3 Rats/(While moving through here) > Rats 3; 3 Rats/In this location we came across > Rats 3;
        3 Rats/In this location, we spotted something > Rats 3;
        3 Rats/In this location, we found somthing > Rats 3;
        3 Rats/In this location, we discovered something > Rats 3;
        3 Rats/ It looks like we'll have to make our own way there. Soon > Rats 3;
        A: Killing 3 Rats//A killing 3 Rats// >;
        x/A: killing 3 Big/Rats//B: killing 2/During our journey/y// > A: Big Rats 3 + B: PC 2;
        A: killing 3 Rats/B: killing 2 Bats/C: killing 1// > A: Rats 3 + B: Bats 2 + C: PC 1;
        A: killing 1/During our journey a crowd/B: killing 2// > A: PC 1 + B: PC Arena 2;
        A: killing 3 Rats/crowd//B: killing 2// > A: Rats crowd 3 + B: PC 2;
        a crowd/A: killing 3//B: killing 2// > A: PC Arena 3 + B: PC Arena 2;
        When we drew nearer, a crowd/A: killing 3// > A: PC 3;
        crowd/When we approached, as we got nearer/A: killing 3// > A: PC Arena 3;
        A Crowd/A: killing 3// > A: PC 3)";
    World world;
    for (const std::string& row : Fields(cases, ';')) {
        Lines fields = Fields(row, '>');
        const bool fails = fields[1].starts_with('!');
        fields[1].erase(0, fails ? 1 : 0);
        if (fields[0].find(':') == std::string::npos) {
            fields[0] = "A: killing " + fields[0] + "//";
            fields[1].insert(0, fields[1].empty() ? "A:" : "A: ");
        }
        Main::BlankLedger(world.Ledger);
        world.ImportText(fields[0] + "Zoe: killing 1 Zebra//");
        const std::string end = fields[1].empty() ? "Zoe: Zebra 1" : " + Zoe: Zebra 1";
        EXPECT_EQ(world.Tallies(), fields[1] + (fails ? "" : end)) << row;
        EXPECT_EQ(world.Monsters(), fields.size() > 2 ? fields[2] : world.Monsters()) << row;
    }
    EXPECT_EQ(world.TakeBoxes(), Lines{});
    // A line that only looks blank; then files that end in the middle of a sentence.
    for (const auto& [report, tallies] : {std::pair("A: killing 1 Rat/\t//", "A: Rat \t 1"),
                                          {"A: killing 1 Rat//B: killing 1 Bat", "A: Rat 1"},
                                          {"A: killing 1 Rat//B: killing 1/Bat/", "A: Rat 1"}}) {
        Main::BlankLedger(world.Ledger);
        world.ImportText(report);
        EXPECT_EQ(world.Tallies(), tallies) << report;
    }
}

TEST(Import, SendsTheCrowdAwayOnAnApproach) {
    World world;
    for (const std::string& how :
         Fields("As _ got nearer,As _ got closer,As _ approached,As _ drew closer,"
                "When _ got nearer,When _ drew nearer,When _ drew closer",
                ',')) {
        for (const char* who : {"they", "we"}) {
            const std::string approach = std::string(how).replace(how.find('_'), 1, who);
            Main::BlankLedger(world.Ledger);
            world.ImportText("crowd/When As " + approach + "./A: killing 3//");
            EXPECT_EQ(world.Tallies(), "A: PC 3") << approach;
        }
    }
}

TEST(Import, LimitsClausesAndLines) {
    for (const int count : {24, 25, 26, 27}) {
        World world;
        std::string clauses = "Turn#  12.5/A: killing 1 No 100";
        std::string lines = "B: killing 3 Rats";
        std::string name = "Rats";
        for (int i = 1; i <= count; ++i) {
            clauses += i == 1 ? "" : ", 1 No " + std::to_string(100 + i);
            lines += "/line " + std::to_string(i);
            name += i <= 26 ? " line " + std::to_string(i) : "";
        }
        world.ImportText(clauses.append("//").append(lines).append("/C: killing 1 Cat//"));
        EXPECT_EQ(world.Ledger.CharacterKills[1], std::min(count, 26));
        EXPECT_TRUE(world.Tallies().ends_with(" + B: " + name + " 3 + C: Cat 1"));
        Lines boxes;
        if (count > 25) {
            boxes = {Box("There seems to have been an error in the processing of turn #12.5")};
        }
        if (count > 24) {
            boxes.push_back(Box("Error with too many kill lines on turn # 12.5?"));
        }
        EXPECT_EQ(world.TakeBoxes(), boxes) << count;
    }
}

TEST(ReportGates, HoldReportsToGameAndParty) {
    World world;
    std::string painted;
    world.Window.txtGame.Repaint = [&] { painted += 'g' + world.Window.txtGame.Text.Get(); };
    world.Window.txtParty.Repaint = [&] { painted += 'p' + world.Window.txtParty.Text.Get(); };
    // Header; game and party behind it, what was painted, whether kills behind it count. Short
    // lines have short fields, a field that reads as 0 fixes nothing, and no party is 9e9.
    const std::string_view cases = R"(
        Party# 0 > 0, 0, g0p0, yes; Party#?0.4  ...........0x > 0, 0, g0p0, yes;
        a Party# 1047 of Game # 12 > 0, 0, , yes; Party# 9e9  of Game # 11 > 11, 0, g11, no;
        Party#   47 of Game # 12 > 11, 0, , no; Party#   47 of Game # 11 > 11, 47, p47, yes;
        Party# 48   of Game # 11 > 11, 47, , no; Party# 47.5 of Game # 11 > 11, 47, , no;
        Party# 47.0 of Game # 111 > 11, 47, , yes)";
    for (const std::string& row : Fields(cases, ';')) {
        const int kills = world.Ledger.CharacterKills[1];
        painted.clear();
        world.ImportText("  " + Fields(row, '>')[0] + "/A: killing 1 Rat//");
        const Lines after = {std::to_string(world.Ledger.GameNumber),
                             std::to_string(world.Ledger.PartyNumber), painted,
                             world.Ledger.CharacterKills[1] > kills ? "yes" : "no"};
        EXPECT_EQ(after, Fields(Fields(row, '>')[1], ',')) << row;
    }
}

TEST(ReportGates, FilterTurns) {
    // First and last turn of the filter, turn of the report. One refused fixes game and party too.
    for (const std::string& row :
         Fields(",,5,yes; 5,5,0005,yes; 5,5,0004,no; 5,5,0006,no; 7,3,0005,no; ,4,5,no; 6,,5,no; "
                "5,,none,no; -1,0,5,yes; x,y,5,yes; 4.5,5.5,5,yes; 5.5,,5,no; 5,5,00054,yes",
                ';')) {
        World world;
        world.Window.txtTurnStart.Text = Fields(row, ',')[0];
        world.Window.txtTurnEnd.Text = Fields(row, ',')[1];
        world.ImportText(Turn(Fields(row, ',')[2]));
        const bool accepted = Fields(row, ',')[3] == "yes";
        EXPECT_EQ(world.Tallies(), accepted ? "Aron: Rat 1" : "") << row;
        EXPECT_EQ(world.Ledger.TurnHashes[1].size(), accepted ? 32U : 0U) << row;
        EXPECT_EQ(world.Window.txtGame.Text.Get() + world.Window.txtParty.Text.Get(), "121047");
    }
}

TEST(ReportGates, CountAReportOnce) {
    World world;
    // Report, tallies behind it, the last slot of the turn ledger that it leaves taken.
    struct Step {
        std::string Report, Tallies;
        int Slot;
    };
    const std::vector<Step> steps = {
        {"B: killing 1//" + Turn("0005"), "B: PC 1 + Aron: Rat 1", 1},
        {"B: killing 1//" + Turn("0005"), "B: PC 2 + Aron: Rat 1", 1}, // above the header
        {"B: killing 1//" + Turn("0006"), "B: PC 3 + Aron: Rat 2", 2}, // of the same size
        {"Turn#0007/B: killing 1//", "B: PC 4 + Aron: Rat 2", 2},      // no header
        {"Turn#0007/B: killing 1//", "B: PC 5 + Aron: Rat 2", 2},
        {Turn("0008") + "Turn#  0009/B: killing 1//", "B: PC 5 + Aron: Rat 3", 3},
        {Turn("0010") + "B: killing 1", "B: PC 5 + Aron: Rat 4", 4}, // fails half way
        {Turn("0010") + "B: killing 1", "B: PC 5 + Aron: Rat 4", 4},
    };
    for (const auto& [report, tallies, slot] : steps) {
        world.Ledger.DataChanged = 0;
        world.ImportText(report);
        EXPECT_EQ(world.Tallies(), tallies) << report;
        EXPECT_EQ(world.Ledger.TurnHashes[slot].size(), 32U) << report;
        EXPECT_EQ(world.Ledger.TurnHashes[slot + 1], "") << report;
        EXPECT_EQ(world.Ledger.DataChanged, 1);
    }
    // The name of the file plays no part.
    std::filesystem::rename(world.Folder.Path / "report.html", world.Folder.Path / "copy.txt");
    world.Import(world.Folder.Path / "copy.txt");
    EXPECT_EQ(world.Ledger.CharacterKills[2], 4);
    EXPECT_EQ(world.Ledger.TurnFileLengths[4], static_cast<int>(steps[7].Report.size()));
}

TEST(Import, GoesOnBehindFullTables) {
    World world;
    KillLedger& ledger = world.Ledger;
    for (int i = 1; i <= MaxTurns; ++i) {
        ledger.CharacterNames[std::min(i, MaxCharacters)] = std::to_string(i);
        ledger.MonsterNames[i] = "No " + std::to_string(10000 + i);
        ledger.TurnFileLengths[i] = i; // with a size or a fingerprint a slot is not free
    }
    ledger.TurnFileLengths[4000] = 0;
    ledger.TurnHashes[4000] = "-1";
    // Kills of new names land in slot 0; a plural of a known one is no new name.
    const std::string report =
        "Ada: killing 3 Dogs//98: killing 1 Dog, 4 No 10042s, 2 No 19999//" + Turn("0005");
    world.ImportText(report);
    const std::string limits = "There was an error with processing - already hit maximum ";
    const Lines boxes = {Box(limits + "99 characters?"), Box(limits + "9,999 monster types?"),
                         Box(limits + "9,999 monster types?"),
                         Box("Error importing turn - already hit a 9999 turn import limit? 9999 "
                             "turns hashed and stored?")};
    EXPECT_EQ(world.TakeBoxes(), boxes);
    EXPECT_TRUE(world.Tallies().find("+ 98 7: No 10042 4, No 19999 2 +") != std::string::npos);
    EXPECT_EQ(ledger.CharacterKills[0] + ledger.KillTable(0, 0), 6);
    EXPECT_EQ(ledger.CharacterNames[0] + ledger.MonsterNames[0] + ledger.TurnHashes[0], "");
    // The last slots are live.
    ledger.CharacterNames[99] = ledger.MonsterNames[9999] = "";
    ledger.TurnFileLengths[9999] = 0;
    world.ImportText(Turn("0005"));
    EXPECT_EQ(world.TakeBoxes(), Lines{});
    EXPECT_TRUE(world.Tallies().ends_with(" + Aron: Rat 1"));
    EXPECT_EQ(ledger.TurnHashes[9999].size(), 32U);
}

namespace {

// Logs what shows while a command works.
struct WatchedWorld : World {
    WatchedWorld() {
        Window.lblStatus.Repaint = [this] { Shown += '[' + Window.lblStatus.Caption.Get() + ']'; };
        Window.Window.MousePointer.Changed = [this] {
            Shown += Window.Window.MousePointer.Get() == Pointer::Hourglass ? " busy" : " free";
        };
        Window.txtGame.Repaint = [this] { Shown += " game"; };
        Window.lstCharacters.RowsChanged = [this] { Shown += " refill"; };
    }
    std::string TakeShown() {
        Window.lstCharacters.MarkRead();
        return std::exchange(Shown, {});
    }

    std::string Shown;
};

} // namespace

TEST(ImportCommands, ShowThatTheyWork) {
    WatchedWorld world;
    world.ImportText(Turn("0005"));
    EXPECT_EQ(world.TakeShown(), "[Please wait, importing turn...] busy game refill free[]");
    world.Batch(world.Folder.Path / "picked");
    EXPECT_EQ(world.TakeShown(), "[Please wait, batch importing turns...] busy refill free[]");
    EXPECT_EQ(world.Screen.Transcript,
              (Lines{"Open: Import HTML Turn... (HTML File (*.html)|*.htm*) 4100",
                     "Open: Select folder with HTML turns... (HTML File (*.html)|*.htm*) 4100"}));
    EXPECT_EQ(world.Window.lstCharacters.Item(1).Text, "Aron");
}

// A cancel, a choice without a folder; an earlier choice still stands in the dialog.
TEST(ImportCommands, TouchNothingWithoutAPath) {
    WatchedWorld world;
    world.Window.cmdImportTurn.FileName = world.Folder.Write("report.htm", "A: killing 1\n\n");
    world.Screen.Choices = {std::nullopt, std::nullopt, "report.htm", "report.htm"};
    while (!world.Screen.Choices.empty()) {
        world.Window.mnuFileImport.Click();
        world.Window.mnuFileBatch.Click();
    }
    EXPECT_EQ(world.TakeShown(), "");
    EXPECT_EQ(world.Ledger.DataChanged, 0);
}

TEST(ImportCommands, EndInSilenceOnAFailure) {
    WatchedWorld world;
    world.Import(world.Folder.Path / "none.html");
    EXPECT_EQ(world.TakeShown(), "[Please wait, importing turn...] busy free[]");
    EXPECT_EQ(world.Ledger.DataChanged, 1);
    world.ImportText("A: killing 1 Rat//B: killing 2 Bats");
    EXPECT_EQ(world.TakeShown(), "[Please wait, importing turn...] busy free[]");
    EXPECT_EQ(world.TakeBoxes(), Lines{});
    world.Screen.WhileAsking = [] { throw std::runtime_error("no dialog"); };
    world.Window.mnuFileImport.Click();
    EXPECT_EQ(world.TakeShown(), " free[]");
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

// Reports by chance, each from a few pieces only: some are one long sentence, some are headers.
TEST(Import, GivesWhatThePlainRulesGive) {
    const TemporaryFolder folder;
    Twins twins(folder.Path / "report");
    std::mt19937 random(11);
    const auto upTo = [&random](std::size_t last) { return random() % (last + 1); };
    for (int round = 0; round < 800; ++round) {
        if (round % 8 == 0) {
            Main::BlankLedger(twins.Ledger);
            Main::BlankLedger(twins.Slow.Ledger);
        }
        std::string pieces = "\x80";
        for (std::size_t i = upTo(25); i > 0; --i) {
            pieces += static_cast<char>(0x80 + upTo(upTo(2) == 0 ? 127 : 8));
        }
        std::string bytes;
        for (std::size_t i = upTo(150); i > 0; --i) {
            bytes += pieces[upTo(pieces.size() - 1)];
        }
        const std::string report = Compose(bytes) + "\n\n";
        ASSERT_EQ(twins.Import(report), "") << report;
        ASSERT_EQ(Difference(twins.Ledger, twins.Slow.Ledger), "") << report;
    }
}
