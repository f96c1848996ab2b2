#include "switch/config/unread_keys.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace
{

struct Text {
    const char *name;
    std::string text;
    int32_t keys;
    int32_t line;
};

void PrintTo(const Text &row, std::ostream *out)
{
    *out << row.name;
}

using namespace std::string_literals;

const Text TEXTS[] = {
    {"Nothing", "", 0, 0},
    {"AllIsRead", "[SW_PORT1]\nVID = 5\nAUTO_MODE = 2 PORT_TYPE = CPU\n", 0, 0},
    {"SyntaxErrorRefusesAll", "[SW_PORT1]\nVID = 5\n]\n# a\nVID = 6\n", 0, 0},
    {"ListCountsItself", "[SW_PORT1]\nVID = 5\nVLAN_PORT_LIST = \"10-20\"\n", 1, 3},
    {"ListAndWhatFollows",
     "[SW_PORT1]\nVLAN_PORT_LIST = \"10-20,30\"\nVLAN_PORT_TYPE = TRUNK\n[SW_PORT2]\nVID = 5 "
     "PORT_TYPE = CPU\n",
     4, 2},
    {"OnTheLineOfTheListToo", "[SW_PORT1]\nVLAN_PORT_LIST = \"1-2\" VID = 5\nVID = 6\n", 3, 2},
    {"EveryFurtherListCountsOnce",
     "[SW_PORT1]\nVLAN_PORT_LIST = \"1-2\"\nVLAN_PORT_LIST = \"3-4\"\nVID = 5\n", 3, 2},
    {"ListWithoutItsClosingQuote", "[SW_PORT1]\nVLAN_PORT_LIST = \"1-2\nVID = 6\n", 2, 2},
    {"CommentAloneLosesNothing", "[SW_PORT1]\nVID = 5\n# the end\n", 0, 0},
    {"CommentAfterAValueKeepsThatValue", "[SW_PORT1]\nVID = 5 ; five\nVID = 6\n", 1, 2},
    {"KeysInsideACommentDoNotCount", "# A = 1\n[SW_PORT1] # B = 2\nVID = 5\n", 1, 1},
    {"MinusInAKey", "[SW_PORT1]\nVID-NEW = 5\nVID = 6\n", 2, 2},
    {"WordsThatAreNoKey", "[SW_PORT1]\nhello, world\nVID = 6\n", 1, 2},
    {"MinusAfterTheEqualsSign", "[SW_PORT1]\nVID =-5\n", 1, 2},
    {"MinusInAPlainValue", "[SW_PORT1]\nVID = 1-5\n", 1, 2},
    {"ErrorsAfterTheEndAreSteppedOver", "[SW_PORT1]\n#\n]]\nVID = 5\nVID\nVID = = 6\nVID = 7\n", 3,
     2},
    {"LastLineWithoutALineFeed", "[SW_PORT1]\nVID = 5\nVID = 6", 1, 3},
    {"CarriageReturnAndLineFeedAreOneLineEnd", "[SW_PORT1]\r\nVID = 5\r\n#\r\nVID = 6\r\n", 1, 3},
    {"CarriageReturnAloneIsALineEnd", "[SW_PORT1]\rVID = 5\r#\rVID = 6\r", 1, 3},
    {"NulEndsTheReading", "[SW_PORT1]\n\0\nVID = 6\n"s, 1, 2},
    {"ByteOrderMark", "\xEF\xBB\xBF[SW_PORT1]\nVID = 6\n", 1, 1},
};

class UnreadKeys : public testing::TestWithParam<Text>
{
};

TEST_P(UnreadKeys, AreCountedFromTheLineWhereTheReadingEnds)
{
    const SW_Unread_Keys found = FindUnreadKeys(GetParam().text.data(), GetParam().text.size());
    EXPECT_EQ(found.keys, GetParam().keys);
    EXPECT_EQ(found.line, GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(Texts, UnreadKeys, testing::ValuesIn(TEXTS),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
