#include "Input.h"
#include "Program.h"
#include "Rows.h"
#include "ui/ListViews.h"

#include "skin/ListWidget.h"

#include <QApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QTreeWidget>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

namespace {

using Bench::Pair;
using Bench::Require;
using Bench::Seconds;

// Up from the first row that needs it to the end of main.
void StartToolkit() {
    static int count = 1;
    static char name[] = "benchmarks";
    static char* arguments[] = {name, nullptr};
    if (QCoreApplication::instance() == nullptr) {
        new QApplication(count, arguments);
    }
}

template <class Done>
void Wait(Done done, const char* what) {
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + 10s;
    while (!done()) {
        QCoreApplication::processEvents();
        Require(steady_clock::now() < deadline, what);
    }
}

// What a tree showed at each of its paintings.
class Paintings : public QObject {
public:
    struct Painting {
        int Rows;
        QString TopKills;
    };

    explicit Paintings(const QTreeView* watched) : Watched(watched) {
        watched->viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            Seen.push_back({Watched->model()->rowCount(), Kills(0)});
        }
        return false;
    }

    // Forgets what was painted so far, what still waits to be painted included.
    void Restart() {
        QCoreApplication::processEvents();
        Seen.clear();
    }

    void Await() const {
        Wait([this] { return !Seen.empty(); }, "a painting");
    }

    // Whether it was painted, and never showed anything but so many rows and this on top.
    bool ShowedOnly(int rows, const QString& topKills) const {
        return !Seen.empty() &&
               std::all_of(Seen.begin(), Seen.end(), [&](const Painting& painting) {
                   return painting.Rows == rows && painting.TopKills == topKills;
               });
    }

    QString Kills(int row) const { return Watched->model()->index(row, 1).data().toString(); }

    std::vector<Painting> Seen;

private:
    const QTreeView* Watched;
};

QString KillsText(std::int32_t kills) {
    return ' ' + QString::number(kills);
}

// The running program with its main window on the screen and a full ledger.
struct Shown {
    Shown() {
        StartToolkit();
        Tallies = std::make_unique<Program>();
        Tallies->MainWindow.Window.Show();
        Tallies->AboutWindow.Window.Unload();
        Wait([this] { return Window()->windowHandle()->isExposed(); }, "the main window");
        const auto lists = Window()->findChildren<ListWidget*>();
        Characters = lists.at(0);
        Monsters = lists.at(1);
        Tallies->Ledger = std::move(*Input::FullLedger());
    }

    QMainWindow* Window() const { return Tallies->MainRenderer.Window(); }

    std::unique_ptr<Program> Tallies;
    ListWidget* Characters = nullptr;
    ListWidget* Monsters = nullptr;
    int Character = 1; // whose monsters show
};

// A tree of items in a window like the program's, as large as its list and with the same columns.
struct ItemTree {
    explicit ItemTree(const Shown& shown) : Tree(&Window) {
        Window.setFixedSize(shown.Window()->size());
        Tree.setGeometry(shown.Monsters->geometry());
        Tree.setFont(shown.Monsters->font());
        Tree.setHeaderLabels({"Monster Name", "Kills"});
        Tree.setRootIsDecorated(false);
        Tree.setUniformRowHeights(true);
        Tree.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        Tree.header()->setStretchLastSection(false);
        for (const int column : {0, 1}) {
            Tree.header()->resizeSection(column, shown.Monsters->header()->sectionSize(column));
        }
        Window.show();
        Wait([this] { return Window.windowHandle()->isExposed(); }, "the window of items");
    }

    void Refill(const KillLedger& ledger, int character) {
        Tree.clear();
        QList<QTreeWidgetItem*> rows;
        rows.reserve(MaxMonsters);
        for (int m = 1; m <= MaxMonsters; ++m) {
            rows.push_back(new QTreeWidgetItem({QString::fromStdString(ledger.MonsterNames[m]),
                                                KillsText(ledger.KillTable(character, m))}));
            rows.back()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        }
        Tree.addTopLevelItems(rows);
        Tree.setCurrentItem(rows.front());
    }

