#include "Tables.h"
#include "text/Numbers.h"

#include <gtest/gtest.h>

TEST(Numbers, ReadTheLongestNumberAtTheFront) {
    for (const Lines& row : Cases(SHELF_FOLDER "/cases/numbers.md")) {
        const auto value = Outcome([&row] { return Numbers::Read(row[0]); });
        EXPECT_EQ(value.has_value(), row[1] != "too large") << row[0];
        EXPECT_EQ(value.value_or(0), std::strtod(row[1].c_str(), nullptr)) << row[0];
    }
    EXPECT_EQ(Numbers::Read("1\t2\n3"), 123);
    EXPECT_EQ(Numbers::Read("\r5"), 0);
    EXPECT_EQ(Numbers::Read("." + std::string(400, '0') + "1e402"), 10);
}

TEST(Numbers, AreWrittenInPlainDigits) {
    for (const std::string digits : {"0.5", "100000", "12.25", "-32768", "0", "0.0000001"}) {
        EXPECT_EQ(Numbers::PlainDigits(std::stod(digits)), digits);
    }
    EXPECT_EQ(Numbers::PlainDigits(-0.0), "0");
    EXPECT_EQ(Numbers::NumberText(-2147483647 - 1), "-2147483648");
}
