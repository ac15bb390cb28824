#include "skin/ListWidget.h"

#include "skin/KeyHeader.h"
#include "skin/RowModel.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

// Returns the key code of a key that lists act on, 0 for any other.
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

    header()->setStretchLastSection(false);
    header()->setTextElideMode(Qt::ElideRight);
    header()->setSectionsClickable(static_cast<bool>(List.ColumnClick));
    header()->setSortIndicatorShown(header()->sectionsClickable()); // keeps room for the arrow
    header()->setSortIndicator(-1, Qt::AscendingOrder);
    header()->setMinimumSectionSize(scale.Length(300));
    connect(header(), &QHeaderView::sectionResized, this, [this, scale] {
        int own = 0;
        for (const ColumnHeader& column : List.ColumnHeaders) {
            own += scale.Length(column.Width);
        }
        // Some styles' vertical scroll bar leaves a pixel less than the columns' own widths. That
        // is no reason for a horizontal one, as long as the columns fit into the list.
        own = std::min(own, scale.Length(List.At.Width));
        setHorizontalScrollBarPolicy(header()->length() > own ? Qt::ScrollBarAsNeeded
                                                              : Qt::ScrollBarAlwaysOff);
    });
    for (int column = 1; column <= model()->columnCount(); ++column) {
        Translate::Follow(List.Column(column).Width, header(),
                          [column, scale](QHeaderView* shown, int width) {
                              shown->resizeSection(column - 1, scale.Length(width));
                          });
    }
    connect(header(), &QHeaderView::sectionClicked, this, [this](int section) {
        Header->Frame(section);
        List.RaiseColumnClick(section + 1);
    });
    Translate::Follow(List.MousePointer, this, [](QTreeView* shown, Pointer shape) {
        shown->setCursor(shape == Pointer::Hourglass ? Qt::WaitCursor : Qt::ArrowCursor);
    });
    List.RowsChanged = [shown = QPointer<ListWidget>(this)] {
        // However many rows change before the next event, the view reads them once.
        if (shown && !std::exchange(shown->Stale, true)) {
            QMetaObject::invokeMethod(
                shown, [shown] { shown->Sync(); }, Qt::QueuedConnection);
        }
    };
    Sync();
}

void ListWidget::Sync() {
    if (!std::exchange(Stale, false)) {
        return;
    }
    Syncing = true;
    Model->Restart();
    if (List.SelectedRow() != 0) {
        const QModelIndex selected = Model->index(List.SelectedRow() - 1, 0, {});
        setCurrentIndex(selected);
        scrollTo(selected);
    }
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

// Ctrl and + fit the columns to their contents. Left and Right frame a column, Enter clicks it.
bool ListWidget::PressInHeader(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Plus && event.modifiers().testFlag(Qt::ControlModifier)) {
        Header->resizeSections(QHeaderView::ResizeToContents);
        return true;
    }
    if (!List.ColumnClick) {
        return false;
    }
    const auto frame = [this](int section) {
        Header->FrameByKey(section);
        scrollTo(currentIndex().siblingAtColumn(section));
    };
    switch (event.key()) {
    case Qt::Key_Left:
        frame(std::max(Header->Framed() - 1, 0));
        return true;
    case Qt::Key_Right:
        frame(std::min(Header->Framed() + 1, Header->count() - 1));
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event.isAutoRepeat()) {
            List.RaiseColumnClick(Header->Framed() + 1);
            Sync(); // before the frame, so that screen readers end at the header, sorted by now
            frame(Header->Framed());
        }
        return true;
    default:
        return false;
    }
}

// A release counts only if the key was pressed here: the Enter that closes a message box is
// released over the list. The releases that a key sends while it is held down do not count.
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
    // Later, since the toolkit reports the focus of the list itself after this event.
    QTimer::singleShot(0, this, [this] {
        if (hasFocus() && currentIndex().isValid()) {
            Header->ReportFocus((currentIndex().row() + 1) * Header->count());
        }
    });
}

void ListWidget::focusOutEvent(QFocusEvent* event) {
    KeysDown.clear();
    Header->viewport()->update();
    QTreeView::focusOutEvent(event);
}

// Only the left button selects, since only its release raises a click.
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

// Shows the whole text of a cell that is cut.
bool ListWidget::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QTreeView::viewportEvent(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex cell = indexAt(help.pos());
    const QRect shown = visualRect(cell) & viewport()->rect();
    const bool cut = cell.isValid() && sizeHintForIndex(cell).width() > shown.width();
    QToolTip::showText(help.globalPos(),
                       cut ? Translate::ToToolTip(cell.data().toString()) : QString(), viewport(),
                       shown);
    return true;
}

// Without the keyboard a list has the palette's inactive colours, which may differ too much or too
// little from the active ones. Here the mark is a tint, with a frame in the active colour.
void ListWidget::initViewItemOption(QStyleOptionViewItem* option) const {
    QTreeView::initViewItemOption(option);
    QPalette& palette = option->palette;
    QColor tint = palette.color(QPalette::Active, QPalette::Highlight);
    tint.setAlpha(85); // of 255: a third
    palette.setColor(QPalette::Inactive, QPalette::Highlight, tint);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                     palette.color(QPalette::Active, QPalette::Text));
}

void ListWidget::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    QTreeView::drawRow(painter, option, index);
    if (!hasFocus() && selectionModel()->isSelected(index) &&
        !style()->inherits("QWindowsVistaStyle")) { // whose marks are of its own
        const QRect row = visualRect(index.siblingAtColumn(0)) |
                          visualRect(index.siblingAtColumn(Header->count() - 1));
        painter->setPen(palette().color(QPalette::Active, QPalette::Highlight));
        painter->drawRect(row.adjusted(0, 0, -1, -1));
    }
}

void ListWidget::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    if (hasFocus()) { // else the tree view would still report a focus to screen readers
        QTreeView::currentChanged(current, previous);
    } else {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call)
        QAbstractItemView::currentChanged(current, previous);
        viewport()->update();
    }
    if (!Syncing && current.isValid()) {
        List.Select(current.row() + 1);
    }
}

// One row is selected as long as there are rows: a click on blank space or with Ctrl keeps it.
QItemSelectionModel::SelectionFlags ListWidget::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* /*event*/) const {
    if (!index.isValid()) {
        return QItemSelectionModel::NoUpdate;
    }
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}
