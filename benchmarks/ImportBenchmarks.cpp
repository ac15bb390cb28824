#include "Bare.h"
#include "Compare.h"
#include "Input.h"
#include "fingerprint/modMD5.h"
#include "import/TurnScanner.h"

#include <QApplication>

#include <algorithm>
#include <fstream>
#include <malloc.h>
#include <memory>

namespace {

using Bench::Require;
using Bench::Timing;
using Path = std::filesystem::path;

constexpr std::size_t PieceSize = std::size_t{64} << 10; // that floors read

// The batch import from the menu, as the player does it.
void ImportFolderOf(const Path& report, Program& tallies) {
    tallies.Services.ShowOpen = [&](CommonDialog& dialog) {
        dialog.FileName = report;
        return true;
    };
    tallies.MainWindow.mnuFileBatch.Click();
}

// The floor reads each report once for its lines and once for its fingerprint, and looks up each
// monster once, in the ledger as the program filled it.
void BatchImport(benchmark::State& state) {
    const Input::Batch batch(2'000);
    const auto tallies = Input::StartedProgram();
    KillLedger& ledger = tallies->Ledger;
    batch.Expected->ApplicationPath = ledger.ApplicationPath;
    std::string buffer(PieceSize, '\0');
    const auto importBare = [&] {
        std::size_t clause = 0;
        int turn = 0;
        for (const Path& report : batch.Files) {
            std::size_t bytes = 0;
            Bare::Read(report, buffer, [&](std::string_view piece) { bytes += piece.size(); });
            Require(bytes == std::filesystem::file_size(report), "bytes of a report");
            ++turn;
            Bare::Read(report, buffer, [&](std::string_view whole) {
                Require(modMD5::DigestText(whole) == ledger.TurnHashes[turn], "fingerprint");
            });
            for (int i = 0; i < Input::Batch::Clauses; ++i) {
                const std::string& monster = batch.Monsters[clause++ % batch.Monsters.size()];
                Require(Bare::Walk(ledger.MonsterNames, MaxMonsters, monster) > 0, monster);
            }
        }
    };
    Bench::Compare(state, 1.5,
                   Timing([&] { ImportFolderOf(batch.Files.front(), *tallies); },
                          [&] { Main::BlankLedger(ledger); }),
                   Timing(importBare));
    Require(ledger == *batch.Expected, "the ledger after a batch");
}

// One long report without kills, for a ledger of the game `game`. The floor counts its lines.
void Scan(benchmark::State& state, double target, std::int16_t game) {
    const Input::Folder folder;
    const std::string text = Input::Report(31, std::size_t{64} << 20);
    const Path report = folder.Write("report.html", text);
    const auto blank = std::make_unique<KillLedger>();
    blank->GameNumber = game;
    blank->PartyNumber = Input::Party;
    const auto ledger = std::make_unique<KillLedger>();
    Slaying_Tallies window;
    std::string buffer(PieceSize, '\0');
    std::ptrdiff_t lines = 0;
    Bench::Compare(state, target,
                   Timing([&] { Main::ProcessTurn(*ledger, window, Desktop(), report); },
                          [&] { *ledger = *blank; }),
                   Timing(
                       [&] {
                           Bare::Read(report, buffer, [&](std::string_view piece) {
                               Bare::ForEachLine(piece, [&](std::string_view line) {
                                   lines += line.ends_with('\n') ? 1 : 0;
                               });
                           });
                       },
                       [&] { lines = 0; }));
    Require(lines == std::count(text.begin(), text.end(), '\n'), "lines");
    Require(ledger->CharacterNames[1].empty(), "a report without kills");
    Require(ledger->TurnHashes[1].empty() == (game != Input::Game), "a report taken or refused");
}

// MiB that the process holds more after `work` than before. Free memory is returned to the system
// first: it would hide what `work` takes.
template <class Taking>
double TakenMemory(Taking work) {
    const auto held = [] {
        std::ifstream status("/proc/self/statm");
        double total = 0;
        double pages = 0;
        status >> total >> pages;
        return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
    };
    ::malloc_trim(0);
    const double before = held();
    work();
    return held() - before;
}

void LedgerMemory(benchmark::State& state) {
    state.SetLabel("MiB");
    Bench::Compare(state, 6, [] {
        std::unique_ptr<KillLedger> ledger;
        return TakenMemory([&] { ledger = std::make_unique<KillLedger>(); });
    });
}

// Each time in a program that has just started.
void ImportMemory(benchmark::State& state) {
    const Input::Batch batch(2'000);
    state.SetLabel("MiB");
    Bench::Compare(state, 2, [&] {
        const auto tallies = Input::StartedProgram();
        QApplication::processEvents();
        return TakenMemory([&] {
            ImportFolderOf(batch.Files.front(), *tallies);
            QApplication::processEvents();
        });
    });
}

BENCHMARK(BatchImport)->Name("Batch import of 2,000 reports");
BENCHMARK_CAPTURE(Scan, refused, 6, Input::Game + 1)->Name("Scan of 64 MB, refused at its head");
BENCHMARK_CAPTURE(Scan, whole, 12, Input::Game)->Name("Scan of 64 MB of prose");
BENCHMARK(LedgerMemory)->Name("Memory of the ledger");
BENCHMARK(ImportMemory)->Name("Memory after 2,000 reports");

} // namespace
