#pragma once

#include "Program.h"
#include "ScriptedDesktop.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

// The program with its real windows, on the platform that the test runs on.
class RealWindow : public testing::Test {
protected:
    RealWindow() { Start(); }

    void Start() {
        Tallies = std::make_unique<Program>();
        Tallies->MainWindow.Window.Show();
        Window = Tallies->MainRenderer.Window();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Window));
        const auto lists = Window->findChildren<QTreeView*>();
        Characters = lists.at(0);
        Monsters = lists.at(1);
    }

    static QStringList Rows(const QTreeView* list) {
        QStringList rows;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            rows += list->model()->index(row, 0).data().toString() +
                    list->model()->index(row, 1).data().toString();
        }
        return rows;
    }

    std::unique_ptr<Program> Tallies;
    QMainWindow* Window = nullptr;
    QTreeView* Characters = nullptr;
    QTreeView* Monsters = nullptr;
};
