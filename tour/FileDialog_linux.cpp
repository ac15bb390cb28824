#include "FileDialog.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

// The toolkit's dialog.
namespace FileDialog {

bool Type(QWidget* dialog, const QString& name) {
    auto* const edit = dialog->findChild<QLineEdit*>("fileNameEdit");
    if (!QTest::qWaitForWindowActive(dialog)) {
        return false;
    }
    edit->setFocus();
    for (const QChar character : name) {
        QTest::keyClick(QApplication::focusWindow(), character.toLatin1());
    }
    QTest::qWait(200); // the list of completions
    return true;
}

void Accept(QWidget* dialog) {
    if (QWidget* const completions = QApplication::activePopupWidget()) {
        completions->close();
    }
    QTest::keyClick(dialog->windowHandle(), Qt::Key_Return);
}

} // namespace FileDialog
