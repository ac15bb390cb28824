#include "ScriptedDesktop.h"
#include "System.h"
#include "SystemCalls.h"
#include "datafile/DataFile.h"
#include "files/FileReplacement.h"
#include "fingerprint/modHashing.h"

#include <chrono>
#include <fcntl.h>
#include <linux/magic.h>
#include <map>
#include <set>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t BlockStride = 25; // a save takes ten times as long
#else
constexpr std::size_t BlockStride = 1;
#endif

// A data file, and a ledger to be saved over it.
struct SavedGame {
    SavedGame() {
        EXPECT_TRUE(Save());
        OldBytes = ReadAll(Path);
        Ledger->CharacterNames[1] = "new";
        EXPECT_TRUE(Save());
        NewBytes = ReadAll(Path);
        Restore();
    }
    [[nodiscard]] bool Save() const {
        return Outcome([this] { return Main::WriteDataFile(*Ledger, Path), true; }).has_value();
    }
    void Restore() const { (void)Folder.Write("tallies.qvt", OldBytes); }
    [[nodiscard]] bool IsOld() const { return ReadAll(Path) == OldBytes; }
    [[nodiscard]] bool IsNew() const { return ReadAll(Path) == NewBytes; }
    [[nodiscard]] std::size_t Strays() const { return FilesIn(Folder.Path) - 1; }

    TemporaryFolder Folder;
    std::filesystem::path Path = Folder.Path / "tallies.qvt";
    std::unique_ptr<KillLedger> Ledger = std::make_unique<KillLedger>();
    std::string OldBytes, NewBytes;
};

constexpr uid_t Nobody = 65534;

// Root may do anything: some tests need the rights of another user, who owns the folder.
struct AsNobody {
    explicit AsNobody(const TemporaryFolder& folder) : User(::geteuid()) {
        if (User == 0) {
            EXPECT_EQ(::chown(folder.Path.c_str(), Nobody, Nobody) + ::seteuid(Nobody), 0);
        }
    }
    ~AsNobody() { EXPECT_EQ(::seteuid(User), 0); }

    uid_t User;
};

mode_t ModeOf(const std::filesystem::path& path) {
    return static_cast<mode_t>(std::filesystem::status(path).permissions());
}

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
    for (std::size_t room = 0; room < game.NewBytes.size(); room += 4096 * BlockStride) {
        const rlimit tight{room, whole.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
        EXPECT_FALSE(game.Save());
        EXPECT_THROW(Main::WriteDataFile(*game.Ledger, game.Folder.Path / "x"), std::system_error);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
        ASSERT_TRUE(game.IsOld() && game.Strays() == 0) << room;
    }
}

// The old file or the new one, and the new one if the save succeeded. A signal makes none fail, nor
// does a disk without permissions or of unknown kind, nor a temporary name that is taken.
TEST(Faults, EachCallOfASaveFails) {
    const SavedGame game;
    int calls = 1;
    for (int fault = 0; fault < calls; ++fault) {
        for (const int error : {EEXIST, ENOSPC, EIO, EINTR}) {
            game.Restore();
            calls = 0;
            bool mustFail = false;
            const Intervene intervene([&](const SystemCall& call, const auto& make) {
                const bool fails = calls++ == fault && call.Name != "close";
                const bool mayFail = call.Name == "fchmod" || call.Name == "fstatfs" ||
                                     (error == EEXIST && (call.Flags & O_EXCL) != 0);
                mustFail = mustFail || (fails && error != EINTR && !mayFail);
                return fails ? FailWith(error) : make();
            });
            const bool done = game.Save();
            EXPECT_NE(done, mustFail) << fault;
            EXPECT_TRUE(game.IsNew() || (!done && game.IsOld())) << fault;
            EXPECT_EQ(game.Strays(), 0U) << fault;
        }
    }
    EXPECT_GT(calls, 20);
}

