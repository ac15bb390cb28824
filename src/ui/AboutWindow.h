#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

namespace Main {

// Runs each time the window opens. Loads graphics/marrowquill.gif from the folder of the program;
// if that is missing or not a picture, the built-in picture is shown.
void frmAbout_Load(const KillLedger& ledger, frmAbout& about, const Desktop& desktop);

// Runs each time the window closes. Enables the main window if it is disabled.
void frmAbout_Unload(Slaying_Tallies& window);

} // namespace Main
