#pragma once

#include "controls/Controls.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

// Title of the main window, and of every message that has none of its own.
constexpr std::string_view ApplicationTitle = "Marrowquill - Slaying Tallies";

enum class Buttons { Ok, YesNo };
enum class Icon { None, Question, Stop };
enum class Answer { Ok, Yes, No };

struct Message {
    std::string Prompt;
    std::string Title{ApplicationTitle};
    Buttons Choice = Buttons::Ok;
    Icon Sign = Icon::None;
};

// All that leaves the process or blocks it. The skin has the real one, tests have a scripted one.
struct Desktop {
    // Modal; returns the button pressed. A box that is closed without a button answers Ok or No.
    std::function<Answer(const Message&)> ShowMessage;

    // The open-file and the save-file dialog, modal. Return true and set FileName and Folder when
    // the player chose a file, false on a cancel. Neither asks before a file is overwritten.
    std::function<bool(CommonDialog&)> ShowOpen;
    std::function<bool(CommonDialog&)> ShowSave;

    // The system clipboard. Both throw when it cannot be opened.
    std::function<void()> ClipboardClear;
    std::function<void(std::string_view)> ClipboardSetText;

    // Returns the bytes of a picture file, none if it cannot be read.
    std::function<std::string(const std::filesystem::path&)> LoadPicture;

    // Stops the drawing of a list; null lets it draw again.
    std::function<void(ListView*)> LockWindowUpdate;

    // The folder of the running program.
    std::function<std::filesystem::path()> AppPath;

    // Closes every window of the program, which ends it.
    std::function<void()> CloseAllWindows;
};
