#pragma once

#include "ledger/KillLedger.h"

#include <cstddef>
#include <string_view>

namespace Main {

// Credits the clauses of one kill sentence. `killPosition` and `colonPosition` are those of its
// first "killing" and first ":", from 1 on; `turnNumber` stands in the message of the limit of
// 26 clauses. Fails (InvalidArgument) on a clause whose only separator went with its first word,
// (Overflow) on a count beyond every range, and as ResolveMonster and CreditKills do; the clauses
// in front of that stay credited.
void ParseKillSentence(KillLedger& ledger, const Desktop& desktop, std::string_view sentence,
                       std::size_t killPosition, std::size_t colonPosition, bool crowdFlag,
                       double turnNumber);

// Position of the first digit, or 0. A text whose only digits are zeros counts as having none.
std::size_t FirstDigitPosition(std::string_view text);

} // namespace Main
