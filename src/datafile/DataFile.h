#pragma once

#include "ledger/KillLedger.h"

#include <filesystem>

// The ledger as a file. docs/data-file.md has the format.
namespace Main {

// Writes the whole ledger. An old file stays as it was until the new one is complete and on the
// disk. Throws std::system_error if it cannot be written.
void WriteDataFile(const KillLedger& ledger, const std::filesystem::path& path);

// Reads all fields of a file into the ledger. Returns false, with nothing changed, if the first one
// is not a format mark. Throws Failure if the file ends early, a number does not fit its field or a
// field is too long, std::system_error if the file cannot be read; earlier fields are new then.
bool ReadDataFile(KillLedger& ledger, const std::filesystem::path& path);

} // namespace Main