// A save deletes day-old temporary files of killed saves, and nothing else that looks like one.
TEST(Saves, DeleteOldTemporaryFiles) {
    const SavedGame game;
    const auto in = [&](const std::string& name) { return game.Folder.Path / name; };
    const Lines lookalikes = Fields("-notes,-1,-1-,--1,-1-1.qvt,-1-1-old", ',');
    for (const std::string& ending : lookalikes) {
        game.Folder.Write(".slaying-tallies" + ending, "");
    }
    game.Folder.Write("1-1", "");
    game.Folder.Write(".slaying-tallies-4711-0", "");
    std::filesystem::create_directory(in(".slaying-tallies-1-1"));
    for (const auto& file : std::filesystem::directory_iterator(game.Folder.Path)) {
        last_write_time(file, last_write_time(file) - std::chrono::hours(25));
    }
    std::filesystem::create_symlink("1-1", in(".slaying-tallies-1-2"));
    game.Folder.Write(".slaying-tallies-4711-1", "");
    EXPECT_TRUE(game.Save());
    EXPECT_EQ(game.Strays(), lookalikes.size() + 4);
    EXPECT_FALSE(std::filesystem::exists(in(".slaying-tallies-4711-0")));
}

namespace {

// What a power cut can leave of a folder: of its changes, any number from the first, but all that
// were synced; of a file, all bytes written to it or those of its last sync. A FAT disk has a
// change only once the file itself is synced. It reuses the space of a file that has neither a name
// nor a handle, even if the disk has its name, and of one synced before the folder, a day later.
class Disk {
public:
    struct File {
        std::string Bytes, Synced;
    };
    using Names = std::map<std::string, std::shared_ptr<File>, std::less<>>;

    Disk(bool fat, const std::string& path, const std::string& bytes)
        : IsFat(fat),
          Present{{path, std::make_shared<File>(File{bytes, bytes})}} {}

    // Follows a call that succeeded.
    void Follow(const SystemCall& call, long result) {
        const std::string path(call.Path);
        const auto file = Handles.find(call.Handle);
        const bool isFile = file != Handles.end();
        if (call.Name == "open" && (call.Flags & O_DIRECTORY) == 0) {
            if (!Present.contains(path)) {
                Present[path] = std::make_shared<File>();
                std::ofstream(path) << std::string(4'000'000, 'x'); // as after a device error
                Left.push_back(Present);
            }
            Handles[result] = Present[path];
        } else if (call.Name == "write") {
            file->second->Bytes += call.Other.substr(0, static_cast<std::size_t>(result));
            SpaceIsSafe = !IsFat;
        } else if (call.Name == "rename") {
            const auto old = Present[std::string(call.Other)];
            EXPECT_EQ(IsFat, IsOpen(old)) << "a network share would lose both files";
            Present[std::string(call.Other)] = Present[path];
            Present.erase(path);
            Left.push_back(Present);
        } else if (call.Name == "close") {
            Handles.erase(call.Handle);
        } else if (call.Name == "fsync") {
            SpaceIsSafe |= !isFile;
            if (isFile) {
                file->second->Synced = SpaceIsSafe ? file->second->Bytes : "reused";
            }
            if (isFile == IsFat) {
                Left = {Present};
            }
        }
    }

    // What the disk can have under this name.
    [[nodiscard]] std::set<std::string> Contents(const std::string& path) const {
        std::set<std::string> contents;
        for (const Names& names : Left) {
            const auto& file = names.at(path);
            const bool isFree = Present.at(path) != file && !IsOpen(file);
            contents.insert({IsFat && isFree ? "reused" : file->Bytes, file->Synced});
        }
        return contents;
    }

private:
    [[nodiscard]] bool IsOpen(const std::shared_ptr<File>& file) const {
        return std::ranges::count(Handles, file, &decltype(Handles)::value_type::second) > 0;
    }

