#include "switch/range/range_lists.h"
#include "tests/support/output_capture.h"
#include "tests/support/random_seed.h"
#include "tests/switch/range/plain_list2.h"
#include "tests/switch/range/range_row.h"

#include <cstdio>
#include <random>

namespace
{

const std::string HUGE_LINE = "Failed ('2147483647')\n";

class IntRangeToIntList2 : public testing::TestWithParam<Range_Row>
{
};

TEST_P(IntRangeToIntList2, GivesTheValuesOrTheLine)
{
    const Range_Row &row = GetParam();
    expect_row(row, row.line, [&](const char *text, auto &values, int32_t &count) {
        return Int_Range_To_Int_List2(text, nullptr, true, values, count, row.min, row.max);
    });
}

const Range_Row ACCEPTED[] = {
    {"Range", "2-10", 1, 4095, run(2, 10), ""},
    {"NumberAndRange", "3,5-10", 1, 4095, run(3, 3) + run(5, 10), ""},
    {"TwoRanges", "4-10,15-20", 1, 4095, run(4, 10) + run(15, 20), ""},
    {"RangeNumberRange", "5-10,12,15-20", 1, 4095, run(5, 10) + run(12, 12) + run(15, 20), ""},
    {"NumberLast", "5-10,12,15-20,30", 1, 4095,
     run(5, 10) + run(12, 12) + run(15, 20) + run(30, 30), ""},
    {"FiveItems", "6-10,12,15,18-20,30", 1, 4095,
     run(6, 10) + std::vector<int32_t>{12, 15, 18, 19, 20, 30}, ""},
    {"SixItems", "7,9-12,15,18,20-25,30", 1, 4095,
     std::vector<int32_t>{7, 9, 10, 11, 12, 15, 18} + run(20, 25) + run(30, 30), ""},
    {"EmptyText", "", 1, 4095, {}, ""},
    {"OneNumber", "1", 1, 4095, {1}, ""},
    {"Limits", "4095,1", 1, 4095, {4095, 1}, ""},
    {"WholeRange", "1-4095", 1, 4095, run(1, 4095), ""},
    {"RepeatsAreKept", "3,3", 1, 4095, {3, 3}, ""},
    {"OverlapIsKept", "2-4,3-5", 1, 4095, {2, 3, 4, 3, 4, 5}, ""},
    {"OrderIsKept", "30,5-6,1", 1, 4095, {30, 5, 6, 1}, ""},
    {"RunOfTwo", "1-2", 1, 4095, {1, 2}, ""},
    {"LeadingZeros", "007,0009-0010", 1, 4095, {7, 9, 10}, ""},
    {"ManyLeadingZeros", times(50, "0") + "8", 1, 4095, {8}, ""},
    {"ZeroWithinBounds", "0,0-1", 0, 4, {0, 0, 1}, ""},
    {"NegativeLowerBound", "0", -5, 4, {0}, ""},
    {"LargestNumber", "2147483647", 0, INT32_MAX, {INT32_MAX}, ""},
    {"LargestRange", "2147483646-2147483647", 0, INT32_MAX, {INT32_MAX - 1, INT32_MAX}, ""},
    {"SaturatedWithinBounds", "4294967297", 0, INT32_MAX, {INT32_MAX}, ""},
    {"EndsAtTheNul", std::string("1,2\0,x", 6), 1, 4095, {1, 2}, ""},
};

const Range_Row REFUSED[] = {
    {"EqualEnds", "5-5", 1, 4095, {}, "Failed ('5')\n"},
    {"FallingRangeShowsSecond", "7-3", 1, 4095, {}, "Failed ('3')\n"},
    {"EqualEndsAtTheLimit", "4095-4095", 1, 4095, {}, "Failed ('4095')\n"},
    {"TrailingComma", "1,", 1, 4095, {}, "Failed ('<cr>')\n"},
    {"TrailingCommaBehindRange", "1-2,", 1, 4095, {}, "Failed ('<cr>')\n"},
    {"TrailingMinus", "1-", 1, 4095, {}, "Failed ('<cr>')\n"},
    {"CommaAlone", ",", 1, 4095, {}, "Failed (',')\n"},
    {"LeadingComma", ",1", 1, 4095, {}, "Failed (',')\n"},
    {"MinusAlone", "-", 1, 4095, {}, "Failed ('-')\n"},
    {"Sign", "-1", 1, 4095, {}, "Failed ('-')\n"},
    {"PlusSign", "+1", 1, 4095, {}, "Failed ('+')\n"},
    {"DoubleComma", "1,,2", 1, 4095, {}, "Failed (',')\n"},
    {"DoubleCommaBehindRange", "1-2,,3", 1, 4095, {}, "Failed (',')\n"},
    {"DoubleMinus", "1--2", 1, 4095, {}, "Failed ('-')\n"},
    {"CommaBehindMinus", "1-,2", 1, 4095, {}, "Failed (',')\n"},
    {"MinusBehindComma", "1,-2", 1, 4095, {}, "Failed ('-')\n"},
    {"ThreePartRange", "1-2-3", 1, 4095, {}, "Failed ('-')\n"},
    {"BlankAlone", " ", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankFirst", " 1", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankLast", "1 ", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankBehindComma", "1, 2", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankBeforeComma", "1 ,2", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankInRange", "1 -2", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankBehindMinus", "1- 2", 1, 4095, {}, "Failed (' ')\n"},
    {"BlankBehindRange", "1-2 ", 1, 4095, {}, "Failed (' ')\n"},
    {"Tab", "1,\t2", 1, 4095, {}, "Failed ('\t')\n"},
    {"LineFeed", "1\n", 1, 4095, {}, "Failed ('\n')\n"},
    {"CarriageReturn", "1-2\r", 1, 4095, {}, "Failed ('\r')\n"},
    {"Letter", "a", 1, 4095, {}, "Failed ('a')\n"},
    {"Hexadecimal", "0x10", 1, 4095, {}, "Failed ('x')\n"},
    {"Semicolon", "1;2", 1, 4095, {}, "Failed (';')\n"},
    {"Point", "1.5", 1, 4095, {}, "Failed ('.')\n"},
    {"Slash", "1/2", 1, 4095, {}, "Failed ('/')\n"},
    {"ByteAbove7F", "1,\xE9", 1, 4095, {}, "Failed ('\xE9')\n"},
    {"PerCentSign", "%s%n", 1, 4095, {}, "Failed ('%')\n"},
    {"ZeroBelowBounds", "0", 1, 4095, {}, "Failed ('0')\n"},
    {"AboveBounds", "4096", 1, 4095, {}, "Failed ('4096')\n"},
    {"AboveBoundsBeforeComma", "1,4096,2", 1, 4095, {}, "Failed ('4096')\n"},
    {"FirstBelowBounds", "0-5", 1, 4095, {}, "Failed ('0')\n"},
    {"SecondAboveBounds", "1-4096", 1, 4095, {}, "Failed ('4096')\n"},
    {"BothAboveBoundsShowsFirst", "4097-4096", 1, 4095, {}, "Failed ('4097')\n"},
    {"SecondBelowBounds", "7-0", 1, 4095, {}, "Failed ('0')\n"},
    {"WrongOrderBeforeComma", "7-3,1", 1, 4095, {}, "Failed ('3')\n"},
    {"ValueBeforeALaterCharacter", "9-8,x", 1, 4095, {}, "Failed ('8')\n"},
    {"CharacterBeforeAValueEnds", "4096x", 1, 4095, {}, "Failed ('x')\n"},
    {"TopOf32BitsPlusOne", "2147483648", 1, 4095, {}, HUGE_LINE},
    {"WouldWrapToOne", "4294967297", 1, 4095, {}, HUGE_LINE},
    {"WouldWrapToTwoInRange", "1-4294967298", 1, 4095, {}, HUGE_LINE},
    {"WouldWrap64Bits", "18446744073709551617", 1, 4095, {}, HUGE_LINE},
    {"VeryLongNumber", times(999, "9"), 1, 4095, {}, HUGE_LINE},
    {"EmptyBounds", "3", 4, 2, {}, "Failed ('3')\n"},
    {"SaturatedRangeIsNoRange", "2147483647-2147483648", 0, INT32_MAX, {}, HUGE_LINE},
};

INSTANTIATE_TEST_SUITE_P(Accepted, IntRangeToIntList2, testing::ValuesIn(ACCEPTED), range_row_name);
INSTANTIATE_TEST_SUITE_P(Refused, IntRangeToIntList2, testing::ValuesIn(REFUSED), range_row_name);

/* Each state behind the shortest text that reaches it, with each class of character. State 0 at the
 * very start of the text differs at the end only: the empty text is accepted. */
const Range_Row PAIRS[] = {
    {"StartDigit", "9", 1, 4095, {9}, ""},
    {"StartComma", ",", 1, 4095, {}, "Failed (',')\n"},
    {"StartMinus", "-", 1, 4095, {}, "Failed ('-')\n"},
    {"StartEnd", "", 1, 4095, {}, ""},
    {"StartOther", "x", 1, 4095, {}, "Failed ('x')\n"},
    {"State0Digit", "7,9", 1, 4095, {7, 9}, ""},
    {"State0Comma", "7,,", 1, 4095, {}, "Failed (',')\n"},
    {"State0Minus", "7,-", 1, 4095, {}, "Failed ('-')\n"},
    {"State0End", "7,", 1, 4095, {}, "Failed ('<cr>')\n"},
    {"State0Other", "7,x", 1, 4095, {}, "Failed ('x')\n"},
    {"State1Digit", "79", 1, 4095, {79}, ""},
    {"State1Comma", "7,1", 1, 4095, {7, 1}, ""},
    {"State1Minus", "7-8", 1, 4095, {7, 8}, ""},
    {"State1End", "7", 1, 4095, {7}, ""},
    {"State1Other", "7x", 1, 4095, {}, "Failed ('x')\n"},
    {"State2Digit", "7-9", 1, 4095, {7, 8, 9}, ""},
    {"State2Comma", "7-,", 1, 4095, {}, "Failed (',')\n"},
    {"State2Minus", "7--", 1, 4095, {}, "Failed ('-')\n"},
    {"State2End", "7-", 1, 4095, {}, "Failed ('<cr>')\n"},
    {"State2Other", "7-x", 1, 4095, {}, "Failed ('x')\n"},
    {"State3Digit", "7-11", 1, 4095, {7, 8, 9, 10, 11}, ""},
    {"State3Comma", "7-8,1", 1, 4095, {7, 8, 1}, ""},
    {"State3Minus", "7-8-", 1, 4095, {}, "Failed ('-')\n"},
    {"State3End", "7-8", 1, 4095, {7, 8}, ""},
    {"State3Other", "7-8x", 1, 4095, {}, "Failed ('x')\n"},
};

INSTANTIATE_TEST_SUITE_P(Pairs, IntRangeToIntList2, testing::ValuesIn(PAIRS), range_row_name);

TEST(IntRangeToIntList2Bytes, EveryOtherByteIsShownAsItIsInEveryState)
{
    const std::string others_end = "0123456789,-";
    std::vector<int32_t> values = OLD_VALUES;
    int32_t count = OLD_COUNT;
    bool any_accepted = false;
    std::string expected;
    Output_Capture output;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        if (others_end.find(character) != std::string::npos) {
            continue;
        }
        for (const char *before : {"", "7,", "7", "7-", "7-8"}) {
            const std::string text = before + character;
            any_accepted |=
                Int_Range_To_Int_List2(text.c_str(), nullptr, false, values, count, 1, 4095);
            expected += "Failed ('" + character + "')\n";
        }
    }
    EXPECT_EQ(output.finish(), expected);
    EXPECT_FALSE(any_accepted);
    EXPECT_EQ(values, OLD_VALUES);
    EXPECT_EQ(count, OLD_COUNT);
}

