#pragma once

#include "ledger/KillLedger.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace Main {

// Whether `path` is a regular file that can be opened for reading now. Never throws.
bool FileExists(const std::filesystem::path& path);

// Returns the highest slot of the imported turns with this length in bytes and this fingerprint, or
// 0 if there is none.
int FindTurnRecord(const KillLedger& ledger, std::int32_t fileLength, std::string_view fingerprint);

} // namespace Main
