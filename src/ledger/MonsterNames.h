#pragma once

#include "ledger/KillLedger.h"

#include <string_view>

namespace Main {

// The slot of the monster `name`, 1 to 9999. Walks the whole table: an exact match or the first
// plural rule that fires on the lowest slot settles it, and a rule can rewrite the stored name
// to its singular. A name that matches nothing takes the lowest empty slot; 0, with a message,
// when there is none.
// Fails (InvalidArgument) when a rule has to cut more from a name than it holds: `name` or a
// stored name of one character, a word of one character before the first blank where both names
// hold a blank. Rewrites made by then stay.
int ResolveMonster(KillLedger& ledger, const Desktop& desktop, std::string_view name);

} // namespace Main