TEST(IntRangeToIntList2Growth, ALineOf999CharactersGivesAllItsValues)
{
    const std::string text = times(142, "1-4095,") + "1-100";
    ASSERT_EQ(text.size(), 999U);
    std::vector<int32_t> values;
    int32_t count = 0;
    ASSERT_TRUE(Int_Range_To_Int_List2(text.c_str(), nullptr, true, values, count, 1, 4095));
    ASSERT_EQ(count, 142 * 4095 + 100);
    ASSERT_EQ(values.size(), static_cast<size_t>(count));
    for (size_t i = 0; i < values.size(); ++i) {
        ASSERT_EQ(values[i], static_cast<int32_t>(i % 4095) + 1) << i;
    }
}

TEST(IntRangeToIntList2Growth, TheListIsReplacedNotExtended)
{
    std::vector<int32_t> values = run(1, 500);
    int32_t count = 500;
    ASSERT_TRUE(Int_Range_To_Int_List2("8", nullptr, false, values, count, 1, 4095));
    EXPECT_EQ(values, std::vector<int32_t>{8});
    EXPECT_EQ(count, 1);
}

int below(int bound, std::mt19937 &random)
{
    return std::uniform_int_distribution<int>(0, bound - 1)(random);
}

char random_character(std::mt19937 &random)
{
    const std::string alphabet = "0123456789,,,---12 x\t\xE9";
    return alphabet[static_cast<size_t>(below(static_cast<int>(alphabet.size()), random))];
}

