#include "Tables.h"
#include "text/Numbers.h"

#include <gtest/gtest.h>

TEST(Numbers, ReadTheLongestNumberAtTheFront) {
    for (const std::string& row :
         Fields("12A=12; A12=0; =0; 1 2 3=123; 1.e3=1000; .5=0.5; -.5e1x=-5; +7=7; 1e=1; 1e+=1; "
                "1e+ 2=100; 3,5=3; 1.2.3=1.2; 5-3=5; --5=0; +-5=0; -=0; .=0; .e5=0; 0x10=0; inf=0; "
                "nan=0; \r5=0; 1\t2\n3=123; 1e-999=0; -1e-400=0; 1E2=100; 0e999999=0; "
                "- 5=-5; 0.001e-306=1e-309; 0.0001e312=1e308",
                ';')) {
        EXPECT_EQ(Numbers::Read(Fields(row, '=')[0]),
                  std::strtod(Fields(row, '=')[1].c_str(), nullptr))
            << row;
    }
    EXPECT_EQ(Numbers::Read(std::string("4\0002", 3)), 4);
    EXPECT_EQ(Numbers::Read("." + std::string(400, '0') + "1e402"), 10);
    EXPECT_EQ(Numbers::Read("." + std::string(400, '0') + "1"), 0);
    for (const char* text : {"1e309", "-1e309x", "1e99999999999999999999"}) {
        EXPECT_THROW(Numbers::Read(text), Failure) << text;
    }
}

TEST(Numbers, RoundTiesToEvenIntoTheField) {
    for (const auto& [value, rounded] : {std::pair(0.5, 0),
                                         {1.5, 2},
                                         {2.5, 2},
                                         {-0.5, 0},
                                         {-1.5, -2},
                                         {2.4999, 2},
                                         {2.6, 3},
                                         {32767.4, 32767},
                                         {-32768.5, -32768}}) {
        EXPECT_EQ(Numbers::RoundInto<std::int16_t>(value), rounded) << value;
    }
    EXPECT_THROW(Numbers::RoundInto<std::int16_t>(32767.5), Failure);
    EXPECT_THROW(Numbers::RoundInto<std::int16_t>(-32769), Failure);
    EXPECT_EQ(Numbers::RoundInto<std::int32_t>(2147483647.4), 2147483647);
    EXPECT_THROW(Numbers::RoundInto<std::int32_t>(2147483647.5), Failure);
}

TEST(Numbers, AreWrittenInPlainDigits) {
    for (const std::string digits : {"0.5", "100000", "12.25", "0.1", "-32768", "0", "0.0000001"}) {
        EXPECT_EQ(Numbers::PlainDigits(std::stod(digits)), digits);
    }
    EXPECT_EQ(Numbers::PlainDigits(-0.0), "0");
    for (const double longest : {5e-324, -2.2250738585072014e-308, -1.7976931348623157e308}) {
        EXPECT_EQ(Numbers::Read(Numbers::PlainDigits(longest)), longest);
    }
    EXPECT_EQ(Numbers::NumberText(0), " 0");
    EXPECT_EQ(Numbers::NumberText(2147483647), " 2147483647");
    EXPECT_EQ(Numbers::NumberText(-2147483647 - 1), "-2147483648");
}
