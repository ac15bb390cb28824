#pragma once

#include "platform/Controls.h"
#include "skin/Translate.h"

#include <QTreeView>

#include <set>

class KeyHeader;
class RowModel;

// A list on the screen. It reads the rows of its control in place: a refill copies nothing, and
// however many rows changed, the view starts anew once.
class ListWidget : public QTreeView {
public:
    ListWidget(ListView& list, const Translate::Scale& scale, QWidget* parent);

    // Whether `list` is the control behind this widget.
    bool Shows(const ListView* list) const { return list == &List; }

    // Takes over rows and selection of the control if they changed since the last time.
    void Sync();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    // Whether the key worked the header.
    bool PressInHeader(const QKeyEvent& event);

    ListView& List;
    RowModel* Model;
    KeyHeader* Header;
    bool Stale = true;
    bool Syncing = false;
    std::set<int> KeysDown; // pressed while this list had the focus
    bool MouseDown = false; // the left button was pressed here
};
