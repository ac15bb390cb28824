#pragma once

#include "platform/Files.h"
#include "text/Numbers.h"

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string_view>

// Reads a data file field by field. A field that begins with a double quote ends at the next
// quote that can close it; any other ends at a comma, at CR, CR LF or LF, or at the end of the
// file. A quote can close its field when a line end or the end of the file follows, or a comma
// and behind it a quote, a digit or a minus; so a name may hold quotes, commas and line ends.
class FieldReader {
public:
    // Fails as ByteWindow does.
    explicit FieldReader(const std::filesystem::path& path) : Window(path) {}

    // Whether the next field, quoted or not, begins with `start`, or is cut off by the end of the
    // file before that can be told.
    bool CanBegin(std::string_view start);

    // The next field as text; it stays valid until the next call. Fails (EndOfFile) when there
    // is none or the file ends before its closing quote, (Overflow) on one over 256 MiB.
    std::string_view ReadText();

    // The next field as number, quoted or not, rounded into the field type Whole. What the end of
    // the file cuts off is read as far as it stands. Fails (EndOfFile) when there is no field,
    // (Overflow) on a number that does not fit and on a field over 64 KiB.
    template <class Whole>
    Whole ReadNumber() {
        // Nearly every field of a file is a few digits and a line end.
        std::uint32_t digits = 0;
        const bool plain = TakeDigits(digits);
        if (plain && digits <= std::uint32_t{std::numeric_limits<Whole>::max()}) {
            return static_cast<Whole>(digits);
        }
        return Numbers::RoundInto<Whole>(plain ? digits : ReadValue());
    }

private:
    struct Field {
        std::string_view Text;
        bool Complete; // not cut off in front of its closing quote
    };

    bool TakeDigits(std::uint32_t& value);
    double ReadValue();
    Field ReadField(std::size_t limit);
    Field ReadQuoted(std::size_t limit);
    Field ReadBare(std::size_t limit);
    bool Closes(std::size_t quote);
    bool Has(std::size_t offset);
    std::string_view Take(std::size_t first, std::size_t end, std::size_t next);

    ByteWindow Window;
};
