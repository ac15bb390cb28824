#include "ledger/MonsterNames.h"

#include "controls/Desktop.h"
#include "text/Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>

namespace Main {
namespace {

using std::string_view;

// A regular plural: the singular without its last `Dropped` characters, then `Ending`. And back:
// the plural without its last `Restored` characters, whatever they are, then `Singular`.
struct PluralRule {
    std::size_t Dropped;
    string_view Ending;
    std::size_t Restored;
    string_view Singular;
};

constexpr PluralRule Men = {2, "en", 2, "an"};

// The first rule that fits wins.
constexpr auto PluralRules = std::to_array<PluralRule>({
    {0, "s", 1, ""},    // Rat, Rats
    {0, "es", 2, ""},   // Box, Boxes
    {1, "ves", 3, "f"}, // Wolf, Wolves
    {1, "ies", 3, "y"}, // Fly, Flies
    Men,                // Man, Men; stays the last
});
// The right part of a compound name has all rules but that for Men.
constexpr auto RightRules = std::span(PluralRules).first<PluralRules.size() - 1>();

// Whether `text` equals `stem` followed by `ending`.
bool Joins(string_view text, string_view stem, string_view ending) {
    return text.size() == stem.size() + ending.size() && text.ends_with(ending) &&
           text.starts_with(stem);
}

std::string Singular(string_view plural, const PluralRule& rule) {
    return std::string(Text::Cut(plural, rule.Restored)).append(rule.Singular);
}

// A name cut at its first blank.
struct Compound {
    explicit Compound(string_view name)
        : Left(Text::Before(name, Text::Position(name, " "))),
          Right(Text::From(name, Text::Position(name, " ") + 1)) {}

    string_view Left;
    string_view Right;
};

// If the right parts of two names match, the form that is stored with a rewritten left part.
std::optional<std::string> ReconcileRight(string_view given, string_view stored) {
    if (given == stored) {
        return std::string(stored);
    }
    for (const PluralRule& rule : RightRules) {
        const string_view givenStem = Text::Cut(given, rule.Dropped);
        const string_view storedStem = Text::Cut(stored, rule.Dropped);
        if (Joins(stored, givenStem, rule.Ending)) {
            return Singular(stored, rule);
        }
        if (Joins(given, storedStem, rule.Ending)) {
            return std::string(stored);
        }
    }
    return std::nullopt;
}

// The tests below return whether this or an earlier slot (`found`) has matched, and rewrite the
// stored name if a test says so. After a match none fires, but the names are still cut: one that is
// too short still throws.

// For names with blanks: the left parts are a pair like Man and Men, or differ by a last character.
bool ReconcileCompound(string_view name, std::string& slot, bool found) {
    const Compound given(name);
    const Compound stored(slot);
    const string_view givenStem = Text::Cut(given.Left, Men.Dropped);
    const string_view storedStem = Text::Cut(stored.Left, Men.Dropped);
    if (found) {
        return true;
    }
    const bool givenIsMen = Joins(given.Left, storedStem, Men.Ending);
    if (givenIsMen || Joins(stored.Left, givenStem, Men.Ending)) {
        if (const auto right = ReconcileRight(given.Right, stored.Right)) {
            if (!givenIsMen) {
                slot = Singular(stored.Left, Men) + ' ' + *right;
            }
            return true;
        }
    }
    if (given.Right == stored.Right) {
        if (Text::Cut(given.Left, 1) == stored.Left) {
            return true;
        }
        if (Text::Cut(stored.Left, 1) == given.Left) {
            slot = std::string(given.Left) + ' ' + std::string(stored.Right);
            return true;
        }
    }
    return false;
}

// For whole names, blanks included.
bool ReconcileWhole(string_view name, std::string& slot, bool found) {
    for (const PluralRule& rule : PluralRules) {
        const string_view givenStem = Text::Cut(name, rule.Dropped);
        const string_view storedStem = Text::Cut(slot, rule.Dropped);
        if (found) {
            continue;
        }
        if (Joins(name, storedStem, rule.Ending)) {
            found = true;
        } else if (Joins(slot, givenStem, rule.Ending)) {
            slot = Singular(slot, rule);
            found = true;
        }
    }
    return found;
}

// All tests on one used slot.
bool Reconcile(string_view name, std::string& slot, bool found) {
    found = found || slot == name;
    if (Text::Contains(name, " ") && Text::Contains(slot, " ")) {
        found = ReconcileCompound(name, slot, found);
    }
    return ReconcileWhole(name, slot, found);
}

// Whether `text` starts with `head`. The end of `head` is tested first: long names that are nearly
// equal mostly differ there.
bool StartsWith(string_view text, string_view head) {
    constexpr std::size_t tail = 8;
    const string_view start = text.substr(0, head.size());
    return start.ends_with(head.substr(head.size() - std::min(head.size(), tail))) && start == head;
}

// Conditions that a stored name must meet for any test to fire: nearly the same length, and the
// same head. Few names of a full table meet them.
struct Likeness {
    static constexpr std::size_t LengthDifference = 2;
    static constexpr std::size_t LongestTail = 3;
    static_assert(std::all_of(PluralRules.begin(), PluralRules.end(), [](const PluralRule& rule) {
        return rule.Dropped <= Men.Dropped && rule.Dropped <= rule.Ending.size() &&
               rule.Ending.size() - rule.Dropped <= LengthDifference &&
               rule.Ending.size() <= LongestTail;
    }));
    static_assert(std::all_of(RightRules.begin(), RightRules.end(), [](const PluralRule& rule) {
        return rule.Dropped <= 1; // only an empty right part is too short to be cut
    }));
    static_assert(Men.Dropped == 2 && Men.Ending.size() == 2, "as short as a name can be cut");
    static_assert(LongestTail <= Men.Dropped + 2, "a blank and a right part follow the left one");

