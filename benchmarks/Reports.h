#pragma once

#include "Input.h"
#include "ledger/KillLedger.h"

#include <cstddef>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

// Generated turn reports of one party, with what an import of them must give.
namespace Reports {

constexpr std::int16_t Game = 12;
constexpr std::int16_t Party = 1047;

// The two header lines of a turn, 1 to 9,999.
std::string Header(int turn);

// Wrapped prose as reports have it, of `size` bytes or a line more, without a kill. Longer prose
// repeats itself every 4 MiB.
std::string Prose(std::size_t size);

// Reports in a folder, each of about `size` bytes with four kill sentences of three clauses.
class Batch {
public:
    static constexpr int SentencesPerReport = 4;
    static constexpr int ClausesPerReport = 12;

    Batch(const std::filesystem::path& folder, int reports, std::size_t size, std::size_t types);

    // Whether a ledger that was blank holds what an import of the folder gives, and no more.
    bool IsImportedInto(const KillLedger& ledger) const;

    std::vector<std::filesystem::path> Files; // in the order of their import

private:
    struct Type {
        std::string Name;
        bool SeenAlone = false; // the plural gives way to the singular once that is seen
    };

    std::string Sentence(std::size_t character);
    std::string Clause(std::size_t character);

    Input::Sequence Numbers;
    std::vector<Type> Types;
    std::map<std::pair<std::string, std::size_t>, int> Kills; // of character and type
    std::vector<std::pair<std::int32_t, std::string>> Turns;  // length and fingerprint
};

} // namespace Reports
