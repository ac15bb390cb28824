#pragma once

#include <filesystem>

// The new files that saves write beside their targets.
namespace NewFiles {

// A name for one, not yet taken by any other of this process when `attempt` is not.
std::filesystem::path Name(unsigned long process, int attempt);

// Removes those that saves that were killed left in a folder. One younger than a day may still be
// written to, maybe by another machine, where its process number tells nothing.
void Sweep(const std::filesystem::path& folder);

} // namespace NewFiles
