#include "Bench.h"
#include "Input.h"
#include "datafile/DataFile.h"
#include "files/Files.h"
#include "fingerprint/TurnLedger.h"
#include "ledger/MonsterNames.h"
#include "ui/ClipboardReport.h"

#include <charconv>
#include <malloc.h>

namespace {

using Bench::Compare;
using Bench::Require;
using Bench::Timing;
using Path = std::filesystem::path;

// What is sought in a full ledger, and the slot that is to be found.
struct Query {
    std::string Name;
    int Slot = 0;
    std::int32_t Length = 0; // of an imported turn
};

// The searches for all queries within `limit` milliseconds. `find` returns the slot of one. A bare
// loop over the table is no floor: its time changes by half with the place of the loop in memory.
template <class Find>
void Search(benchmark::State& state, double limit, const std::vector<Query>& queries, Find find) {
    Compare(state, limit, Timing([&] {
                for (const Query& query : queries) {
                    Require(find(query) == query.Slot, query.Name);
                }
            }));
}

// Names that no slot holds, in a table without a free one.
void Monster(benchmark::State& state) {
    const auto ledger = Input::FullLedger();
    const Desktop desktop{.ShowMessage = [](const Message&) { return Answer::Ok; }};
    std::vector<Query> queries;
    for (int i = 0; i < 32; ++i) {
        queries.push_back({Input::MonsterName(MaxMonsters + i * 29)});
    }
    Search(state, 2, queries,
           [&](const Query& query) { return Main::ResolveMonster(*ledger, desktop, query.Name); });
}

void Character(benchmark::State& state) {
    const auto ledger = Input::FullLedger();
    const Desktop none;
    std::vector<Query> queries;
    for (int i = 0; i < 20 * MaxCharacters; ++i) {
        const int scattered = i * 37 % MaxCharacters;
        queries.push_back({Input::CharacterName(scattered), scattered + 1});
    }
    Search(state, 1, queries,
           [&](const Query& query) { return Main::FindCharacter(*ledger, none, query.Name); });
}

// Records that are there, and fingerprints that are not, with a length that is.
void TurnRecord(benchmark::State& state) {
    const auto ledger = Input::FullLedger();
    const std::string unknown(32, '0');
    std::vector<Query> queries;
    for (int slot = 1; slot <= MaxTurns; slot += 199) {
        queries.push_back({ledger->TurnHashes[slot], slot, ledger->TurnFileLengths[slot]});
        queries.push_back({unknown, 0, ledger->TurnFileLengths[slot]});
    }
    Search(state, 1, queries, [&](const Query& query) {
        return Main::FindTurnRecord(*ledger, query.Length, query.Name);
    });
}

std::unique_ptr<KillLedger> Ledger(bool full) {
    return full ? Input::FullLedger() : std::make_unique<KillLedger>();
}

std::string Contents(const Path& path) {
    return Files::LeadingBytes(path, std::filesystem::file_size(path));
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
    const QTemporaryDir folder;
    const auto ledger = Ledger(full);
    const Path saved = Input::Write(folder, "program.qvt", "");
    const Path savedBare = Input::Write(folder, "floor.qvt", "");
    Main::WriteDataFile(*ledger, saved);
    const std::string bytes = Contents(saved);
    Compare(state, 3, Timing([&] { Main::WriteDataFile(*ledger, saved); }),
            Timing([&] { ReplaceBare(savedBare, bytes); }));
    Require(Contents(saved) == bytes && Contents(savedBare) == bytes, "saved bytes");
}

// The floor reads each line as a number.
void Load(benchmark::State& state, bool full) {
    const QTemporaryDir folder;
    const auto ledger = Ledger(full);
    const auto other = Ledger(!full); // so that every slot changes
    const auto loaded = Ledger(!full);
    const Path path = Input::Write(folder, "ledger.qvt", "");
    Main::WriteDataFile(*ledger, path);
    std::string buffer = Contents(path);
    std::int64_t sum = 0;
    const auto add = [&](std::string_view line) {
        std::int32_t value = 0;
        std::from_chars(line.data(), line.data() + line.size(), value);
        sum += value;
    };
    const auto loadBare = [&] {
        Bench::Read(path, buffer, [&](std::string_view text) { Bench::ForEachLine(text, add); });
    };
    Compare(state, 1.5,
            Timing([&] { Main::ReadDataFile(*loaded, path); }, [&] { *loaded = *other; }),
            Timing(loadBare));
    benchmark::DoNotOptimize(sum);
    Require(*loaded == *ledger, "the loaded ledger");
}

// A ledger whose report goes to a clipboard that takes no notice of it.
struct Reporter {
    // Each report in new memory, as in a process that makes only one.
    Bench::Work Sending() {
        return Timing([this] { Main::SendStatsToClipboard(*Ledger, Window, Clipboard); },
                      [] { ::malloc_trim(0); });
    }

    std::unique_ptr<KillLedger> Ledger;
    Slaying_Tallies Window{};
    Desktop Clipboard{.ClipboardClear = [] {}, .ClipboardSetText = [](std::string_view) {}};
};

// The floor copies the report line by line into memory set aside for it, then over the copy
// before: the box on the window lets go of its old text too.
void Clipboard(benchmark::State& state) {
    Reporter full{Input::FullLedger()};
    const std::string& text = full.Window.txtClipboard.Text;
    std::string box;
    const auto copyLines = [&] {
        std::string copy;
        copy.reserve(text.size());
        Bench::ForEachLine(text, [&](std::string_view line) { copy += line; });
        box = std::move(copy);
    };
    Compare(state, 2, full.Sending(), Timing(copyLines, [] { ::malloc_trim(0); }));
    Require(!box.empty() && box == text, "the report");
}

// A report of half as many lines: each line may take 1.3 times as long in the full one.
void ClipboardLine(benchmark::State& state) {
    Reporter full{Input::FullLedger()};
    Reporter half{Input::FullLedger(2)};
    Compare(state, 2.6, full.Sending(), half.Sending());
}

BENCHMARK(Monster)->Name("ResolveMonster, 32 names not found");
BENCHMARK(Character)->Name("FindCharacter, 99 names, 20 times");
BENCHMARK(TurnRecord)->Name("FindTurnRecord, 102 of 9,999");
BENCHMARK_CAPTURE(Save, full, true)->Name("Save of a ledger, full");
BENCHMARK_CAPTURE(Load, full, true)->Name("Load of a ledger, full");
BENCHMARK_CAPTURE(Save, empty, false)->Name("Save of a ledger, empty");
BENCHMARK_CAPTURE(Load, empty, false)->Name("Load of a ledger, empty");
BENCHMARK(Clipboard)->Name("Clipboard report, 99 x 9,999 cells");
BENCHMARK(ClipboardLine)->Name("The same, to half as many lines");

} // namespace
