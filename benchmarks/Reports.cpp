#include "Reports.h"

#include "fingerprint/modMD5.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <stdexcept>

namespace Reports {
namespace {

constexpr std::array<const char*, 20> Sentences = {
    "We went in at noon, to have the light through the slats.",
    "At first there was only the noise, which was like a great many people tearing letters.",
    "The reeve stood on the steps with the key held out before him.",
    "<li>The wolf circles behind Maelka and bites, but the mail holds. [4]</li>",
    "As the rain let up, the scouts came back with mud to the knee and nothing to tell.",
    "Old Pellowe read the letter aloud twice and then asked for the window to be shut.",
    "<p>There was other business on the table before we slept: a letter, and a bill.</p>",
    "Somebody had been at the biscuits; nobody would say who.",
    "<li>Hobrecht drives the hammer forward and gets nothing for it but a sore wrist.</li>",
    "When the lamps were lit the walls turned out to be further away than we had thought.",
    "A crowd had gathered at the ford, and it parted only slowly.",
    "The price was named by the tail, and agreed to by the wife of the man who had laughed.",
    "<tr><td>Ordwin</td><td>Captain</td><td>Long axe</td><td>19/32</td></tr>",
    "It was the granary that wanted us, and by evening it had us.",
    "Yrdis gave ground one pace, and the others gave her a wider berth.",
    "&quot;That one is mine,&quot; said Sisk, of one that plainly was not.",
    "Turn and turn about we kept the watch, and heard the water all night.",
    "The mule would not walk across; the mule was walked across.",
    "In the morning the bell of Orrowby could be heard, though it lies in the lake.",
    "What the party found there it shared out by lot, and was content with."};

constexpr std::size_t CharactersInParty = 9;
constexpr std::string_view LineEnd = "\r\n";

} // namespace

std::string Header(int turn) {
    const std::string number = std::to_string(turn);
    return "  Party# " + std::to_string(Party) + " of Game # " + std::to_string(Game) +
           "      The Ninth Kettle\r\n  Turn#  " + std::string(4 - number.size(), '0') + number +
           " - Orders received, entered and carried out\r\n";
}

std::string Prose(std::size_t size) {
    constexpr std::size_t longestLine = 76;
    constexpr std::size_t period = std::size_t{4} << 20;
    static Input::Sequence numbers;
    std::string prose;
    prose.reserve(size + 2 * longestLine);
    std::string line;
    while (prose.size() < std::min(size, period)) {
        std::string_view sentence = Sentences.at(numbers.Next(Sentences.size()));
        while (!sentence.empty()) {
            const std::string_view word = sentence.substr(0, sentence.find(' '));
            sentence.remove_prefix(std::min(word.size() + 1, sentence.size()));
            if (line.size() + 1 + word.size() > longestLine) {
                prose.append(line).append(LineEnd);
                line.clear();
            }
            line.append(line.empty() ? "" : " ").append(word);
        }
    }
    while (prose.size() < size) { // whole lines, a page at a time
        const std::size_t end = prose.find('\n', std::min(period, size - prose.size()) - 1);
        prose.append(prose, 0, std::min(end, prose.size() - 1) + 1);
    }
    return prose;
}

Batch::Batch(const std::filesystem::path& folder, int reports, std::size_t size,
             std::size_t types) {
    for (std::size_t type = 0; type < types; ++type) {
        Types.push_back({Input::MonsterName(type * 33)}); // of all lengths and first letters
    }
    for (int turn = 1; turn <= reports; ++turn) {
        std::string report = Header(turn);
        for (int sentence = 0; sentence < SentencesPerReport; ++sentence) {
            report += Prose(size / SentencesPerReport - 200);
            report += Sentence(Numbers.Next(CharactersInParty));
        }
        const std::string number = std::to_string(10'000 + turn);
        Files.push_back(folder / ("turn-" + number + ".html"));
        std::ofstream file(Files.back(), std::ios::binary);
        if (!(file << report) || !file.flush()) {
            throw std::runtime_error("no room for the reports");
        }
        Turns.emplace_back(static_cast<std::int32_t>(report.size()), modMD5::DigestText(report));
    }
}

std::string Batch::Sentence(std::size_t character) {
    std::string sentence = "  " + Input::CharacterName(character) +
                           ": put the whole of a broad back into it, killing ";
    sentence += Clause(character) + ", ";
    sentence += Clause(character) + std::string(LineEnd) + "and ";
    return sentence + Clause(character) + std::string(LineEnd) + std::string(LineEnd);
}

std::string Batch::Clause(std::size_t character) {
    const int kills = static_cast<int>(Numbers.Next(4)) + 1;
    const std::size_t number = Numbers.Next(Types.size());
    Type& type = Types.at(number);
    type.SeenAlone = type.SeenAlone || kills == 1;
    Kills[{Input::CharacterName(character), number}] += kills;
    return std::to_string(kills) + ' ' + type.Name + (kills == 1 ? "" : "s");
}

bool Batch::IsImportedInto(const KillLedger& ledger) const {
    std::map<std::string, int> slots;
    for (int m = 1; m <= MaxMonsters; ++m) {
        if (!ledger.MonsterNames[m].empty()) {
            slots[ledger.MonsterNames[m]] = m;
        }
    }
    std::map<std::string, int> characters;
    int sum = 0;
    for (int c = 1; c <= MaxCharacters; ++c) {
        characters[ledger.CharacterNames[c]] = c;
        sum += ledger.CharacterKills[c];
    }
    for (const auto& [who, kills] : Kills) {
        const Type& type = Types.at(who.second);
        const auto slot = slots.find(type.SeenAlone ? type.Name : type.Name + 's');
        const auto character = characters.find(who.first);
        if (slot == slots.end() || character == characters.end() ||
            ledger.KillTable(character->second, slot->second) != kills) {
            return false;
        }
        sum -= kills;
    }
    for (std::size_t i = 0; i < Turns.size(); ++i) {
        const int slot = static_cast<int>(i) + 1;
        if (ledger.TurnFileLengths[slot] != Turns[i].first ||
            ledger.TurnHashes[slot] != Turns[i].second) {
            return false;
        }
    }
    return sum == 0 && ledger.GameNumber == Game && ledger.PartyNumber == Party;
}

} // namespace Reports
