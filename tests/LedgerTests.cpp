#include "Ledgers.h"
#include "ScriptedDesktop.h"
#include "Twin.h"

TEST(ResolveMonster, ReconcilesSingularsAndPlurals) {
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/names.md")) {
        World world;
        int slot = 0;
        for (const std::string& stored : Fields(row[0], ',')) {
            world.Ledger.MonsterNames[++slot] = stored;
        }
        const auto found = Outcome(
            [&] { return Main::ResolveMonster(world.Ledger, world.Screen.Services, row[1]); });
        std::string result = found ? std::to_string(*found) : "fails";
        for (int m = 1; m <= 3; ++m) {
            result += (m == 1 ? ' ' : ',') + world.Ledger.MonsterNames[m];
        }
        EXPECT_EQ(result.substr(0, result.find_last_not_of(',') + 1), row[2]) << row[0];
    }
}

TEST(ResolveMonster, FindsWhatThePlainRulesFind) {
    const Lines pieces =
        Fields("Rat|Wol|Fl|M|Gre|f|y|x|s|es|ves|ies|an|en|men|R|Man.|Men.|.|.|.", '|');
    Twins twins;
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        twins.Restart();
        for (int i = 0; i < 30; ++i) {
            std::string name;
            for (auto piece = 1 + random() % 5; piece > 0; --piece) {
                name += pieces[random() % pieces.size()];
            }
            std::replace(name.begin(), name.end(), '.', ' ');
            ASSERT_TRUE(twins.Agree(name)) << name;
        }
    }
}

TEST(Blanking, LeavesNothing) {
    const auto ledger = FullLedger(New);
    Main::BlankLedger(*ledger);
    EXPECT_TRUE(*ledger == *std::make_unique<KillLedger>());
}
