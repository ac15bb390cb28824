#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

namespace Main {

// Start-up of the main window: the flags of the ledger, the about window, the columns of the
// lists.
void Form_Load(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
               const Desktop& desktop);

// Wires each control of the two windows to its routine. All four must outlive the wiring.
void WireEvents(KillLedger& ledger, Slaying_Tallies& window, frmAbout& about,
                const Desktop& desktop);

} // namespace Main
