#include "switch/config/decimal.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

namespace
{

struct Number {
    const char *name;
    std::string_view text;
    int32_t unsignedValue;
    int32_t signedValue;
};

void PrintTo(const Number &number, std::ostream *out)
{
    *out << number.name;
}

class Decimal : public testing::TestWithParam<Number>
{
};

TEST_P(Decimal, ConvertsAndSaturates)
{
    EXPECT_EQ(UnsignedDecimalValue(GetParam().text), GetParam().unsignedValue);
    EXPECT_EQ(SignedDecimalValue(GetParam().text), GetParam().signedValue);
}

constexpr int32_t MOST = 2147483647;
constexpr int32_t LEAST = -2147483647 - 1;

const Number NUMBERS[] = {
    {"Empty", "", 0, 0},
    {"NoText", {}, 0, 0},
    {"Zero", "0", 0, 0},
    {"LeadingZeros", "00070", 70, 70},
    {"StopsAtLetter", "12ab", 12, 12},
    {"StopsAtBlank", "1 2", 1, 1},
    {"StopsAtHighByte", "7\xE9", 7, 7},
    {"StopsAtNul",
     std::string_view("7\0"
                      "8",
                      3),
     7, 7},
    {"NoDigits", "abc", 0, 0},
    {"LeadingBlanks", " \t\n\r\v\f42", 0, 42},
    {"BlanksOnly", "  \t", 0, 0},
    {"Plus", "+5", 0, 5},
    {"Minus", "-5", 0, -5},
    {"MinusAfterBlanks", "  -17", 0, -17},
    {"MinusAlone", "-", 0, 0},
    {"PlusAlone", "+", 0, 0},
    {"TwoSigns", "--5", 0, 0},
    {"PlusMinus", "+-5", 0, 0},
    {"BlankAfterSign", "- 5", 0, 0},
    {"OneBelowTheMost", "2147483646", MOST - 1, MOST - 1},
    {"TheMost", "2147483647", MOST, MOST},
    {"OneAboveTheMost", "2147483648", MOST, MOST},
    {"ThirtyTwoBitWrap", "4294967297", MOST, MOST},
    {"SixtyFourBitWrap", "18446744073709551617", MOST, MOST},
    {"VeryLong", "99999999999999999999999999999999999999999999999999", MOST, MOST},
    {"LeastPlusOne", "-2147483647", 0, LEAST + 1},
    {"TheLeast", "-2147483648", 0, LEAST},
    {"OneBelowTheLeast", "-2147483649", 0, LEAST},
    {"VeryLongNegative", "-99999999999999999999999999999999", 0, LEAST},
};

INSTANTIATE_TEST_SUITE_P(Texts, Decimal, testing::ValuesIn(NUMBERS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(DecimalDigit, AppendsUpToTheLimit)
{
    EXPECT_EQ(AppendDecimalDigit(0, '7'), 7);
    EXPECT_EQ(AppendDecimalDigit(214748364, '6'), MOST - 1);
    EXPECT_EQ(AppendDecimalDigit(214748364, '7'), MOST);
    EXPECT_EQ(AppendDecimalDigit(214748364, '8'), MOST);
    EXPECT_EQ(AppendDecimalDigit(MOST, '0'), MOST);
}

TEST(DecimalDigit, IsZeroToNineOnly)
{
    for (int code = 0; code < 256; code++) {
        const bool digit = code >= 0x30 && code <= 0x39;
        EXPECT_EQ(IsDecimalDigit(static_cast<char>(code)), digit) << code;
    }
}

} // namespace
