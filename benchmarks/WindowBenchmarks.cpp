#include "Compare.h"
#include "Input.h"
#include "PlainWindows.h"
#include "app/Events.h"
#include "skin/DesktopServices.h"
#include "skin/ListWidget.h"
#include "ui/ListViews.h"

#include <QApplication>
#include <QPixmapCache>

#include <algorithm>
#include <set>

namespace {

using Bench::Require;

// Notes which widgets were painted.
class PaintWatch : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            Painted.insert(watched);
        }
        return false;
    }

    std::set<QObject*> Painted;
};

// Handles events until each of the widgets was painted.
void AwaitPainting(const std::set<QWidget*>& widgets) {
    PaintWatch watch;
    for (QWidget* const widget : widgets) {
        widget->installEventFilter(&watch);
    }
    while (watch.Painted.size() < widgets.size()) {
        QApplication::processEvents();
    }
}

// The program's windows alone: the ledger is made before.
struct OwnWindows {
    OwnWindows(KillLedger& ledger, const Desktop& desktop) {
        Main::WireEvents(ledger, MainForm, AboutForm, desktop);
        MainForm.Window.Show();
    }

    Slaying_Tallies MainForm;
    frmAbout AboutForm;
    FormRenderer Main{MainForm.Window};
    FormRenderer About{AboutForm.Window};
};

// From the making of the windows to the end of their first painting.
void Start(benchmark::State& state) {
    const auto ledger = std::make_unique<KillLedger>();
    const Desktop desktop = RealDesktop();
    std::unique_ptr<OwnWindows> own;
    std::unique_ptr<PlainWindows> plain;
    const auto startOwn = [&] {
        own = std::make_unique<OwnWindows>(*ledger, desktop);
        AwaitPainting({own->Main.Window(), own->About.Window()});
    };
    const auto startPlain = [&] {
        plain = std::make_unique<PlainWindows>();
        AwaitPainting({&plain->Main, &plain->About});
    };
    const auto close = [&] {
        own.reset();
        plain.reset();
        QPixmapCache::clear(); // the toolkit would keep the picture of the last time
        QApplication::processEvents();
    };
    Bench::Compare(state, 1.1, Bench::Timing(startOwn, close), Bench::Timing(startPlain, close));
}

void RefillItems(QTreeWidget* list, const KillLedger& ledger, int character) {
    list->clear();
    QList<QTreeWidgetItem*> rows;
    rows.reserve(MaxMonsters);
    for (int m = 1; m <= MaxMonsters; ++m) {
        const std::int32_t kills = ledger.KillTable(character, m);
        rows.push_back(new QTreeWidgetItem(
            {QString::fromStdString(ledger.MonsterNames[m]), ' ' + QString::number(kills)}));
        rows.back()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    }
    list->addTopLevelItems(rows);
    list->setCurrentItem(rows.front());
}

ListWidget* ShownList(const Program& tallies, int number) {
    return tallies.MainRenderer.Window()->findChildren<ListWidget*>().at(number);
}

// Whether a list has so many rows and these kills in the first one.
bool Holds(const QTreeView* list, int rows, std::int32_t kills) {
    const QAbstractItemModel* const model = list->model();
    return model->rowCount() == rows && model->index(0, 1).data().toInt() == kills;
}

// The monsters of another character each time, until they are painted.
void MonsterRefill(benchmark::State& state) {
    const auto tallies = Input::StartedProgram();
    const PlainWindows plain;
    KillLedger& ledger = tallies->Ledger;
    ledger = *Input::FullLedger();
    const auto* const list = ShownList(*tallies, 1);
    int character = 0;
    const auto next = [&] {
        QApplication::processEvents();
        character = character % MaxCharacters + 1;
    };
    const auto refillOwn = [&] {
        Main::FillMonsterList(ledger, tallies->MainWindow, character);
        AwaitPainting({list->viewport()});
        Require(Holds(list, MaxMonsters, ledger.KillTable(character, 1)), "rows");
    };
    const auto refillPlain = [&] {
        RefillItems(plain.Monsters, ledger, character);
        AwaitPainting({plain.Monsters->viewport()});
        Require(Holds(plain.Monsters, MaxMonsters, ledger.KillTable(character, 1)), "items");
    };
    Bench::Compare(state, 0.2, Bench::Timing(refillOwn, next), Bench::Timing(refillPlain, next));
}

// A change to the list of 99 characters until its widget has the new rows: their order by kills is
// turned round or, with `refill`, made again. The list of monsters beside it has no rows.
void CharacterSort(benchmark::State& state, bool refill) {
    const auto tallies = Input::StartedProgram();
    KillLedger& ledger = tallies->Ledger;
    ListView& characters = tallies->MainWindow.lstCharacters;
    ListWidget* const list = ShownList(*tallies, 0);
    ledger = *Input::FullLedger();
    for (int m = 1; m <= MaxMonsters; ++m) {
        ledger.KillTable(1, m) = 0;
    }
    const auto fill = [&] {
        Main::FillCharacterList(ledger, tallies->MainWindow, tallies->Services);
    };
    fill();
    characters.RaiseColumnClick(2);
    const auto change = [&] {
        if (refill) {
            fill();
        } else {
            characters.RaiseColumnClick(2);
        }
        list->Sync();
    };
    Bench::Compare(state, 1, Bench::Timing(change, [] { QApplication::processEvents(); }));
    std::vector<std::int32_t> kills;
    for (int c = 1; c <= MaxCharacters; ++c) {
        kills.push_back(ledger.CharacterKills[c]);
    }
    const auto [least, most] = std::minmax_element(kills.begin(), kills.end());
    Require(Holds(list, MaxCharacters, characters.SortOrder == 0 ? *least : *most), "order");
}

BENCHMARK(MonsterRefill)->Name("Refill of lstMonsters, painted");
BENCHMARK_CAPTURE(CharacterSort, sort, false)->Name("Number sort of 99 rows");
BENCHMARK_CAPTURE(CharacterSort, refill, true)->Name("Refill of lstCharacters, sorted");
BENCHMARK(Start)->Name("Start to the first painting");

} // namespace
