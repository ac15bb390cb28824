#pragma once

#include "Program.h"

#include <QTemporaryDir>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// Input, the same in every run.
namespace Input {

constexpr std::int16_t Game = 12;
constexpr std::int16_t Party = 1047;

// The name of monster `number`, 0 to 10,999: two or three words, 7 to 24 characters. None is the
// plural of another or differs from it only by the last letter of its first word.
std::string MonsterName(int number);

// The name of character `number`, 0 to 99.
std::string CharacterName(int number);

// Every table full and every cell set. With `step` 2, only every second monster and its cells.
std::unique_ptr<KillLedger> FullLedger(int step = 1);

// A report on turn 1 to 9,999 of `size` bytes or a line more: the two header lines, and lines of
// the samples without a kill.
std::string Report(int turn, std::size_t size);

// A folder of its own, among the temporary files. The destructor removes it.
class Folder {
public:
    std::filesystem::path Write(const std::string& name, const std::string& bytes) const;
    std::filesystem::path operator/(const char* name) const;

private:
    QTemporaryDir Place;
};

// Reports of 40 KB in a folder, each with four kill sentences of three clauses.
struct Batch {
    static constexpr int Clauses = 12; // of one report

    explicit Batch(int reports);

    Folder Place;
    std::vector<std::filesystem::path> Files; // in the order of their import
    std::vector<std::string> Monsters;        // which the clauses name in turn
    // What their import makes of a blank ledger.
    std::unique_ptr<KillLedger> Expected = std::make_unique<KillLedger>();
};

// The program with its two windows about to show.
std::unique_ptr<Program> StartedProgram();

} // namespace Input
