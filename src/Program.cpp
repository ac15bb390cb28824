#include "Program.h"

#include "app/Events.h"
#include "skin/DesktopServices.h"

#include <QApplication>
#include <QIcon>
#include <QMainWindow>

Program::Program() : Services(RealDesktop([this] { return MainRenderer.Window(); })) {
    // On Windows the plugin that reads it may be missing; there the windows take the icon of the
    // program file.
    QApplication::setWindowIcon(QIcon(":/slaying-tallies.ico"));
    Main::WireEvents(Ledger, MainWindow, AboutWindow, Services);
}