    explicit Likeness(string_view name) {
        const std::size_t blank = name.find(' ');
        const bool compound = blank != string_view::npos;
        const bool fails = name.size() < 2 || (compound && (blank < 2 || blank + 1 == name.size()));
        if (!fails) {
            Shortest = name.size() - LengthDifference;
            Longest = name.size() + LengthDifference;
            Head = compound ? name.substr(0, blank - Men.Dropped)
                            : name.substr(0, name.size() - std::min(name.size(), LongestTail));
        }
    }

    // False only where no test can fire and no cut can fail.
    bool Holds(string_view stored) const {
        if (stored.size() < 2 || stored[0] == ' ' || stored[1] == ' ') {
            return true; // too short to be cut
        }
        if (!Head.empty() && stored[0] != Head[0]) {
            return false;
        }
        const bool near = stored.size() >= Shortest && stored.size() <= Longest;
        const bool cannotBeCut = stored.back() == ' '; // an empty right part
        return (near || cannotBeCut) && StartsWith(stored, Head);
    }

    string_view Head;
    std::size_t Shortest = 0;
    std::size_t Longest = std::numeric_limits<std::size_t>::max();
};

} // namespace

int ResolveMonster(KillLedger& ledger, const Desktop& desktop, std::string_view name) {
    int Found = 0;
    int Free = 0;
    auto& names = ledger.MonsterNames;
    const Likeness likeness(name);
    for (int i = 1; i <= MaxMonsters; ++i) {
        if (names[i].empty()) {
            Free = Free == 0 ? i : Free;
            while (i < MaxMonsters && names[i + 1].empty()) {
                ++i; // most empty slots lie side by side
            }
        } else if (likeness.Holds(names[i]) && Reconcile(name, names[i], Found != 0)) {
            Found = Found == 0 ? i : Found;
        }
    }
    if (Found == 0) {
        if (Free > 0) {
            ledger.MonsterNames[Free] = name;
            Found = Free;
        } else {
            desktop.ShowMessage({"There was an error with processing - already hit maximum 9,999 "
                                 "monster types?"});
        }
    }
    return Found;
}

} // namespace Main
