#pragma once

#include "controls/Controls.h"
#include "skin/Translate.h"

#include <QAbstractTableModel>

// Offers the rows of a list control to a view. It reads them in place and copies none.
class RowModel : public QAbstractTableModel {
public:
    RowModel(const ListView& list, QObject* parent) : QAbstractTableModel(parent), List(list) {}

    // Makes the view read all rows again.
    void Restart() {
        beginResetModel();
        Rows = List.Count();
        endResetModel();
    }

    // Called for each row of a refill, as is flags: without the checks of the base class.
    QModelIndex index(int row, int column, const QModelIndex& parent) const override {
        const bool exists = !parent.isValid() && row >= 0 && row < Rows && column >= 0 &&
                            column < static_cast<int>(List.ColumnHeaders.size());
        return exists ? createIndex(row, column) : QModelIndex();
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren
                               : Qt::NoItemFlags;
    }

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : Rows; }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(List.ColumnHeaders.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        // Nobody reads more, and the view would measure and lay out megabytes at each repaint.
        constexpr std::size_t longest = 1000; // characters
        if (role == Qt::TextAlignmentRole) {
            return headerData(index.column(), Qt::Horizontal, role);
        }
        // There may be fewer rows than at the last restart.
        if (role != Qt::DisplayRole || !index.isValid() || index.row() >= List.Count()) {
            return {};
        }
        const ListItem& row = List.Item(index.row() + 1);
        const auto column = static_cast<std::size_t>(index.column());
        const std::string& text = column == 0 ? row.Text : row.ListSubItems.at(column - 1).Text;
        return Translate::ToScreen(std::string_view(text).substr(0, longest));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || section < 0 || section >= columnCount({})) {
            return {};
        }
        const ColumnHeader& header = List.ColumnHeaders[static_cast<std::size_t>(section)];
        if (role == Qt::TextAlignmentRole) {
            return static_cast<int>(Translate::ToScreen(header.Align) | Qt::AlignVCenter);
        }
        if (role == Qt::AccessibleTextRole && List.Sorted() && section == List.SortKey) {
            const char* const direction = List.SortOrder == 0 ? "ascending" : "descending";
            return Translate::ToScreen(header.Text + ", sorted " + direction);
        }
        return role == Qt::DisplayRole ? Translate::ToScreen(header.Text) : QVariant();
    }

private:
    const ListView& List;
    int Rows = 0; // as of the last restart
};
