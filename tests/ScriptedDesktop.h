#pragma once

#include "Tables.h"
#include "app/Events.h"
#include "ledger/KillLedger.h"
#include "platform/Desktop.h"
#include "ui/ListViews.h"
#include "ui/Slaying_Tallies.h"
#include "ui/frmAbout.h"

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <random>

// A folder of the test's own, gone with all that is in it when the test ends. Its name has blanks
// and characters beyond every code page, so that every path in a test has.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            Path = std::filesystem::temp_directory_path() / u8"tallies \u00E4 \u6F22 ";
            Path += std::to_string(random());
        } while (!std::filesystem::create_directory(Path));
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(Path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path Write(const std::filesystem::path& name, std::string_view bytes) const {
        std::ofstream(Path / name, std::ios::binary) << bytes;
        return Path / name;
    }

    std::filesystem::path Path;
};

// A desktop without a screen: answers what it is asked from its queues and keeps a transcript.
// A dialog or a question without an answer in its queue is a fault.
struct ScriptedDesktop {
    std::deque<std::optional<std::filesystem::path>> Choices; // of file dialogs; nullopt cancels
    std::deque<Answer> Answers;                               // to questions
    Lines Transcript;
    std::string Clipboard;
    std::function<void()> WhileAsking; // runs while a dialog or a box stands open

    Desktop Services{.ShowMessage = [this](const Message& message) { return Show(message); },
                     .ShowOpen = [this](CommonDialog& dialog) { return Choose("Open", dialog); },
                     .ShowSave = [this](CommonDialog& dialog) { return Choose("Save", dialog); },
                     .ClipboardClear = [this] { Clipboard.clear(); },
                     .ClipboardSetText = [this](std::string_view text) { Clipboard += text; },
                     .LoadPicture = [](const auto&) { return std::string(); },
                     .LockWindowUpdate = [](const ListView*) {},
                     .AppPath = [] { return std::filesystem::path("/opt/tallies"); },
                     .CloseAllWindows = [this] { Transcript.emplace_back("Close"); }};

private:
    Answer Show(const Message& message) {
        const bool question = message.Choice == Buttons::YesNo;
        Ask("[" + message.Title + "] " + message.Prompt + (question ? " [Yes, No]" : "") +
            (message.Sign == Icon::Stop ? " [stop]" : "") +
            (message.Sign == Icon::Question ? " [question]" : ""));
        return question ? Next(Answers).value_or(Answer::No) : Answer::Ok;
    }
    bool Choose(const std::string& kind, CommonDialog& dialog) {
        Ask(kind + ": " + dialog.DialogTitle + " (" + dialog.Filter + ") " +
            std::to_string(dialog.Flags));
        const auto choice = Next(Choices).value_or(std::nullopt);
        dialog.FileName = choice.value_or(dialog.FileName);
        return choice.has_value();
    }
    void Ask(const std::string& line) {
        Transcript.push_back(line);
        Raise(WhileAsking);
    }
    template <class Reply>
    std::optional<Reply> Next(std::deque<Reply>& replies) {
        if (replies.empty()) {
            ADD_FAILURE() << "nothing scripted for " << Transcript.back();
            return std::nullopt;
        }
        const Reply reply = replies.front();
        replies.pop_front();
        return reply;
    }
};

// A message with the application's title, as it stands in a transcript.
inline std::string Box(const std::string& prompt) {
    return "[Marrowquill - Slaying Tallies] " + prompt;
}

// A running program: ledger and windows on a scripted desktop, started.
struct World {
    World() {
        Main::WireEvents(Ledger, Window, About, Screen.Services);
        Window.Window.Show();
    }

    // Imports one report, or all of a folder by a file in it, as the player does.
    void Import(const std::filesystem::path& report) {
        Screen.Choices.emplace_back(report);
        Window.mnuFileImport.Click();
    }
    void Batch(const std::filesystem::path& picked) {
        Screen.Choices.emplace_back(picked);
        Window.mnuFileBatch.Click();
    }
    // Imports a report with this text, in which '/' stands for a line end.
    void ImportText(std::string text) {
        std::replace(text.begin(), text.end(), '/', '\n');
        Import(Folder.Write("report.html", text));
    }

    void Refill() { Main::FillCharacterList(Ledger, Window, Screen.Services); }

    // All tallies, in slot order: "Aron: Rat 3, Bat 2 + Bela:". Cells of 0 are left out; a total
    // that is not the sum of its cells stands behind the name.
    [[nodiscard]] std::string Tallies() const {
        std::string tallies;
        for (int c = 1; c <= MaxCharacters; ++c) {
            std::string cells;
            std::int32_t sum = 0;
            for (int m = 1; m <= MaxMonsters; ++m) {
                if (const std::int32_t kills = Ledger.KillTable(c, m); kills != 0) {
                    cells += (sum == 0 ? " " : ", ") + Ledger.MonsterNames[m] + ' ';
                    cells += std::to_string(kills);
                    sum += kills;
                }
            }
            if (const std::string& name = Ledger.CharacterNames[c]; !name.empty()) {
                const std::int32_t total = Ledger.CharacterKills[c];
                tallies += (tallies.empty() ? "" : " + ") + name;
                tallies += (total == sum ? ":" : ' ' + std::to_string(total) + ':') + cells;
            }
        }
        return tallies;
    }
    // The monster names up to the last slot in use, with commas between them.
    [[nodiscard]] std::string Monsters() const {
        std::string names;
        for (int m = 1; m <= MaxMonsters; ++m) {
            names += (m == 1 ? "" : ",") + Ledger.MonsterNames[m];
        }
        return names.substr(0, names.find_last_not_of(',') + 1);
    }
    // What was shown in boxes, the dialogs left out; starts anew.
    Lines TakeBoxes() {
        std::erase_if(Screen.Transcript, [](const auto& line) { return line[0] != '['; });
        return std::exchange(Screen.Transcript, {});
    }

    TemporaryFolder Folder;
    ScriptedDesktop Screen;
    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    Slaying_Tallies Window;
    frmAbout About;
};
