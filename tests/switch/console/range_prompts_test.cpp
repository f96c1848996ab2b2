#include "switch/console/prompts.h"

#include "tests/support/input_feed.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_view_literals;

namespace
{

using Ask = bool (*)(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                     std::vector<int32_t> &values, int32_t min, int32_t max);

const std::vector<int32_t> BEFORE = {77};

std::string repeated(std::string text, int times, const char *more)
{
    for (int i = 0; i < times; i++) {
        text += more;
    }
    return text;
}

/* The longest text that a range text holds, 99 characters; one of a character more. */
const std::string LONGEST = repeated("1000", 19, ",1000");
const std::string TOO_LONG = repeated("2", 33, ",22");
const std::string LONGEST_TYPED = LONGEST + "\n";
const std::string TOO_LONG_TYPED = TOO_LONG + "\n";
const std::string LONG_LINE = std::string(999, '7');
const std::string LONG_LINE_TYPED = LONG_LINE + "7,8\n";

struct Row {
    const char *name;
    Ask ask;
    std::string before; /* the range text */
    int32_t min;
    int32_t max;
    std::string_view typed;
    bool result;
    std::string messages; /* behind the prompt */
    std::string after;    /* the range text */
    std::vector<int32_t> values;
    std::string rest = "";
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

// clang-format off
const Row ROWS[] = {
    {"Range", Ask_Range_List, "1", 1, 4095, "5-7,12\nnext\n", true, "", "5-7,12", {5, 6, 7, 12}, "next\n"},
    {"KeepsOrderAndRepeats", Ask_Range_List, "1", 1, 4095, "3,3,1\n", true, "", "3,3,1", {3, 3, 1}},
    {"Enter", Ask_Range_List, "10-12", 1, 4095, "\nnext\n", true, "", "10-12", {10, 11, 12}, "next\n"},
    {"EnterOnTheEmptyText", Ask_Range_List, "", 1, 4095, "\n", true, "", "", {}},
    {"EnterOnABadTextPrintsTheParsersLineOnly", Ask_Range_List, "1 - 2", 1, 4095, "\n", false, "Failed (' ')\n", "1 - 2", BEFORE},
    {"EnterOnATextOutOfBounds", Ask_Range_List, "0", 1, 4095, "\n", false, "Failed ('0')\n", "0", BEFORE},
    {"EndOfInput", Ask_Range_List, "1-3", 1, 4095, "", false, "", "1-3", BEFORE},
    {"NulByteFirst", Ask_Range_List, "1-3", 1, 4095, "\0" "5\nnext\n"sv, false, "", "1-3", BEFORE, "next\n"},
    {"NulByteBehindTheText", Ask_Range_List, "1-3", 1, 4095, "5\0" "6\n"sv, true, "", "5", {5}},
    {"WithoutLineFeed", Ask_Range_List, "1", 1, 4095, "8-9", true, "", "8-9", {8, 9}},
    {"CarriageReturnLineFeedIsRemoved", Ask_Range_List, "1", 1, 4095, "8-9\r\n", true, "", "8-9", {8, 9}},
    {"LoneCarriageReturnIsRemoved", Ask_Range_List, "1", 1, 4095, "8-9\r", true, "", "8-9", {8, 9}},
    {"TwoCarriageReturnsAtTheEndAreRemoved", Ask_Range_List, "1", 1, 4095, "8-9\r\r", true, "", "8-9", {8, 9}},
    {"NoMoreThanTwoAreRemoved", Ask_Range_List, "1", 1, 4095, "8-9\r\r\n", false, "Failed ('\r')\nRange: 8-9\r - bad value\n", "1", BEFORE},
    {"OnlyCarriageReturnLineFeedEmptiesTheText", Ask_Range_List, "1-3", 1, 4095, "\r\n", true, "", "", {}},
    {"TrailingComma", Ask_Range_List, "1", 1, 4095, "5,\n", false, "Failed ('<cr>')\nRange: 5, - bad value\n", "1", BEFORE},
    {"Letter", Ask_Range_List, "1", 1, 4095, "x\n", false, "Failed ('x')\nRange: x - bad value\n", "1", BEFORE},
    {"Blank", Ask_Range_List, "1", 1, 4095, "5, 6\n", false, "Failed (' ')\nRange: 5, 6 - bad value\n", "1", BEFORE},
    {"Negative", Ask_Range_List, "1", 1, 4095, "-5\n", false, "Failed ('-')\nRange: -5 - bad value\n", "1", BEFORE},
    {"BelowTheMinimum", Ask_Range_List, "1", 1, 4095, "0\n", false, "Failed ('0')\nRange: 0 - bad value\n", "1", BEFORE},
    {"AtTheMaximum", Ask_Range_List, "1", 1, 4095, "4095\n", true, "", "4095", {4095}},
    {"AboveTheMaximum", Ask_Range_List, "1", 1, 4095, "4096\n", false, "Failed ('4096')\nRange: 4096 - bad value\n", "1", BEFORE},
    {"PercentSignsAreShownAsTheyAre", Ask_Range_List, "%s%n", 1, 4095, "%d%n\n", false, "Failed ('%')\nRange: %d%n - bad value\n", "%s%n", BEFORE},
    {"NinetyNineCharacters", Ask_Range_List, "1", 1, 4095, LONGEST_TYPED, true, "", LONGEST, std::vector<int32_t>(20, 1000)},
    {"HundredCharactersAreABadValue", Ask_Range_List, "1", 1, 4095, TOO_LONG_TYPED, false, "Range: " + TOO_LONG + " - bad value\n", "1", BEFORE},
    {"LineOfMoreThan999Characters", Ask_Range_List, "1", 1, 4095, LONG_LINE_TYPED, false,
     "Failed ('2147483647')\nRange: " + LONG_LINE + " - bad value\n", "1", BEFORE, "7,8\n"},

    {"Range", Ask_Int_Range, "0", 0, 4, "1-3\nnext\n", true, "", "1-3", {1, 2, 3}, "next\n"},
    {"KeepsOrderAndRepeats", Ask_Int_Range, "0", 0, 4, "4,0,4\n", true, "", "4,0,4", {4, 0, 4}},
    {"BlankBehindANumber", Ask_Int_Range, "0", 0, 4, "1 2\n", true, "", "1 2", {1, 2}},
    {"Enter", Ask_Int_Range, "0,2", 0, 4, "\nnext\n", true, "", "0,2", {0, 2}, "next\n"},
    {"EnterOnTheEmptyText", Ask_Int_Range, "", 0, 4, "\n", true, "", "", {}},
    {"EnterOnATextLongerThanTheLine", Ask_Int_Range, "0,1,2,3,4,0,1,2,3,4,0-4", 0, 4, "\n", true, "", "0,1,2,3,4,0,1,2,3,4,0-4",
     {0, 1, 2, 3, 4, 0, 1, 2, 3, 4, 0, 1, 2, 3, 4}},
    {"EnterOnABadTextPrintsTheParsersLineOnly", Ask_Int_Range, "12", 0, 4, "\n", false,
     "Int_Range_To_Int_List:835: - Failed (c2: '2' 0x32)\n", "12", BEFORE},
    {"EndOfInput", Ask_Int_Range, "1", 0, 4, "", false, "", "1", BEFORE},
    {"NulByteFirst", Ask_Int_Range, "1", 0, 4, "\0" "2\nnext\n"sv, false, "", "1", BEFORE, "next\n"},
    {"WithoutLineFeed", Ask_Int_Range, "0", 0, 4, "2", true, "", "2", {2}},
    {"CarriageReturnLineFeedIsRemoved", Ask_Int_Range, "0", 0, 4, "1-2\r\n", true, "", "1-2", {1, 2}},
    {"OnlyCarriageReturnLineFeedEmptiesTheText", Ask_Int_Range, "1", 0, 4, "\r\n", true, "", "", {}},
    {"TwoDigits", Ask_Int_Range, "0", 0, 4, "12\n", false,
     "Int_Range_To_Int_List:835: - Failed (c2: '2' 0x32)\nRange: 12 - bad value\n", "0", BEFORE},
    {"OutOfBounds", Ask_Int_Range, "0", 0, 4, "5\n", false,
     "Int_Range_To_Int_List:813: - Failed\nRange: 5 - bad value\n", "0", BEFORE},
    {"RangeOutOfBounds", Ask_Int_Range, "0", 0, 4, "3-5\n", false,
     "Int_Range_To_Int_List:829: - Failed\nRange: 3-5 - bad value\n", "0", BEFORE},
    {"Negative", Ask_Int_Range, "0", 0, 4, "-1\n", false,
     "Int_Range_To_Int_List:835: - Failed (c2: '1' 0x31)\nRange: -1 - bad value\n", "0", BEFORE},
    {"Letter", Ask_Int_Range, "0", 0, 4, "x\n", false,
     "Int_Range_To_Int_List:813: - Failed\nRange: x - bad value\n", "0", BEFORE},
    {"SeventeenCharacters", Ask_Int_Range, "0", 0, 4, "0,1,2,3,4,0,1,2,3\nnext\n", true, "", "0,1,2,3,4,0,1,2,3",
     {0, 1, 2, 3, 4, 0, 1, 2, 3}, "next\n"},
    {"EighteenCharactersLeaveTheLineFeed", Ask_Int_Range, "0", 0, 4, "0,1,2,3,4,0,1,2,3,\nnext\n", true, "", "0,1,2,3,4,0,1,2,3,",
     {0, 1, 2, 3, 4, 0, 1, 2, 3}, "\nnext\n"},
    {"NineteenCharactersLeaveTheLast", Ask_Int_Range, "0", 0, 4, "0,1,2,3,4,0,1,2,3,4\n", true, "", "0,1,2,3,4,0,1,2,3,",
     {0, 1, 2, 3, 4, 0, 1, 2, 3}, "4\n"},
    {"ThirtyCharacters", Ask_Int_Range, "0", 0, 4, "111111111111111111111111111111\n", false,
        "Int_Range_To_Int_List:835: - Failed (c2: '1' 0x31)\nRange: 111111111111111111 - bad value\n",
        "0", BEFORE, "111111111111\n"},

    {"Range", Ask_Range_Vector, "0", 0, 4, "1-3\nnext\n", true, "", "1-3", {1, 2, 3}, "next\n"},
    {"SortsWithoutRepeats", Ask_Range_Vector, "0", 0, 4, "4,0,4\n", true, "", "4,0,4", {0, 4}},
    {"BlanksAreAllowed", Ask_Range_Vector, "0", 0, 4, " 1 - 2 , 4\n", true, "", " 1 - 2 , 4", {1, 2, 4}},
    {"Enter", Ask_Range_Vector, "1-2", 0, 4, "\nnext\n", true, "", "1-2", {1, 2}, "next\n"},
    {"CarriageReturnIsEnter", Ask_Range_Vector, "1-2", 0, 4, "\r\nnext\n", true, "", "1-2", {1, 2}, "next\n"},
    {"CarriageReturnBeforeTextIsEnter", Ask_Range_Vector, "1-2", 0, 4, "\r3\nnext\n", true, "", "1-2", {1, 2}, "next\n"},
    {"EnterOnTheEmptyText", Ask_Range_Vector, "", 0, 4, "\n", false, "", "", BEFORE},
    {"EnterOnABadText", Ask_Range_Vector, "9", 0, 4, "\n", false, "Range_Lexems_To_Vector:426: Range Error\n", "9", BEFORE},
    {"EndOfInputEmptiesTheText", Ask_Range_Vector, "1-2", 0, 4, "", false, "", "", BEFORE},
    {"NulByteFirstEmptiesTheText", Ask_Range_Vector, "1-2", 0, 4, "\0" "3\nnext\n"sv, false, "", "", BEFORE, "next\n"},
    {"WithoutLineFeed", Ask_Range_Vector, "0", 0, 4, "2", true, "", "2", {2}},
    {"CarriageReturnLineFeedIsRemoved", Ask_Range_Vector, "0", 0, 4, "1-2\r\n", true, "", "1-2", {1, 2}},
    {"AllTrailingLineEndsAreRemoved", Ask_Range_Vector, "0", 0, 4, "1-2\r\r\r\r\n", true, "", "1-2", {1, 2}},
    {"RangeTextsOwnLineEndsAreRemovedByEnter", Ask_Range_Vector, "1\r\n\r\n", 0, 4, "\n", true, "", "1", {1}},
    {"BadTextReplacesTheText", Ask_Range_Vector, "1-2", 0, 4, "x\n", false, "Range_Str_To_Lexems:325: Parsing Error\n", "x", BEFORE},
    {"OutOfBoundsReplacesTheText", Ask_Range_Vector, "1-2", 1, 2, "0\n", false, "Range_Lexems_To_Vector:426: Range Error\n", "0", BEFORE},
    {"Negative", Ask_Range_Vector, "0", 0, 4, "-1\n", false, "Range_Lexems_To_Vector:438: Parsing Error\n", "-1", BEFORE},
    {"BlankLine", Ask_Range_Vector, "0", 0, 4, " \n", false, "Range_Str_To_Vector:463: Parsing Error\n", " ", BEFORE},
    {"ThirtyCharacters", Ask_Range_Vector, "0", 0, 4, "1,1,1,1,1,1,1,1,1,1,1,1,1,1,11\n", false,
     "Range_Lexems_To_Vector:426: Range Error\n", "1,1,1,1,1,1,1,1,1,1,1,1,1,1,11", BEFORE},
};
// clang-format on

class RangePrompt : public testing::TestWithParam<Row>
{
};

TEST_P(RangePrompt, TakesTheAnswer)
{
    const Row &row = GetParam();
    char text[SW_RANGE_TEXT_SIZE] = {};
    ASSERT_TRUE(SetRangeText(&text, row.before));
    std::vector<int32_t> values = BEFORE;
    bool result = false;
    const Console_Run run = run_console(
        row.typed, [&] { result = row.ask("Some Range", &text, values, row.min, row.max); });
    EXPECT_EQ(run.output, "Some Range(" + row.before + "):" + row.messages);
    EXPECT_EQ(result, row.result);
    EXPECT_STREQ(text, row.after.c_str());
    EXPECT_EQ(values, row.values);
    EXPECT_EQ(run.rest, row.rest);
}

const char *prompt_name(Ask ask)
{
    if (ask == Ask_Range_List) {
        return "List_";
    }
    return ask == Ask_Int_Range ? "IntRange_" : "Vector_";
}

INSTANTIATE_TEST_SUITE_P(Answers, RangePrompt, testing::ValuesIn(ROWS), [](const auto &row) {
    return prompt_name(row.param.ask) + std::string(row.param.name);
});

/* Range texts are copied into records that are compared byte for byte. */
TEST(RangePrompts, LeaveZeroesBehindTheText)
{
    for (const Ask ask : {Ask_Range_List, Ask_Int_Range, Ask_Range_Vector}) {
        char text[SW_RANGE_TEXT_SIZE] = {};
        ASSERT_TRUE(SetRangeText(&text, "1,2,3,4,1,2,3,4,1,2,3,4"));
        std::vector<int32_t> values;
        run_console("3\r\n", [&] { EXPECT_TRUE(ask("Range", &text, values, 0, 4)); });
        EXPECT_EQ(std::string(text, sizeof text), "3" + std::string(99, '\0'));
    }
}

TEST(RangePrompts, VectorTakes98Characters)
{
    const std::string digits(98, '0');
    char text[SW_RANGE_TEXT_SIZE] = {};
    std::vector<int32_t> values;
    const Console_Run run = run_console(digits + "31\nnext\n", [&] {
        EXPECT_TRUE(Ask_Range_Vector("Range", &text, values, 0, 4));
    });
    EXPECT_EQ(run.output, "Range():");
    EXPECT_EQ(text, digits);
    EXPECT_EQ(values, std::vector<int32_t>{0});
    EXPECT_EQ(run.rest, "31\nnext\n");
}

TEST(RangePrompts, VectorOf97CharactersTakesItsLineFeed)
{
    const std::string digits(97, '0');
    char text[SW_RANGE_TEXT_SIZE] = {};
    std::vector<int32_t> values;
    const Console_Run run =
        run_console(digits + "\nnext\n", [&] { Ask_Range_Vector("Range", &text, values, 0, 4); });
    EXPECT_EQ(text, digits);
    EXPECT_EQ(run.rest, "next\n");
}

TEST(RangePrompts, ShowTheAcceptedTextNextTime)
{
    char text[SW_RANGE_TEXT_SIZE] = "1";
    std::vector<int32_t> values;
    const Console_Run run = run_console("10-12\n\n", [&] {
        EXPECT_TRUE(Ask_Range_List("VLAN Range", &text, values, 1, 4095));
        EXPECT_TRUE(Ask_Range_List("VLAN Range", &text, values, 1, 4095));
    });
    EXPECT_EQ(run.output, "VLAN Range(1):VLAN Range(10-12):");
    EXPECT_EQ(values, (std::vector<int32_t>{10, 11, 12}));
}

TEST(RangePrompts, LeaveTheRestOfAVeryLongLineToTheNextPrompt)
{
    char text[SW_RANGE_TEXT_SIZE] = "1";
    std::vector<int32_t> values;
    uint16_t number = 0;
    run_console(std::string(999, 'x') + "25\n", [&] {
        EXPECT_FALSE(Ask_Range_List("VLAN Range", &text, values, 1, 4095));
        EXPECT_TRUE(Ask_Number("Port VID", &number));
    });
    EXPECT_EQ(number, 25);
}

} // namespace
