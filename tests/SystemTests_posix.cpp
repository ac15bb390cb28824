#include "Ledgers.h"
#include "ScriptedDesktop.h"
#include "System.h"
#include "SystemCalls.h"
#include "datafile/DataFile.h"
#include "fingerprint/modHashing.h"
#include "platform/RawFile.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <random>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// What a player keeps when the disk, the machine or another program fails.

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t BlockStride = 25; // a save takes ten times as long
constexpr int Kills = 10;
#else
constexpr std::size_t BlockStride = 1;
constexpr int Kills = 200;
#endif

// A data file, and a ledger to be saved over it.
struct SavedGame {
    SavedGame() {
        const auto save = [this](const char* name) {
            Ledger->CharacterNames[1] = name;
            Main::WriteDataFile(*Ledger, Path);
            return ReadAll(Path);
        };
        NewBytes = save("new");
        OldBytes = save("the old one");
        Ledger->CharacterNames[1] = "new";
    }
    // Whether the save is told as done.
    [[nodiscard]] bool Save() const {
        try {
            Main::WriteDataFile(*Ledger, Path);
            return true;
        } catch (const std::system_error&) {
            return false;
        }
    }
    void Restore() const { (void)Folder.Write("tallies.qvt", OldBytes); }
    [[nodiscard]] bool IsOld() const { return ReadAll(Path) == OldBytes; }
    [[nodiscard]] bool IsNew() const { return ReadAll(Path) == NewBytes; }
    // Files beside the data file.
    [[nodiscard]] std::size_t Strays() const { return FilesIn(Folder.Path) - 1; }

    TemporaryFolder Folder;
    std::filesystem::path Path = Folder.Path / "tallies.qvt";
    std::unique_ptr<KillLedger> Ledger = std::make_unique<KillLedger>();
    std::string OldBytes, NewBytes;
};

