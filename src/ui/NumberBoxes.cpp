#include "ui/NumberBoxes.h"

#include "text/Numbers.h"

namespace Main {

void CommitNumber(std::int16_t& field, TextBox& box) {
    try {
        const double value = Numbers::Read(box.Text.Get());
        if (value > 0) {
            field = Numbers::RoundInto<std::int16_t>(value);
            box.Text = Numbers::PlainDigits(field);
        } else {
            field = 0;
            box.Text = "";
        }
    } catch (const Failure&) {
        box.Text = field == 0 ? "" : Numbers::PlainDigits(field);
    }
}

void CommitTurn(TextBox& box) {
    try {
        const double value = Numbers::Read(box.Text.Get());
        box.Text = value > 0 ? Numbers::PlainDigits(value) : "";
    } catch (const Failure&) {
        // stays as typed
    }
}

} // namespace Main
