#include "files/Files.h"

#include "text/CodePage.h"
#include "text/Failure.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <span>
#include <system_error>

namespace {

const char* Find(const char* begin, const char* end, char sought) {
    const void* const found = std::memchr(begin, sought, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

void RequireLength(std::size_t length) {
    if (length > ByteWindow::LongestPiece) {
        throw Failure("a line or field too long");
    }
}

// Limits how much is read before a piece that is too long is noticed.
constexpr std::size_t LargestRead = std::size_t{1} << 20;

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
    } else if (Begin != Buffer.get()) {
        std::memmove(Buffer.get(), Begin, kept);
    }
    Begin = Buffer.get();
    char* const free = Buffer.get() + kept;
    End = free;
    const std::size_t read = File.Read({free, std::min(Capacity - kept, LargestRead)});
    Exhausted = read == 0;
    End += read;
    return !Exhausted;
}

bool LineReader::Fill() {
    EndMark(); // so that both marks are at or after Begin, and move with their bytes
    const std::ptrdiff_t returnAt = NextReturn - Window.Begin;
    const std::ptrdiff_t feedAt = NextFeed - Window.Begin;
    const std::ptrdiff_t kept = Window.End - Window.Begin;
    const bool more = Window.Fill();
    const char* const added = Window.Begin + kept;
    NextReturn = returnAt < kept ? Window.Begin + returnAt : Find(added, Window.End, '\r');
    NextFeed = feedAt < kept ? Window.Begin + feedAt : Find(added, Window.End, '\n');
    return more;
}

bool LineReader::AtEnd() {
    return Window.Begin == Window.End && !Fill();
}

// Returns the first end mark at or after Begin, or End.
const char* LineReader::EndMark() {
    if (NextReturn < Window.Begin) {
        NextReturn = Find(Window.Begin, Window.End, '\r');
    }
    if (NextFeed < Window.Begin) {
        NextFeed = Find(Window.Begin, Window.End, '\n');
    }
    return std::min(NextReturn, NextFeed);
}

std::string_view LineReader::PeekLine() {
    if (AtEnd()) {
        throw Failure("no line after the last one");
    }
    // A CR at the end of the buffer may have its LF still in the file.
    const auto undecided = [this](const char* mark) {
        return mark == Window.End || (*mark == '\r' && mark + 1 == Window.End);
    };
    while (undecided(EndMark()) && Fill()) {
    }
    const std::string_view line(Window.Begin, static_cast<std::size_t>(EndMark() - Window.Begin));
    RequireLength(line.size());
    return line;
}

std::string_view LineReader::ReadLine() {
    const std::string_view line = PeekLine();
    const char* mark = EndMark();
    if (mark != Window.End) {
        const bool pair = *mark == '\r' && mark + 1 != Window.End && mark[1] == '\n';
        mark += pair ? 2 : 1;
    }
    Window.Begin = mark;
    return line;
}

namespace Files {

bool HoldsSeparator(const std::filesystem::path& path) {
    return path.native().find(std::filesystem::path::preferred_separator) !=
           std::filesystem::path::string_type::npos;
}

std::int32_t Size(const std::filesystem::path& path) {
    const std::uintmax_t size = std::filesystem::file_size(path);
    if (size > std::numeric_limits<std::int32_t>::max()) {
        throw Failure("a file too large to have a size");
    }
    return static_cast<std::int32_t>(size);
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
    std::vector<std::filesystem::path> names;
    std::error_code failed;
    std::filesystem::directory_iterator entries(folder, failed);
    for (; !failed && entries != std::filesystem::directory_iterator(); entries.increment(failed)) {
        const std::filesystem::path name = entries->path().filename();
        const auto found = name.extension();
        const bool hidden = name.native().front() == '.';
        std::error_code unknown;
        if (!hidden &&
            std::equal(found.native().begin(), found.native().end(), extension.begin(),
                       extension.end(), sameLetter) &&
            entries->is_regular_file(unknown) && !HasHiddenAttribute(folder / name)) {
            names.push_back(folder / name);
        }
    }
    std::sort(names.begin(), names.end(),
              [](const auto& a, const auto& b) { return a.native() < b.native(); });
    return names;
}

} // namespace Files
