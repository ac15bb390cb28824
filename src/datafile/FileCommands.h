#pragma once

#include "ledger/KillLedger.h"
#include "ui/Slaying_Tallies.h"

// The entries of the File menu that blank, open and save the data. A failed load or save ends
// without a message.
namespace Main {

// Blanks all data, if the player is sure. The open file stays the target of a plain save.
void mnuFileNew_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Loads a file that the player chooses; asks first when imported work was not saved. Boxes and
// lists then show the ledger, however the load ended.
void mnuFileOpen_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Saves to the open file without a question, or like mnuFileSaveAs_Click when there is none.
void mnuFileSave_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

// Saves to a file that the player chooses; asks first when it is there.
void mnuFileSaveAs_Click(KillLedger& ledger, Slaying_Tallies& window, const Desktop& desktop);

} // namespace Main