std::string random_list(std::mt19937 &random)
{
    std::string text;
    for (int items = 1 + below(6, random); items > 0; --items) {
        const int first = below(5, random) == 0 ? below(5000, random) : below(40, random);
        text += std::to_string(first);
        if (below(2, random) == 0) {
            text.append("-").append(std::to_string(first + below(30, random)));
        }
        if (items > 1) {
            text += ',';
        }
    }
    return text;
}

/* Any characters, or a list of numbers and ranges, or one with a character changed or more behind.
 */
std::string random_text(std::mt19937 &random)
{
    std::string text;
    if (below(3, random) == 0) {
        for (int length = below(12, random); length > 0; --length) {
            text += random_character(random);
        }
        return text;
    }
    text = random_list(random);
    if (below(3, random) == 0) {
        text[static_cast<size_t>(below(static_cast<int>(text.size()), random))] =
            random_character(random);
    }
    if (below(20, random) == 0) {
        text.append(times(below(12, random), "4"));
    }
    return text;
}

/* The same parse by the product, its printed line left out. */
Plain_Result product_list2(const std::string &text, int32_t min, int32_t max)
{
    Plain_Result result{false, {}, ""};
    int32_t count = 0;
    result.accepted =
        Int_Range_To_Int_List2(text.c_str(), nullptr, false, result.values, count, min, max);
    if (static_cast<size_t>(count) != result.values.size()) {
        result.values.assign(1, count);
    }
    return result;
}

