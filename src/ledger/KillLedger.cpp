#include "ledger/KillLedger.h"

#include "controls/Desktop.h"
#include "text/Numbers.h"

namespace Main {
namespace {

void Add(std::int32_t& count, double kills) {
    count = Numbers::RoundInto<std::int32_t>(count + kills);
}

} // namespace

void BlankLedger(KillLedger& ledger) {
    ledger.GameNumber = 0;
    ledger.PartyNumber = 0;
    for (int c = 1; c <= MaxCharacters; ++c) {
        ledger.CharacterNames[c].clear();
        ledger.CharacterKills[c] = 0;
    }
    for (int m = 1; m <= MaxMonsters; ++m) {
        ledger.MonsterNames[m].clear();
        for (int c = 1; c <= MaxCharacters; ++c) {
            ledger.KillTable(c, m) = 0;
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        ledger.TurnFileLengths[i] = 0;
        ledger.TurnHashes[i].clear();
    }
}

int FindCharacter(KillLedger& ledger, const Desktop& desktop, std::string_view name) {
    int Found = 0;
    int FirstFree = 0;
    for (int c = 1; c <= MaxCharacters; ++c) {
        const std::string& stored = ledger.CharacterNames[c];
        if (FirstFree == 0 && stored.empty()) {
            FirstFree = c;
        }
        if (Found == 0 && stored == name) {
            Found = c;
        }
    }
    if (Found != 0) {
        return Found;
    }
    if (FirstFree > 0) {
        ledger.CharacterNames[FirstFree] = name;
        return FirstFree;
    }
    desktop.ShowMessage(
        {"There was an error with processing - already hit maximum 99 characters?"});
    return 0;
}

void CreditKills(KillLedger& ledger, int character, int monster, double kills) {
    Add(ledger.CharacterKills[character], kills);
    Add(ledger.KillTable(character, monster), kills);
}

} // namespace Main
