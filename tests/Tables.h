#pragma once

#include "text/CodePage.h"
#include "text/Text.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
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

// The cases on a page: the rows of its tables, without the backquotes around their first cells.
// Throws std::runtime_error if there are none, or on a row that is no case.
inline std::vector<Lines> Cases(const std::filesystem::path& page) {
    std::vector<Lines> cases;
    std::ifstream lines(page);
    std::size_t columns = 0; // of the table that this line is in, with one for the left edge
    for (std::string line; std::getline(lines, line);) {
        const std::filesystem::path text(std::u8string(line.begin(), line.end()));
        Lines cells = Fields(CodePage::FromUnicode(text.u16string()), '|'); // the page is in UTF-8
        if (cells.empty() || line.starts_with("|---")) {
            columns = cells.size();
        } else if (columns > 0 || line.starts_with("| `")) {
            if (cells.size() != columns || !line.starts_with("| `") || !cells[1].ends_with('`')) {
                throw std::runtime_error("no case: " + line);
            }
            cells.erase(cells.begin());
            cells[0] = cells[0].substr(1, cells[0].size() - 2);
            cases.push_back(cells);
        }
    }
    return cases.empty() ? throw std::runtime_error("no cases: " + page.string()) : cases;
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
