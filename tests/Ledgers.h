#pragma once

#include "ledger/KillLedger.h"

#include <memory>
#include <string>
#include <type_traits>

// Calls `visit` with each field that a data file holds, in the order of the file.
template <class Ledger, class Visit>
void ForEachField(Ledger& ledger, Visit visit) {
    visit(ledger.GameNumber);
    visit(ledger.PartyNumber);
    for (int c = 1; c <= MaxCharacters; ++c) {
        visit(ledger.CharacterNames[c]);
        visit(ledger.CharacterKills[c]);
        for (int m = 1; m <= MaxMonsters; ++m) {
            visit(ledger.KillTable(c, m));
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        visit(ledger.TurnFileLengths[i]);
        visit(ledger.TurnHashes[i]);
        visit(ledger.MonsterNames[i]);
    }
}

constexpr int FieldCount = 2 + MaxCharacters * (2 + MaxMonsters) + 3 * MaxTurns;

// A field of a full ledger. Neighbours differ, and so do the numbers that they begin with.
template <class Field>
Field FullField(int number) {
    if constexpr (std::is_same_v<Field, std::string>) {
        return "name " + std::to_string(number);
    } else {
        return static_cast<Field>(1000 + (number & 0x3FFF));
    }
}

inline std::unique_ptr<KillLedger> FullLedger(int seed) {
    auto ledger = std::make_unique<KillLedger>();
    ForEachField(*ledger, [number = seed](auto& field) mutable {
        field = FullField<std::decay_t<decltype(field)>>(++number);
    });
    return ledger;
}

constexpr int New = 0;
constexpr int Old = 7;
