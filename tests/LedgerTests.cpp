#include "ScriptedDesktop.h"
#include "Twin.h"
#include "ledger/MonsterNames.h"
#include "text/Failure.h"

#include <random>

// Stored names > name given > stored names after it. '*' marks the slot found; '!' tells a failure,
// which comes where a rule cuts more from a word than it holds. Rewrites made by then stay.
TEST(MonsterNames, ReconcileSingularsAndPlurals) {
    const std::string_view cases = R"(
        Rat > Rat > *Rat; Rat > Rats > *Rat; Rats > Rat > *Rat; Box > Boxes > *Box;
        Boxes > Box > *Box; Wolf > Wolves > *Wolf; Wolves > Wolf > *Wolf; Fly > Flies > *Fly;
        Flies > Fly > *Fly; Man > Men > *Man; Women > Woman > *Woman;
        Giant rats > Giant rat > *Giant rat; Giant wolves > Giant wolf > *Giant wolf;

        Man at arms > Men at arms > *Man at arms; Men at arms > Man at arms > *Man at arms;
        Men guards > Man guard > *Man guard; Man guard > Men guards > *Man guard;
        Men guard > Man guards > *Man guard; Man guards > Men guard > *Man guards;
        Men boxes > Man box > *Man box; Man box > Men boxes > *Man box;
        Men box > Man boxes > *Man box; Men fly > Man flies > *Man fly;
        Men wolves > Man wolf > *Man wolf; Man wolf > Men wolves > *Man wolf;
        Men flies > Man fly > *Man fly; Man fly > Men flies > *Man fly;
        Green dragon > Green dragons > *Green dragon; Green man > Green men > *Green man;
        Green dragons > Green dragon > *Green dragons;
        Men policemen > Man policeman > Men policemen,*Man policeman;

        Dog of war > Dogs of war > *Dog of war; Dogs of war > Dog of war > *Dog of war;
        Dogx of war > Dog of war > *Dog of war; Dog of war > Dogs of wars > Dog of war,*Dogs of wars;
        Wolves of the north > Wolf of the north > Wolves of the north,*Wolf of the north;

        Wolf,Wolves > Wolves > *Wolf,Wolves; Wolfs,Wolves > Wolf > *Wolf,Wolves;
        Rats,Rats > Rat > *Rat,Rats; Bat,,Cat > Cats > Bat,,*Cat; Bat,,Cat > Dog > Bat,*Dog,Cat;

        Fox > Fen > *Fox; Ben > Bat > *Ban; Wolves > Wolx > *Wolf; Fen > Fan > *Fan;
        Fan > Fen > *Fan; Knife > Knives > Knife,*Knives; Child > Children > Child,*Children;
        Ox > Oxen > Ox,*Oxen; Goose > Geese > Goose,*Geese; Mouse > Mice > Mouse,*Mice;
        PC > PC Arena > PC,*PC Arena; Rat > rat > Rat,*rat; Rat > RATS > Rat,*RATS;
        Rats > Big rats > Rats,*Big rats; A rat > Bat > A rat,*Bat; > X > *X; > > *;

        Rat > > !Rat; Rat > R > !Rat; B > Rat > !B; B > Bs > !B; Bs > B > !B; Rat,B > Rat > !Rat,B;
        Rats,B > Rat > !Rat,B; A rat > Big rat > !A rat; Big rat > A rat > !Big rat;
        Dogs of war,A rat > Dog of war > !Dog of war,A rat)";
    World world;
    const auto resolve = [&](const std::string& name) {
        return Main::ResolveMonster(world.Ledger, world.Screen.Services, name);
    };
    for (const std::string& row : Fields(cases, ';')) {
        Main::BlankLedger(world.Ledger);
        int slot = 0;
        for (const std::string& stored : Fields(Fields(row, '>')[0], ',')) {
            world.Ledger.MonsterNames[++slot] = stored;
        }
        const std::string name = Fields(row, '>')[1];
        std::string after = Fields(row, '>')[2];
        if (after[0] == '!') {
            after.erase(0, 1);
            EXPECT_THROW(resolve(name), Failure) << row;
        } else {
            const auto star = after.begin() + static_cast<std::ptrdiff_t>(after.find('*'));
            EXPECT_EQ(resolve(name), 1 + std::count(after.begin(), star, ',')) << row;
            after.erase(star);
        }
        EXPECT_EQ(world.Monsters(), after) << row;
    }
    // Parts without a character; those on the right count only while nothing is found.
    world.Ledger.MonsterNames[1] = "Men ";
    EXPECT_THROW(resolve("Man x"), Failure);
    EXPECT_THROW(resolve(" rat"), Failure);
    world.Ledger.MonsterNames[1] = "Man x";
    world.Ledger.MonsterNames[2] = "Men ";
    EXPECT_EQ(resolve("Man x"), 1);
    EXPECT_EQ(world.TakeBoxes(), Lines{});
}

