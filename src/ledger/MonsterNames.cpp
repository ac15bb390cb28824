#include "ledger/MonsterNames.h"

#include "text/Text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace Main {
namespace {

using std::string_view;

// A regular way to a plural: the word without its last `Dropped` characters, then `Ending`.
// The way back drops `Restored` characters from the plural and puts `Singular` behind. Neither
// looks at what it drops.
struct PluralRule {
    std::size_t Dropped;
    string_view Ending;
    std::size_t Restored;
    string_view Singular;
};

constexpr std::array<PluralRule, 5> PluralRules = {{
    {0, "s", 1, ""},    // Rat, Rats
    {0, "es", 2, ""},   // Box, Boxes
    {1, "ves", 3, "f"}, // Wolf, Wolves
    {1, "ies", 3, "y"}, // Fly, Flies
    {2, "en", 2, "an"}, // Man, Men
}};
constexpr const PluralRule& Men = PluralRules.back();
// The right parts of compound names know all rules but this last one.
constexpr std::span<const PluralRule> RightRules = std::span(PluralRules).first<4>();

// Whether `text` equals `stem` followed by `ending`.
bool Joins(string_view text, string_view stem, string_view ending) {
    return text.size() == stem.size() + ending.size() && text.ends_with(ending) &&
           text.starts_with(stem);
}

std::string Singular(string_view plural, const PluralRule& rule) {
    return std::string(Text::Cut(plural, rule.Restored)).append(rule.Singular);
}

// A name with a blank: the word before the first one, and all the text behind it.
struct Compound {
    explicit Compound(string_view name)
        : Left(Text::Before(name, Text::Position(name, " "))),
          Right(Text::From(name, Text::Position(name, " ") + 1)) {}

    string_view Left;
    string_view Right;
};

// Whether two right parts are one monster's and, if so, the stored one in the form that stays.
struct RightPart {
    bool Fits;
    std::string Kept;
};

RightPart ReconcileRight(string_view given, string_view stored) {
    if (given == stored) {
        return {true, std::string(stored)};
    }
    for (const PluralRule& rule : RightRules) {
        const string_view givenStem = Text::Cut(given, rule.Dropped);
        const string_view storedStem = Text::Cut(stored, rule.Dropped);
        if (Joins(stored, givenStem, rule.Ending)) {
            return {true, Singular(stored, rule)};
        }
        if (Joins(given, storedStem, rule.Ending)) {
            return {true, std::string(stored)};
        }
    }
    return {false, {}};
}

// The tests on names that both hold a blank: left parts that are a pair such as Man and Men, or
// left parts that differ by one last character. True when one fires, which is tried only
// while nothing is found; the operands of the left parts are worked out in any case.
bool ReconcileCompound(string_view name, std::string& stored, bool found) {
    const Compound given(name);
    const Compound kept(stored);

    const string_view givenStem = Text::Cut(given.Left, Men.Dropped);
    const string_view keptStem = Text::Cut(kept.Left, Men.Dropped);
    if (found) {
        return false;
    }
    const bool givenIsMen = Joins(given.Left, keptStem, Men.Ending);
    if (givenIsMen || Joins(kept.Left, givenStem, Men.Ending)) {
        const RightPart right = ReconcileRight(given.Right, kept.Right);
        if (right.Fits) {
            if (!givenIsMen) {
                stored = Singular(kept.Left, Men) + ' ' + right.Kept;
            }
            return true;
        }
    }

    const string_view shorterKept = Text::Cut(kept.Left, 1);
    if (given.Right == kept.Right) {
        if (Text::Cut(given.Left, 1) == kept.Left) {
            return true;
        }
        if (shorterKept == given.Left) {
            stored = std::string(shorterKept) + ' ' + std::string(kept.Right);
            return true;
        }
    }
    return false;
}

// The tests on whole names. As above; the operands are worked out behind a hit too, so that
// a rewrite can stand when the failure comes.
bool ReconcileWhole(string_view name, std::string& stored, bool found) {
    bool fired = false;
    for (const PluralRule& rule : PluralRules) {
        const string_view givenStem = Text::Cut(name, rule.Dropped);
        const string_view storedStem = Text::Cut(stored, rule.Dropped);
        if (found || fired) {
            continue;
        }
        if (Joins(name, storedStem, rule.Ending)) {
            fired = true;
        } else if (Joins(stored, givenStem, rule.Ending)) {
            stored = Singular(stored, rule);
            fired = true;
        }
    }
    return fired;
}

// All tests on one slot in use, behind the exact one. True when one fires.
bool Reconcile(string_view name, std::string& stored, bool found) {
    bool fired = false;
    if (Text::Contains(name, " ") && Text::Contains(stored, " ")) {
        fired = ReconcileCompound(name, stored, found);
    }
    return ReconcileWhole(name, stored, found || fired) || fired;
}

// Finds the slots on which a test above can fire or fail, which are few, by the length of the
// stored name and a few of its bytes. It follows from the tests: names that one of them brings
// together
//   - differ by at most two bytes in length, and agree in the given name but for its last three
//     bytes and the last two of its left part; or, by the letter test, differ by one byte in
//     length and agree in the last one;
//   - agree in the given left part but for its last two bytes, or without one in the given
//     name but for its last three. Of a given name of three bytes the first one agrees too, or
//     the stored name has but one.
// A stored name too short to be cut, a left part too short, and an empty right part behind a left
// one for which the pair test may hold have to reach the tests, to fail there.
class Sieve {
public:
    explicit Sieve(string_view name) : Name(name), Left(std::min(name.find(' '), name.size())) {
        const bool hasBlank = Left < name.size();
        const std::size_t agreeing = name.size() - std::min(name.size(), std::size_t{3});
        Head =
            hasBlank ? Left - std::min(Left, std::size_t{2}) : std::max(agreeing, std::size_t{1});
        // The byte that tells most is the last one in which the names agree.
        const std::size_t telling = hasBlank && agreeing > Left ? agreeing : Head;
        const bool canFailAnywhere =
            name.size() < 2 || (hasBlank && (Left < 2 || name.size() == Left + 1));
        Applies = !canFailAnywhere && name.size() > 2 && telling > 0;
        Telling = Applies ? telling - 1 : 0;
    }

