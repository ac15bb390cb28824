#pragma once

#include <QLabel>
#include <QProxyStyle>

#include <algorithm>

// Starts the title of a frame no further left than what lies in the frame.
class FrameStyle : public QProxyStyle {
public:
    explicit FrameStyle(int indent) : Indent(indent) {}

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
        if (control == CC_GroupBox && part == SC_GroupBoxLabel) {
            rect.moveLeft(std::max(rect.left(), Indent));
        }
        return rect;
    }

private:
    int Indent; // pixels
};

inline void SetFontPoints(QWidget* widget, double points) {
    QFont font = widget->font();
    font.setPointSizeF(points);
    widget->setFont(font);
}

// Fonts differ in width from desktop to desktop: makes the font smaller until the text fits.
inline void FitFont(QLabel* label, double points) {
    constexpr double smallest = 5;
    constexpr double step = 0.25;
    const int layout =
        static_cast<int>(label->alignment()) | (label->wordWrap() ? int{Qt::TextWordWrap} : 0);
    const auto fits = [label, layout] {
        const QFontMetrics metrics = label->fontMetrics();
        return label->rect().contains(metrics.boundingRect(label->rect(), layout, label->text()));
    };
    SetFontPoints(label, points);
    while (!fits() && points > smallest) {
        points -= step;
        SetFontPoints(label, points);
    }
}
