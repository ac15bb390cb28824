#include "Screen.h"

#include "Rows.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::uint32_t GroundColour = 0xFF00FE;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <class Reply>
std::unique_ptr<Reply, Free> Own(Reply* reply) {
    return std::unique_ptr<Reply, Free>(reply);
}

} // namespace

Screen::Screen() : Connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(Connection) != 0) {
        xcb_disconnect(Connection);
        throw std::runtime_error("no X display to measure windows on");
    }
    Root = xcb_setup_roots_iterator(xcb_get_setup(Connection)).data->root;
    xcb_change_window_attributes(Connection, Root, XCB_CW_BACK_PIXEL, &GroundColour);
    xcb_clear_area(Connection, 0, Root, 0, 0, 0, 0);
    xcb_flush(Connection);
}

Screen::~Screen() {
    xcb_disconnect(Connection);
}

std::optional<xcb_window_t> Screen::Find(const std::string& title) const {
    const auto tree =
        Own(xcb_query_tree_reply(Connection, xcb_query_tree(Connection, Root), nullptr));
    if (!tree) {
        return std::nullopt;
    }
    const xcb_window_t* const windows = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const auto name =
            Own(xcb_get_property_reply(Connection,
                                       xcb_get_property(Connection, 0, windows[i], XCB_ATOM_WM_NAME,
                                                        XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
                                       nullptr));
        if (name &&
            title == std::string_view(
                         static_cast<const char*>(xcb_get_property_value(name.get())),
                         static_cast<std::size_t>(xcb_get_property_value_length(name.get())))) {
            return windows[i];
        }
    }
    return std::nullopt;
}

bool Screen::IsPainted(const std::string& title) const {
    const auto window = Find(title);
    if (!window) {
        return false;
    }
    const auto attributes = Own(xcb_get_window_attributes_reply(
        Connection, xcb_get_window_attributes(Connection, *window), nullptr));
    const auto place =
        Own(xcb_get_geometry_reply(Connection, xcb_get_geometry(Connection, *window), nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !place) {
        return false;
    }
    const auto edge = Own(
        xcb_get_image_reply(Connection,
                            xcb_get_image(Connection, XCB_IMAGE_FORMAT_Z_PIXMAP, Root,
                                          static_cast<std::int16_t>(place->x + place->width - 2),
                                          place->y, 1, place->height, ~0U),
                            nullptr));
    if (!edge) {
        return false;
    }
    const std::uint8_t* const bytes = xcb_get_image_data(edge.get());
    for (int at = 0; at + 4 <= xcb_get_image_data_length(edge.get()); at += 4) {
        std::uint32_t colour = 0;
        std::memcpy(&colour, bytes + at, sizeof colour);
        if ((colour & 0xFFFFFF) == GroundColour) {
            return false;
        }
    }
    return true;
}

Process::Process(const std::filesystem::path& program, const std::string& argument) {
    std::array<int, 2> pipe{};
    Bench::Require(::pipe2(pipe.data(), O_CLOEXEC) == 0, "a pipe");
    Output = pipe[0];
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    std::string name = program.string();
    std::string given = argument;
    const std::array<char*, 3> arguments = {name.data(), given.empty() ? nullptr : given.data(),
                                            nullptr};
    const int failed =
        ::posix_spawn(&Id, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipe[1]);
    Bench::Require(failed == 0, "a process");
}

Process::~Process() {
    ::kill(Id, SIGTERM);
    ::waitpid(Id, nullptr, 0);
    ::close(Output);
}

std::string Process::ReadLine() const {
    std::string line;
    char next = 0;
    while (::read(Output, &next, 1) == 1) {
        if (next == '\n') {
            return line;
        }
        line += next;
    }
    throw std::runtime_error("a process that ended early");
}

double Process::PeakMebibytes() const {
    std::ifstream status("/proc/" + std::to_string(Id) + "/status");
    constexpr std::string_view peak = "VmHWM:";
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with(peak)) {
            return std::stod(line.substr(peak.size())) / 1024;
        }
    }
    throw std::runtime_error("a process without a peak of memory");
}
