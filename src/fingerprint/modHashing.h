#pragma once

#include "controls/Desktop.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace modHashing {

// Returns the fingerprint of a file: the MD5 digest of its first `byteLimit` bytes, at most 3 MiB.
// Returns "" if the file cannot be opened. If it cannot be read, shows the system's description of
// the error, with its number as the title, and returns "-1". Never throws.
std::string HashFile(const Desktop& desktop, const std::filesystem::path& path,
                     std::int32_t byteLimit);

} // namespace modHashing
