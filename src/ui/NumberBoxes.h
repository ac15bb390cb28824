#pragma once

#include "platform/Controls.h"

#include <cstdint>

// What the number boxes do to what the player typed, once he commits it with Enter or by leaving
// the box. A text that reads as 0 or less empties the box.
namespace Main {

// Game and party: the number is rounded into the field and shown. A number above 32,767 is
// refused: the field stays, and the box shows it again.
void CommitNumber(std::int16_t& field, TextBox& box);

// Turn start and end: the number is shown in its shortest form, its fraction included. A text
// beyond every range stays as it is.
void CommitTurn(TextBox& box);

} // namespace Main