// Runs `work` in a process of its own. Gives the status that it ended with; kills it after a
// while, if one is told.
template <class Work>
int InChild(Work work, std::chrono::microseconds killAfter = std::chrono::microseconds::max()) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    if (killAfter != std::chrono::microseconds::max()) {
        std::this_thread::sleep_for(killAfter);
        ::kill(child, SIGKILL);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

// Root may do anything: these tests need the rights of somebody else.
class AsNobody {
public:
    explicit AsNobody(const TemporaryFolder& folder) : User(::geteuid()) {
        constexpr uid_t nobody = 65534;
        if (User == 0 &&
            (::chown(folder.Path.c_str(), nobody, nobody) != 0 || ::seteuid(nobody) != 0)) {
            throw std::system_error(errno, std::generic_category());
        }
    }
    ~AsNobody() { EXPECT_EQ(::seteuid(User), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    uid_t User;
};

} // namespace

// Opening a pipe without a writer waits for ever.
std::vector<std::filesystem::path> NoPlainFiles(const std::filesystem::path& folder) {
    const auto pipe = folder / "pipe.htm";
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    return {folder, folder / "none", pipe, "/dev/null"};
}

// The old file, whole. What was not there is not there.
TEST(Faults, DiskFullAtEveryBlockOfASave) {
    const SavedGame game;
    rlimit whole{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &whole), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    int faults = 0;
    for (std::size_t room = 0; room < game.NewBytes.size(); room += 4096 * BlockStride) {
        const rlimit tight{room, whole.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
        EXPECT_FALSE(game.Save());
        if (faults % 16 == 0) { // and once in a while where no old file is
            EXPECT_THROW(Main::WriteDataFile(*game.Ledger, game.Folder.Path / "x"),
                         std::system_error);
        }
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
        ASSERT_TRUE(game.IsOld() && game.Strays() == 0) << room;
        ++faults;
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(game.Save());
    std::cout << faults << " blocks\n";
}

// The old file or the new one, and the new one if the save is told as done. A signal fails none.
TEST(Faults, EachCallOfASaveFails) {
    const SavedGame game;
    int calls = 0;
    std::string failed;
    const auto saveWithFault = [&](int fault, int error) {
        calls = 0;
        failed.clear();
        const Intervene intervene([&](const SystemCall& call, const auto& make) {
            if (calls++ != fault) {
                return make();
            }
            failed = call.Name;
            if (failed == "close") {
                make(); // the handle is gone, whatever its closing says
            }
            return FailWith(error);
        });
        return game.Save();
    };
    int fault = 0;
    do {
        for (const int error : {ENOSPC, EIO, EINTR}) {
            game.Restore();
            const bool done = saveWithFault(fault, error);
            EXPECT_TRUE(game.IsNew() || (!done && game.IsOld())) << failed << fault;
            EXPECT_EQ(game.Strays(), 0U) << failed << fault;
            EXPECT_TRUE(done || error != EINTR || failed == "open" || failed == "close") << failed;
        }
        ++fault;
    } while (!failed.empty());
    EXPECT_GT(fault, 15);
    std::cout << fault - 1 << " calls\n";
}

// The old file or the new one, and the new one once the save is done. A power cut leaves what was
// synced; of what was done since, it may leave the bytes written to a file, and the changes of a
// folder up to any of them.
TEST(Faults, PowerCutAfterEachCallOfASave) {
    const SavedGame game;
    struct File {
        std::string Bytes, Synced;
    };
    using Names = std::map<std::string, std::shared_ptr<File>, std::less<>>;
    Names names{{game.Path, std::make_shared<File>(File{game.OldBytes, game.OldBytes})}};
    std::vector<Names> left{names}; // of the folder
    std::map<long, std::shared_ptr<File>> handles;
    int cuts = 0;
    bool onlyNew = false;
    const auto watch = [&](const SystemCall& call, const auto& make) {
        const long result = make();
        const std::string path(call.Path);
        const auto file = call.Name == "open" ? names[path] : handles[call.Handle];
        if (call.Name == "open" && (call.Flags & O_CREAT) != 0) {
            handles[result] = names[path] = std::make_shared<File>();
            left.push_back(names);
        } else if (call.Name == "open") {
            handles[result] = (call.Flags & O_DIRECTORY) != 0 ? nullptr : file;
        } else if (call.Name == "write") {
            file->Bytes += call.Other.substr(0, static_cast<std::size_t>(result));
        } else if (call.Name == "fsync" && file != nullptr) {
            file->Synced = file->Bytes;
        } else if (call.Name == "fsync") {
            left = {names};
        } else if (call.Name == "rename" || call.Name == "unlink") {
            if (call.Name == "rename") {
                names[std::string(call.Other)] = names[path];
            }
            names.erase(path);
            left.push_back(names);
        }
        onlyNew = true;
        for (const Names& folder : left) {
            for (const std::string& bytes :
                 {folder.at(game.Path)->Bytes, folder.at(game.Path)->Synced}) {
                onlyNew = onlyNew && bytes == game.NewBytes;
                EXPECT_TRUE(bytes == game.NewBytes || bytes == game.OldBytes) << call.Name << cuts;
                ++cuts;
            }
        }
        return result;
    };
    const Intervene intervene(watch);
    EXPECT_TRUE(game.Save());
    EXPECT_TRUE(onlyNew);
    std::cout << cuts << " states\n";
}

// The old file or the new one, and at most one hidden file more for each kill, which a save on
// another day removes.
TEST(Faults, KilledAtRandomMomentsOfASave) {
    const SavedGame game;
    auto length = std::chrono::microseconds(20'000); // of a save, about; found out on the way
    std::mt19937 random(1);
    int old = 0;
    std::size_t strays = 0;
    for (int kill = 1; kill <= Kills; ++kill) {
        game.Restore();
        const std::chrono::microseconds moment(random() % static_cast<unsigned>(length.count()));
        InChild([&] { (void)game.Save(); }, moment);
        EXPECT_TRUE(game.IsOld() || game.IsNew()) << kill;
        EXPECT_LE(game.Strays(), strays + 1);
        strays = game.Strays();
        old += game.IsOld() ? 1 : 0;
        length = length * (game.IsOld() ? 17 : 15) / 16;
    }
    std::cout << old << " old, " << Kills - old << " new, " << strays << " strays\n";
    EXPECT_GT(strays, 0U) << "no kill hit a save at work";
    EXPECT_TRUE(game.Save());
    EXPECT_EQ(game.Strays(), strays);
    for (const auto& file : std::filesystem::directory_iterator(game.Folder.Path)) {
        last_write_time(file, last_write_time(file) - std::chrono::hours(25));
    }
    EXPECT_TRUE(game.Save());
    EXPECT_EQ(game.Strays(), 0U);
    EXPECT_TRUE(game.IsNew());
}

// No word that is printed lands in the player's file.
TEST(Faults, StandardStreamsClosedAtTheStart) {
    const SavedGame game;
    EXPECT_EQ(InChild([&] {
                  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
                      ::close(stream);
                  }
                  OpenStandardStreams();
                  const Intervene intervene([](const SystemCall&, const auto& make) {
                      const long result = make();
                      for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
                          (void)!::write(stream, "a word", 6);
                      }
                      return result;
                  });
                  ::_exit(game.Save() ? 0 : 1);
              }),
              0);
    EXPECT_TRUE(game.IsNew());
}

TEST(Faults, LinksReadOnlyFilesAndFoldersWithoutPermission) {
    const SavedGame game;
    const AsNobody rights(game.Folder);
    const auto in = [&](const char* name) { return game.Folder.Path / name; };
    // A link stays a link, also one to a file that is not there yet; permissions are kept.
    std::filesystem::create_symlink("own.qvt", in("link"));
    std::filesystem::create_symlink(in("made.qvt"), in("dangling"));
    const auto own = game.Folder.Write("own.qvt", "old");
    ASSERT_EQ(::chmod(own.c_str(), 0640), 0);
    for (const char* link : {"link", "dangling"}) {
        Main::WriteDataFile(*game.Ledger, in(link));
        EXPECT_TRUE(std::filesystem::is_symlink(in(link)));
    }
    EXPECT_TRUE(ReadAll(own) == game.NewBytes && ReadAll(in("made.qvt")) == game.NewBytes);
    EXPECT_EQ(std::filesystem::status(own).permissions(), std::filesystem::perms(0640));
    // What cannot be written to stays as it is.
    ASSERT_EQ(::chmod(own.c_str(), 0440), 0);
    game.Ledger->GameNumber = 5;
    for (const auto& target : {own, game.Folder.Path, in("none/x.qvt"), game.Path}) {
        EXPECT_THROW(Main::WriteDataFile(*game.Ledger, target), std::system_error);
    }
    EXPECT_TRUE(ReadAll(own) == game.NewBytes && game.IsOld());
    EXPECT_EQ(game.Strays(), 4U);
    // In a folder that forbids new files an old one is written in place.
    ASSERT_EQ(::chmod(own.c_str(), 0640), 0);
    (void)game.Folder.Write("own.qvt", std::string(4'000'000, 'x'));
    ASSERT_EQ(::chmod(game.Folder.Path.c_str(), 0500), 0);
    Main::WriteDataFile(*game.Ledger, own);
    EXPECT_THROW(Main::WriteDataFile(*game.Ledger, in("new.qvt")), std::system_error);
    EXPECT_EQ(std::filesystem::file_size(own), game.NewBytes.size());
    ASSERT_EQ(::chmod(game.Folder.Path.c_str(), 0700), 0);
}

namespace {

// A report of three kills with a few buffers of prose between them.
std::string LongReport() {
    std::string prose;
    while (prose.size() < 150'000) {
        prose += "The road goes on.\n";
    }
    return "Aron: killing 1 Rat\n\n" + prose + "Bela: killing 2 Bats\n\n" + prose +
           "Cora: killing 3 Cats\n\n";
}
const Lines Kept = {"", "Aron: Rat 1", "Aron: Rat 1 + Bela: Bats 2",
                    "Aron: Rat 1 + Bela: Bats 2 + Cora: Cats 3"};

// Imports the report or opens the data file as the player does, with `fault` in the place of the
// read of that number. Gives what the ledger then holds of it; the window is ready, no file open.
template <class Fault, class Held>
auto ReadWithFault(World& world, const std::filesystem::path& file, int at, Fault fault,
                   Held held) {
    const auto handles = FilesIn("/proc/self/fd");
    int reads = 0;
    {
        const Intervene intervene([&](const SystemCall& call, const auto& make) {
            return call.Name == "read" && reads++ == at ? fault(make) : make();
        });
        world.Screen.Choices = {file};
        (file.extension() == ".qvt" ? world.Window.mnuFileOpen : world.Window.mnuFileImport)
            .Click();
    }
    EXPECT_EQ(FilesIn("/proc/self/fd"), handles);
    EXPECT_EQ(world.Window.Window.MousePointer.Get(), Pointer::Default);
    EXPECT_EQ(world.Window.lblStatus.Caption.Get() + std::to_string(world.TakeBoxes().size()), "0");
    return held();
}

int OpenWithFault(const std::filesystem::path& file, int at,
                  const std::function<long(const std::function<long()>&)>& fault) {
    World world;
    world.Ledger = *FullLedger(Old);
    return ReadWithFault(world, file, at, fault, [&] { return NewFields(world.Ledger); });
}
std::string ImportWithFault(const std::filesystem::path& file, int at,
                            const std::function<long(const std::function<long()>&)>& fault) {
    World world;
    return ReadWithFault(world, file, at, fault, [&] { return world.Tallies(); });
}

} // namespace

// All in front of the fault; a signal is none.
TEST(Reads, FailInTheMiddleOfAReportOrDataFile) {
    const TemporaryFolder folder;
    const auto report = folder.Write("report.html", LongReport());
    const auto file = folder.Path / "full.qvt";
    Main::WriteDataFile(*FullLedger(New), file);
    const auto fail = [](const auto&) { return FailWith(EIO); };
    const auto interrupt = [](const auto&) { return FailWith(EINTR); };
    std::set<std::string> seen;
    for (int at = 0; at < 50 && seen.count(Kept.back()) == 0; ++at) {
        const std::string kept = ImportWithFault(report, at, fail);
        EXPECT_TRUE(seen.empty() || kept.size() >= seen.rbegin()->size()) << at;
        seen.insert(kept);
        EXPECT_EQ(ImportWithFault(report, at, interrupt), Kept.back());
    }
    EXPECT_EQ(seen, std::set<std::string>(Kept.begin(), Kept.end()));
    int before = -1;
    for (const int at : {0, 1, 2, 40}) {
        const int fields = OpenWithFault(file, at, fail);
        EXPECT_GE(fields, std::max(before, at * 5'000));
        EXPECT_LT(fields, FieldCount);
        before = fields + 1;
    }
    EXPECT_EQ(OpenWithFault(file, 5, interrupt), FieldCount);
}

// Once a file is open, what others put in its place makes no difference. One that is cut is read
// to its new end, one that grows to its new end too.
TEST(Reads, GoOnWhateverBecomesOfTheFile) {
    const TemporaryFolder folder;
    const auto aside = folder.Path / "aside";
    const auto report = folder.Path / "report.html";
    const auto file = folder.Path / "full.qvt";
    const auto whole = FullLedger(New);
    using Change = std::function<void(const std::filesystem::path&)>;
    const auto append = [](const auto& path) {
        std::ofstream(path, std::ios::app) << "\r\nDora: killing 4 Dogs\n\n";
    };
    const auto replace = [&](const auto& path) {
        std::filesystem::rename(folder.Write("aside", "Dora: killing 4 Dogs\n\n"), path);
    };
    for (const auto& [change, tallies, fields] :
         {std::tuple(Change([](const auto& path) { std::filesystem::remove(path); }), Kept[3], 1),
          std::tuple(Change(replace), Kept[3], 1),
          std::tuple(Change([](const auto& path) { std::filesystem::resize_file(path, 0); }),
                     Kept[1], 0),
          std::tuple(Change(append), Kept[3] + " + Dora: Dogs 4", 1)}) {
        folder.Write("report.html", LongReport());
        Main::WriteDataFile(*whole, file);
        const auto during = [&](const std::filesystem::path& path) {
            return [&, path](const std::function<long()>& make) {
                change(path);
                return make();
            };
        };
        EXPECT_EQ(ImportWithFault(report, 1, during(report)), tallies);
        const int loaded = OpenWithFault(file, 1, during(file));
        EXPECT_TRUE(fields == 1 ? loaded == FieldCount : loaded > 0 && loaded < 20'000) << loaded;
    }
}

// What may not be read leaves the ledger as it is, without a word.
TEST(Reads, OfWhatIsForbidden) {
    World world;
    const AsNobody rights(world.Folder);
    world.ImportText("Aron: killing 1 Rat//");
    const auto report = world.Folder.Path / "report.html";
    for (const auto& path : {report, world.Folder.Path}) {
        ASSERT_EQ(::chmod(path.c_str(), 0), 0);
        world.Import(report);
        world.Batch(report);
        world.Screen.Choices.emplace_back(report);
        world.Ledger.DataChanged = 0;
        world.Window.mnuFileOpen.Click();
        world.Window.mnuFileSave.Click();
        ASSERT_EQ(::chmod(path.c_str(), 0700), 0);
        EXPECT_EQ(world.Tallies(), "Aron: Rat 1");
        EXPECT_EQ(world.TakeBoxes(), Lines{});
        EXPECT_EQ(ReadAll(report), "Aron: killing 1 Rat\n\n");
    }
}

#ifdef __SANITIZE_ADDRESS__
// The other tests tell of no leak: not because nobody looks.
TEST(Sanitizers, TellOfALeak) {
    const auto leak = [] {
        int* volatile lost = new int;
        lost = nullptr;
        std::exit(lost == nullptr ? 0 : 1);
    };
    EXPECT_EXIT(
        leak(), [](int status) { return status != 0; }, "LeakSanitizer");
}
#endif

TEST(Fingerprint, TellsInABoxThatReadingFailed) {
    World world;
    const auto file = world.Folder.Write("report", "bytes");
    const Intervene intervene([](const SystemCall& call, const auto& make) {
        return call.Name == "read" ? FailWith(EIO) : make();
    });
    EXPECT_EQ(modHashing::HashFile(world.Screen.Services, file, 100), "-1");
    EXPECT_EQ(world.TakeBoxes(),
              Lines{"[" + std::to_string(EIO) + "] " + std::generic_category().message(EIO)});
}
