# Cross-compiles for Windows with Debian's MinGW.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Libraries for Windows only, not this system's own.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 $ENV{WINDOWS_QT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Version 12 warns of overlapping copies where std::string joins two texts; there are none.
set(CMAKE_CXX_FLAGS_INIT -Wno-restrict)

# No time stamp: the same sources make the same program.
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,--no-insert-timestamp)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -Wl,--no-insert-timestamp)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -Wl,--no-insert-timestamp)
