#pragma once

#include <cstddef>
#include <string_view>

// Text has one byte per character. A blank is a space and nothing else. Positions count from 1; 0
// means not found.
namespace Text {

// Removes the blanks at both ends.
std::string_view Trim(std::string_view text);

inline bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Exact and case-sensitive.
inline bool Contains(std::string_view text, std::string_view sought) {
    return text.find(sought) != std::string_view::npos;
}

// Position of the first `sought`, or 0.
inline std::size_t Position(std::string_view text, std::string_view sought) {
    return text.find(sought) + 1; // npos + 1 is 0
}

// The text before `position`; the whole text if it ends earlier, or for position 0.
inline std::string_view Before(std::string_view text, std::size_t position) {
    return text.substr(0, position - 1);
}

// The text from `position` on, if any. Throws std::out_of_range for position 0.
inline std::string_view From(std::string_view text, std::size_t position) {
    return position > text.size() ? std::string_view{} : text.substr(position - 1);
}

// `count` characters from `position` on, or what there is of them.
inline std::string_view Field(std::string_view text, std::size_t position, std::size_t count) {
    return From(text, position).substr(0, count);
}

// The text without its last `count` characters. Throws Failure if it has fewer.
std::string_view Cut(std::string_view text, std::size_t count);

} // namespace Text
