#include "Program.h"
#include "files/RawFile.h"

#include <QApplication>

#include <memory>

int main(int argc, char* argv[]) {
    PrepareProcess();
    const QApplication application(argc, argv);
    // By this name Wayland finds the icon of the windows.
    QApplication::setDesktopFileName("slaying-tallies");
    const auto program = std::make_unique<Program>();
    program->MainWindow.Window.Show();
    return QApplication::exec();
}