    bool IsFat;
    bool SpaceIsSafe = true;          // of what was written last
    Names Present;                    // as the system has them
    std::vector<Names> Left{Present}; // as the disk can have them
    std::map<long, std::shared_ptr<File>> Handles;
};

} // namespace

// The old file or the new one, also if the program is killed; the new one once the save is done.
TEST(Faults, PowerCutAfterEachCallOfASave) {
    for (const bool fat : {false, true}) {
        const SavedGame game;
        const std::set whole{game.OldBytes, game.NewBytes};
        Disk disk(fat, game.Path, game.OldBytes);
        const Intervene intervene([&](const SystemCall& call, const auto& make) {
            if (call.Name == "fstatfs" && fat) {
                return long{MSDOS_SUPER_MAGIC};
            }
            const long result = make();
            EXPECT_GE(result, 0) << call.Name;
            disk.Follow(call, result);
            EXPECT_TRUE(std::ranges::includes(whole, disk.Contents(game.Path))) << call.Name;
            return result;
        });
        EXPECT_TRUE(game.Save() && game.IsNew());
        EXPECT_TRUE(disk.Contents(game.Path) == std::set{game.NewBytes});
    }
}

// The first two renamings fail, or all of the old file, of the new one, to the file's name, or all.
// A failed save leaves the old file, in the last two cases the new one as well.
TEST(Faults, RenamingOnAShareFails) {
    for (int fault = 0; fault < 5; ++fault) {
        const SavedGame game;
        const long type = fault == 0 ? CIFS_SUPER_MAGIC : SMB2_SUPER_MAGIC;
        int renamings = 0;
        const Intervene intervene([&](const SystemCall& call, const auto& make) {
            if (call.Name != "rename") {
                return call.Name == "fstatfs" ? type : make();
            }
            const bool toName = call.Other == game.Path.native();
            const bool ofNew = toName && !call.Path.ends_with("-old");
            const bool fails[] = {renamings++ < 2, !toName, ofNew, toName, true};
            EXPECT_TRUE(fault == 1 || fault == 4 || !std::filesystem::exists(call.Other));
            return fails[fault] ? FailWith(EBUSY) : make();
        });
        EXPECT_EQ(game.Save(), fault < 2);
        EXPECT_TRUE(fault < 2 ? game.IsNew() : fault == 3 || game.IsOld()) << fault;
        EXPECT_EQ(game.Strays(), fault < 3 ? 0U : 1U) << fault;
    }
}

TEST(Saves, KeepLinksAndPermissions) {
    const SavedGame game;
    const AsNobody rights(game.Folder);
    const auto in = [&](const char* name) { return game.Folder.Path / name; };
    // A link stays a link, also one to a file that does not exist yet.
    std::filesystem::create_symlink("own.qvt", in("link"));
    std::filesystem::create_symlink(in("made.qvt"), in("dangling"));
    std::filesystem::create_symlink("circle", in("circle"));
    const auto own = game.Folder.Write("own.qvt", "old");
    ASSERT_EQ(::chmod(own.c_str(), 0640), 0);
    for (const char* link : {"link", "dangling"}) {
        Main::WriteDataFile(*game.Ledger, in(link));
        EXPECT_TRUE(std::filesystem::is_symlink(in(link)));
    }
    EXPECT_TRUE(ReadAll(own) == game.NewBytes && ReadAll(in("made.qvt")) == game.NewBytes);
    EXPECT_EQ(ModeOf(own), 0640U);
    // No one else can ever read a private file.
    ASSERT_EQ(::chmod(own.c_str(), 0600), 0);
    const FileReplacement replacement(own);
    for (const auto& file : std::filesystem::directory_iterator(game.Folder.Path)) {
        EXPECT_TRUE(file.path().filename().string()[0] != '.' || ModeOf(file) == 0600) << file;
    }
    // What cannot be written to stays as it is.
    ASSERT_EQ(::chmod(own.c_str(), 0440), 0);
    game.Ledger->GameNumber = 5;
    for (const auto& target : {own, game.Folder.Path, in("none/x.qvt"), in("circle"), game.Path}) {
        EXPECT_THROW(Main::WriteDataFile(*game.Ledger, target), std::system_error);
    }
    EXPECT_TRUE(ReadAll(own) == game.NewBytes && game.IsOld());
}

