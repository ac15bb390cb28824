#include "Twin.h"

#include "fingerprint/modMD5.h"
#include "ledger/MonsterNames.h"
#include "text/Numbers.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace {

using std::string;

const Lines Approaches = Fields(
    "As they got nearer,As they got closer,As they approached,As they drew closer,"
    "When they got nearer,When they drew nearer,When they drew closer,As we got nearer,"
    "As we got closer,As we approached,As we drew closer,When we got nearer,When we drew nearer,"
    "When we drew closer",
    ',');
const Lines Stops = Fields("While moving through here;In this location, we spotted something;"
                           "In this location, we found somthing;During our journey;"
                           "In this location, we discovered something;"
                           "In this location we came across;"
                           "It looks like we'll have to make our own way there.",
                           ';');

bool Has(const string& text, const string& sought) {
    return text.find(sought) != string::npos;
}
bool HasAny(const string& text, const Lines& sought) {
    return std::any_of(sought.begin(), sought.end(),
                       [&](const auto& any) { return Has(text, any); });
}
string Trim(string text) {
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}
string Piece(const string& text, std::size_t position, std::size_t count) {
    return text.substr(std::min(position - 1, text.size()), count);
}

string Cut(const string& text, std::size_t count) {
    return text.size() < count ? throw CannotGoOn() : text.substr(0, text.size() - count);
}
struct Plural {
    std::size_t Dropped;
    string Ending;
    std::size_t Restored;
    string Singular;
};
const std::vector<Plural> Plurals = {
    {0, "s", 1, ""}, {0, "es", 2, ""}, {1, "ves", 3, "f"}, {1, "ies", 3, "y"}, {2, "en", 2, "an"}};
string Make(const string& word, const Plural& plural) {
    return Cut(word, plural.Dropped) + plural.Ending;
}
string Undo(const string& word, const Plural& plural) {
    return Cut(word, plural.Restored) + plural.Singular;
}

// Whether the right parts of two names fit; `stored` becomes the form that stays.
bool RightFits(const string& given, string& stored) {
    if (given == stored) {
        return true;
    }
    for (std::size_t i = 0; i < 4; ++i) {
        if (Make(given, Plurals[i]) == stored) {
            stored = Undo(stored, Plurals[i]);
            return true;
        }
        if (Make(stored, Plurals[i]) == given) {
            return true;
        }
    }
    return false;
}

// The tests on a name given and a stored one that both hold a blank.
bool CompoundFires(const string& n, string& s) {
    const string nl = n.substr(0, n.find(' ')), nr = n.substr(n.find(' ') + 1);
    const string sl = s.substr(0, s.find(' ')), sr = s.substr(s.find(' ') + 1);
    const Plural& men = Plurals[4];
    string right = sr;
    if ((Make(nl, men) == sl || Make(sl, men) == nl) && RightFits(nr, right)) {
        s = Make(sl, men) == nl ? s : Undo(sl, men) + " " + right;
        return true;
    }
    if (nr == sr && (Cut(nl, 1) == sl || Cut(sl, 1) == nl)) {
        s = Cut(nl, 1) == sl ? s : Cut(sl, 1) + " " + sr;
        return true;
    }
    return false;
}

} // namespace

int Twin::ResolveMonster(const string& n) {
    int found = 0;
    int free = 0;
    for (int i = 1; i <= MaxMonsters; ++i) {
        string& s = Ledger.MonsterNames[i];
        if (s.empty()) {
            free = free == 0 ? i : free;
            continue;
        }
        found = found == 0 && n == s ? i : found;
        if (Has(n, " ") && Has(s, " ")) {
            if (n.find(' ') < 2 || s.find(' ') < 2) {
                throw CannotGoOn();
            }
            found = found == 0 && CompoundFires(n, s) ? i : found;
        }
        for (const Plural& plural : Plurals) {
            const string ofStored = Make(s, plural);
            const string ofGiven = Make(n, plural);
            if (found == 0 && n == ofStored) {
                found = i;
            } else if (found == 0 && s == ofGiven) {
                found = i;
                s = Undo(s, plural);
            }
        }
    }
    if (found == 0 && free == 0) {
        Messages.emplace_back(
            "There was an error with processing - already hit maximum 9,999 monster types?");
    } else if (found == 0) {
        Ledger.MonsterNames[found = free] = n;
    }
    return found;
}

int Twin::FindCharacter(const string& name) {
    for (const string& sought : {name, string()}) {
        for (int c = 1; c <= MaxCharacters; ++c) {
            if (Ledger.CharacterNames[c] == sought) {
                Ledger.CharacterNames[c] = name;
                return c;
            }
        }
    }
    Messages.emplace_back(
        "There was an error with processing - already hit maximum 99 characters?");
    return 0;
}

double Twin::ReadNumber(string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
    text = text.substr(0, text.find_first_not_of("+-.0123456789eE"));
    const double value = std::strtod(text.c_str(), nullptr);
    return std::isinf(value) ? throw CannotGoOn() : value;
}

int Twin::Round(double value, int lowest, int highest) {
    const double whole = value - std::remainder(value, 1); // which sends a tie to the even one
    return whole < lowest || whole > highest ? throw CannotGoOn() : static_cast<int>(whole);
}

