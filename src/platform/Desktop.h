#pragma once

#include "platform/Controls.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

// Title of every message that gives none of its own, and of the main window.
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

// What leaves the process or blocks it. The skin fills it for real, tests with scripted answers.
struct Desktop {
    // Modal; gives the button pressed. A box closed without a button answers Ok or No.
    std::function<Answer(const Message&)> ShowMessage;

    // The open-file and the save-file dialog, modal. True when the player chose a file, which
    // then stands in FileName; false on a cancel. Neither asks about a file that is there.
    std::function<bool(CommonDialog&)> ShowOpen;
    std::function<bool(CommonDialog&)> ShowSave;

    // The system clipboard. Both fail when it cannot be opened.
    std::function<void()> ClipboardClear;
    std::function<void(std::string_view)> ClipboardSetText;

    // The bytes of a picture file; empty when it cannot be read.
    std::function<std::string(const std::filesystem::path&)> LoadPicture;

    // Stops the drawing of a list; with null, lets the one that is stopped draw again.
    std::function<void(ListView*)> LockWindowUpdate;

    // Folder of the running program.
    std::function<std::filesystem::path()> AppPath;

    // Closes every window of the program, which ends it.
    std::function<void()> CloseAllWindows;
};
