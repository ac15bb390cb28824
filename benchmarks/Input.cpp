#include "Input.h"

#include "app/Events.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace Input {
namespace {

constexpr std::array<const char*, 10> LookStarts = {"Ash",  "Bog",   "Dun",  "Frost", "Gloom",
                                                    "Grim", "Thorn", "Rust", "Mire",  "Wan"};
constexpr std::array<const char*, 11> LookEnds = {"",     "eyed", "born",  "clad", "fang", "hide",
                                                  "horn", "tail", "tooth", "wing", "mane"};
constexpr std::array<const char*, 8> Homes = {"Cave", "Marsh",  "Hill", "Barrow",
                                              "Fen",  "Cellar", "Sea",  "Forest"};
constexpr std::array<const char*, 10> KindStarts = {"Bar", "Cor", "Dra", "Fel", "Gor",
                                                    "Hul", "Kra", "Mor", "Ska", "Tro"};
constexpr std::array<const char*, 10> KindEnds = {"",    "gon", "hound", "ling",  "lurk",
                                                  "maw", "rak", "spawn", "wight", "ger"};

constexpr std::array<const char*, 10> PersonStarts = {"Al",  "Bren", "Cor", "Dag",  "Ed",
                                                      "Hob", "Mael", "Or",  "Pell", "Yr"};
constexpr std::array<const char*, 11> PersonEnds = {"aric", "dis",   "dwin", "fast",   "gar", "ka",
                                                    "mund", "recht", "stan", "willow", "bern"};

// Any entry, for any number.
template <std::size_t Count>
std::string At(const std::array<const char*, Count>& words, std::size_t number) {
    return words.at(number % Count);
}

void AppendText(std::string& file, std::string_view text) {
    file.append(1, '"').append(text).append("\"\r\n");
}

void AppendNumber(std::string& file, std::int32_t number) {
    file.append(std::to_string(number)).append("\r\n");
}

// Of all tables whose slots run to Last: whether `same` holds for each slot.
template <class Same>
bool ForAll(int last, Same same) {
    for (int slot = 1; slot <= last; ++slot) {
        if (!same(slot)) {
            return false;
        }
    }
    return true;
}

std::filesystem::path MemoryFolder() {
    constexpr std::uintmax_t room = std::uintmax_t{400} << 20;
    std::error_code absent;
    const std::filesystem::path memory = "/dev/shm";
    const auto space = std::filesystem::space(memory, absent);
    return !absent && space.available >= room ? memory : std::filesystem::temp_directory_path();
}

} // namespace

std::string MonsterName(std::size_t number) {
    const std::size_t looks = LookStarts.size() * LookEnds.size();
    const std::size_t look = number % looks;
    const std::size_t kind = number / looks;
    std::string name = At(LookStarts, look) + At(LookEnds, look / LookStarts.size());
    if ((look + kind) % 2 == 1) {
        name += ' ' + At(Homes, kind / 2);
    }
    return name + ' ' + At(KindStarts, kind) + At(KindEnds, kind / KindStarts.size());
}

std::string CharacterName(std::size_t number) {
    return At(PersonStarts, number) + At(PersonEnds, number / PersonStarts.size());
}

std::unique_ptr<KillLedger> FullLedger(int step) {
    auto ledger = std::make_unique<KillLedger>();
    Sequence numbers;
    ledger->GameNumber = 12;
    ledger->PartyNumber = 1047;
    for (int m = 1; m <= MaxMonsters; m += step) {
        ledger->MonsterNames[m] = MonsterName(static_cast<std::size_t>(m) - 1);
    }
    for (int c = 1; c <= MaxCharacters; ++c) {
        ledger->CharacterNames[c] = CharacterName(static_cast<std::size_t>(c) - 1);
        for (int m = 1; m <= MaxMonsters; m += step) {
            const auto kills = static_cast<std::int32_t>(numbers.Next(9999) + 1);
            ledger->KillTable(c, m) = kills;
            ledger->CharacterKills[c] += kills;
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        ledger->TurnFileLengths[i] = static_cast<std::int32_t>(20'000 + numbers.Next(20'000));
        for (int digit = 0; digit < 32; ++digit) {
            ledger->TurnHashes[i] += "0123456789abcdef"[numbers.Next(16)];
        }
    }
    return ledger;
}

