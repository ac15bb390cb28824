#include "Input.h"
#include "Rows.h"
#include "datafile/DataFile.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <unistd.h>

namespace {

using Bench::Pair;
using Bench::Require;
using Bench::Seconds;
using Path = std::filesystem::path;

std::unique_ptr<KillLedger> Ledger(bool full) {
    return full ? Input::FullLedger() : std::make_unique<KillLedger>();
}

std::string Contents(const Path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Bytes to a new file, to the disk, and over the old file: the least that leaves either the one
// or the other, whole, whenever the power goes.
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

Pair Save(bool full) {
    const auto folder = std::make_shared<Input::Folder>();
    const std::shared_ptr<const KillLedger> ledger = Ledger(full);
    const auto bytes = std::make_shared<const std::string>(Input::DataFileBytes(*ledger));
    // Each has a target of its own, and finds its own old file there.
    const auto save = [folder, bytes](const char* name, auto write) {
        const Path target = folder->Path / name;
        const double seconds = Seconds([&] { write(target); });
        Require(Contents(target) == *bytes, "saved bytes");
        return seconds;
    };
    return {[=] {
                return save("program.qvt",
                            [&](const Path& target) { Main::WriteDataFile(*ledger, target); });
            },
            [=] {
                return save("floor.qvt", [&](const Path& target) { ReplaceBare(target, *bytes); });
            }};
}

// Reads a file through a small buffer and each line as a number. Gives the sum of those that are.
std::int64_t SumBare(const Path& path) {
    constexpr std::size_t capacity = std::size_t{64} << 10;
    const auto buffer = std::make_unique<std::array<char, capacity>>();
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    Require(file >= 0, "a file to load");
    std::int64_t sum = 0;
    std::size_t kept = 0;
    for (;;) {
        const ssize_t count = ::read(file, buffer->data() + kept, capacity - kept);
        if (count <= 0) {
            break;
        }
        const char* line = buffer->data();
        const char* const end = line + kept + count;
        for (;;) {
            std::int32_t value = 0;
            const char* const behind = std::from_chars(line, end, value).ptr;
            const void* const feed =
                std::memchr(behind, '\n', static_cast<std::size_t>(end - behind));
            if (feed == nullptr) {
                break;
            }
            sum += value;
            line = static_cast<const char*>(feed) + 1;
        }
        kept = static_cast<std::size_t>(end - line);
        std::memmove(buffer->data(), line, kept);
    }
    ::close(file);
    return sum;
}

std::int64_t SumOfNumbers(const KillLedger& ledger) {
    std::int64_t sum = std::int64_t{ledger.GameNumber} + ledger.PartyNumber;
    for (int c = 1; c <= MaxCharacters; ++c) {
        sum += ledger.CharacterKills[c];
        for (int m = 1; m <= MaxMonsters; ++m) {
            sum += ledger.KillTable(c, m);
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        sum += ledger.TurnFileLengths[i];
    }
    return sum;
}

Pair Load(bool full) {
    const auto folder = std::make_shared<Input::Folder>();
    const std::shared_ptr<const KillLedger> ledger = Ledger(full);
    const Path path = folder->Write("ledger.qvt", Input::DataFileBytes(*ledger));
    const std::int64_t expected = SumOfNumbers(*ledger);
    return {[folder, path, ledger, full] {
                const auto loaded = Ledger(!full); // so that every slot changes
                const double seconds = Seconds(
                    [&] { Require(Main::ReadDataFile(*loaded, path), "a data file taken"); });
                Require(Input::SameTables(*loaded, *ledger), "the loaded ledger");
                return seconds;
            },
            [folder, path, expected] {
                return Seconds([&] { Require(SumBare(path) == expected, "sum"); });
            }};
}

} // namespace

void Bench::AddDataFileRows() {
    for (const auto& [name, full] : {std::pair("full", true), {"empty", false}}) {
        Add({std::string("Save of a ledger, ") + name, Rule::Ratio, 3, 41,
             [full = full] { return Save(full); }});
        Add({std::string("Load of a ledger, ") + name, Rule::Ratio, 1.5, 41,
             [full = full] { return Load(full); }});
    }
}
