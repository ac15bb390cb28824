#include "Fuzzing.h"

// Names with commas between them: those in front of the first '>' stand in the table, in slots at
// its start or its end, the others are resolved one by one. An empty one leaves a hole.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Twins twins(Scratch("unused"));
    const std::string text = Compose(Bytes(data, size));
    int slot = size % 2 == 0 ? 0 : MaxMonsters - 20;
    bool stored = true;
    std::string name;
    for (const char c : text + '>') {
        if (c != ',' && c != '>') {
            name += c;
            continue;
        }
        if (stored && slot < MaxMonsters) {
            ++slot;
            twins.Ledger.MonsterNames[slot] = twins.Slow.Ledger.MonsterNames[slot] = name;
        } else if (!stored) {
            RequireNothing(twins.Resolve(name));
        }
        stored = stored && c != '>';
        name.clear();
    }
    for (int i = 1; i <= MaxMonsters; ++i) {
        Require(twins.Ledger.MonsterNames[i] == twins.Slow.Ledger.MonsterNames[i], "same names");
        twins.Ledger.MonsterNames[i].clear();
        twins.Slow.Ledger.MonsterNames[i].clear();
    }
    return 0;
}
