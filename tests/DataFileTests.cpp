#include "ScriptedDesktop.h"
#include "datafile/DataFile.h"
#include "text/Failure.h"

#include <iterator>
#include <random>
#include <variant>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t CutStride = 199; // a load takes ten times as long
#else
constexpr std::size_t CutStride = 1;
#endif

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// All fields that a file holds, in its order.
template <class Ledger, class Visit>
void ForEachField(Ledger& ledger, Visit visit) {
    visit(ledger.GameNumber);
    visit(ledger.PartyNumber);
    for (int c = 1; c <= MaxCharacters; ++c) {
        visit(ledger.CharacterNames[c]);
        visit(ledger.CharacterKills[c]);
        for (int m = 1; m <= MaxMonsters; ++m) {
            visit(ledger.KillTable(c, m));
        }
    }
    for (int i = 1; i <= MaxTurns; ++i) {
        visit(ledger.TurnFileLengths[i]);
        visit(ledger.TurnHashes[i]);
        visit(ledger.MonsterNames[i]);
    }
}

// Whether both ledgers hold the same in every slot that a file has.
bool Same(const KillLedger& a, const KillLedger& b) {
    bool same = a.GameNumber == b.GameNumber && a.PartyNumber == b.PartyNumber;
    for (int c = 1; c <= MaxCharacters; ++c) {
        same = same && a.CharacterNames[c] == b.CharacterNames[c] &&
               a.CharacterKills[c] == b.CharacterKills[c];
    }
    for (int i = 1; i <= MaxMonsters; ++i) {
        same = same && a.TurnFileLengths[i] == b.TurnFileLengths[i] &&
               a.TurnHashes[i] == b.TurnHashes[i] && a.MonsterNames[i] == b.MonsterNames[i];
        for (int c = 1; c <= MaxCharacters; ++c) {
            same = same && a.KillTable(c, i) == b.KillTable(c, i);
        }
    }
    return same;
}

using FieldPointer = std::variant<std::int16_t*, std::int32_t*, std::string*>;

std::vector<FieldPointer> Pointers(KillLedger& ledger) {
    std::vector<FieldPointer> pointers;
    ForEachField(ledger, [&pointers](auto& field) { pointers.emplace_back(&field); });
    return pointers;
}

// A ledger with something in every field, awkward names among them.
std::unique_ptr<KillLedger> FullLedger(int seed) {
    auto ledger = std::make_unique<KillLedger>();
    int number = seed;
    ForEachField(*ledger, [&number](auto& field) {
        ++number;
        if constexpr (std::is_same_v<decltype(field), std::string&>) {
            field = "name " + std::to_string(number);
        } else {
            field = static_cast<std::remove_reference_t<decltype(field)>>(number % 30000 - 99);
        }
    });
    return ledger;
}

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
    auto saved = FullLedger(0);
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
    auto loaded = FullLedger(1);
    EXPECT_TRUE(Main::ReadDataFile(*loaded, first));
    EXPECT_TRUE(Same(*loaded, *saved));
    Main::WriteDataFile(*loaded, second);
    EXPECT_TRUE(ReadAll(first) == ReadAll(second));
}

