#pragma once

#include <QAccessible>
#include <QHeaderView>
#include <QPainter>
#include <QStyleOptionFocusRect>

// A list header for the keyboard too: one column is framed, and Enter clicks it.
class KeyHeader : public QHeaderView {
public:
    explicit KeyHeader(QWidget* list) : QHeaderView(Qt::Horizontal, list) {}

    int Framed() const { return FramedSection; }

    // Moves the frame, which stays invisible until a key has worked the header.
    void Frame(int section) {
        FramedSection = section;
        viewport()->update();
    }

    void FrameByKey(int section) {
        FrameShows = true;
        Frame(section);
        ReportFocus(section);
    }

    // Reports the focus of a cell of the list to screen readers. The header's cells come first,
    // from 0, then those of the rows.
    void ReportFocus(int cell) const {
        QAccessibleEvent focused(parentWidget(), QAccessible::Focus);
        focused.setChild(cell);
        QAccessible::updateAccessibility(&focused);
    }

protected:
    // The last column does not reach the end of the header, so it has a right edge like the others.
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        if (option->position == QStyleOptionHeader::End && length() < viewport()->width()) {
            option->position = QStyleOptionHeader::Middle;
        }
    }

    void paintSection(QPainter* painter, const QRect& rect, int section) const override {
        painter->save();
        QHeaderView::paintSection(painter, rect, section);
        painter->restore();
        if (FrameShows && section == FramedSection && parentWidget()->hasFocus()) {
            QStyleOptionFocusRect frame;
            frame.initFrom(this);
            frame.rect = rect.adjusted(1, 1, -1, -1);
            frame.state |= QStyle::State_KeyboardFocusChange; // else the style may draw none
            style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter, this);
        }
    }

private:
    int FramedSection = 0;
    bool FrameShows = false;
};
