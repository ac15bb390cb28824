#include "ScriptedDesktop.h"

#include <set>

namespace {

// What a file of the shelf, or a report with this text, leaves of the ledger; then the messages.
std::string Left(const std::string& report) {
    World world;
    const auto file = std::filesystem::path(SHELF_FOLDER) / report;
    if (report.ends_with(".qvt")) {
        world.ImportText("Party# 0098 of game:  99/Old: killing 1 Rat//");
        world.Ledger.DataChanged = 0;
        world.Screen.Choices = {file};
        world.Window.mnuFileOpen.Click();
    } else if (report.ends_with(".html")) {
        world.Import(file);
    } else {
        world.ImportText(report);
    }
    EXPECT_TRUE(world.TakeShown().find(" free[]") != std::string::npos) << report;
    std::string left = std::to_string(world.Ledger.GameNumber) + '/' +
                       std::to_string(world.Ledger.PartyNumber) + ' ' + world.Tallies();
    left.resize(left.find_last_not_of(' ') + 1);
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
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(SHELF_FOLDER)) {
        files.insert(file.path().filename().string());
    }
    for (const Lines& row : Cases(SHELF_FOLDER "/README.md")) {
        EXPECT_EQ(files.erase(row[0]) == 0, row[0].find('/') != std::string::npos) << row[0];
        EXPECT_EQ(Left(row[0]), row[2] + (row[3].empty() ? "" : '\n' + Box(row[3]))) << row[0];
    }
    EXPECT_EQ(files, (std::set<std::string>{"README.md", "cases"}));
}