void Twin::Add(std::int32_t& count, double kills) {
    WholeCounts = WholeCounts && std::floor(kills) == kills;
    count = Round(count + kills, -2147483647 - 1, 2147483647);
}

void Twin::PartyGate(const string& line) {
    const auto fix = [this](std::int16_t& field, string& box, double number) {
        if (field != 0) {
            Refused = Refused || field != number;
        } else if (!Refused) {
            field = static_cast<std::int16_t>(Round(number, -32768, 32767));
            box = std::to_string(field);
        }
    };
    fix(Ledger.GameNumber, Game, ReadNumber(Piece(line, 23, 2)));
    fix(Ledger.PartyNumber, Party, ReadNumber(Piece(line, 8, 4)));
}

void Twin::TurnGate(const string& line, const string& report) {
    TurnSeen = true;
    TurnNumber = ReadNumber(Piece(line, 8, 4));
    Refused = Refused || (FirstTurn > 0 && TurnNumber < FirstTurn) ||
              (LastTurn > 0 && TurnNumber > LastTurn);
    if (Refused) {
        return;
    }
    const auto size = static_cast<std::int32_t>(report.size());
    const string hash = modMD5::DigestText(report.substr(0, 3145728));
    int free = 0;
    for (int i = MaxTurns; i > 0; --i) {
        const bool isFree = Ledger.TurnHashes[i].empty() && Ledger.TurnFileLengths[i] == 0;
        free = isFree ? i : free;
        Refused = Refused || (Ledger.TurnHashes[i] == hash && Ledger.TurnFileLengths[i] == size);
    }
    if (!Refused && free == 0) {
        Refused = true;
        Messages.emplace_back("Error importing turn - already hit a 9999 turn import limit? "
                              "9999 turns hashed and stored?");
    } else if (!Refused) {
        Ledger.TurnHashes[free] = hash;
        Ledger.TurnFileLengths[free] = size;
    }
}

void Twin::KillSentence(const string& line) {
    KillsAboveTurn = KillsAboveTurn || !TurnSeen || Trim(line).starts_with("Turn# ");
    const int character = FindCharacter(Trim(line.substr(0, line.find(':'))));
    string text = Trim(Piece(line, line.find("killing") + 9, line.size()));
    bool done = false;
    for (int count = 1; !done; ++count) {
        done = !Has(text, ", ") && !Has(text, " and ");
        const std::size_t blank = text.find(' ');
        const double kills = ReadNumber(text.substr(0, blank));
        text.erase(0, blank);
        string monster = Trim(text);
        if (done && blank == string::npos) {
            monster = Crowd ? "PC Arena" : "PC";
        } else if (!done && Has(text, ", ")) {
            monster = Trim(text.substr(0, text.find(", ")));
            text.erase(0, text.find(", ") + 2);
        } else if (!done && Has(text, " and ")) {
            monster = Trim(text.substr(0, text.find(" and ")));
            if (monster.find_first_of("123456789") == string::npos) {
                text.erase(0, text.find(" and ") + 5);
            } else {
                const std::size_t digit = monster.find_first_of("0123456789");
                monster = Trim(monster.substr(0, digit));
                text.erase(0, digit + 1);
            }
        } else if (!done) {
            throw CannotGoOn();
        }
        const int slot = ResolveMonster(monster);
        Add(Ledger.CharacterKills[character], kills);
        Add(Ledger.KillTable(character, slot), kills);
        if (count > 25) {
            Messages.push_back("There seems to have been an error in the processing of turn #" +
                               Numbers::PlainDigits(TurnNumber));
            done = true;
        }
    }
}

void Twin::Scan(const string& report) {
    FirstTurn = ReadNumber(TurnStart);
    LastTurn = ReadNumber(TurnEnd);
    Lines lines(1);
    for (std::size_t i = 0; i < report.size(); ++i) {
        if (report[i] != '\r' && report[i] != '\n') {
            lines.back() += report[i];
        } else if (report[i] == '\r' || i == 0 || report[i - 1] != '\r') {
            lines.emplace_back();
        }
    }
    lines.resize(lines.size() - (lines.back().empty() ? 1 : 0));
    for (std::size_t next = 0; next < lines.size() && !Refused;) {
        string line = lines[next++];
        Crowd = (Crowd || Has(line, "crowd")) && !HasAny(line, Approaches);
        if (Trim(line).starts_with("Party#")) {
            PartyGate(Trim(line));
        }
        if (Trim(line).starts_with("Turn# ")) {
            TurnGate(Trim(line), report);
        }
        if (!Has(line, "killing") || !Has(line, ":")) {
            continue;
        }
        bool gathered = false;
        for (int count = 1; !gathered; ++count) {
            const string more = next < lines.size() ? lines[next] : throw CannotGoOn();
            gathered =
                Has(more, "killing") || Has(more, ":") || Trim(more).empty() || HasAny(more, Stops);
            if (!gathered) {
                line += line.ends_with(' ') || more.starts_with(' ') ? more : ' ' + more;
                ++next;
            }
            if (count > 25) {
                Messages.push_back("Error with too many kill lines on turn # " +
                                   Numbers::PlainDigits(TurnNumber) + "?");
                gathered = true;
            }
        }
        KillSentence(line);
    }
}

