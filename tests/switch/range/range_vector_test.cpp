#include "switch/range/range_lists.h"
#include "tests/support/output_capture.h"
#include "tests/switch/range/range_row.h"

#include <climits>

namespace
{

std::string lexems_line()
{
    return "Range_Str_To_Lexems:325: Parsing Error\n";
}

std::string parsing_line(int number)
{
    return "Range_Lexems_To_Vector:" + std::to_string(number) + ": Parsing Error\n";
}

std::string range_line(int number)
{
    return "Range_Lexems_To_Vector:" + std::to_string(number) + ": Range Error\n";
}

const std::string NO_VALUE = "Range_Str_To_Vector:463: Parsing Error\n";

class RangeStrToVector : public testing::TestWithParam<Range_Row>
{
protected:
    void check(bool verbose, const std::string &line)
    {
        const Range_Row &row = GetParam();
        std::vector<int32_t> values = OLD_VALUES;
        Output_Capture output;
        const bool accepted =
            Range_Str_To_Vector(row.text.c_str(), values, row.min, row.max, verbose);
        EXPECT_EQ(output.finish(), line);
        EXPECT_EQ(accepted, row.accepted());
        EXPECT_EQ(values, row.accepted() ? row.values : OLD_VALUES);
    }
};

TEST_P(RangeStrToVector, GivesTheSortedValuesOrTheLine)
{
    check(true, GetParam().line);
}

TEST_P(RangeStrToVector, IsSilentUnlessVerbose)
{
    check(false, "");
}

const Range_Row ACCEPTED[] = {
    {"OneNumber", "5", 1, 4095, {5}, ""},
    {"Limits", "1,4095", 1, 4095, {1, 4095}, ""},
    {"WholeRange", "1-4095", 1, 4095, run(1, 4095), ""},
    {"Sample", "5-10,12,15-20", 1, 4095, run(5, 10) + run(12, 12) + run(15, 20), ""},
    {"NumberInsideARange", "10-12,11", 1, 4095, {10, 11, 12}, ""},
    {"Repeats", "3,3,3", 1, 4095, {3}, ""},
    {"Overlap", "2-4,3-5", 1, 4095, {2, 3, 4, 5}, ""},
    {"TouchingRanges", "2-4,4-6", 1, 4095, {2, 3, 4, 5, 6}, ""},
    {"FallingOrder", "9,7,5-6,1", 1, 4095, {1, 5, 6, 7, 9}, ""},
    {"WrongOrderAtTheEnd", "1-100,99", 1, 4095, run(1, 100), ""},
    {"BlankBetweenNumbers", "5 6", 1, 4095, {5, 6}, ""},
    {"TabBetweenNumbers", "5\t6", 1, 4095, {5, 6}, ""},
    {"ThreeNumbersByBlanks", "7 6 5", 1, 4095, {5, 6, 7}, ""},
    {"BlanksEverywhere", " \t5 - 10 , 12\t,15 -20 ", 1, 4095,
     run(5, 10) + run(12, 12) + run(15, 20), ""},
    {"NumberThenRangeByBlank", "5 7-8", 1, 4095, {5, 7, 8}, ""},
    {"RangeThenNumberByBlank", "5-6 8", 1, 4095, {5, 6, 8}, ""},
    {"RangeThenRangeByBlank", "5-6 8-9", 1, 4095, {5, 6, 8, 9}, ""},
    {"TwoCommasBehindRange", "5-10,,12", 1, 4095, run(5, 10) + run(12, 12), ""},
    {"ThreeCommasBehindRange", "5-10,,,12", 1, 4095, run(5, 10) + run(12, 12), ""},
    {"CommaBlankCommaBehindRange", "5-6, ,12", 1, 4095, {5, 6, 12}, ""},
    {"RunOfTwo", "1-2", 1, 4095, {1, 2}, ""},
    {"LeadingZeros", "007-0009", 1, 4095, {7, 8, 9}, ""},
    {"ZeroWithinBounds", "0-4", 0, 4, {0, 1, 2, 3, 4}, ""},
    {"LargestRange", "2147483646-2147483647", 0, INT_MAX, {INT_MAX - 1, INT_MAX}, ""},
    {"SaturatedWithinBounds", "4294967297", 0, INT_MAX, {INT_MAX}, ""},
    {"EndsAtTheNul", std::string("2,1\0x", 5), 1, 4095, {1, 2}, ""},
};

const Range_Row REFUSED[] = {
    {"EmptyText", "", 1, 4095, {}, NO_VALUE},
    {"BlanksOnly", " \t ", 1, 4095, {}, NO_VALUE},
    {"EndsAtAFirstNul", std::string("\0001", 2), 1, 4095, {}, NO_VALUE},

    {"LineFeed", "1\n", 1, 4095, {}, lexems_line()},
    {"CarriageReturn", "1\r", 1, 4095, {}, lexems_line()},
    {"VerticalTab", "1\v2", 1, 4095, {}, lexems_line()},
    {"Letter", "1,a", 1, 4095, {}, lexems_line()},
    {"Semicolon", "1;2", 1, 4095, {}, lexems_line()},
    {"Point", "1.5", 1, 4095, {}, lexems_line()},
    {"PlusSign", "+1", 1, 4095, {}, lexems_line()},
    {"Hexadecimal", "0x10", 1, 4095, {}, lexems_line()},
    {"ByteAbove7F", "1,\xE9", 1, 4095, {}, lexems_line()},
    {"ByteA0",
     "1\xA0"
     "2",
     1,
     4095,
     {},
     lexems_line()},
    {"ByteFF", "\xFF", 1, 4095, {}, lexems_line()},
    {"PerCentSign", "%s%n", 1, 4095, {}, lexems_line()},
    {"WrongCharacterBehindWrongBounds", "9999,x", 1, 4095, {}, lexems_line()},

    {"NumberByBlankAboveBounds", "4096 5", 1, 4095, {}, range_line(354)},
    {"NumberByBlankBelowBounds", "0 5", 1, 4095, {}, range_line(354)},
    {"NumberByBlankWouldWrap", "4294967297 5", 1, 4095, {}, range_line(354)},
    {"NumberBeforeCommaAboveBounds", "4096,5", 1, 4095, {}, range_line(370)},
    {"NumberBeforeCommaBelowBounds", "0,5", 1, 4095, {}, range_line(370)},
    {"NumberBeforeCommaWouldWrap", "4294967297,5", 1, 4095, {}, range_line(370)},
    {"RangeAboveBounds", "5-10", 1, 4, {}, range_line(384)},
    {"RangeEndsAboveBounds", "1-4096", 1, 4095, {}, range_line(384)},
    {"RangeBeginsBelowBounds", "0-5", 1, 4095, {}, range_line(384)},
    {"FallingRangeBelowBounds", "5-0", 1, 4095, {}, range_line(384)},
    {"EqualEndsAboveBounds", "4096-4096", 1, 4095, {}, range_line(384)},
    {"RangeEndWouldWrap", "1-4294967298", 1, 4095, {}, range_line(384)},
    {"RangeEndWouldWrap64Bits", "1-18446744073709551618", 1, 4095, {}, range_line(384)},
    {"LastNumberAboveBounds", "4096", 1, 4095, {}, range_line(426)},
    {"LastNumberBelowBounds", "1,0", 1, 4095, {}, range_line(426)},
    {"LastNumberBehindBlank", "1 4096", 1, 4095, {}, range_line(426)},
    {"TopOf32BitsPlusOne", "2147483648", 1, 4095, {}, range_line(426)},
    {"WouldWrapToOne", "4294967297", 1, 4095, {}, range_line(426)},
    {"VeryLongNumber", times(999, "9"), 1, 4095, {}, range_line(426)},
    {"EmptyBounds", "3", 4, 2, {}, range_line(426)},

    {"EqualEnds", "5-5", 1, 4095, {}, parsing_line(396)},
    {"FallingRange", "10-5", 1, 4095, {}, parsing_line(396)},
    {"SaturatedRangeIsNoRange", "2147483647-2147483648", 0, INT_MAX, {}, parsing_line(396)},

    {"DoubleComma", "5,,12", 1, 4095, {}, parsing_line(404)},
    {"CommaMinus", "5,-6", 1, 4095, {}, parsing_line(404)},
    {"MinusComma", "5-,6", 1, 4095, {}, parsing_line(404)},
    {"DoubleMinus", "5--6", 1, 4095, {}, parsing_line(404)},
    {"DoubleTrailingComma", "5,,", 1, 4095, {}, parsing_line(404)},
    {"DoubleCommaBehindANumberBehindARange", "5-6,7,,8", 1, 4095, {}, parsing_line(404)},
    {"OutOfBoundsBeforeDoubleComma", "9999,,1", 1, 4095, {}, parsing_line(404)},

    {"TrailingComma", "5,", 1, 4095, {}, parsing_line(412)},
    {"TrailingMinus", "5-", 1, 4095, {}, parsing_line(412)},
    {"TrailingCommaBehindBlank", "5 , ", 1, 4095, {}, parsing_line(412)},
    {"TrailingCommaBehindTwoNumbers", "4,5,", 1, 4095, {}, parsing_line(412)},
    {"OutOfBoundsBeforeTrailingComma", "9999,", 1, 4095, {}, parsing_line(412)},

    {"CommaAlone", ",", 1, 4095, {}, parsing_line(438)},
    {"MinusAlone", "-", 1, 4095, {}, parsing_line(438)},
    {"LeadingComma", ",5", 1, 4095, {}, parsing_line(438)},
    {"LeadingMinus", "-5", 1, 4095, {}, parsing_line(438)},
    {"LeadingCommaBehindBlank", " ,5", 1, 4095, {}, parsing_line(438)},
    {"TrailingCommaBehindRange", "5-10,", 1, 4095, {}, parsing_line(438)},
    {"TwoTrailingCommasBehindRange", "5-10,,", 1, 4095, {}, parsing_line(438)},
    {"TrailingMinusBehindRange", "5-10-", 1, 4095, {}, parsing_line(438)},
    {"ThreePartRange", "5-10-12", 1, 4095, {}, parsing_line(438)},
    {"CommaMinusBehindRange", "5-10,-12", 1, 4095, {}, parsing_line(438)},
};

INSTANTIATE_TEST_SUITE_P(Accepted, RangeStrToVector, testing::ValuesIn(ACCEPTED), range_row_name);
INSTANTIATE_TEST_SUITE_P(Refused, RangeStrToVector, testing::ValuesIn(REFUSED), range_row_name);

TEST(RangeStrToVectorGrowth, ALineOf999CharactersGivesEachValueOnce)
{
    const std::string text = times(142, "1-4095,") + "1-100";
    ASSERT_EQ(text.size(), 999U);
    std::vector<int32_t> values;
    ASSERT_TRUE(Range_Str_To_Vector(text.c_str(), values, 1, 4095, true));
    EXPECT_EQ(values, run(1, 4095));
}

TEST(RangeStrToVectorGrowth, TheListIsReplacedNotExtended)
{
    std::vector<int32_t> values = run(1, 500);
    ASSERT_TRUE(Range_Str_To_Vector("8", values, 1, 4095, true));
    EXPECT_EQ(values, std::vector<int32_t>{8});
}

TEST(RangeStrToVectorBytes, EveryOtherByteIsRefusedByTheFirstStage)
{
    const std::string good = "0123456789,- \t";
    std::vector<int32_t> values = OLD_VALUES;
    std::string expected;
    bool any_accepted = false;
    Output_Capture output;
    for (int byte = 1; byte < 256; ++byte) {
        const std::string character(1, static_cast<char>(byte));
        if (good.find(character) != std::string::npos) {
            continue;
        }
        for (const std::string &text : {character, "1" + character, "1," + character + "2"}) {
            any_accepted |= Range_Str_To_Vector(text.c_str(), values, 1, 4095, true);
            expected += lexems_line();
        }
    }
    EXPECT_EQ(output.finish(), expected);
    EXPECT_FALSE(any_accepted);
    EXPECT_EQ(values, OLD_VALUES);
}

using Lexems = std::vector<Range_Lexem>;

constexpr Range_Lexem COMMA = {Range_Lexem_COMMA, 0};
constexpr Range_Lexem MINUS = {Range_Lexem_MINUS, 0};

Range_Lexem number(int32_t value)
{
    return {Range_Lexem_NUMBER, value};
}

/* Lexemes as text, to compare and to show: [5][-][10]. */
std::string shown(const Lexems &lexems)
{
    std::string text;
    for (const Range_Lexem &lexem : lexems) {
        text += '[';
        if (lexem.kind == Range_Lexem_NUMBER) {
            text += std::to_string(lexem.value);
        } else {
            text += lexem.kind == Range_Lexem_COMMA ? ',' : '-';
        }
        text += ']';
    }
    return text;
}

struct Lexems_Row {
    const char *name;
    std::string text;
    std::string lexems;
};

void PrintTo(const Lexems_Row &row, std::ostream *out)
{
    *out << row.name;
}

class RangeStrToLexems : public testing::TestWithParam<Lexems_Row>
{
};

TEST_P(RangeStrToLexems, SplitsWithoutALine)
{
    Lexems lexems = {COMMA, MINUS};
    Output_Capture output;
    const bool accepted = Range_Str_To_Lexems(GetParam().text.c_str(), lexems, true);
    EXPECT_EQ(output.finish(), "");
    EXPECT_TRUE(accepted);
    EXPECT_EQ(shown(lexems), GetParam().lexems);
}

const Lexems_Row SPLITS[] = {
    {"Empty", "", ""},
    {"Blanks", " \t \t", ""},
    {"Number", "15", "[15]"},
    {"NumberWithZeros", "0015", "[15]"},
    {"Saturated", "99999999999", "[2147483647]"},
    {"LastUnsaturated", "2147483646", "[2147483646]"},
    {"Range", "5-10", "[5][-][10]"},
    {"Sample", "5-10,12", "[5][-][10][,][12]"},
    {"NumbersByBlank", "5 6", "[5][6]"},
    {"BlanksAround", " 5 - 10\t", "[5][-][10]"},
    {"SeparatorsInARow", ",,--,-", "[,][,][-][-][,][-]"},
};

INSTANTIATE_TEST_SUITE_P(Table, RangeStrToLexems, testing::ValuesIn(SPLITS),
                         [](const auto &row) { return row.param.name; });

TEST(RangeStages, ARefusedSplitLeavesTheLexemes)
{
    for (const bool verbose : {false, true}) {
        Lexems lexems = {COMMA, number(3)};
        Output_Capture output;
        const bool accepted = Range_Str_To_Lexems("1,x", lexems, verbose);
        EXPECT_EQ(output.finish(), verbose ? lexems_line() : "");
        EXPECT_FALSE(accepted);
        EXPECT_EQ(shown(lexems), "[,][3]");
    }
}

TEST(RangeStages, TheSecondStageKeepsOrderAndRepeats)
{
    std::vector<int32_t> values = OLD_VALUES;
    const Lexems lexems = {number(9), COMMA, number(2), MINUS, number(4), COMMA, number(3)};
    EXPECT_TRUE(Range_Lexems_To_Vector(lexems, values, 1, 4095, true));
    EXPECT_EQ(values, (std::vector<int32_t>{9, 2, 3, 4, 3}));
}

TEST(RangeStages, TheSecondStageSucceedsOnNoLexemes)
{
    std::vector<int32_t> values = OLD_VALUES;
    Output_Capture output;
    const bool accepted = Range_Lexems_To_Vector({}, values, 1, 4095, true);
    EXPECT_EQ(output.finish(), "");
    EXPECT_TRUE(accepted);
    EXPECT_EQ(values, std::vector<int32_t>{});
}

TEST(RangeStages, ARefusedSecondStageLeavesTheValues)
{
    for (const bool verbose : {false, true}) {
        std::vector<int32_t> values = OLD_VALUES;
        Output_Capture output;
        const bool accepted =
            Range_Lexems_To_Vector({number(1), COMMA, number(9)}, values, 1, 4, verbose);
        EXPECT_EQ(output.finish(), verbose ? range_line(426) : "");
        EXPECT_FALSE(accepted);
        EXPECT_EQ(values, OLD_VALUES);
    }
}

} // namespace
