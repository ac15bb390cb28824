#include "Fuzzing.h"
#include "text/Numbers.h"

#include <cmath>
#include <optional>

namespace {

// What reading or rounding gives; nothing for a failure.
template <class Read>
auto Outcome(Read read) -> std::optional<decltype(read())> {
    try {
        return read();
    } catch (const Failure&) {
    } catch (const CannotGoOn&) {
    }
    return std::nullopt;
}

template <class Whole>
void RoundsAlike(double value) {
    using Limits = std::numeric_limits<Whole>;
    Require(Outcome([&] { return int{Numbers::RoundInto<Whole>(value)}; }) ==
                Outcome([&] { return Twin::Round(value, Limits::min(), Limits::max()); }),
            "rounds to the even neighbour, or fails");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = Compose(Bytes(data, size));
    const auto value = Outcome([&] { return Numbers::Read(text); });
    Require(value == Outcome([&] { return Twin::ReadNumber(text); }), "reads what the twin reads");
    if (value) {
        RoundsAlike<std::int16_t>(*value);
        RoundsAlike<std::int32_t>(*value);
        const std::string digits = Numbers::PlainDigits(*value);
        Require(Numbers::IsNumber(digits), "plain digits are a number");
        Require(digits.find_first_not_of("-.0123456789") == std::string::npos, "plain digits");
        Require(Numbers::Read(digits) == *value, "plain digits read back");
    }
    return 0;
}
