#pragma once

#include <cerrno>
#include <functional>
#include <string_view>
#include <utility>

// A call of the program to the system about a file.
struct SystemCall {
    std::string_view Name;
    int Handle = -1;
    std::string_view Path;  // to open, look at or rename
    std::string_view Other; // the new name; the bytes to write
    int Flags = 0;          // of an open
};

// What a test does in place of each call: makes it, or fails it. It does not see its own calls.
using Intervention = std::function<long(const SystemCall& call, const std::function<long()>& make)>;

struct Intervene {
    explicit Intervene(Intervention intervention) { Current = std::move(intervention); }
    ~Intervene() { Current = nullptr; }

    inline static Intervention Current;
};

inline long FailWith(int errorNumber) {
    errno = errorNumber;
    return -1;
}
