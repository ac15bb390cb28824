#pragma once

#include "Tables.h"
#include "fingerprint/modMD5.h"
#include "import/TurnScanner.h"
#include "ledger/MonsterNames.h"
#include "text/Failure.h"
#include "text/Numbers.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>

// What `work` gives; nothing when it fails.
template <class Work>
auto Outcome(Work work) -> std::optional<decltype(work())> {
    try {
        return work();
    } catch (const Failure&) {
        return std::nullopt;
    }
}

inline Lines Split(char separator, const std::string& text) {
    Lines pieces;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, separator);) {
        pieces.push_back(piece);
    }
    return pieces;
}

// The rules of an import in their plainest form, without a thought for speed: a second opinion on
// the program's own, with which it shares no more than the fields, the digest and the failures.
struct Twin {
    using string = std::string;

    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    string TurnStart, TurnEnd; // the turn filter
    Lines Messages;
    bool WholeCounts = true;     // of all kills credited
    bool KillsAboveTurn = false; // of this report: on its first turn header at the latest
    bool Refused = false, Crowd = false, TurnSeen = false;
    double TurnNumber = 0;

    static inline const Lines Approaches = Split(
        '|', "As they got nearer|As they got closer|As they approached|As they drew closer|"
             "When they got nearer|When they drew nearer|When they drew closer|As we got nearer|"
             "As we got closer|As we approached|As we drew closer|When we got nearer|"
             "When we drew nearer|When we drew closer");
    static inline const Lines Stops =
        Split('|', "While moving through here|During our journey|In this location we came across|"
                   "In this location, we spotted something|In this location, we found somthing|"
                   "In this location, we discovered something|"
                   "It looks like we'll have to make our own way there.");

    static inline const Failure Fails{"the twin cannot go on"};

    static bool Has(const string& text, const string& sought) {
        return text.find(sought) != string::npos;
    }
    static bool HasAny(const string& text, const Lines& sought) {
        return std::any_of(sought.begin(), sought.end(), [&](auto& any) { return Has(text, any); });
    }
    static string Trim(string text) {
        text.erase(0, text.find_first_not_of(' '));
        return text.erase(text.find_last_not_of(' ') + 1);
    }
    static string Cut(const string& text, std::size_t count) {
        return text.size() < count ? throw Fails : text.substr(0, text.size() - count);
    }
    static double ReadNumber(string text) {
        std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
        text = text.substr(0, text.find_first_not_of("+-.0123456789eE"));
        const double value = std::strtod(text.c_str(), nullptr);
        return std::isinf(value) ? throw Fails : value;
    }
    template <class Whole>
    static Whole Round(double value) {
        const double whole = value - std::remainder(value, 1); // which sends a tie to the even one
        return std::fabs(whole + 0.5) <= std::numeric_limits<Whole>::max() + 0.5
                   ? static_cast<Whole>(whole)
                   : throw Fails;
    }

    struct Plural {
        std::size_t Dropped;
        string Ending;
        std::size_t Restored;
        string Singular;
        string Of(const string& word) const { return Cut(word, Dropped) + Ending; }
        string Undo(const string& word) const { return Cut(word, Restored) + Singular; }
    };
    static inline const std::vector<Plural> Plurals = {{0, "s", 1, ""},
                                                       {0, "es", 2, ""},
                                                       {1, "ves", 3, "f"},
                                                       {1, "ies", 3, "y"},
                                                       {2, "en", 2, "an"}};

    // The tests on a name given and a stored one that both hold a blank.
    static bool CompoundFires(const string& n, string& s) {
        const string nl = n.substr(0, n.find(' ')), nr = n.substr(n.find(' ') + 1);
        const string sl = s.substr(0, s.find(' ')), sr = s.substr(s.find(' ') + 1);
        const Plural& men = Plurals[4];
        if (men.Of(nl) == sl || men.Of(sl) == nl) {
            string right = sr;
            bool fires = nr == sr;
            for (std::size_t i = 0; i < 4 && !fires; ++i) {
                const bool back = Plurals[i].Of(nr) == sr;
                right = back ? Plurals[i].Undo(sr) : sr;
                fires = back || Plurals[i].Of(sr) == nr;
            }
            if (fires) {
                s = men.Of(sl) == nl ? s : men.Undo(sl) + " " + right;
                return true;
            }
        }
        const bool fires = nr == sr && (Cut(nl, 1) == sl || Cut(sl, 1) == nl);
        s = fires && Cut(nl, 1) != sl ? Cut(sl, 1) + " " + sr : s;
        return fires;
    }

