#include "switch/range/range_lists.h"
#include "tests/switch/range/range_row.h"

namespace
{

/* The three lines of a refused text. */
const std::string NUMBER = "Int_Range_To_Int_List:813: - Failed\n";
const std::string RANGE = "Int_Range_To_Int_List:829: - Failed\n";

std::string separator(const std::string &shown)
{
    return "Int_Range_To_Int_List:835: - Failed (c2: " + shown + ")\n";
}

class IntRangeToIntList : public testing::TestWithParam<Range_Row>
{
};

TEST_P(IntRangeToIntList, GivesTheValuesOrTheLine)
{
    const Range_Row &row = GetParam();
    expect_row(row, row.line, [&](const char *text, auto &values, int32_t &count) {
        return Int_Range_To_Int_List(text, nullptr, true, values, count, row.min, row.max);
    });
}

TEST_P(IntRangeToIntList, SilentlyGivesTheSameWithoutTheLine)
{
    const Range_Row &row = GetParam();
    expect_row(row, "", [&](const char *text, auto &values, int32_t &count) {
        return Int_Range_To_Int_List_Silent(text, values, count, row.min, row.max);
    });
}

const Range_Row ACCEPTED[] = {
    {"Range", "1-3", 0, 4, {1, 2, 3}, ""},
    {"OneNumber", "0", 0, 4, {0}, ""},
    {"Limits", "0,4", 0, 4, {0, 4}, ""},
    {"WholeRange", "0-4", 0, 4, {0, 1, 2, 3, 4}, ""},
    {"AllDigits", "0-9", 0, 9, run(0, 9), ""},
    {"EmptyText", "", 0, 4, {}, ""},
    {"CommaAlone", ",", 0, 4, {}, ""},
    {"Commas", ",,,", 0, 4, {}, ""},
    {"LeadingComma", ",1", 0, 4, {1}, ""},
    {"TrailingComma", "1,", 0, 4, {1}, ""},
    {"TwoTrailingCommas", "1,,", 0, 4, {1}, ""},
    {"DoubleComma", "1,,2", 0, 4, {1, 2}, ""},
    {"CommaBehindRange", "1-2,4", 0, 4, {1, 2, 4}, ""},
    {"TrailingCommaBehindRange", "1-2,", 0, 4, {1, 2}, ""},
    {"BlankBetweenNumbers", "1 2", 0, 4, {1, 2}, ""},
    {"TabBetweenNumbers", "1\t2", 0, 4, {1, 2}, ""},
    {"TrailingBlank", "1 ", 0, 4, {1}, ""},
    {"BlankThenComma", "1 ,2", 0, 4, {1, 2}, ""},
    {"BlankThenRange", "0 2-3", 0, 4, {0, 2, 3}, ""},
    {"NothingBehindARange", "1-34", 0, 4, {1, 2, 3, 4}, ""},
    {"NumberAndRangeBehindARange", "0-12-4", 0, 4, {0, 1, 2, 3, 4}, ""},
    {"RepeatsAreKept", "3,3,0-4,0-4", 0, 4, {3, 3, 0, 1, 2, 3, 4, 0, 1, 2, 3, 4}, ""},
    {"OrderIsKept", "4,2-3,0", 0, 4, {4, 2, 3, 0}, ""},
    {"RunOfTwo", "3-4", 0, 4, {3, 4}, ""},
    {"SixRangesIn18Characters", "0-40-40-40-40-40-4", 0, 4,
     run(0, 4) + run(0, 4) + run(0, 4) + run(0, 4) + run(0, 4) + run(0, 4), ""},
    {"PortFiveWithinKeyFourBounds", "5", 0, 5, {5}, ""},
    {"EndsAtTheNul", std::string("1,2\0x", 5), 0, 4, {1, 2}, ""},
    /* Only the bounds tell a digit: the same value whatever the sign of char is. */
    {"ByteAbove7FWithinWideBounds", "\xE9", 0, 255, {185}, ""},
};

const Range_Row REFUSED[] = {
    {"TwoDigits", "12", 0, 4, {}, separator("'2' 0x32")},
    {"TwoDigitsBehindComma", "1,12", 0, 4, {}, separator("'2' 0x32")},
    {"TwoDigitsOutOfBounds", "99", 0, 4, {}, separator("'9' 0x39")},
    {"AboveBounds", "5", 0, 4, {}, NUMBER},
    {"AboveBoundsBeforeComma", "5,1", 0, 4, {}, NUMBER},
    {"AboveBoundsBeforeBlank", "5 1", 0, 4, {}, NUMBER},
    {"AboveBoundsBeforeTab", "5\t1", 0, 4, {}, NUMBER},
    {"BelowBounds", "0", 1, 2, {}, NUMBER},
    {"LaterNumberAboveBounds", "1,2,5", 0, 4, {}, NUMBER},
    {"Letter", "a", 0, 4, {}, NUMBER},
    {"LetterBeforeComma", "a,1", 0, 4, {}, NUMBER},
    {"BlankAlone", " ", 0, 4, {}, NUMBER},
    {"BlankBeforeComma", " ,1", 0, 4, {}, NUMBER},
    {"BlankBehindCommaAndBeforeTheEnd", "1, ", 0, 4, {}, NUMBER},
    {"TwoBlanks", "1  2", 0, 4, {}, separator("'2' 0x32")},
    {"ThreeBlanks", "1   2", 0, 4, {}, NUMBER},
    {"MinusAlone", "-", 0, 4, {}, NUMBER},
    {"ByteAbove7F", "\xE9", 0, 4, {}, NUMBER},
    {"ByteAbove7FBeforeComma", "\x80,1", 0, 4, {}, NUMBER},
    {"LineFeedAlone", "\n", 0, 4, {}, NUMBER},
    {"EqualEnds", "3-3", 0, 4, {}, RANGE},
    {"FallingRange", "3-1", 0, 4, {}, RANGE},
    {"FirstAboveBounds", "5-9", 0, 4, {}, RANGE},
    {"FirstBelowBounds", "0-2", 1, 2, {}, RANGE},
    {"SecondAboveBounds", "1-5", 0, 4, {}, RANGE},
    {"SecondIsTheEnd", "1-", 0, 4, {}, RANGE},
    {"SecondIsTheEndWithWideBounds", "1-", -100, 100, {}, RANGE},
    {"SecondIsAComma", "1-,2", 0, 4, {}, RANGE},
    {"SecondIsABlank", "1- 2", 0, 4, {}, RANGE},
    {"SecondIsAMinus", "1--2", 0, 4, {}, RANGE},
    {"SecondIsALetter", "1-a", 0, 4, {}, RANGE},
    {"SecondIsAByteAbove7F", "1-\xE9", 0, 4, {}, RANGE},
    {"FirstIsALetter", "a-2", 0, 4, {}, RANGE},
    {"FirstIsAMinus", "--2", 0, 4, {}, RANGE},
    {"EndBehindAGoodRange", "0-12-", 0, 4, {}, RANGE},
    {"Sign", "-1", 0, 4, {}, separator("'1' 0x31")},
    {"BlankFirst", " 1", 0, 4, {}, separator("'1' 0x31")},
    {"BlankBehindComma", "1, 2", 0, 4, {}, separator("'2' 0x32")},
    {"MinusBehindRange", "1-3-4", 0, 4, {}, separator("'4' 0x34")},
    {"BlankBehindRange", "1-3 4", 0, 4, {}, separator("'4' 0x34")},
    {"BlankThenRangeMinus", "1 -3", 0, 4, {}, separator("'3' 0x33")},
    {"LineFeed", "1\n", 0, 4, {}, separator("'\n' 0x0A")},
    {"CarriageReturn", "1\r\n", 0, 4, {}, separator("'\r' 0x0D")},
    {"LetterBehind", "1a", 0, 4, {}, separator("'a' 0x61")},
    {"TwoLetters", "ab", 0, 4, {}, separator("'b' 0x62")},
    {"Semicolon", "1;2", 0, 4, {}, separator("';' 0x3B")},
    {"ByteAbove7FBehind", "1\xE9", 0, 4, {}, separator("'\xE9' 0xE9")},
    {"ByteFFBehind", "1\xFF", 0, 4, {}, separator("'\xFF' 0xFF")},
    {"PerCentSignBehind", "1%", 0, 4, {}, separator("'%' 0x25")},
    {"ControlCharacterBehind", "1\x01", 0, 4, {}, separator("'\x01' 0x01")},
    {"EmptyBounds", "3", 4, 2, {}, NUMBER},
};

INSTANTIATE_TEST_SUITE_P(Accepted, IntRangeToIntList, testing::ValuesIn(ACCEPTED), range_row_name);
INSTANTIATE_TEST_SUITE_P(Refused, IntRangeToIntList, testing::ValuesIn(REFUSED), range_row_name);

TEST(IntRangeToIntListGrowth, ALineOf999CharactersGivesAllItsValues)
{
    const std::string text = times(333, "0-4");
    ASSERT_EQ(text.size(), 999U);
    std::vector<int32_t> values;
    int32_t count = 0;
    ASSERT_TRUE(Int_Range_To_Int_List(text.c_str(), nullptr, true, values, count, 0, 4));
    ASSERT_EQ(count, 333 * 5);
    ASSERT_EQ(values.size(), static_cast<size_t>(count));
    for (size_t i = 0; i < values.size(); ++i) {
        ASSERT_EQ(values[i], static_cast<int32_t>(i % 5)) << i;
    }
}

/* Every pair of characters behind "1": nothing is read past the end, whatever stands there. */
TEST(IntRangeToIntListBytes, NoPairOfBytesIsReadPastItsEnd)
{
    std::vector<int32_t> values;
    int32_t count = 0;
    int accepted = 0;
    for (int pair = 0; pair < 65536; ++pair) {
        const std::vector<char> text = {'1', static_cast<char>(pair & 0xFF),
                                        static_cast<char>(pair >> 8), '\0'};
        accepted += Int_Range_To_Int_List_Silent(text.data(), values, count, 0, 4) ? 1 : 0;
    }
    /* "1" before any byte: 256. A comma or a blank, and the end, a comma, or 0 to 4: 3 * 7. A minus
     * and 2 to 4: 3. */
    EXPECT_EQ(accepted, 256 + 3 * 7 + 3);
}

} // namespace
