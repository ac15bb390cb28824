#include "files/RawFile.h"

#include "text/CodePage.h"

#include <algorithm>
#include <initializer_list>

// After the others: it defines macros.
#include <windows.h>

namespace {

[[noreturn]] void Fail(DWORD code) {
    throw std::system_error(static_cast<int>(code), std::system_category());
}

void Require(BOOL done) {
    if (!done) {
        Fail(::GetLastError());
    }
}

constexpr DWORD LongestText = 32768;                       // of a path, or of a message
constexpr std::size_t LargestPiece = std::size_t{1} << 30; // that is read or written in one call
constexpr DWORD Shared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The whole path. Not by the standard library, which takes no share for a root. Throws for a name
// like NUL or COM1.html, which means its device in every folder, and opening some of them waits. A
// path near the length that all programs can use gets the prefix with which any length is allowed.
std::wstring FullPath(const std::filesystem::path& path) {
    constexpr std::size_t ordinary = MAX_PATH - 60; // a temporary file's name is longer
    std::wstring full(LongestText, L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), LongestText, full.data(), nullptr));
    if (full.empty() || full.starts_with(LR"(\\.\)")) {
        Fail(ERROR_BAD_DEVICE);
    }
    if (full.size() < ordinary || full.starts_with(LR"(\\?\)")) {
        return full;
    }
    return full.starts_with(LR"(\\)") ? LR"(\\?\UNC)" + full.substr(1) : LR"(\\?\)" + full;
}

// Makes a call until it succeeds, for up to a second while it fails with one of these codes: virus
// scanners and indexers hold a file for a moment after each change.
template <class Call>
void Await(Call call, std::initializer_list<DWORD> passing) {
    constexpr int mostTries = 20;
    constexpr DWORD pause = 50; // milliseconds
    for (int tries = 1; !call(); ++tries) {
        const DWORD code = ::GetLastError();
        if (tries == mostTries ||
            std::find(passing.begin(), passing.end(), code) == passing.end()) {
            Fail(code);
        }
        ::Sleep(pause);
    }
}

// Opens an existing regular file, which every other program may use in any way meanwhile. If it is
// to be written to, waits for one that does not share it.
HANDLE OpenRegularFile(const std::filesystem::path& path, DWORD access) {
    const std::wstring full = FullPath(path);
    HANDLE file = nullptr;
    const auto open = [&] {
        file = ::CreateFileW(full.c_str(), access, Shared, nullptr, OPEN_EXISTING, 0, nullptr);
        return file != INVALID_HANDLE_VALUE;
    };
    Await(open, {access == GENERIC_WRITE ? DWORD{ERROR_SHARING_VIOLATION} : NO_ERROR});
    if (::GetFileType(file) != FILE_TYPE_DISK) { // a pipe of another machine, say
        ::CloseHandle(file);
        Fail(ERROR_BAD_DEVICE);
    }
    return file;
}

} // namespace

RawFile::RawFile(const std::filesystem::path& path) : Handle(OpenRegularFile(path, GENERIC_READ)) {}

RawFile RawFile::OpenTarget(const std::filesystem::path& path) {
    RawFile target;
    target.Path = FullPath(path);
    const DWORD attributes = ::GetFileAttributesW(target.Path.c_str()); // of a link, not its end
    if (attributes == INVALID_FILE_ATTRIBUTES && ::GetLastError() == ERROR_FILE_NOT_FOUND) {
        return target;
    }
    target.Handle = OpenRegularFile(target.Path, GENERIC_WRITE);
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        std::wstring end(LongestText, L'\0');
        end.resize(::GetFinalPathNameByHandleW(target.Handle, end.data(), LongestText, 0));
        Require(!end.empty());
        target.Path = end;
    }
    return target;
}

Creation RawFile::Create(const std::filesystem::path& path, const RawFile& like) {
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    DWORD attributes = ::GetFileAttributesW(like.Path.c_str());
    attributes = attributes == INVALID_FILE_ATTRIBUTES ? 0 : attributes & kept;
    auto* const file =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        Handle = file;
        Path = path;
        return Creation::Done;
    }
    const DWORD code = ::GetLastError();
    if (code == ERROR_FILE_EXISTS) {
        return Creation::NameTaken;
    }
    if (code != ERROR_ACCESS_DENIED) {
        Fail(code);
    }
    return Creation::FolderForbids;
}

