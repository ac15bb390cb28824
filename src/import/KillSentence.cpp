#include "import/KillSentence.h"

#include "controls/Desktop.h"
#include "ledger/MonsterNames.h"
#include "text/Numbers.h"
#include "text/Text.h"

namespace Main {
namespace {

using std::string_view;

constexpr string_view Comma = ", ";
constexpr string_view And = " and ";
constexpr int MaxClauses = 25; // without a message

struct Clause {
    double KillCount;
    string_view MonsterText;
};

// The last clause: a count and a name, or one word, which is the count of a default target.
Clause LastClause(string_view ClauseText, bool CrowdFlag) {
    const std::size_t blank = Text::Position(ClauseText, " ");
    if (blank == 0) {
        return {Numbers::Read(ClauseText), CrowdFlag ? "PC Arena" : "PC"};
    }
    return {Numbers::Read(Text::Before(ClauseText, blank)), Text::From(ClauseText, blank)};
}

// Takes the first of several clauses out of `ClauseText`.
Clause TakeClause(string_view& ClauseText) {
    const std::size_t blank = Text::Position(ClauseText, " ");
    Clause clause{Numbers::Read(Text::Before(ClauseText, blank)), {}};
    ClauseText = Text::From(ClauseText, blank);

    if (const std::size_t comma = Text::Position(ClauseText, Comma); comma != 0) {
        clause.MonsterText = Text::Before(ClauseText, comma);
        ClauseText = Text::From(ClauseText, comma + Comma.size());
        return clause;
    }
    const std::size_t conjunction = Text::Position(ClauseText, And);
    if (conjunction == 0) {
        throw Failure("a clause without a separator");
    }
    clause.MonsterText = Text::Trim(Text::Before(ClauseText, conjunction));
    const std::size_t digit = FirstDigitPosition(clause.MonsterText);
    if (digit == 0) {
        ClauseText = Text::From(ClauseText, conjunction + And.size());
    } else {
        // The name runs into the next clause, which starts at that digit. Unlike the name,
        // ClauseText still has the blank before it: so one more.
        clause.MonsterText = Text::Before(clause.MonsterText, digit);
        ClauseText = Text::From(ClauseText, digit + 1);
    }
    return clause;
}

} // namespace

void ParseKillSentence(KillLedger& ledger, const Desktop& desktop, string_view sentence,
                       std::size_t KillPosition, std::size_t ColonPosition, bool CrowdFlag,
                       double TurnNumber) {
    const int CharacterSlot =
        FindCharacter(ledger, desktop, Text::Trim(Text::Before(sentence, ColonPosition)));
    // The clauses start after "killing" and one more character, whatever that is.
    string_view ClauseText = Text::Trim(Text::From(sentence, KillPosition + 8));

    bool ClauseDone = false;
    for (int ClauseCount = 1; !ClauseDone; ++ClauseCount) {
        Clause clause{};
        if (Text::Contains(ClauseText, And) || Text::Contains(ClauseText, Comma)) {
            clause = TakeClause(ClauseText);
        } else {
            ClauseDone = true;
            clause = LastClause(ClauseText, CrowdFlag);
        }
        const int MonsterSlot = ResolveMonster(ledger, desktop, Text::Trim(clause.MonsterText));
        CreditKills(ledger, CharacterSlot, MonsterSlot, clause.KillCount);
        if (ClauseCount > MaxClauses) {
            desktop.ShowMessage({"There seems to have been an error in the processing of turn #" +
                                 Numbers::PlainDigits(TurnNumber)});
            ClauseDone = true;
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
