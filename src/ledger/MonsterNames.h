#pragma once

#include "ledger/KillLedger.h"

#include <string_view>

namespace Main {

// Returns the slot of the monster `name`, 1 to 9999: the lowest one whose stored name is the same
// or its singular or plural. A stored plural is rewritten to the singular. A name that matches
// nothing is stored in the lowest free slot; if there is none, shows a message and returns 0.
// Throws Failure if a plural rule has to cut more characters than there are: on a `name` or stored
// name of one character, or, where both hold a blank, on a first word of one character. A rewrite
// done by then stays.
int ResolveMonster(KillLedger& ledger, const Desktop& desktop, std::string_view name);

} // namespace Main