    int ResolveMonster(const string& n) {
        int found = 0, free = 0;
        for (int i = 1; i <= MaxMonsters; ++i) {
            string& s = Ledger.MonsterNames[i];
            if (s.empty()) {
                free = free == 0 ? i : free;
                continue;
            }
            found = found == 0 && n == s ? i : found;
            if (Has(n, " ") && Has(s, " ")) {
                Cut(n.substr(0, n.find(' ')), 2);
                Cut(s.substr(0, s.find(' ')), 2);
                found = found == 0 && CompoundFires(n, s) ? i : found;
            }
            for (const Plural& plural : Plurals) {
                const string ofStored = plural.Of(s), ofGiven = plural.Of(n);
                if (found == 0 && (n == ofStored || s == ofGiven)) {
                    found = i;
                    s = n == ofStored ? s : plural.Undo(s);
                }
            }
        }
        if (found == 0 && free != 0) {
            Ledger.MonsterNames[found = free] = n;
        } else if (found == 0) {
            Messages.emplace_back("There was an error with processing - already hit maximum 9,999 "
                                  "monster types?");
        }
        return found;
    }

    int FindCharacter(const string& name) {
        for (const string& sought : {name, string()}) {
            for (int c = 1; c <= MaxCharacters; ++c) {
                if (Ledger.CharacterNames[c] == sought) {
                    Ledger.CharacterNames[c] = name;
                    return c;
                }
            }
        }
        Messages.emplace_back("There was an error with processing - already hit maximum 99 "
                              "characters?");
        return 0;
    }

    void PartyGate(const string& line) {
        const auto fix = [this](std::int16_t& field, double number) {
            Refused = Refused || (field != 0 && field != number);
            field = Refused || field != 0 ? field : Round<std::int16_t>(number);
        };
        fix(Ledger.GameNumber, ReadNumber((line + string(24, ' ')).substr(22, 2)));
        fix(Ledger.PartyNumber, ReadNumber((line + "  ").substr(7, 4)));
    }

    void TurnGate(const string& line, const string& report) {
        const double first = ReadNumber(TurnStart), last = ReadNumber(TurnEnd);
        const auto size = static_cast<std::int32_t>(report.size());
        const string hash = modMD5::DigestText(report.substr(0, 3145728));
        TurnSeen = true;
        TurnNumber = ReadNumber(line.substr(7, 4));
        Refused = (first > 0 && TurnNumber < first) || (last > 0 && TurnNumber > last) || Refused;
        int free = 0;
        for (int i = MaxTurns; i > 0; --i) {
            std::int32_t& length = Ledger.TurnFileLengths[i];
            Refused = Refused || (Ledger.TurnHashes[i] == hash && length == size);
            free = Ledger.TurnHashes[i].empty() && length == 0 ? i : free;
        }
        if (!Refused && free == 0) {
            Messages.emplace_back("Error importing turn - already hit a 9999 turn import limit? "
                                  "9999 turns hashed and stored?");
            Refused = true;
        } else if (!Refused) {
            Ledger.TurnHashes[free] = hash;
            Ledger.TurnFileLengths[free] = size;
        }
    }

