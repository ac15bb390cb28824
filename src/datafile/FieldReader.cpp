#include "datafile/FieldReader.h"

#include "text/Text.h"

#include <cstring>

namespace {

constexpr std::size_t LongestNumber = std::size_t{64} << 10; // bytes

void RequireLength(std::size_t length, std::size_t limit) {
    if (length > limit) {
        throw Failure("a field is too long");
    }
}

} // namespace

// Whether the file has a byte at this offset from Window.Begin. Reads as far as needed.
bool FieldReader::Has(std::size_t offset) {
    while (static_cast<std::size_t>(Window.End - Window.Begin) <= offset) {
        if (!Window.Fill()) {
            return false;
        }
    }
    return true;
}

// Returns the bytes from `first` to `end` and goes on after the comma or line end at `next`.
std::string_view FieldReader::Take(std::size_t first, std::size_t end, std::size_t next) {
    if (Has(next)) {
        const bool pair =
            Window.Begin[next] == '\r' && Has(next + 1) && Window.Begin[next + 1] == '\n';
        next += pair ? 2 : 1;
    }
    const std::string_view text(Window.Begin + first, end - first);
    Window.Begin += next;
    return text;
}

bool FieldReader::Closes(std::size_t quote) {
    if (!Has(quote + 1)) {
        return true;
    }
    const char follower = Window.Begin[quote + 1];
    if (follower != ',') {
        return follower == '\r' || follower == '\n';
    }
    if (!Has(quote + 2)) {
        return false;
    }
    const char opener = Window.Begin[quote + 2];
    return opener == '"' || opener == '-' || Text::IsDigit(opener);
}

FieldReader::Field FieldReader::ReadQuoted(std::size_t limit) {
    std::size_t at = 1;
    while (Has(at)) {
        RequireLength(at - 1, limit);
        const auto known = static_cast<std::size_t>(Window.End - Window.Begin);
        const void* const quote = std::memchr(Window.Begin + at, '"', known - at);
        if (quote == nullptr) {
            at = known;
            continue;
        }
        at = static_cast<std::size_t>(static_cast<const char*>(quote) - Window.Begin);
        if (Closes(at)) {
            RequireLength(at - 1, limit);
            return {Take(1, at, at + 1), true};
        }
        ++at;
    }
    return {Take(1, at, at), false};
}

FieldReader::Field FieldReader::ReadBare(std::size_t limit) {
    std::size_t at = 0;
    while (Has(at) && Window.Begin[at] != ',' && Window.Begin[at] != '\r' &&
           Window.Begin[at] != '\n') {
        ++at;
        RequireLength(at, limit);
    }
    return {Take(0, at, at), true};
}

FieldReader::Field FieldReader::ReadField(std::size_t limit) {
    if (!Has(0)) {
        throw Failure("no field after the last one");
    }
    return *Window.Begin == '"' ? ReadQuoted(limit) : ReadBare(limit);
}

bool FieldReader::CanBegin(std::string_view start) {
    const std::size_t first = Has(0) && *Window.Begin == '"' ? 1 : 0;
    for (std::size_t at = 0; at < start.size() && Has(first + at); ++at) {
        if (Window.Begin[first + at] != start[at]) {
            return false;
        }
    }
    return true;
}

std::string_view FieldReader::ReadText() {
    const Field field = ReadField(ByteWindow::LongestPiece);
    if (!field.Complete) {
        throw Failure("a text without its closing quote");
    }
    return field.Text;
}

// Reads a number of up to nine digits and CR LF, if the window holds all of it.
bool FieldReader::TakeDigits(std::uint32_t& value) {
    constexpr std::ptrdiff_t mostDigits = 9;
    if (Window.End - Window.Begin < mostDigits + 2) {
        return false;
    }
    const char* at = Window.Begin;
    for (const char* const end = at + mostDigits; at < end && Text::IsDigit(*at); ++at) {
        value = value * 10 + static_cast<std::uint32_t>(*at - '0');
    }
    if (at == Window.Begin || at[0] != '\r' || at[1] != '\n') {
        return false;
    }
    Window.Begin = at + 2;
    return true;
}

double FieldReader::ReadValue() {
    return Numbers::Read(ReadField(LongestNumber).Text);
}
