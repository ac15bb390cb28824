#pragma once

#include "Compare.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>

// What floors are made of: the system's own calls, and plain loops.
namespace Bare {

// Reads a file to its end into `buffer`, again and again, and passes each piece to `visit`.
template <class Visit>
void Read(const std::filesystem::path& path, std::string& buffer, Visit visit) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    Bench::Require(file >= 0, "a file that cannot be opened");
    ssize_t count = 0;
    while ((count = ::read(file, buffer.data(), buffer.size())) > 0) {
        visit(std::string_view(buffer.data(), static_cast<std::size_t>(count)));
    }
    ::close(file);
}

// Passes each line of `text`, its end mark included, to `visit`.
template <class Visit>
void ForEachLine(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        visit(text.substr(0, size));
        text.remove_prefix(size);
    }
}

// Returns the highest slot from 1 to `last` that holds the name, else 0.
template <class Table>
[[gnu::noinline]] int Walk(const Table& table, int last, const std::string& name) {
    int found = 0;
    for (int slot = 1; slot <= last; ++slot) {
        if (table[slot] == name) {
            found = slot;
        }
    }
    return found;
}

} // namespace Bare
