#include "skin/FormRenderer.h"

#include "skin/EventWatch.h"
#include "skin/ListWidget.h"
#include "skin/Looks.h"
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
#include <QPixmap>
#include <QPushButton>
#include <QShortcut>

#include <limits>
#include <map>
#include <utility>

namespace {

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
        // A text box commits when it loses the focus, so it must do so while it exists.
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
    // The keys of the window itself. No letter opens a menu, since none is underlined in the bar.
    void AddKeys() {
        if (!Menus.empty()) {
            new QShortcut(Qt::Key_F10, this, [this] {
                menuBar()->setActiveAction(menuBar()->actions().constFirst());
            });
        }
        // A window without a control for the keys is a notice. Esc closes it from every window of
        // the program, since the keyboard is usually in another one.
        if (TabStops.empty()) {
            new QShortcut(
                Qt::Key_Escape, this, [this] { close(); }, Qt::ApplicationShortcut);
        }
    }

    // For screen readers: a label names the control that follows it.
    void TakeHeading(QWidget* named) {
        if (QLabel* const heading = std::exchange(Heading, nullptr)) {
            heading->setBuddy(named);
            named->setAccessibleName(heading->text());
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
            return;
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
        new EventWatch(widget, [&box, widget](const QEvent& event) {
            if (event.type() == QEvent::FocusOut) {
                Raise(box.LostFocus);
                const auto reason = static_cast<const QFocusEvent&>(event).reason();
                if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
                    widget->setCursorPosition(0); // so that a long number can be read
                }
            } else if (event.type() == QEvent::KeyPress) {
                const std::string typed =
                    Translate::FromScreen(static_cast<const QKeyEvent&>(event).text());
                for (const char character : typed) {
                    Raise(box.KeyPress, int{static_cast<unsigned char>(character)});
                    if (character == KeyEnter) {
                        // From its end, so that a long number can be read from its beginning.
                        const int length = static_cast<int>(widget->text().size());
                        widget->setSelection(length, -length);
                    }
                }
            } else if (event.type() == QEvent::ToolTip) {
                // A frame and a margin of the same width at either end.
                const int room = widget->width() -
                                 4 * widget->style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
                const QString text = widget->text();
                const bool cut = widget->fontMetrics().horizontalAdvance(text) > room;
                widget->setToolTip(cut ? Translate::ToToolTip(text) : QString());
            }
        });
        box.Repaint = RepaintNow(widget);
        TabStops.emplace(box.TabIndex, widget);
    }

    void Render(Button& button, QWidget* parent) {
        auto* const widget = new QPushButton(Translate::ToScreen(button.Caption), parent);
        PlaceAt(widget, button.At);
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
            constexpr int indent = 75; // twips, as the labels in the frame
            auto* const style = new FrameStyle(Pixels.Length(indent));
            style->setParent(widget);
            widget->setStyle(style);
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
        const QString builtIn = ":/" + Translate::ToScreen(image.BuiltIn);
        Translate::Follow(image.Picture, widget,
                          [builtIn](QLabel* shown, const std::string& bytes) {
                              QPixmap picture;
                              if (!picture.loadFromData(QByteArray::fromStdString(bytes), "GIF")) {
                                  picture.load(builtIn);
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
        QObject::connect(entry, &QAction::triggered, entry, [&menu] { Raise(menu.Click); });
    }

    void Render(ListView& list, QWidget* parent) {
        auto* const widget = new ListWidget(list, Pixels, parent);
        PlaceAt(widget, list.At);
        TakeHeading(widget);
        TabStops.emplace(list.TabIndex, widget);
    }

    // The returned function draws the widget before it returns.
    static std::function<void()> RepaintNow(QWidget* widget) {
        return [shown = QPointer<QWidget>(widget)] {
            if (shown) {
                shown->repaint();
            }
        };
    }

    // The pointer of the window shows over its text boxes too, which have pointers of their own.
    void SetPointer(Pointer shape) {
        const bool busy = shape == Pointer::Hourglass;
        if (busy != std::exchange(Busy, busy)) {
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
            // Closed and not only hidden, so that the program ends with its last window. Deleted
            // later, since this may run in an event of the window itself.
            QMainWindow* const gone = Shown;
            Shown = nullptr;
            gone->close();
            gone->deleteLater();
            // Without a window manager, nobody else gives the keyboard to another window.
            for (QWidget* const window : QApplication::topLevelWidgets()) {
                if (dynamic_cast<FormWindow*>(window) != nullptr && window != gone &&
                    window->isVisible() && !window->isMinimized()) {
                    window->activateWindow();
                }
            }
        }
        return;
    }
    if (!Shown) {
        Shown = new FormWindow(Rendered);
    }
    Shown->setWindowState(Shown->windowState() & ~Qt::WindowMinimized);
    Shown->show();
    Shown->raise();
    Shown->activateWindow();
}
