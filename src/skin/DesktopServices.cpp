#include "skin/DesktopServices.h"

#include "files/Files.h"
#include "skin/ListWidget.h"
#include "skin/Translate.h"

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QListView>
#include <QMessageBox>
#include <QScopeGuard>
#include <QScreen>
#include <QSettings>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <memory>

namespace {

// Repaints what a closed box has covered, while keys and clicks wait: a command that goes on from
// here draws nothing but its status until it ends.
void LetWindowsShow() {
    constexpr std::chrono::milliseconds time(60);
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

QMessageBox::Icon ToScreen(Icon sign) {
    switch (sign) {
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Stop:
        return QMessageBox::Critical;
    default:
        return QMessageBox::NoIcon;
    }
}

// Runs a dialog to its end and returns what `read` makes of it. The window under it gets the
// keyboard back, also without a window manager.
template <class Dialog, class Read>
auto Run(std::unique_ptr<Dialog> dialog, Read read) {
    QWidget* const under = dialog->parentWidget();
    const auto result = read(*dialog, dialog->exec());
    dialog.reset();
    if (under != nullptr) {
        under->activateWindow();
    }
    LetWindowsShow();
    // A file dialog that closes together with its list of proposals can leave the toolkit without
    // an active window, although the window under it has the keyboard. activateWindow would not
    // help: it asks the system, for which nothing changes.
    if (under != nullptr && under->windowHandle() == QGuiApplication::focusWindow()) {
        QT_WARNING_PUSH;
        QT_WARNING_DISABLE_DEPRECATED;
        QApplication::setActiveWindow(under);
        QT_WARNING_POP;
    }
    return result;
}

// A message box that breaks its text into lines of about equal length, and that opens where the
// selected rows of the lists stay in sight, if the platform lets a program place its windows.
class MessageBox : public QMessageBox {
public:
    using QMessageBox::QMessageBox;

protected:
    bool event(QEvent* event) override {
        // The base class would break the text at a width of its own again.
        const bool layout = event->type() == QEvent::LayoutRequest;
        return layout ? QDialog::event(event) // NOLINT(bugprone-parent-virtual-call)
                      : QMessageBox::event(event);
    }

    void showEvent(QShowEvent* event) override {
        QMessageBox::showEvent(event);
        if (auto* const label = findChild<QLabel*>("qt_msgbox_label")) {
            label->setWordWrap(true);
            const int widest = qRound(screen()->availableSize().width() * 0.9);
            label->setFixedWidth(widest);
            const int besideIt = layout()->totalMinimumSize().width() - widest;
            label->setFixedWidth(BalancedWidth(label->fontMetrics(), text(), widest - besideIt));
            const int width =
                std::max(layout()->totalMinimumSize().width(), std::min(TitleWidth(), widest));
            setFixedSize(width, layout()->totalHeightForWidth(width));
            adjustPosition(parentWidget());
        }
        if (parentWidget() != nullptr) {
            LeaveInSight(SelectedRows());
        }
    }

private:
    // Returns the least width at which the text has as few lines as at the greatest within `room`.
    static int BalancedWidth(const QFontMetrics& metrics, const QString& text, int room) {
        constexpr int longestLine = 70; // average characters
        constexpr int spare = 2;        // pixels
        const auto height = [&](int width) {
            return metrics.boundingRect(0, 0, width, 0, Qt::TextWordWrap, text).height();
        };
        int width = std::min({metrics.size(0, text).width(),
                              longestLine * metrics.averageCharWidth(), room - spare});
        const int least = height(width);
        while (width > 1 && height(width - 1) == least) {
            --width;
        }
        const int longestWord = metrics.boundingRect(0, 0, 1, 0, Qt::TextWordWrap, text).width();
        return std::max(width, longestWord) + spare;
    }

    // Returns a width in which no window manager cuts the title. Its font is often bold and larger
    // than the program's, and an icon and three buttons may be next to it.
    int TitleWidth() const {
        return fontMetrics().horizontalAdvance(windowTitle()) * 3 / 2 +
               4 * style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    }

    QRegion SelectedRows() const {
        QRegion rows;
        for (const QTreeView* const list : parentWidget()->findChildren<QTreeView*>()) {
            const QRect row = list->visualRect(list->currentIndex()) & list->viewport()->rect();
            rows += row.translated(list->viewport()->mapToGlobal(QPoint()));
        }
        return rows;
    }

    // Moves the box under or over the rows if it would cover them and there is room. It may begin a
    // frame's width outside of the screen.
    void LeaveInSight(const QRegion& rows) {
        // Its own frame is not known yet, nor whether the platform takes the position as that of
        // the frame or of what is in it.
        const QRect outer = parentWidget()->frameGeometry();
        const QRect inner = parentWidget()->geometry();
        const int title = inner.top() - outer.top();
        const QRect now =
            geometry().adjusted(outer.left() - inner.left(), -title, outer.right() - inner.right(),
                                outer.bottom() - inner.bottom() + title);
        const QRect all = rows.boundingRect();
        const QRect room = screen()->availableGeometry();
        for (const int top : {now.top(), all.bottom() + 1, all.top() - now.height()}) {
            QRect place = now;
            place.moveTop(top);
            if (!rows.intersects(place) && top >= room.top() && place.bottom() <= room.bottom()) {
                move(x(), y() + top - now.top());
                return;
            }
        }
    }
};

Answer ShowMessage(const Message& message, QWidget* owner) {
    QApplication::setOverrideCursor(Qt::ArrowCursor); // also while a command shows the hourglass
    const auto restore = qScopeGuard([] { QApplication::restoreOverrideCursor(); });
    const bool question = message.Choice == Buttons::YesNo;
    auto box =
        std::make_unique<MessageBox>(ToScreen(message.Sign), Translate::ToScreen(message.Title),
                                     Translate::ToScreen(message.Prompt).remove('\r'),
                                     question ? QMessageBox::Yes | QMessageBox::No
                                              : QMessageBox::StandardButtons(QMessageBox::Ok),
                                     owner);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(QMessageBox::Yes); // else the desktop would choose; Esc is always No
    return Run(std::move(box), [question](const QMessageBox&, int pressed) {
        if (!question) {
            return Answer::Ok;
        }
        return pressed == QMessageBox::Yes ? Answer::Yes : Answer::No;
    });
}

// Converts "description|pattern" to the toolkit's "description (pattern)", of which the dialog
// shows the description only. A system's own dialog would add an extension to a typed name: the one
// that follows the first "*." of the filter. So there is no "*." in it.
QString ToNameFilter(std::string_view filter) {
    const std::size_t bar = filter.find('|');
    const QString sought("*.");
    return Translate::ToScreen(filter.substr(0, bar)).replace(sought, "*\u200B.") + " (" +
           Translate::ToScreen(filter.substr(bar + 1)).replace(sought, "*?.") + ')';
}

// Opens the toolkit's dialog large enough to read, or at `size` if there is one, and updates
// `size`. A system's own dialog has its own ways.
bool ShowDialog(CommonDialog& dialog, QFileDialog::AcceptMode mode, QSize& size, QWidget* owner) {
    auto box = std::make_unique<QFileDialog>(owner, Translate::ToScreen(dialog.DialogTitle));
    box->setAcceptMode(mode);
    box->setFileMode((dialog.Flags & CommonDialog::FileMustExist) != 0 ? QFileDialog::ExistingFile
                                                                       : QFileDialog::AnyFile);
    box->setOption(QFileDialog::HideNameFilterDetails);
    box->setOption(QFileDialog::DontConfirmOverwrite); // the program asks by itself
    if (!dialog.Folder.empty()) {
        box->setDirectory(QString::fromStdU16String(dialog.Folder.u16string()));
    }
    if (!dialog.FileName.empty()) {
        box->selectFile(QString::fromStdU16String(dialog.FileName.u16string()));
    }
    box->setNameFilter(ToNameFilter(dialog.Filter));
    if (auto* const files = box->findChild<QTreeView*>("treeView")) {
        const QFontMetrics metrics = files->fontMetrics();
        const QSize readable(130 * metrics.averageCharWidth(), 30 * metrics.lineSpacing());
        const QSize first = readable.boundedTo(box->screen()->availableSize() * 0.9);
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        if (first.width() == readable.width()) { // else the names would get what the others leave
            files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        }
        box->resize(size.isEmpty() ? first : size);
    }
    if (auto* const places = box->findChild<QListView*>("sidebar")) {
        places->setMinimumWidth(places->sizeHintForColumn(0) + 2 * places->frameWidth());
    }
    return Run(std::move(box), [&dialog, &size](const QFileDialog& closed, int result) {
        size = closed.size();
        if (result != QDialog::Accepted) {
            return false;
        }
        const QFileInfo chosen(closed.selectedFiles().value(0));
        dialog.FileName = chosen.filesystemAbsoluteFilePath().make_preferred();
        dialog.Folder = dialog.FileName.parent_path();
        return true;
    });
}

std::string LoadPicture(const std::filesystem::path& path) {
    constexpr std::size_t largest = std::size_t{16} << 20; // bytes
    try {
        return Files::LeadingBytes(path, largest);
    } catch (const std::exception&) {
        return {};
    }
}

// Stops the drawing of one list, lets all others draw.
void LockDrawing(ListView* list) {
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (auto* const shown = dynamic_cast<ListWidget*>(widget)) {
            shown->viewport()->setUpdatesEnabled(!shown->Shows(list));
        }
    }
}

} // namespace

