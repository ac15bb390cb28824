#pragma once

#include "ledger/KillLedger.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

// Ledgers with something in every field, and how much of one a load brought into another.

// Calls `visit` with all fields that a data file holds and the number that each has there, from 1
// on behind the format mark; in the order in which they lie in memory, which is the fast one.
template <class Ledger, class Visit>
void ForEachField(Ledger& ledger, Visit visit) {
    constexpr int block = MaxMonsters + 2;
    visit(ledger.GameNumber, 1);
    visit(ledger.PartyNumber, 2);
    for (int c = 1; c <= MaxCharacters; ++c) {
        visit(ledger.CharacterNames[c], 3 + (c - 1) * block);
        visit(ledger.CharacterKills[c], 4 + (c - 1) * block);
    }
    for (int m = 1; m <= MaxMonsters; ++m) {
        for (int c = 1; c <= MaxCharacters; ++c) {
            visit(ledger.KillTable(c, m), 4 + (c - 1) * block + m);
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        const int row = 3 + MaxCharacters * block + (i - 1) * 3;
        visit(ledger.TurnFileLengths[i], row);
        visit(ledger.TurnHashes[i], row + 1);
        visit(ledger.MonsterNames[i], row + 2);
    }
}

constexpr int FieldCount = 2 + MaxCharacters * (2 + MaxMonsters) + 3 * MaxTurns;

// A field of a full ledger. Neighbours differ, and so do the numbers that they begin with.
template <class Field>
Field FullField(int number) {
    if constexpr (std::is_same_v<Field, std::string>) {
        return "name " + std::to_string(number);
    } else {
        const int value = 1000 + (number & 0x3FFF);
        return static_cast<Field>((number & 15) != 0 ? value : -value);
    }
}

inline std::unique_ptr<KillLedger> FullLedger(int seed) {
    auto ledger = std::make_unique<KillLedger>();
    ForEachField(*ledger, [seed](auto& field, int number) {
        field = FullField<std::decay_t<decltype(field)>>(seed + number);
    });
    return ledger;
}

// What a load of FullLedger(New) into FullLedger(Old) that broke off has left.
constexpr int New = 0;
constexpr int Old = 7;
struct Mixture {
    int NewFields = 0; // in front, all behind them being old; -1 for any other order
    std::string Stump; // the number right behind them, when it is neither new nor old
    bool operator==(const Mixture&) const = default;
};

inline Mixture Compare(const KillLedger& ledger) {
    Mixture mixture;
    int lastNew = 0;
    int others = 0;
    int lastOther = 0;
    ForEachField(ledger, [&](const auto& field, int number) {
        using Field = std::decay_t<decltype(field)>;
        if (field == FullField<Field>(New + number)) {
            ++mixture.NewFields;
            lastNew = std::max(lastNew, number);
        } else if (field != FullField<Field>(Old + number)) {
            ++others;
            lastOther = number;
            if constexpr (!std::is_same_v<Field, std::string>) {
                mixture.Stump = std::to_string(field);
            }
        }
    });
    if (lastNew != mixture.NewFields || others > 1 || (others == 1 && lastOther != lastNew + 1)) {
        mixture.NewFields = -1;
    }
    return mixture;
}

inline std::string ReadAll(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(bytes).str();
}
