#include "Program.h"
#include "ScriptedDesktop.h"

#include <cmath>

#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformaccessibility.h>
#include <QtGui/qpa/qplatformintegration.h>
#include <QtTest>
#include <QtWidgets>

using namespace std::string_view_literals;

namespace {

class Skin : public testing::Test {
protected:
    Skin() { Start(); }
    void TearDown() override {
        QApplication::setFont(UsualFont);
        QApplication::setPalette(UsualPalette);
        qApp->setStyleSheet({});
        QAccessible::installUpdateHandler(nullptr);
    }

    void Start() {
        Tallies = std::make_unique<Program>();
        Tallies->MainWindow.Window.Show();
        Window = Tallies->MainRenderer.Window();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Window));
        Characters = Window->findChildren<QTreeView*>().at(0);
        Monsters = Window->findChildren<QTreeView*>().at(1);
    }

    static QStringList Rows(const QTreeView* list) {
        QStringList rows;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            rows += list->model()->index(row, 0).data().toString() +
                    list->model()->index(row, 1).data().toString();
        }
        return rows;
    }

    void FillLists(const std::vector<std::string>& names = {"Aron", "Bela"}) {
        auto& ledger = Tallies->Ledger;
        for (const std::string& name : names) {
            const int slot = Main::FindCharacter(ledger, Tallies->Services, name);
            ledger.MonsterNames[slot] = slot == 1 ? "Rat" : "Wolf";
            Main::CreditKills(ledger, slot, slot, slot + 6);
        }
        Main::FillCharacterList(ledger, Tallies->MainWindow, Tallies->Services);
        QCoreApplication::processEvents();
    }

    // Chooses the menu entry whose caption begins with these words.
    void Choose(const QString& words) {
        for (QAction* const entry : Window->menuBar()->findChildren<QAction*>()) {
            if (entry->text().remove('&').startsWith(words)) {
                return entry->trigger();
            }
        }
        ADD_FAILURE() << words.toStdString();
    }

    // On Windows, style, icon and the places of boxes are the system's own.
    static bool IsOffscreen() { return QGuiApplication::platformName() == "offscreen"; }

    static QRect Cell(const QTreeView* list, int row, int column = 0) {
        return list->visualRect(list->model()->index(row, column));
    }

    // Hovers over a place and returns the tooltip that comes.
    static QString TipAt(QWidget* widget, QPoint place) {
        QToolTip::hideText();
        (void)QTest::qWaitFor([] { return !QToolTip::isVisible(); });
        QHelpEvent hover(QEvent::ToolTip, place, widget->mapToGlobal(place));
        QCoreApplication::sendEvent(widget, &hover);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    }

    // Does `answer` with the modal box that opens while `work` runs. Returns whether one did.
    template <class Work, class Answer>
    bool WithBox(Work work, Answer answer) {
        bool opened = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            QWidget* const box = QApplication::activeModalWidget();
            if (box != nullptr && !std::exchange(opened, true)) {
                answer(box);
            }
        });
        poll.start(20);
        work();
        return opened;
    }

    const QFont UsualFont = QApplication::font();
    const QPalette UsualPalette = QApplication::palette();
    std::unique_ptr<Program> Tallies;
    QMainWindow* Window = nullptr;
    QTreeView *Characters = nullptr, *Monsters = nullptr;
};

