#include "ScriptedDesktop.h"
#include "text/CodePage.h"
#include "text/Text.h"

#include <map>

// The page says what a batch import of the samples leaves, in tables whose rows end in a number.
TEST(Samples, LeaveWhatTheirPageSays) {
    const std::filesystem::path page = std::filesystem::path(SAMPLES_FOLDER) / "README.md";
    std::map<std::string, int> difference; // of each row: 1 only on the page, -1 only in the ledger
    for (const std::string& line : Fields(ReadAll(page), '\n')) {
        if (line.size() > 4 && Text::IsDigit(line[line.size() - 3]) && line.ends_with(" |")) {
            ++difference[line];
        }
    }
    World world;
    world.Batch(page);
    const KillLedger& ledger = world.Ledger;
    const auto addRow = [&difference](const std::string& cells, int number) {
        const auto row = CodePage::ToUnicode("| " + cells + " | " + std::to_string(number) + " |");
        --difference[std::filesystem::path(row).string()]; // in UTF-8, like the page
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
    std::erase_if(difference, [](const auto& row) { return row.second == 0; });
    EXPECT_TRUE(difference.empty()) << testing::PrintToString(difference);
}
