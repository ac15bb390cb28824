#include "RealWindow.h"

#include <QAccessible>
#include <QDir>
#include <QFileDialog>
#include <QMetaEnum>

namespace {

class Skin : public RealWindow {
protected:
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

    QAction* Entry(int menu, int entry) {
        return Window->menuBar()->actions().at(menu)->menu()->actions().at(entry);
    }

    static void ClickRow(const QTreeView* list, int row) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 0)).center());
        QCoreApplication::processEvents();
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

    int Waits = 0;
};

TEST_F(Skin, LaysTheWindowsOutInProportionWithNothingClippedOrOverlapping) {
    const QFont usual = QApplication::font();
    const QPalette light = QApplication::palette();
    const QPalette dark(QColor(50, 50, 50), QColor(40, 40, 40));
    for (const bool wide : {false, true}) {
        for (const QPalette& palette : {light, dark}) {
            QFont font = usual;
            font.setStretch(wide ? 120 : 100);
            QApplication::setFont(font);
            QApplication::setPalette(palette);
            Start();
            const double pixels = Window->logicalDpiX() / 96.0;
            QWidget* const client = Window->centralWidget();
            EXPECT_EQ(client->size(), QSize(qRound(462 * pixels), qRound(404 * pixels)));
            EXPECT_NEAR(Characters->width(), 227 * pixels, 1); // edges are rounded, not sizes
            EXPECT_NEAR(Characters->height(), 297 * pixels, 1);
            EXPECT_EQ(Characters->header()->sectionSize(1), qRound(800 / 15.0 * pixels));

            Tallies->MainWindow.lblStatus.Caption = "Please wait, batch importing turns...";
            auto labels = client->findChildren<QLabel*>();
            labels += Tallies->AboutRenderer.Window()->findChildren<QLabel*>();
            EXPECT_EQ(labels.size(), 12);
            for (const QLabel* const label : labels) {
                const std::string caption = label->text().toStdString();
                const bool wraps = label->wordWrap();
                EXPECT_LE(wraps ? 0 : label->sizeHint().width(), label->width()) << caption;
                EXPECT_LE(wraps ? label->heightForWidth(label->width())
                                : label->fontMetrics().height(),
                          label->height())
                    << caption;
                EXPECT_GE(label->font().pointSizeF(), 8) << caption;
            }
            for (const QLineEdit* const box : client->findChildren<QLineEdit*>()) {
                EXPECT_GE(box->width() - 8 * pixels, box->fontMetrics().horizontalAdvance("9999"));
            }
            for (const QHeaderView* const header : client->findChildren<QHeaderView*>()) {
                for (const int column : {0, 1}) {
                    EXPECT_LE(header->sectionSizeHint(column), header->sectionSize(column));
                }
            }
            const auto* const button = client->findChild<QPushButton*>();
            EXPECT_GE(button->width(), button->minimumSizeHint().width());
            EXPECT_GE(button->height(), button->fontMetrics().height() + 4 * pixels);

            const auto inFrame = Characters->parentWidget()->findChildren<QWidget*>(
                QString(), Qt::FindDirectChildrenOnly);
            EXPECT_EQ(inFrame.size(), 13);
            for (QWidget* const a : inFrame) {
                EXPECT_TRUE(a->parentWidget()->rect().contains(a->geometry()));
                for (QWidget* const b : inFrame) {
                    EXPECT_TRUE(a == b || !a->geometry().intersects(b->geometry()));
                }
            }
            const QImage all = Window->grab().toImage().scaled(1, 1, Qt::IgnoreAspectRatio,
                                                               Qt::SmoothTransformation);
            EXPECT_EQ(all.pixelColor(0, 0).lightness() > 128, palette == light);
        }
    }
    QApplication::setFont(usual);
    QApplication::setPalette(light);
}

