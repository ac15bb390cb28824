#include "platform/NewFiles.h"
#include "platform/RawFile.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

// Behind windows.h, which they need.
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

// The system keeps what counts of a handle in 32 bits, so an int holds it, -1 for none.
HANDLE File(int handle) {
    return LongToHandle(handle);
}

// A name like NUL or COM1.html means its device in every folder, and to open some of them waits.
void RequireNoDevice(const std::filesystem::path& path) {
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const auto size = static_cast<DWORD>(full.size());
    Require(::GetFullPathNameW(path.c_str(), size, full.data(), nullptr) != 0);
    if (full.starts_with(LR"(\\.\)")) {
        Fail(ERROR_BAD_DEVICE);
    }
}

// Opens a file that is there; every other program may do with it what it likes meanwhile. Gives
// its handle, -1 when the system denies the access. Fails on what is not a plain file.
int Open(const std::filesystem::path& path, DWORD access) {
    auto* const file =
        ::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_ACCESS_DENIED) {
            return -1;
        }
        Fail(code);
    }
    if (::GetFileType(file) != FILE_TYPE_DISK) { // a pipe of another machine, say
        ::CloseHandle(file);
        Fail(ERROR_BAD_DEVICE);
    }
    return HandleToLong(file);
}

int OpenOrFail(const std::filesystem::path& path, DWORD access) {
    const int handle = Open(path, access);
    if (handle == -1) {
        Fail(ERROR_ACCESS_DENIED);
    }
    return handle;
}

// Where all links end on the way to an open file.
std::filesystem::path FinalPath(int handle) {
    constexpr DWORD flags = FILE_NAME_NORMALIZED | VOLUME_NAME_DOS;
    std::wstring path(::GetFinalPathNameByHandleW(File(handle), nullptr, 0, flags), L'\0');
    const auto size = static_cast<DWORD>(path.size());
    const DWORD length = ::GetFinalPathNameByHandleW(File(handle), path.data(), size, flags);
    Require(length != 0);
    path.resize(length);
    return path;
}

// Makes a file of a name not yet taken in `folder`. Gives its handle, -1 when the folder forbids
// new files; sets `name` only when the file is ours.
int MakeNewFile(const std::filesystem::path& folder, DWORD attributes,
                std::filesystem::path& name) {
    for (int attempt = 0;; ++attempt) {
        std::filesystem::path candidate = folder / NewFiles::Name(::GetCurrentProcessId(), attempt);
        auto* const file = ::CreateFileW(candidate.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                         attributes, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            name.swap(candidate);
            return HandleToLong(file);
        }
        const DWORD code = ::GetLastError();
        if (code == ERROR_ACCESS_DENIED) {
            return -1;
        }
        if (code != ERROR_FILE_EXISTS) {
            Fail(code);
        }
    }
}

// Gives a new file the permissions of the old one, as far as the system lets us; what it cannot
// have it keeps from its folder.
void TakeOver(const std::filesystem::path& newFile, const std::filesystem::path& old) {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (::GetNamedSecurityInfoW(old.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS) {
        return; // a file system that knows no permissions
    }
    SECURITY_DESCRIPTOR_CONTROL control{};
    DWORD revision = 0;
    ::GetSecurityDescriptorControl(descriptor, &control, &revision);
    const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0
                                                 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    std::wstring name = newFile.native(); // taken as writable, left as it is
    ::SetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance,
                            nullptr, nullptr, list, nullptr);
    ::LocalFree(descriptor);
}

// One step on the disk, finished when this returns. Virus scanners and indexers hold a file for a
// moment after each change: those are waited for, up to a second.
void MoveOver(const std::filesystem::path& from, const std::filesystem::path& to) {
    constexpr int mostTries = 20;
    constexpr DWORD pause = 50; // milliseconds
    for (int tries = 1; !::MoveFileExW(from.c_str(), to.c_str(),
                                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
         ++tries) {
        const DWORD code = ::GetLastError();
        if (tries == mostTries ||
            (code != ERROR_SHARING_VIOLATION && code != ERROR_ACCESS_DENIED)) {
            Fail(code);
        }
        ::Sleep(pause);
    }
}

} // namespace

bool IsMarkedHidden(const std::filesystem::path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) != 0;
}

RawFile::RawFile(const std::filesystem::path& path) {
    RequireNoDevice(path);
    Handle = OpenOrFail(path, GENERIC_READ);
}

RawFile::~RawFile() {
    ::CloseHandle(File(Handle));
}

std::size_t RawFile::Read(std::span<char> buffer) {
    constexpr std::size_t largest = std::size_t{1} << 30;
    DWORD count = 0;
    Require(::ReadFile(File(Handle), buffer.data(),
                       static_cast<DWORD>(std::min(buffer.size(), largest)), &count, nullptr));
    return count;
}

std::uint64_t RawFile::Size() const {
    LARGE_INTEGER size{};
    Require(::GetFileSizeEx(File(Handle), &size));
    return static_cast<std::uint64_t>(size.QuadPart);
}

// Delegates to the empty object, so that the destructor clears up after a failure in here.
FileReplacement::FileReplacement(const std::filesystem::path& target) : FileReplacement() {
    RequireNoDevice(target);
    Target = target;
    const DWORD attributes = ::GetFileAttributesW(Target.c_str()); // of a link, not of its end
    const bool exists = attributes != INVALID_FILE_ATTRIBUTES;
    constexpr DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    if (exists) {
        Handle = Open(Target, GENERIC_WRITE | DELETE);
        if (Handle == -1) {
            Handle = OpenOrFail(Target, GENERIC_WRITE);
            return; // in place
        }
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
            Target = FinalPath(Handle);
        }
    } else if (const DWORD code = ::GetLastError(); code != ERROR_FILE_NOT_FOUND) {
        Fail(code);
    }
    const int newHandle =
        MakeNewFile(Target.parent_path(), exists ? attributes & kept : 0, NewFile);
    if (newHandle == -1) {
        if (!exists) {
            Fail(ERROR_ACCESS_DENIED);
        }
        return; // in place
    }
    const int oldHandle = std::exchange(Handle, newHandle);
    if (exists) {
        ::CloseHandle(File(oldHandle));
        TakeOver(NewFile, Target);
    }
}

FileReplacement::~FileReplacement() {
    if (Handle != -1) {
        ::CloseHandle(File(Handle));
    }
    if (!NewFile.empty()) {
        ::DeleteFileW(NewFile.c_str());
    }
}

void FileReplacement::Write(std::string_view bytes) {
    constexpr std::size_t largest = std::size_t{1} << 30;
    while (!bytes.empty()) {
        DWORD count = 0;
        Require(::WriteFile(File(Handle), bytes.data(),
                            static_cast<DWORD>(std::min(bytes.size(), largest)), &count, nullptr));
        if (count == 0) {
            Fail(ERROR_WRITE_FAULT);
        }
        bytes.remove_prefix(count);
    }
}

void FileReplacement::Commit() {
    Require(::SetEndOfFile(File(Handle))); // what is left of a longer file written in place
    Require(::FlushFileBuffers(File(Handle)));
    Require(::CloseHandle(File(std::exchange(Handle, -1))));
    if (!NewFile.empty()) {
        MoveOver(NewFile, Target);
        NewFile.clear();
        NewFiles::Sweep(Target.parent_path());
    }
}

// No file ever stands in the place of a standard stream here: those are numbers of the runtime
// library, which this file does not go by.
void OpenStandardStreams() {}