    QWidget Window;
    QTreeWidget Tree;
};

// Seconds until a tree has painted the rows that `refill` gives it.
template <class Refill>
double SecondsToPainting(const QTreeView* tree, Refill refill, std::int32_t topKills) {
    Paintings paintings(tree);
    paintings.Restart();
    const double seconds = Seconds([&] {
        refill();
        paintings.Await();
    });
    Require(paintings.ShowedOnly(MaxMonsters, KillsText(topKills)), "rows of the list");
    return seconds;
}

Pair MonsterRefill() {
    const auto shown = std::make_shared<Shown>();
    const auto items = std::make_shared<ItemTree>(*shown);
    return {[shown] {
                Program& tallies = *shown->Tallies;
                shown->Character = shown->Character % MaxCharacters + 1;
                return SecondsToPainting(
                    shown->Monsters,
                    [&] {
                        Main::FillMonsterList(tallies.Ledger, tallies.MainWindow, shown->Character);
                    },
                    tallies.Ledger.KillTable(shown->Character, 1));
            },
            [shown, items] {
                const KillLedger& ledger = shown->Tallies->Ledger;
                return SecondsToPainting(
                    &items->Tree, [&] { items->Refill(ledger, shown->Character); },
                    ledger.KillTable(shown->Character, 1));
            }};
}

// Seconds of what `change` does to lstCharacters until its widget holds the new rows. They must
// stand in the order of their numbers, and no painting may have shown anything else.
template <class Change>
double SecondsOfSort(const Shown& shown, Change change) {
    Paintings paintings(shown.Characters);
    paintings.Restart();
    const double seconds = Seconds([&] {
        change();
        shown.Characters->Sync();
    });
    paintings.Await();
    QCoreApplication::processEvents();
    const bool ascending = shown.Tallies->MainWindow.lstCharacters.SortOrder == 0;
    for (int row = 1; row < MaxCharacters; ++row) {
        const int above = paintings.Kills(row - 1).toInt();
        const int below = paintings.Kills(row).toInt();
        Require(ascending ? above <= below : above >= below, "order of the characters");
    }
    Require(paintings.ShowedOnly(MaxCharacters, paintings.Kills(0)), "a flash");
    return seconds;
}

std::shared_ptr<Shown> ShownCharacters() {
    auto shown = std::make_shared<Shown>();
    Program& tallies = *shown->Tallies;
    for (int m = 1; m <= MaxMonsters; ++m) {
        tallies.Ledger.KillTable(1, m) = 0; // so that the refill is that of this list alone
    }
    Main::FillCharacterList(tallies.Ledger, tallies.MainWindow, tallies.Services);
    return shown;
}

void SortByKills(const Shown& shown) {
    shown.Tallies->MainWindow.lstCharacters.RaiseColumnClick(2);
}

Pair NumberSort() {
    const auto shown = ShownCharacters();
    return {[shown] { return SecondsOfSort(*shown, [&] { SortByKills(*shown); }); }, {}};
}

Pair CharacterRefill() {
    const auto shown = ShownCharacters();
    SortByKills(*shown);
    return {[shown] {
                Program& tallies = *shown->Tallies;
                return SecondsOfSort(*shown, [&] {
                    Main::FillCharacterList(tallies.Ledger, tallies.MainWindow, tallies.Services);
                });
            },
            {}};
}

} // namespace

void Bench::AddWidgetRows() {
    constexpr double millisecond = 1e-3;
    Add({"Refill of lstMonsters, painted", Rule::Ratio, 0.2, 41, MonsterRefill});
    Add({"Number sort of 99 rows", Rule::Limit, millisecond, 101, NumberSort});
    Add({"Refill of lstCharacters, sorted", Rule::Limit, millisecond, 101, CharacterRefill});
}
