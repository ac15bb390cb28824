#include "text/Text.h"

#include "text/Failure.h"

namespace Text {

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view Cut(std::string_view text, std::size_t count) {
    if (text.size() < count) {
        throw Failure("a cut longer than the text");
    }
    return text.substr(0, text.size() - count);
}

} // namespace Text
