#include "RealWindow.h"
#include "text/Numbers.h"

#include <QFileDialog>
#include <QPointer>
#include <QWindow>

#include <iostream>
#include <random>

namespace {

int FromEnvironment(const char* name, int otherwise) {
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

// A monkey at the real windows. What it does is random, and the same again for the same seed.
class Monkey : public RealWindow {
protected:
    Monkey() {
        QApplication::setQuitOnLastWindowClosed(false);
        for (int report = 0; report < 6; ++report) {
            const std::string turn = std::to_string(report);
            (void)Folder.Write("turn" + turn + ".html",
                               "Party#   7            3\nTurn#     " + turn + "\nHero" +
                                   std::to_string(report % 4) + ": killing 2 Rats, 1 Wolf and " +
                                   turn + " Imp" + turn + "\n\n");
        }
    }

    // Sends events until none is left and all dialogs are closed.
    void Play(int events) {
        Left = events;
        Later(0);
        while (Left > 0 || Acting > 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    int FileDialogs = 0;
    int Boxes = 0;
    int WithRows = 0; // checks that found something in both lists

private:
    int Below(int limit) { return static_cast<int>(Random() % static_cast<unsigned>(limit)); }
    bool OneIn(int chances) { return Below(chances) == 0; }

    void Later(int milliseconds) {
        QTimer::singleShot(milliseconds, QCoreApplication::instance(), [this] { Step(); });
    }

    // The next event is sent from whatever event loop then runs: that of a dialog, if this one
    // brings a dialog. While a command runs behind a closed dialog, nobody's input counts.
    void Step() {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (Acting > 0 && (dialog == nullptr || dialog == ActingIn)) {
            Later(1);
            return;
        }
        if (Left == 0 && dialog == nullptr) {
            return;
        }
        Later(0);
        QWidget* const before = std::exchange(ActingIn, dialog);
        ++Acting;
        MustFollow = MustStay = false;
        if (Left == 0) {
            dialog->close();
        } else if (--Left; auto* const files = qobject_cast<QFileDialog*>(dialog)) {
            ++FileDialogs;
            AnswerFiles(*files);
        } else {
            Boxes += dialog != nullptr ? 1 : 0;
            Act(dialog);
        }
        QCoreApplication::processEvents();
        if (Acting == 1) {
            Check();
            Left = HasFailure() ? 0 : Left;
        }
        --Acting;
        ActingIn = before;
    }

    // Never at random: the toolkit's dialog can rename and delete files.
    void AnswerFiles(QFileDialog& dialog) {
        constexpr const char* names[] = {"turn0.html", "turn1.html", "turn2.html",  "turn3.html",
                                         "turn4.html", "turn5.html", "saved.qvt",   "other.qvt",
                                         "saved.qvt",  "none.html",  "no/where.qvt"};
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        name->setText(QString::fromStdString((Folder.Path / names[Below(11)]).string()));
        Did(name->text());
        QTest::keyClick(name, OneIn(5) ? Qt::Key_Escape : Qt::Key_Return);
        if (dialog.isVisible() || QApplication::activePopupWidget() != nullptr) {
            dialog.reject();
        }
    }

    void Act(QWidget* dialog) {
        if (Window == nullptr || Tallies->MainRenderer.Window() == nullptr) {
            Start();
            Shown = 0;
        }
        QWidget* target = QApplication::activePopupWidget();
        target = target != nullptr ? target : dialog;
        if (target == nullptr || OneIn(8)) {
            QMainWindow* const about = Tallies->AboutRenderer.Window();
            target = about != nullptr && OneIn(8) ? about : Window;
        }
        target->activateWindow(); // as any desktop does at a click
        QCoreApplication::processEvents();
        const QPointer<QWindow> handle = target->windowHandle();
        if (OneIn(2)) {
            Press(handle, dialog == nullptr && QApplication::activePopupWidget() == nullptr);
        } else {
            Click(*target, handle);
        }
    }

    void Press(const QPointer<QWindow>& handle, bool free) {
        constexpr Qt::Key keys[] = {Qt::Key_Up,     Qt::Key_Down,   Qt::Key_Up,     Qt::Key_Down,
                                    Qt::Key_Home,   Qt::Key_End,    Qt::Key_Tab,    Qt::Key_Backtab,
                                    Qt::Key_Delete, Qt::Key_Space,  Qt::Key_Left,   Qt::Key_Right,
                                    Qt::Key_F10,    Qt::Key_Escape, Qt::Key_Return, Qt::Key_Y,
                                    Qt::Key_N,      Qt::Key_H,      Qt::Key_B,      Qt::Key_I,
                                    Qt::Key_S,      Qt::Key_7,      Qt::Key_3,      Qt::Key_Alt};
        const Qt::Key key = keys[Below(std::size(keys))];
        Did("key " + QKeySequence(key).toString());
        const bool inList = free && Characters->hasFocus() && Window->isActiveWindow();
        // Now and then only half of a key arrives. A release alone must do nothing.
        const bool arrow = key == Qt::Key_Up || key == Qt::Key_Down;
        const int half = Below(12);
        const bool pressed = half != 0;
        if (pressed) {
            QTest::keyPress(handle, key);
        }
        if ((half != 1 || arrow) && handle != nullptr) {
            QTest::keyRelease(handle, key);
        }
        MustFollow = inList && arrow && pressed;
        MustStay = free && (arrow ? !pressed : key != Qt::Key_Delete);
    }

    void Click(QWidget& target, const QPointer<QWindow>& handle) {
        auto parts = target.findChildren<QWidget*>();
        parts += &target;
        parts.removeIf([](const QWidget* part) { return !part->isVisible(); });
        const QWidget& part = *parts.at(Below(static_cast<int>(parts.size())));
        const auto point = [&] {
            return part.mapTo(&target, QPoint(Below(part.width()), Below(part.height())));
        };
        const QPoint from = point();
        const QPoint to = OneIn(8) ? point() : from;
        const Qt::MouseButton button = OneIn(6) ? Qt::RightButton : Qt::LeftButton;
        const Qt::KeyboardModifiers keys = OneIn(6) ? Qt::ControlModifier : Qt::NoModifier;
        Did(QString("click on ") + part.metaObject()->className());
        if (OneIn(8)) {
            QTest::mouseDClick(handle, button, keys, from);
            return;
        }
        QTest::mousePress(handle, button, keys, from);
        if (handle != nullptr) {
            QTest::mouseRelease(handle, button, keys, to);
        }
    }

    // Lists, boxes and ledger tell the same.
    void Check() {
        if (Tallies->MainRenderer.Window() == nullptr) {
            return;
        }
        const KillLedger& ledger = Tallies->Ledger;
        Slaying_Tallies& window = Tallies->MainWindow;
        const ListItem* const row = window.lstCharacters.SelectedItem();
        QStringList characters;
        int lowest = 0;
        int selected = 0;
        for (int c = 1; c <= MaxCharacters; ++c) {
            if (const std::string& name = ledger.CharacterNames[c]; !name.empty()) {
                lowest = lowest == 0 ? c : lowest;
                selected = row != nullptr && row->Text == name ? c : selected;
                characters += Row(name, ledger.CharacterKills[c]);
                int sum = 0;
                for (int m = 0; m <= MaxMonsters; ++m) {
                    sum += ledger.KillTable(c, m);
                }
                EXPECT_EQ(ledger.CharacterKills[c], sum);
            }
        }
        QStringList listed = Rows(Characters);
        characters.sort();
        listed.sort();
        EXPECT_EQ(listed, characters);
        for (const auto& [list, widget] :
             {std::pair(&window.lstCharacters, Characters), {&window.lstMonsters, Monsters}}) {
            const auto chosen = widget->selectionModel()->selectedRows();
            EXPECT_EQ(chosen.size(), list->Count() > 0 ? 1 : 0);
            EXPECT_EQ(chosen.isEmpty() ? 0 : chosen.at(0).row() + 1, list->SelectedRow());
        }
        // The monsters are those of the character shown so far, of the first one behind a refill,
        // or of the selected one: the latter behind an arrow key, the former behind other keys.
        const QStringList monsters = Rows(Monsters);
        WithRows += monsters.isEmpty() ? 0 : 1;
        if (!MustStay && (MustFollow || monsters != MonstersOf(Shown))) {
            Shown = MustFollow || monsters != MonstersOf(lowest) ? selected : lowest;
        }
        EXPECT_EQ(monsters, MonstersOf(Shown));

        EXPECT_EQ(window.lblStatus.Caption.Get(), "");
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        const auto boxes = Window->findChildren<QLineEdit*>();
        EXPECT_TRUE(boxes.at(0)->hasFocus() ||
                    Numbers::Read(window.txtGame.Text.Get()) == ledger.GameNumber);
        EXPECT_TRUE(boxes.at(1)->hasFocus() ||
                    Numbers::Read(window.txtParty.Text.Get()) == ledger.PartyNumber);
    }

    QStringList MonstersOf(int character) const {
        QStringList rows;
        const KillLedger& ledger = Tallies->Ledger;
        for (int m = 1; character != 0 && m <= MaxMonsters; ++m) {
            if (const int kills = ledger.KillTable(character, m); kills >= 1) {
                rows += Row(ledger.MonsterNames[m], kills);
            }
        }
        return rows;
    }
    static QString Row(const std::string& name, int kills) {
        return QString::fromStdString(name + ' ' + std::to_string(kills));
    }

    void Did(const QString& what) {
        Deeds += what;
        Deeds = Deeds.last(std::min<qsizetype>(Deeds.size(), 12));
    }

public:
    const int Seed = FromEnvironment("MONKEY_SEED", 39);
    QStringList Deeds; // the last ones

private:
    std::mt19937 Random{static_cast<unsigned>(Seed)};
    TemporaryFolder Folder;
    int Left = 0;
    int Acting = 0;              // events on their way, one for each dialog and one for the windows
    QWidget* ActingIn = nullptr; // the dialog that was open when the innermost of them was sent
    bool MustFollow = false;     // the monsters shown must be those of the selected character
    bool MustStay = false;       // the ones shown before
    int Shown = 0;               // the character whose monsters are listed
};

TEST_F(Monkey, BringsListsAndLedgerNeverToDiffer) {
    const int events = FromEnvironment("MONKEY_EVENTS", 3000);
    Play(events);
    std::cout << "seed " << Seed << ", " << FileDialogs << " file dialogs, " << Boxes
              << " events to boxes, " << WithRows
              << " checks of lists with rows; last: " << Deeds.join("; ").toStdString() << '\n';
}

} // namespace
