#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The entries of the File menu that blank, open and save the data.
namespace Main {

// Blanks all data after a Yes. DataFilePath stays, so a plain save writes over that file.
void mnuFileNew_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Loads a file chosen by the player; asks first if imports are not saved. Then updates boxes and
// lists, even after a failed or cancelled load.
void mnuFileOpen_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Saves to DataFilePath, or as mnuFileSaveAs_Click if that is not set. Throws if the save fails.
void mnuFileSave_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Saves to a file chosen by the player; asks before it overwrites one. Throws if the save fails.
void mnuFileSaveAs_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

} // namespace Main
