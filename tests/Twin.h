#pragma once

#include "Tables.h"
#include "import/TurnScanner.h"
#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

#include <filesystem>
#include <memory>

// Thrown by the twin where the program fails.
struct CannotGoOn {};

// The rules of an import in their plainest form, without a thought for speed: a second opinion on
// the program's own, with which it shares the fields of the ledger and the digest.
struct Twin {
    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    Lines Messages;
    std::string TurnStart, TurnEnd; // the turn filter
    std::string Game, Party;        // what stands in the boxes

    // What the last report was like.
    bool Failed = false;
    bool KillsAboveTurn = false; // a kill sentence stood above the first turn header that counts
    bool WholeCounts = true;

    void Import(const std::string& report);
    int ResolveMonster(const std::string& name);

    static double ReadNumber(std::string text);
    static int Round(double value, int lowest, int highest);

private:
    int FindCharacter(const std::string& name);
    void Add(std::int32_t& count, double kills);
    void PartyGate(const std::string& line);
    void TurnGate(const std::string& line, const std::string& report);
    void KillSentence(const std::string& line);
    void Scan(const std::string& report);

    bool Refused = false, Crowd = false, TurnSeen = false;
    double TurnNumber = 0, FirstTurn = 0, LastTurn = 0;
};

// The first slot in which two ledgers differ; "" when they are the same, slot 0 included. The
// cells, which take longest, can be left out.
std::string Difference(KillLedger& a, KillLedger& b, bool cells = true);

// The program and its twin at work on the same reports.
struct Twins {
    explicit Twins(std::filesystem::path report) : Report(std::move(report)) {}

    // Both import a report with this text. Tells in what they differ, their ledgers aside; "" when
    // in nothing.
    std::string Import(const std::string& text);
    // The same with one monster name.
    std::string Resolve(const std::string& name);

    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    Slaying_Tallies Window;
    Lines Messages;
    Desktop Services{.ShowMessage = [this](const Message& message) {
        Messages.push_back(message.Prompt);
        return Answer::Ok;
    }};
    Twin Slow;
    std::filesystem::path Report; // where the text is put
};

// Text for chance to write: each byte from 0x80 on stands for a piece of what reports hold, or of
// names on which the plural rules turn; any other stands for itself.
std::string Compose(std::string_view bytes);
