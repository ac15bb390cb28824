#include "ledger/Corrections.h"

#include "text/Numbers.h"

namespace Main {

void DeleteCharacter(KillLedger& ledger, int character) {
    ledger.CharacterNames[character].clear();
    ledger.CharacterKills[character] = 0;
    for (int m = 1; m <= MaxMonsters; ++m) {
        ledger.KillTable(character, m) = 0;
    }
}

void DeleteKills(KillLedger& ledger, int character, int monster) {
    std::int32_t& total = ledger.CharacterKills[character];
    std::int32_t& cell = ledger.KillTable(character, monster);
    total = Numbers::RoundInto<std::int32_t>(static_cast<double>(total) - cell);
    cell = 0;
}

} // namespace Main
