#pragma once

#include "files/Files.h"
#include "text/Numbers.h"

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string_view>

// Reads a data file field by field. A field ends at a comma, CR, CR LF, LF or the end of the file.
// One that begins with a double quote ends at the next quote that is followed by a line end, the
// end of the file, or a comma and then a quote, digit or minus. So names may hold quotes, commas
// and line ends.
class FieldReader {
public:
    // Throws as ByteWindow does.
    explicit FieldReader(const std::filesystem::path& path) : Window(path) {}

    // Whether the next field, quoted or not, begins with `start`, as far as the file goes.
    bool CanBegin(std::string_view start);

    // Returns the next field as text, valid until the next call. Throws Failure if there is none,
    // if the file ends before its closing quote, or if it is longer than ByteWindow::LongestPiece.
    std::string_view ReadText();

    // Returns the next field, quoted or not, as a number rounded to a whole one. A number cut off
    // by the end of the file is what is left of it. Throws Failure if there is no field, if the
    // number does not fit `Whole`, or if the field is longer than 64 KiB.
    template <class Whole>
    Whole ReadNumber() {
        // The fast way for a few digits and a line end, as in nearly all fields.
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
        bool Complete; // has its closing quote, if it needs one
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
