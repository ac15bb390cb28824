#pragma once

#include <string>
#include <string_view>
#include <utility>

// Code page Windows-1252, whatever the machine's own is; its five unassigned bytes as the control
// characters of the same number, so that every byte survives the way to Unicode and back.
namespace CodePage {

// Returns one UTF-16 unit per byte.
std::u16string ToUnicode(std::string_view text);

// Returns one byte per character. A character that the page lacks becomes one '?', even if it
// takes two UTF-16 units.
std::string FromUnicode(std::u16string_view text);

// What to compare to order texts as a reader expects: first the base letters, then
// the accents. Upper and lower case are equal; all that is no letter keeps its byte order.
std::pair<std::string, std::string> SortKey(std::string_view text);

} // namespace CodePage
