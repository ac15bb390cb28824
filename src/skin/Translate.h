#pragma once

#include "controls/Controls.h"
#include "text/CodePage.h"

#include <QPointer>
#include <QRect>
#include <QRegularExpression>
#include <QString>

#include <cmath>
#include <string>
#include <string_view>

// Conversions between the terms of the controls (bytes, twips) and of the screen (Unicode, pixels).
namespace Translate {

inline QString ToScreen(std::string_view text) {
    return QString::fromStdU16String(CodePage::ToUnicode(text));
}
inline std::string FromScreen(const QString& text) {
    return CodePage::FromUnicode(text.toStdU16String());
}

// A tooltip wraps only rich text, at blanks. This one shows `text` as it is, whatever markup it
// seems to have, and may also break a very long word.
inline QString ToToolTip(QString text) {
    text.replace(QRegularExpression("(\\S{40})"), "\\1\u200B"); // a blank of no width
    return "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>";
}

inline Qt::Alignment ToScreen(Alignment alignment) {
    switch (alignment) {
    case Alignment::Right:
        return Qt::AlignRight;
    case Alignment::Center:
        return Qt::AlignHCenter;
    default:
        return Qt::AlignLeft;
    }
}

// Twips to pixels at the dots per inch of the display, so that a window keeps its proportions.
class Scale {
public:
    explicit Scale(int dotsPerInch) : PixelsPerTwip(dotsPerInch / 1440.0) {}

    int Length(int twips) const { return static_cast<int>(std::lround(twips * PixelsPerTwip)); }
    // Rounds edges, not sizes, so that what touches in twips touches in pixels.
    QRect Rect(const Place& at) const {
        const int left = Length(at.Left);
        const int top = Length(at.Top);
        return {left, top, Length(at.Left + at.Width) - left, Length(at.Top + at.Height) - top};
    }

private:
    double PixelsPerTwip;
};

// Applies a property to a widget, now and at each change, as long as the widget exists.
template <class T, class Widget, class Apply>
void Follow(Property<T>& property, Widget* widget, Apply apply) {
    apply(widget, property.Get());
    property.Changed = [&property, shown = QPointer<Widget>(widget), apply] {
        if (shown) {
            apply(shown.data(), property.Get());
        }
    };
}

} // namespace Translate
