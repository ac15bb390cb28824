#include "files/Files.h"

#include "text/Failure.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>

namespace {

const char* Find(const char* begin, const char* end, char sought) {
    const void* const found = std::memchr(begin, sought, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

// Returns the first CR or LF, or `end`. Searches in pieces: among lines that end in CR alone, the
// search for LF would otherwise run far ahead, once for each line.
const char* FindLineEnd(const char* begin, const char* end) {
    constexpr std::ptrdiff_t piece = 256;
    while (begin != end) {
        const char* const pieceEnd = begin + std::min(piece, end - begin);
        const char* const mark = Find(begin, Find(begin, pieceEnd, '\n'), '\r');
        if (mark != pieceEnd) {
            return mark;
        }
        begin = pieceEnd;
    }
    return end;
}

void RequireLength(std::size_t length) {
    if (length > ByteWindow::LongestPiece) {
        throw Failure("a line or field too long");
    }
}

} // namespace

ByteWindow::ByteWindow(const std::filesystem::path& path)
    : File(path),
      Capacity(std::size_t{32} << 10),
      Buffer(std::make_unique_for_overwrite<Bytes>(Capacity)) {
    Begin = Buffer.get();
    End = Begin;
}

// The bytes kept move to the front of the buffer; a buffer that they fill is doubled first.
bool ByteWindow::Fill() {
    if (Exhausted) {
        return false;
    }
    const auto kept = static_cast<std::size_t>(End - Begin);
    RequireLength(kept);
    if (kept == Capacity) {
        auto larger = std::make_unique_for_overwrite<Bytes>(Capacity * 2);
        std::memcpy(larger.get(), Begin, kept);
        Buffer = std::move(larger);
        Capacity *= 2;
    } else {
        std::memmove(Buffer.get(), Begin, kept);
    }
    Begin = Buffer.get();
    End = Begin + kept;
    const std::size_t read = File.Read({Buffer.get() + kept, Capacity - kept});
    End += read;
    Exhausted = read == 0;
    return !Exhausted;
}

std::int32_t LineReader::Size() const {
    const std::uint64_t size = Window.File.Size();
    if (size > std::numeric_limits<std::int32_t>::max()) {
        throw Failure("a file too large to have a size");
    }
    return static_cast<std::int32_t>(size);
}

bool LineReader::AtEnd() {
    return Window.Begin == Window.End && !Window.Fill();
}

// The search goes on where it stopped when the window is filled.
std::string_view LineReader::PeekLine() {
    if (AtEnd()) {
        throw Failure("no line after the last one");
    }
    std::size_t length = 0;
    const char* mark = nullptr;
    do {
        mark = FindLineEnd(Window.Begin + length, Window.End);
        length = static_cast<std::size_t>(mark - Window.Begin);
        // A CR at the end of the window may have its LF still in the file.
    } while ((mark == Window.End || (*mark == '\r' && mark + 1 == Window.End)) && Window.Fill());
    RequireLength(length);
    return {Window.Begin, length};
}

std::string_view LineReader::ReadLine() {
    const std::string_view line = PeekLine();
    Window.Begin += line.size();
    for (const char mark : {'\r', '\n'}) {
        if (Window.Begin != Window.End && *Window.Begin == mark) {
            ++Window.Begin;
        }
    }
    return line;
}

namespace Files {

bool HoldsSeparator(const std::filesystem::path& path) {
    return path.native().find(std::filesystem::path::preferred_separator) !=
           std::filesystem::path::string_type::npos;
}

bool FileExists(const std::filesystem::path& path) {
    try {
        const RawFile file(path);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

std::string LeadingBytes(const std::filesystem::path& path, std::size_t count) {
    RawFile file(path);
    std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, file.Size())), '\0');
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const std::size_t read = file.Read(std::span(bytes).subspan(filled));
        if (read == 0) {
            break; // the file was shortened meanwhile
        }
        filled += read;
    }
    bytes.resize(filled);
    return bytes;
}

std::vector<std::filesystem::path> InFolder(const std::filesystem::path& folder,
                                            std::string_view extension) {
    const auto sameLetter = [](auto a, auto b) {
        return a == b || (a >= 'A' && a <= 'Z' && a + ('a' - 'A') == b);
    };
    std::vector<std::filesystem::path> files = RegularFilesIn(folder, false);
    std::erase_if(files, [&](const std::filesystem::path& file) {
        const auto found = file.extension();
        return !std::equal(found.native().begin(), found.native().end(), extension.begin(),
                           extension.end(), sameLetter);
    });
    std::sort(files.begin(), files.end(),
              [](const auto& a, const auto& b) { return a.native() < b.native(); });
    return files;
}

} // namespace Files
