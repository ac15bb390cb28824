#pragma once

#include "ui/Slaying_Tallies.h"

#include <string_view>

// How a command that can take long shows that it is running.
namespace Main {

// Shows `text` in the status label and repaints it now; then shows the hourglass.
void ShowStatus(Slaying_Tallies& window, std::string_view text);

// Resets the pointer; then empties the status label and repaints it now.
void ClearStatus(Slaying_Tallies& window);

} // namespace Main
