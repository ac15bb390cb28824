#pragma once

#include "text/Failure.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

// Numbers as they are read from reports, number boxes and data files, and as they are shown.
namespace Numbers {

// The value of the longest decimal number (sign, digits, fraction, exponent) at the start of
// `text`; blanks, tabs and line feeds are skipped wherever they stand. 0 without such a number.
// A magnitude too small for a double is 0; one too large is a failure (Overflow).
double Read(std::string_view text);

// Whether the whole of `text`, blanks around it aside, is one such number.
bool IsNumber(std::string_view text);

// `value` as whole number of the field type Whole, a tie going to the even neighbour.
// Rounded first, then tested: fails (Overflow) when the rounded value does not fit.
template <class Whole>
Whole RoundInto(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Whole>::min() &&
          rounded <= std::numeric_limits<Whole>::max())) {
        throw Failure(Failure::Kind::Overflow, "a number that does not fit its field");
    }
    return static_cast<Whole>(rounded);
}

// Plain digits: fixed notation, the fewest digits that read back as the same value.
std::string PlainDigits(double value);

// Number text of the lists: the digits behind one blank, or behind the minus sign in its place.
std::string NumberText(std::int32_t value);

} // namespace Numbers
