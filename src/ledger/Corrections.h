#pragma once

#include "ledger/KillLedger.h"

// Deletions by the player. Monster names and imported turns stay: their reports are refused.
namespace Main {

// Clears the name, the total and all kills of a character, which frees the slot. Slots 1 to 99.
void DeleteCharacter(KillLedger& ledger, int character);

// Subtracts the character's kills of one monster from the total and sets them to 0. Throws Failure,
// with nothing changed, if the new total does not fit 32 bits.
void DeleteKills(KillLedger& ledger, int character, int monster);

} // namespace Main
