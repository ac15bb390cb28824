#pragma once

#include <stdexcept>

// Thrown by the program's own checks. Ends the running command without a message; what was done
// before stays done. Only a debugger shows the text.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};
