#pragma once

#include "platform/Desktop.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace modHashing {

// The fingerprint text of a file: the MD5 digest of its leading `byteLimit` bytes, 3 MiB at most.
// "" for a file that cannot be opened; "-1" when reading it fails, behind a box with the
// system's own words and the failure's number as title. Never fails. Opens the file under a
// handle of its own.
std::string HashFile(const Desktop& desktop, const std::filesystem::path& path,
                     std::int32_t byteLimit);

} // namespace modHashing
