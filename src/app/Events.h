#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

namespace Main {

// Sets the ledger's ApplicationPath, shows the about window and adds the columns of the lists.
void Form_Load(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
               const Desktop& desktop);

// Connects the controls of both windows to their routines. The windows refer to all four arguments.
void WireEvents(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
                const Desktop& desktop);

} // namespace Main
