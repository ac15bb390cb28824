#pragma once

#include <string>
#include <string_view>

// The machine's ANSI code page: Windows-1252, its five unassigned bytes as the control
// characters of the same number, so that every byte has a character and comes back as itself.
namespace CodePage {

// One UTF-16 unit per byte.
std::u16string ToUnicode(std::string_view text);

// One byte per character; a character that the page lacks becomes one '?', also when it takes
// two UTF-16 units.
std::string FromUnicode(std::u16string_view text);

// The lower-case letter of an upper-case one, any other byte as it is.
unsigned char Lower(unsigned char character);

} // namespace CodePage
