#include "Input.h"
#include "Reports.h"
#include "Rows.h"
#include "fingerprint/modMD5.h"
#include "import/TurnScanner.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Bench::Pair;
using Bench::Require;
using Bench::Seconds;
using Bench::Sized;

// A file opened with nothing around it.
class BareFile {
public:
    explicit BareFile(const std::filesystem::path& path)
        : Handle(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        Require(Handle >= 0, "a file that cannot be opened");
    }
    ~BareFile() { ::close(Handle); }
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    // The bytes read, none at the end of the file.
    std::span<char> Read(std::span<char> buffer) const {
        const ssize_t count = ::read(Handle, buffer.data(), buffer.size());
        Require(count >= 0, "a file that cannot be read");
        return buffer.first(static_cast<std::size_t>(count));
    }

private:
    int Handle;
};

using Buffer = std::array<char, std::size_t{64} << 10>;

std::size_t ReadToEnd(const std::filesystem::path& path, Buffer& buffer) {
    const BareFile file(path);
    std::size_t bytes = 0;
    for (;;) {
        const auto read = file.Read(buffer);
        if (read.empty()) {
            return bytes;
        }
        bytes += read.size();
    }
}

std::size_t CountLines(const std::filesystem::path& path) {
    const auto buffer = std::make_unique<Buffer>();
    const BareFile file(path);
    std::size_t lines = 0;
    for (;;) {
        const auto read = file.Read(*buffer);
        if (read.empty()) {
            return lines;
        }
        const char* at = read.data();
        const char* const end = at + read.size();
        while (const void* const mark = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
            at = static_cast<const char*>(mark) + 1;
            ++lines;
        }
    }
}

// A stage whose ledger knows game and party, so that a report of others is refused.
std::unique_ptr<Input::Stage> StageOf(std::int16_t game) {
    auto stage = std::make_unique<Input::Stage>();
    stage->Ledger.GameNumber = game;
    stage->Ledger.PartyNumber = Reports::Party;
    return stage;
}

// One long report without kills; `game` is the one of the ledger.
Pair LongScan(std::int16_t game) {
    const auto folder = std::make_shared<Input::Folder>();
    const std::string text = Reports::Header(31) + Reports::Prose(Sized<std::size_t>(64, 1) << 20);
    const auto report = folder->Write("report.html", text);
    std::size_t lines = 0;
    for (const char c : text) {
        lines += c == '\n' ? 1 : 0;
    }
    constexpr std::size_t hashed = std::size_t{3} << 20;
    const std::string fingerprint =
        game == Reports::Game ? modMD5::DigestText(std::string_view(text).substr(0, hashed)) : "";
    return {[folder, report, game, fingerprint] {
                const auto stage = StageOf(game);
                const double seconds = Seconds([&] {
                    Main::ProcessTurn(stage->Ledger, stage->Window, stage->Services, report);
                });
                const auto blank = StageOf(game);
                blank->Ledger.TurnHashes[1] = fingerprint;
                blank->Ledger.TurnFileLengths[1] =
                    fingerprint.empty()
                        ? 0
                        : static_cast<std::int32_t>(std::filesystem::file_size(report));
                Require(Input::SameTables(stage->Ledger, blank->Ledger) &&
                            stage->Ledger.DataChanged == 1 && stage->Messages == 0,
                        "the ledger behind a scan without kills");
                return seconds;
            },
            [=] { return Seconds([&] { Require(CountLines(report) == lines, "lines"); }); }};
}

// A batch through the menu, as the player does it. The floor opens each report as often as the
// import must and reads it as often, for its lines and for its fingerprint; asks for its size;
// takes the digest of its bytes; and seeks one name for each clause in the table as the import
// leaves it.
Pair BatchImport() {
    constexpr std::size_t reportSize = 40'000;
    const auto folder = std::make_shared<Input::Folder>();
    const auto batch =
        std::make_shared<Reports::Batch>(folder->Path, Sized(2'000, 50), reportSize, 300);
    const auto stage = std::make_shared<Input::Stage>();
    stage->Choice = batch->Files.front();
    return {[folder, batch, stage] {
                Main::BlankLedger(stage->Ledger);
                const double seconds = Seconds([&] { stage->Window.mnuFileBatch.Click(); });
                Require(batch->IsImportedInto(stage->Ledger) && stage->Messages == 0 &&
                            stage->Window.lstCharacters.Count() > 0,
                        "the ledger behind a batch");
                return seconds;
            },
            [=] {
                const auto buffer = std::make_unique<Buffer>();
                std::vector<std::string> sought;
                for (std::size_t i = 0; i < 300; ++i) {
                    sought.push_back(Input::MonsterName(i * 33));
                }
                std::size_t clause = 0;
                return Seconds([&] {
                    for (std::size_t i = 0; i < batch->Files.size(); ++i) {
                        const auto& report = batch->Files[i];
                        struct stat status {};
                        Require(::stat(report.c_str(), &status) == 0, "size");
                        const auto size = static_cast<std::size_t>(status.st_size);
                        Require(ReadToEnd(report, *buffer) == size, "bytes of the lines");
                        { const BareFile isThere(report); }
                        const auto hashed = BareFile(report).Read(std::span(*buffer).first(size));
                        Require(modMD5::DigestText({hashed.data(), hashed.size()}) ==
                                    stage->Ledger.TurnHashes[static_cast<int>(i) + 1],
                                "fingerprint");
                        for (int c = 0; c < Reports::Batch::ClausesPerReport; ++c) {
                            const std::string& name = sought[clause++ % sought.size()];
                            int found = 0;
                            for (int m = 1; m <= MaxMonsters; ++m) {
                                if (stage->Ledger.MonsterNames[m] == name) {
                                    found = m;
                                }
                            }
                            benchmark::DoNotOptimize(found);
                        }
                    }
                });
            }};
}

} // namespace

void Bench::AddImportRows() {
    Add({"Batch import of 2,000 reports", Rule::Ratio, 1.5, 11, BatchImport});
    Add({"Scan of 64 MB, refused at its head", Rule::Ratio, 6, 25,
         [] { return LongScan(Reports::Game + 1); }});
    Add({"Scan of 64 MB of prose", Rule::Ratio, 12, 25, [] { return LongScan(Reports::Game); }});
}
