#include "switch/range/range_lists.h"
#include "tests/support/failing_memory.h"
#include "tests/support/output_capture.h"
#include "tests/switch/range/range_row.h"

#include <functional>

namespace
{

/* What a parse may change. */
struct Outputs {
    std::vector<int32_t> values;
    std::vector<Range_Lexem> lexems;
    int32_t count;
    char rangeText[SW_RANGE_TEXT_SIZE];
};

struct Parse_Row {
    const char *name;
    std::function<bool(Outputs &)> parse;
};

void PrintTo(const Parse_Row &row, std::ostream *out)
{
    *out << row.name;
}

class OutOfMemory : public testing::TestWithParam<Parse_Row>
{
};

/* The parse with memory for so many allocations; whether it had enough. */
bool parse_with(int allowed, const Parse_Row &row)
{
    Outputs outputs{OLD_VALUES, {{Range_Lexem_COMMA, 0}}, OLD_COUNT, "old"};
    bool accepted = false;
    bool failed = false;
    Output_Capture output;
    {
        Failing_Memory memory(allowed);
        accepted = row.parse(outputs);
        failed = memory.failed();
    }
    EXPECT_EQ(output.finish(), "");
    EXPECT_NE(accepted, failed);
    if (!accepted) {
        EXPECT_EQ(outputs.values, OLD_VALUES);
        EXPECT_EQ(outputs.lexems.size(), 1U);
        EXPECT_EQ(outputs.count, OLD_COUNT);
        EXPECT_STREQ(outputs.rangeText, "old");
    }
    return accepted;
}

TEST_P(OutOfMemory, AtEveryAllocationIsAFailureThatChangesNothing)
{
    int allowed = 0;
    while (allowed < 1000 && !parse_with(allowed, GetParam())) {
        ++allowed;
    }
    EXPECT_GT(allowed, 0);
    EXPECT_LT(allowed, 1000);
}

TEST(OutOfMemoryRun, ARunOfMoreThan2147483647ValuesHasNoRoomOnAnyBuild)
{
    std::vector<int32_t> values = OLD_VALUES;
    int32_t count = OLD_COUNT;
    bool accepted = true;
    {
        Failing_Memory memory(0); /* never 8 GB, whatever the parser does */
        accepted =
            Int_Range_To_Int_List2("0-2147483647", nullptr, false, values, count, 0, INT32_MAX);
    }
    EXPECT_FALSE(accepted);
    EXPECT_EQ(values, OLD_VALUES);
    EXPECT_EQ(count, OLD_COUNT);
}

const char *const TEXT = "4,1-3,0-2";
const std::vector<Range_Lexem> LEXEMS = {{Range_Lexem_NUMBER, 4},
                                         {Range_Lexem_COMMA, 0},
                                         {Range_Lexem_NUMBER, 1},
                                         {Range_Lexem_MINUS, 0},
                                         {Range_Lexem_NUMBER, 3}};

const Parse_Row PARSES[] = {
    {"RangeStrToVector",
     [](Outputs &to) { return Range_Str_To_Vector(TEXT, to.values, 0, 4, true); }},
    {"RangeStrToLexems", [](Outputs &to) { return Range_Str_To_Lexems(TEXT, to.lexems, true); }},
    {"RangeLexemsToVector",
     [](Outputs &to) { return Range_Lexems_To_Vector(LEXEMS, to.values, 0, 4, true); }},
    {"IntRangeToIntList2",
     [](Outputs &to) {
         return Int_Range_To_Int_List2(TEXT, &to.rangeText, true, to.values, to.count, 0, 4);
     }},
    {"IntRangeToIntList",
     [](Outputs &to) {
         return Int_Range_To_Int_List(TEXT, &to.rangeText, true, to.values, to.count, 0, 4);
     }},
    {"IntRangeToIntListSilent",
     [](Outputs &to) { return Int_Range_To_Int_List_Silent(TEXT, to.values, to.count, 0, 4); }},
};

INSTANTIATE_TEST_SUITE_P(Parsers, OutOfMemory, testing::ValuesIn(PARSES),
                         [](const auto &row) { return row.param.name; });

} // namespace