TEST(CharacterNames, TakeTheLowestFreeSlot) {
    World world;
    const auto find = [&](const char* name) {
        return Main::FindCharacter(world.Ledger, world.Screen.Services, name);
    };
    EXPECT_EQ(find("Aron"), 1);
    EXPECT_EQ(find("aron"), 2);
    EXPECT_EQ(find("Aron "), 3);
    world.Ledger.CharacterNames[2].clear();
    EXPECT_EQ(find("Aron "), 3);
    EXPECT_EQ(find(""), 2); // which stays free
    EXPECT_EQ(find("Bela"), 2);
}

TEST(Kills, AreCreditedAsRoundedSums) {
    World world;
    KillLedger& ledger = world.Ledger;
    for (const auto& [character, monster] : {std::pair(1, 1), {99, 9999}, {0, 1}, {1, 0}}) {
        Main::CreditKills(ledger, character, monster, 2.5);
        Main::CreditKills(ledger, character, monster, 1.5);
        EXPECT_EQ(ledger.KillTable(character, monster), 4);
    }
    EXPECT_EQ(ledger.CharacterKills[1], 8);
    EXPECT_EQ(&ledger.KillTable(1, 1) - &ledger.KillTable(0, 0), 101);
    // A sum beyond 32 bits. The total comes first, and stays.
    ledger.KillTable(1, 1) = 2147483647;
    Main::CreditKills(ledger, 1, 1, 0.25);
    EXPECT_THROW(Main::CreditKills(ledger, 1, 1, 1), Failure);
    EXPECT_EQ(ledger.CharacterKills[1], 9);
    EXPECT_EQ(ledger.KillTable(1, 1), 2147483647);
    ledger.CharacterKills[1] = -2147483647;
    EXPECT_THROW(Main::CreditKills(ledger, 1, 2, -2.5), Failure);
    EXPECT_EQ(ledger.KillTable(1, 2), 0);
}

TEST(Blanking, LeavesSinkPathsAndFlags) {
    World world;
    KillLedger& ledger = world.Ledger;
    ledger.GameNumber = ledger.PartyNumber = ledger.DataChanged = 1;
    ledger.DataFilePath = "/tmp/a.qvt";
    const auto corners = {std::pair(0, 0), {1, 1}, {99, 9999}}; // character, other slots
    for (const auto& [c, i] : corners) {
        ledger.TurnHashes[i] = ledger.MonsterNames[i] = ledger.CharacterNames[c] = "x";
        ledger.TurnFileLengths[i] = ledger.CharacterKills[c] = 5;
        ledger.KillTable(c, i) = ledger.KillTable(0, i) = ledger.KillTable(c, 0) = 5;
    }
    Main::BlankLedger(ledger);
    EXPECT_EQ(ledger.GameNumber + ledger.PartyNumber, 0);
    for (const auto& [c, i] : corners) {
        const std::string names =
            ledger.TurnHashes[i] + ledger.MonsterNames[i] + ledger.CharacterNames[c];
        EXPECT_EQ(names, i == 0 ? "xxx" : "");
        EXPECT_EQ(ledger.TurnFileLengths[i] | ledger.CharacterKills[c] | ledger.KillTable(c, i),
                  i == 0 ? 5 : 0);
        EXPECT_EQ(ledger.KillTable(0, i) + ledger.KillTable(c, 0), 10);
    }
    EXPECT_EQ(ledger.DataFilePath, "/tmp/a.qvt");
    EXPECT_EQ(ledger.DataChanged, 1);
}

// The walk skips what cannot match by a few bytes of each name. Words of a few letters that the
// rules turn on make nearly every pair of names meet some rule by all bytes but one.
TEST(ResolveMonster, FindsWhatThePlainRulesFind) {
    Twins twins("unused");
    std::mt19937 random(7);
    const auto pick = [&random](auto... choices) {
        const Lines all{choices...};
        return all[random() % all.size()];
    };
    const auto word = [&] {
        return (random() % 200 == 0 ? pick("", "M") : pick("Mo", "Wol", "Gian")) +
               pick("", "a", "en", "an", "n", "s", "es", "ves", "ies", "y", "f", "x");
    };
    const auto name = [&] {
        return word() + pick("", "", " " + word(), " " + word(), " of " + word(), " ");
    };
    for (int round = 0; round < 300; ++round) {
        for (int i = 1; i < 40; ++i) {
            twins.Slow.Ledger.MonsterNames[i] = i == 1 || random() % 3 == 0 ? "" : name();
        }
        twins.Ledger.MonsterNames = twins.Slow.Ledger.MonsterNames;
        for (int call = 0; call < 6; ++call) {
            const std::string given = name();
            ASSERT_EQ(twins.Resolve(given), "") << given;
        }
        ASSERT_EQ(Difference(twins.Ledger, twins.Slow.Ledger), "");
    }
}
