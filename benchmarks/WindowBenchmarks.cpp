#include "Bench.h"
#include "Input.h"
#include "PlainWindows.h"
#include "skin/ListWidget.h"
#include "ui/ListViews.h"

#include <set>

namespace {

using Bench::Compare;
using Bench::Require;
using Bench::Timing;

// Waits for the painting of widgets, from its making on.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(const std::set<QObject*>& widgets) : Unpainted(widgets) {
        for (QObject* const widget : widgets) {
            widget->installEventFilter(this);
        }
    }

    void Await() const {
        while (!Unpainted.empty()) {
            QApplication::processEvents();
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            Unpainted.erase(watched);
        }
        return false;
    }

private:
    std::set<QObject*> Unpainted;
};

// From nothing to the end of the first painting of the windows. The floor has a ledger too.
void Start(benchmark::State& state) {
    std::unique_ptr<Program> own;
    std::unique_ptr<KillLedger> ledger;
    std::unique_ptr<PlainWindows> plain;
    const auto prepare = [&] {
        own.reset();
        ledger.reset();
        plain.reset();
        QPixmapCache::clear(); // the toolkit would keep the picture of the last time
        QApplication::processEvents();
    };
    const auto startOwn = [&] {
        own = std::make_unique<Program>();
        own->MainWindow.Window.Show();
        PaintWatch({own->MainRenderer.Window(), own->AboutRenderer.Window()}).Await();
    };
    const auto startPlain = [&] {
        ledger = std::make_unique<KillLedger>();
        plain = std::make_unique<PlainWindows>();
        PaintWatch({&plain->Main, &plain->About}).Await();
    };
    Compare(state, 1.1, Timing(startOwn, prepare), Timing(startPlain, prepare));
}

ListWidget* ShownList(const Program& tallies, int number) {
    auto* const list = tallies.MainRenderer.Window()->findChildren<QTreeView*>().at(number);
    return static_cast<ListWidget*>(list);
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
        PaintWatch({list->viewport()}).Await();
        Require(list->model()->rowCount() == MaxMonsters, "rows");
    };
    const auto refillPlain = [&] {
        plain.Monsters->clear();
        QList<QTreeWidgetItem*> items;
        items.reserve(MaxMonsters);
        for (int m = 1; m <= MaxMonsters; ++m) {
            const QString kills = ' ' + QString::number(ledger.KillTable(character, m));
            items += new QTreeWidgetItem({QString::fromStdString(ledger.MonsterNames[m]), kills});
            items.back()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        }
        plain.Monsters->addTopLevelItems(items);
        plain.Monsters->setCurrentItem(items.front());
        PaintWatch({plain.Monsters->viewport()}).Await();
    };
    Compare(state, 0.2, Timing(refillOwn, next), Timing(refillPlain, next));
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
    Compare(state, 1, Timing(change, [] { QApplication::processEvents(); }));
    const QString top = list->model()->index(0, 1).data().toString();
    Require(top.toStdString() == characters.Item(1).ListSubItems[0].Text, "the first row");
}

BENCHMARK(MonsterRefill)->Name("Refill of lstMonsters, painted");
BENCHMARK_CAPTURE(CharacterSort, sort, false)->Name("Number sort of 99 rows");
BENCHMARK_CAPTURE(CharacterSort, refill, true)->Name("Refill of lstCharacters, sorted");
BENCHMARK(Start)->Name("Start to the first painting");

} // namespace
