#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

struct Desktop;

// Slots are numbered from 1 to these limits. Entry 0 of every table is a sink: a full table
// returns slot 0, callers credit it without a test, and no list, report or file shows it.
constexpr int MaxCharacters = 99;
constexpr int MaxMonsters = 9999;
constexpr int MaxTurns = 9999;

// A fixed table with entries 0 to Last, indexed by slot number, unchecked.
template <class Entry, int Last>
class Slots {
public:
    Entry& operator[](int slot) { return Entries[static_cast<std::size_t>(slot)]; }
    const Entry& operator[](int slot) const { return Entries[static_cast<std::size_t>(slot)]; }
    bool operator==(const Slots&) const = default;

private:
    std::array<Entry, std::size_t{Last} + 1> Entries{};
};

// The kills of each monster by each character, in one flat block. The cell of character c and
// monster m is element c + m * 100.
class KillCells {
public:
    static constexpr int RowLength = MaxCharacters + 1;

    std::int32_t& operator()(int c, int m) { return Block[c + m * RowLength]; }
    std::int32_t operator()(int c, int m) const { return Block[c + m * RowLength]; }
    bool operator==(const KillCells&) const = default;

private:
    Slots<std::int32_t, RowLength*(MaxMonsters + 1) - 1> Block;
};

// The store of all tallies, names and imported turns. About 5 MB: allocate it on the heap. A
// character or monster slot is in use if its name is not empty. A slot of the imported turns is
// free if its fingerprint is empty and its length is 0.
struct KillLedger {
    std::filesystem::path ApplicationPath;         // folder of the program
    std::int16_t GameNumber = 0;                   // 0: unknown
    std::int16_t PartyNumber = 0;                  // 0: unknown
    Slots<std::int32_t, MaxTurns> TurnFileLengths; // bytes
    Slots<std::string, MaxTurns> TurnHashes;       // fingerprints
    Slots<std::string, MaxCharacters> CharacterNames;
    Slots<std::int32_t, MaxCharacters> CharacterKills; // over all monsters
    KillCells KillTable;
    Slots<std::string, MaxMonsters> MonsterNames;
    std::filesystem::path DataFilePath; // counts as set only with a separator in it
    std::uint8_t SaveAsRequested = 0;   // 1: the next save asks for a file name
    std::int16_t DataChanged = 0;       // 1: an import was started since the last save or load

    bool operator==(const KillLedger&) const = default;
};

namespace Main {

// Clears all tables and sets GameNumber and PartyNumber to 0. Entries 0, paths and flags stay.
void BlankLedger(KillLedger& ledger);

// Returns the slot of the character `name`, 1 to 99. A new name is stored in the lowest free slot;
// if there is none, shows a message and returns 0. The comparison is exact. An empty name returns
// the lowest free slot, which stays free.
int FindCharacter(KillLedger& ledger, const Desktop& desktop, std::string_view name);

// Adds `kills` to the character's total, then to the cell of character and monster. Both sums are
// rounded to whole numbers, ties to even. Slots from 0. Throws Failure if a sum does not fit 32
// bits; the total may have changed by then.
void CreditKills(KillLedger& ledger, int character, int monster, double kills);

} // namespace Main
