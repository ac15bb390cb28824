#include "ScriptedDesktop.h"
#include "platform/CodePage.h"
#include "text/Text.h"

#include <iterator>
#include <set>

// The page beside the sample reports tells what a batch import of them gives, in tables whose rows
// end in a number.
TEST(Samples, GiveWhatTheirPageTells) {
    const std::filesystem::path readme = std::filesystem::path(SAMPLES_FOLDER) / "README.md";
    std::ifstream stream(readme);
    std::multiset<std::string> told;
    for (std::string line; std::getline(stream, line);) {
        if (line.size() > 4 && Text::IsDigit(line[line.size() - 3]) && line.ends_with(" |")) {
            told.insert(line);
        }
    }
    World world;
    const KillLedger& ledger = world.Ledger;
    world.Batch(readme);
    std::multiset<std::string> given;
    const auto give = [&given](const std::string& names, int number) {
        const auto row = CodePage::ToUnicode("| " + names + " | " + std::to_string(number) + " |");
        given.insert(std::filesystem::path(row).string()); // in UTF-8, like the page
    };
    give(std::to_string(ledger.GameNumber), ledger.PartyNumber);
    for (int c = 1; c <= MaxCharacters; ++c) {
        if (const std::string& name = ledger.CharacterNames[c]; !name.empty()) {
            give(name, ledger.CharacterKills[c]);
            for (int m = 0; m <= MaxMonsters; ++m) {
                if (const int kills = ledger.KillTable(c, m); kills != 0) {
                    give(name + " | " + ledger.MonsterNames[m], kills);
                }
            }
        }
    }
    EXPECT_EQ(told, given);
}
