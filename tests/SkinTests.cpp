#include "Program.h"
#include "ScriptedDesktop.h"
#include "ui/ListViews.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <memory>

namespace {

const QPoint BlankSpace(50, 250); // below the few rows of a list

// The texts with which the status label was painted, the empty one left out.
struct StatusPaintings : QObject {
    explicit StatusPaintings(const Label& status) : Status(status) {}
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint && !Status.Caption.Get().empty()) {
            Seen.push_back(Status.Caption);
        }
        return false;
    }
    const Label& Status;
    Lines Seen;
};

// The real window on the platform that the test runs on.
class Skin : public testing::Test {
protected:
    Skin() {
        Tallies->MainWindow.Window.Show();
        Window = Tallies->MainRenderer.Window();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Window));
        const auto lists = Window->findChildren<QTreeView*>();
        Characters = lists.at(0);
        Monsters = lists.at(1);
    }

    // Two characters with kills, in the lists.
    void FillLists() {
        auto& ledger = Tallies->Ledger;
        for (const char* name : {"Aron", "Bela"}) {
            const int slot = Main::FindCharacter(ledger, Tallies->Services, name);
            ledger.MonsterNames[slot] = slot == 1 ? "Rat" : "Wolf";
            Main::CreditKills(ledger, slot, slot, slot + 6);
        }
        Main::FillCharacterList(ledger, Tallies->MainWindow, Tallies->Services);
        QCoreApplication::processEvents();
    }

    static QStringList Rows(const QTreeView* list) {
        QStringList rows;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            rows += list->model()->index(row, 0).data().toString() +
                    list->model()->index(row, 1).data().toString();
        }
        return rows;
    }

    void Click(const QTreeView* list, QPoint at, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, at);
        QCoreApplication::processEvents();
    }
    void ClickRow(const QTreeView* list, int row, Qt::KeyboardModifiers keys = {}) {
        Click(list, list->visualRect(list->model()->index(row, 0)).center(), keys);
    }

    // Does `answer` with the next modal box that opens while `work` runs.
    template <class Work, class Answer>
    void WithBox(Work work, Answer answer) {
        bool opened = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (QWidget* const box = QApplication::activeModalWidget(); box && !opened) {
                opened = true;
                answer(box);
            } else if (box && ++Waits > 100) {
                box->close(); // a box that its answer did not close
            }
        });
        poll.start(20);
        work();
        EXPECT_TRUE(opened);
    }

    std::unique_ptr<Program> Tallies = std::make_unique<Program>();
    QMainWindow* Window = nullptr;
    QTreeView* Characters = nullptr;
    QTreeView* Monsters = nullptr;
    int Waits = 0;
};

TEST_F(Skin, LaysTheWindowOutInProportionWithNothingClippedOrOverlapping) {
    const double pixels = Window->logicalDpiX() / 96.0;
    QWidget* const client = Window->centralWidget();
    EXPECT_EQ(client->size(), QSize(qRound(462 * pixels), qRound(404 * pixels)));
    EXPECT_EQ(Characters->size(), QSize(qRound(227 * pixels), qRound(297 * pixels)));
    EXPECT_EQ(Characters->header()->sectionSize(1), qRound(800 / 15.0 * pixels));

    for (const QLabel* const label : client->findChildren<QLabel*>()) {
        EXPECT_LE(label->sizeHint().width(), label->width()) << label->text().toStdString();
        EXPECT_LE(label->fontMetrics().height(), label->height()) << label->text().toStdString();
    }
    for (const QLineEdit* const box : client->findChildren<QLineEdit*>()) {
        EXPECT_GE(box->width() - 8 * pixels, box->fontMetrics().horizontalAdvance("9999"));
    }
    QList<QWidget*> inFrame;
    for (QWidget* const widget : client->findChildren<QWidget*>()) {
        if (widget->parentWidget() == Characters->parentWidget()) {
            inFrame += widget;
        }
    }
    EXPECT_EQ(inFrame.size(), 13);
    for (QWidget* const a : inFrame) {
        EXPECT_TRUE(a->parentWidget()->rect().contains(a->geometry()));
        for (QWidget* const b : inFrame) {
            EXPECT_TRUE(a == b || !a->geometry().intersects(b->geometry()));
        }
    }
    EXPECT_EQ(Characters->model()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() &
                  Qt::AlignRight,
              Qt::AlignRight);
}

