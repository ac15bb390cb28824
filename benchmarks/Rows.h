#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

// The rows of the table. Each sets the program's own work against a floor: the least that any
// program would have to do for the same result. Both are measured in turn, in one process, so that
// whatever else the machine is busy with slows both of them; what counts is their ratio.
namespace Bench {

// How the two measurements of a row are judged.
enum class Rule {
    Ratio,      // seconds of both: program / floor is at most the target
    Throughput, // seconds of both: floor / program is at least the target
    Limit,      // seconds of the program alone, at most the target
    Growth,     // MiB of both: the program has at most the target more than the floor
};

// Each runs once and gives what it measured. The program runs first of all; its floor may build
// on what that left. Throws std::runtime_error on a wrong result.
struct Pair {
    std::function<double()> Program;
    std::function<double()> Floor; // none for Rule::Limit
};

struct Row {
    std::string Name;
    Rule Judge = Rule::Ratio;
    double Target = 0;
    int Repetitions = 0;           // 1 with --quick
    std::function<Pair()> Prepare; // makes the input, which is gone with the last repetition
};

// Each row once, on small input: tells that the benchmarks work, not how fast the program is.
extern bool Quick;

template <class Size>
Size Sized(Size full, Size small) {
    return Quick ? small : full;
}

// Registers the row with the benchmark library.
void Add(Row row);

// The row of that name. Fails (std::out_of_range) when there is none.
const Row& Find(const std::string& name);

// The names under which each repetition reports its two measurements.
constexpr const char* ProgramCounter = "program";
constexpr const char* FloorCounter = "floor";

template <class Work>
double Seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline void Require(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error("wrong result: " + what);
    }
}

// The subjects, each in its own file.
void AddFingerprintRows();
void AddLedgerRows();
void AddImportRows();
void AddDataFileRows();
void AddClipboardRows();
void AddWidgetRows();
void AddProcessRows();

} // namespace Bench
