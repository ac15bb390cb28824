#include "files/RawFile.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

[[noreturn]] void Fail(int code) {
    throw std::system_error(code, std::generic_category());
}

// Repeats a system call until no signal interrupts it, and up to `waits` times, with 50 ms between,
// if it fails. Returns its result, -1 if it failed.
template <class Call>
auto Retry(Call call, int waits = 0) {
    auto result = call();
    while (result == -1 && (errno == EINTR || waits-- > 0)) {
        ::usleep(errno == EINTR ? 0 : 50'000);
        result = call();
    }
    return result;
}

// As Retry, but throws if the call failed.
template <class Call>
auto Require(Call call) {
    const auto result = Retry(call);
    if (result == -1) {
        Fail(errno);
    }
    return result;
}

struct stat StatusOf(int handle) {
    struct stat status {};
    Require([&] { return ::fstat(handle, &status); });
    return status;
}

// The status is looked at first, since opening alone can move a tape, wake a pipe or wait for one.
int OpenRegularFile(const std::filesystem::path& path, int flags) {
    struct stat status {};
    Require([&] { return ::stat(path.c_str(), &status); });
    if (!S_ISREG(status.st_mode)) {
        Fail(S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    }
    return Require([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY); });
}

// The rule by which the kernel protects links, where that is switched on: in a folder where
// everybody may create files but delete only their own, it does not follow somebody else's.
bool MayFollow(const std::filesystem::path& link) {
    struct stat folder {};
    struct stat status {};
    Require([&] { return ::stat((link.parent_path() / ".").c_str(), &folder); });
    Require([&] { return ::lstat(link.c_str(), &status); });
    constexpr mode_t shared = S_ISVTX | S_IWOTH;
    return (folder.st_mode & shared) != shared || status.st_uid == ::geteuid() ||
           status.st_uid == folder.st_uid;
}

// Where a chain of links leads that ends at no file yet.
std::filesystem::path FollowDangling(std::filesystem::path path) {
    constexpr int mostLinks = 40; // as many as the kernel follows
    for (int links = 0; std::filesystem::is_symlink(path); ++links) {
        if (links == mostLinks || !MayFollow(path)) {
            Fail(EACCES);
        }
        path = path.parent_path() / std::filesystem::read_symlink(path);
    }
    return std::filesystem::absolute(path);
}

// Brings the names in a folder to the disk. A folder that may be changed but not read, or one on a
// file system that cannot sync folders, is left to the system: the save counts as done.
void SyncFolder(const std::filesystem::path& folder) {
    const int handle =
        Retry([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (handle == -1 && errno == EACCES) {
        return;
    }
    const bool synced = handle != -1 && Retry([&] { return ::fsync(handle); }) == 0;
    const int code = errno;
    if (handle != -1) {
        ::close(handle);
    }
    if (!synced && code != EINVAL) {
        Fail(code);
    }
}

constexpr const char* AccessList = "system.posix_acl_access";

bool NoAccessListFound() {
    return errno == ENODATA || errno == ENOTSUP;
}

// Copies a file's access list to another, if the two have the same owner and group. False if there
// is one that is not copied.
bool CopyAccessList(int from, int to, bool sameOwners) {
    std::string list(65536, '\0'); // the longest attribute there can be
    const auto size =
        Retry([&] { return ::fgetxattr(from, AccessList, list.data(), list.size()); });
    if (size >= 0) {
        return sameOwners &&
               ::fsetxattr(to, AccessList, list.data(), static_cast<std::size_t>(size), 0) == 0;
    }
    // The folder may have given the new file a list.
    return NoAccessListFound() && (::fremovexattr(to, AccessList) == 0 || NoAccessListFound());
}

} // namespace

RawFile::RawFile(const std::filesystem::path& path) : Handle(OpenRegularFile(path, O_RDONLY)) {}

RawFile RawFile::OpenTarget(const std::filesystem::path& path) {
    RawFile target;
    struct stat status {};
    if (Retry([&] { return ::stat(path.c_str(), &status); }) == -1 && errno == ENOENT) {
        target.Path = FollowDangling(path);
        return target;
    }
    target.Handle = OpenRegularFile(path, O_WRONLY);
    target.Path = std::filesystem::canonical(path);
    return target;
}

Creation RawFile::Create(const std::filesystem::path& path, const RawFile& like) {
    const mode_t mode = like.IsOpen() ? 0600 : 0666;
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    Handle = Retry([&] { return ::open(path.c_str(), flags, mode); });
    if (IsOpen()) {
        // After a device error it can be an earlier temporary file of a FAT disk, with its length.
        if (Retry([&] { return ::ftruncate(Handle, 0); }) == -1) {
            ::unlink(path.c_str());
            Fail(errno);
        }
        Path = path;
        return Creation::Done;
    }
    if (errno == EEXIST) {
        return Creation::NameTaken;
    }
    if (errno != EACCES && errno != EPERM) {
        Fail(errno);
    }
    return Creation::FolderForbids;
}

std::size_t RawFile::Read(std::span<char> buffer) {
    return static_cast<std::size_t>(
        Require([&] { return ::read(Handle, buffer.data(), buffer.size()); }));
}

std::uint64_t RawFile::Size() const {
    return static_cast<std::uint64_t>(StatusOf(Handle).st_size);
}

void RawFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = Require([&] { return ::write(Handle, bytes.data(), bytes.size()); });
        if (count == 0) {
            Fail(EIO);
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void RawFile::Truncate() {
    const off_t place = Require([&] { return ::lseek(Handle, 0, SEEK_CUR); });
    Require([&] { return ::ftruncate(Handle, place); });
}

void RawFile::Sync() {
    Require([&] { return ::fsync(Handle); });
}

void RawFile::Close() noexcept {
    if (IsOpen()) {
        ::close(std::exchange(Handle, NoHandle));
    }
}

// Not in a folder where everybody may delete only their own files, nor if it is a mount of its own.
bool RawFile::CanBeReplaced() const {
    struct stat folder {};
    Require([&] { return ::stat(Path.parent_path().c_str(), &folder); });
    const uid_t self = ::geteuid();
    const bool kept = (folder.st_mode & S_ISVTX) != 0 && self != 0 && self != folder.st_uid &&
                      self != StatusOf(Handle).st_uid;
    struct statx mount {};
    const bool isMount = ::statx(AT_FDCWD, Path.c_str(), 0, 0, &mount) == 0 &&
                         (mount.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    return !kept && !isMount;
}

// What the system refuses is left: some file systems have no owners and permissions, and only the
// superuser can give a file to somebody else. Nobody gets rights that he did not have: the old
// owner now counts as one of the group or the others, and the old group as others.
void RawFile::CopyRights(const RawFile& from) {
    const struct stat old = StatusOf(from.Handle);
    const struct stat made = StatusOf(Handle);
    const bool sameOwner =
        made.st_uid == old.st_uid || ::fchown(Handle, old.st_uid, static_cast<gid_t>(-1)) == 0;
    const bool sameGroup =
        made.st_gid == old.st_gid || ::fchown(Handle, static_cast<uid_t>(-1), old.st_gid) == 0;
    constexpr mode_t all = 7;
    const mode_t owner = (old.st_mode >> 6) & all;
    mode_t group = (old.st_mode >> 3) & all;
    mode_t others = old.st_mode & all;
    if (!sameOwner) {
        group &= owner;
        others &= owner;
    }
    if (!sameGroup) {
        others &= group;
        group = 0;
    }
    if (!CopyAccessList(from.Handle, Handle, sameOwner && sameGroup)) {
        group = 0;
        others = 0;
    }
    // Last: a change of owner or access list changes it.
    ::fchmod(Handle, owner << 6 | group << 3 | others);
}

// A FAT file system is different in three ways:
// - It may write the length of a file before the table that says which clusters are used. After a
//   power cut the next file then gets the same clusters, and loses them when this one is deleted.
//   Syncing the folder writes the table.
// - It writes the new name only when the file itself is synced.
// - It reuses the space of the replaced file as soon as nobody has it open: there it stays open
//   until all is on the disk.
//
// A share refuses to replace an open file, and the kernel then deletes it. So the old file is first
// closed and renamed, to a name that no sweep takes, and deleted last. Where another program lets
// nobody rename or delete it, some shares still replace it.
void RawFile::Replace(RawFile& old) {
    struct statfs system {};
    Retry([&] { return ::fstatfs(Handle, &system); }); // a type of 0 if it fails
    const bool isFat = system.f_type == MSDOS_SUPER_MAGIC || system.f_type == EXFAT_SUPER_MAGIC;
    const bool isShare = system.f_type == SMB2_SUPER_MAGIC || system.f_type == CIFS_SUPER_MAGIC;
    const bool mayMove = isShare && old.IsOpen();
    const std::filesystem::path aside = Path.native() + "-old";
    const auto rename = [&](const auto& from, const auto& to) {
        return Retry([&] { return ::rename(from.c_str(), to.c_str()); }, isShare ? 20 : 0) == 0;
    };
    if (isFat) {
        SyncFolder(old.Path.parent_path());
    }
    Sync();
    if (!isFat) {
        old.Close();
    }
    const bool isMoved = mayMove && rename(old.Path, aside);
    if (!rename(Path, old.Path)) {
        if (isMoved ? !rename(aside, old.Path) : isShare) {
            Path.clear(); // stays, as the old file may be gone from its name
        }
        Fail(errno);
    }
    Path.clear();
    Sync();
    SyncFolder(old.Path.parent_path());
    if (isMoved) {
        ::unlink(aside.c_str());
    }
}

unsigned long ProcessNumber() {
    return static_cast<unsigned long>(::getpid());
}

std::vector<std::filesystem::path> RegularFilesIn(const std::filesystem::path& folder,
                                                  bool hidden) {
    std::vector<std::filesystem::path> files;
    std::error_code failed;
    std::filesystem::directory_iterator entries(folder, failed);
    for (; !failed && entries != std::filesystem::directory_iterator(); entries.increment(failed)) {
        std::error_code unknown;
        if ((hidden || entries->path().filename().native().front() != '.') &&
            entries->is_regular_file(unknown)) {
            files.push_back(entries->path());
        }
    }
    return failed ? std::vector<std::filesystem::path>() : files;
}

void Delete(const std::filesystem::path& path) noexcept {
    ::unlink(path.c_str());
}

std::string Describe(const std::error_code& failure) {
    return failure.message();
}

void PrepareProcess() {
    constexpr const char* nothing = "/dev/null";
    int handle = ::open(nothing, O_RDWR); // takes the lowest number that is free
    while (handle >= 0 && handle < STDERR_FILENO) {
        handle = ::open(nothing, O_RDWR);
    }
    if (handle > STDERR_FILENO) {
        ::close(handle);
    }
    (void)std::signal(SIGXFSZ, SIG_IGN);
}
