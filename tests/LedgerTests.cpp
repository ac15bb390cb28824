#include "ScriptedDesktop.h"
#include "Twin.h"
#include "ledger/MonsterNames.h"

// Worked by hand. Stored names > name given > the slot found, or a failure where a rule cuts more
// from a word than it holds; and the stored names after it.
TEST(MonsterNames, ReconcileSingularsAndPlurals) {
    const std::string_view cases = R"(
        Rat > Rats > 1 Rat; Rats > Rat > 1 Rat; Boxes > Box > 1 Box; Wolf > Wolves > 1 Wolf;
        Wolves > Wolf > 1 Wolf; Flies > Fly > 1 Fly; Man > Men > 1 Man; Women > Woman > 1 Woman;
        Men at arms > Man at arms > 1 Man at arms; Men wolves > Man wolf > 1 Man wolf;
        Men guard > Man guards > 1 Man guard; Man guards > Men guard > 1 Man guards;
        Green dragons > Green dragon > 1 Green dragons; Dogs of war > Dog of war > 1 Dog of war;
        Wolves of the north > Wolf of the north > 2 Wolves of the north,Wolf of the north;
        Wolf,Wolves > Wolves > 1 Wolf,Wolves; Wolfs,Wolves > Wolf > 1 Wolf,Wolves;
        Bat,,Cat > Cats > 3 Bat,,Cat; Bat,,Cat > Dog > 2 Bat,Dog,Cat; Ben > Bat > 1 Ban;
        Wolves > Wolx > 1 Wolf; Knife > Knives > 2 Knife,Knives; Rat > RATS > 2 Rat,RATS;
        Rats > Big rats > 2 Rats,Big rats; > X > 1 X; Rat >  > fails Rat; Rat > R > fails Rat;
        Rats,B > Rat > fails Rat,B; A rat > Big rat > fails A rat; A rat > Bat > 2 A rat,Bat)";
    for (const std::string& row : Fields(cases, ';')) {
        World world;
        const Lines stored = Fields(Fields(row, '>')[0], ',');
        for (std::size_t i = 0; i < stored.size(); ++i) {
            world.Ledger.MonsterNames[static_cast<int>(i) + 1] = stored[i];
        }
        const auto slot = Outcome([&] {
            return Main::ResolveMonster(world.Ledger, world.Screen.Services, Fields(row, '>')[1]);
        });
        const std::string found = slot ? std::to_string(*slot) : "fails";
        EXPECT_EQ(found + ' ' + world.Monsters(), Fields(row, '>')[2]) << row;
    }
}

TEST(Blanking, LeavesNothing) {
    Twins full("", MaxMonsters, 1);
    full.Ledger.GameNumber = full.Ledger.PartyNumber = 1;
    full.Ledger.TurnHashes[MaxTurns] = "x";
    Main::BlankLedger(full.Ledger);
    EXPECT_TRUE(full.Ledger == *std::make_unique<KillLedger>());
}
