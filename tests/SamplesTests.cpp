#include "ScriptedDesktop.h"
#include "platform/CodePage.h"

#include <iterator>
#include <set>

namespace {

// All rows of the tables of a Markdown page that have this heading.
std::set<Lines> TableRows(const std::string& page, const Lines& heading) {
    std::set<Lines> rows;
    bool inTable = false;
    for (const std::string& line : Fields(page, '\n')) {
        Lines cells = Fields(line, '|');
        std::erase(cells, "");
        if (cells == heading) {
            inTable = true;
        } else if (cells.size() != heading.size()) {
            inTable = false;
        } else if (inTable && !cells[1].starts_with("--")) {
            EXPECT_TRUE(rows.insert(cells).second) << "twice: " << line;
        }
    }
    return rows;
}

// A row with a name or two and a number, in UTF-8 like the page.
Lines Row(const Lines& names, int number) {
    Lines row;
    for (const std::string& name : names) {
        row.push_back(std::filesystem::path(CodePage::ToUnicode(name)).string());
    }
    row.push_back(std::to_string(number));
    return row;
}

} // namespace

// The page beside the sample reports tells what a batch import of them gives.
TEST(Samples, GiveWhatTheirPageTells) {
    const std::filesystem::path readme = std::filesystem::path(SAMPLES_FOLDER) / "README.md";
    std::ifstream stream(readme);
    const std::string page{std::istreambuf_iterator<char>(stream), {}};
    World world;
    const KillLedger& ledger = world.Ledger;
    world.Batch(readme);
    std::set<Lines> totals;
    std::set<Lines> kills;
    for (int c = 1; c <= MaxCharacters; ++c) {
        const std::string& name = ledger.CharacterNames[c];
        if (!name.empty()) {
            totals.insert(Row({name}, ledger.CharacterKills[c]));
        }
        for (int m = 0; m <= MaxMonsters; ++m) {
            if (const int count = ledger.KillTable(c, m); count != 0) {
                kills.insert(Row({name, ledger.MonsterNames[m]}, count));
            }
        }
    }
    EXPECT_FALSE(totals.empty() || kills.empty());
    EXPECT_EQ(totals, TableRows(page, {"Character", "Kills"}));
    EXPECT_EQ(kills, TableRows(page, {"Character", "Monster", "Kills"}));
    EXPECT_EQ(Row({std::to_string(ledger.GameNumber)}, ledger.PartyNumber),
              *TableRows(page, {"Game", "Party"}).begin());
    EXPECT_EQ(world.Window.lstCharacters.Count(), static_cast<int>(totals.size()));
    EXPECT_EQ(world.TakeBoxes(), Lines{});
}