TEST_F(Skin, LaysTheWindowsOutInProportionWithNothingClippedOrOverlapping) {
    QFont wide = UsualFont;
    wide.setStretch(120);
    QApplication::setFont(wide);
    Start();
    const double pixels = Window->logicalDpiX() / 96.0;
    QWidget* const client = Window->centralWidget();
    EXPECT_EQ(client->size(), QSize(qRound(462 * pixels), qRound(404 * pixels)));
    EXPECT_EQ(Characters->header()->sectionSize(1), qRound(800 / 15.0 * pixels));

    Tallies->MainWindow.lblStatus.Caption = "Please wait, batch importing turns...";
    EXPECT_TRUE(Tallies->MainWindow.lblStatus.Repaint && Tallies->MainWindow.txtGame.Repaint)
        << "nothing would show during a command";
    const QWidget* const about = Tallies->AboutRenderer.Window();
    for (const auto* label : client->findChildren<QLabel*>() + about->findChildren<QLabel*>()) {
        const bool wraps = label->wordWrap();
        const QSize needed(wraps ? 0 : label->sizeHint().width(),
                           wraps ? label->heightForWidth(label->width())
                                 : label->fontMetrics().height());
        EXPECT_EQ(needed.boundedTo(label->size()), needed) << label->text().toStdString();
        EXPECT_GE(label->font().pointSizeF(), 8) << label->text().toStdString();
    }
    for (QTreeView* const list : {Characters, Monsters}) {
        QHeaderView* const header = list->header();
        const int bar = list->verticalScrollBar()->sizeHint().width();
        EXPECT_LE(header->length(), list->viewport()->width() - bar);
        header->setSortIndicatorShown(false); // which takes room of its own
        EXPECT_LE(header->sectionSizeHint(0), header->sectionSize(0));
        EXPECT_LE(header->sectionSizeHint(1), header->sectionSize(1));
    }
    QWidget* const frame = Characters->parentWidget();
    const auto inFrame = frame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* const a : inFrame) {
        EXPECT_TRUE(frame->rect().contains(a->geometry()));
        for (QWidget* const b : inFrame) {
            EXPECT_TRUE(a == b || !a->geometry().intersects(b->geometry()));
        }
    }
}

TEST_F(Skin, NamesControlsByTheirLabels) {
    std::string names;
    for (const QWidget* const window : {Window, Tallies->AboutRenderer.Window()}) {
        for (QWidget* const control : window->findChildren<QWidget*>()) {
            if (const QString name = control->accessibleName(); !name.isEmpty()) {
                const auto role = QAccessible::queryAccessibleInterface(control)->role();
                names += QMetaEnum::fromType<QAccessible::Role>().valueToKey(role);
                names += ' ' + name.toStdString() + '|';
            }
        }
    }
    EXPECT_EQ(names, "EditableText Game #:|EditableText Party #:|EditableText Turn Start:|"
                     "EditableText Turn End:|Tree Characters:|Tree Monster Kills:|"
                     "Graphic About Marrowquill Slaying Tallies|");
}

TEST_F(Skin, ReportsTheRowThatHasTheKeyboard) {
    static std::string heard; // by a screen reader, last
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
        if (event->type() == QAccessible::Focus) {
            heard = event->accessibleInterface()->text(QAccessible::Name).toStdString();
        }
    });
    FillLists();
    EXPECT_TRUE(QTest::qWaitFor([] { return heard == "Aron"; })) << heard;
    const std::pair<Qt::Key, std::string> keys[] = {{Qt::Key_Down, "Bela"},
                                                    {Qt::Key_Tab, "Wolf"},
                                                    {Qt::Key_Backtab, "Bela"},
                                                    {Qt::Key_Up, "Aron"},
                                                    {Qt::Key_Tab, "Rat"},
                                                    {Qt::Key_Right, "Rat"}, // cannot be sorted
                                                    {Qt::Key_Backtab, "Aron"},
                                                    {Qt::Key_Right, "Kills"},
                                                    {Qt::Key_Return, "Kills, sorted ascending"},
                                                    {Qt::Key_Return, "Kills, sorted descending"}};
    for (const auto& [key, last] : keys) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QCoreApplication::processEvents();
        EXPECT_EQ(heard, last);
    }
}

TEST_F(Skin, TabsThroughTheControlsAndOpensTheMenus) {
    QList<QWidget*> order{Characters, Monsters, Window->findChild<QPushButton*>()};
    for (QLineEdit* const box : Window->findChildren<QLineEdit*>()) {
        order += box;
    }
    for (QWidget* const expected : order) {
        EXPECT_EQ(QApplication::focusWidget(), expected);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const auto press = [this](Qt::Key key) { QTest::keyClick(Window->windowHandle(), key); };
    press(Qt::Key_F10);
    press(Qt::Key_Down);
    ASSERT_EQ(QApplication::activePopupWidget(), Window->menuBar()->actions().at(0)->menu());
    press(Qt::Key_Right);
    ASSERT_EQ(QApplication::activePopupWidget(), Window->menuBar()->actions().at(1)->menu());
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), Characters);
}

