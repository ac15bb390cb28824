#pragma once

#include "text/Failure.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

// Numbers as read from reports, number boxes and data files, and as shown.
namespace Numbers {

// Returns the longest decimal number (sign, digits, fraction, exponent) at the start of `text`, or
// 0 if there is none. Blanks, tabs and line feeds are skipped anywhere. A number too small for a
// double is 0; one too large throws Failure.
double Read(std::string_view text);

// Whether all of `text` is one such number, with or without blanks around it.
bool IsNumber(std::string_view text);

// Rounds to a whole number, ties to even. Throws Failure if the result does not fit `Whole`.
template <class Whole>
Whole RoundInto(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Whole>::min() &&
          rounded <= std::numeric_limits<Whole>::max())) {
        throw Failure("a number too large for its field");
    }
    return static_cast<Whole>(rounded);
}

// Returns `value` in fixed notation, with the fewest digits that read back as the same value.
std::string PlainDigits(double value);

// Returns the digits after one blank, or after a minus sign in its place. The lists show this.
std::string NumberText(std::int32_t value);

} // namespace Numbers
