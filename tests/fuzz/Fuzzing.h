#pragma once

#include "Twin.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Ends the run, and keeps the input, when there is something wrong to tell.
inline void RequireNothing(const std::string& wrong) {
    if (!wrong.empty()) {
        std::fprintf(stderr, "PROPERTY BROKEN: %s\n", wrong.c_str());
        std::abort();
    }
}
inline void Require(bool holds, const char* property) {
    RequireNothing(holds ? "" : property);
}

inline std::string_view Bytes(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// A file of this process, in the folder for temporary files.
inline std::filesystem::path Scratch(const char* name) {
    return std::filesystem::temp_directory_path() / (name + std::to_string(::getpid()));
}
