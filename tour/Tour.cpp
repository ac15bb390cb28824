// Works the real windows with mouse and keys as a player would. Writes a screenshot of each stage,
// prints the two lists and the clipboard report.
// usage: tour SAMPLES SCREENSHOTS
//        tour clipboard             prints the contents of the clipboard
// The exit status is 0 only if every stage had the expected result.

#include "FileDialog.h"
#include "Program.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QWindow>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <utility>

namespace {

void Require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

// One run of the program, from its start to its end.
class Tour {
public:
    Tour(QString screenshots, int& stage) : Screenshots(std::move(screenshots)), Stage(stage) {
        Toured->MainWindow.Window.Show();
        Require(QTest::qWaitForWindowExposed(Window()), "the main window shows");
        Require(QTest::qWaitFor([&] { return Window()->frameGeometry() != Window()->geometry(); }),
                "the main window gets its frame");
        Photograph("start");
        QMainWindow* const about = Toured->AboutRenderer.Window();
        Require(about != nullptr && about->isVisible(), "the about window shows");
        ClickAt(about, about->rect().center());
        Require(Toured->AboutRenderer.Window() == nullptr, "a click closes the about window");
        Window()->activateWindow();
        Require(QTest::qWaitForWindowActive(Window()), "the main window takes the keys");
    }

    void BatchImport(const QString& samples) {
        Choose(Toured->MainWindow.mnuFileBatch,
               [&](QWidget* dialog) { FillFileDialog(dialog, samples + "/README.md", "import"); });
        Photograph("imported");
        Require(Toured->Ledger.DataChanged == 1, "the samples were imported");
    }

    // Clicks on each character. Returns all with their monsters, as the two lists show them.
    QStringList ReadLists() {
        QStringList all;
        for (int row = 0; row < Characters().model()->rowCount(); ++row) {
            ClickRow(Characters(), row);
            Require(Characters().currentIndex().row() == row, "a click selects its row");
            all += Cell(Characters(), row, 0) + Cell(Characters(), row, 1);
            int kills = 0;
            for (int line = 0; line < Monsters().model()->rowCount(); ++line) {
                all += "    " + Cell(Monsters(), line, 0) + Cell(Monsters(), line, 1);
                kills += Cell(Monsters(), line, 1).toInt();
            }
            Require(kills == Cell(Characters(), row, 1).toInt(),
                    "a character's monsters add up to the character's kills");
        }
        Require(!all.isEmpty(), "the characters are listed");
        return all;
    }

    void SortByKills() {
        const QHeaderView* const header = Characters().header();
        const QPoint kills(header->sectionViewportPosition(1) + header->sectionSize(1) / 3,
                           header->height() / 2);
        for (const auto direction : {"up", "down"}) {
            ClickAt(header->viewport(), kills);
            Photograph(QString("sorted-") + direction);
            const int first = Cell(Characters(), 0, 1).toInt();
            const int last = Cell(Characters(), Characters().model()->rowCount() - 1, 1).toInt();
            Require(QString(direction) == "up" ? first < last : first > last,
                    "a click on the header sorts by kills");
        }
    }

    // Types into the turn boxes. One is committed by Enter, the other by leaving it.
    void CommitBoxes() {
        const auto boxes = Window()->findChildren<QLineEdit*>();
        ClickAt(boxes.at(2), boxes.at(2)->rect().center());
        Type("040");
        QTest::keyClick(Window()->windowHandle(), Qt::Key_Return);
        Require(boxes.at(2)->text() == "40", "Enter commits a box");
        QTest::keyClick(Window()->windowHandle(), Qt::Key_Tab);
        Type("43.0");
        ClickAt(boxes.at(0), boxes.at(0)->rect().center());
        Require(boxes.at(3)->text() == "43", "leaving a box commits it");
        Photograph("boxes");
        for (QLineEdit* const box : {boxes.at(2), boxes.at(3)}) {
            ClickAt(box, box->rect().center());
            box->selectAll();
            QTest::keyClick(Window()->windowHandle(), Qt::Key_Delete);
        }
    }

