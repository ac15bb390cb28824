#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace CodePage {
namespace {

// Bytes 0x80 to 0x9F; all others are the characters of the same number.
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

// A surrogate is one half of a character of two units.
bool IsLeadingSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsTrailingSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
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
        if (!(IsLeadingSurrogate(before) && IsTrailingSurrogate(unit))) {
            bytes.push_back(Byte(unit));
        }
        before = unit;
    }
    return bytes;
}

unsigned char Lower(unsigned char character) {
    constexpr unsigned char multiplication = 0xD7; // stands among the letters
    if ((character >= 'A' && character <= 'Z') ||
        (character >= 0xC0 && character <= 0xDE && character != multiplication)) {
        return static_cast<unsigned char>(character + 0x20);
    }
    switch (character) {
    case 0x8A: // S with caron
    case 0x8C: // OE
    case 0x8E: // Z with caron
        return static_cast<unsigned char>(character + 0x10);
    case 0x9F: // Y with diaeresis
        return 0xFF;
    default:
        return character;
    }
}

} // namespace CodePage
