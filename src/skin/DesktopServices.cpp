#include "skin/DesktopServices.h"

#include "platform/Files.h"
#include "skin/ListWidget.h"
#include "skin/Translate.h"

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QTimer>

#include <memory>

namespace {

// While a box waits for the player the pointer is an arrow, whatever the work behind it shows.
class ArrowPointer {
public:
    ArrowPointer() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowPointer() { QApplication::restoreOverrideCursor(); }
    ArrowPointer(const ArrowPointer&) = delete;
    ArrowPointer& operator=(const ArrowPointer&) = delete;
};

// Lets the windows behind a box that has closed show again, while no key or click counts: a
// command that goes on from here draws no more than its status until it ends.
void LetWindowsShow() {
    constexpr int milliseconds = 60;
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(milliseconds);
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

// Runs a dialog to its end. The dialog is gone, with all that popped up over it, before the
// windows behind show again.
template <class Dialog, class Read>
auto Run(std::unique_ptr<Dialog> dialog, Read read) {
    const auto result = read(*dialog, dialog->exec());
    dialog.reset();
    LetWindowsShow();
    return result;
}

Answer ShowMessage(const Message& message) {
    const ArrowPointer arrow;
    const bool question = message.Choice == Buttons::YesNo;
    auto box =
        std::make_unique<QMessageBox>(ToScreen(message.Sign), Translate::ToScreen(message.Title),
                                      Translate::ToScreen(message.Prompt).remove('\r'),
                                      question ? QMessageBox::Yes | QMessageBox::No
                                               : QMessageBox::StandardButtons(QMessageBox::Ok),
                                      QApplication::activeWindow());
    box->setTextFormat(Qt::PlainText);
    return Run(std::move(box), [question](const QMessageBox&, int pressed) {
        if (!question) {
            return Answer::Ok;
        }
        return pressed == QMessageBox::Yes ? Answer::Yes : Answer::No;
    });
}

// "description|pattern" as the toolkit writes it. The description can hold a pattern of its own
// that only looks like one, so the dialog is told to hide the real one behind it. A name that is
// typed without an extension stays without: where the dialog is the system's own, the toolkit
// takes what stands behind the first "*." in here for an extension to add, so there is none.
QString ToNameFilter(std::string_view filter) {
    const std::size_t bar = filter.find('|');
    const QString sought("*.");
    return Translate::ToScreen(filter.substr(0, bar)).replace(sought, "*\u200B.") + " (" +
           Translate::ToScreen(filter.substr(bar + 1)).replace(sought, "*?.") + ')';
}

bool ShowDialog(CommonDialog& dialog, QFileDialog::AcceptMode mode) {
    auto box = std::make_unique<QFileDialog>(QApplication::activeWindow(),
                                             Translate::ToScreen(dialog.DialogTitle));
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
    return Run(std::move(box), [&dialog](const QFileDialog& closed, int result) {
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
        return {}; // as good as no picture
    }
}

// At most one list is locked at a time.
void LockDrawing(ListView* list) {
    for (QWidget* const widget : QApplication::allWidgets()) {
        if (auto* const shown = dynamic_cast<ListWidget*>(widget)) {
            shown->viewport()->setUpdatesEnabled(!shown->Shows(list));
        }
    }
}

} // namespace

Desktop RealDesktop() {
    // Nothing of a run outlives it: the toolkit's file dialog would keep its history among the
    // player's settings. No file can be made where it is sent instead.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, ":/nowhere");

    Desktop desktop;
    desktop.ShowMessage = ShowMessage;
    desktop.ShowOpen = [](CommonDialog& dialog) {
        return ShowDialog(dialog, QFileDialog::AcceptOpen);
    };
    desktop.ShowSave = [](CommonDialog& dialog) {
        return ShowDialog(dialog, QFileDialog::AcceptSave);
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
