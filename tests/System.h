#pragma once

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <vector>

// What the system at hand has in the place of plain files, also in `folder`, where it is made.
// Each system has its own file of tests, which tells.
std::vector<std::filesystem::path> NoPlainFiles(const std::filesystem::path& folder);

// Files in a folder: a save must not leave any of its own.
inline std::size_t FilesIn(const std::filesystem::path& folder) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}
