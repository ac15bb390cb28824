#pragma once

#include <QtWidgets>

// The program's two windows as one puts them together by hand: plain widgets of the toolkit, at
// fixed places in pixels, with lists of items. The constructor shows them.
class PlainWindows {
public:
    PlainWindows() {
        QApplication::setWindowIcon(QIcon(":/slaying-tallies.ico"));
        Main.setWindowTitle("Marrowquill - Slaying Tallies");
        auto* const client = new QWidget(&Main);
        client->setFixedSize(462, 404);
        SetPoints(client, 8.25);
        Main.setCentralWidget(client);
        Main.layout()->setSizeConstraint(QLayout::SetFixedSize);
        AddMenus(Main.menuBar());
        Monsters = AddControls(client);
        FillAbout(&About);
        About.show();
        Main.show();
    }

    QMainWindow Main;
    QWidget About;
    QTreeWidget* Monsters = nullptr;

private:
    static void SetPoints(QWidget* widget, double points) {
        QFont font = widget->font();
        font.setPointSizeF(points);
        widget->setFont(font);
    }

    static QTreeWidget* AddList(QWidget* frame, const QRect& place, const char* heading) {
        auto* const list = new QTreeWidget(frame);
        list->setGeometry(place);
        list->setHeaderLabels({heading, "Kills"});
        list->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        list->setRootIsDecorated(false);
        list->setUniformRowHeights(true);
        list->setAllColumnsShowFocus(true);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->header()->setStretchLastSection(false);
        list->header()->resizeSection(0, 153);
        list->header()->resizeSection(1, 53);
        return list;
    }

    static void AddHeading(QWidget* about, const QRect& place, double points, const char* text) {
        auto* const label = new QLabel(text, about);
        label->setGeometry(place);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setFont(QFont(QStringList{"MS Sans Serif", label->font().family()}));
        SetPoints(label, points);
    }

    static void AddMenus(QMenuBar* bar) {
        QMenu* const file = bar->addMenu("File");
        for (const char* const entry :
             {"&Blank all data", "", "&Import HTML turn for kills", "&Batch Import HTML for kills",
              "", "&Open saved data", "&Save data", "Save data &As", "E&xit program"}) {
            file->addAction(entry)->setSeparator(*entry == '\0');
        }
        bar->addMenu("Help")->addAction("&About Report Digest");
    }

    // Returns the list of monsters.
    static QTreeWidget* AddControls(QWidget* client) {
        auto* const frame = new QGroupBox("Slaying Tallies:", client);
        frame->setGeometry(0, 0, 461, 383);
        auto* const line = new QFrame(client);
        line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
        line->setGeometry(1, 0, 459, 1);
        (new QLabel("Game #:", frame))->setGeometry(7, 24, 60, 16);
        (new QLineEdit(frame))->setGeometry(67, 22, 43, 20);
        (new QLabel("Party #:", frame))->setGeometry(118, 24, 55, 16);
        (new QLineEdit(frame))->setGeometry(173, 22, 43, 20);
        (new QLabel("Turn Start:", frame))->setGeometry(224, 24, 70, 16);
        (new QLineEdit(frame))->setGeometry(294, 22, 43, 20);
        (new QLabel("Turn End:", frame))->setGeometry(345, 24, 63, 16);
        (new QLineEdit(frame))->setGeometry(408, 22, 43, 20);
        (new QLabel("Characters:", frame))->setGeometry(4, 44, 225, 15);
        (new QLabel("Monster Kills:", frame))->setGeometry(232, 44, 225, 15);
        AddList(frame, {3, 59, 227, 297}, "Character Name")->setFocus();
        (new QPushButton("Send to Clipboard", frame))->setGeometry(156, 358, 149, 22);
        (new QLabel(client))->setGeometry(3, 385, 457, 17); // the status
        return AddList(frame, {231, 59, 227, 297}, "Monster Name");
    }

    static void FillAbout(QWidget* about) {
        about->setWindowTitle("About Marrowquill Slaying Tallies");
        about->setFixedSize(398, 440);
        auto* const frame = new QFrame(about);
        frame->setFrameShape(QFrame::StyledPanel);
        frame->setGeometry(0, 0, 400, 440);
        auto* const picture = new QLabel(frame);
        picture->setGeometry(0, 0, 400, 300);
        picture->setScaledContents(true);
        picture->setPixmap(QCoreApplication::applicationDirPath() + "/graphics/marrowquill.gif");
        AddHeading(frame, {10, 301, 383, 29}, 18, "Marrowquill's Slaying Tallies");
        AddHeading(frame, {10, 329, 383, 22}, 12, "Version 0.6b");
        AddHeading(frame, {10, 350, 383, 22}, 9.75, "(16th June 2004)");
        AddHeading(
            frame, {30, 369, 346, 71}, 13.5,
            "Part of the Marrowquill suite - process your turns for detailed slaying tallies");
    }
};
