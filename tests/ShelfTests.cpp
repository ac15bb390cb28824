#include "ScriptedDesktop.h"

#include <set>

namespace {

// What a file leaves of the ledger, and what the player is told.
std::string Left(const std::filesystem::path& file) {
    World world;
    if (file.extension() == ".qvt") {
        world.ImportText("Party# 0098 of game:  99/Old: killing 1 Rat//");
        world.Ledger.DataChanged = 0;
        world.Screen.Choices = {file};
        world.Window.mnuFileOpen.Click();
    } else {
        world.Import(file);
    }
    EXPECT_TRUE(world.TakeShown().find(" free[]") != std::string::npos) << file;
    std::string left = world.State();
    std::replace_if(
        left.begin(), left.end(), [](unsigned char c) { return c < ' ' || c > '~' || c == '|'; },
        '?');
    for (const std::string& box : world.TakeBoxes()) {
        left += '\n' + box;
    }
    return left;
}

} // namespace

TEST(Shelf, LeavesWhatItsPageSays) {
    const TemporaryFolder folder;
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(SHELF_FOLDER)) {
        files.insert(file.path().filename().string());
    }
    for (const Lines& row : Cases(SHELF_FOLDER "/README.md")) {
        auto file = std::filesystem::path(SHELF_FOLDER) / row[0];
        if (files.erase(row[0]) == 0) { // it is the text of a report
            std::string text = row[0];
            std::replace(text.begin(), text.end(), '/', '\n');
            file = folder.Write("report.html", text);
        }
        EXPECT_EQ(Left(file), row[2] + (row[3].empty() ? "" : '\n' + Box(row[3]))) << row[0];
    }
    for (const std::string& name : files) {
        EXPECT_TRUE(name.ends_with(".md") || name == "clipboard.txt")
            << name << ": not on the page";
    }
}
