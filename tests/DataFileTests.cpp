#include "Ledgers.h"
#include "ScriptedDesktop.h"
#include "datafile/DataFile.h"

#include <limits>
#include <map>
#include <set>

using namespace std::string_literals;

TEST(DataFile, ComesBackByteForByte) {
    const TemporaryFolder folder;
    const auto saved = FullLedger(New);
    int slot = 0;
    for (const std::string& name : // the first and the last two are about as long as the buffer
         {std::string(262'122, 'n'), ""s, R"(Rat "the" Bat)"s, "\""s, R"("")"s, "a, b"s, ",1,\"x"s,
          "  leading"s, "nul\0nul"s, "tab\t"s, "\r\n1"s, std::string(262'144, 'm'),
          std::string(400'000, 'o')}) {
        saved->CharacterNames[++slot] = name;
        saved->MonsterNames[MaxMonsters - slot] = name;
    }
    for (int byte = 0; byte <= 0xFF; ++byte) {
        saved->KillTable(1, 1 + byte) = byte;
        saved->TurnHashes[1] += static_cast<char>(byte);
    }
    saved->KillTable(99, 9999) = std::numeric_limits<std::int32_t>::min();
    saved->CharacterKills[99] = std::numeric_limits<std::int32_t>::max();
    // The file may come from another system, and go to one: what they save is the same.
    const auto path = [&](const char* variable, const char* name) {
        const char* const given = std::getenv(variable);
        return given != nullptr ? std::filesystem::path(given) : folder.Path / name;
    };
    const auto first = path("TALLIES_FROM_ELSEWHERE", "first.qvt");
    const auto second = path("TALLIES_FOR_ELSEWHERE", "second.qvt");
    if (first.parent_path() == folder.Path) {
        Main::WriteDataFile(*saved, first);
    }
    EXPECT_TRUE(ReadAll(first).starts_with("\"Ver: 6\"\r\n1001\r\n1002\r\n"));
    const auto loaded = FullLedger(Old);
    EXPECT_TRUE(Main::ReadDataFile(*loaded, first));
    EXPECT_TRUE(*loaded == *saved);
    Main::WriteDataFile(*loaded, second);
    EXPECT_TRUE(ReadAll(first) == ReadAll(second));
}

// A cut file loads up to the cut; later fields keep their values. A number that is cut is neither.
TEST(DataFile, LoadsWhatIsThereOfACutFile) {
    const TemporaryFolder folder;
    Main::WriteDataFile(*FullLedger(New), folder.Path / "whole.qvt");
    const std::string bytes = ReadAll(folder.Path / "whole.qvt");
    EXPECT_NE(bytes.find("\r\n11003\r\n\"name 10004\"\r\n11005\r\n11006\r\n"), std::string::npos);
    EXPECT_TRUE(bytes.ends_with("\r\n5288\r\n\"name 1020097\"\r\n\"name 1020098\"\r\n"));
    std::set<std::size_t> cuts; // in ascending order: no load leaves more than the next
    for (std::size_t i = 0; i < 24; ++i) {
        cuts.insert({i * 2, bytes.size() - i, i * 131'071});
    }
    const auto ledger = FullLedger(Old);
    int mistakes = 0;
    for (const std::size_t cut : cuts) {
        const auto file = folder.Write("cut.qvt", bytes.substr(0, cut));
        // A field is complete before its line end; the first one is the format mark.
        const std::string complete = bytes.substr(0, cut + 1);
        const auto fields = std::count(complete.begin(), complete.end(), '\r') - 1;
        EXPECT_EQ(Outcome([&] { return Main::ReadDataFile(*ledger, file); }).value_or(false),
                  fields == FieldCount);
        int number = 0;
        ForEachField(*ledger, [&](const auto& field) {
            using Field = std::decay_t<decltype(field)>;
            const int seed = ++number <= fields ? New : Old;
            mistakes += field != FullField<Field>(seed + number) && number != fields + 1;
        });
        ASSERT_EQ(mistakes, 0) << cut;
    }
}

TEST(FileMenu, TellsItsStory) {
    World world;
    Slaying_Tallies& window = world.Window;
    const std::map<std::string, const Menu&> entries = {
        {"Import", window.mnuFileImport}, {"Batch", window.mnuFileBatch},
        {"New", window.mnuFileNew},       {"Open", window.mnuFileOpen},
        {"Save", window.mnuFileSave},     {"SaveAs", window.mnuFileSaveAs}};
    std::map<std::string, std::string> texts;
    world.Folder.Write("report.html", "Party# 0007 of game:  12\nAron: killing 2 Rats\n\n");
    world.Folder.Write("other.html", "Party# 0008 of game:  12\nAron: killing 2 Rats\n\n");
    world.Folder.Write("beta.qvt", "beta\r\n1\r\n");
    world.Folder.Write("broken.qvt", "\"Ver: 6\"\r\n3\r\n");
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/commands.md")) {
        if (row.size() == 2) {
            texts[row[0]] = row[1];
            continue;
        }
        for (const std::string& answer : Fields(row[1], ' ')) {
            if (answer == "Yes" || answer == "No") {
                world.Screen.Answers.push_back(answer == "Yes" ? Answer::Yes : Answer::No);
            } else if (answer == "Cancel") {
                world.Screen.Choices.emplace_back(std::nullopt);
            } else if (answer.starts_with('/')) {
                world.Screen.Choices.emplace_back(world.Folder.Path / answer.substr(1));
            } else {
                world.Screen.Choices.emplace_back(answer);
            }
        }
        entries.at(row[0]).Click();
        Lines asked = Fields(row[2], ' ');
        for (std::string& name : asked) {
            name = texts[name];
        }
        EXPECT_EQ(std::exchange(world.Screen.Transcript, {}), asked);
        EXPECT_EQ(Text::Trim(world.TakeShown()), row[3]);
        const std::string state = window.txtGame.Text.Get() + '/' + window.txtParty.Text.Get() +
                                  ' ' + std::to_string(window.lstCharacters.Count()) + '+' +
                                  std::to_string(window.lstMonsters.Count()) +
                                  (world.Ledger.DataChanged == 1 ? " unsaved " : " saved ") +
                                  world.Ledger.DataFilePath.filename().string();
        EXPECT_EQ(Text::Trim(state), row[4]);
        EXPECT_TRUE(world.Screen.Answers.empty() && world.Screen.Choices.empty());
    }
}