// A file cut off anywhere loads up to there, and every later field keeps its value.
TEST(DataFile, LoadsWhatIsThereOfACutFile) {
    const TemporaryFolder folder;
    const auto whole = FullLedger(0);
    const auto file = folder.Path / "cut.qvt";
    Main::WriteDataFile(*whole, file);
    const std::string bytes = ReadAll(file);
    std::vector<std::size_t> ends; // of each field, from the format mark on
    for (std::size_t at = bytes.find("\r\n"); at != std::string::npos;
         at = bytes.find("\r\n", at + 2)) {
        ends.push_back(at);
    }
    std::vector<std::size_t> cuts;
    for (std::size_t at = 0; at < 2048; ++at) {
        cuts.push_back(at);
        cuts.push_back(bytes.size() - 1 - at);
    }
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        cuts.push_back(random() % bytes.size());
    }
    std::sort(cuts.rbegin(), cuts.rend());

    // What a cut must leave: the new fields in front of it, the old ones behind. The cuts come
    // from the end of the file on, so that more and more fields are old.
    const auto old = FullLedger(7);
    const auto expected = std::make_unique<KillLedger>(*whole);
    const auto ledger = std::make_unique<KillLedger>();
    const auto oldFields = Pointers(*old);
    const auto expectedFields = Pointers(*expected);
    const auto assign = [](FieldPointer to, FieldPointer from) {
        std::visit([from](auto* field) { *field = *std::get<decltype(field)>(from); }, to);
    };
    std::size_t kept = expectedFields.size();
    for (std::size_t i = 0; i < cuts.size(); i += CutStride) {
        const std::size_t cut = cuts[i];
        const auto read = std::upper_bound(ends.begin(), ends.end(), cut) - ends.begin();
        for (const auto fields = static_cast<std::size_t>(std::max(read - 1, std::ptrdiff_t{0}));
             kept > fields;) {
            --kept;
            assign(expectedFields[kept], oldFields[kept]);
        }
        // Of a number that is cut through, the digits that are left count.
        const std::size_t start = read == 0 ? cut : ends[static_cast<std::size_t>(read) - 1] + 2;
        const bool stump = cut > start && bytes[start] != '"';
        if (stump) {
            std::visit(
                [&](auto* field) {
                    if constexpr (!std::is_same_v<decltype(field), std::string*>) {
                        using Number = std::remove_pointer_t<decltype(field)>;
                        *field = static_cast<Number>(
                            std::atoi(bytes.substr(start, cut - start).c_str()));
                    }
                },
                expectedFields[kept]);
        }
        std::filesystem::resize_file(file, cut);
        *ledger = *old;
        try {
            Main::ReadDataFile(*ledger, file);
        } catch (const Failure& failure) {
            ASSERT_EQ(failure.Reason, Failure::Kind::EndOfFile) << cut;
        }
        ASSERT_TRUE(Same(*ledger, *expected)) << cut;
        if (stump) {
            assign(expectedFields[kept], oldFields[kept]);
        }
    }
}

// The head of a file, what comes of it in the fields behind the format mark, and the outcome.
TEST(DataFile, ReadsDamagedFieldsAsTold) {
    const TemporaryFolder folder;
    for (const auto& [head, game, name, kills] : {
             std::tuple("\"Ver: 6\"\r\n12\r\n7\r\n\"Aron\"\r\n5\r\n", 12, "Aron", 5),
             {"\"Ver: 1\",12,7,\"A, \"\"b\",5", 12, "A, \"\"b", 5},
             {"Ver:x\n12\r7\n\"Aron\"\r5\r", 12, "Aron", 5},
             {"\"Ver: 6\"\r\n 1 2\r\n\"7\"\r\nAron\r\n\"5\"\r\n", 12, "Aron", 5},
             {"\"Ver: 6\"\r\n2.5e0\r\nrubbish\r\n\"Ar\r\non\"\r\n5x\r\n", 2, "Ar\r\non", 5},
             {"\"Ver: 6\"\r\n\r\n\r\n\"\"\r\n-3.5", 0, "", -4},
             {"\"Ver: 6\"\r\n12\r\n7\r\n\"say \"hi\", x\"\r\n\"5", 12, "say \"hi\", x", 5},
             {"\"Ver: 6\"\r\n12\r\n7\r\n\"Rat\",5\"\r\n6\r\n", 12, "Rat", 5}, // beyond the format
             {"\"Ver: 6\"\r\n32768\r\n7\r\n\"Aron\"\r\n", -1, "old", -1},
             {"\"Ver: 6\"\r\n12\r\n7\r\n\"Aron\"\r\n2147483648\r\n", 12, "Aron", -1},
             {"\"Ver: 6\"\r\n12\r\n7\r\n\"Aron\"\r\n1e999\r\n", 12, "Aron", -1},
             {"\"Ver: 6\"\r\n12\r\n7\r\n\"Aron\r\n5\r\n", 12, "old", -1},
             {"", -1, "old", -1},
         }) {
        const auto owner = std::make_unique<KillLedger>();
        KillLedger& ledger = *owner;
        ledger.GameNumber = -1;
        ledger.CharacterNames[1] = "old";
        ledger.CharacterKills[1] = -1;
        EXPECT_THROW(Main::ReadDataFile(ledger, folder.Write("head.qvt", head)), Failure) << head;
        EXPECT_EQ(ledger.GameNumber, game) << head;
        EXPECT_EQ(ledger.CharacterNames[1], name) << head;
        EXPECT_EQ(ledger.CharacterKills[1], kills) << head;
    }
    const auto ledger = FullLedger(3);
    const std::string rubbish(1 << 20, '\0');
    for (const std::string& head :
         {std::string("123\r\n4\r\n"), std::string("\"Ver:\"\r\n4\r\n"), std::string("ver: 6\r\n4"),
          std::string("\"\"\r\n4"), rubbish}) {
        EXPECT_FALSE(Main::ReadDataFile(*ledger, folder.Write("head.qvt", head)));
    }
    EXPECT_TRUE(Same(*ledger, *FullLedger(3)));
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
