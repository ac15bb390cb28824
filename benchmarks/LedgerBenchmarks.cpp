#include "Bare.h"
#include "Compare.h"
#include "Input.h"
#include "fingerprint/TurnLedger.h"
#include "ledger/MonsterNames.h"

namespace {

// What is sought in a full ledger, and the slot that is to be found.
struct Query {
    std::string Name;
    int Slot = 0;
    std::int32_t Length = 0; // of an imported turn
};

// Times the searches for all queries. `find` returns the slot of one.
template <class Find>
Bench::Work Searching(const std::vector<Query>& queries, Find find) {
    return Bench::Timing([&queries, find] {
        for (const Query& query : queries) {
            Bench::Require(find(query) == query.Slot, query.Name);
        }
    });
}

// Names that no slot holds, in a table without a free one.
void Monster(benchmark::State& state) {
    const auto ledger = Input::FullLedger();
    const Desktop desktop{.ShowMessage = [](const Message&) { return Answer::Ok; }};
    std::vector<Query> queries;
    for (int i = 0; i < 32; ++i) {
        queries.push_back({Input::MonsterName(MaxMonsters + i * 29)});
    }
    Bench::Compare(state, 4,
                   Searching(queries,
                             [&](const Query& query) {
                                 return Main::ResolveMonster(*ledger, desktop, query.Name);
                             }),
                   Searching(queries, [&](const Query& query) {
                       return Bare::Walk(ledger->MonsterNames, MaxMonsters, query.Name);
                   }));
}

void Character(benchmark::State& state) {
    const auto ledger = Input::FullLedger();
    const Desktop none;
    std::vector<Query> queries;
    for (int i = 0; i < 20 * MaxCharacters; ++i) {
        const int scattered = i * 37 % MaxCharacters;
        queries.push_back({Input::CharacterName(scattered), scattered + 1});
    }
    Bench::Compare(state, 1.3,
                   Searching(queries,
                             [&](const Query& query) {
                                 return Main::FindCharacter(*ledger, none, query.Name);
                             }),
                   Searching(queries, [&](const Query& query) {
                       return Bare::Walk(ledger->CharacterNames, MaxCharacters, query.Name);
                   }));
}

[[gnu::noinline]] int WalkRecordsBare(const KillLedger& ledger, const Query& query) {
    int found = 0;
    for (int i = 1; i <= MaxTurns; ++i) {
        if (ledger.TurnFileLengths[i] == query.Length && ledger.TurnHashes[i] == query.Name) {
            found = i;
        }
    }
    return found;
}

// Records that are there, and fingerprints that are not, with a length that is.
void TurnRecord(benchmark::State& state) {
    const auto ledger = Input::FullLedger();
    const std::string unknown(32, '0');
    std::vector<Query> queries;
    for (int slot = 1; slot <= MaxTurns; slot += 199) {
        queries.push_back({ledger->TurnHashes[slot], slot, ledger->TurnFileLengths[slot]});
        queries.push_back({unknown, 0, ledger->TurnFileLengths[slot]});
    }
    Bench::Compare(
        state, 1.3,
        Searching(queries,
                  [&](const Query& query) {
                      return Main::FindTurnRecord(*ledger, query.Length, query.Name);
                  }),
        Searching(queries, [&](const Query& query) { return WalkRecordsBare(*ledger, query); }));
}

BENCHMARK(Monster)->Name("ResolveMonster, 32 names not found");
BENCHMARK(Character)->Name("FindCharacter, 99 names, 20 times");
BENCHMARK(TurnRecord)->Name("FindTurnRecord, 102 of 9,999");

} // namespace
