#include "import/TurnScanner.h"

#include "controls/Desktop.h"
#include "import/KillSentence.h"
#include "import/ReportGates.h"
#include "text/Numbers.h"
#include "text/Text.h"

#include <algorithm>
#include <array>

namespace Main {
namespace {

using std::string_view;

constexpr std::array<string_view, 14> ApproachPhrases = {
    "As they got nearer",    "As we got nearer",   "As they got closer",    "As we got closer",
    "As they approached",    "As we approached",   "As they drew closer",   "As we drew closer",
    "When they got nearer",  "When we got nearer", "When they drew nearer", "When we drew nearer",
    "When they drew closer", "When we drew closer"};

// Spelled as in the reports.
constexpr auto StopPhrases = std::to_array<string_view>({
    "While moving through here",
    "In this location, we spotted something",
    "In this location, we found somthing",
    "In this location, we discovered something",
    "During our journey",
    "In this location we came across",
    "It looks like we'll have to make our own way there.",
});

constexpr string_view Killing = "killing";
constexpr string_view Colon = ":";
constexpr int MaxLookAheads = 25; // without a message

template <class Phrases>
bool ContainsAny(string_view line, const Phrases& phrases) {
    return std::any_of(phrases.begin(), phrases.end(),
                       [line](string_view phrase) { return Text::Contains(line, phrase); });
}

// A kill sentence goes on up to a line that is blank or contains ":", "killing" or a stop phrase.
bool IsContinuation(string_view line) {
    return !Text::Contains(line, Colon) && !Text::Contains(line, Killing) &&
           !Text::Trim(line).empty() && !ContainsAny(line, StopPhrases);
}

// Joins the current line and the continuation lines after it. The line that ends the sentence stays
// unread, so the line loop tests it like any other.
void GatherSentence(Scan& scan, const Desktop& desktop) {
    scan.Sentence = scan.CurrentLine;
    int GatherCount = 0;
    bool GatherDone = false;
    while (!GatherDone) {
        ++GatherCount;
        if (IsContinuation(scan.MainReader.PeekLine())) {
            const string_view NextLine = scan.MainReader.ReadLine();
            if (!scan.Sentence.ends_with(' ') && !NextLine.starts_with(' ')) {
                scan.Sentence += ' ';
            }
            scan.Sentence += NextLine;
            if (scan.Sentence.size() > ByteWindow::LongestPiece) {
                throw Failure("a sentence is too long");
            }
        } else {
            GatherDone = true;
        }
        if (GatherCount > MaxLookAheads) {
            desktop.ShowMessage({"Error with too many kill lines on turn # " +
                                 Numbers::PlainDigits(scan.TurnNumber) + "?"});
            GatherDone = true;
        }
    }
}

void ScanLine(Scan& scan, KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop) {
    scan.CurrentLine = scan.MainReader.ReadLine();
    if (scan.ReportRefused) {
        return;
    }
    const string_view line = scan.CurrentLine;
    if (Text::Contains(line, "crowd")) {
        scan.CrowdFlag = true;
    }
    if (scan.CrowdFlag && ContainsAny(line, ApproachPhrases)) { // few lines need the phrases
        scan.CrowdFlag = false;
    }
    const string_view trimmed = Text::Trim(line);
    if (trimmed.starts_with("Party#")) {
        PartyGate(scan, ledger, window, trimmed);
    }
    if (trimmed.starts_with("Turn# ")) {
        TurnGate(scan, ledger, desktop, trimmed);
    }
    const std::size_t ColonPosition = Text::Position(line, Colon);
    const std::size_t KillPosition = ColonPosition == 0 ? 0 : Text::Position(line, Killing);
    if (KillPosition != 0) {
        GatherSentence(scan, desktop);
        ParseKillSentence(ledger, desktop, scan.Sentence, KillPosition, ColonPosition,
                          scan.CrowdFlag, scan.TurnNumber);
    }
}

} // namespace

void ProcessTurn(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop,
                 const std::filesystem::path& report) {
    ledger.DataChanged = 1;
    Scan scan(report, ReadTurnFilter(window));
    while (!scan.MainReader.AtEnd()) {
        ScanLine(scan, ledger, window, desktop);
    }
}

} // namespace Main
