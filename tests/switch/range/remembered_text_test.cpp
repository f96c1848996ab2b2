#include "switch/range/range_lists.h"
#include "tests/support/output_capture.h"
#include "tests/switch/range/range_row.h"

#include <cstring>

/* The text that an accepted parse leaves for the next prompt, for the two parsers that keep one. */

namespace
{

using Parser = bool (*)(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep,
                        std::vector<int32_t> &values, int32_t &count, int32_t min, int32_t max);

/* "1,1,...,1", good for both parsers, of an odd number of characters. */
std::string list_of(size_t characters)
{
    std::string text = "1";
    while (text.size() < characters) {
        text += ",1";
    }
    return text;
}

struct Parser_Row {
    const char *name;
    Parser parse;
    std::string refused_line;  /* for the text "9", with bounds 0 to 4 */
    std::string good_text_100; /* of 100 characters */
};

void PrintTo(const Parser_Row &row, std::ostream *out)
{
    *out << row.name;
}

class RememberedText : public testing::TestWithParam<Parser_Row>
{
protected:
    RememberedText() { memset(rangeText, 'x', sizeof rangeText); }

    bool parse(const char *text, bool keep = true)
    {
        Output_Capture output;
        const bool accepted = GetParam().parse(text, &rangeText, keep, values, count, 0, 4);
        printed = output.finish();
        return accepted;
    }

    std::string remembered() const { return {rangeText, sizeof rangeText}; }

    /* A range text that holds text alone. */
    static std::string whole(std::string text)
    {
        text.resize(SW_RANGE_TEXT_SIZE, '\0');
        return text;
    }

    const std::string untouched = std::string(SW_RANGE_TEXT_SIZE, 'x');
    char rangeText[SW_RANGE_TEXT_SIZE];
    std::vector<int32_t> values = OLD_VALUES;
    int32_t count = OLD_COUNT;
    std::string printed;
};

TEST_P(RememberedText, IsWrittenWholeWithZeroesBehindIt)
{
    EXPECT_TRUE(parse("1-3"));
    EXPECT_EQ(remembered(), whole("1-3"));
    EXPECT_EQ(values, run(1, 3));
    EXPECT_EQ(printed, "");
}

TEST_P(RememberedText, IsEmptyAfterTheEmptyText)
{
    EXPECT_TRUE(parse(""));
    EXPECT_EQ(remembered(), whole(""));
    EXPECT_EQ(count, 0);
    EXPECT_EQ(values, std::vector<int32_t>{});
}

TEST_P(RememberedText, StaysWhenNotAskedFor)
{
    EXPECT_TRUE(parse("1-3", false));
    EXPECT_EQ(remembered(), untouched);
    EXPECT_EQ(values, run(1, 3));
}

TEST_P(RememberedText, StaysWhenTheTextIsRefused)
{
    EXPECT_FALSE(parse("9"));
    EXPECT_EQ(remembered(), untouched);
    EXPECT_EQ(printed, GetParam().refused_line);
    EXPECT_EQ(values, OLD_VALUES);
    EXPECT_EQ(count, OLD_COUNT);
}

TEST_P(RememberedText, MayBeMissing)
{
    EXPECT_TRUE(GetParam().parse("2", nullptr, true, values, count, 0, 4));
    EXPECT_EQ(values, run(2, 2));
}

TEST_P(RememberedText, MayBeTheParsedTextItself)
{
    memcpy(rangeText, "0-1,3", 6);
    EXPECT_TRUE(parse(rangeText));
    EXPECT_EQ(remembered(), whole("0-1,3"));
    EXPECT_EQ(values, (std::vector<int32_t>{0, 1, 3}));
}

TEST_P(RememberedText, MayBeginBeforeTheParsedText)
{
    memcpy(rangeText, "0-1,3", 6);
    EXPECT_TRUE(parse(rangeText + 2));
    EXPECT_EQ(remembered(), whole("1,3"));
    EXPECT_EQ(values, (std::vector<int32_t>{1, 3}));
}

TEST_P(RememberedText, HoldsUpTo99Characters)
{
    const std::string text = list_of(99);
    EXPECT_TRUE(parse(text.c_str()));
    EXPECT_EQ(remembered(), whole(text));
    EXPECT_EQ(count, 50);
    EXPECT_EQ(printed, "");
}

TEST_P(RememberedText, RefusesAGoodTextThatIsTooLongForItWithoutALine)
{
    for (const std::string &text : {GetParam().good_text_100, list_of(101), list_of(999)}) {
        ASSERT_GE(text.size(), 100U);
        ASSERT_TRUE(parse(text.c_str(), false)) << text;
        values = OLD_VALUES;
        count = OLD_COUNT;
        EXPECT_FALSE(parse(text.c_str())) << text;
        EXPECT_EQ(printed, "");
        EXPECT_EQ(remembered(), untouched);
        EXPECT_EQ(values, OLD_VALUES);
        EXPECT_EQ(count, OLD_COUNT);
    }
}

TEST_P(RememberedText, LimitsNoTextThatIsNotRemembered)
{
    const std::string text = list_of(999);
    EXPECT_TRUE(parse(text.c_str(), false));
    EXPECT_EQ(count, 500);
    EXPECT_TRUE(GetParam().parse(text.c_str(), nullptr, true, values, count, 0, 4));
    EXPECT_EQ(count, 500);
}

TEST_P(RememberedText, IsNotWhyABadLongTextIsRefused)
{
    EXPECT_FALSE(parse((list_of(997) + ",9").c_str()));
    EXPECT_EQ(printed, GetParam().refused_line);
    EXPECT_EQ(remembered(), untouched);
}

const Parser_Row PARSERS[] = {
    {"Long", Int_Range_To_Int_List2, "Failed ('9')\n", std::string("0").append(list_of(99))},
    {"Short", Int_Range_To_Int_List, "Int_Range_To_Int_List:813: - Failed\n", list_of(99) + ","},
};

INSTANTIATE_TEST_SUITE_P(Parsers, RememberedText, testing::ValuesIn(PARSERS),
                         [](const auto &row) { return row.param.name; });

} // namespace
