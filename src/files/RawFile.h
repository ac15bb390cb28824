#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

// What the program asks of the system about files, each system in a source file of its own. All
// failures are std::system_error with the system's own code. A signal makes none of the system
// calls here fail; the standard library's looking up of paths can.

// What the system calls an open file, and its value for none.
#ifdef _WIN32
using SystemHandle = void*;
constexpr auto NoHandle = nullptr;
#else
using SystemHandle = int;
constexpr auto NoHandle = -1;
#endif

// What became of a file that was to be created.
enum class Creation { Done, NameTaken, FolderForbids };

// A regular file, open or not; closed when it goes out of scope.
class RawFile {
public:
    RawFile() = default;
    // Opens a regular file for reading, shared with every other reader. Throws for anything else
    // (a folder, pipe, socket, device) without waiting for it.
    explicit RawFile(const std::filesystem::path& path);
    RawFile(RawFile&& other) noexcept
        : Path(std::move(other.Path)),
          Handle(std::exchange(other.Handle, NoHandle)) {}
    RawFile& operator=(RawFile&& other) noexcept {
        Path.swap(other.Path);
        std::swap(Handle, other.Handle);
        return *this;
    }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;
    ~RawFile() { Close(); }

    // Opens the target of a save for writing. Follows all links and sets Path to where they end.
    // Not open if there is no such file. Throws if it cannot be written or is no regular file.
    static RawFile OpenTarget(const std::filesystem::path& path);

    bool IsOpen() const { return Handle != NoHandle; }

    // Creates the file `path` and opens it; this must not be open before. If `like` is open, nobody
    // but the owner can read the new file until CopyRights.
    Creation Create(const std::filesystem::path& path, const RawFile& like);

    // Reads up to the size of `buffer`. Returns the number of bytes, 0 only at the end of the file.
    std::size_t Read(std::span<char> buffer);

    // In bytes, as of now.
    std::uint64_t Size() const;

    // Writes all of `bytes` after what was read or written last.
    void Write(std::string_view bytes);

    // Cuts the file off after what was read or written last.
    void Truncate();

    // Returns when the content is on the disk.
    void Sync();

    // Ignores failures: what matters was synced before.
    void Close() noexcept;

    // Whether the system lets another file be renamed over this one.
    bool CanBeReplaced() const;

    // Gives this new file the owner and permissions of `from`, as far as the system lets it. Nobody
    // gets rights that he did not have; on Windows, what cannot be set stays as the folder set it.
    void CopyRights(const RawFile& from);

    // Brings the content to the disk, renames this file to the name of `old`, which is replaced if
    // it exists, and returns when the disk has the change. Empties Path if this file must stay.
    void Replace(RawFile& old);

    // Absolute. Empty for a file opened for reading.
    std::filesystem::path Path;

private:
    SystemHandle Handle = NoHandle;
};

// Identifies this process among those that run.
unsigned long ProcessNumber();

// Returns the paths of the regular files in a folder, in any order; none if the folder cannot be
// listed to its end. Hidden are those that the system marks so, or whose names begin with a dot.
std::vector<std::filesystem::path> RegularFilesIn(const std::filesystem::path& folder, bool hidden);

// Deletes a file, by an absolute path. Ignores failures.
void Delete(const std::filesystem::path& path) noexcept;

// Returns the system's own words for a failure, in code page 1252.
std::string Describe(const std::error_code& failure);

// To be called first. Opens the null device as standard input, output or error where the program
// was started without it: otherwise the next file opened would get its number, and printed words.
// Makes a write beyond a limit on file sizes fail instead of ending the program.
void PrepareProcess();
