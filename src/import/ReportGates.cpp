#include "import/ReportGates.h"

#include "controls/Desktop.h"
#include "fingerprint/TurnLedger.h"
#include "fingerprint/modHashing.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace Main {
namespace {

double Limit(const TextBox& box) {
    const double turn = Numbers::Read(box.Text.Get());
    return turn > 0 ? turn : 0;
}

// Stores and shows `number` if the field is not set. Otherwise returns whether the two are equal.
bool SetOrMatches(std::int16_t& field, TextBox& box, double number) {
    if (field != 0) {
        return field == number;
    }
    field = Numbers::RoundInto<std::int16_t>(number);
    box.Text = Numbers::PlainDigits(field);
    box.Refresh();
    return true;
}

int FreeTurnSlot(const KillLedger& ledger) {
    for (int i = 1; i <= MaxTurns; ++i) {
        if (ledger.TurnHashes[i].empty() && ledger.TurnFileLengths[i] == 0) {
            return i;
        }
    }
    return 0;
}

} // namespace

TurnFilter ReadTurnFilter(const Slaying_Tallies& window) {
    return {Limit(window.txtTurnStart), Limit(window.txtTurnEnd)};
}

void PartyGate(Scan& scan, KillLedger& ledger, Slaying_Tallies& window, std::string_view line) {
    const double party = Numbers::Read(Text::Field(line, 8, 4));
    const double game = Numbers::Read(Text::Field(line, 23, 2));
    if (!SetOrMatches(ledger.GameNumber, window.txtGame, game)) {
        scan.ReportRefused = true;
    }
    if (!scan.ReportRefused && !SetOrMatches(ledger.PartyNumber, window.txtParty, party)) {
        scan.ReportRefused = true;
    }
}

void TurnGate(Scan& scan, KillLedger& ledger, const Desktop& desktop, std::string_view line) {
    scan.TurnNumber = Numbers::Read(Text::Field(line, 8, 4));
    const auto [firstTurn, lastTurn] = scan.Filter;
    if ((firstTurn > 0 && scan.TurnNumber < firstTurn) ||
        (lastTurn > 0 && scan.TurnNumber > lastTurn)) {
        scan.ReportRefused = true;
    }
    if (scan.ReportRefused) {
        return;
    }
    const std::int32_t size = scan.MainReader.Size();
    const std::string fingerprint = modHashing::HashFile(desktop, scan.Report, size);
    if (FindTurnRecord(ledger, size, fingerprint) != 0) {
        scan.ReportRefused = true;
        return;
    }
    const int slot = FreeTurnSlot(ledger);
    if (slot == 0) {
        desktop.ShowMessage({"Error importing turn - already hit a 9999 turn import limit? 9999 "
                             "turns hashed and stored?"});
        scan.ReportRefused = true;
        return;
    }
    ledger.TurnFileLengths[slot] = size;
    ledger.TurnHashes[slot] = fingerprint;
}

} // namespace Main
