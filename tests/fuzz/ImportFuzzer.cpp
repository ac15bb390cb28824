#include "Fuzzing.h"

namespace {

// Program and twin, with ledgers in a state that reports can find: every `step`th slot in use, up
// to `last` in each table.
struct Start {
    Start(int last, int step) {
        for (int i = 1; i <= last; i += step) {
            const int c = 1 + i % MaxCharacters;
            Before->CharacterNames[c] = "No " + std::to_string(c);
            Before->CharacterKills[c] += i;
            Before->KillTable(c, i) = i;
            Before->MonsterNames[i] = "Rat" + std::to_string(i);
            Before->TurnFileLengths[i] = i;
        }
        Work.Ledger = *Before;
        Work.Slow.Ledger = *Before;
    }

    // Compares the ledgers, adds up the cells of each character, and puts back what was changed.
    // A pass over all cells takes longer than an import; so only one run in 64, the first among
    // them, looks at the cells of monsters without a name, which nothing may touch.
    Slots<std::int64_t, MaxCharacters> Settle() {
        KillLedger& fast = Work.Ledger;
        KillLedger& slow = Work.Slow.Ledger;
        Slots<std::int64_t, MaxCharacters> sums;
        const bool all = Runs++ % 64 == 0;
        for (int m = 0; m <= MaxMonsters; ++m) {
            if (m != 0 && !all && fast.MonsterNames[m].empty()) {
                continue;
            }
            for (int c = 0; c <= MaxCharacters; ++c) {
                const std::int32_t cell = fast.KillTable(c, m);
                Require(cell == slow.KillTable(c, m), "same cells");
                sums[c] += cell;
                fast.KillTable(c, m) = slow.KillTable(c, m) = Before->KillTable(c, m);
            }
        }
        RequireNothing(Difference(fast, slow, all));
        const auto restore = [](auto& now, const auto& before, int last) {
            for (int i = 0; i <= last; ++i) {
                if (now[i] != before[i]) {
                    now[i] = before[i];
                }
            }
        };
        for (KillLedger* ledger : {&fast, &slow}) {
            restore(ledger->MonsterNames, Before->MonsterNames, MaxMonsters);
            restore(ledger->TurnHashes, Before->TurnHashes, MaxTurns);
            restore(ledger->CharacterNames, Before->CharacterNames, MaxCharacters);
            ledger->TurnFileLengths = Before->TurnFileLengths;
            ledger->CharacterKills = Before->CharacterKills;
            ledger->GameNumber = ledger->PartyNumber = 0;
        }
        return sums;
    }

    Twins Work{Scratch("report")};
    std::unique_ptr<KillLedger> Before = std::make_unique<KillLedger>();
    unsigned Runs = 0;
};

} // namespace

// The last byte chooses the ledger and the turn filter, the others make the report.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Start empty(0, 1);
    static Start used(99, 2);
    static Start full(MaxMonsters, 1);
    const unsigned choice = size == 0 ? 0 : data[size - 1];
    const std::string report = Compose(Bytes(data, size == 0 ? 0 : size - 1));

    Start& start = choice == 255 ? full : choice % 2 == 0 ? empty : used; // the full one is slow
    Twins& twins = start.Work;
    Twin& slow = twins.Slow;
    slow.WholeCounts = true;
    slow.TurnStart = choice / 2 % 4 == 2 ? "6" : "";
    slow.TurnEnd = choice / 2 % 4 == 3 ? "6.5" : "";
    slow.Game = slow.Party = "";
    twins.Window.txtGame.Text = twins.Window.txtParty.Text = "";
    twins.Messages.clear();
    slow.Messages.clear();

    RequireNothing(twins.Import(report));
    const auto once = twins.Ledger.CharacterKills;
    RequireNothing(twins.Import(report));
    const auto twice = twins.Ledger.CharacterKills;
    const auto sums = start.Settle();
    for (int c = 0; c <= MaxCharacters; ++c) {
        Require(slow.KillsAboveTurn || once[c] == twice[c], "no report counts twice");
        // Rounding parts total and cells where counts have a fraction, a failure where one is
        // too large.
        Require(!slow.WholeCounts || slow.Failed || sums[c] == twice[c], "totals are sums");
    }
    return 0;
}
