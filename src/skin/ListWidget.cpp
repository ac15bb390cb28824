#include "skin/ListWidget.h"

#include <QAbstractTableModel>
#include <QAccessible>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <utility>

class RowModel : public QAbstractTableModel {
public:
    RowModel(const ListView& list, QObject* parent) : QAbstractTableModel(parent), List(list) {}

    void Restart() {
        beginResetModel();
        Rows = List.Count();
        endResetModel();
    }

    // Both are asked for each row of a refill, and have no need of the checks of the base class.
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
        if (role == Qt::TextAlignmentRole) {
            return AlignmentOf(index.column());
        }
        // The rows may be fewer already than at the last restart.
        if (role != Qt::DisplayRole || index.row() >= List.Count()) {
            return {};
        }
        const ListItem& row = List.Item(index.row() + 1);
        const auto column = static_cast<std::size_t>(index.column());
        return Translate::ToScreen(column == 0 ? row.Text : row.ListSubItems.at(column - 1).Text);
    }
    QVariant headerData(int section, Qt::Orientation /*orientation*/, int role) const override {
        if (role == Qt::TextAlignmentRole) {
            return AlignmentOf(section);
        }
        return role == Qt::DisplayRole ? Translate::ToScreen(Header(section).Text) : QVariant();
    }

private:
    const ColumnHeader& Header(int section) const {
        return List.ColumnHeaders.at(static_cast<std::size_t>(section));
    }
    QVariant AlignmentOf(int section) const {
        return static_cast<int>(Translate::ToScreen(Header(section).Align.Get()) |
                                Qt::AlignVCenter);
    }

    const ListView& List;
    int Rows = 0; // as of the last restart
};

namespace {

// The key codes that lists act on, 0 for all others.
int ToKeyCode(int key) {
    switch (key) {
    case Qt::Key_Up:
        return KeyUpArrow;
    case Qt::Key_Down:
        return KeyDownArrow;
    case Qt::Key_Delete:
        return KeyDelete;
    default:
        return 0;
    }
}

} // namespace

// A header that shows which of its columns a key would click, while its list has the focus.
class KeyHeader : public QHeaderView {
public:
    explicit KeyHeader(QWidget* list) : QHeaderView(Qt::Horizontal, list) {}

    int Framed() const { return FramedSection; }
    void Frame(int section) {
        FramedSection = section;
        window()->setAttribute(Qt::WA_KeyboardFocusChange); // from now on focus frames show
        viewport()->update();
        QAccessibleEvent told(parentWidget(), QAccessible::Focus);
        told.setChild(section); // the header cells are the list's first children
        QAccessible::updateAccessibility(&told);
    }

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override {
        painter->save();
        QHeaderView::paintSection(painter, rect, section);
        painter->restore();
        if (section == FramedSection && sectionsClickable() && parentWidget()->hasFocus()) {
            QStyleOptionFocusRect frame;
            frame.initFrom(this);
            frame.rect = rect.adjusted(1, 1, -1, -1);
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, this);
        }
    }

private:
    int FramedSection = 0;
};

ListWidget::ListWidget(ListView& list, const Translate::Scale& scale, QWidget* parent)
    : QTreeView(parent),
      List(list),
      Model(new RowModel(list, this)),
      Header(new KeyHeader(this)) {
    setHeader(Header);
    setModel(Model);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(static_cast<bool>(List.ColumnClick));
    header()->setMinimumSectionSize(scale.Length(300));
    for (int column = 1; column <= model()->columnCount(); ++column) {
        Translate::Follow(List.Column(column).Width, header(),
                          [column, scale](QHeaderView* shown, int width) {
                              shown->resizeSection(column - 1, scale.Length(width));
                          });
    }
    connect(header(), &QHeaderView::sectionClicked, this,
            [this](int section) { List.RaiseColumnClick(section + 1); });
    Translate::Follow(List.MousePointer, this, [](QTreeView* shown, Pointer shape) {
        shown->setCursor(shape == Pointer::Hourglass ? Qt::WaitCursor : Qt::ArrowCursor);
    });
    List.RowsChanged = [shown = QPointer<ListWidget>(this)] {
        if (shown) {
            shown->Stale = true;
            QMetaObject::invokeMethod(
                shown, [shown] { shown->Sync(); }, Qt::QueuedConnection);
        }
    };
    Sync();
}

void ListWidget::Sync() {
    if (!Stale) {
        return;
    }
    Stale = false;
    List.MarkRead();
    Syncing = true;
    Model->Restart();
    if (List.SelectedRow() != 0) {
        const QModelIndex selected = Model->index(List.SelectedRow() - 1, 0, {});
        setCurrentIndex(selected);
        scrollTo(selected);
    }
    header()->setSortIndicatorShown(List.Sorted());
    if (List.Sorted()) {
        header()->setSortIndicator(List.SortKey,
                                   List.SortOrder == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    Syncing = false;
}

void ListWidget::keyPressEvent(QKeyEvent* event) {
    Sync();
    KeysDown.insert(event->key());
    if (!PressInHeader(*event)) {
        QTreeView::keyPressEvent(event);
    }
}

// Left and Right, which move nothing in the rows, choose a column; Enter clicks its header.
bool ListWidget::PressInHeader(const QKeyEvent& event) {
    if (!List.ColumnClick) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_Left:
        Header->Frame(std::max(Header->Framed() - 1, 0));
        return true;
    case Qt::Key_Right:
        Header->Frame(std::min(Header->Framed() + 1, Header->count() - 1));
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event.isAutoRepeat()) {
            Header->Frame(Header->Framed());
            List.RaiseColumnClick(Header->Framed() + 1);
        }
        return true;
    default:
        return false;
    }
}

// Only the release of a key that was pressed here counts: the Enter that closes a message box is
// released over the list behind it, and a key held down sends releases of its own.
void ListWidget::keyReleaseEvent(QKeyEvent* event) {
    QTreeView::keyReleaseEvent(event);
    if (!event->isAutoRepeat() && KeysDown.erase(event->key()) > 0) {
        Sync();
        List.RaiseKeyUp(ToKeyCode(event->key()),
                        event->modifiers().testFlag(Qt::ShiftModifier) ? 1 : 0);
    }
}

void ListWidget::focusInEvent(QFocusEvent* event) {
    Header->viewport()->update();
    QTreeView::focusInEvent(event);
}

void ListWidget::focusOutEvent(QFocusEvent* event) {
    KeysDown.clear();
    Header->viewport()->update();
    QTreeView::focusOutEvent(event);
}

// Only the left button chooses: the row that it selects is always the one whose click is raised.
void ListWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        Sync();
        MouseDown = true;
        QTreeView::mousePressEvent(event);
    }
}

// The second press of a double click is a press like any other.
void ListWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void ListWidget::mouseReleaseEvent(QMouseEvent* event) {
    QTreeView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && std::exchange(MouseDown, false)) {
        Sync();
        List.RaiseClick();
    }
}

void ListWidget::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (!Syncing && current.isValid()) {
        List.Select(current.row() + 1);
    }
}

// One row is selected as long as there are rows: blank space and the Ctrl key leave it so.
QItemSelectionModel::SelectionFlags ListWidget::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* /*event*/) const {
    if (!index.isValid()) {
        return QItemSelectionModel::NoUpdate;
    }
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}
