#pragma once

#include "ui/Slaying_Tallies.h"

#include <string_view>

// How a command that can take long shows that it is at work.
namespace Main {

// Shows `text` in the status label, at once, then the hourglass.
void ShowStatus(Slaying_Tallies& window, std::string_view text);

// Puts the pointer back, then empties the status label, at once.
void ClearStatus(Slaying_Tallies& window);

} // namespace Main
