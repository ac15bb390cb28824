#pragma once

#include "Tables.h"
#include "app/Events.h"
#include "controls/Desktop.h"
#include "ledger/KillLedger.h"
#include "ui/ListViews.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <random>

// A folder that is removed with its content when the test ends. Its name has blanks and characters
// that no code page holds, so every path in a test has them.
class TemporaryFolder {
public:
    TemporaryFolder() {
        Path = std::filesystem::temp_directory_path() / u8"tallies \u00E4 \u6F22 ";
        Path += std::to_string(std::random_device()());
        std::filesystem::create_directory(Path);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }

    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const {
        std::ofstream(Path / name, std::ios::binary) << bytes;
        return Path / name;
    }

    std::filesystem::path Path;
};

inline std::string ReadAll(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(bytes).str();
}

// A desktop without a screen. It answers from its queues and keeps a transcript of what it was
// asked. A dialog or question that finds its queue empty is a test failure.
struct ScriptedDesktop {
    std::deque<std::optional<std::filesystem::path>> Choices; // of file dialogs; nullopt cancels
    std::deque<Answer> Answers;                               // to questions
    Lines Transcript;
    std::string Clipboard;

    Desktop Services{.ShowMessage = [this](const Message& message) { return Show(message); },
                     .ShowOpen = [this](CommonDialog& dialog) { return Choose("Open", dialog); },
                     .ShowSave = [this](CommonDialog& dialog) { return Choose("Save", dialog); },
                     .ClipboardClear = [this] { Clipboard.clear(); },
                     .ClipboardSetText = [this](std::string_view text) { Clipboard += text; },
                     .LoadPicture = [](const auto& path) { return path.generic_string(); },
                     .LockWindowUpdate = [](const ListView*) {},
                     .AppPath = [] { return std::filesystem::path("/opt/tallies"); }};

private:
    Answer Show(const Message& message) {
        const bool question = message.Choice == Buttons::YesNo;
        const Lines signs = {"", " [question]", " [stop]"};
        Transcript.push_back("[" + message.Title + "] " + message.Prompt +
                             (question ? " [Yes, No]" : "") +
                             signs.at(static_cast<std::size_t>(message.Sign)));
        return question ? Next(Answers) : Answer::Ok;
    }
    bool Choose(const std::string& kind, CommonDialog& dialog) {
        const Lines filter = Fields(dialog.Filter, '|');
        Transcript.push_back(kind + ": " + dialog.DialogTitle + " [" + filter.at(0) + "] [" +
                             filter.at(1) + "] " + std::to_string(dialog.Flags) +
                             (kind == "Save" ? dialog.FileName.string() : ""));
        const auto choice = Next(Choices);
        dialog.FileName = choice.value_or(dialog.FileName);
        return choice.has_value();
    }
    template <class Reply>
    Reply Next(std::deque<Reply>& replies) {
        EXPECT_FALSE(replies.empty()) << "nothing scripted for " << Transcript.back();
        replies.resize(std::max(replies.size(), std::size_t{1}));
        Reply reply = replies.front();
        replies.pop_front();
        return reply;
    }
};

inline std::string Box(const std::string& prompt) {
    return "[Marrowquill - Slaying Tallies] " + prompt;
}

// A running program: ledger and windows on a scripted desktop, started.
struct World {
    World() {
        Main::WireEvents(Ledger, Window, About, Screen.Services);
        Window.Window.Show();
        Window.lblStatus.Repaint = [this] { Shown += '[' + Window.lblStatus.Caption.Get() + ']'; };
        Window.Window.MousePointer.Changed = [this] {
            Shown += Window.Window.MousePointer.Get() == Pointer::Hourglass ? " busy" : " free";
        };
        Window.txtGame.Repaint = [this] { Shown += " game " + Window.txtGame.Text.Get(); };
        Window.txtParty.Repaint = [this] { Shown += " party " + Window.txtParty.Text.Get(); };
        // A refill switches the list off first.
        Window.lstCharacters.Enabled.Changed = [this] {
            Shown += Window.lstCharacters.Enabled.Get() ? "" : " refill";
        };
    }

    // Imports one report, or all reports of a folder by a file in it, as the player does.
    void Import(const std::filesystem::path& report) {
        Screen.Choices.emplace_back(report);
        Window.mnuFileImport.Click();
    }
    void Batch(const std::filesystem::path& picked) {
        Screen.Choices.emplace_back(picked);
        Window.mnuFileBatch.Click();
    }
    // Imports a report with this text, in which '/' is a line end.
    void ImportText(std::string text) {
        std::replace(text.begin(), text.end(), '/', '\n');
        Import(Folder.Write("report.html", text));
    }

    // All tallies, in slot order: "Aron: Rat 3, Bat 2 + Bela:". Cells of 0 are left out; a total
    // that is not the sum of its cells follows the name.
    [[nodiscard]] std::string Tallies() const {
        std::string tallies;
        for (int c = 1; c <= MaxCharacters; ++c) {
            if (Ledger.CharacterNames[c].empty()) {
                continue;
            }
            std::string cells;
            std::int64_t sum = 0;
            for (int m = 1; m <= MaxMonsters; ++m) {
                if (const std::int32_t kills = Ledger.KillTable(c, m); kills != 0) {
                    cells += (cells.empty() ? " " : ", ") + Ledger.MonsterNames[m] + ' ' +
                             std::to_string(kills);
                    sum += kills;
                }
            }
            const std::int32_t total = Ledger.CharacterKills[c];
            tallies += (tallies.empty() ? "" : " + ") + Ledger.CharacterNames[c] +
                       (total == sum ? ":" : ' ' + std::to_string(total) + ':') + cells;
        }
        return tallies;
    }
    Lines TakeBoxes() {
        std::erase_if(Screen.Transcript, [](const auto& line) { return line[0] != '['; });
        return std::exchange(Screen.Transcript, {});
    }
    // What was shown since the last call: status and boxes when painted, the pointer, refills.
    std::string TakeShown() { return std::exchange(Shown, {}); }

    TemporaryFolder Folder;
    ScriptedDesktop Screen;
    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    Slaying_Tallies Window;
    frmAbout About;

private:
    std::string Shown;
};
