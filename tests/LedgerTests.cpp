#include "Ledgers.h"
#include "ScriptedDesktop.h"
#include "ledger/MonsterNames.h"

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

TEST(Blanking, LeavesNothing) {
    const auto ledger = FullLedger(New);
    Main::BlankLedger(*ledger);
    EXPECT_TRUE(*ledger == *std::make_unique<KillLedger>());
}
