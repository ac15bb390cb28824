#include "Ledgers.h"
#include "ScriptedDesktop.h"
#include "System.h"
#include "SystemCalls.h"
#include "datafile/DataFile.h"
#include "fingerprint/modHashing.h"
#include "platform/FileReplacement.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <iostream>
#include <random>
#include <sched.h>
#include <set>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
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
    // Whether the save succeeded.
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

// Runs `work` in a child process, which is killed after a while if one is given. Returns the status
// with which it ended.
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

// Root may do anything: these tests need the rights of another user, who owns the folder.
class AsNobody {
public:
    explicit AsNobody(const TemporaryFolder& folder) : User(::geteuid()) {
        if (User == 0 &&
            (::chown(folder.Path.c_str(), Nobody, Nobody) != 0 || ::seteuid(Nobody) != 0)) {
            throw std::system_error(errno, std::generic_category());
        }
    }
    ~AsNobody() { EXPECT_EQ(::seteuid(User), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

    static constexpr uid_t Nobody = 65534;

private:
    uid_t User;
};

} // namespace

// Opening a pipe without a writer waits for ever.
std::vector<std::filesystem::path> NoRegularFiles(const std::filesystem::path& folder) {
    const auto pipe = folder / "pipe.htm";
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    return {folder, folder / "none", pipe, "/dev/null"};
}

// The old file, whole, or none if there was none.
TEST(Faults, DiskFullAtEveryBlockOfASave) {
    const SavedGame game;
    rlimit whole{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &whole), 0);
    PrepareProcess(); // or the limit would end the process
    int faults = 0;
    for (std::size_t room = 0; room < game.NewBytes.size(); room += 4096 * BlockStride) {
        const rlimit tight{room, whole.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
        EXPECT_FALSE(game.Save());
        if (faults % 16 == 0) {
            EXPECT_THROW(Main::WriteDataFile(*game.Ledger, game.Folder.Path / "x"),
                         std::system_error);
        }
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
        ASSERT_TRUE(game.IsOld() && game.Strays() == 0) << room;
        ++faults;
    }
    EXPECT_TRUE(game.Save());
    std::cout << faults << " blocks\n";
}

// The old file or the new one, and the new one if the save succeeded. A signal makes none fail.
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
                make(); // the handle is closed in any case
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
            EXPECT_TRUE(done || error != EINTR) << failed;
        }
        ++fault;
    } while (!failed.empty());
    EXPECT_GT(fault, 20);
    std::cout << fault - 1 << " calls\n";
}

namespace {

// What a power cut can leave of a folder. A file has all bytes written to it, or those of its last
// sync. Of the changes of the folder since its last sync, the disk has any number from the first.
// A FAT disk has them only once the file itself is synced, and writes over a file that has neither
// a name nor a handle, though the disk still has its name.
class Disk {
public:
    struct File {
        std::string Bytes, Synced;
    };
    using Names = std::map<std::string, std::shared_ptr<File>, std::less<>>;

    Disk(bool fat, const std::string& path, const std::string& bytes)
        : IsFat(fat), Present{{path, std::make_shared<File>(File{bytes, bytes})}}, States{Present} {
    }

    // Follows a call that succeeded.
    void Follow(const SystemCall& call, long result) {
        const std::string path(call.Path);
        if (call.Name == "open" && (call.Flags & O_DIRECTORY) == 0) {
            if ((call.Flags & O_CREAT) != 0) {
                Present[path] = std::make_shared<File>();
                States.push_back(Present);
            }
            Handles[result] = Present.at(path);
        } else if (call.Name == "write") {
            Handles.at(call.Handle)->Bytes +=
                call.Other.substr(0, static_cast<std::size_t>(result));
        } else if (call.Name == "rename") {
            Present[std::string(call.Other)] = Present.at(path);
            Present.erase(path);
            States.push_back(Present);
        } else if (call.Name == "close") {
            Handles.erase(call.Handle);
        } else if (call.Name == "fsync") {
            const auto file = Handles.find(call.Handle);
            const bool isFile = file != Handles.end();
            if (isFile) {
                file->second->Synced = file->second->Bytes;
            }
            if (isFile == IsFat) {
                States = {Present};
            }
        }
    }

    // What the disk can have under this name.
    [[nodiscard]] Lines Contents(const std::string& path) const {
        Lines contents;
        for (const Names& names : States) {
            const auto& file = names.at(path);
            const auto isFile = [&file](const auto& entry) { return entry.second == file; };
            const bool isFree = std::none_of(Present.begin(), Present.end(), isFile) &&
                                std::none_of(Handles.begin(), Handles.end(), isFile);
            contents.push_back(IsFat && isFree ? "written over" : file->Bytes);
            contents.push_back(file->Synced);
        }
        return contents;
    }

private:
    bool IsFat;
    Names Present;             // as the system has them
    std::vector<Names> States; // as the disk can have them
    std::map<long, std::shared_ptr<File>> Handles;
};

} // namespace

