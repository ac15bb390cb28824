#pragma once

#include <stdexcept>

// A failure of the system's own. It travels up to the one trap of the command that is running;
// what was done before it stays done. The player never sees its words, a debugger does.
struct Failure : std::runtime_error {
    enum class Kind { Overflow, InvalidArgument, EndOfFile };

    Failure(Kind reason, const char* words) : std::runtime_error(words), Reason(reason) {}

    Kind Reason;
};
