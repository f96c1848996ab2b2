#include "switch/engine/wait.h"
#include "tests/switch/engine/system_stand_in.h"

#include <gtest/gtest.h>

namespace
{

struct Sleep_Row {
    const char *name;
    uint32_t microseconds;
    time_t seconds;
    long nanoseconds;
};

void PrintTo(const Sleep_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Sleep_Row SLEEPS[] = {
    {"Nothing", 0, 0, 0},
    {"OneMicrosecond", 1, 0, 1000},
    {"TenthOfASecond", 100000, 0, 100000000},
    {"AlmostASecond", 999999, 0, 999999000},
    {"OneSecond", 1000000, 1, 0},
    {"Longest", 4294967295, 4294, 967295000},
};

class Sleep : public testing::TestWithParam<Sleep_Row>
{
protected:
    Sleep() { sleeps = {}; }
};

TEST_P(Sleep, LastsAsLongAsAsked)
{
    SW_Wait(GetParam().microseconds);
    ASSERT_EQ(sleeps.asked.size(), 1U);
    EXPECT_EQ(sleeps.asked[0].tv_sec, GetParam().seconds);
    EXPECT_EQ(sleeps.asked[0].tv_nsec, GetParam().nanoseconds);
}

INSTANTIATE_TEST_SUITE_P(Wait, Sleep, testing::ValuesIn(SLEEPS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Wait, SignalsDoNotShortenIt)
{
    sleeps = {2, {}};
    SW_Wait(100000);
    ASSERT_EQ(sleeps.asked.size(), 3U);
    EXPECT_EQ(sleeps.asked[1].tv_nsec, 99999999);
    EXPECT_EQ(sleeps.asked[2].tv_nsec, 99999998);
}

} // namespace