// The old file or the new one, and the new one once the save is done.
TEST(Faults, PowerCutAfterEachCallOfASave) {
    for (const bool fat : {false, true}) {
        const SavedGame game;
        Disk disk(fat, game.Path, game.OldBytes);
        int states = 0;
        const auto watch = [&](const SystemCall& call, const auto& make) {
            const long result = make();
            disk.Follow(call, result);
            for (const std::string& bytes : disk.Contents(game.Path)) {
                EXPECT_TRUE(bytes == game.NewBytes || bytes == game.OldBytes) << call.Name;
                ++states;
            }
            return result;
        };
        const Intervene intervene(watch);
        EXPECT_TRUE(game.Save());
        const Lines left = disk.Contents(game.Path);
        EXPECT_EQ(std::count(left.begin(), left.end(), game.NewBytes), std::ssize(left));
        std::cout << states << " states\n";
    }
}

// The old file or the new one, and at most one temporary file for each kill.
TEST(Faults, KilledAtRandomMomentsOfASave) {
    const SavedGame game;
    auto length = std::chrono::microseconds(20'000); // of a save, adjusted on the way
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
    // A save deletes them once they are a day old, but nothing else that looks like them.
    const auto in = [&](const char* name) { return game.Folder.Path / name; };
    for (const char* name : {".slaying-tallies-notes", ".slaying-tallies-1", ".slaying-tallies-1-",
                             ".slaying-tallies--1", ".slaying-tallies-1-1.qvt", "other"}) {
        game.Folder.Write(name, "");
    }
    std::filesystem::create_directory(in(".slaying-tallies-1-1"));
    EXPECT_TRUE(game.Save());
    EXPECT_EQ(game.Strays(), strays + 7);
    for (const auto& file : std::filesystem::directory_iterator(game.Folder.Path)) {
        last_write_time(file, last_write_time(file) - std::chrono::hours(25));
    }
    std::filesystem::create_symlink("other", in(".slaying-tallies-1-2"));
    EXPECT_TRUE(game.Save());
    EXPECT_EQ(game.Strays(), 8U);
    EXPECT_TRUE(game.IsNew());
}

// No printed word gets into the player's file.
TEST(Faults, StandardStreamsClosedAtTheStart) {
    const SavedGame game;
    EXPECT_EQ(InChild([&] {
                  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
                      ::close(stream);
                  }
                  PrepareProcess();
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

TEST(Saves, KeepLinksAndPermissions) {
    const SavedGame game;
    const AsNobody rights(game.Folder);
    const auto in = [&](const char* name) { return game.Folder.Path / name; };
    // A link stays a link, also one to a file that does not exist yet.
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
    // While it is written, nobody else can read it.
    ASSERT_EQ(::chmod(own.c_str(), 0600), 0);
    const Intervene intervene([&](const SystemCall& call, const auto& make) {
        if (call.Name == "write") {
            struct stat status {};
            EXPECT_EQ(::fstat(call.Handle, &status), 0);
            EXPECT_EQ(status.st_mode & 0777, 0600U);
        }
        return make();
    });
    Main::WriteDataFile(*game.Ledger, own);
    // What cannot be written to stays as it is.
    ASSERT_EQ(::chmod(own.c_str(), 0440), 0);
    game.Ledger->GameNumber = 5;
    std::filesystem::create_symlink("circle", in("circle"));
    for (const auto& target : {own, game.Folder.Path, in("none/x.qvt"), in("circle"), game.Path}) {
        EXPECT_THROW(Main::WriteDataFile(*game.Ledger, target), std::system_error);
    }
    EXPECT_TRUE(ReadAll(own) == game.NewBytes && game.IsOld());
    EXPECT_EQ(game.Strays(), 5U);
}

// In place: where the folder forbids new files, and where the file is a mount of its own. A folder
// that may be changed but not read cannot be synced, which is no reason to fail.
TEST(Saves, DoWithoutWhatTheSystemRefuses) {
    const SavedGame game;
    const auto own = game.Folder.Write("own.qvt", std::string(4'000'000, 'x'));
    ASSERT_EQ(::chown(own.c_str(), AsNobody::Nobody, AsNobody::Nobody), 0);
    {
        const AsNobody rights(game.Folder);
        ASSERT_EQ(::chmod(game.Folder.Path.c_str(), 0500), 0);
        Main::WriteDataFile(*game.Ledger, own);
        EXPECT_TRUE(ReadAll(own) == game.NewBytes);
        EXPECT_THROW(Main::WriteDataFile(*game.Ledger, game.Folder.Path / "new.qvt"),
                     std::system_error);
        ASSERT_EQ(::chmod(game.Folder.Path.c_str(), 0300), 0);
        Main::WriteDataFile(*game.Ledger, own);
        ASSERT_EQ(::chmod(game.Folder.Path.c_str(), 0700), 0);
    }
    const int status = InChild([&] {
        const bool mounted =
            ::unshare(CLONE_NEWNS) == 0 &&
            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
            ::mount(own.c_str(), game.Path.c_str(), nullptr, MS_BIND, nullptr) == 0;
        ::_exit(!mounted ? 2 : game.Save() && game.IsNew() ? 0 : 1);
    });
    if (WEXITSTATUS(status) == 2) {
        GTEST_SKIP() << "this machine lets nobody mount a file";
    }
    EXPECT_EQ(status, 0);
}

// In a folder where everybody may create files, another user's link leads nowhere.
TEST(Saves, FollowNoLinkThatSomebodyElseMadeInASharedFolder) {
    const SavedGame game;
    const auto shared = game.Folder.Path / "shared";
    std::filesystem::create_directory(shared);
    ASSERT_EQ(::chmod(shared.c_str(), 01777), 0);
    std::filesystem::create_symlink(game.Folder.Path / "mine.qvt", shared / "theirs.qvt");
    std::filesystem::create_symlink(shared / "theirs.qvt", game.Folder.Path / "link.qvt");
    ASSERT_EQ(::lchown((shared / "theirs.qvt").c_str(), 1, 1), 0);
    EXPECT_THROW(Main::WriteDataFile(*game.Ledger, game.Folder.Path / "link.qvt"),
                 std::system_error);
    EXPECT_FALSE(std::filesystem::exists(game.Folder.Path / "mine.qvt"));
}

namespace {

// An access list by which the owner may read and write, the mask is rw, and user 1 may read.
std::string AccessListOf(char ownersGroup) {
    const std::string none(4, '\xFF');
    const auto entry = [](char tag, char rights) { return std::string{tag, 0, rights, 0}; };
    return std::string{2, 0, 0, 0} + entry(1, 6) + none + entry(2, 4) + std::string{1, 0, 0, 0} +
           entry(4, ownersGroup) + none + entry(16, 6) + none + entry(32, 0) + none;
}

std::string AccessListAt(const std::filesystem::path& path) {
    std::string list(1000, '\0');
    const auto size = ::getxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size());
    return list.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size));
}

} // namespace

TEST(Saves, KeepAccessListsAndTakeNoneFromTheFolder) {
    const SavedGame game;
    const auto set = [](const auto& path, const char* attribute, const std::string& list) {
        return ::setxattr(path.c_str(), attribute, list.data(), list.size(), 0);
    };
    const std::string list = AccessListOf(0);
    if (set(game.Path, "system.posix_acl_access", list) != 0) {
        GTEST_SKIP() << "no access lists on this disk";
    }
    ASSERT_EQ(set(game.Folder.Path, "system.posix_acl_default", AccessListOf(6)), 0);
    EXPECT_TRUE(game.Save());
    EXPECT_EQ(AccessListAt(game.Path), list);
    const auto plain = game.Folder.Write("plain.qvt", "old");
    ASSERT_EQ(::removexattr(plain.c_str(), "system.posix_acl_access"), 0);
    ASSERT_EQ(::chmod(plain.c_str(), 0640), 0);
    Main::WriteDataFile(*game.Ledger, plain);
    EXPECT_EQ(AccessListAt(plain), "");
    EXPECT_EQ(std::filesystem::status(plain).permissions(), std::filesystem::perms(0640));
}

// Another program that has a lease on the file is asked to let go of it, and waited for.
TEST(Saves, WaitForTheEndOfALease) {
    const SavedGame game;
    for (int turn = 0; turn < 2; ++turn) {
        int ready[2]{};
        ASSERT_EQ(::pipe(ready), 0);
        const pid_t holder = ::fork();
        if (holder == 0) {
            const int handle = ::open(game.Path.c_str(), O_RDWR);
            const char leased = ::fcntl(handle, F_SETLEASE, F_WRLCK) == 0 ? 'y' : 'n';
            (void)!::write(ready[1], &leased, 1);
            ::pause(); // the signal that asks for the file ends the process
            ::_exit(0);
        }
        char leased = 'n';
        EXPECT_EQ(::read(ready[0], &leased, 1), 1);
        EXPECT_EQ(leased, 'y');
        const auto loaded = std::make_unique<KillLedger>();
        EXPECT_TRUE(turn == 0 ? Main::ReadDataFile(*loaded, game.Path) : game.Save());
        EXPECT_EQ(::waitpid(holder, nullptr, 0), holder);
        ::close(ready[0]);
        ::close(ready[1]);
    }
    EXPECT_TRUE(game.IsNew());
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

using Fault = std::function<long(const std::function<long()>& make)>;

// Imports a report, or opens a data file over a full ledger, with `fault` in place of read number
// `at`. Returns the tallies, or how many fields are from the data file. No file stays open, and
// status and pointer are as before.
std::string ReadWithFault(const std::filesystem::path& file, int at, const Fault& fault) {
    World world;
    const bool isReport = file.extension() == ".html";
    if (!isReport) {
        world.Ledger = *FullLedger(Old);
    }
    const auto handles = FilesIn("/proc/self/fd");
    int reads = 0;
    {
        const Intervene intervene([&](const SystemCall& call, const auto& make) {
            return call.Name == "read" && reads++ == at ? fault(make) : make();
        });
        world.Screen.Choices = {file};
        (isReport ? world.Window.mnuFileImport : world.Window.mnuFileOpen).Click();
    }
    EXPECT_EQ(FilesIn("/proc/self/fd"), handles);
    EXPECT_EQ(world.Window.Window.MousePointer.Get(), Pointer::Default);
    EXPECT_EQ(world.Window.lblStatus.Caption.Get(), "");
    EXPECT_EQ(world.TakeBoxes(), Lines{});
    return isReport ? world.Tallies() : std::to_string(Compare(world.Ledger).NewFields);
}

} // namespace

// All before the fault is kept; a signal is none.
TEST(Reads, FailInTheMiddleOfAReportOrDataFile) {
    const TemporaryFolder folder;
    const auto report = folder.Write("report.html", LongReport());
    const auto file = folder.Path / "full.qvt";
    Main::WriteDataFile(*FullLedger(New), file);
    const Fault fail = [](const auto&) { return FailWith(EIO); };
    const Fault interrupt = [](const auto&) { return FailWith(EINTR); };
    std::set<std::string> seen;
    for (int at = 0; at < 50 && seen.count(Kept.back()) == 0; ++at) {
        const std::string kept = ReadWithFault(report, at, fail);
        EXPECT_TRUE(seen.empty() || kept.size() >= seen.rbegin()->size()) << at;
        seen.insert(kept);
        EXPECT_EQ(ReadWithFault(report, at, interrupt), Kept.back());
    }
    EXPECT_EQ(seen, std::set<std::string>(Kept.begin(), Kept.end()));
    for (const int at : {0, 1, 2, 40}) {
        const int fields = std::stoi(ReadWithFault(file, at, fail));
        EXPECT_GE(fields, at * 1'500);
        EXPECT_LE(fields, at * 20'000);
    }
    EXPECT_EQ(ReadWithFault(file, 5, interrupt), std::to_string(FieldCount));
}

// Once a file is open, what others put in its place makes no difference. It is read to its end,
// wherever that is by then.
TEST(Reads, GoOnWhateverBecomesOfTheFile) {
    const TemporaryFolder folder;
    const auto report = folder.Path / "report.html";
    const auto replace = [&] {
        std::filesystem::rename(folder.Write("aside", "Dora: killing 4 Dogs\n\n"), report);
    };
    const auto append = [&] {
        std::ofstream(report, std::ios::app) << "\r\nDora: killing 4 Dogs\n\n";
    };
    const std::vector<std::pair<std::function<void()>, std::string>> changes = {
        {[&] { std::filesystem::remove(report); }, Kept[3]},
        {[&] { std::filesystem::resize_file(report, 0); }, Kept[1]},
        {replace, Kept[3]},
        {append, Kept[3] + " + Dora: Dogs 4"}};
    for (const auto& [change, tallies] : changes) {
        folder.Write("report.html", LongReport());
        const Fault during = [&change = change](const auto& make) {
            change();
            return make();
        };
        EXPECT_EQ(ReadWithFault(report, 1, during), tallies);
    }
}

// A file or folder that may not be read leaves the ledger as it is, and shows no message.
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
// That the other tests report no leak is not because nothing looks for any.
TEST(Sanitizers, ReportALeak) {
    const auto leak = [] {
        int* volatile lost = new int;
        lost = nullptr;
        std::exit(lost == nullptr ? 0 : 1);
    };
    EXPECT_EXIT(
        leak(), [](int status) { return status != 0; }, "LeakSanitizer");
}
#endif

TEST(Fingerprint, ReportsInABoxThatReadingFailed) {
    World world;
    const auto file = world.Folder.Write("report", "bytes");
    const Intervene intervene([](const SystemCall& call, const auto& make) {
        return call.Name == "read" ? FailWith(EIO) : make();
    });
    EXPECT_EQ(modHashing::HashFile(world.Screen.Services, file, 100), "-1");
    EXPECT_EQ(world.TakeBoxes(),
              Lines{"[" + std::to_string(EIO) + "] " + std::generic_category().message(EIO)});
}
