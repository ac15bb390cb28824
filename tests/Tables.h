#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

using Lines = std::vector<std::string>;

// The fields of a case or a table that is written as text, without the blanks and line ends
// around them.
inline Lines Fields(std::string_view text, char separator) {
    Lines fields;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = text.find(separator);
        const std::string_view field = text.substr(0, end);
        const std::size_t first = std::min(field.find_first_not_of(" \n"), field.size());
        fields.emplace_back(field.substr(first, field.find_last_not_of(" \n") + 1 - first));
        text.remove_prefix(std::min(end, text.size() - 1) + 1);
    }
    return fields;
}