Desktop RealDesktop(const std::function<QWidget*()>& owner) {
    // The toolkit's file dialog would save its history. No file can be created in this folder, so a
    // run leaves no settings. On Windows it uses the registry.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ":/nowhere");

    const auto dialogSize = std::make_shared<QSize>();
    Desktop desktop;
    desktop.ShowMessage = [owner](const Message& message) { return ShowMessage(message, owner()); };
    desktop.ShowOpen = [dialogSize, owner](CommonDialog& dialog) {
        return ShowDialog(dialog, QFileDialog::AcceptOpen, *dialogSize, owner());
    };
    desktop.ShowSave = [dialogSize, owner](CommonDialog& dialog) {
        return ShowDialog(dialog, QFileDialog::AcceptSave, *dialogSize, owner());
    };
    desktop.ClipboardClear = [] { QApplication::clipboard()->clear(); };
    desktop.ClipboardSetText = [](std::string_view text) {
        QApplication::clipboard()->setText(Translate::ToScreen(text));
    };
    desktop.LoadPicture = LoadPicture;
    desktop.LockWindowUpdate = LockDrawing;
    desktop.CloseAllWindows = [] { QApplication::closeAllWindows(); };
    desktop.AppPath = [] {
        return QFileInfo(QApplication::applicationDirPath()).filesystemAbsoluteFilePath();
    };
    return desktop;
}
