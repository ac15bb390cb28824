#include "datafile/DataFile.h"

#include "datafile/FieldReader.h"
#include "files/FileReplacement.h"

#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace Main {
namespace {

using std::string_view;

constexpr string_view FormatMark = "Ver: 6";
constexpr string_view AnyFormatMark = "Ver:";

// Collects fields in a buffer and writes it to the file when it is full.
class FieldWriter {
public:
    explicit FieldWriter(FileReplacement& file) : File(file), Buffer(Capacity) {}

    void Text(string_view text) {
        Reserve(text.size() + LongestFrame);
        Put("\"");
        if (text.size() > Capacity - LongestFrame) {
            Flush();
            File.Write(text);
        } else {
            Put(text);
        }
        Put("\"\r\n");
    }

    // Writes `count` numbers, value(1) to value(count). One call for a whole row of kills is
    // faster: the position in the buffer stays in a register.
    template <class Value>
    void Numbers(int count, Value value) {
        Reserve(static_cast<std::size_t>(count) * LongestNumberLine);
        char* next = Buffer.data() + Filled;
        for (int i = 1; i <= count; ++i) {
            next = PutNumber(next, value(i));
        }
        Filled = static_cast<std::size_t>(next - Buffer.data());
    }

    void Flush() {
        File.Write({Buffer.data(), Filled});
        Filled = 0;
    }

private:
    static constexpr std::size_t Capacity = std::size_t{256} << 10;
    static constexpr std::size_t LongestFrame = 4; // two quotes and the line end
    static constexpr std::size_t LongestNumberLine = 16;
    static_assert(MaxMonsters * LongestNumberLine <= Capacity, "the buffer holds a row of kills");

    static char* PutNumber(char* next, std::int32_t value) {
        if (value == 0) { // nearly all numbers
            *next++ = '0';
        } else {
            next = std::to_chars(next, next + LongestNumberLine, value).ptr;
        }
        *next++ = '\r';
        *next++ = '\n';
        return next;
    }

    void Reserve(std::size_t bytes) {
        if (Filled + bytes > Capacity) {
            Flush();
        }
    }
    void Put(string_view bytes) {
        bytes.copy(Buffer.data() + Filled, bytes.size());
        Filled += bytes.size();
    }

    FileReplacement& File;
    std::vector<char> Buffer;
    std::size_t Filled = 0;
};

// Visits all fields after the format mark, in the order of the file, for saves and loads alike.
// `number` and `text` are called with each field, `kills` with each character slot.
template <class Ledger, class OnNumber, class OnText, class OnKills>
void VisitFields(Ledger& ledger, OnNumber number, OnText text, OnKills kills) {
    number(ledger.GameNumber);
    number(ledger.PartyNumber);
    for (int c = 1; c <= MaxCharacters; ++c) {
        text(ledger.CharacterNames[c]);
        number(ledger.CharacterKills[c]);
        kills(c);
    }
    static_assert(MaxTurns == MaxMonsters, "a row holds one slot of either table");
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
        ledger, [&](std::int32_t value) { fields.Numbers(1, [value](int) { return value; }); },
        [&](string_view text) { fields.Text(text); },
        [&](int c) { fields.Numbers(MaxMonsters, [&](int m) { return ledger.KillTable(c, m); }); });
    fields.Flush();
    file.Commit();
}

bool ReadDataFile(KillLedger& ledger, const std::filesystem::path& path) {
    FieldReader fields(path);
    if (!fields.CanBegin(AnyFormatMark)) {
        return false; // without reading all of a first field of any length
    }
    const string_view mark = fields.ReadText();
    if (mark.size() <= AnyFormatMark.size() || !mark.starts_with(AnyFormatMark)) {
        return false;
    }
    const auto read = [&fields](auto& number) {
        number = fields.ReadNumber<std::decay_t<decltype(number)>>();
    };
    VisitFields(
        ledger, read, [&](std::string& text) { text = fields.ReadText(); },
        [&](int c) {
            for (int m = 1; m <= MaxMonsters; ++m) {
                read(ledger.KillTable(c, m));
            }
        });
    return true;
}

} // namespace Main
