#include "ui/ListSorter.h"

#include "text/Numbers.h"
#include "text/Text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <exception>
#include <optional>

namespace Main {
namespace {

using std::string_view;

constexpr std::string_view Parting("\0", 1); // between a parked text and the tag
constexpr string_view ZeroDate = "18991230000000";

// Runs one step of the sort; its failure is ignored.
template <class Step>
void Try(Step step) {
    try {
        step();
    } catch (const std::exception&) {
        // The next step still runs.
    }
}

struct Cell {
    std::string& Text;
    std::string& Tag;
};

Cell CellOf(ListItem& row, int index) {
    if (index == 1) {
        return {row.Text, row.Tag};
    }
    ListSubItem& cell = row.ListSubItems.at(static_cast<std::size_t>(index) - 2);
    return {cell.Text, cell.Tag};
}

// Always twenty whole digits, a point and ten decimals.
std::string Masked(double value) {
    constexpr std::size_t width = 31;
    std::array<char, 400> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                            std::chars_format::fixed, 10);
    std::string masked(digits.data(), end);
    if (masked.size() < width) {
        masked.insert(0, width - masked.size(), '0');
    }
    return masked;
}

// Keys of negative numbers begin with "&", which sorts before the digits.
std::string NumberKey(string_view text) {
    if (!Numbers::IsNumber(text)) {
        return {};
    }
    const double value = Numbers::Read(text);
    return value < 0 ? "&" + InvertDigits(Masked(-value)) : Masked(std::abs(value));
}

// YYYYMMDDHHMMSS, or nothing if the text is not a date.
std::optional<std::string> DateKey(string_view text) {
    constexpr string_view pattern = "0000-00-00 00:00:00"; // 0 is any digit
    const string_view date = Text::Trim(text);
    if (date.size() != 10 && date.size() != 16 && date.size() != 19) {
        return std::nullopt;
    }
    std::string key;
    for (std::size_t at = 0; at < date.size(); ++at) {
        const bool digit = Text::IsDigit(date[at]);
        if (pattern[at] == '0' ? !digit : date[at] != pattern[at]) {
            return std::nullopt;
        }
        if (digit) {
            key += date[at];
        }
    }
    key.resize(ZeroDate.size(), '0');
    const auto number = [&key](std::size_t first, std::size_t count) {
        return static_cast<int>(Numbers::Read(string_view(key).substr(first, count)));
    };
    const std::chrono::year_month_day day{std::chrono::year(number(0, 4)),
                                          std::chrono::month(static_cast<unsigned>(number(4, 2))),
                                          std::chrono::day(static_cast<unsigned>(number(6, 2)))};
    const bool exists = day.ok() && number(8, 2) < 24 && number(10, 2) < 60 && number(12, 2) < 60;
    return exists ? std::optional(key) : std::nullopt;
}

void Park(Cell cell) {
    cell.Tag.insert(0, Parting).insert(0, cell.Text);
}

void Restore(Cell cell) {
    const std::size_t parting = cell.Tag.find(Parting);
    if (parting != std::string::npos) {
        cell.Text = cell.Tag.substr(0, parting);
        cell.Tag.erase(0, parting + 1);
    }
}

} // namespace

void SortListView(const Desktop& desktop, ListView& list, int Index, int DataType, bool Ascending) {
    const Pointer savedPointer = list.MousePointer;
    list.MousePointer = Pointer::Hourglass;
    Try([&] { desktop.LockWindowUpdate(&list); });

    const bool keyed = DataType == SortNumber || DataType == SortDate;
    if (keyed) {
        std::string workingDate(ZeroDate);
        for (int l = 1; l <= list.Count(); ++l) {
            Try([&] {
                const Cell cell = CellOf(list.Item(l), Index);
                const std::string text = cell.Text;
                Park(cell);
                if (DataType == SortNumber) {
                    cell.Text = NumberKey(text);
                } else {
                    workingDate = DateKey(text).value_or(workingDate);
                    cell.Text = workingDate;
                }
            });
        }
    }
    list.SortOrder = Ascending ? 0 : 1;
    list.SortKey = Index - 1;
    Try([&] { list.SetSorted(true); });
    if (keyed) {
        for (int l = 1; l <= list.Count(); ++l) {
            Try([&] { Restore(CellOf(list.Item(l), Index)); });
        }
    }
    Try([&] { desktop.LockWindowUpdate(nullptr); });
    list.MousePointer = savedPointer;
}

std::string InvertDigits(std::string_view text) {
    std::string inverted(text);
    for (char& c : inverted) {
        if (Text::IsDigit(c)) {
            c = static_cast<char>('0' + '9' - c);
        } else if (c == '-') {
            c = ' ';
        }
    }
    return inverted;
}

} // namespace Main
