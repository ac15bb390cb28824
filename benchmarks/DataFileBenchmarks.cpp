#include "Bare.h"
#include "Compare.h"
#include "Input.h"
#include "datafile/DataFile.h"

#include <charconv>

namespace {

using Bench::Require;
using Bench::Timing;
using Path = std::filesystem::path;

std::unique_ptr<KillLedger> Ledger(bool full) {
    return full ? Input::FullLedger() : std::make_unique<KillLedger>();
}

std::string Contents(const Path& path) {
    std::string bytes(std::filesystem::file_size(path), '\0');
    Bare::Read(path, bytes, [&](std::string_view whole) { Require(whole == bytes, "bytes"); });
    return bytes;
}

// Bytes to a new file, to the disk, and over the old file: the least that leaves the old or the
// new one, whole, when the power fails.
void ReplaceBare(const Path& target, const std::string& bytes) {
    const Path name = target.native() + ".new";
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    Require(file >= 0, "a new file");
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    Require(written == static_cast<ssize_t>(bytes.size()) && ::fsync(file) == 0, "written bytes");
    ::close(file);
    Require(::rename(name.c_str(), target.c_str()) == 0, "a file replaced");
    const int folder = ::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    Require(folder >= 0 && ::fsync(folder) == 0, "a folder on the disk");
    ::close(folder);
}

// Each has a file of its own to replace.
void Save(benchmark::State& state, bool full) {
    const Input::Folder folder;
    const auto ledger = Ledger(full);
    const Path saved = folder / "program.qvt";
    Main::WriteDataFile(*ledger, saved);
    const std::string bytes = Contents(saved);
    Bench::Compare(state, 3, Timing([&] { Main::WriteDataFile(*ledger, saved); }),
                   Timing([&] { ReplaceBare(folder / "floor.qvt", bytes); }));
    Require(Contents(saved) == bytes, "saved bytes");
}

// The floor reads each line as a number.
void Load(benchmark::State& state, bool full) {
    const Input::Folder folder;
    const auto ledger = Ledger(full);
    const auto other = Ledger(!full); // so that every slot changes
    const auto loaded = Ledger(!full);
    const Path path = folder / "ledger.qvt";
    Main::WriteDataFile(*ledger, path);
    std::string buffer = Contents(path);
    std::int64_t sum = 0;
    const auto add = [&](std::string_view line) {
        std::int32_t value = 0;
        std::from_chars(line.data(), line.data() + line.size(), value);
        sum += value;
    };
    Bench::Compare(
        state, 1.5, Timing([&] { Main::ReadDataFile(*loaded, path); }, [&] { *loaded = *other; }),
        Timing([&] {
            Bare::Read(path, buffer, [&](std::string_view text) { Bare::ForEachLine(text, add); });
        }));
    benchmark::DoNotOptimize(sum);
    Require(*loaded == *ledger, "the loaded ledger");
}

BENCHMARK_CAPTURE(Save, full, true)->Name("Save of a ledger, full");
BENCHMARK_CAPTURE(Load, full, true)->Name("Load of a ledger, full");
BENCHMARK_CAPTURE(Save, empty, false)->Name("Save of a ledger, empty");
BENCHMARK_CAPTURE(Load, empty, false)->Name("Load of a ledger, empty");

} // namespace
