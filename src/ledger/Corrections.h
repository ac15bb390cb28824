#pragma once

#include "ledger/KillLedger.h"

// What the player takes out of the ledger by hand. Neither touches the monster names or the
// imported turns: a report stays refused when its kills are gone.
namespace Main {

// Frees a character's slot: name, total and row go together. Slots 1 to 99.
void DeleteCharacter(KillLedger& ledger, int character);

// Takes the character's kills of one monster out of the cell and the total. Fails (Overflow) when
// the total would leave 32 bits; nothing has changed then.
void DeleteKills(KillLedger& ledger, int character, int monster);

} // namespace Main
