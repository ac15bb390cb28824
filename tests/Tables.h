#pragma once

#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using Lines = std::vector<std::string>;

// The fields of a case or table written as text, without the blanks and line ends around them.
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

// The cases on a page: those rows of its tables whose first cell is in backquotes, which are left
// off.
inline std::vector<Lines> Cases(const std::filesystem::path& page) {
    std::vector<Lines> cases;
    std::ifstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("| `")) {
            Lines cells = Fields(line, '|');
            cells.erase(cells.begin());
            cells[0] = cells[0].substr(1, cells[0].size() - 2);
            cases.push_back(cells);
        }
    }
    return cases;
}

// What `work` returns, or nothing when it fails.
template <class Work>
auto Outcome(Work work) -> std::optional<decltype(work())> {
    try {
        return work();
    } catch (const std::exception&) {
        return std::nullopt;
    }
}
