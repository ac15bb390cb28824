#include "Ledgers.h"
#include "ScriptedDesktop.h"
#include "datafile/DataFile.h"
#include "text/Failure.h"

#include <random>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t CutStride = 199; // a load takes ten times as long
#else
constexpr std::size_t CutStride = 1;
#endif

void GiveAwkwardNames(KillLedger& ledger) {
    int slot = 0;
    for (const std::string& name :
         {std::string(""), std::string("Rat \"the\" Bat"), std::string("\""), std::string("\"\""),
          std::string("a, b"), std::string(",1,\"x"), std::string("  leading"),
          std::string("nul\0nul", 7), std::string("tab\t"), std::string("\r\n1")}) {
        ledger.CharacterNames[++slot] = name;
        ledger.MonsterNames[MaxMonsters - slot] = name;
    }
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        ledger.MonsterNames[20] += static_cast<char>(byte);
    }
    ledger.KillTable(99, 9999) = std::numeric_limits<std::int32_t>::min();
    ledger.CharacterKills[99] = std::numeric_limits<std::int32_t>::max();
}

} // namespace

TEST(DataFile, HoldsEverySlotAtItsLine) {
    const TemporaryFolder folder;
    const auto file = folder.Path / "empty.qvt";
    auto ledger = std::make_unique<KillLedger>();
    Main::WriteDataFile(*ledger, file);
    const std::string empty = ReadAll(file);
    EXPECT_EQ(empty.size(), 3'080'401U);
    EXPECT_EQ(std::count(empty.begin(), empty.end(), '\n'), 1'020'099);
    EXPECT_EQ(empty.find('\n', empty.find('\r')) - empty.find('\r'), 1U);
    EXPECT_TRUE(empty.starts_with("\"Ver: 6\"\r\n0\r\n0\r\n\"\"\r\n0\r\n0\r\n"));
    EXPECT_TRUE(empty.ends_with("0\r\n\"\"\r\n\"\"\r\n"));

    ledger->PartyNumber = -7;
    ledger->CharacterNames[1] = "Aron";
    ledger->KillTable(2, 1) = 12;
    ledger->TurnHashes[9999] = "-1";
    Main::WriteDataFile(*ledger, file);
    const Lines lines = Fields(ReadAll(file), '\n');
    EXPECT_EQ(lines[2], "-7\r");
    EXPECT_EQ(lines[3], "\"Aron\"\r");
    EXPECT_EQ(lines[10'006], "12\r");
    EXPECT_EQ(lines[1'020'097], "\"-1\"\r");
}

TEST(DataFile, ComesBackByteForByte) {
    const TemporaryFolder folder;
    auto saved = FullLedger(New);
    GiveAwkwardNames(*saved);
    saved->CharacterNames[50] = std::string(262'140, 'n'); // about as long as a buffer
    saved->CharacterNames[51] = std::string(400'000, 'm'); // and longer
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
    auto loaded = FullLedger(Old);
    EXPECT_TRUE(Main::ReadDataFile(*loaded, first));
    for (int i = 1; i <= MaxMonsters; ++i) {
        ASSERT_EQ(loaded->MonsterNames[i], saved->MonsterNames[i]);
        ASSERT_EQ(loaded->CharacterNames[i % 100], saved->CharacterNames[i % 100]);
    }
    Main::WriteDataFile(*loaded, second);
    EXPECT_TRUE(ReadAll(first) == ReadAll(second));
}

// A file cut off anywhere loads up to there, and every later field keeps its value.
TEST(DataFile, LoadsWhatIsThereOfACutFile) {
    const TemporaryFolder folder;
    const auto file = folder.Path / "whole.qvt";
    Main::WriteDataFile(*FullLedger(New), file);
    const std::string bytes = ReadAll(file);
    std::vector<std::size_t> ends; // of each field, from the format mark on
    for (std::size_t at = bytes.find("\r\n"); at != std::string::npos;
         at = bytes.find("\r\n", at + 2)) {
        ends.push_back(at);
    }
    std::vector<std::size_t> cuts;
    for (std::size_t at = 0; at < 2048; ++at) {
        cuts.push_back(at);
        cuts.push_back(bytes.size() - at);
    }
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        cuts.push_back(random() % bytes.size());
    }
    std::sort(cuts.begin(), cuts.end());

    // Each cut is behind the one before, so that its load leaves nothing of that.
    const auto ledger = FullLedger(Old);
    std::size_t written = 0;
    for (std::size_t i = 0; i < cuts.size(); i += CutStride) {
        const std::size_t cut = cuts[i];
        std::ofstream(folder.Path / "cut.qvt", std::ios::binary | std::ios::app)
            << std::string_view(bytes).substr(written, cut - written);
        written = cut;
        const auto read = std::upper_bound(ends.begin(), ends.end(), cut);
        Mixture expected{std::max(static_cast<int>(read - ends.begin()) - 1, 0), ""};
        // Of a number that is cut through, the digits that are left count.
        const std::size_t start = read == ends.begin() ? cut : *std::prev(read) + 2;
        if (cut > start && bytes[start] != '"') {
            expected.Stump = std::to_string(std::atoi(bytes.substr(start, cut - start).c_str()));
        }
        try {
            EXPECT_TRUE(Main::ReadDataFile(*ledger, folder.Path / "cut.qvt"));
            EXPECT_EQ(expected.NewFields, FieldCount);
        } catch (const Failure&) {
            EXPECT_LT(expected.NewFields, FieldCount) << cut;
        }
        ASSERT_EQ(Compare(*ledger), expected) << cut;
    }
}

namespace {

const std::string BlankQuestion = "[Sure?] Are you sure you wish to blank all data? [Yes, No]"
                                  " [question]";
const std::string LoadQuestion = "[Sure?] Are you sure you wish to load a new data file without"
                                 " saving? [Yes, No] [stop]";
const std::string OverwriteQuestion = "[Sure?] Are you sure you wish to over-write this file?"
                                      " [Yes, No] [question]";
const std::string OpenDialog = "Open: Load Data File... (Marrowquill Kill Files (*.qvt)|*.qvt) 0";
const std::string SaveDialog = "Save: Save Data File As... (Marrowquill Kill Files (*.qvt)|*.qvt)"
                               " 0";

struct FileWorld : World {
    FileWorld() {
        ImportText("Party# 0007 of game:  12/Aron: killing 2 Rats//");
        Screen.Transcript.clear();
        Window.lblStatus.Repaint = [this] { Statuses.push_back(Window.lblStatus.Caption); };
    }
    // What the player was asked by a menu entry, given the answers.
    Lines Give(const Menu& entry, std::deque<Answer> answers,
               std::deque<std::optional<std::filesystem::path>> choices = {}) {
        Screen.Answers = std::move(answers);
        Screen.Choices = std::move(choices);
        entry.Click();
        EXPECT_TRUE(Screen.Answers.empty() && Screen.Choices.empty());
        EXPECT_EQ(Window.Window.MousePointer.Get(), Pointer::Default);
        return std::exchange(Screen.Transcript, {});
    }
    std::string Boxes() const {
        return Window.txtGame.Text.Get() + '/' + Window.txtParty.Text.Get();
    }

    Lines Statuses;
    std::filesystem::path File = Folder.Path / "tallies.qvt";
};

} // namespace

TEST(FileCommands, SaveBlankAndOpen) {
    FileWorld world;
    const auto [ledger, window] = std::tie(world.Ledger, world.Window);
    EXPECT_EQ(ledger.DataChanged, 1);
    // A first save asks for a name; a cancel changes nothing.
    EXPECT_EQ(world.Give(window.mnuFileSave, {}, {std::nullopt}), Lines{SaveDialog});
    EXPECT_EQ(world.Give(window.mnuFileSave, {}, {"bare-name.qvt"}), Lines{SaveDialog});
    EXPECT_EQ(ledger.DataChanged, 1);
    EXPECT_EQ(ledger.DataFilePath, "");
    EXPECT_EQ(world.Statuses, Lines{});
    EXPECT_EQ(world.Give(window.mnuFileSave, {}, {world.File}), Lines{SaveDialog});
    EXPECT_EQ(ledger.DataChanged, 0);
    EXPECT_EQ(ledger.DataFilePath, world.File);
    EXPECT_EQ(std::exchange(world.Statuses, {}), (Lines{"Please wait, saving data...", ""}));
    // From then on it asks nothing; save as does.
    EXPECT_EQ(world.Give(window.mnuFileSave, {}), Lines{});
    EXPECT_EQ(world.Give(window.mnuFileSaveAs, {Answer::No}, {world.File}),
              (Lines{SaveDialog, OverwriteQuestion}));
    EXPECT_EQ(world.Give(window.mnuFileSaveAs, {Answer::Yes}, {world.File}),
              (Lines{SaveDialog, OverwriteQuestion}));

    EXPECT_EQ(world.Give(window.mnuFileNew, {Answer::No}), Lines{BlankQuestion});
    EXPECT_EQ(world.Tallies(), "Aron: Rats 2");
    EXPECT_EQ(world.Give(window.mnuFileNew, {Answer::Yes}), Lines{BlankQuestion});
    EXPECT_EQ(world.Tallies(), "");
    EXPECT_EQ(world.Boxes(), "0/0");
    EXPECT_EQ(window.lstCharacters.Count() + window.lstMonsters.Count(), 0);
    EXPECT_EQ(ledger.DataFilePath, world.File);

    world.Statuses.clear();
    EXPECT_EQ(world.Give(window.mnuFileOpen, {}, {world.File}), Lines{OpenDialog});
    EXPECT_EQ(world.Statuses, (Lines{"Please wait, loading data...", ""}));
    EXPECT_EQ(world.Tallies(), "Aron: Rats 2");
    EXPECT_EQ(world.Boxes(), "12/7");
    EXPECT_EQ(window.lstMonsters.Item(1).Text, "Rats");
}

TEST(FileCommands, OpenAsksAboutUnsavedWorkAndShowsWhateverCameOfIt) {
    FileWorld world;
    const auto [ledger, window] = std::tie(world.Ledger, world.Window);
    EXPECT_EQ(world.Give(window.mnuFileOpen, {Answer::No}), Lines{LoadQuestion});
    EXPECT_EQ(ledger.DataChanged, 1);
    ledger.GameNumber = 0;
    EXPECT_EQ(world.Give(window.mnuFileOpen, {Answer::Yes}, {std::nullopt}),
              (Lines{LoadQuestion, OpenDialog}));
    EXPECT_EQ(ledger.DataChanged, 0);
    EXPECT_EQ(ledger.DataFilePath, "");
    EXPECT_EQ(world.Boxes(), "0/7");

    const auto refused = world.Folder.Write("refused.qvt", "beta\r\n1\r\n");
    ledger.DataChanged = 0;
    EXPECT_EQ(world.Give(window.mnuFileOpen, {}, {refused}),
              (Lines{OpenDialog, Box("Sorry, this data file is from early beta versions, and is "
                                     "no longer supported.")}));
    EXPECT_EQ(ledger.DataFilePath, refused);
    EXPECT_EQ(world.Tallies(), "Aron: Rats 2");

    for (const auto& broken : {world.Folder.Write("broken.qvt", "\"Ver: 6\"\r\n3\r\n"),
                               world.Folder.Path / "none.qvt", world.Folder.Path}) {
        EXPECT_EQ(world.Give(window.mnuFileOpen, {}, {broken}), Lines{OpenDialog});
        EXPECT_EQ(ledger.DataFilePath, broken);
        EXPECT_EQ(world.Boxes(), "3/7");
    }
    // A save that fails is not announced.
    EXPECT_EQ(world.Give(window.mnuFileSave, {}), Lines{});
}