TEST_F(Skin, TabsThroughTheControlsInTheirOrder) {
    const auto boxes = Window->findChildren<QLineEdit*>();
    QList<QWidget*> order{Characters, Monsters, Window->findChild<QAbstractButton*>()};
    for (QLineEdit* const box : boxes) {
        order += box;
    }
    if (!order.at(2)->isEnabled()) {
        order.removeAt(2);
    }
    for (QWidget* const expected : order) {
        EXPECT_EQ(QApplication::focusWidget(), expected);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget(), Characters);
}

TEST_F(Skin, ShowsTheMonstersOfTheCharacterThatAKeyOrClickChooses) {
    FillLists();
    EXPECT_EQ(Rows(Characters), QStringList({"Aron 7", "Bela 8"}));
    EXPECT_EQ(Rows(Monsters), QStringList("Rat 7"));

    QTest::keyPress(Characters, Qt::Key_Down);
    EXPECT_EQ(Rows(Monsters), QStringList("Rat 7")) << "the release counts";
    QTest::keyRelease(Characters, Qt::Key_Down);
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Monsters), QStringList("Wolf 8"));

    QTest::keyClick(Characters, Qt::Key_Home);
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Monsters), QStringList("Wolf 8")) << "other keys only move the selection";
    QTest::keyRelease(Characters, Qt::Key_Up);
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Monsters), QStringList("Wolf 8")) << "a release of a key pressed elsewhere";

    ClickRow(Characters, 0);
    EXPECT_EQ(Rows(Monsters), QStringList("Rat 7"));

    Monsters->header()->resizeSection(0, 40);
    ClickRow(Characters, 1);
    EXPECT_EQ(Monsters->header()->sectionSize(0), Characters->header()->sectionSize(0))
        << "a click puts the columns back";
}

TEST_F(Skin, KeepsARowSelectedAsLongAsThereAreRows) {
    FillLists();
    ClickRow(Characters, 1);
    Click(Characters, BlankSpace);
    QTest::mouseClick(Characters->viewport(), Qt::RightButton, {}, QPoint(20, 5));
    QTest::mouseRelease(Characters->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
    ClickRow(Characters, 1, Qt::ControlModifier);
    QTest::keyClick(Characters, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(Characters->selectionModel()->selectedRows().value(0).row(), 1);
    EXPECT_EQ(Tallies->MainWindow.lstCharacters.SelectedItem()->Text, "Bela");

    Main::BlankLedger(Tallies->Ledger);
    Main::FillCharacterList(Tallies->Ledger, Tallies->MainWindow, Tallies->Services);
    QTest::keyClick(Characters, Qt::Key_Down); // before the view has seen the change
    ClickRow(Characters, 0);
    EXPECT_EQ(Rows(Characters), QStringList());
}

TEST_F(Skin, ImportsThroughMenuAndFileDialog) {
    const TemporaryFolder folder;
    (void)folder.Write("one.htm", "Aron: came, killing 2 Rats\r\n\r\n");
    (void)folder.Write("two.html", "Aron: came, killing 1 Rat and 1 Z\xFCgel\r\n\r\n");
    QAction* const batch = Window->menuBar()->actions().at(0)->menu()->actions().at(3);
    EXPECT_EQ(batch->text(), "&Batch Import HTML for kills");
    StatusPaintings paintings(Tallies->MainWindow.lblStatus);
    Window->centralWidget()->findChildren<QLabel*>().constLast()->installEventFilter(&paintings);
    WithBox([&] { batch->trigger(); },
            [&](QWidget* dialog) {
                auto* const name = dialog->findChild<QLineEdit*>("fileNameEdit");
                name->setText(QString::fromStdString((folder.Path / "one.htm").string()));
                QTest::keyClick(name, Qt::Key_Return);
            });
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Characters), QStringList("Aron 4"));
    EXPECT_EQ(Rows(Monsters), QStringList({"Rat 3", QString("Z\u00FCgel 1")}));
    EXPECT_EQ(paintings.Seen, Lines{"Please wait, batch importing turns..."})
        << "drawn while the command ran";
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Skin, SortsAtTheHeaderWithTheArrowToTell) {
    FillLists();
    QHeaderView* const header = Characters->header();
    EXPECT_FALSE(header->isSortIndicatorShown());
    const QPoint kills(header->sectionPosition(1) + 10, header->height() / 2);
    for (const auto& [order, rows] :
         {std::pair(Qt::AscendingOrder, QStringList({"Aron 7", "Bela 8"})),
          {Qt::DescendingOrder, QStringList({"Bela 8", "Aron 7"})}}) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, kills);
        QCoreApplication::processEvents();
        EXPECT_EQ(Rows(Characters), rows);
        EXPECT_TRUE(header->isSortIndicatorShown());
        EXPECT_EQ(header->sortIndicatorSection(), 1);
        EXPECT_EQ(header->sortIndicatorOrder(), order);
        EXPECT_EQ(Characters->currentIndex().data().toString(), "Aron");
        EXPECT_TRUE(Characters->viewport()->updatesEnabled());
    }
}

