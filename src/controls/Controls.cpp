#include "controls/Controls.h"

#include "text/CodePage.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

const std::string& CellText(const ListItem& row, int sortKey) {
    static const std::string none;
    if (sortKey == 0) {
        return row.Text;
    }
    const auto cell = static_cast<std::size_t>(sortKey) - 1;
    return cell < row.ListSubItems.size() ? row.ListSubItems[cell].Text : none;
}

} // namespace

void ListView::Clear() {
    RowCount = 0;
    Selected = 0;
    Raise(RowsChanged);
}

ListItem& ListView::Add(std::string_view text) {
    if (RowCount == Rows.size()) {
        Rows.emplace_back();
    }
    ListItem& row = Rows[RowCount++];
    row.Text = text;
    row.Tag.clear();
    row.ListSubItems.resize(ColumnHeaders.empty() ? 0 : ColumnHeaders.size() - 1);
    for (ListSubItem& cell : row.ListSubItems) {
        cell.Text.clear();
        cell.Tag.clear();
    }
    if (Selected == 0) {
        Selected = 1;
    }
    Raise(RowsChanged);
    return row;
}

ListItem& ListView::Item(int number) {
    Raise(RowsChanged);
    return Rows.at(Index(number));
}

const ListItem& ListView::Item(int number) const {
    return Rows.at(Index(number));
}

std::size_t ListView::Index(int number) const {
    if (number < 1 || number > Count()) {
        throw std::out_of_range("no such row");
    }
    return static_cast<std::size_t>(number) - 1;
}

const ListItem* ListView::SelectedItem() const {
    return Selected == 0 ? nullptr : &Item(Selected);
}

void ListView::Select(int number) {
    if (number >= 1 && number <= Count()) {
        Selected = number;
    }
}

void ListView::SetSorted(bool on) {
    IsSorted = on;
    if (!on) {
        return;
    }
    using Key = decltype(CodePage::SortKey({}));
    std::vector<std::pair<Key, int>> order; // and the number of the row by now
    for (int number = 1; number <= Count(); ++number) {
        order.emplace_back(CodePage::SortKey(CellText(Rows[Index(number)], SortKey)), number);
    }
    const bool descending = SortOrder != 0;
    std::stable_sort(order.begin(), order.end(), [descending](const auto& a, const auto& b) {
        return descending ? b.first < a.first : a.first < b.first;
    });
    std::vector<ListItem> sorted;
    sorted.reserve(RowCount);
    const int selected = std::exchange(Selected, 0);
    for (const auto& [key, number] : order) {
        sorted.push_back(std::move(Rows[Index(number)]));
        Selected = number == selected ? static_cast<int>(sorted.size()) : Selected;
    }
    Rows = std::move(sorted);
    Raise(RowsChanged);
}

bool ListView::HasRowEvents() const {
    return Enabled && Selected != 0;
}

void ListView::RaiseClick() const {
    if (HasRowEvents()) {
        Raise(Click);
    }
}

void ListView::RaiseKeyUp(int keyCode, int shift) const {
    if (HasRowEvents()) {
        Raise(KeyUp, keyCode, shift);
    }
}

void ListView::RaiseColumnClick(int column) const {
    Raise(ColumnClick, column);
}

void Form::Show() {
    if (!Loaded) {
        Loaded = true;
        Raise(Load);
    }
    Visible = true;
}

void Form::Unload() {
    if (Loaded) {
        Raise(Unloading);
        Loaded = false;
        Visible = false;
    }
}
