#pragma once

#include <cstddef>
#include <string_view>

// Text is one byte per character, in the ANSI code page. A blank is the space character and
// nothing else. Positions count characters from 1; 0 says that there is none.
namespace Text {

// The text without the blanks at both of its ends.
std::string_view Trim(std::string_view text);

inline bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Exact and case-sensitive.
inline bool Contains(std::string_view text, std::string_view sought) {
    return text.find(sought) != std::string_view::npos;
}
inline bool Begins(std::string_view text, std::string_view start) {
    return text.starts_with(start);
}

// Position of the first `sought` in `text`, or 0.
inline std::size_t Position(std::string_view text, std::string_view sought) {
    return text.find(sought) + 1; // npos is the largest value, so that npos + 1 is 0
}

// The text before `position`, from 1 on; all of a text that ends earlier.
inline std::string_view Before(std::string_view text, std::size_t position) {
    return text.substr(0, position - 1);
}

// The text from `position` on; empty when the text ends earlier.
inline std::string_view From(std::string_view text, std::size_t position) {
    return position > text.size() ? std::string_view{} : text.substr(position - 1);
}

// `count` characters from `position` on; fewer, or none, when the text ends earlier.
inline std::string_view Field(std::string_view text, std::size_t position, std::size_t count) {
    return From(text, position).substr(0, count);
}

// The text without its last `count` characters.
// Fails (InvalidArgument) on a text of fewer characters.
std::string_view Cut(std::string_view text, std::size_t count);

} // namespace Text
