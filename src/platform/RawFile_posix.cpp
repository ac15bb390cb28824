#include "platform/NewFiles.h"
#include "platform/RawFile.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace {

[[noreturn]] void Fail(int code) {
    throw std::system_error(code, std::generic_category());
}

// What a plain file is not, said in the system's own codes.
void RequirePlainFile(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) {
        Fail(EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        Fail(EINVAL);
    }
}

// Runs a system call until no signal interrupts it; fails when the call does.
template <class Call>
auto Retry(Call call) {
    for (;;) {
        const auto result = call();
        if (result >= 0) {
            return result;
        }
        if (errno != EINTR) {
            Fail(errno);
        }
    }
}

// The file at the end of all symbolic links, also when it is not there yet.
std::filesystem::path FollowLinks(std::filesystem::path path) {
    constexpr int mostLinks = 40; // what the system itself follows
    for (int links = 0; std::filesystem::is_symlink(path); ++links) {
        if (links == mostLinks) {
            Fail(ELOOP);
        }
        path = path.parent_path() / std::filesystem::read_symlink(path);
    }
    return path;
}

// Makes a file of a name not yet taken in `folder`. Gives its handle, -1 when the folder forbids
// new files; sets `name` only when the file is ours.
int MakeNewFile(const std::filesystem::path& folder, mode_t mode, std::filesystem::path& name) {
    for (int attempt = 0;; ++attempt) {
        std::filesystem::path candidate =
            folder / NewFiles::Name(static_cast<unsigned long>(::getpid()), attempt);
        const int handle = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (handle >= 0) {
            name.swap(candidate);
            return handle;
        }
        if (errno == EACCES || errno == EPERM) {
            return -1;
        }
        if (errno != EEXIST) {
            Fail(errno);
        }
    }
}

// Whether the folder keeps everybody from renaming over a file of somebody else.
bool ForbidsReplacing(const std::filesystem::path& folder, const struct stat& file) {
    struct stat status {};
    if (::stat(folder.c_str(), &status) != 0) {
        Fail(errno);
    }
    const uid_t self = ::geteuid();
    return (status.st_mode & S_ISVTX) != 0 && self != 0 && self != file.st_uid &&
           self != status.st_uid;
}

// Gives a new file the owner, group and permissions of the old one, as far as the system lets
// us: only the superuser can give a file to another, and anyone else's is rightly their own.
// A group that cannot be kept loses its permissions, which were meant for the old one.
void TakeOver(int newFile, const struct stat& old) {
    struct stat made {};
    Retry([&] { return ::fstat(newFile, &made); });
    mode_t mode = old.st_mode & 07777;
    if (made.st_uid != old.st_uid && ::fchown(newFile, old.st_uid, static_cast<gid_t>(-1)) != 0) {
        mode &= 01777; // what runs with its owner's rights must not run with ours
    }
    if (made.st_gid != old.st_gid && ::fchown(newFile, static_cast<uid_t>(-1), old.st_gid) != 0) {
        mode &= 05707;
    }
    Retry([&] { return ::fchmod(newFile, mode); }); // last: a change of owner takes some away
}

std::filesystem::path FolderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

// So that a name given in the folder survives a power cut.
void SyncFolder(const std::filesystem::path& folder) {
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return; // a folder that cannot be read cannot be synced; the file itself is safe
    }
    try {
        Retry([&] { return ::fsync(handle); });
    } catch (const std::system_error&) {
        ::close(handle);
        throw;
    }
    ::close(handle);
}

} // namespace

bool IsMarkedHidden(const std::filesystem::path& /*path*/) {
    return false; // a dot in front of the name is the only mark
}

RawFile::RawFile(const std::filesystem::path& path) {
    // Looked at before it is opened, since opening alone can move a tape or wake a pipe.
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        Fail(errno);
    }
    RequirePlainFile(status);
    Handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (Handle < 0) {
        Fail(errno);
    }
    // What stands there may have changed in between.
    if (::fstat(Handle, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(Handle);
        Fail(EINVAL);
    }
}

RawFile::~RawFile() {
    ::close(Handle);
}

std::size_t RawFile::Read(std::span<char> buffer) {
    return static_cast<std::size_t>(
        Retry([&] { return ::read(Handle, buffer.data(), buffer.size()); }));
}

std::uint64_t RawFile::Size() const {
    struct stat status {};
    if (::fstat(Handle, &status) != 0) {
        Fail(errno);
    }
    return static_cast<std::uint64_t>(status.st_size);
}

// Delegates to the empty object, so that the destructor clears up after a failure in here.
FileReplacement::FileReplacement(const std::filesystem::path& target) : FileReplacement() {
    Target = FollowLinks(target);
    struct stat old {};
    const bool exists = ::stat(Target.c_str(), &old) == 0;
    if (exists) {
        RequirePlainFile(old);
        Handle = Retry(
            [&] { return ::open(Target.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); });
        Retry([&] { return ::fstat(Handle, &old); }); // may be another file by now
        RequirePlainFile(old);
        if (ForbidsReplacing(FolderOf(Target), old)) {
            return; // in place
        }
    } else if (errno != ENOENT) {
        Fail(errno);
    }
    // Closed to others until it has the permissions of the old file.
    const int newHandle = MakeNewFile(FolderOf(Target), exists ? 0600 : 0666, NewFile);
    if (newHandle < 0) {
        if (!exists) {
            Fail(EACCES);
        }
        return; // in place
    }
    const int oldHandle = std::exchange(Handle, newHandle);
    if (exists) {
        ::close(oldHandle);
        TakeOver(Handle, old);
    }
}

FileReplacement::~FileReplacement() {
    if (Handle >= 0) {
        ::close(Handle);
    }
    if (!NewFile.empty()) {
        ::unlink(NewFile.c_str());
    }
}

void FileReplacement::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = static_cast<std::size_t>(
            Retry([&] { return ::write(Handle, bytes.data(), bytes.size()); }));
        if (count == 0) {
            Fail(EIO);
        }
        bytes.remove_prefix(count);
        Written += count;
    }
}

void FileReplacement::Commit() {
    if (NewFile.empty()) {
        Retry([&] { return ::ftruncate(Handle, static_cast<off_t>(Written)); });
    }
    Retry([&] { return ::fsync(Handle); });
    const int closing = std::exchange(Handle, -1);
    if (::close(closing) != 0) {
        Fail(errno);
    }
    if (!NewFile.empty()) {
        Retry([&] { return ::rename(NewFile.c_str(), Target.c_str()); });
        NewFile.clear();
        SyncFolder(FolderOf(Target));
        NewFiles::Sweep(FolderOf(Target));
    }
}

void OpenStandardStreams() {
    constexpr const char* nothing = "/dev/null";
    int handle = ::open(nothing, O_RDWR);
    while (handle >= 0 && handle < STDERR_FILENO) {
        handle = ::open(nothing, O_RDWR); // the lowest number that is free
    }
    if (handle > STDERR_FILENO) {
        ::close(handle);
    }
}
