#include "files/RawFile.h"

#include <algorithm>
#include <string>
#include <system_error>

// After the others: it needs windows.h, which defines macros.
#include <windows.h>

#include <aclapi.h>

namespace {

[[noreturn]] void Fail(DWORD code) {
    throw std::system_error(static_cast<int>(code), std::system_category());
}

void Require(BOOL done) {
    if (!done) {
        Fail(::GetLastError());
    }
}

// A name like NUL or COM1.html means its device in every folder, and opening some of them waits.
void RequireNoDevice(const std::filesystem::path& path) {
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const auto size = static_cast<DWORD>(full.size());
    Require(::GetFullPathNameW(path.c_str(), size, full.data(), nullptr) != 0);
    if (full.starts_with(LR"(\\.\)")) {
        Fail(ERROR_BAD_DEVICE);
    }
}

// Opens an existing regular file, which every other program may use in any way meanwhile.
HANDLE OpenRegularFile(const std::filesystem::path& path, DWORD access) {
    RequireNoDevice(path);
    auto* const file =
        ::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        Fail(::GetLastError());
    }
    if (::GetFileType(file) != FILE_TYPE_DISK) { // a pipe of another machine, say
        ::CloseHandle(file);
        Fail(ERROR_BAD_DEVICE);
    }
    return file;
}

// Where all links end on the way to an open file.
std::filesystem::path FinalPath(HANDLE handle) {
    constexpr DWORD flags = FILE_NAME_NORMALIZED | VOLUME_NAME_DOS;
    std::wstring path(::GetFinalPathNameByHandleW(handle, nullptr, 0, flags), L'\0');
    const auto size = static_cast<DWORD>(path.size());
    const DWORD length = ::GetFinalPathNameByHandleW(handle, path.data(), size, flags);
    Require(length != 0);
    path.resize(length);
    return path;
}

} // namespace

RawFile::RawFile(const std::filesystem::path& path) : Handle(OpenRegularFile(path, GENERIC_READ)) {}

RawFile RawFile::OpenTarget(const std::filesystem::path& path) {
    RawFile target;
    target.Path = std::filesystem::absolute(path);
    const DWORD attributes = ::GetFileAttributesW(path.c_str()); // of a link, not of its end
    if (attributes == INVALID_FILE_ATTRIBUTES && ::GetLastError() == ERROR_FILE_NOT_FOUND) {
        RequireNoDevice(path);
        return target;
    }
    target.Handle = OpenRegularFile(path, GENERIC_WRITE);
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        target.Path = FinalPath(target.Handle);
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
    constexpr std::size_t largest = std::size_t{1} << 30;
    DWORD count = 0;
    Require(::ReadFile(Handle, buffer.data(), static_cast<DWORD>(std::min(buffer.size(), largest)),
                       &count, nullptr));
    return count;
}

std::uint64_t RawFile::Size() const {
    LARGE_INTEGER size{};
    Require(::GetFileSizeEx(Handle, &size));
    return static_cast<std::uint64_t>(size.QuadPart);
}

void RawFile::Write(std::string_view bytes) {
    constexpr std::size_t largest = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD count = 0;
        Require(::WriteFile(Handle, bytes.data(),
                            static_cast<DWORD>(std::min(bytes.size(), largest)), &count, nullptr));
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
        ::CreateFileW(Path.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return ::GetLastError() != ERROR_ACCESS_DENIED;
    }
    ::CloseHandle(file);
    return true;
}

// What the system refuses keeps the permissions that the folder gave it.
void RawFile::CopyRights(const RawFile& from) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (::GetNamedSecurityInfoW(from.Path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                nullptr, nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS) {
        return; // a file system without permissions
    }
    SECURITY_DESCRIPTOR_CONTROL control{};
    DWORD revision = 0;
    ::GetSecurityDescriptorControl(descriptor, &control, &revision);
    const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0
                                                 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    std::wstring name = Path.native(); // which the call wants writable, but does not change
    ::SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance,
                            nullptr, nullptr, list, nullptr);
    ::LocalFree(descriptor);
}

// Open files cannot be renamed or replaced, so both are closed first. Virus scanners and indexers
// hold a file for a moment after each change: the move waits for them for up to a second.
void RawFile::Replace(RawFile& old) {
    constexpr int mostTries = 20;
    constexpr DWORD pause = 50; // milliseconds
    Sync();
    Close();
    old.Close();
    for (int tries = 1; !::MoveFileExW(Path.c_str(), old.Path.c_str(),
                                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
         ++tries) {
        const DWORD code = ::GetLastError();
        if (tries == mostTries ||
            (code != ERROR_SHARING_VIOLATION && code != ERROR_ACCESS_DENIED)) {
            Fail(code);
        }
        ::Sleep(pause);
    }
    Path.clear();
}

unsigned long ProcessNumber() {
    return ::GetCurrentProcessId();
}

bool HasHiddenAttribute(const std::filesystem::path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0;
}

// Nothing to do: the standard streams are numbers of the runtime library, which this file does not
// use, and there are no signals.
void PrepareProcess() {}