    void SaveAs(const QString& file) {
        Choose(Toured->MainWindow.mnuFileSaveAs,
               [&](QWidget* dialog) { FillFileDialog(dialog, file, "save"); });
        Require(QFileInfo(file).size() > 3080401, "the data file is written");
    }

    void Blank() {
        Choose(Toured->MainWindow.mnuFileNew, [&](QWidget* box) { SayYes(box, "blank"); });
        Require(Characters().model()->rowCount() == 0, "blanking empties the lists");
        Photograph("blanked");
    }

    void Open(const QString& file) {
        Choose(Toured->MainWindow.mnuFileOpen,
               [&](QWidget* dialog) { FillFileDialog(dialog, file, "open"); });
        Photograph("opened");
    }

    void DeleteFirstMonster() {
        ClickRow(Characters(), 0);
        const QString name = Cell(Monsters(), 0, 0);
        const int kills = Cell(Characters(), 0, 1).toInt();
        const int gone = Cell(Monsters(), 0, 1).toInt();
        ClickRow(Monsters(), 0);
        Delete("delete-kills");
        ClickRow(Characters(), 0);
        Require(Cell(Monsters(), 0, 0) != name && Cell(Characters(), 0, 1).toInt() == kills - gone,
                "the monster's kills are gone");
        Photograph("kills-deleted");
    }

    void DeleteFirstCharacter() {
        const int rows = Characters().model()->rowCount();
        ClickRow(Characters(), 0);
        Delete("delete-character");
        Require(Characters().model()->rowCount() == rows - 1, "the character is gone");
        Photograph("character-deleted");
    }

    // Returns the report as another program reads it from the clipboard.
    QString SendToClipboard() {
        auto* const button = Window()->findChild<QPushButton*>();
        ClickAt(button, button->rect().center());
        QProcess other;
        other.start(QApplication::applicationFilePath(), {"clipboard"});
        Require(QTest::qWaitFor([&] { return other.state() == QProcess::NotRunning; }, 10000) &&
                    other.exitCode() == 0,
                "another program can read the clipboard");
        return QString::fromUtf8(other.readAllStandardOutput());
    }

    void Close() { Window()->close(); }

private:
    QMainWindow* Window() const { return Toured->MainRenderer.Window(); }
    QTreeView& Characters() const { return *Window()->findChildren<QTreeView*>().at(0); }
    QTreeView& Monsters() const { return *Window()->findChildren<QTreeView*>().at(1); }

    static QString Cell(const QTreeView& list, int row, int column) {
        return list.model()->index(row, column).data().toString();
    }

    // `at` is relative to the widget.
    static void ClickAt(QWidget* widget, QPoint at) {
        QWidget* const window = widget->window();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          widget->mapTo(window, at));
        QTest::qWait(30);
    }

    static void ClickRow(QTreeView& list, int row) {
        const QModelIndex index = list.model()->index(row, 0);
        list.scrollTo(index);
        ClickAt(list.viewport(), list.visualRect(index).center());
    }

    static void Type(const QString& text) {
        for (const QChar character : text) {
            QTest::keyClick(QApplication::focusWindow(), character.toLatin1());
        }
    }

