#include "Input.h"
#include "Rows.h"
#include "fingerprint/TurnLedger.h"
#include "ledger/MonsterNames.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using Bench::Pair;
using Bench::Require;
using Bench::Seconds;
using Bench::Sized;

// What is sought, and the slot that holds it or takes it.
struct Query {
    std::string Name;
    std::int32_t Length = 0; // of an imported turn
    int Slot = 0;
};

// A full ledger, what is sought in it, and how the ledger looks when all searches are through.
struct Search {
    Input::Stage Scene; // for its message box
    std::unique_ptr<KillLedger> Ledger = Input::FullLedger();
    std::unique_ptr<KillLedger> Untouched = Input::FullLedger();
    std::vector<Query> Queries;
    int Rounds = 1;

    // Seconds for one query, on average; `find` gives its slot.
    template <class Find>
    double Time(Find find) {
        const double seconds = Seconds([&] {
            for (int round = 0; round < Rounds; ++round) {
                for (const Query& query : Queries) {
                    int slot = find(query);
                    benchmark::DoNotOptimize(slot);
                    Require(slot == query.Slot, "slot of " + query.Name);
                }
            }
        });
        Ledger->MonsterNames[MaxMonsters] = Untouched->MonsterNames[MaxMonsters];
        Require(Input::SameTables(*Ledger, *Untouched), "a search that changes the ledger");
        return seconds / static_cast<double>(Queries.size()) / Rounds;
    }
};

// One test for equality with each entry, from slot 1 to `last`. Gives the highest slot that holds
// the name, else `otherwise`.
template <class Table>
[[gnu::noinline]] int BareWalk(const Table& table, int last, const std::string& name,
                               int otherwise) {
    int found = otherwise;
    for (int slot = 1; slot <= last; ++slot) {
        if (table[slot] == name) {
            found = slot;
        }
    }
    return found;
}

[[gnu::noinline]] int BareRecordWalk(const KillLedger& ledger, std::int32_t length,
                                     const std::string& fingerprint) {
    int found = 0;
    for (int i = 1; i <= MaxTurns; ++i) {
        if (ledger.TurnFileLengths[i] == length && ledger.TurnHashes[i] == fingerprint) {
            found = i;
        }
    }
    return found;
}

enum class LastSlot { Full, Empty, HoldsTheName };

// Names that no slot holds but the last one.
Pair MonsterSearch(LastSlot lastSlot) {
    const auto search = std::make_shared<Search>();
    for (std::size_t i = 0; i < Sized<std::size_t>(32, 2); ++i) {
        search->Queries.push_back({.Name = Input::MonsterName(MaxMonsters + i * 29),
                                   .Slot = lastSlot == LastSlot::Full ? 0 : MaxMonsters});
    }
    // At a cost that does not show beside a walk.
    const auto setLastSlot = [search, lastSlot](const Query& query) {
        if (lastSlot != LastSlot::Full) {
            search->Ledger->MonsterNames[MaxMonsters] =
                lastSlot == LastSlot::Empty ? std::string() : query.Name;
        }
    };
    return {
        [=] {
            const int messages = search->Scene.Messages;
            const double seconds = search->Time([&](const Query& query) {
                setLastSlot(query);
                return Main::ResolveMonster(*search->Ledger, search->Scene.Services, query.Name);
            });
            const bool told = search->Scene.Messages != messages;
            Require(told == (lastSlot == LastSlot::Full), "the message of a full table");
            return seconds;
        },
        [=] {
            return search->Time([&](const Query& query) {
                setLastSlot(query);
                return BareWalk(search->Ledger->MonsterNames, MaxMonsters, query.Name, query.Slot);
            });
        }};
}

Pair CharacterSearch() {
    const auto search = std::make_shared<Search>();
    search->Rounds = Sized(100, 1);
    for (std::size_t i = 0; i < MaxCharacters; ++i) {
        const std::size_t scattered = i * 37 % MaxCharacters;
        search->Queries.push_back(
            {.Name = Input::CharacterName(scattered), .Slot = static_cast<int>(scattered) + 1});
    }
    return {[=] {
                return search->Time([&](const Query& query) {
                    return Main::FindCharacter(*search->Ledger, search->Scene.Services, query.Name);
                });
            },
            [=] {
                return search->Time([&](const Query& query) {
                    return BareWalk(search->Ledger->CharacterNames, MaxCharacters, query.Name, 0);
                });
            }};
}

// Records that are there, and fingerprints that are not, at a length that is.
Pair TurnSearch() {
    const auto search = std::make_shared<Search>();
    search->Rounds = Sized(10, 1);
    const KillLedger& ledger = *search->Ledger;
    const std::string unknown(ledger.TurnHashes[1].size(), '0');
    for (int slot = 1; slot <= MaxTurns; slot += 199) {
        search->Queries.push_back({ledger.TurnHashes[slot], ledger.TurnFileLengths[slot], slot});
        search->Queries.push_back({unknown, ledger.TurnFileLengths[slot], 0});
    }
    return {[=] {
                return search->Time([&](const Query& query) {
                    return Main::FindTurnRecord(*search->Ledger, query.Length, query.Name);
                });
            },
            [=] {
                return search->Time([&](const Query& query) {
                    return BareRecordWalk(*search->Ledger, query.Length, query.Name);
                });
            }};
}

} // namespace

void Bench::AddLedgerRows() {
    Add({"ResolveMonster, takes the last slot", Rule::Ratio, 2.5, 101,
         [] { return MonsterSearch(LastSlot::Empty); }});
    Add({"ResolveMonster, found in the last", Rule::Ratio, 2.5, 101,
         [] { return MonsterSearch(LastSlot::HoldsTheName); }});
    Add({"ResolveMonster, not found", Rule::Ratio, 2.5, 101,
         [] { return MonsterSearch(LastSlot::Full); }});
    Add({"FindCharacter, 99 names", Rule::Ratio, 1.3, 101, CharacterSearch});
    Add({"FindTurnRecord, 9,999 records", Rule::Ratio, 1.3, 101, TurnSearch});
}
