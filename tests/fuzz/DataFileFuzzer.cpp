#include "Fuzzing.h"
#include "datafile/DataFile.h"
#include "text/Failure.h"

#include <fstream>
#include <iterator>

namespace {

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// A complete file, and where its lines begin.
struct CompleteFile {
    CompleteFile() {
        KillLedger& ledger = *Ledger;
        for (int i = 1; i <= 40; ++i) {
            ledger.CharacterNames[2 * i] = "No " + std::to_string(i);
            ledger.CharacterKills[2 * i] = ledger.KillTable(2 * i, 99 * i) = 1 << (i % 31);
            ledger.MonsterNames[i] = "Rat, \"" + std::to_string(i) + '"';
            ledger.TurnHashes[i] = std::string(32, 'f');
            ledger.TurnFileLengths[i] = -i;
        }
        const auto file = Scratch("complete");
        Main::WriteDataFile(ledger, file);
        Bytes = ReadAll(file);
        for (std::size_t at = 0; at < Bytes.size(); at = Bytes.find('\n', at) + 1) {
            LineStarts.push_back(at);
        }
    }

    std::unique_ptr<KillLedger> Ledger = std::make_unique<KillLedger>();
    std::string Bytes;
    std::vector<std::size_t> LineStarts;
};

} // namespace

// The first bytes choose a line near the start of the file, of a character or of the tail, how
// much is taken out there, how often the other bytes stand there instead and whether the file ends
// behind them.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t blockLines = 2 + MaxMonsters;
    constexpr std::size_t tail = 3 + MaxCharacters * blockLines;
    static const CompleteFile complete;
    static const auto loaded = std::make_unique<KillLedger>();
    static const auto again = std::make_unique<KillLedger>();
    static const auto file = Scratch("file");
    if (size < 5) {
        return 0;
    }
    const std::size_t line = data[0] % 4 == 0   ? data[1] % 8
                             : data[0] % 4 == 1 ? 3 + data[1] % MaxCharacters * blockLines
                             : data[0] % 4 == 2 ? tail + data[1] % 128
                                                : complete.LineStarts.size() - 1 - data[1];
    const std::size_t from = complete.LineStarts[line] + data[2] % 8;
    const std::size_t to = std::min(from + data[3], complete.Bytes.size());
    std::string spliced = complete.Bytes.substr(0, from);
    for (int i = 1 << data[4] / 2 % 16; i > 0 && spliced.size() < from + 300'000; --i) {
        spliced += Compose(Bytes(data + 5, size - 5));
    }
    spliced.append(complete.Bytes, data[4] % 2 == 0 ? to : complete.Bytes.size());
    std::ofstream(file, std::ios::binary) << spliced;

    *loaded = *complete.Ledger;
    try {
        Main::ReadDataFile(*loaded, file);
    } catch (const Failure&) {
        // What was read by then stays.
    }
    Main::WriteDataFile(*loaded, file);
    const std::string saved = ReadAll(file);
    Require(Main::ReadDataFile(*again, file), "what was saved is a data file");
    RequireNothing(Difference(*loaded, *again));
    Main::WriteDataFile(*again, file);
    Require(ReadAll(file) == saved, "the same bytes");
    return 0;
}
