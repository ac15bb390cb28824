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

constexpr std::int16_t Game = 12; // of the reports

// The name of monster `number`, 0 to 10,999: two or three words, 7 to 24 characters. None is the
// plural of another or differs from it only by the last letter of its first word.
std::string MonsterName(int number);

// The name of character `number`, 0 to 99.
std::string CharacterName(int number);

// Every table full and every cell set. With `step` 2, only every second monster and its cells.
std::unique_ptr<KillLedger> FullLedger(int step = 1);

// A report on turn 1 to 9,999, of `size` bytes or less than a line more: the two header lines, and
// lines of the samples without a kill.
std::string Report(int turn, std::size_t size);

std::filesystem::path Write(const QTemporaryDir& folder, const std::string& name,
                            const std::string& bytes);

// Reports of 40 KB in a folder, each with four kill sentences of three clauses.
struct Batch {
    explicit Batch(int reports);

    QTemporaryDir Folder;
    std::vector<std::filesystem::path> Files;
    std::vector<std::string> Monsters; // which the clauses name in turn
    int Kills = 0;                     // in all
};

// The program with its two windows about to show.
std::unique_ptr<Program> StartedProgram();

} // namespace Input