    // Calls `work`, and `answer` with the dialog or box that it opens.
    template <class Work, class Answer>
    static void Answering(Work work, Answer answer) {
        bool answered = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            QWidget* const dialog = QApplication::activeModalWidget();
            if (!answered && dialog != nullptr && dialog->isVisible()) {
                answered = true;
                poll.stop();
                answer(dialog);
            }
        });
        poll.start(50);
        work();
        Require(QTest::qWaitFor([&] { return answered; }), "a dialog opens");
        QTest::qWait(30);
    }

    // Clicks on a menu entry and answers the dialog that it opens.
    template <class Answer>
    void Choose(const Menu& entry, Answer answer) {
        QMenuBar* const bar = Window()->menuBar();
        QAction* const top = Find(bar->actions(), entry.Parent->Caption);
        ClickAt(bar, bar->actionGeometry(top).center());
        QMenu* const menu = top->menu();
        Require(QTest::qWaitForWindowExposed(menu), "the menu opens");
        if (!std::exchange(MenuShown, true)) {
            Photograph("menu");
        }
        QAction* const item = Find(menu->actions(), entry.Caption);
        Answering([&] { ClickAt(menu, menu->actionGeometry(item).center()); }, answer);
    }

    static QAction* Find(const QList<QAction*>& actions, const std::string& caption) {
        for (QAction* const action : actions) {
            if (action->text() == QString::fromStdString(caption)) {
                return action;
            }
        }
        throw std::runtime_error("no menu entry " + caption);
    }

    void FillFileDialog(QWidget* dialog, const QString& name, const QString& photograph) {
        Require(FileDialog::Type(dialog, name), "the file dialog takes a name");
        Photograph(photograph + "-dialog");
        FileDialog::Accept(dialog);
    }

    void SayYes(QWidget* box, const QString& photograph) {
        Require(QTest::qWaitForWindowActive(box), "the box gets the keys");
        Photograph(photograph + "-question");
        QAbstractButton* const yes = static_cast<QMessageBox*>(box)->button(QMessageBox::Yes);
        ClickAt(yes, yes->rect().center());
    }

    void Delete(const QString& photograph) {
        Answering([&] { QTest::keyClick(Window()->windowHandle(), Qt::Key_Delete); },
                  [&](QWidget* box) { SayYes(box, photograph); });
    }

    // Saves the part of the screen that the windows of the program cover.
    void Photograph(const QString& stage) {
        QTest::qWait(150);
        const QString name =
            QString("%1/%2-%3.png").arg(Screenshots).arg(++Stage, 2, 10, QChar('0')).arg(stage);
        QScreen* const screen = QGuiApplication::primaryScreen();
        QRect shown;
        for (const QWidget* const window : QApplication::topLevelWidgets()) {
            if (window->isVisible()) {
                // A dialog of the system's own may be anywhere.
                const bool elsewhere = window->testAttribute(Qt::WA_DontShowOnScreen);
                shown |= elsewhere ? screen->geometry() : window->frameGeometry();
            }
        }
        Require(screen->grabWindow(0).copy(shown).save(name), "a screenshot is written");
        std::printf("-- %s\n", qPrintable(name));
    }

    std::unique_ptr<Program> Toured = std::make_unique<Program>();
    QString Screenshots;
    int& Stage; // screenshots so far
    bool MenuShown = false;
};

void GiveTour(const QString& samples, const QString& screenshots) {
    const QTemporaryDir folder;
    const QString dataFile = folder.filePath("tallies.qvt");
    int stage = 0;
    QStringList tallies;
    {
        Tour first(screenshots, stage);
        first.BatchImport(samples);
        tallies = first.ReadLists();
        std::puts(qPrintable(tallies.join('\n')));
        first.SortByKills();
        first.CommitBoxes();
        first.SaveAs(dataFile);
        first.Blank();
        first.Close();
    }
    Tour second(screenshots, stage);
    second.Open(dataFile);
    Require(second.ReadLists() == tallies, "a file that was saved and opened shows the same");
    second.BatchImport(samples);
    Require(second.ReadLists() == tallies, "no report is counted twice");
    second.DeleteFirstMonster();
    second.DeleteFirstCharacter();
    const QString report = second.SendToClipboard();
    Require(report.startsWith("Stats for party #1047 in game #12"),
            "the report is on the clipboard");
    std::puts(qPrintable(report));
}

} // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setCursorFlashTime(0); // else pictures of one stage would differ
    // Ends a tour in which something never happens.
    constexpr int patience = 120'000; // milliseconds
    QTimer::singleShot(patience, [] {
        std::fputs("The tour failed: a step did not end\n", stderr);
        std::_Exit(1);
    });
    try {
        const QStringList arguments = QApplication::arguments();
        if (arguments.size() == 2 && arguments.at(1) == "clipboard") {
            std::fputs(qPrintable(QApplication::clipboard()->text()), stdout);
            return 0;
        }
        Require(arguments.size() == 3, "usage: tour SAMPLES SCREENSHOTS");
        GiveTour(arguments.at(1), arguments.at(2));
        std::puts("The tour went well.");
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "The tour failed: %s\n", failure.what());
        return 1;
    }
}
