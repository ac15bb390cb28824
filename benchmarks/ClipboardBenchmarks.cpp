#include "Bare.h"
#include "Compare.h"
#include "Input.h"
#include "ui/ClipboardReport.h"

#include <algorithm>
#include <malloc.h>

namespace {

// Times a work on many megabytes. Free memory is returned to the system first, so that they cost
// their pages each time, as in a process that makes them once.
template <class Timed>
Bench::Work TimingInNewMemory(Timed work) {
    return Bench::Timing(work, [] { ::malloc_trim(0); });
}

// A full ledger whose report goes to a clipboard that takes no notice of it.
class Reporter {
public:
    explicit Reporter(int step) : Ledger(Input::FullLedger(step)) { Send(); }

    void Send() { Main::SendStatsToClipboard(*Ledger, Window, Clipboard); }
    const std::string& Text() const { return Window.txtClipboard.Text; }
    auto Lines() const { return std::count(Text().begin(), Text().end(), '\n'); }

private:
    std::unique_ptr<KillLedger> Ledger;
    Slaying_Tallies Window;
    Desktop Clipboard{.ClipboardClear = [] {}, .ClipboardSetText = [](std::string_view) {}};
};

// The floor copies the report line by line into memory set aside for it, then over the copy
// before: the box on the window lets go of its old text too.
void Report(benchmark::State& state) {
    Reporter full(1);
    const std::string text = full.Text();
    std::string box;
    Bench::Compare(state, 2, TimingInNewMemory([&] { full.Send(); }), TimingInNewMemory([&] {
                       std::string copy;
                       copy.reserve(text.size());
                       Bare::ForEachLine(text, [&](std::string_view line) { copy += line; });
                       box = std::move(copy);
                   }));
    Bench::Require(full.Lines() > MaxCharacters * MaxMonsters, "lines of the report");
    Bench::Require(box == text && full.Text() == text, "the report");
}

// A line of the full report, to a line of the report of half as many monsters.
void ReportLine(benchmark::State& state) {
    Reporter full(1);
    Reporter half(2);
    const auto times = static_cast<double>(full.Lines()) / static_cast<double>(half.Lines());
    Bench::Compare(state, 1.3 * times, TimingInNewMemory([&] { full.Send(); }),
                   TimingInNewMemory([&] { half.Send(); }));
}

BENCHMARK(Report)->Name("Clipboard report, 99 x 9,999 cells");
BENCHMARK(ReportLine)->Name("The same, to half as many lines");

} // namespace
