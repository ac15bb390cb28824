#pragma once

#include "files/RawFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A regular file read through one sliding buffer. The bytes from Begin to End were read and not yet
// consumed: the reader moves Begin. Memory: 32 KiB, or a few times the longest piece that was kept.
class ByteWindow {
public:
    static constexpr std::size_t LongestPiece = std::size_t{16} << 20; // bytes

    // Throws as RawFile does.
    explicit ByteWindow(const std::filesystem::path& path);

    // Appends bytes from the file; Begin and End may move. Returns false at the end of the file.
    // Throws Failure if more than LongestPiece is kept, std::system_error if reading fails.
    bool Fill();

    RawFile File;
    const char* Begin;
    const char* End;

private:
    using Bytes = char[]; // NOLINT(modernize-avoid-c-arrays): a buffer that is not cleared

    std::size_t Capacity;
    std::unique_ptr<Bytes> Buffer;
    bool Exhausted = false;
};

// Reads a file by lines. A line ends before CR, CR LF or LF, or at the end of the file.
class LineReader {
public:
    // Throws as RawFile does.
    explicit LineReader(const std::filesystem::path& path) : Window(path) {}

    // Of the file, in bytes. Throws Failure if it has 2 GiB or more.
    std::int32_t Size() const;

    // Whether there is no further line. Throws as ReadLine does.
    bool AtEnd();

    // Returns the next line, which is valid until the next call. Throws Failure after the last line
    // and on a line longer than ByteWindow::LongestPiece, std::system_error if reading fails.
    std::string_view ReadLine();

    // As ReadLine, but does not consume the line: the next call returns it again.
    std::string_view PeekLine();

private:
    ByteWindow Window;
};

namespace Files {

// Whether `path` contains the platform's separator: only then is it a path and not a bare name.
bool HoldsSeparator(const std::filesystem::path& path);

// Whether `path` is a regular file that can be opened for reading now. Never throws.
bool FileExists(const std::filesystem::path& path);

// Returns the first `count` bytes of a file, or all if it is shorter. Throws as RawFile does.
std::string LeadingBytes(const std::filesystem::path& path, std::size_t count);

// Returns the paths of the regular files in `folder` with this extension (dot included, upper and
// lower case equal), in ascending byte order of their names. Leaves out hidden files. A folder that
// cannot be listed to its end has none.
std::vector<std::filesystem::path> InFolder(const std::filesystem::path& folder,
                                            std::string_view extension);

} // namespace Files
