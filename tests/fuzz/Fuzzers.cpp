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
#include <regex>
#include <unistd.h>

namespace {

// Ends the run and keeps the input; the sanitizer prints where this was.
void Require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

std::filesystem::path Write(const std::string& bytes) {
    const auto path = std::filesystem::temp_directory_path() / std::to_string(::getpid());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

// Any report, with a turn header in front: it must not count twice.
void ImportReports(std::string bytes) {
    static const auto ledger = std::make_unique<KillLedger>();
    static const auto empty = std::make_unique<KillLedger>();
    static Slaying_Tallies window;
    const Desktop desktop{.ShowMessage = [](const Message&) { return Answer::Ok; }};
    const auto report = Write(bytes.insert(0, "Turn#  0001\n"));
    const auto import = [&] { return Main::ProcessTurn(*ledger, window, desktop, report), true; };
    *ledger = *empty;
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

// Fields of a data file, held against the format as an expression. The first byte says which of
// them are read as numbers, the second where they are: around the end of the reader's first buffer.
void ReadFields(std::string bytes) {
    static const std::regex format(R"rx((?:"([^]*?)"(?=[\r\n]|,["0-9-]|$)|"([^]*)|([^,\r\n]*)))rx"
                                   R"rx((?:\r\n|[,\r\n])?)rx");
    bytes.resize(std::max(bytes.size(), std::size_t{2}));
    const std::string filler(32'770U - static_cast<unsigned char>(bytes[1]), 'x');
    std::string rest = bytes.substr(2);
    FieldReader reader(Write(filler + '\n' + rest));
    Require(reader.ReadText() == filler);
    for (int i = 0; !rest.empty(); ++i) {
        std::smatch match;
        Require(std::regex_search(rest, match, format, std::regex_constants::match_continuous));
        const std::string field = match[1].str() + match[2].str() + match[3].str();
        const bool complete = !match[2].matched;
        rest = match.suffix();
        const double expected = ReadPlainly(field);
        const auto value = Outcome([&] { return Numbers::Read(field); });
        Require(value ? *value == expected : std::isinf(expected));
        Require(!value || Numbers::Read(Numbers::PlainDigits(*value)) == *value);
        if ((bytes[0] >> i % 8 & 1) == 0) {
            const auto text = Outcome([&] { return std::string(reader.ReadText()); });
            Require(complete ? text == field : !text);
        } else {
            const auto number = Outcome([&] { return reader.ReadNumber<std::int16_t>(); });
            const double whole = std::nearbyint(expected);
            const bool fits = whole >= INT16_MIN && whole <= INT16_MAX;
            Require(fits ? number == whole : !number);
        }
    }
    Require(!Outcome([&] { return reader.ReadText().size(); }));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::map<std::string, void (*)(std::string)> targets = {{"Import", ImportReports},
                                                                         {"Fields", ReadFields}};
    targets.at(std::getenv("TARGET"))({reinterpret_cast<const char*>(data), size});
    return 0;
}
