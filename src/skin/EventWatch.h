#pragma once

#include "controls/Controls.h"

#include <QMouseEvent>
#include <QWidget>

#include <functional>
#include <utility>

// Calls a handler with every event of a widget, before the widget gets it.
class EventWatch : public QObject {
public:
    using Handler = std::function<void(const QEvent&)>;

    EventWatch(QWidget* watched, Handler handler) : QObject(watched), Handle(std::move(handler)) {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        Handle(*event);
        return false;
    }

private:
    Handler Handle;
};

// Raises the click of a control that is no button. A release counts only after a press on the same
// widget: the double click that chooses a file is released over what lies under the dialog.
inline void WatchClick(QWidget* widget, const std::function<void()>& click) {
    new EventWatch(widget, [widget, &click, pressed = false](const QEvent& event) mutable {
        if (event.type() != QEvent::MouseButtonPress &&
            event.type() != QEvent::MouseButtonRelease) {
            return;
        }
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        if (mouse.button() != Qt::LeftButton) {
            return;
        }
        const bool wasPressed = std::exchange(pressed, event.type() == QEvent::MouseButtonPress);
        if (wasPressed && !pressed && widget->rect().contains(mouse.position().toPoint())) {
            Raise(click);
        }
    });
}
