#pragma once

#include "ledger/KillLedger.h"

#include <filesystem>

// The ledger as a file: one field to a line, every slot from 1 up at a line of its own, CR LF
// throughout. docs/data-file.md has the format.
namespace Main {

// Writes the whole ledger. Until the new content is complete and on the disk, an old file of that
// name stays as it was. Fails (std::system_error) when it cannot be written.
void WriteDataFile(const KillLedger& ledger, const std::filesystem::path& path);

// Reads the fields of a file into the ledger, each as it comes, over the old value of its slot.
// False when the first field is no format mark; nothing has changed then.
// Fails with Failure EndOfFile when the file ends early, Overflow on a number that does not fit
// its field or a field too long, with std::system_error when the file cannot be read; the
// fields in front of that have their new values.
bool ReadDataFile(KillLedger& ledger, const std::filesystem::path& path);

} // namespace Main
