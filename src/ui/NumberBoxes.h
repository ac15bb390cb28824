#pragma once

#include "controls/Controls.h"

#include <cstdint>

// What Enter or the loss of the focus does to the text of a number box. A number of 0 or less
// empties the box.
namespace Main {

// Game and party: stores the rounded number in the field and shows it. If it does not fit, the
// field stays and the box shows the field again.
void CommitNumber(std::int16_t& field, TextBox& box);

// Turn start and end: shows the number in its shortest form, with its fraction. A number beyond the
// range of a double stays as typed.
void CommitTurn(TextBox& box);

} // namespace Main