TEST_F(Skin, DeletesAtTheReleaseOfTheKeyAndOnlyAtYes) {
    FillLists();
    QString prompt;
    const auto press = [&](Qt::Key key) {
        return [&prompt, key](QWidget* box) {
            prompt = static_cast<QMessageBox*>(box)->text();
            QTest::keyClick(box, key);
        };
    };
    ClickRow(Characters, 1);
    for (const Qt::Key no : {Qt::Key_Escape, Qt::Key_N}) {
        WithBox([&] { QTest::keyClick(Characters, Qt::Key_Delete); }, press(no));
        EXPECT_EQ(Characters->model()->rowCount(), 2);
    }
    WithBox([&] { QTest::keyClick(Characters, Qt::Key_Delete); }, press(Qt::Key_Y));
    EXPECT_TRUE(prompt.startsWith("Really delete this character from the list?\nRemember"));
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Characters), QStringList("Aron 7"));
}

TEST_F(Skin, SendsTheReportToTheClipboard) {
    FillLists();
    Tallies->Ledger.CharacterNames[1] = "Ren\xE9 \x80";
    QTest::mouseClick(Window->findChild<QPushButton*>(), Qt::LeftButton);
    const QString report = QApplication::clipboard()->text();
    EXPECT_TRUE(report.contains(QString("\r\nRen\u00E9 \u20AC (7 total kills)\r\n")));
    EXPECT_TRUE(report.endsWith("\r\nWolf : 8 group kills\r\n"));
}

TEST_F(Skin, CommitsABoxWhenTheMenuTakesTheFocus) {
    auto* const game = Window->findChildren<QLineEdit*>().constFirst();
    QTest::mouseClick(game, Qt::LeftButton);
    QTest::keyClicks(game, "12x");
    EXPECT_EQ(Tallies->Ledger.GameNumber, 0);
    QMenuBar* const bar = Window->menuBar();
    QAction* const file = bar->actions().constFirst();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(file).center());
    EXPECT_EQ(Tallies->Ledger.GameNumber, 12);
    EXPECT_EQ(game->text(), "12");
    file->menu()->close();
    game->insert(QString(QChar(0x6F22))); // beyond the code page
    emit game->textEdited(game->text());
    EXPECT_EQ(game->text(), "12?");
}

TEST_F(Skin, EndsWithItsLastWindowWhicheverThatIs) {
    bool late = false;
    QTimer::singleShot(0, [this] { Window->close(); });
    QTimer::singleShot(50, [this] {
        auto* const label = Tallies->AboutRenderer.Window()->findChild<QLabel*>();
        QTest::mouseRelease(label, Qt::LeftButton);
        EXPECT_NE(Tallies->AboutRenderer.Window(), nullptr) << "a release of a press elsewhere";
        QTest::mouseClick(label, Qt::LeftButton);
    });
    QTimer patience;
    QObject::connect(&patience, &QTimer::timeout, [&late] {
        late = true;
        QApplication::quit();
    });
    patience.start(3000);
    QApplication::exec();
    EXPECT_FALSE(late);
}

TEST_F(Skin, ClosesTheAboutWindowAtAClickAndOpensItAgain) {
    for (const int child : {0, 2, 4}) {
        QWidget* const about = Tallies->AboutRenderer.Window();
        ASSERT_NE(about, nullptr);
        const auto parts = about->findChildren<QFrame*>();
        EXPECT_FALSE(about->findChildren<QLabel*>().constFirst()->pixmap().isNull());
        QTest::mouseClick(parts.at(child), Qt::LeftButton);
        EXPECT_EQ(Tallies->AboutRenderer.Window(), nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Window->menuBar()->actions().at(1)->menu()->actions().constFirst()->trigger();
    }
    Window->menuBar()->actions().constFirst()->menu()->actions().constLast()->trigger();
    EXPECT_EQ(Tallies->MainRenderer.Window(), nullptr);
    EXPECT_EQ(Tallies->AboutRenderer.Window(), nullptr);
}

} // namespace

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const TemporaryFolder home; // the toolkit's own notes of a run stay out of the tester's
    qputenv("XDG_CONFIG_HOME", home.Path.string().c_str());
    qputenv("XDG_RUNTIME_DIR", home.Path.string().c_str());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // which only a player can answer
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
