#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

namespace Main {

// At every opening: takes the picture anew from graphics/marrowquill.gif beside the program, in
// place of the window's own, which shows when that is missing or no picture.
void frmAbout_Load(const KillLedger& ledger, frmAbout& about, const Desktop& desktop);

// At every closing: sees to it that the main window can be used.
void frmAbout_Unload(Slaying_Tallies& window);

} // namespace Main
