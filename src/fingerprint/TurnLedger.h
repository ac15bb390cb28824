#pragma once

#include "ledger/KillLedger.h"

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace Main {

// Whether the file can be opened for reading at this moment. Never fails; says no to what is not
// a plain file, without waiting for it.
bool FileExists(const std::filesystem::path& path);

// The slot of the imported turns that holds this size and fingerprint text, 0 when none does.
// The highest slot wins.
int FindTurnRecord(const KillLedger& ledger, std::int32_t fileLength, std::string_view fingerprint);

} // namespace Main
