// The whole program, which imports a folder by itself once its window shows: the dialog answers
// without asking. Prints how many reports the ledger holds, and stays.
// usage: batch_import A_REPORT_IN_THE_FOLDER

#include "Program.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <memory>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    const auto program = std::make_unique<Program>();
    program->Services.ShowOpen = [&](CommonDialog& dialog) {
        dialog.FileName = QApplication::arguments().at(1).toStdString();
        return true;
    };
    program->MainWindow.Window.Show();
    constexpr int milliseconds = 300; // both windows are painted by then
    QTimer::singleShot(milliseconds, [&] {
        program->MainWindow.mnuFileBatch.Click();
        QApplication::processEvents();
        int imported = 0;
        for (int i = 1; i <= MaxTurns; ++i) {
            imported += program->Ledger.TurnHashes[i].empty() ? 0 : 1;
        }
        std::printf("%d\n", imported);
        std::fflush(stdout);
    });
    return QApplication::exec();
}
