#include "datafile/DataFile.h"

#include "datafile/FieldReader.h"
#include "text/Text.h"

#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace Main {
namespace {

using std::string_view;

constexpr string_view FormatMark = "Ver: 6";
constexpr string_view AnyFormatMark = "Ver:";
constexpr string_view LineEnd = "\r\n";

// Puts fields into a buffer, and the buffer into the file whenever it has filled up.
class FieldWriter {
public:
    explicit FieldWriter(FileReplacement& file) : File(file) { Buffer.reserve(Capacity); }

    void Text(string_view text) {
        Buffer += '"';
        Append(text);
        Buffer += '"';
        EndLine();
    }

    void Number(std::int32_t value) {
        std::array<char, 12> digits; // NOLINT(*-member-init): to_chars fills what is read
        const auto [end, error] =
            std::to_chars(digits.data(), digits.data() + digits.size(), value);
        Buffer.append(digits.data(), end);
        EndLine();
    }

    void Flush() {
        File.Write(Buffer);
        Buffer.clear();
    }

private:
    static constexpr std::size_t Capacity = std::size_t{256} << 10;
    static constexpr std::size_t LongestNumberLine = 16;

    void Append(string_view text) {
        if (text.size() > Capacity - Buffer.size()) {
            Flush();
        }
        if (text.size() > Capacity) {
            File.Write(text); // a text of that size needs no buffer
        } else {
            Buffer += text;
        }
    }

    void EndLine() {
        Buffer += LineEnd;
        if (Capacity - Buffer.size() < LongestNumberLine) {
            Flush();
        }
    }

    FileReplacement& File;
    std::string Buffer;
};

// All fields behind the format mark, in the order of the file. Both directions go by this one
// list: `number` and `text` are called with each slot in turn.
template <class Ledger, class OnNumber, class OnText>
void VisitFields(Ledger& ledger, OnNumber number, OnText text) {
    number(ledger.GameNumber);
    number(ledger.PartyNumber);
    for (int c = 1; c <= MaxCharacters; ++c) {
        text(ledger.CharacterNames[c]);
        number(ledger.CharacterKills[c]);
        for (int m = 1; m <= MaxMonsters; ++m) {
            number(ledger.KillTable(c, m));
        }
    }
    static_assert(MaxTurns == MaxMonsters, "the tail rows join the two tables");
    for (int i = 1; i <= MaxTurns; ++i) {
        number(ledger.TurnFileLengths[i]);
        text(ledger.TurnHashes[i]);
        text(ledger.MonsterNames[i]);
    }
}

} // namespace

void WriteDataFile(const KillLedger& ledger, const std::filesystem::path& path) {
    FileReplacement file(path);
    FieldWriter fields(file);
    fields.Text(FormatMark);
    VisitFields(
        ledger, [&](std::int32_t value) { fields.Number(value); },
        [&](string_view text) { fields.Text(text); });
    fields.Flush();
    file.Commit();
}

bool ReadDataFile(KillLedger& ledger, const std::filesystem::path& path) {
    FieldReader fields(path);
    if (!fields.CanBegin(AnyFormatMark)) {
        return false; // whatever its length
    }
    const string_view mark = fields.ReadText();
    if (mark.size() <= AnyFormatMark.size() || !::Text::Begins(mark, AnyFormatMark)) {
        return false;
    }
    VisitFields(
        ledger, [&](auto& value) { value = fields.ReadNumber<std::decay_t<decltype(value)>>(); },
        [&](std::string& text) { text = fields.ReadText(); });
    return true;
}

} // namespace Main
