#pragma once

#include "controls/Controls.h"
#include "skin/Translate.h"

#include <QTreeView>

#include <set>

class KeyHeader;
class RowModel;

// Shows a list control. The rows are read in place: a refill copies nothing.
class ListWidget : public QTreeView {
public:
    ListWidget(ListView& list, const Translate::Scale& scale, QWidget* parent);

    bool Shows(const ListView* list) const { return list == &List; }

    // Takes over rows, selection and sort arrow of the control if rows changed since the last call.
    void Sync();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    // Returns whether the key was one for the columns or their header.
    bool PressInHeader(const QKeyEvent& event);

    ListView& List;
    RowModel* Model;
    KeyHeader* Header;
    bool Stale = true; // rows have changed since the last Sync
    bool Syncing = false;
    std::set<int> KeysDown; // those pressed while this list had the focus
    bool MouseDown = false; // the left button was pressed here
};
