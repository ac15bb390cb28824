#pragma once

#include <QMainWindow>
#include <QTreeWidget>

// The program's two windows as one puts them together by hand: plain widgets of the toolkit, at
// fixed places in pixels, with lists of items. The constructor shows them.
class PlainWindows {
public:
    PlainWindows();

    QMainWindow Main;
    QWidget About;
    QTreeWidget* Monsters = nullptr;

private:
    void AddMenus();
    void AddControls(QWidget* client);
    void AddAbout();
};
