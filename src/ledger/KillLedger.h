#pragma once

#include "platform/Desktop.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

// Live slots run from 1 to these numbers. Entry 0 of every array is a sink: a finder gives slot
// 0 when its table is full, callers credit it without a test, and nothing ever reads it.
constexpr int MaxCharacters = 99;
constexpr int MaxMonsters = 9999;
constexpr int MaxTurns = 9999;

// A fixed table with entries 0 to Last, reached by slot number.
template <class Entry, int Last>
class Slots {
public:
    Entry& operator[](int slot) { return Entries[static_cast<std::size_t>(slot)]; }
    const Entry& operator[](int slot) const { return Entries[static_cast<std::size_t>(slot)]; }
    bool operator==(const Slots&) const = default;

private:
    std::array<Entry, std::size_t{Last} + 1> Entries{};
};

// All kills, one cell for each character and monster, in one flat block. The character index
// varies fastest: the cell of character c and monster m is element c + m * 100.
class KillCells {
public:
    static constexpr int RowLength = MaxCharacters + 1;

    std::int32_t& operator()(int c, int m) { return Block[c + m * RowLength]; }
    std::int32_t operator()(int c, int m) const { return Block[c + m * RowLength]; }
    bool operator==(const KillCells&) const = default;

private:
    Slots<std::int32_t, RowLength*(MaxMonsters + 1) - 1> Block;
};

// The one store of tallies, names and imported turns. About 5 MB: it lives on the heap, from the
// start of the process to its end. A slot is in use when its name is not empty; a slot of the
// imported turns is free when its fingerprint is empty and its length 0, both.
struct KillLedger {
    std::filesystem::path ApplicationPath;         // folder of the program
    std::int16_t GameNumber = 0;                   // 0: not yet known
    std::int16_t PartyNumber = 0;                  // 0: not yet known
    Slots<std::int32_t, MaxTurns> TurnFileLengths; // bytes
    Slots<std::string, MaxTurns> TurnHashes;       // fingerprint texts
    Slots<std::string, MaxCharacters> CharacterNames;
    Slots<std::int32_t, MaxCharacters> CharacterKills; // over all monsters
    KillCells KillTable;
    Slots<std::string, MaxMonsters> MonsterNames;
    std::filesystem::path DataFilePath; // set only when it holds a separator
    std::uint8_t SaveAsRequested = 0;   // 1: the next save asks for a file name
    std::int16_t DataChanged = 0;       // 1: work was imported since the last save or load

    bool operator==(const KillLedger&) const = default;
};

namespace Main {

// Empties slots 1 and up of every table and sets both numbers to 0. Leaves slot 0, the paths and
// the flags alone.
void BlankLedger(KillLedger& ledger);

// The slot of the character `name`, 1 to 99; a new name takes the lowest free slot. 0, with a
// message, when the roster is full and the name is not in it. Compares exactly. An empty name
// equals the lowest free slot, which stays free.
int FindCharacter(KillLedger& ledger, const Desktop& desktop, std::string_view name);

// Adds `kills` to the character's total and to the cell of character and monster, in this order,
// each rounded to a whole number, a tie going to the even one. Slots as the finders give them,
// 0 included. Fails (Overflow) on a sum beyond 32 bits; the total may have grown by then.
void CreditKills(KillLedger& ledger, int character, int monster, double kills);

} // namespace Main
