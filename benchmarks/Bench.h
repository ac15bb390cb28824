#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

// Each benchmark of the library is one row of the table. It sets the program's own work against a
// floor: the least that any program has to do for the same result. The two take turns in one
// process, so that whatever slows the machine slows both. What counts is their ratio.
namespace Bench {

// Runs once and returns what it measured: milliseconds, or MiB in a row on memory.
using Work = std::function<double()>;

// Fills the row of `state`, with one pair of measurements for each iteration. Its result is the
// median of program / floor or, without a floor, of what the program measured. `program` runs
// first: `floor` may build on what it left. Both run once more than is counted, to warm up.
void Compare(benchmark::State& state, double target, const Work& program, const Work& floor = {});

// Measures the milliseconds that the processors spend in this process on `work`: other programs do
// not count. `prepare` runs before each `work` and does not count either.
template <class Timed>
Work Timing(
    Timed work, const std::function<void()>& prepare = [] {}) {
    return [work, prepare] {
        const auto spent = [] {
            timespec time{};
            ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
            return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
        };
        prepare();
        const double start = spent();
        work();
        return spent() - start;
    };
}

// Throws std::runtime_error, which ends the run.
inline void Require(bool holds, std::string_view what) {
    if (!holds) {
        throw std::runtime_error("wrong result: " + std::string(what));
    }
}

// What floors are made of: the system's own calls, and plain loops.

// Opens a file for reading and returns its number.
inline int Open(const std::filesystem::path& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    Require(file >= 0, "a file that cannot be opened");
    return file;
}

// Reads a file to its end into `buffer`, again and again, and passes each piece to `visit`.
template <class Visit>
void Read(const std::filesystem::path& path, std::string& buffer, Visit visit) {
    const int file = Open(path);
    ssize_t count = 0;
    while ((count = ::read(file, buffer.data(), buffer.size())) > 0) {
        visit(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
    }
    ::close(file);
}

// Passes each line of `text`, its end mark included, to `visit`.
template <class Visit>
void ForEachLine(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        visit(text.substr(0, size));
        text.remove_prefix(size);
    }
}

} // namespace Bench
