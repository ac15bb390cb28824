#include "Input.h"

#include "Bench.h"
#include "fingerprint/modMD5.h"

#include <fstream>
#include <random>

namespace Input {
namespace {

constexpr std::string_view LookStarts = "Ash Bog Dun Frost Gloom Grim Thorn Rust Mire Wan";
constexpr std::string_view LookEnds = " eyed born clad fang hide horn tail tooth wing mane";
constexpr std::string_view Homes = "Cave Marsh Hill Barrow Fen Cellar Sea Forest";
constexpr std::string_view KindStarts = "Bar Cor Dra Fel Gor Hul Kra Mor Ska Tro";
constexpr std::string_view KindEnds = " gon hound ling lurk maw rak spawn wight ger";

// The word `number`, from 0, of words with one blank between them.
std::string Word(std::string_view words, int number) {
    for (; number > 0; --number) {
        words.remove_prefix(words.find(' ') + 1);
    }
    return std::string(words.substr(0, words.find(' ')));
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
    std::string name = Word(LookStarts, look % 10) + Word(LookEnds, look / 10);
    if ((look + kind) % 2 == 1) {
        name += ' ' + Word(Homes, kind / 2 % 8);
    }
    return name + ' ' + CharacterName(kind);
}

std::string CharacterName(int number) {
    return Word(KindStarts, number % 10) + Word(KindEnds, number / 10);
}

std::unique_ptr<KillLedger> FullLedger(int step) {
    auto ledger = std::make_unique<KillLedger>();
    std::mt19937 numbers;
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
    std::string report = "  Party# 1047 of Game # " + std::to_string(Game) + "\r\n  Turn#  " +
                         std::to_string(turn) + "\r\n";
    // No two reports in a row have the same lines.
    for (auto next = static_cast<std::size_t>(turn) * 997; report.size() < size; ++next) {
        report += lines.at(next % lines.size());
    }
    return report;
}

std::filesystem::path Write(const QTemporaryDir& folder, const std::string& name,
                            const std::string& bytes) {
    const auto path = std::filesystem::path(folder.path().toStdString()) / name;
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    Bench::Require(static_cast<bool>(file.flush()), "no room for the input");
    return path;
}

Batch::Batch(int reports) {
    constexpr int types = 300;
    for (int type = 0; type < types; ++type) { // of all lengths and first letters
        Monsters.push_back(MonsterName(type * 33));
    }
    std::size_t clause = 0;
    for (int turn = 1; turn <= reports; ++turn) {
        std::string report = Report(turn, 39'000);
        for (int character = 0; character < 4; ++character) {
            report += "  " + CharacterName(character) + ": put a broad back into it, killing ";
            for (const char* const end : {", ", "\r\nand ", "\r\n\r\n"}) {
                const bool alone = clause < types; // at the first meeting
                report += alone ? "1 " : "2 ";
                report += Monsters.at(clause++ % types);
                report += alone ? "" : "s";
                report += end;
                Kills += alone ? 1 : 2;
            }
        }
        Files.push_back(Write(Folder, std::to_string(10'000 + turn) + ".html", report));
    }
}

std::unique_ptr<Program> StartedProgram() {
    auto program = std::make_unique<Program>();
    program->MainWindow.Window.Show();
    return program;
}

} // namespace Input