bool SameTables(const KillLedger& one, const KillLedger& other) {
    return one.GameNumber == other.GameNumber && one.PartyNumber == other.PartyNumber &&
           ForAll(MaxCharacters,
                  [&](int c) {
                      return one.CharacterNames[c] == other.CharacterNames[c] &&
                             one.CharacterKills[c] == other.CharacterKills[c] &&
                             ForAll(MaxMonsters, [&](int m) {
                                 return one.KillTable(c, m) == other.KillTable(c, m);
                             });
                  }) &&
           ForAll(MaxMonsters,
                  [&](int m) { return one.MonsterNames[m] == other.MonsterNames[m]; }) &&
           ForAll(MaxTurns, [&](int i) {
               return one.TurnFileLengths[i] == other.TurnFileLengths[i] &&
                      one.TurnHashes[i] == other.TurnHashes[i];
           });
}

std::string DataFileBytes(const KillLedger& ledger) {
    std::string file;
    AppendText(file, "Ver: 6");
    AppendNumber(file, ledger.GameNumber);
    AppendNumber(file, ledger.PartyNumber);
    for (int c = 1; c <= MaxCharacters; ++c) {
        AppendText(file, ledger.CharacterNames[c]);
        AppendNumber(file, ledger.CharacterKills[c]);
        for (int m = 1; m <= MaxMonsters; ++m) {
            AppendNumber(file, ledger.KillTable(c, m));
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        AppendNumber(file, ledger.TurnFileLengths[i]);
        AppendText(file, ledger.TurnHashes[i]);
        AppendText(file, ledger.MonsterNames[i]);
    }
    return file;
}

std::string ReportBody(const KillLedger& ledger) {
    std::string report = "Individual kill stats:\r\n======================\r\n";
    std::vector<std::uint32_t> totals(std::size_t{MaxMonsters} + 1);
    for (int c = 1; c <= MaxCharacters; ++c) {
        report += ledger.CharacterNames[c] + " (" + std::to_string(ledger.CharacterKills[c]) +
                  " total kills)\r\n";
        for (int m = 1; m <= MaxMonsters; ++m) {
            if (const std::int32_t kills = ledger.KillTable(c, m); kills != 0) {
                report += "  " + ledger.MonsterNames[m] + " : ";
                report += std::to_string(kills) + " kills\r\n";
                totals.at(static_cast<std::size_t>(m)) += static_cast<std::uint32_t>(kills);
            }
        }
    }
    report += "\r\nOverall group kill stats:\r\n=========================\r\n";
    for (int m = 1; m <= MaxMonsters; ++m) {
        const auto total = static_cast<std::int16_t>(totals.at(static_cast<std::size_t>(m)));
        if (total > 0) {
            report += ledger.MonsterNames[m] + " : " + std::to_string(total) + " group kills\r\n";
        }
    }
    return report;
}

Folder::Folder() {
    std::string name = (MemoryFolder() / "tallies-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for the input");
    }
    Path = name;
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(Path, ignored);
}

std::filesystem::path Folder::Write(const std::string& name, std::string_view bytes) const {
    std::ofstream file(Path / name, std::ios::binary);
    if (!(file << bytes) || !file.flush()) {
        throw std::runtime_error("no room for the input");
    }
    return Path / name;
}

Stage::Stage()
    : Services{.ShowMessage =
                   [this](const Message&) {
                       ++Messages;
                       return Answer::Ok;
                   },
               .ShowOpen =
                   [this](CommonDialog& dialog) {
                       dialog.FileName = Choice;
                       return true;
                   },
               .ShowSave = [](CommonDialog&) { return false; },
               .ClipboardClear = [] {},
               .ClipboardSetText = [this](std::string_view text) { Raise(OnClipboard, text); },
               .LoadPicture = [](const auto&) { return std::string(); },
               .LockWindowUpdate = [](const ListView*) {},
               .AppPath = [] { return std::filesystem::temp_directory_path(); },
               .CloseAllWindows = [] {}} {
    Main::WireEvents(Ledger, Window, About, Services);
    Window.Window.Show();
}

} // namespace Input