    // The next slot from `i` on that has to be tried or, if `empty` is on, is empty; behind the
    // last slot if there is none. What nearly all names share is joined without a branch for each
    // condition, since a branch that goes either way costs more than all of them; out of line, so
    // that the loop has the registers for itself.
    [[gnu::noinline]] int Next(const Slots<std::string, MaxMonsters>& names, int i,
                               bool empty) const {
        if (!Applies) {
            while (i <= MaxMonsters && names[i].empty() && !empty) {
                ++i;
            }
            return i;
        }
        const std::size_t shortest = Name.size() - 2;
        const std::size_t noRight = Left + 1; // the length of an empty right part behind a left one
        const std::size_t telling = Telling;
        const char tellingByte = Name[telling];
        const char lastByte = Name.back();
        for (; i <= MaxMonsters; ++i) {
            const char* const bytes = names[i].data();
            const std::size_t size = names[i].size();
            if (size == 0 && !empty) {
                while (i < MaxMonsters && names[i + 1].empty()) {
                    ++i; // most empty slots lie side by side
                }
                continue;
            }
            if (size < 2 || bytes[0] == ' ' || bytes[1] == ' ') {
                return i;
            }
            const std::size_t longer = size - shortest; // 0 to 4 when near in length
            const bool near = longer <= 4;
            const bool alike = bytes[near * telling] == tellingByte;
            const bool sameEnd = bytes[size - 1] == lastByte;
            const bool mayFire = near & (alike | (sameEnd & (longer % 2 == 1)));
            if ((mayFire | (size == noRight)) &&
                string_view(bytes, size).starts_with(Name.substr(0, Head))) {
                return i;
            }
        }
        return i;
    }

private:
    string_view Name;
    std::size_t Left;        // bytes in front of the first blank
    std::size_t Head;        // bytes at the start in which the names agree
    std::size_t Telling = 0; // index of a byte in which they agree
    bool Applies = false;    // off: every slot has to be tried
};

} // namespace

int ResolveMonster(KillLedger& ledger, const Desktop& desktop, std::string_view name) {
    int Found = 0;
    int Free = 0;
    auto& names = ledger.MonsterNames;
    const Sieve sieve(name);
    for (int i = sieve.Next(names, 1, true); i <= MaxMonsters;
         i = sieve.Next(names, i + 1, Free == 0)) {
        std::string& stored = names[i];
        if (stored.empty()) {
            Free = i;
            continue;
        }
        if (Found == 0 && stored == name) {
            Found = i;
        }
        if (Reconcile(name, stored, Found != 0)) {
            Found = i;
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
