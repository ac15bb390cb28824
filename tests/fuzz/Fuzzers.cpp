#include "Twin.h"
#include "datafile/DataFile.h"
#include "platform/Files.h"

#include <cstdint>
#include <cstdio>
#include <map>
#include <unistd.h>

namespace {

// Ends the run, and keeps the input, when something is wrong with it.
void RequireNothing(const std::string& wrong) {
    if (!wrong.empty()) {
        std::fprintf(stderr, "BROKEN: %s\n", wrong.c_str());
        std::abort();
    }
}
void Require(bool holds, const char* otherwise) {
    RequireNothing(holds ? "" : otherwise);
}

// A file of this process, in the folder for temporary files.
std::filesystem::path Scratch() {
    return std::filesystem::temp_directory_path() / std::to_string(::getpid());
}

// The last byte chooses the ledger and the turn filter, the others make the report.
void ImportReports(std::string bytes) {
    static Twins empty(Scratch(), 0, 1);
    static Twins used(Scratch(), 99, 2);
    static Twins full(Scratch(), MaxMonsters, 1); // on which the twin is slow
    const unsigned choice = bytes.empty() ? 0 : static_cast<unsigned char>(bytes.back());
    bytes.resize(bytes.size() - (bytes.empty() ? 0 : 1));
    Twins& twins = choice == 255 && bytes.size() < 20 ? full : choice % 2 == 0 ? empty : used;
    twins.Slow.TurnStart = choice / 2 % 4 == 2 ? "6" : "";
    twins.Slow.TurnEnd = choice / 2 % 4 == 3 ? "6.5" : "";
    RequireNothing(twins.Import(Compose(bytes)));
}

// Names with commas between them.
void FindMonsters(std::string bytes) {
    static Twins empty(Scratch(), 0, 1);
    std::string report;
    for (const std::string& name : Split(',', Compose(bytes))) {
        report += "A: killing 1 " + name + "\n\n";
    }
    RequireNothing(empty.Import(report));
}

void ReadNumbers(std::string bytes) {
    const std::string text = Compose(bytes);
    const auto value = Outcome([&] { return Numbers::Read(text); });
    Require(value == Outcome([&] { return Twin::ReadNumber(text); }), "another value");
    if (value) {
        Require(Outcome([&] { return Numbers::RoundInto<std::int32_t>(*value); }) ==
                    Outcome([&] { return Twin::Round<std::int32_t>(*value); }),
                "another whole number");
        const std::string digits = Numbers::PlainDigits(*value);
        Require(digits.find_first_not_of("-.0123456789") == std::string::npos, "no plain digits");
        Require(Numbers::IsNumber(digits) && Numbers::Read(digits) == *value, "other digits");
    }
}

std::string Saved(const KillLedger& ledger) {
    Main::WriteDataFile(ledger, Scratch());
    return Files::LeadingBytes(Scratch(), std::size_t{1} << 24);
}

// The first bytes choose a place in the head of a complete file, in front of a character or of a
// row of the tail, or near the end; how much is taken out there, how often the other bytes stand
// there instead, and whether the file ends behind them.
void LoadFiles(std::string bytes) {
    constexpr std::size_t head = 16, block = 30'004, row = 11, tail = head + 99 * block;
    static const KillLedger empty;
    static const std::string complete = Saved(empty);
    static const auto loaded = std::make_unique<KillLedger>();
    static const auto again = std::make_unique<KillLedger>();
    std::array<unsigned char, 5> choice{};
    const std::size_t chosen = std::min(bytes.size(), choice.size());
    std::copy_n(bytes.begin(), chosen, choice.begin());
    const std::array<std::size_t, 4> places = {choice[1] % head, head + choice[1] % 99 * block,
                                               tail + choice[1] * 39 * row,
                                               complete.size() - choice[1]};
    const std::size_t from = places[choice[0] % 4];
    const std::string piece = Compose(bytes.substr(chosen));
    std::string file = complete.substr(0, from);
    for (int i = 1 << choice[2] % 16; i > 0 && file.size() < from + 300'000; --i) {
        file += piece;
    }
    file += choice[3] % 2 == 0 ? complete.substr(std::min(from + choice[4], complete.size())) : "";
    std::ofstream(Scratch(), std::ios::binary) << file;

    *loaded = empty;
    Outcome([] { return Main::ReadDataFile(*loaded, Scratch()); }); // as far as it goes
    const std::string saved = Saved(*loaded);
    Require(Main::ReadDataFile(*again, Scratch()), "what was saved is no data file");
    Require(*loaded == *again, "it comes back as another ledger");
    Require(Saved(*again) == saved, "that ledger is saved as something else");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto target =
        std::map<std::string, void (*)(std::string)>{
            {"Import", ImportReports},
            {"DataFile", LoadFiles},
            {"Monsters", FindMonsters},
            {"Numbers", ReadNumbers},
        }
            .at(std::getenv("TARGET"));
    target({data, data + size});
    return 0;
}
