#include "Tables.h"
#include "text/CodePage.h"
#include "text/Numbers.h"

#include <gtest/gtest.h>

#include <numeric>

TEST(Numbers, ReadTheLongestNumberAtTheFront) {
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/numbers.md")) {
        const auto value = Outcome([&row] { return Numbers::Read(row[0]); });
        EXPECT_EQ(value.has_value(), row[1] != "too large") << row[0];
        EXPECT_EQ(value.value_or(0), std::strtod(row[1].c_str(), nullptr)) << row[0];
    }
    EXPECT_EQ(Numbers::Read("1\t2\n3"), 123);
    EXPECT_EQ(Numbers::Read("\r5"), 0);
    EXPECT_EQ(Numbers::Read("." + std::string(400, '0') + "1e402"), 10);
    EXPECT_EQ(Numbers::PlainDigits(-0.0), "0");
}

TEST(CodePage, BringsEveryByteBack) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    const std::u16string unicode = CodePage::ToUnicode(bytes);
    EXPECT_EQ(CodePage::FromUnicode(unicode), bytes);
    // Bytes 0x7E to 0xA1, the unassigned ones as controls.
    EXPECT_EQ(
        unicode.substr(0x7E, 36),
        u"~\x7F\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152"
        u"\x8D\u017D\x8F\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A"
        u"\u0153\x9D\u017E\u0178\u00A0\u00A1");
    EXPECT_EQ(CodePage::FromUnicode(u"a\u0100\U0001F409\u0080\u009F\uFFFFb"), "a?????b");
}
