#include "text/Numbers.h"

#include "text/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <system_error>

namespace Numbers {
namespace {

bool IsSkipped(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

// Length of the longest decimal number at the start of `text`, with nothing to skip in it.
std::size_t NumberLength(std::string_view text) {
    const auto digitsFrom = [text](std::size_t at) {
        while (at < text.size() && Text::IsDigit(text[at])) {
            ++at;
        }
        return at;
    };
    const auto isAt = [text](std::size_t at, std::string_view any) {
        return at < text.size() && any.find(text[at]) != std::string_view::npos;
    };

    const std::size_t start = isAt(0, "+-") ? 1 : 0;
    std::size_t end = digitsFrom(start);
    std::size_t digits = end - start;
    if (isAt(end, ".")) {
        const std::size_t fractionEnd = digitsFrom(end + 1);
        digits += fractionEnd - (end + 1);
        end = fractionEnd;
    }
    if (digits == 0) {
        return 0;
    }
    if (isAt(end, "eE")) {
        const std::size_t exponent = end + (isAt(end + 1, "+-") ? 2 : 1);
        const std::size_t exponentEnd = digitsFrom(exponent);
        if (exponentEnd > exponent) {
            end = exponentEnd;
        }
    }
    return end;
}

// Whether a number beyond the range of a double is too small and not too large; from_chars reports
// both alike. Decided by the power of ten of the first digit that is not 0.
bool IsTooSmall(std::string_view number) {
    const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
    const std::size_t point = std::min(number.find('.'), mantissaEnd);
    const std::size_t leading = number.find_first_of("123456789");
    const double power = static_cast<double>(point) - static_cast<double>(leading);

    std::string_view exponent = number.substr(std::min(mantissaEnd + 1, number.size()));
    const bool negative = exponent.starts_with('-');
    double exponentValue = 0;
    for (const char c : exponent) {
        if (Text::IsDigit(c)) {
            exponentValue = std::min(exponentValue * 10 + (c - '0'), 1e15);
        }
    }
    return power + (negative ? -exponentValue : exponentValue) < 0;
}

double Convert(std::string_view number) {
    const bool negative = number.starts_with('-');
    if (negative || number.starts_with('+')) {
        number.remove_prefix(1);
    }
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range) {
        if (!IsTooSmall(number)) {
            throw Failure("a number beyond the range of a double");
        }
        value = 0;
    }
    return negative ? -value : value;
}

} // namespace

double Read(std::string_view text) {
    if (std::none_of(text.begin(), text.end(), IsSkipped)) {
        return Convert(text.substr(0, NumberLength(text)));
    }
    std::string dense;
    std::remove_copy_if(text.begin(), text.end(), std::back_inserter(dense), IsSkipped);
    return Convert(std::string_view(dense).substr(0, NumberLength(dense)));
}

bool IsNumber(std::string_view text) {
    const std::string_view number = Text::Trim(text);
    return !number.empty() && NumberLength(number) == number.size();
}

std::string PlainDigits(double value) {
    // The longest is the smallest double: a sign, "0.", 323 zeros and its digits.
    std::array<char, 400> digits{};
    const double shown = value == 0 ? 0 : value; // no -0
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), shown,
                                            std::chars_format::fixed);
    return {digits.data(), end};
}

std::string NumberText(std::int32_t value) {
    return (value < 0 ? "" : " ") + std::to_string(value);
}

} // namespace Numbers
