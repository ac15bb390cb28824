#pragma once

#include "ledger/KillLedger.h"

#include <cstddef>
#include <string_view>

namespace Main {

// Credits the clauses of one kill sentence, 26 at most; the 26th shows a message with `TurnNumber`.
// `KillPosition` and `ColonPosition` are the positions, from 1, of the first "killing" and the
// first ":". Throws Failure if a clause's only separator ends its first word ("3, 2 Rats"), if a
// count is beyond the range of a double, and as ResolveMonster and CreditKills do. Clauses credited
// before stay credited.
void ParseKillSentence(KillLedger& ledger, const Desktop& desktop, std::string_view sentence,
                       std::size_t KillPosition, std::size_t ColonPosition, bool CrowdFlag,
                       double TurnNumber);

// Returns the position of the first digit, or 0 if there is none or all digits are zeros.
std::size_t FirstDigitPosition(std::string_view text);

} // namespace Main
