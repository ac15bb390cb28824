#include "Program.h"

#include "app/Events.h"
#include "skin/DesktopServices.h"

#include <QApplication>
#include <QIcon>
#include <QMainWindow>
#include <QTimer>

#include <chrono>

Program::Program() : Services(RealDesktop([this] { return MainRenderer.Window(); })) {
    Main::WireEvents(Ledger, MainWindow, AboutWindow, Services);
    // Late, so that the windows need not wait for the icon. On Windows the plugin that reads it may
    // be missing; there the windows take the icon of the program file.
    QTimer::singleShot(std::chrono::milliseconds(300),
                       [] { QApplication::setWindowIcon(QIcon(":/slaying-tallies.ico")); });
}
