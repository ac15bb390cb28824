#include "Input.h"
#include "Reports.h"
#include "Rows.h"
#include "Screen.h"
#include "platform/Desktop.h"

#include <chrono>
#include <memory>
#include <optional>
#include <thread>

namespace {

using Bench::Pair;
using Bench::Require;

constexpr const char* BareTitle = "Bare window"; // of BareWindow.cpp

// MiB. What an import has to remember of each report, its fingerprint in the ledger and for the
// time of the batch its path, is less than half a KiB: 0.9 MiB for 1,800 reports more. A single
// line of each report that stayed behind would be over this.
constexpr double GrowthTolerance = 1;
constexpr double MemoryTarget = 16; // MiB

void WaitUntilPainted(const Screen& screen, const std::string& title) {
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + 30s;
    while (!screen.IsPainted(title)) {
        Require(steady_clock::now() < deadline, "a painted window");
        std::this_thread::sleep_for(200us);
    }
}

// Seconds from the start of the process until its window is seen painted.
double StartSeconds(const Screen& screen, const char* program, const std::string& title) {
    std::optional<Process> process;
    const double seconds = Bench::Seconds([&] {
        process.emplace(program);
        WaitUntilPainted(screen, title);
    });
    process.reset();
    while (screen.IsPainted(title)) { // the display may be behind
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return seconds;
}

Pair Start() {
    const auto screen = std::make_shared<Screen>();
    return {[=] { return StartSeconds(*screen, PROGRAM, std::string(ApplicationTitle)); },
            [=] { return StartSeconds(*screen, BARE_WINDOW, BareTitle); }};
}

// Peak of a started program, all of its windows painted.
double PeakAfterStart(const char* program, const std::string& title) {
    const Screen screen;
    const Process process(program);
    WaitUntilPainted(screen, title);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    return process.PeakMebibytes();
}

double BarePeak() {
    return PeakAfterStart(BARE_WINDOW, BareTitle);
}

// Peak of the program behind an import of that many reports of its own folder.
std::function<double()> PeakAfterBatch(int reports) {
    constexpr std::size_t reportSize = 40'000;
    const auto folder = std::make_shared<Input::Folder>();
    const Reports::Batch batch(folder->Path, reports, reportSize, 300);
    return [folder, reports, report = batch.Files.front().string()] {
        const Process process(BATCH_IMPORT, report);
        Require(process.ReadLine() == std::to_string(reports), "imported reports");
        return process.PeakMebibytes();
    };
}

} // namespace

void Bench::AddProcessRows() {
    Add({"Start to the painted window", Rule::Ratio, 1.4, 31, Start});
    Add({"Memory after start", Rule::Growth, MemoryTarget, 7, [] {
             return Pair{[] { return PeakAfterStart(PROGRAM, std::string(ApplicationTitle)); },
                         BarePeak};
         }});
    Add({"Memory after 2,000 reports", Rule::Growth, MemoryTarget, 7, [] {
             return Pair{PeakAfterBatch(Sized(2'000, 40)), BarePeak};
         }});
    Add({"Memory, 2,000 against 200 reports", Rule::Growth, GrowthTolerance, 7, [] {
             return Pair{PeakAfterBatch(Sized(2'000, 40)), PeakAfterBatch(Sized(200, 20))};
         }});
}
