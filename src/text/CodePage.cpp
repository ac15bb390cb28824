#include "text/CodePage.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace CodePage {
namespace {

// The characters of bytes 0x80 to 0x9F. Every other byte is the character of the same number.
constexpr std::array<char16_t, 32> HighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned char FirstHighControl = 0x80;

char16_t Character(unsigned char byte) {
    const std::size_t high = static_cast<std::size_t>(byte) - FirstHighControl;
    return high < HighControls.size() ? HighControls[high] : byte;
}

char Byte(char16_t character) {
    const auto* const high = std::find(HighControls.begin(), HighControls.end(), character);
    if (high != HighControls.end()) {
        return static_cast<char>(FirstHighControl + (high - HighControls.begin()));
    }
    const bool direct = character < FirstHighControl || (character >= 0xA0 && character <= 0xFF);
    return direct ? static_cast<char>(character) : '?';
}

// The letters with accents and the like that sort as one base letter or two, each in its upper
// and its lower case.
struct Family {
    std::string_view Base;
    std::string_view Members;
};
constexpr auto Families = std::to_array<Family>({
    {"a", "\xC0\xE0\xC1\xE1\xC2\xE2\xC3\xE3\xC4\xE4\xC5\xE5"},
    {"ae", "\xC6\xE6"},
    {"c", "\xC7\xE7"},
    {"d", "\xD0\xF0"},
    {"e", "\xC8\xE8\xC9\xE9\xCA\xEA\xCB\xEB"},
    {"i", "\xCC\xEC\xCD\xED\xCE\xEE\xCF\xEF"},
    {"n", "\xD1\xF1"},
    {"o", "\xD2\xF2\xD3\xF3\xD4\xF4\xD5\xF5\xD6\xF6\xD8\xF8"},
    {"oe", "\x8C\x9C"},
    {"s", "\x8A\x9A"},
    {"ss", "\xDF"},
    {"th", "\xDE\xFE"},
    {"u", "\xD9\xF9\xDA\xFA\xDB\xFB\xDC\xFC"},
    {"y", "\xDD\xFD\x9F\xFF"},
    {"z", "\x8E\x9E"},
});

// Whether two UTF-16 units are one character.
bool IsPair(char16_t first, char16_t second) {
    return first >= 0xD800 && first <= 0xDBFF && second >= 0xDC00 && second <= 0xDFFF;
}

} // namespace

std::u16string ToUnicode(std::string_view text) {
    std::u16string unicode(text.size(), u'\0');
    std::transform(text.begin(), text.end(), unicode.begin(),
                   [](char c) { return Character(static_cast<unsigned char>(c)); });
    return unicode;
}

std::string FromUnicode(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    char16_t before = 0;
    for (const char16_t unit : text) {
        if (!IsPair(before, unit)) {
            bytes.push_back(Byte(unit));
        }
        before = unit;
    }
    return bytes;
}

std::pair<std::string, std::string> SortKey(std::string_view text) {
    std::string bases;
    bases.reserve(text.size());
    std::string accents; // 0 for none, else the number of the letter in its family
    for (const char c : text) {
        const auto* family = Families.end();
        if (static_cast<unsigned char>(c) >= FirstHighControl) {
            family = std::find_if(Families.begin(), Families.end(), [c](const Family& letters) {
                return letters.Members.find(c) != std::string_view::npos;
            });
        }
        if (family != Families.end()) {
            bases += family->Base;
            accents += static_cast<char>(1 + family->Members.find(c) / 2);
        } else {
            bases += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
            accents += '\0';
        }
    }
    accents.erase(accents.find_last_not_of('\0') + 1);
    return {std::move(bases), std::move(accents)};
}

} // namespace CodePage
