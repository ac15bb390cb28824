#include "import/KillSentence.h"

#include "ledger/MonsterNames.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace Main {
namespace {

using std::string_view;

constexpr string_view Comma = ", ";
constexpr string_view And = " and ";
constexpr int MaxClauses = 25; // pass without a message

struct Clause {
    double KillCount;
    string_view MonsterText;
};

// The last clause: a count and a name, or one word, whose kills count against the default
// target.
Clause LastClause(string_view clauseText, bool crowdFlag) {
    const std::size_t blank = Text::Position(clauseText, " ");
    if (blank == 0) {
        return {Numbers::Read(clauseText), crowdFlag ? "PC Arena" : "PC"};
    }
    return {Numbers::Read(Text::Before(clauseText, blank)), Text::From(clauseText, blank)};
}

// Cuts the first of several clauses off the front of `clauseText`.
Clause TakeClause(string_view& clauseText) {
    const std::size_t blank = Text::Position(clauseText, " ");
    Clause clause{Numbers::Read(Text::Before(clauseText, blank)), {}};
    clauseText = Text::From(clauseText, blank);

    if (const std::size_t comma = Text::Position(clauseText, Comma); comma != 0) {
        clause.MonsterText = Text::Before(clauseText, comma);
        clauseText = Text::From(clauseText, comma + Comma.size());
        return clause;
    }
    const std::size_t conjunction = Text::Position(clauseText, And);
    if (conjunction == 0) {
        throw Failure(Failure::Kind::InvalidArgument, "a clause without a separator to cut at");
    }
    clause.MonsterText = Text::Trim(Text::Before(clauseText, conjunction));
    const std::size_t digit = FirstDigitPosition(clause.MonsterText);
    if (digit == 0) {
        clauseText = Text::From(clauseText, conjunction + And.size());
    } else { // the name has run into the next clause, which starts at that digit
        clause.MonsterText = Text::Before(clause.MonsterText, digit);
        clauseText = Text::From(clauseText, digit + 1);
    }
    return clause;
}

} // namespace

void ParseKillSentence(KillLedger& ledger, const Desktop& desktop, string_view sentence,
                       std::size_t killPosition, std::size_t colonPosition, bool crowdFlag,
                       double turnNumber) {
    const int characterSlot =
        FindCharacter(ledger, desktop, Text::Trim(Text::Before(sentence, colonPosition)));
    // Behind "killing" and the one character after it, whatever that is.
    string_view clauseText = Text::Trim(Text::From(sentence, killPosition + 8));

    bool clauseDone = false;
    for (int ClauseCount = 1; !clauseDone; ++ClauseCount) {
        Clause clause{};
        if (Text::Contains(clauseText, And) || Text::Contains(clauseText, Comma)) {
            clause = TakeClause(clauseText);
        } else {
            clauseDone = true;
            clause = LastClause(clauseText, crowdFlag);
        }
        const int monsterSlot = ResolveMonster(ledger, desktop, Text::Trim(clause.MonsterText));
        CreditKills(ledger, characterSlot, monsterSlot, clause.KillCount);
        if (ClauseCount > MaxClauses) {
            desktop.ShowMessage({"There seems to have been an error in the processing of turn #" +
                                 Numbers::PlainDigits(turnNumber)});
            clauseDone = true;
        }
    }
}

std::size_t FirstDigitPosition(string_view text) {
    if (text.find_first_of("123456789") == string_view::npos) {
        return 0;
    }
    return text.find_first_of("0123456789") + 1;
}

} // namespace Main
