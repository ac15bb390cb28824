#include "ScriptedDesktop.h"
#include "text/CodePage.h"
#include "text/Text.h"

#include <set>

// The page of the samples says what a batch import of them leaves, in tables whose rows end in a
// number.
TEST(Samples, LeaveWhatTheirPageSays) {
    const std::filesystem::path page = std::filesystem::path(SAMPLES_FOLDER) / "README.md";
    std::multiset<std::string> expected;
    for (const std::string& line : Fields(ReadAll(page), '\n')) {
        if (line.size() > 4 && Text::IsDigit(line[line.size() - 3]) && line.ends_with(" |")) {
            expected.insert(line);
        }
    }
    World world;
    world.Batch(page);
    const KillLedger& ledger = world.Ledger;
    std::multiset<std::string> rows;
    const auto addRow = [&rows](const std::string& cells, int number) {
        const auto row = CodePage::ToUnicode("| " + cells + " | " + std::to_string(number) + " |");
        rows.insert(std::filesystem::path(row).string()); // in UTF-8, like the page
    };
    addRow(std::to_string(ledger.GameNumber), ledger.PartyNumber);
    for (int c = 1; !ledger.CharacterNames[c].empty(); ++c) {
        addRow(ledger.CharacterNames[c], ledger.CharacterKills[c]);
        for (int m = 1; !ledger.MonsterNames[m].empty(); ++m) {
            if (const int kills = ledger.KillTable(c, m); kills != 0) {
                addRow(ledger.CharacterNames[c] + " | " + ledger.MonsterNames[m], kills);
            }
        }
    }
    EXPECT_EQ(rows, expected);
}
