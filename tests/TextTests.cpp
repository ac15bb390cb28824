#include "Tables.h"
#include "text/Numbers.h"

#include <gtest/gtest.h>

TEST(Numbers, ReadTheLongestNumberAtTheFront) {
    for (const Lines& row : Rows(
             "12A > 12; A12 > 0; > 0; 1 2 3 > 123; 1.e3 > 1000; -.5e1x > -5; 1e+ > 1; 1e > 1;"
             "2E-x > 2; 1e+ 2 > 100; 3,5 > 3; 1.2.3 > 1.2; --5 > 0; .e5 > 0; 0x10 > 0; inf > 0;"
             "+7 > 7; \r5 > 0; 1\t2\n3 > 123; 1e-999 > 0; 0e999999 > 0; 0.001e-306 > 1e-309;"
             "0.0001e312 > 1e308; 1000e-324 > 1e-321; 0.1e-330 > 0; 1e-99999999999999999999 > 0")) {
        EXPECT_EQ(Numbers::Read(row[0]), std::strtod(row[1].c_str(), nullptr)) << row[0];
    }
    EXPECT_EQ(Numbers::Read("." + std::string(400, '0') + "1e402"), 10);
    for (const char* text : {"1e309", "-1e309x", "1e99999999999999999999", "10e308", "0.1e310"}) {
        EXPECT_THROW(Numbers::Read(text), Failure) << text;
    }
}

TEST(Numbers, AreWrittenInPlainDigits) {
    for (const std::string digits : {"0.5", "100000", "12.25", "-32768", "0", "0.0000001"}) {
        EXPECT_EQ(Numbers::PlainDigits(std::stod(digits)), digits);
    }
    EXPECT_EQ(Numbers::PlainDigits(-0.0), "0");
    EXPECT_EQ(Numbers::NumberText(-2147483647 - 1), "-2147483648");
}