void Twin::Import(const string& report) {
    Refused = Crowd = TurnSeen = Failed = KillsAboveTurn = false;
    TurnNumber = 0;
    Ledger.DataChanged = 1;
    try {
        Scan(report);
    } catch (const CannotGoOn&) {
        Failed = true;
    }
}

std::string Difference(KillLedger& a, KillLedger& b, bool cells) {
    string found;
    const auto check = [&found](const char* what, const auto& one, const auto& other, int last) {
        for (int i = 0; i <= last && found.empty(); ++i) {
            if (one[i] != other[i]) {
                found = what + std::to_string(i);
            }
        }
    };
    check("character ", a.CharacterNames, b.CharacterNames, MaxCharacters);
    check("total ", a.CharacterKills, b.CharacterKills, MaxCharacters);
    check("monster ", a.MonsterNames, b.MonsterNames, MaxMonsters);
    check("size ", a.TurnFileLengths, b.TurnFileLengths, MaxTurns);
    check("fingerprint ", a.TurnHashes, b.TurnHashes, MaxTurns);
    if (cells && std::memcmp(&a.KillTable(0, 0), &b.KillTable(0, 0), sizeof a.KillTable) != 0) {
        check("cell ", &a.KillTable(0, 0), &b.KillTable(0, 0),
              KillCells::RowLength * (MaxMonsters + 1) - 1);
    }
    const bool same = a.GameNumber == b.GameNumber && a.PartyNumber == b.PartyNumber &&
                      a.DataChanged == b.DataChanged;
    return same || !found.empty() ? found : "game, party or flag";
}

std::string Twins::Import(const std::string& text) {
    std::ofstream(Report, std::ios::binary) << text;
    Window.txtTurnStart.Text = Slow.TurnStart;
    Window.txtTurnEnd.Text = Slow.TurnEnd;
    bool failed = false;
    try {
        Main::ProcessTurn(Ledger, Window, Services, Report);
    } catch (const Failure&) {
        failed = true;
    }
    Slow.Import(text);
    if (failed != Slow.Failed) {
        return failed ? "the program fails" : "the twin fails";
    }
    if (Window.txtGame.Text.Get() != Slow.Game || Window.txtParty.Text.Get() != Slow.Party) {
        return "boxes";
    }
    return Messages == Slow.Messages ? "" : "messages";
}

std::string Twins::Resolve(const std::string& name) {
    int slot = -1;
    int expected = -1;
    try {
        slot = Main::ResolveMonster(Ledger, Services, name);
    } catch (const Failure&) {
        // the same as a slot of -1
    }
    try {
        expected = Slow.ResolveMonster(name);
    } catch (const CannotGoOn&) {
        // likewise
    }
    return slot == expected ? "" : "slot " + std::to_string(slot);
}

std::string Compose(std::string_view bytes) {
    static const Lines pieces = [] {
        Lines all = {"\nA: killing 1 Rat",
                     ", 2 Wol",
                     ", 3 Rat",
                     " and 1 Wol",
                     "s",
                     "ves",
                     "f",
                     " Rat",
                     "\n\n",
                     ", 2 ",
                     " and ",
                     "Rat",
                     "Wol",
                     "\n",
                     "\r\n",
                     "\r",
                     " \n",
                     "\n ",
                     "\t\n",
                     " ",
                     "  ",
                     ",",
                     "and ",
                     "3 ",
                     "10 ",
                     "0 ",
                     "2.5 ",
                     "-4 ",
                     "05 ",
                     "2e9 ",
                     "1e999 ",
                     "7",
                     "\nline",
                     "Gian",
                     "Big ",
                     "Gre",
                     "of ",
                     "a",
                     "en",
                     "an",
                     "n",
                     "es",
                     "ies",
                     "y",
                     "x",
                     "ch",
                     "man",
                     "men",
                     "M ",
                     "Aron",
                     "\nB: killing ",
                     "\n: killing 3 ",
                     ":",
                     "killing",
                     "crowd",
                     "\na crowd\n",
                     "Party#",
                     "\nTurn# ",
                     "\nTurn#  5\n",
                     "\nTurn#  0006x: killing ",
                     "\nTurn#  12.5\n",
                     "\nParty# 1047 of Game # 12\n",
                     "\nParty# 2203 of Game # 12\n",
                     "\nParty# 1047 of Game # 07\n",
                     "\n  Party# 9e9  of Game # 12",
                     "\nParty# 0",
                     ".",
                     "\"",
                     "\xFC",
                     "\xFF",
                     "\x80"};
        for (const Lines& phrases : {Approaches, Stops}) {
            all.insert(all.end(), phrases.begin(), phrases.end());
        }
        return all;
    }();
    string text;
    for (const char byte : bytes) {
        const auto index = static_cast<unsigned char>(byte) - std::size_t{0x80};
        text += index > 0x7F ? string(1, byte) : pieces[index % pieces.size()];
    }
    return text;
}
