#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <vector>

// Creates in `folder` what this system has that is no regular file, or hidden, and returns paths
// that cannot be opened as regular files. Defined by the tests of each system.
std::vector<std::filesystem::path> NoRegularFiles(const std::filesystem::path& folder);

// The number of files in a folder: a save must leave no temporary ones.
inline std::size_t FilesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}