    void KillSentence(const string& line) {
        KillsAboveTurn = KillsAboveTurn || !TurnSeen || Trim(line).starts_with("Turn# ");
        const int character = FindCharacter(Trim(line.substr(0, line.find(':'))));
        string text = Trim((line + ' ').substr(line.find("killing") + 8));
        bool done = false;
        for (int count = 1; !done; ++count) {
            done = !Has(text, ", ") && !Has(text, " and ");
            const std::size_t blank = text.find(' ');
            const double kills = ReadNumber(text.substr(0, blank));
            string monster = blank != string::npos ? "" : Crowd ? "PC Arena" : "PC";
            text.erase(0, blank);
            if (done) {
                monster += text;
            } else if (Has(text, ", ")) {
                monster = text.substr(0, text.find(", "));
                text.erase(0, text.find(", ") + 2);
            } else if (Has(text, " and ")) {
                monster = Trim(text.substr(0, text.find(" and ")));
                const bool splits = monster.find_first_of("123456789") != string::npos;
                const std::size_t digit = monster.find_first_of("0123456789");
                monster.resize(splits ? digit : monster.size());
                text.erase(0, splits ? digit + 1 : text.find(" and ") + 5);
            } else {
                throw Fails;
            }
            const int slot = ResolveMonster(Trim(monster));
            for (std::int32_t* sum :
                 {&Ledger.CharacterKills[character], &Ledger.KillTable(character, slot)}) {
                *sum = Round<std::int32_t>(*sum + kills);
            }
            WholeCounts = WholeCounts && std::floor(kills) == kills;
            if (count > 25) {
                Messages.push_back("There seems to have been an error in the processing of turn #" +
                                   Numbers::PlainDigits(TurnNumber));
                done = true;
            }
        }
    }

    bool Import(const string& report) {
        Refused = Crowd = TurnSeen = KillsAboveTurn = false;
        TurnNumber = 0;
        Ledger.DataChanged = 1;
        string text = report; // with a line feed at each line end
        for (std::size_t at = 0; (at = text.find('\r', at)) != string::npos;) {
            text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\n");
        }
        const Lines lines = Split('\n', text);
        for (std::size_t next = 0; next < lines.size() && !Refused;) {
            string line = lines[next++];
            Crowd = (Crowd || Has(line, "crowd")) && !HasAny(line, Approaches);
            if (Trim(line).starts_with("Party#")) {
                PartyGate(Trim(line));
            } else if (Trim(line).starts_with("Turn# ")) {
                TurnGate(Trim(line), report);
            }
            bool gathered = !Has(line, "killing") || !Has(line, ":");
            const bool kills = !gathered;
            for (int count = 1; !gathered; ++count) {
                const string more = next < lines.size() ? lines[next] : throw Fails;
                gathered = Has(more, "killing") || Has(more, ":") || Trim(more).empty() ||
                           HasAny(more, Stops);
                if (!gathered) {
                    line += (line.ends_with(' ') || more.starts_with(' ') ? "" : " ") + more;
                    ++next;
                }
                if (count > 25) {
                    Messages.push_back("Error with too many kill lines on turn # " +
                                       Numbers::PlainDigits(TurnNumber) + "?");
                    gathered = true;
                }
            }
            if (kills) {
                KillSentence(line);
            }
        }
        return true;
    }
};

// The program and its twin, with every `step`th slot of their tables in use, up to `last`.
struct Twins {
    Twins(std::filesystem::path file, int last, int step) : File(std::move(file)) {
        for (int i = 1; i <= last; i += step) {
            const int c = 1 + i % MaxCharacters;
            Before->CharacterNames[c] = "No " + std::to_string(c);
            Before->CharacterKills[c] += i;
            Before->KillTable(c, i) = i;
            Before->MonsterNames[i] = "Rat" + std::to_string(i);
            Before->TurnFileLengths[i] = i;
        }
        Ledger = Slow.Ledger = *Before;
    }

    // Both import a report with this text, twice, and the ledgers go back to what they were.
    // "", or what went wrong.
    std::string Import(const std::string& report) {
        std::ofstream(File, std::ios::binary) << report;
        Window.txtTurnStart.Text = Slow.TurnStart;
        Window.txtTurnEnd.Text = Slow.TurnEnd;
        Messages = Slow.Messages = {};
        Slow.WholeCounts = true;
        std::string wrong;
        const auto once = Totals(report, wrong);
        const auto twice = Totals(report, wrong);
        wrong += Messages == Slow.Messages ? "" : "messages differ ";
        const auto sums = Settle(wrong);
        for (int c = 0; c <= MaxCharacters; ++c) {
            // Rounding parts the two where counts have a fraction, a failure can come between them.
            const bool exact = Slow.WholeCounts && !Failed;
            wrong += exact && sums[c] != twice[c] ? "a total is no sum " : "";
            wrong += once[c] != twice[c] && !Slow.KillsAboveTurn ? "the report counts twice " : "";
        }
        return wrong;
    }

