#pragma once

#include "Tables.h"
#include "controls/Desktop.h"
#include "ledger/MonsterNames.h"

#include <memory>
#include <stdexcept>

// A second opinion on ResolveMonster: the same rules on singular and plural, written to be read.
// It tries every rule on every slot, while the program passes over most slots.
class Twin {
public:
    using Names = Slots<std::string, MaxMonsters>;

    // The slot of the monster `given`, and what that does to `names`.
    static int Resolve(Names& names, const std::string& given) {
        int found = 0;
        int free = 0;
        for (int i = 1; i <= MaxMonsters; ++i) {
            std::string& stored = names[i];
            if (stored.empty()) {
                free = free == 0 ? i : free;
            } else if (Reconcile(given, stored, found != 0) && found == 0) {
                found = i;
            }
        }
        if (found == 0 && free != 0) {
            names[free] = given;
            found = free;
        }
        return found;
    }

private:
    using string = std::string;

    static string Cut(const string& word, std::size_t count) {
        if (word.size() < count) {
            throw std::invalid_argument("a cut longer than its word");
        }
        return word.substr(0, word.size() - count);
    }

    // The plural is the word without its last `Dropped` characters, then `Ending`. The way back
    // replaces the last `Restored` characters by `Singular`.
    struct PluralRule {
        std::size_t Dropped;
        string Ending;
        std::size_t Restored;
        string Singular;

        string Of(const string& word) const { return Cut(word, Dropped) + Ending; }
        string Undo(const string& word) const { return Cut(word, Restored) + Singular; }
    };
    static inline const std::vector<PluralRule> Rules = {
        {0, "s", 1, ""}, {0, "es", 2, ""}, {1, "ves", 3, "f"}, {1, "ies", 3, "y"}};
    static inline const PluralRule Men = {2, "en", 2, "an"};

    static bool HasBlank(const string& name) { return name.find(' ') != string::npos; }
    static string Left(const string& name) { return name.substr(0, name.find(' ')); }
    static string Right(const string& name) { return name.substr(name.find(' ') + 1); }

    // Whether `given` is the monster that is stored, or `settled` was true before. The first test
    // that fires settles it and may rewrite `stored`; the names are cut for all tests in any case,
    // which fails on short ones.
    static bool Reconcile(const string& given, string& stored, bool settled) {
        settled = settled || given == stored;
        if (HasBlank(given) && HasBlank(stored)) {
            Cut(Left(given), Men.Dropped);
            Cut(Left(stored), Men.Dropped);
            settled = settled || IsPair(given, stored) || DiffersByOneLetter(given, stored);
        }
        for (const PluralRule& rule : Rules) {
            settled = IsPlural(rule, given, stored, settled);
        }
        return IsPlural(Men, given, stored, settled);
    }

    static bool IsPlural(const PluralRule& rule, const string& given, string& stored,
                         bool settled) {
        const bool givenIsPlural = rule.Of(stored) == given;
        const bool storedIsPlural = rule.Of(given) == stored;
        if (!settled && !givenIsPlural && storedIsPlural) {
            stored = rule.Undo(stored);
        }
        return settled || givenIsPlural || storedIsPlural;
    }

    // Man at arms, Men at arms.
    static bool IsPair(const string& given, string& stored) {
        const bool givenIsMen = Men.Of(Left(stored)) == Left(given);
        if (!givenIsMen && Men.Of(Left(given)) != Left(stored)) {
            return false;
        }
        string right = Right(stored);
        bool same = right == Right(given);
        for (const PluralRule& rule : Rules) {
            same = same || IsPlural(rule, Right(given), right, false);
        }
        if (same && !givenIsMen) {
            stored = Men.Undo(Left(stored)) + ' ' + right;
        }
        return same;
    }

    // Dog of war, Dogs of war; whichever the letter.
    static bool DiffersByOneLetter(const string& given, string& stored) {
        if (Right(given) != Right(stored)) {
            return false;
        }
        const bool storedIsLonger = Cut(Left(stored), 1) == Left(given);
        if (storedIsLonger) {
            stored = given;
        }
        return storedIsLonger || Cut(Left(given), 1) == Left(stored);
    }
};

// Program and twin at work on tables of the same names.
struct Twins {
    // Whether both do the same with this name.
    bool Agree(const std::string& name) {
        const Desktop desktop{.ShowMessage = [](const Message&) { return Answer::Ok; }};
        const auto slot = Outcome([&] { return Main::ResolveMonster(*Ledger, desktop, name); });
        return slot == Outcome([&] { return Twin::Resolve(Names, name); }) &&
               Ledger->MonsterNames == Names;
    }
    void Restart() {
        Names = {};
        Ledger->MonsterNames = Names;
    }

    std::unique_ptr<KillLedger> Ledger = std::make_unique<KillLedger>();
    Twin::Names Names;
};
