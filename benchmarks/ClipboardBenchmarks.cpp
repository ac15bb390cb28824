#include "Input.h"
#include "Rows.h"

#include <algorithm>
#include <cstring>
#include <malloc.h>
#include <memory>

namespace {

using Bench::Pair;
using Bench::Require;
using Bench::Seconds;

// Gives memory that is free but held back to the system, so that a text of many megabytes costs
// its pages each time, as in a process that builds it once, and not only when the runs before
// happened to leave none.
void ForgetFreeMemory() {
    ::malloc_trim(0);
}

// A ledger whose report goes to a clipboard that only looks at it.
class Reported {
public:
    explicit Reported(std::unique_ptr<KillLedger> ledger) : Body(Input::ReportBody(*ledger)) {
        *Scene.Store = std::move(*ledger);
        Scene.OnClipboard = [this](std::string_view text) {
            LookSeconds = Seconds([&] { Right = text.ends_with(Body); });
            Length = text.size();
        };
    }

    // Seconds of the command, without what the look at its result took.
    double Send() {
        Right = false;
        ForgetFreeMemory();
        const double seconds = Seconds([&] { Scene.Window.cmdClipboard.Click(); });
        Require(Right && Length - Body.size() < 200, "clipboard report");
        return seconds - LookSeconds;
    }

    double SendPerLine() { return Send() / static_cast<double>(Lines); }

    const std::string Body; // all lines behind the heading
    const std::ptrdiff_t Lines = std::count(Body.begin(), Body.end(), '\n');

private:
    Input::Stage Scene;
    double LookSeconds = 0;
    std::size_t Length = 0;
    bool Right = false;
};

// Copies a text line by line, into room set aside for it, over the copy before: the box on the
// window lets go of its old text too.
double CopyLines(const std::string& text, std::ptrdiff_t lines, std::string& box) {
    std::ptrdiff_t copied = 0;
    ForgetFreeMemory();
    const double seconds = Seconds([&] {
        std::string copy;
        copy.reserve(text.size());
        const char* line = text.data();
        const char* const end = line + text.size();
        while (line != end) {
            const void* const feed = std::memchr(line, '\n', static_cast<std::size_t>(end - line));
            const char* const next = static_cast<const char*>(feed) + 1;
            copy.append(line, next);
            line = next;
            ++copied;
        }
        box = std::move(copy);
    });
    Require(copied == lines && box == text, "copied lines");
    return seconds;
}

} // namespace

void Bench::AddClipboardRows() {
    Add({"Clipboard report, 99 x 9,999 cells", Rule::Ratio, 2, 25, [] {
             const auto full = std::make_shared<Reported>(Input::FullLedger());
             const auto box = std::make_shared<std::string>();
             return Pair{[full] { return full->Send(); },
                         [full, box] { return CopyLines(full->Body, full->Lines, *box); }};
         }});
    Add({"Its line, to that of half as many", Rule::Ratio, 1.3, 25, [] {
             const auto full = std::make_shared<Reported>(Input::FullLedger());
             const auto half = std::make_shared<Reported>(Input::FullLedger(2));
             return Pair{[full] { return full->SendPerLine(); },
                         [half] { return half->SendPerLine(); }};
         }});
}
