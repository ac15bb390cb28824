#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <xcb/xcb.h>

// A view of the X display from outside the program: what can be told of a window without its help.
class Screen {
public:
    // Connects to the display of the environment and paints its bare ground in a colour that no
    // window has. Fails (std::runtime_error) without a display.
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // Whether a window with this title shows and has painted itself: not a point of its right
    // edge has the colour of the ground any more. A window comes up without a ground of its own,
    // so that whatever lay there stays until it paints.
    bool IsPainted(const std::string& title) const;

private:
    std::optional<xcb_window_t> Find(const std::string& title) const;

    xcb_connection_t* Connection;
    xcb_window_t Root = 0;
};

// A process started here, ended with its object.
class Process {
public:
    // Without arguments but `argument`, if it is not empty. Its output goes to a pipe.
    Process(const std::filesystem::path& program, const std::string& argument = {});
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    // The next line of its output, without the line end. Fails when it ends without one.
    std::string ReadLine() const;

    // The most memory that it held at any moment so far.
    double PeakMebibytes() const;

private:
    pid_t Id = 0;
    int Output = -1;
};
