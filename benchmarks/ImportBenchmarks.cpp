#include "Bench.h"
#include "Input.h"
#include "fingerprint/modMD5.h"
#include "import/TurnScanner.h"

#include <QApplication>

#include <fstream>
#include <malloc.h>
#include <openssl/evp.h>

namespace {

using Bench::Compare;
using Bench::Require;
using Bench::Timing;
using Path = std::filesystem::path;

constexpr std::size_t PieceSize = std::size_t{64} << 10; // that floors read at once

// The floor is the digest of a common library, looked up once.
void Digest(benchmark::State& state, std::size_t size) {
    const std::string text = Input::Report(31, size).substr(0, size);
    EVP_MD* const library = EVP_MD_fetch(nullptr, "MD5", nullptr);
    std::string ours;
    QByteArray theirs(16, '\0');
    auto* const bytes = reinterpret_cast<unsigned char*>(theirs.data());
    const auto digestBare = [&] {
        EVP_Digest(text.data(), text.size(), bytes, nullptr, library, nullptr);
    };
    Compare(state, 1.05, Timing([&] { ours = modMD5::DigestText(text); }), Timing(digestBare));
    EVP_MD_free(library);
    Require(ours == theirs.toHex().toStdString(), "digest");
}

// The batch import from the menu, as the player does it.
void ImportFolderOf(const Path& report, Program& tallies) {
    tallies.Services.ShowOpen = [&](CommonDialog& dialog) {
        dialog.FileName = report;
        return true;
    };
    tallies.MainWindow.mnuFileBatch.Click();
}

// Returns the highest slot that holds the name, else 0. Its loop is aligned: how fast it is would
// otherwise depend on where the linker puts it.
[[gnu::noinline, gnu::aligned(64), gnu::optimize("align-loops=64")]] int
FindSlot(const KillLedger& ledger, const std::string& name) {
    int found = 0;
    for (int slot = 1; slot <= MaxMonsters; ++slot) {
        if (ledger.MonsterNames[slot] == name) {
            found = slot;
        }
    }
    return found;
}

// The floor opens each report once for its lines, once to see that it can be opened and once for
// its fingerprint, finds the ends of its lines, and looks up each monster once, in the ledger as
// the program filled it.
void BatchImport(benchmark::State& state) {
    const Input::Batch batch(2'000);
    const auto tallies = Input::StartedProgram();
    KillLedger& ledger = tallies->Ledger;
    std::string buffer(PieceSize, '\0');
    std::size_t lines = 0;
    const auto importBare = [&] {
        std::size_t clause = 0;
        int turn = 0;
        for (const Path& report : batch.Files) {
            ++turn;
            Bench::Read(report, buffer, [&](std::string_view piece) {
                Bench::ForEachLine(piece, [&](std::string_view) { ++lines; });
            });
            ::close(Bench::Open(report));
            Bench::Read(report, buffer, [&](std::string_view whole) {
                Require(modMD5::DigestText(whole) == ledger.TurnHashes[turn], "fingerprint");
            });
            for (int i = 0; i < 12; ++i) {
                const std::string& monster = batch.Monsters[clause++ % batch.Monsters.size()];
                Require(FindSlot(ledger, monster) > 0, monster);
            }
        }
    };
    Compare(state, 1.5,
            Timing([&] { ImportFolderOf(batch.Files.front(), *tallies); },
                   [&] { Main::BlankLedger(ledger); }),
            Timing(importBare));
    benchmark::DoNotOptimize(lines);
    const auto& kills = ledger.CharacterKills;
    Require(kills[1] + kills[2] + kills[3] + kills[4] == batch.Kills, "kills of a batch");
}

// One long report without kills, for a ledger of the game `game`. The floor finds its lines.
void Scan(benchmark::State& state, double target, std::int16_t game) {
    const QTemporaryDir folder;
    const Path report =
        Input::Write(folder, "report.html", Input::Report(31, std::size_t{64} << 20));
    const auto ledger = std::make_unique<KillLedger>();
    Slaying_Tallies window;
    std::string buffer(PieceSize, '\0');
    std::size_t lines = 0;
    const auto blank = [&] {
        Main::BlankLedger(*ledger);
        ledger->GameNumber = game;
    };
    const auto scanBare = [&] {
        Bench::Read(report, buffer, [&](std::string_view piece) {
            Bench::ForEachLine(piece, [&](std::string_view) { ++lines; });
        });
    };
    Compare(state, target,
            Timing([&] { Main::ProcessTurn(*ledger, window, Desktop(), report); }, blank),
            Timing(scanBare));
    benchmark::DoNotOptimize(lines);
    Require(ledger->TurnHashes[1].empty() == (game != Input::Game), "a report taken or refused");
    Require(ledger->CharacterNames[1].empty(), "a report without kills");
}

// MiB that the process holds more after `work` than before. Free memory is returned to the system
// first: it would hide what `work` takes.
template <class Taking>
double TakenMemory(Taking work) {
    const auto held = [] {
        std::ifstream status("/proc/self/statm");
        double pages = 0;
        status >> pages >> pages; // the second number
        return pages * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
    };
    ::malloc_trim(0);
    const double before = held();
    work();
    return held() - before;
}

void LedgerMemory(benchmark::State& state) {
    Compare(state, 6, [] {
        std::unique_ptr<KillLedger> ledger;
        return TakenMemory([&] { ledger = std::make_unique<KillLedger>(); });
    });
}

// Each time in a program that has just started.
void ImportMemory(benchmark::State& state) {
    const Input::Batch batch(2'000);
    Compare(state, 2, [&] {
        const auto tallies = Input::StartedProgram();
        QApplication::processEvents();
        return TakenMemory([&] {
            ImportFolderOf(batch.Files.front(), *tallies);
            QApplication::processEvents();
        });
    });
}

BENCHMARK_CAPTURE(Digest, short, std::size_t{64} << 10)->Name("MD5 of 64 KiB");
BENCHMARK_CAPTURE(Digest, long, std::size_t{3} << 20)->Name("MD5 of 3 MiB");
BENCHMARK(BatchImport)->Name("Batch import of 2,000 reports");
BENCHMARK_CAPTURE(Scan, refused, 6, Input::Game + 1)->Name("Scan of 64 MB, refused at its head");
BENCHMARK_CAPTURE(Scan, whole, 12, Input::Game)->Name("Scan of 64 MB of prose");
BENCHMARK(LedgerMemory)->Name("Memory of the ledger, MiB");
BENCHMARK(ImportMemory)->Name("Memory after 2,000 reports, MiB");

} // namespace
