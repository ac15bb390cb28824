#pragma once

#include "platform/RawFile.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// A plain file read through one sliding buffer: the bytes read and not yet given out lie between
// Begin and End. Memory: 32 KiB, or a few times the longest piece that its reader kept.
class ByteWindow {
public:
    static constexpr std::size_t LongestPiece = std::size_t{16} << 20; // bytes

    // Fails (std::system_error) on what cannot be opened or is not a plain file.
    explicit ByteWindow(const std::filesystem::path& path);

    // Reads on: what lies between Begin and End stays, though at another address, and End moves
    // on. False at the end of the file. Fails (Failure Overflow) when more than LongestPiece is
    // kept, with std::system_error when the file cannot be read.
    bool Fill();

    const char* Begin;
    const char* End;

private:
    using Bytes = char[]; // NOLINT(modernize-avoid-c-arrays): a buffer that grows uncleared

    RawFile File;
    std::size_t Capacity;
    std::unique_ptr<Bytes> Buffer;
    bool Exhausted = false;
};

// A sequential reader of text lines. A line ends at CR, CR LF or LF, and at the end of the file;
// the end mark is not part of it.
class LineReader {
public:
    // Fails as ByteWindow does.
    explicit LineReader(const std::filesystem::path& path) : Window(path) {}

    // Whether no further line stands in the file. May read, and fail as ReadLine does.
    bool AtEnd();

    // The next line; it stays valid until the next call on this reader that looks at a line
    // behind it. Fails with Failure EndOfFile behind the last line and Overflow on a line over
    // LongestPiece, with std::system_error when the file cannot be read.
    std::string_view ReadLine();

    // As ReadLine, but leaves the line where it stands, for the next call.
    std::string_view PeekLine();

private:
    bool Fill();
    const char* EndMark();

    ByteWindow Window;
    // The first CR and the first LF from Window.Begin on, Window.End if there is none: each is
    // searched for once, however the two alternate.
    const char* NextReturn = Window.End;
    const char* NextFeed = Window.End;
};

namespace Files {

// Whether `path` holds the platform's separator, which is what makes a chosen name a path.
bool HoldsSeparator(const std::filesystem::path& path);

// Size in bytes. Fails (std::system_error) on what cannot be opened, and with Failure Overflow
// on a file of 2 GiB or more, which has no size here.
std::int32_t Size(const std::filesystem::path& path);

// The leading `count` bytes; fewer when the file is shorter. Fails as RawFile does.
std::string LeadingBytes(const std::filesystem::path& path, std::size_t count);

// Paths of the plain files of `folder` whose extension is `extension` (dot included) without
// regard to case, in ascending byte order of the names; no hidden files. A folder that cannot
// be listed has none.
std::vector<std::filesystem::path> InFolder(const std::filesystem::path& folder,
                                            std::string_view extension);

} // namespace Files