TEST_F(Skin, TellsRoleAndNameOfEachControlToThoseWhoHearIt) {
    QString heard;
    std::function<void(const QAccessibleInterface*)> walk = [&](const auto* control) {
        using Access = QAccessible;
        const QString name = control->text(Access::Name);
        if (!name.isEmpty() && control->role() != Access::StaticText) {
            heard += QMetaEnum::fromType<Access::Role>().valueToKey(control->role()) + (' ' + name);
            heard += '|';
        }
        for (int child = 0; child < control->childCount(); ++child) {
            walk(control->child(child));
        }
    };
    walk(QAccessible::queryAccessibleInterface(Window));
    walk(QAccessible::queryAccessibleInterface(Tallies->AboutRenderer.Window()));
    EXPECT_EQ(
        heard.toStdString(),
        "Window Marrowquill - Slaying Tallies|Grouping Slaying Tallies:|"
        "EditableText Game #:|EditableText Party #:|"
        "EditableText Turn Start:|EditableText Turn End:|"
        "Tree Characters:|ColumnHeader Character Name|ColumnHeader Kills|"
        "Tree Monster Kills:|ColumnHeader Monster Name|ColumnHeader Kills|"
        "Button Send to Clipboard|MenuItem File|MenuItem Blank all data|"
        "MenuItem Import HTML turn for kills|MenuItem Batch Import HTML for kills|"
        "MenuItem Open saved data|MenuItem Save data|MenuItem Save data As|"
        "MenuItem Exit program|MenuItem Help|MenuItem About Report Digest|"
        "Window About Marrowquill Slaying Tallies|Graphic About Marrowquill Slaying Tallies|");
}

