#include "Input.h"

#include "Compare.h"
#include "fingerprint/modMD5.h"

#include <array>
#include <fstream>
#include <random>

namespace Input {
namespace {

template <std::size_t Count>
using Words = std::array<const char*, Count>;

constexpr Words<10> LookStarts = {"Ash",  "Bog",   "Dun",  "Frost", "Gloom",
                                  "Grim", "Thorn", "Rust", "Mire",  "Wan"};
constexpr Words<11> LookEnds = {"",     "eyed", "born",  "clad", "fang", "hide",
                                "horn", "tail", "tooth", "wing", "mane"};
constexpr Words<8> Homes = {"Cave", "Marsh", "Hill", "Barrow", "Fen", "Cellar", "Sea", "Forest"};
constexpr Words<10> KindStarts = {"Bar", "Cor", "Dra", "Fel", "Gor",
                                  "Hul", "Kra", "Mor", "Ska", "Tro"};
constexpr Words<10> KindEnds = {"",    "gon", "hound", "ling",  "lurk",
                                "maw", "rak", "spawn", "wight", "ger"};

// A word for any number.
template <std::size_t Count>
std::string Any(const Words<Count>& words, int number) {
    return words.at(static_cast<std::size_t>(number) % Count);
}

// Of the sample reports, all lines but headers and kills.
std::vector<std::string> ProseLines() {
    std::vector<std::string> lines;
    for (int turn = 32; turn <= 46; ++turn) {
        std::ifstream report(SAMPLES_FOLDER "/turn-0" + std::to_string(turn) + ".html");
        for (std::string line; std::getline(report, line);) {
            if (line.find("# ") == std::string::npos && line.find("killing") == std::string::npos) {
                lines.push_back(line + '\n');
            }
        }
    }
    Bench::Require(!lines.empty(), "no samples");
    return lines;
}

} // namespace

std::string MonsterName(int number) {
    const int look = number % 110;
    const int kind = number / 110;
    std::string name = Any(LookStarts, look) + Any(LookEnds, look / 10);
    if ((look + kind) % 2 == 1) {
        name += ' ' + Any(Homes, kind / 2);
    }
    return name + ' ' + CharacterName(kind);
}

std::string CharacterName(int number) {
    return Any(KindStarts, number) + Any(KindEnds, number / 10);
}

std::unique_ptr<KillLedger> FullLedger(int step) {
    auto ledger = std::make_unique<KillLedger>();
    std::mt19937 numbers;
    ledger->GameNumber = Game;
    ledger->PartyNumber = Party;
    for (int m = 1; m <= MaxMonsters; m += step) {
        ledger->MonsterNames[m] = MonsterName(m - 1);
    }
    for (int c = 1; c <= MaxCharacters; ++c) {
        ledger->CharacterNames[c] = CharacterName(c - 1);
        for (int m = 1; m <= MaxMonsters; m += step) {
            const auto kills = static_cast<std::int32_t>(numbers() % 9999 + 1);
            ledger->KillTable(c, m) = kills;
            ledger->CharacterKills[c] += kills;
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        ledger->TurnFileLengths[i] = static_cast<std::int32_t>(20'000 + numbers() % 20'000);
        ledger->TurnHashes[i] = modMD5::DigestText(std::to_string(i));
    }
    return ledger;
}

std::string Report(int turn, std::size_t size) {
    static const std::vector<std::string> lines = ProseLines();
    std::string report = "  Party# " + std::to_string(Party) + " of Game # " +
                         std::to_string(Game) + "      The Ninth Kettle\r\n  Turn#  " +
                         std::to_string(turn) + "\r\n";
    // No two reports in a row have the same lines.
    for (auto next = static_cast<std::size_t>(turn) * 997; report.size() < size; ++next) {
        report += lines.at(next % lines.size());
    }
    return report;
}

std::filesystem::path Folder::Write(const std::string& name, const std::string& bytes) const {
    const auto path = *this / name.c_str();
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    Bench::Require(static_cast<bool>(file.flush()), "no room for the input");
    return path;
}

std::filesystem::path Folder::operator/(const char* name) const {
    return std::filesystem::path(Place.path().toStdString()) / name;
}

Batch::Batch(int reports) {
    constexpr int characters = 9;
    constexpr int types = 300;
    for (int type = 0; type < types; ++type) { // of all lengths and first letters
        Monsters.push_back(MonsterName(type * 33));
    }
    Expected->GameNumber = Game;
    Expected->PartyNumber = Party;
    Expected->DataChanged = 1;
    int clauses = 0;
    for (int turn = 1; turn <= reports; ++turn) {
        std::string report = Report(turn, 39'000);
        for (int sentence = 0; sentence < 4; ++sentence) {
            // Characters and types take turns, so that each has the slot of its first turn.
            const int c = clauses / 3 % characters + 1;
            Expected->CharacterNames[c] = CharacterName(c - 1);
            report += "  " + CharacterName(c - 1) + ": put a broad back into it, killing ";
            for (const char* const end : {", ", "\r\nand ", "\r\n\r\n"}) {
                const int m = clauses % types + 1;
                const std::string& name = Monsters.at(static_cast<std::size_t>(m) - 1);
                const int kills = clauses < types ? 1 : 2; // first met alone
                report += std::to_string(kills) + ' ' + name + (kills == 1 ? "" : "s") + end;
                Expected->MonsterNames[m] = name;
                Expected->KillTable(c, m) += kills;
                Expected->CharacterKills[c] += kills;
                ++clauses;
            }
        }
        Files.push_back(Place.Write(std::to_string(10'000 + turn) + ".html", report));
        Expected->TurnFileLengths[turn] = static_cast<std::int32_t>(report.size());
        Expected->TurnHashes[turn] = modMD5::DigestText(report);
    }
}

std::unique_ptr<Program> StartedProgram() {
    auto program = std::make_unique<Program>();
    program->MainWindow.Window.Show();
    return program;
}

} // namespace Input
