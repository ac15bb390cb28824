#include "ScriptedDesktop.h"
#include "System.h"
#include "datafile/DataFile.h"
#include "fingerprint/modHashing.h"

#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool ReadsFail = false;

// Root may write anything: these tests need the rights of somebody else.
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

// All reads of the program come here first.
extern "C" {
ssize_t __real_read(int, void*, size_t);                  // NOLINT(bugprone-reserved-identifier)
ssize_t __wrap_read(int handle, void* to, size_t count) { // NOLINT(bugprone-reserved-identifier)
    if (ReadsFail) {
        errno = EIO;
        return -1;
    }
    return __real_read(handle, to, count);
}
}

// Opening a pipe without a writer waits for ever.
std::vector<std::filesystem::path> NoPlainFiles(const std::filesystem::path& folder) {
    const auto pipe = folder / "pipe.htm";
    EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    return {folder, folder / "none", pipe, "/dev/null"};
}

TEST(Fingerprint, TellsInABoxThatReadingFailed) {
    World world;
    const auto file = world.Folder.Write("report", "bytes");
    ReadsFail = true;
    const std::string failed = modHashing::HashFile(world.Screen.Services, file, 100);
    ReadsFail = false;
    EXPECT_EQ(failed, "-1");
    EXPECT_EQ(world.TakeBoxes(),
              Lines{"[" + std::to_string(EIO) + "] " + std::generic_category().message(EIO)});
}

TEST(DataFile, ReplacesTheOldFileOrLeavesItAlone) {
    const TemporaryFolder folder;
    const AsNobody rights(folder);
    const auto ledger = std::make_unique<KillLedger>();
    const auto target = folder.Write("target.qvt", "old");
    const auto link = folder.Path / "link.qvt";
    const auto dangling = folder.Path / "dangling.qvt";
    std::filesystem::create_symlink("target.qvt", link);
    std::filesystem::create_symlink(folder.Path / "made.qvt", dangling);
    ASSERT_EQ(::chmod(target.c_str(), 0640), 0);

    Main::WriteDataFile(*ledger, link);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(std::filesystem::file_size(target), 3'080'401U);
    EXPECT_EQ(std::filesystem::status(target).permissions(), std::filesystem::perms(0640));
    Main::WriteDataFile(*ledger, dangling);
    EXPECT_TRUE(std::filesystem::is_symlink(dangling));
    EXPECT_EQ(std::filesystem::file_size(folder.Path / "made.qvt"), 3'080'401U);
    EXPECT_EQ(FilesIn(folder.Path), 4U);

    // A disk that fills up half way.
    (void)folder.Write("target.qvt", "old");
    rlimit saved{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t room : {rlim_t{0}, rlim_t{300'000}, rlim_t{3'080'400}}) {
        const rlimit tight{room, saved.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tight), 0);
        EXPECT_THROW(Main::WriteDataFile(*ledger, target), std::system_error);
        EXPECT_THROW(Main::WriteDataFile(*ledger, folder.Path / "new.qvt"), std::system_error);
    }
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &saved), 0);
    std::signal(SIGXFSZ, handler);
    // A target that may not be written, or is no file.
    ASSERT_EQ(::chmod(target.c_str(), 0440), 0);
    EXPECT_THROW(Main::WriteDataFile(*ledger, target), std::system_error);
    EXPECT_THROW(Main::WriteDataFile(*ledger, folder.Path), std::system_error);
    EXPECT_THROW(Main::WriteDataFile(*ledger, folder.Path / "none" / "x.qvt"), std::system_error);
    EXPECT_EQ(std::filesystem::file_size(target), 3U);
    EXPECT_EQ(FilesIn(folder.Path), 4U);

    // A folder that forbids new files.
    ASSERT_EQ(::chmod(target.c_str(), 0640), 0);
    (void)folder.Write("target.qvt", std::string(4'000'000, 'x'));
    ASSERT_EQ(::chmod(folder.Path.c_str(), 0500), 0);
    Main::WriteDataFile(*ledger, target);
    EXPECT_THROW(Main::WriteDataFile(*ledger, folder.Path / "new.qvt"), std::system_error);
    EXPECT_EQ(std::filesystem::file_size(target), 3'080'401U);
    ASSERT_EQ(::chmod(folder.Path.c_str(), 0700), 0);
}