TEST_F(Skin, OpensItsMenusByKeys) {
    const auto file = Window->menuBar()->actions().at(0)->menu();
    const auto help = Window->menuBar()->actions().at(1)->menu();
    const auto press = [this](Qt::Key key) { QTest::keyClick(Window->windowHandle(), key); };
    for (const Qt::Key opener : {Qt::Key_F10, Qt::Key_Alt}) {
        press(opener);
        press(Qt::Key_Down);
        ASSERT_EQ(QApplication::activePopupWidget(), file);
        EXPECT_EQ(file->activeAction(), file->actions().constFirst());
        press(Qt::Key_Right);
        ASSERT_EQ(QApplication::activePopupWidget(), help);
        press(Qt::Key_Escape);
        press(Qt::Key_Escape);
        EXPECT_EQ(QApplication::focusWidget(), Characters);
    }
    const auto openByLetter = [&] {
        press(Qt::Key_F10);
        press(Qt::Key_O);
    };
    WithBox(openByLetter, [](QWidget* dialog) {
        EXPECT_EQ(dialog->windowTitle(), "Load Data File...");
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
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

TEST_F(Skin, OpensEachFileDialogWhereItWasLastUsed) {
    const TemporaryFolder home;
    const std::string folders = "abcd";
    for (const char folder : folders) {
        std::filesystem::create_directory(home.Path / std::string(1, folder));
        (void)home.Write(std::string(1, folder) + "/file.html", "");
    }
    // An entry of the File menu, the folder that its dialog shows ('-': any), the one to go to.
    for (const auto& [entry, before, after] : {std::tuple(2, '-', 'a'),
                                               {7, '-', 'b'},
                                               {5, '-', 'c'},
                                               {3, 'a', 'd'},
                                               {2, 'd', 'd'},
                                               {7, 'b', 'b'},
                                               {5, 'c', 'c'}}) {
        Tallies->Ledger.DataChanged = 0;
        const auto place = [&home, after = after](const char* file) {
            return QString::fromStdString((home.Path / std::string(1, after) / file).string());
        };
        WithBox(
            [&, entry = entry] { Entry(0, entry)->trigger(); },
            [&, entry = entry, before = before](QWidget* box) {
                auto* const dialog = static_cast<QFileDialog*>(box);
                if (before != '-') {
                    EXPECT_EQ(dialog->directory().dirName(), QString(before));
                }
                EXPECT_EQ(dialog->nameFilters(),
                          QStringList(entry > 3 ? "Marrowquill Kill Files (*\u200B.qvt) (*?.qvt)"
                                                : "HTML File (*\u200B.html) (*?.htm*)"));
                QTest::qWait(100); // the list of files comes late
                auto* const name = dialog->findChild<QLineEdit*>("fileNameEdit");
                name->setText(place(entry != 7 ? "file.html" : before == '-' ? "new" : "newer"));
                QTest::keyClick(name, Qt::Key_Return);
            });
    }
}

TEST_F(Skin, SortsAtTheHeaderByMouseAndKeysWithTheArrowToTell) {
    FillLists();
    QHeaderView* const header = Characters->header();
    EXPECT_FALSE(header->isSortIndicatorShown());
    const auto click = [&](int column) {
        const QPoint place(header->sectionPosition(column) + 10, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    };
    const auto press = [&](Qt::Key column) {
        QTest::keyClick(Characters, column);
        QTest::keyClick(Characters, Qt::Key_Return);
    };
    const std::function<void()> ways[] = {[&] { click(1); }, [&] { press(Qt::Key_Right); },
                                          [&] { press(Qt::Key_Left); }, [&] { click(0); }};
    for (int way = 0; way < 4; ++way) {
        ways[way]();
        QCoreApplication::processEvents();
        const bool down = way % 2 == 1;
        EXPECT_EQ(Rows(Characters).constFirst(), down ? "Bela 8" : "Aron 7") << way;
        EXPECT_TRUE(header->isSortIndicatorShown());
        EXPECT_EQ(header->sortIndicatorSection(), way < 2 ? 1 : 0);
        EXPECT_EQ(header->sortIndicatorOrder(), down ? Qt::DescendingOrder : Qt::AscendingOrder);
        EXPECT_EQ(Characters->currentIndex().data().toString(), "Aron");
        EXPECT_TRUE(Characters->viewport()->updatesEnabled());
    }
    Tallies->Ledger.CharacterNames[99] = "aron";
    Main::FillCharacterList(Tallies->Ledger, Tallies->MainWindow, Tallies->Services);
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Characters), QStringList({"Bela 8", "Aron 7", "aron 0"})) << "sorted as before";
}

// The release of a key that was pressed elsewhere, in a box that it closed, is none of a list's.
TEST_F(Skin, DeletesBehindAKeyOfItsOwnAndAYes) {
    FillLists();
    ClickRow(Characters, 1);
    QTest::keyRelease(Characters, Qt::Key_Delete);
    for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_N, Qt::Key_Y}) {
        EXPECT_EQ(Rows(Characters), (QStringList{"Aron 7", "Bela 8"}));
        WithBox([&] { QTest::keyClick(Characters, Qt::Key_Delete); },
                [&](QWidget* box) { QTest::keyClick(box, answer); });
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(Rows(Characters), QStringList("Aron 7"));
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

TEST_F(Skin, ShowsItsOwnPictureForAFileThatIsNone) {
    const TemporaryFolder folder;
    const auto* const label = Tallies->AboutRenderer.Window()->findChildren<QLabel*>().constFirst();
    const auto show = [&](std::string_view bytes) {
        const auto file = folder.Write("picture.gif", bytes);
        Tallies->AboutWindow.Picture1.Picture = Tallies->Services.LoadPicture(file);
        return label->pixmap().toImage();
    };
    const QImage own = show(frmAbout::OwnPicture());
    EXPECT_EQ(own.size(), QSize(400, 300));
    for (const std::string& none :
         {std::string(), std::string("no picture"), frmAbout::OwnPicture().substr(0, 8)}) {
        const std::string_view dot(
            "GIF89a\1\0\1\0\x80\0\0\xFF\xFF\xFF\0\0\0,\0\0\0\0\1\0\1\0\0\2\2D"
            "\1\0;",
            35);
        EXPECT_EQ(show(dot).size(), QSize(1, 1));
        EXPECT_EQ(show(none), own);
    }
}

TEST_F(Skin, ClosesTheAboutWindowAtAClickAndOpensItAgain) {
    for (const int child : {0, 2, 4}) {
        QWidget* const about = Tallies->AboutRenderer.Window();
        ASSERT_NE(about, nullptr);
        const auto parts = about->findChildren<QFrame*>();
        EXPECT_FALSE(about->findChildren<QLabel*>().constFirst()->pixmap().isNull());
        if (child == 2) {
            QTest::keyClick(about, Qt::Key_Escape);
        } else {
            QTest::mouseClick(parts.at(child), Qt::LeftButton);
        }
        EXPECT_EQ(Tallies->AboutRenderer.Window(), nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Entry(1, 0)->trigger();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Tallies->AboutRenderer.Window()));
    }
    Entry(0, 8)->trigger();
    EXPECT_EQ(Tallies->MainRenderer.Window(), nullptr);
    EXPECT_EQ(Tallies->AboutRenderer.Window(), nullptr);
}

} // namespace

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    const TemporaryFolder home;
    for (const char* folder : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"}) {
        qputenv(folder, home.Path.string().c_str());
    }
    const TemporaryFolder forSockets;
    std::filesystem::permissions(forSockets.Path, std::filesystem::perms::owner_all);
    qputenv("XDG_RUNTIME_DIR", forSockets.Path.string().c_str());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // which only a player can answer
    const QApplication application(argc, argv);
    const int result = RUN_ALL_TESTS();
    if (!std::filesystem::is_empty(home.Path)) {
        std::puts("A run leaves something behind in the player's home");
        return 1;
    }
    return result;
}