TEST_F(Skin, OpensEachFileDialogWhereItWasLastUsed) {
    const TemporaryFolder home;
    for (const std::string folder : {"a", "b", "c"}) {
        std::filesystem::create_directory(home.Path / folder);
        (void)home.Write(folder + "/file.html", "");
    }
    // An entry of the File menu, the folder and the name that its dialog must show, the file to
    // choose, if any. No dialog opens where the one before it was used.
    const std::tuple<QString, QString, QString, std::string> uses[] = {
        {"Import", "", "", "a/file.html"},    {"Save data As", "", "", "b/new"},
        {"Open", "", "", "c/file.html"},      {"Batch", "a", "file.html", "b/file.html"},
        {"Open", "c", "file.html", "c/none"}, {"Save data As", "b", "", "a/newer"},
        {"Import", "b", "file.html", ""}};
    QSize size; // in which the last one was left
    for (const auto& [entry, folder, offered, file] : uses) {
        const bool saves = entry == "Save data As";
        const bool isData = saves || entry == "Open";
        const auto answer = [&, folder = folder, offered = offered, file = file](QWidget* box) {
            auto* const dialog = static_cast<QFileDialog*>(box);
            EXPECT_EQ(dialog->parentWidget(), Window);
            EXPECT_EQ(dialog->acceptMode() == QFileDialog::AcceptSave, saves);
            EXPECT_EQ(dialog->fileMode(),
                      isData ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
            EXPECT_EQ(dialog->nameFilters(),
                      QStringList(isData ? "Marrowquill Kill Files (*\u200B.qvt) (*?.qvt)"
                                         : "HTML File (*\u200B.html) (*?.htm*)"));
            EXPECT_TRUE(dialog->testOption(QFileDialog::DontConfirmOverwrite)); // the program asks
            EXPECT_TRUE(folder.isEmpty() || dialog->directory().dirName() == folder);
            auto* const name = dialog->findChild<QLineEdit*>("fileNameEdit");
            EXPECT_EQ(name->text(), offered);
            QTest::qWait(100); // the list of files comes late
            auto* const list = dialog->findChild<QTreeView*>("treeView");
            for (int column = 0; column < 4; ++column) {
                const auto cell = list->model()->index(0, column, list->rootIndex());
                EXPECT_GE(list->columnWidth(column), list->sizeHintForIndex(cell).width());
            }
            EXPECT_GE(list->viewport()->width(), list->header()->length());
            EXPECT_FALSE(
                dialog->findChild<QListView*>("sidebar")->horizontalScrollBar()->isVisible());
            EXPECT_TRUE(size.isEmpty() || dialog->size() == size);
            dialog->resize(dialog->size() + QSize(3, 2));
            size = dialog->size();
            name->setText(QString::fromStdString((home.Path / file).string()));
            QTest::keyClick(name, file.empty() ? Qt::Key_Escape : Qt::Key_Return);
        };
        auto& ledger = Tallies->Ledger;
        ledger.DataChanged = 0;
        EXPECT_TRUE(WithBox([&, entry = entry] { Choose(entry); }, answer));
        EXPECT_EQ(isData ? ledger.DataFilePath == home.Path / file : ledger.DataChanged == 1,
                  !file.empty());
        EXPECT_TRUE(!saves || std::filesystem::exists(home.Path / file)) << "where it was chosen";
    }
}

TEST_F(Skin, SortsAtTheHeaderByMouseAndKeys) {
    using Tester = QAbstractItemModelTester;
    const Tester tester(Characters->model(), Tester::FailureReportingMode::Fatal);
    FillLists();
    auto* const table = QAccessible::queryAccessibleInterface(Characters)->tableInterface();
    EXPECT_EQ(table->columnDescription(2) + table->rowDescription(0), "") << "no such headers";
    const auto alignment = Characters->model()->index(0, 1).data(Qt::TextAlignmentRole);
    EXPECT_EQ(alignment.toInt(), Qt::AlignRight | Qt::AlignVCenter);
    QHeaderView* const header = Characters->header();
    Window->setAttribute(Qt::WA_KeyboardFocusChange); // as the Tab key does
    const auto framed = [&] {
        const QImage focused = header->viewport()->grab().toImage();
        Monsters->setFocus();
        const bool differs = focused != header->viewport()->grab().toImage();
        Characters->setFocus();
        return differs;
    };
    // A column to click on, or -1 and a key; the column sorted by then, and whether downwards.
    const std::tuple<int, Qt::Key, int, bool> ways[] = {{1, {}, 1, false},
                                                        {-1, Qt::Key_Left, 1, false},
                                                        {-1, Qt::Key_Return, 0, false},
                                                        {-1, Qt::Key_Right, 0, false},
                                                        {-1, Qt::Key_Return, 1, true},
                                                        {0, {}, 0, true}};
    for (const auto& [column, key, sorted, down] : ways) {
        if (column < 0) {
            QTest::keyClick(Characters, key);
        } else {
            const QPoint place(header->sectionPosition(column) + 10, header->height() / 2);
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
        }
        QCoreApplication::processEvents();
        EXPECT_EQ(framed(), column != 1) << "a frame shows once a key has used the header";
        EXPECT_EQ(Rows(Characters).constFirst(), down ? "Bela 8" : "Aron 7");
        EXPECT_EQ(header->sortIndicatorSection(), sorted);
        EXPECT_EQ(header->sortIndicatorOrder(), down ? Qt::DescendingOrder : Qt::AscendingOrder);
        EXPECT_EQ(Characters->currentIndex().data().toString(), "Aron");
        EXPECT_TRUE(Characters->viewport()->updatesEnabled());
    }
    FillLists({"aron\x92"});
    EXPECT_EQ(Rows(Characters), QStringList({"Bela 8", "aron\u2019 9", "Aron 7"})) << "as before";
    QTest::mouseClick(Window->findChild<QPushButton*>(), Qt::LeftButton);
    EXPECT_TRUE(QApplication::clipboard()->text().contains("aron\u2019"));
}

TEST_F(Skin, ShowsCutCellsInTooltipsAndByScrolling) {
    const std::string longName = "<b>" + std::string(2000, 'x');
    FillLists({"Aron", longName});
    const int own = Monsters->columnWidth(0);
    const QString capped = Characters->model()->index(1, 0).data().toString();
    EXPECT_EQ(capped.size(), 1000);
    const QString tip = TipAt(Characters->viewport(), Cell(Characters, 1).center());
    EXPECT_TRUE(QString(tip).remove(u'\u200B').contains('>' + capped.toHtmlEscaped() + '<'));
    for (const QWidget* const window : QApplication::topLevelWidgets()) {
        EXPECT_LE(window->width(), Window->screen()->size().width());
    }
    EXPECT_EQ(TipAt(Characters->viewport(), Cell(Characters, 0).center()), "");
    for (QTreeView* const list : {Characters, Monsters}) {
        const auto* const bar = list->horizontalScrollBar();
        EXPECT_FALSE(bar->isVisible());
        list->header()->resizeSection(0, list->width());
        EXPECT_TRUE(QTest::qWaitFor([bar] { return bar->isVisible(); }));
        QTest::keyClick(list, Qt::Key_Right);
        EXPECT_GT(bar->value(), 0) << "keys bring the second column into sight";
        list->header()->resizeSection(0, 30);
        QTest::keyClick(list, Qt::Key_Plus, Qt::ControlModifier);
        const auto last = list->model()->index(list->model()->rowCount() - 1, 0);
        EXPECT_EQ(list->columnWidth(0), std::max(list->header()->sectionSizeHint(0),
                                                 list->sizeHintForIndex(last).width()));
    }
    QTest::mouseClick(Characters->viewport(), Qt::LeftButton, {}, Cell(Characters, 0).center());
    QCoreApplication::processEvents();
    EXPECT_EQ(Monsters->columnWidth(0), own) << "a click undoes what was dragged";
}

TEST_F(Skin, ShowsALongNumberFromItsStart) {
    auto* const box = Window->findChildren<QLineEdit*>().constLast();
    box->setFocus();
    for (const Qt::Key commit : {Qt::Key_Return, Qt::Key_Backtab}) {
        QTest::keyClicks(box, "00123456789012.5");
        QTest::keyClick(box, commit);
        EXPECT_EQ(box->text(), "123456789012.5") << "the second number replaces the first";
        EXPECT_EQ(box->cursorPosition(), 0);
    }
    EXPECT_TRUE(TipAt(box, QPoint(5, 5)).contains(box->text()));
    box->clear();
    EXPECT_EQ(TipAt(box, QPoint(5, 5)), "");
}

TEST_F(Skin, MarksTheListThatHasTheKeyboard) {
    for (const QPalette& palette :
         {UsualPalette, QPalette(QColor(50, 50, 50), QColor(40, 40, 40))}) {
        QApplication::setPalette(palette);
        Start();
        FillLists();
        const auto contrast = [&](const QTreeView* list, int line) {
            const QRect row = Cell(list, 0, 1);
            const QImage image = list->viewport()->grab(row).toImage();
            return std::abs(image.pixelColor(2, line).lightness() -
                            palette.color(QPalette::Base).lightness());
        };
        const int strong = contrast(Characters, 2);
        EXPECT_TRUE(!IsOffscreen() || std::abs(contrast(Monsters, 0) - strong) <= 5) << "a frame";
        EXPECT_GT(contrast(Monsters, 2), strong / 10);
        EXPECT_LT(contrast(Monsters, 2), strong * 2 / 3);
    }
}

TEST_F(Skin, TakesLeftClicksThatBeganInTheListAndShowsItsPointer) {
    FillLists();
    int clicks = 0;
    Tallies->MainWindow.lstCharacters.Click = [&clicks] { ++clicks; };
    QWidget* const rows = Characters->viewport();
    const QPoint row = Cell(Characters, 1).center();
    QTest::mouseRelease(rows, Qt::LeftButton, {}, row);
    QTest::mouseClick(rows, Qt::RightButton, {}, row);
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(rows, Qt::LeftButton, Qt::ControlModifier, row);
    EXPECT_EQ(Characters->currentIndex().row(), 1);
    QTest::mouseClick(rows, Qt::LeftButton, {}, row);
    QTest::mouseDClick(rows, Qt::LeftButton, {}, row);
    QTest::mouseRelease(rows, Qt::LeftButton, {}, row);
    QTest::mouseClick(rows, Qt::LeftButton, {}, QPoint(5, rows->height() - 5));
    EXPECT_EQ(clicks, 4);
    EXPECT_TRUE(Characters->selectionModel()->isRowSelected(1));
    for (const auto& [pointer, shape] :
         {std::pair(Pointer::Hourglass, Qt::WaitCursor), {Pointer::Default, Qt::ArrowCursor}}) {
        Tallies->MainWindow.Window.MousePointer = pointer;
        Tallies->MainWindow.lstCharacters.MousePointer = pointer;
        const QCursor* const over = QApplication::overrideCursor();
        EXPECT_EQ(over == nullptr ? Qt::ArrowCursor : over->shape(), shape);
        EXPECT_EQ(Characters->cursor().shape(), shape);
    }
}

// Only a key that was pressed and released in the list asks. Yes is the default, wherever it is.
TEST_F(Skin, DeletesAfterAKeyOfItsOwnAndAYes) {
    qApp->setStyleSheet("* { button-layout: 3 }");
    FillLists({"Aron", "Bela", "Ciri", "Dora", "Eno", "Fay", "Gil", "Hal", "Ida", "Jon", "Kim"});
    Characters->setCurrentIndex(Characters->model()->index(9, 0));
    const auto halves = [this] {
        QTest::keyRelease(Characters, Qt::Key_Delete);
        QTest::keyPress(Characters, Qt::Key_Delete);
        QKeyEvent repeat(QEvent::KeyRelease, Qt::Key_Delete, {}, {}, true);
        QCoreApplication::sendEvent(Characters, &repeat);
        Monsters->setFocus();
        Characters->setFocus();
        QTest::keyRelease(Characters, Qt::Key_Delete);
    };
    EXPECT_FALSE(WithBox(halves, [](QWidget* box) { box->close(); }));
    Window->move(0, 100);
    // An answer and a size of type: the window, then the screen is smaller than the box would be.
    for (const auto& [answer, points] :
         {std::pair(Qt::Key_Escape, 9), {Qt::Key_N, 18}, {Qt::Key_Return, 30}}) {
        QFont font = UsualFont;
        font.setPointSize(points);
        QApplication::setFont(font);
        EXPECT_EQ(Rows(Characters).size(), 11);
        const auto reply = [&, answer = answer, points = points](QWidget* box) {
            EXPECT_EQ(static_cast<QMessageBox*>(box)->icon(), QMessageBox::Question);
            const auto* const text = box->findChild<QLabel*>("qt_msgbox_label");
            EXPECT_GE(text->height(), text->heightForWidth(text->width()));
            const QRect row = Cell(Characters, 9);
            const QRect place = row.translated(Characters->viewport()->mapToGlobal(QPoint()));
            EXPECT_FALSE(IsOffscreen() && points < 30 && box->geometry().intersects(place));
            EXPECT_LE(box->width(), box->screen()->availableSize().width());
            QTest::keyClick(box, answer);
        };
        EXPECT_TRUE(WithBox([&] { QTest::keyClick(Characters, Qt::Key_Delete); }, reply));
    }
    EXPECT_FALSE(Rows(Characters).contains("Jon 16"));
    Tallies->AboutRenderer.Window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Tallies->AboutRenderer.Window()));
    Tallies->MainWindow.Window.MousePointer = Pointer::Hourglass;
    const auto look = [this](QWidget* box) {
        EXPECT_EQ(box->parentWidget(), Window);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        EXPECT_GT(box->width(), box->fontMetrics().horizontalAdvance(box->windowTitle()));
        box->close();
    };
    QApplication::setFont(UsualFont);
    EXPECT_TRUE(WithBox([&] { Tallies->Services.ShowMessage({"?"}); }, look));
}