    Twin Slow;
    std::unique_ptr<KillLedger> Store = std::make_unique<KillLedger>();
    std::unique_ptr<KillLedger> Before = std::make_unique<KillLedger>();
    KillLedger& Ledger = *Store;
    Slaying_Tallies Window;
    Lines Messages;
    Desktop Services{.ShowMessage = [this](const Message& message) {
        Messages.push_back(message.Prompt);
        return Answer::Ok;
    }};
    std::filesystem::path File;
    bool Failed = false; // the last import

private:
    Slots<std::int32_t, MaxCharacters> Totals(const std::string& report, std::string& wrong) {
        const auto import = [&] { return Main::ProcessTurn(Ledger, Window, Services, File), true; };
        Failed = !Outcome(import);
        const bool asSlow = Failed == !Outcome([&] { return Slow.Import(report); });
        wrong += asSlow ? "" : "one of the two fails ";
        return Ledger.CharacterKills;
    }

    // Compares the ledgers, puts them back as they were and gives each character's sum of cells.
    // The twin credits slots with a name, the first one and the sink; no other can have changed.
    Slots<std::int64_t, MaxCharacters> Settle(std::string& wrong) {
        wrong += Ledger == Slow.Ledger ? "" : "ledgers differ ";
        Slots<std::int64_t, MaxCharacters> sums;
        for (int m = 0; m <= MaxMonsters; ++m) {
            const bool live = m <= 1 || !Ledger.MonsterNames[m].empty();
            for (int c = 0; c <= MaxCharacters && live; ++c) {
                sums[c] += std::exchange(Ledger.KillTable(c, m), Before->KillTable(c, m));
                Slow.Ledger.KillTable(c, m) = Before->KillTable(c, m);
            }
        }
        const auto restore = [this](auto... field) {
            ((Ledger.*field = Slow.Ledger.*field = (*Before).*field), ...);
        };
        restore(&KillLedger::CharacterNames, &KillLedger::CharacterKills, &KillLedger::MonsterNames,
                &KillLedger::TurnFileLengths, &KillLedger::TurnHashes, &KillLedger::GameNumber,
                &KillLedger::PartyNumber);
        return sums;
    }
};

// Text for chance to write: each byte from 0x80 on stands for a piece of what reports hold, or of
// names on which the plural rules turn; any other stands for itself.
inline std::string Compose(std::string_view bytes) {
    static const Lines pieces = [] {
        std::string all = // in which '/' stands for a line end
            "/A: killing 1 Rat|, 2 Wol|, 3 Rat| and 1 Wol|s|ves|f| Rat|//|, 2 | and |Rat|Wol|/|\r/"
            "|\r| /|/ |\t/| |  |,|and |3 |10 |0 |2.5 |-4 |05 |2e9 |1e999 |7|/line|Gian|Big |Gre"
            "|of |a|en|an|n|es|ies|y|x|ch|man|men|M |Aron|/B: killing |/: killing 3 |:|killing"
            "|crowd|/a crowd/|Party#|/Turn# |/Turn#  5/|/Turn#  0006x: killing |/Turn#  12.5/"
            "|/Party# 1047 of Game # 12/|/Party# 2203 of Game # 12/|/Party# 1047 of Game # 07/"
            "|/  Party# 9e9  of Game # 12|/Party# 0|.|\"|>|,>|\xFC|\xFF|\x80";
        std::replace(all.begin(), all.end(), '/', '\n');
        Lines list = Split('|', all);
        list.insert(list.end(), Twin::Stops.begin(), Twin::Stops.end());
        for (const std::string& approach : Twin::Approaches) {
            list.push_back("\ncrowd\n" + approach + "\nA: killing 2\n\n");
        }
        return list;
    }();
    std::string text;
    for (const char byte : bytes) {
        const auto index = static_cast<unsigned char>(byte) - std::size_t{0x80};
        text += index > 0x7F ? std::string(1, byte) : pieces[index % pieces.size()];
    }
    return text;
}
