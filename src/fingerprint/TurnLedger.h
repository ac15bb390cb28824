#pragma once

#include "ledger/KillLedger.h"

#include <cstdint>
#include <string_view>

namespace Main {

// Returns the highest slot with this length in bytes and this fingerprint, 0 if there is none.
int FindTurnRecord(const KillLedger& ledger, std::int32_t fileLength, std::string_view fingerprint);

} // namespace Main
