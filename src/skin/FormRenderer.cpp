#include "skin/FormRenderer.h"

#include "skin/ListWidget.h"
#include "skin/Translate.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPixmap>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace {

// Sees the events of one widget and raises those of its control.
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

// Raises the click of a control that is no button.
void WatchClick(QWidget* widget, const std::function<void()>& click) {
    // A release counts only behind a press in the same place: the double click that chose a file
    // is released over whatever the dialog stood on.
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

class FormWindow : public QMainWindow {
public:
    explicit FormWindow(Form& form) : Rendered(form), Pixels(logicalDpiX()) {
        setWindowTitle(Translate::ToScreen(form.Caption));
        setWindowFlag(Qt::MSWindowsFixedSizeDialogHint);
        setWindowFlag(Qt::WindowMaximizeButtonHint, false); // it has one size
        auto* const client = new QWidget(this);
        client->setFixedSize(Pixels.Length(form.ClientWidth), Pixels.Length(form.ClientHeight));
        SetFontPoints(client, Label{}.FontPoints);
        setCentralWidget(client);
        layout()->setSizeConstraint(QLayout::SetFixedSize);

        for (const PlacedControl& placed : form.Controls) {
            QWidget* const parent =
                placed.Container == nullptr ? client : Containers.at(placed.Container);
            std::visit([&](auto* control) { Render(*control, parent); }, placed.Control);
        }
        QWidget* before = nullptr;
        for (const auto& [index, widget] : TabStops) {
            if (before == nullptr) {
                widget->setFocus();
            } else {
                setTabOrder(before, widget);
            }
            before = widget;
        }
        AddKeys();
        Translate::Follow(form.Enabled, this,
                          [](QWidget* window, bool on) { window->setEnabled(on); });
        Translate::Follow(form.MousePointer, this,
                          [this](QWidget*, Pointer shape) { SetPointer(shape); });
    }

    ~FormWindow() override {
        // A box loses the focus while it still stands: what it commits is set in the box.
        if (QWidget* const focused = focusWidget()) {
            focused->clearFocus();
        }
        SetPointer(Pointer::Default);
    }
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

protected:
    void closeEvent(QCloseEvent* event) override {
        Rendered.Unload();
        event->accept();
    }

private:
    // The keys of the window itself. The menus have no letters of their own to open them by.
    void AddKeys() {
        if (!Menus.empty()) {
            new QShortcut(Qt::Key_F10, this, [this] {
                menuBar()->setActiveAction(menuBar()->actions().constFirst());
            });
        }
        if (TabStops.empty()) { // nothing in it takes keys: a notice
            new QShortcut(Qt::Key_Escape, this, [this] { close(); });
        }
    }

    // A label names the control that stands behind it in the form, to those who hear the window.
    void TakeHeading(QWidget* named) {
        if (QLabel* const heading = std::exchange(Heading, nullptr)) {
            heading->setBuddy(named);
            named->setAccessibleName(heading->text());
        }
    }

    static void SetFontPoints(QWidget* widget, double points) {
        QFont font = widget->font();
        font.setPointSizeF(points);
        widget->setFont(font);
    }

    // The font of the definition, or as much smaller as the text needs to be seen whole: fonts
    // differ in width from one desktop to the next.
    static void FitFont(QLabel* label, double points) {
        constexpr double smallest = 5;
        constexpr double step = 0.25;
        const int layout =
            static_cast<int>(label->alignment()) | (label->wordWrap() ? int{Qt::TextWordWrap} : 0);
        const auto fits = [label, layout] {
            const QFontMetrics metrics = label->fontMetrics();
            return label->rect().contains(
                metrics.boundingRect(label->rect(), layout, label->text()));
        };
        SetFontPoints(label, points);
        while (!fits() && points > smallest) {
            points -= step;
            SetFontPoints(label, points);
        }
    }

    void PlaceAt(QWidget* widget, const Place& at) const { widget->setGeometry(Pixels.Rect(at)); }

    void Render(Label& label, QWidget* parent) {
        auto* const widget = new QLabel(parent);
        PlaceAt(widget, label.At);
        widget->setTextFormat(Qt::PlainText);
        widget->setWordWrap(label.Align == Alignment::Center);
        widget->setAlignment(Translate::ToScreen(label.Align) |
                             (label.Align == Alignment::Center ? Qt::AlignTop : Qt::AlignVCenter));
        if (!label.FontName.empty()) {
            QFont font = widget->font();
            font.setFamilies(QStringList(Translate::ToScreen(label.FontName)) + font.families());
            widget->setFont(font);
        }
        Translate::Follow(label.Caption, widget,
                          [&label](QLabel* shown, const std::string& caption) {
                              shown->setText(Translate::ToScreen(caption));
                              FitFont(shown, label.FontPoints);
                          });
        label.Repaint = RepaintNow(widget);
        WatchClick(widget, label.Click);
        Heading = widget;
    }

    void Render(TextBox& box, QWidget* parent) {
        if (!box.Visible) {
            return; // nobody ever sees it, so its text need not go anywhere
        }
        auto* const widget = new QLineEdit(parent);
        PlaceAt(widget, box.At);
        TakeHeading(widget);
        widget->setMaxLength(std::numeric_limits<int>::max());
        Translate::Follow(box.Text, widget, [](QLineEdit* shown, const std::string& text) {
            const QString screenText = Translate::ToScreen(text);
            if (shown->text() != screenText) {
                const int cursor = shown->cursorPosition();
                shown->setText(screenText);
                shown->setCursorPosition(cursor);
            }
        });
        QObject::connect(widget, &QLineEdit::textEdited, widget,
                         [&box](const QString& typed) { box.Text = Translate::FromScreen(typed); });
        new EventWatch(widget, [&box](const QEvent& event) {
            if (event.type() == QEvent::FocusOut) {
                Raise(box.LostFocus);
            } else if (event.type() == QEvent::KeyPress) {
                const std::string typed =
                    Translate::FromScreen(static_cast<const QKeyEvent&>(event).text());
                for (const char character : typed) {
                    Raise(box.KeyPress, int{static_cast<unsigned char>(character)});
                }
            }
        });
        box.Repaint = RepaintNow(widget);
        TabStops.emplace(box.TabIndex, widget);
    }

    void Render(Button& button, QWidget* parent) {
        auto* const widget = new QPushButton(Translate::ToScreen(button.Caption), parent);
        PlaceAt(widget, button.At);
        Translate::Follow(button.Enabled, widget,
                          [](QPushButton* shown, bool on) { shown->setEnabled(on); });
        QObject::connect(widget, &QPushButton::clicked, widget, [&button] { Raise(button.Click); });
        TabStops.emplace(button.TabIndex, widget);
    }

    void Render(Frame& frame, QWidget* parent) {
        QWidget* widget = nullptr;
        if (frame.Caption.empty()) {
            auto* const border = new QFrame(parent);
            border->setFrameShape(QFrame::StyledPanel);
            widget = border;
        } else {
            widget = new QGroupBox(Translate::ToScreen(frame.Caption), parent);
        }
        PlaceAt(widget, frame.At);
        WatchClick(widget, frame.Click);
        Containers.emplace(&frame, widget);
    }

    void Render(Line& line, QWidget* parent) {
        auto* const widget = new QFrame(parent);
        widget->setFrameShape(QFrame::HLine);
        widget->setFrameShadow(QFrame::Sunken);
        PlaceAt(widget, line.At);
    }

    void Render(Image& image, QWidget* parent) {
        auto* const widget = new QLabel(parent);
        PlaceAt(widget, image.At);
        widget->setAccessibleName(windowTitle());
        widget->setScaledContents(true);
        const auto read = [](QPixmap& picture, const std::string& bytes) {
            return picture.loadFromData(QByteArray::fromStdString(bytes), "GIF");
        };
        Translate::Follow(image.Picture, widget,
                          [&image, read](QLabel* shown, const std::string& bytes) {
                              QPixmap picture;
                              if (!read(picture, bytes)) {
                                  read(picture, image.Own);
                              }
                              shown->setPixmap(picture);
                          });
        WatchClick(widget, image.Click);
    }

    void Render(Menu& menu, QWidget* /*parent*/) {
        const QString caption = Translate::ToScreen(menu.Caption);
        if (menu.Parent == nullptr) {
            Menus.emplace(&menu, menuBar()->addMenu(caption));
            return;
        }
        QMenu* const parentMenu = Menus.at(menu.Parent);
        if (menu.Caption == "-") {
            parentMenu->addSeparator();
            return;
        }
        QAction* const entry = parentMenu->addAction(caption);
        Translate::Follow(menu.Enabled, entry,
                          [](QAction* shown, bool on) { shown->setEnabled(on); });
        QObject::connect(entry, &QAction::triggered, entry, [&menu] { Raise(menu.Click); });
    }

    void Render(ListView& list, QWidget* parent) {
        auto* const widget = new ListWidget(list, Pixels, parent);
        PlaceAt(widget, list.At);
        TakeHeading(widget);
        TabStops.emplace(list.TabIndex, widget);
    }

    // Draws on the screen before it returns.
    static std::function<void()> RepaintNow(QWidget* widget) {
        return [shown = QPointer<QWidget>(widget)] {
            if (shown) {
                shown->repaint();
            }
        };
    }

    // The pointer of a window counts over all that lies in it, boxes included.
    void SetPointer(Pointer shape) {
        const bool busy = shape == Pointer::Hourglass;
        if (busy != Busy) {
            Busy = busy;
            if (busy) {
                QApplication::setOverrideCursor(Qt::WaitCursor);
            } else {
                QApplication::restoreOverrideCursor();
            }
        }
    }

    Form& Rendered;
    Translate::Scale Pixels;
    std::map<const Frame*, QWidget*> Containers;
    std::map<const Menu*, QMenu*> Menus;
    std::multimap<int, QWidget*> TabStops;
    QLabel* Heading = nullptr; // the last label, until it has named a control
    bool Busy = false;
};

} // namespace

FormRenderer::FormRenderer(Form& form) : Rendered(form) {
    form.Visible.Changed = [this] { Follow(); };
}

FormRenderer::~FormRenderer() {
    Rendered.Visible.Changed = nullptr;
    delete Shown;
}

QMainWindow* FormRenderer::Window() const {
    return Shown;
}

void FormRenderer::Follow() {
    if (!Rendered.Visible) {
        if (Shown) {
            // Closed, not only hidden, so that the program ends with its last window; deleted
            // later, since the window may be closing itself in one of its own events.
            QMainWindow* const gone = Shown;
            Shown = nullptr;
            gone->close();
            gone->deleteLater();
        }
        return;
    }
    if (!Shown) {
        Shown = new FormWindow(Rendered);
    }
    Shown->show();
    Shown->raise();
    Shown->activateWindow();
}
