#include "Program.h"
#include "platform/RawFile.h"

#include <QApplication>

#include <memory>

int main(int argc, char* argv[]) {
    PrepareProcess();
    const QApplication application(argc, argv);
    const auto program = std::make_unique<Program>();
    program->MainWindow.Window.Show();
    return QApplication::exec();
}
