// The least that a program with a window can be: one empty window, as large as the main one.

#include <QApplication>
#include <QWidget>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle("Bare window");
    window.setFixedSize(462, 423);
    window.show();
    return QApplication::exec();
}