TEST_F(Skin, EndsWithItsLastWindowWhicheverThatIs) {
    QTimer::singleShot(0, [this] { Window->close(); });
    QTimer::singleShot(50, [this] {
        auto* const label = Tallies->AboutRenderer.Window()->findChild<QLabel*>();
        QTest::mouseRelease(label, Qt::LeftButton);
        EXPECT_NE(Tallies->AboutRenderer.Window(), nullptr) << "a release of a press elsewhere";
        QTest::mouseClick(label, Qt::LeftButton);
    });
    EXPECT_EQ(QApplication::exec(), 0); // or the time runs out
}

TEST_F(Skin, ClosesTheAboutWindowAndOpensItAgain) {
    int loads = 0;
    Tallies->AboutWindow.Window.Load = [&loads] { ++loads; };
    const auto shown = [this] { return Tallies->AboutRenderer.Window(); };
    for (const qsizetype way : {0, 1, 2, 3}) {
        ASSERT_NE(shown(), nullptr);
        QTest::mouseClick(shown()->findChild<QFrame*>(), Qt::RightButton);
        EXPECT_NE(shown(), nullptr);
        if (way < 2) { // a click anywhere
            QTest::mouseClick(shown()->findChildren<QFrame*>().at(4 * way), Qt::LeftButton);
        } else {
            QMainWindow* const active = way == 2 ? shown() : Window;
            active->activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(active));
            QTest::keyClick(active, Qt::Key_Escape);
        }
        EXPECT_EQ(shown(), nullptr);
        EXPECT_TRUE(QTest::qWaitForWindowActive(Window));
        Choose("About");
        EXPECT_TRUE(QTest::qWaitForWindowActive(shown()));
    }
    shown()->showMinimized();
    Choose("About");
    EXPECT_FALSE(shown()->isMinimized());
    EXPECT_EQ(loads, 4);
    const TemporaryFolder folder;
    for (const auto& [file, size] :
         {std::pair("GIF89a\1\0\1\0\x80\0\0\xFF\xFF\xFF\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D\1\0;"sv,
                    QSize(1, 1)),
          {"GIF89a\x90\1"sv, QSize(400, 300)}}) {
        const auto picture = folder.Write("picture.gif", file);
        Tallies->AboutWindow.Picture1.Picture = Tallies->Services.LoadPicture(picture);
        EXPECT_EQ(shown()->findChild<QLabel*>()->pixmap().size(), size);
    }
    const auto sizes = shown()->windowIcon().availableSizes();
    EXPECT_TRUE(!IsOffscreen() || (sizes.contains(QSize(16, 16)) && sizes.contains({256, 256})));
    Choose("Exit");
    EXPECT_EQ(Tallies->MainRenderer.Window(), nullptr);
    EXPECT_EQ(shown(), nullptr);
}

} // namespace

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const TemporaryFolder home;
    std::filesystem::permissions(home.Path, std::filesystem::perms::owner_all);
    for (const char* folder :
         {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
        qputenv(folder, home.Path.string().c_str());
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // which only a player can answer
    const QApplication application(argc, argv);
    int result = RUN_ALL_TESTS();
    for (const auto& left : std::filesystem::recursive_directory_iterator(home.Path)) {
        qWarning("The program left %s in a home", left.path().string().c_str());
        result = 1;
    }
    return result;
}
