#include "Ledgers.h"
#include "ScriptedDesktop.h"

#include <set>

namespace {

// What the player sees of a file: game and party, the tallies, how many messages.
Lines Outcome(const std::filesystem::path& file) {
    World world;
    if (file.extension() == ".qvt") {
        world.ImportText("Party# 0098 of game:  99/Old: killing 1 Rat//");
        world.Ledger.DataChanged = 0;
        world.Screen.Choices = {file};
        world.Window.mnuFileOpen.Click();
    } else {
        world.Import(file);
    }
    EXPECT_EQ(world.Window.lblStatus.Caption.Get(), "") << file;
    EXPECT_EQ(world.Window.Window.MousePointer.Get(), Pointer::Default) << file;
    std::string left = std::to_string(world.Ledger.GameNumber) + '/' +
                       std::to_string(world.Ledger.PartyNumber) + ' ' + world.Tallies();
    std::replace_if(
        left.begin(), left.end(), [](unsigned char c) { return c < ' ' || c > '~' || c == '|'; },
        '?');
    return {Fields(left, '|')[0], std::to_string(world.TakeBoxes().size())};
}

} // namespace

// The page on the shelf tells what is left of each file.
TEST(Shelf, LeavesWhatItsPageTells) {
    const std::filesystem::path shelf = SHELF_FOLDER;
    std::set<std::string> files;
    for (const auto& file : std::filesystem::directory_iterator(shelf)) {
        files.insert(file.path().filename().string());
    }
    EXPECT_EQ(files.erase("README.md"), 1U);
    EXPECT_GT(files.size(), 50U);
    for (const std::string& line : Fields(ReadAll(shelf / "README.md"), '\n')) {
        const Lines cells = Fields(line, '|');
        if (cells.size() == 6 && files.erase(cells[1]) != 0) {
            EXPECT_EQ(Outcome(shelf / cells[1]), (Lines{cells[3], cells[4]})) << cells[1];
        }
    }
    EXPECT_EQ(files, std::set<std::string>{}) << "not on the page";
}