std::size_t RawFile::Read(std::span<char> buffer) {
    DWORD count = 0;
    Require(::ReadFile(Handle, buffer.data(),
                       static_cast<DWORD>(std::min(buffer.size(), LargestPiece)), &count, nullptr));
    return count;
}

std::uint64_t RawFile::Size() const {
    LARGE_INTEGER size{};
    Require(::GetFileSizeEx(Handle, &size));
    return static_cast<std::uint64_t>(size.QuadPart);
}

void RawFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD count = 0;
        Require(::WriteFile(Handle, bytes.data(),
                            static_cast<DWORD>(std::min(bytes.size(), LargestPiece)), &count,
                            nullptr));
        if (count == 0) {
            Fail(ERROR_WRITE_FAULT);
        }
        bytes.remove_prefix(count);
    }
}

void RawFile::Truncate() {
    Require(::SetEndOfFile(Handle));
}

void RawFile::Sync() {
    Require(::FlushFileBuffers(Handle));
}

void RawFile::Close() noexcept {
    if (IsOpen()) {
        ::CloseHandle(std::exchange(Handle, NoHandle));
    }
}

// Not if the player may write to the file but not delete it.
bool RawFile::CanBeReplaced() const {
    auto* const file =
        ::CreateFileW(Path.c_str(), DELETE, Shared, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return ::GetLastError() != ERROR_ACCESS_DENIED;
    }
    ::CloseHandle(file);
    return true;
}

// Copies the list as it is, with what the old file inherited and the marks of that, even if that
// was from another folder: the new file must not get the rights of this one. What the system
// refuses keeps the permissions that the folder gave it, as on a disk without permissions.
void RawFile::CopyRights(const RawFile& from) {
    DWORD size = 0;
    ::GetFileSecurityW(from.Path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    if (::GetFileSecurityW(from.Path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size,
                           &size)) {
        // Else the system would drop the mark that the list follows its folder.
        ::SetSecurityDescriptorControl(descriptor.data(), SE_DACL_AUTO_INHERIT_REQ,
                                       SE_DACL_AUTO_INHERIT_REQ);
        ::SetFileSecurityW(Path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data());
    }
}

// Open files cannot be renamed or replaced, so both are closed first. Afterwards the file is
// flushed once more: elsewhere a FAT disk has the new name only then.
void RawFile::Replace(RawFile& old) {
    Sync();
    Close();
    old.Close();
    const auto move = [&] {
        return ::MoveFileExW(Path.c_str(), old.Path.c_str(),
                             MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    };
    Await(move, {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED});
    Path.clear();
    Handle = OpenRegularFile(old.Path, GENERIC_WRITE);
    Sync();
}

unsigned long ProcessNumber() {
    return ::GetCurrentProcessId();
}

std::vector<std::filesystem::path> RegularFilesIn(const std::filesystem::path& folder,
                                                  bool hidden) {
    const DWORD others =
        FILE_ATTRIBUTE_DIRECTORY | (hidden ? 0 : FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    std::vector<std::filesystem::path> files;
    WIN32_FIND_DATAW entry{};
    auto* const search = ::FindFirstFileW(FullPath(folder / "*").c_str(), &entry);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = ::FindNextFileW(search, &entry)) {
        if ((entry.dwFileAttributes & others) == 0 && (hidden || *entry.cFileName != '.')) {
            files.push_back(folder / entry.cFileName);
        }
    }
    if (::GetLastError() != ERROR_NO_MORE_FILES) {
        files.clear();
    }
    ::FindClose(search);
    return files;
}

void Delete(const std::filesystem::path& path) noexcept {
    ::DeleteFileW(path.c_str());
}

std::string Describe(const std::error_code& failure) {
    if (failure.category() != std::system_category()) {
        return failure.message();
    }
    constexpr DWORD oneLine =
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
    std::wstring words(LongestText, L'\0');
    words.resize(::FormatMessageW(oneLine, nullptr, static_cast<DWORD>(failure.value()), 0,
                                  words.data(), LongestText, nullptr));
    return CodePage::FromUnicode(std::u16string(words.begin(), words.end()));
}

// Nothing to do: the standard streams are numbers of the runtime library, which this file does not
// use, and there are no signals.
void PrepareProcess() {}
