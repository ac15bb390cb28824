#include "Tables.h"
#include "controls/Desktop.h"
#include "datafile/FieldReader.h"
#include "files/Files.h"
#include "import/TurnScanner.h"
#include "text/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <unistd.h>

namespace {

// Ends the run and keeps the input; the sanitizer prints where this was.
void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::filesystem::path Write(const char* name, const std::string& bytes) {
    const auto path = std::filesystem::temp_directory_path() / (name + std::to_string(::getpid()));
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

// Any report, with a turn header in front: it must not count twice.
void ImportReports(std::string bytes) {
    static const auto ledger = std::make_unique<KillLedger>();
    static Slaying_Tallies window;
    const Desktop desktop{.ShowMessage = [](const Message&) { return Answer::Ok; }};
    const auto report = Write("report", bytes.insert(0, "Turn#  0001\n"));
    const auto import = [&] { return Main::ProcessTurn(*ledger, window, desktop, report), true; };
    Main::BlankLedger(*ledger);
    Outcome(import);
    const auto kills = ledger->CharacterKills;
    Outcome(import);
    Require(kills == ledger->CharacterKills);
}

// The number that `text` begins with, by the C library.
double ReadPlainly(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
    text = text.substr(0, text.find_first_not_of("+-.0123456789eE"));
    return std::strtod(text.c_str(), nullptr);
}

// Fields of a data file, which must be the same at its start and around the end of the reader's
// first buffer. The first byte says which of them are read as numbers, the second where they are.
void ReadFields(std::string bytes) {
    bytes.resize(std::max(bytes.size(), std::size_t{2}));
    const std::string filler(32'770U - static_cast<unsigned char>(bytes[1]), 'x');
    FieldReader early(Write("early", bytes.substr(2)));
    FieldReader late(Write("late", filler + '\n' + bytes.substr(2)));
    Require(late.ReadText() == filler);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if ((bytes[0] >> i % 8 & 1) != 0) {
            const auto number = Outcome([&] { return early.ReadNumber<std::int16_t>(); });
            Require(number == Outcome([&] { return late.ReadNumber<std::int16_t>(); }));
            continue;
        }
        const auto text = Outcome([&] { return std::string(early.ReadText()); });
        Require(text == Outcome([&] { return std::string(late.ReadText()); }));
        const double expected = ReadPlainly(text.value_or(""));
        const auto value = Outcome([&] { return Numbers::Read(text.value_or("")); });
        Require(value ? *value == expected : std::isinf(expected));
        Require(!value || Numbers::Read(Numbers::PlainDigits(*value)) == *value);
    }
    Require(!Outcome([&] { return late.ReadText().size(); })); // each took a byte, or the rest
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::map<std::string, void (*)(std::string)> targets = {{"Import", ImportReports},
                                                                         {"Fields", ReadFields}};
    targets.at(std::getenv("TARGET"))({reinterpret_cast<const char*>(data), size});
    return 0;
}