// In place where the folder forbids new files, or replacing somebody else's. A folder that may be
// changed but not read cannot be synced, which is no failure.
TEST(Saves, DoWithoutWhatTheSystemRefuses) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can make files of other users";
    }
    const SavedGame game;
    for (const mode_t mode : {0500U, 0300U, 01777U}) {
        const auto folder = game.Folder.Path / std::to_string(mode);
        std::filesystem::create_directory(folder);
        const auto theirs = folder / "theirs.qvt";
        std::ofstream(theirs) << std::string(4'000'000, 'x');
        ASSERT_EQ(::chmod(theirs.c_str(), 0666) + ::chmod(folder.c_str(), mode), 0);
        ASSERT_EQ(::chown(folder.c_str(), mode == 01777 ? ::geteuid() : Nobody, Nobody), 0);
        // Anybody may create files in the last of them, but a link of another user leads nowhere.
        std::filesystem::create_symlink(game.Folder.Path / "mine.qvt", folder / "link.qvt");
        const AsNobody rights(game.Folder);
        Main::WriteDataFile(*game.Ledger, theirs);
        EXPECT_EQ(std::filesystem::file_size(theirs), game.NewBytes.size()) << mode;
        if (mode == 0500) {
            EXPECT_THROW(Main::WriteDataFile(*game.Ledger, folder / "new"), std::system_error);
        }
    }
    const auto shared = game.Folder.Path / std::to_string(01777);
    ASSERT_EQ(::lchown((shared / "link.qvt").c_str(), Nobody, Nobody), 0);
    EXPECT_THROW(Main::WriteDataFile(*game.Ledger, shared / "link.qvt"), std::system_error);
    EXPECT_FALSE(std::filesystem::exists(game.Folder.Path / "mine.qvt"));
}

namespace {

constexpr const char* AccessList = "system.posix_acl_access";

// Lets the owner, and as far as the owning group's rights go user 1, read and write.
std::string AccessListWith(char groupRights) {
    const std::string nobody(4, '\xFF');
    const auto entry = [](char tag, char rights) { return std::string{tag, 0, rights, 0}; };
    return std::string{2, 0, 0, 0} + entry(1, 6) + nobody + entry(2, 6) + std::string{1, 0, 0, 0} +
           entry(4, groupRights) + nobody + entry(16, 6) + nobody + entry(32, 0) + nobody;
}

} // namespace

TEST(Saves, KeepAccessListsAndTakeNoneFromTheFolder) {
    const SavedGame game;
    const auto set = [](const auto& path, const char* attribute, const std::string& list) {
        return ::setxattr(path.c_str(), attribute, list.data(), list.size(), 0);
    };
    if (set(game.Path, AccessList, AccessListWith(0)) != 0) {
        GTEST_SKIP() << "no access lists on this disk";
    }
    const auto plain = game.Folder.Write("plain.qvt", "old");
    ASSERT_EQ(::chmod(plain.c_str(), 0640), 0);
    ASSERT_EQ(set(game.Folder.Path, "system.posix_acl_default", AccessListWith(6)), 0);
    EXPECT_TRUE(game.Save());
    std::string list(AccessListWith(0).size(), ' ');
    EXPECT_GT(::getxattr(game.Path.c_str(), AccessList, list.data(), list.size()), 0);
    EXPECT_EQ(list, AccessListWith(0));
    Main::WriteDataFile(*game.Ledger, plain);
    EXPECT_EQ(::getxattr(plain.c_str(), AccessList, nullptr, 0), -1);
    EXPECT_EQ(ModeOf(plain), 0640U);
}

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