TEST(IntRangeToIntList2Random, AgreesWithTheStateTableWalkedCharacterByCharacter)
{
    std::mt19937 random(test_seed());
    const int texts = test_rounds(20000);
    int accepted = 0;
    std::string expected;
    std::vector<std::string> different;
    Output_Capture output;
    for (int i = 0; i < texts; ++i) {
        const std::string text = random_text(random);
        const int32_t min = i % 2;
        const int32_t max = i % 3 == 0 ? 4 : 4095;
        const Plain_Result plain = plain_list2(text, min, max);
        expected += text + ":" + plain.line;
        printf("%s:", text.c_str());
        const Plain_Result product = product_list2(text, min, max);
        if (product.accepted != plain.accepted || product.values != plain.values) {
            different.push_back(text);
        }
        accepted += plain.accepted ? 1 : 0;
    }
    EXPECT_EQ(output.finish(), expected);
    EXPECT_EQ(different, std::vector<std::string>{});
    /* Both outcomes were met often enough to mean something. */
    EXPECT_GT(accepted, texts / 10);
    EXPECT_LT(accepted, texts - texts / 10);
}

TEST(QrbIntRangeToIntList2Test, PrintsAndPassesItsSevenSamples)
{
    Output_Capture output;
    const bool passed = QRB_Int_Range_To_Int_List2_Test();
    std::string printed = output.finish();
    EXPECT_TRUE(passed);

    const std::string opening = "\nQRB_Int_Range_To_Int_List2_Test:";
    ASSERT_EQ(printed.substr(0, opening.size()), opening);
    const size_t number_end = printed.find_first_not_of("0123456789", opening.size());
    ASSERT_NE(number_end, std::string::npos);
    EXPECT_GT(number_end, opening.size());
    EXPECT_EQ(printed.substr(number_end),
              ":\n"
              "[0]: s=\"2-10\" res=true channels(9): 2 3 4 5 6 7 8 9 10\n"
              "[1]: s=\"3,5-10\" res=true channels(7): 3 5 6 7 8 9 10\n"
              "[2]: s=\"4-10,15-20\" res=true channels(13): 4 5 6 7 8 9 10 15 16 17 18 19 20\n"
              "[3]: s=\"5-10,12,15-20\" res=true channels(13): 5 6 7 8 9 10 12 15 16 17 18 19 20\n"
              "[4]: s=\"5-10,12,15-20,30\" res=true channels(14):"
              " 5 6 7 8 9 10 12 15 16 17 18 19 20 30\n"
              "[5]: s=\"6-10,12,15,18-20,30\" res=true channels(11): 6 7 8 9 10 12 15 18 19 20 30\n"
              "[6]: s=\"7,9-12,15,18,20-25,30\" res=true channels(14):"
              " 7 9 10 11 12 15 18 20 21 22 23 24 25 30\n");
}

} // namespace
