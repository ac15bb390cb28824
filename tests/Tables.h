#pragma once

#include "text/CodePage.h"
#include "text/Text.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// The fields of a text without the blanks around them. An empty last one is left out.
inline Lines Fields(const std::string& text, char separator) {
    Lines fields;
    std::istringstream stream(text);
    for (std::string field; std::getline(stream, field, separator);) {
        fields.emplace_back(Text::Trim(field));
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
            const std::filesystem::path text(std::u8string(line.begin(), line.end()));
            line = CodePage::FromUnicode(text.u16string()); // the page is in UTF-8
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
