#include "ntp/packet.h"

#include <gtest/gtest.h>

#include <ostream>

namespace
{

TEST(NtpRequest, IsOneSetByteAndZeros)
{
    const uint8_t expected[48] = {0xD9};
    ASSERT_EQ(NTP_REQUEST.size(), sizeof expected);
    for (size_t i = 0; i < sizeof expected; ++i) {
        EXPECT_EQ(NTP_REQUEST[i], expected[i]) << "byte " << i;
    }
}

struct Conversion {
    const char *name;
    uint32_t seconds;
    time_t time;
};

void PrintTo(const Conversion &row, std::ostream *out)
{
    *out << row.name;
}

/* The last column in words: what `date -u -d @...` says. */
const Conversion CONVERSIONS[] = {
    {"ZeroIsTheWrapIn2036", 0, 2085978496},                       /* 2036-02-07 06:28:16 */
    {"LastBefore1970IsTheEndOfTheRange", 2208988799, 4294967295}, /* 2106-02-07 06:28:15 */
    {"StartOf1970IsZero", 2208988800, 0},
    {"OneSecondInto1970", 2208988801, 1},
    {"LastBeforeTheWrap", 4294967295, 2085978495},        /* 2036-02-07 06:28:15 */
    {"Ordinary", 3908988800, 1700000000},                 /* 2023-11-14 22:13:20 */
    {"LastOfSigned32BitTime", 61505151, 2147483647},      /* 2038-01-19 03:14:07 */
    {"FirstBeyondSigned32BitTime", 61505152, 2147483648}, /* 2038-01-19 03:14:08 */
    {"Year2100", 2019686400, 4105664896},
};

class NtpConversion : public testing::TestWithParam<Conversion>
{
};

TEST_P(NtpConversion, OfSeconds)
{
    EXPECT_EQ(NTP_Seconds_To_Time(GetParam().seconds), GetParam().time);
}

/* Only bytes 40 to 43 count, whatever else the packet holds. */
TEST_P(NtpConversion, OfTheTransmitTimeOfAReply)
{
    NTP_Packet reply;
    reply.fill(0xFF);
    for (size_t i = 0; i < 4; ++i) {
        reply[40 + i] = static_cast<uint8_t>(GetParam().seconds >> (24 - 8 * i));
    }
    EXPECT_EQ(NTP_Transmit_Time(reply), GetParam().time);
}

INSTANTIATE_TEST_SUITE_P(Table, NtpConversion, testing::ValuesIn(CONVERSIONS),
                         [](const auto &row) { return row.param.name; });

} // namespace
