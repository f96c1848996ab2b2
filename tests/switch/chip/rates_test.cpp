#include "switch/chip/rates.h"

#include "tests/switch/chip/fake_bus.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace
{

enum Direction { PRI0, EGRESS };

/* One way of holding one of the two rates, and its divisors of the codes 0 to 12. */
struct Family {
    const char *name;
    uint32_t familyA;
    uint32_t familyB;
    Direction direction;
    unsigned address; /* of port 1 */
    unsigned number;
    uint32_t factor;
    bool roundsUp;
    uint32_t divisors[13];
};

void PrintTo(const Family &family, std::ostream *stream)
{
    *stream << family.name;
}

#define DIVISORS_32_UP                                                                             \
    {                                                                                              \
        0, 1954, 977, 489, 250, 125, 63, 32, 16, 8, 4, 2, 1                                        \
    }
#define DIVISORS_28_DOWN                                                                           \
    {                                                                                              \
        0, 2232, 1116, 558, 285, 142, 71, 35, 17, 8, 4, 2, 1                                       \
    }
#define DIVISORS_40_UP                                                                             \
    {                                                                                              \
        0, 1563, 782, 391, 200, 100, 50, 25, 13, 7, 4, 2, 1                                        \
    }

const Family FAMILIES[] = {
    {"BoardEgress", 1U << 13, 0, EGRESS, 0x11, 10, 32, true, DIVISORS_32_UP},
    {"BoardPri0", 1U << 13, 0, PRI0, 0x11, 9, 32, true, DIVISORS_32_UP},
    {"A11Egress", 1U << 11, 0, EGRESS, 0x11, 10, 32, true, DIVISORS_32_UP},
    {"A11Pri0", 1U << 11, 0, PRI0, 0x11, 9, 32, true, DIVISORS_32_UP},
    {"A9Egress", 1U << 9, 0, EGRESS, 0x11, 10, 32, true, DIVISORS_32_UP},
    {"A12Pri0", 1U << 12, 0, PRI0, 0x11, 9, 32, true, DIVISORS_32_UP},
    {"A10Egress", 1U << 10, 0, EGRESS, 0x11, 10, 28, false, DIVISORS_28_DOWN},
    {"A10Pri0", 1U << 10, 0, PRI0, 0x11, 9, 28, false, DIVISORS_28_DOWN},
    {"A14Pri0", 1U << 14, 0, PRI0, 0x11, 9, 28, false, DIVISORS_28_DOWN},
    {"A15Egress", 1U << 15, 0, EGRESS, 0x11, 10, 28, false, DIVISORS_28_DOWN},
    {"A15Pri0", 1U << 15, 0, PRI0, 0x11, 9, 28, false, DIVISORS_28_DOWN},
    {"A16Egress", 1U << 16, 0, EGRESS, 0x11, 10, 28, false, DIVISORS_28_DOWN},
    {"A16Pri0", 1U << 16, 0, PRI0, 0x11, 9, 28, false, DIVISORS_28_DOWN},
    {"A17Egress", 1U << 17, 0, EGRESS, 0x19, 10, 40, true, DIVISORS_40_UP},
    {"A18Egress", 1U << 18, 0, EGRESS, 0x19, 10, 40, true, DIVISORS_40_UP},
    {"A22Egress", 1U << 22, 0, EGRESS, 0x11, 10, 32, true, DIVISORS_32_UP},
    {"A30Egress", 1U << 30, 0, EGRESS, 0x11, 10, 32, true, DIVISORS_32_UP},
    {"B0Egress", 0, 1U << 0, EGRESS, 0x19, 9, 40, true, DIVISORS_40_UP},
    {"B9Egress", 0, 1U << 9, EGRESS, 0x19, 9, 40, true, DIVISORS_40_UP},
};

class RateDivisor : public testing::TestWithParam<Family>
{
protected:
    int set(uint32_t rate)
    {
        const SW_Egress_Rate holder = {rate};
        return GetParam().direction == PRI0 ? swSetPri0Rate(&device, 1, rate)
                                            : swSetEgressRate(&device, 1, &holder);
    }

    int get(uint32_t *rate)
    {
        SW_Egress_Rate holder = {*rate};
        const int status = GetParam().direction == PRI0 ? swGetPri0Rate(&device, 1, rate)
                                                        : swGetEgressRate(&device, 1, &holder);
        if (GetParam().direction == EGRESS) {
            *rate = holder.rate;
        }
        return status;
    }

    uint16_t &content() { return bus.registers[GetParam().address][GetParam().number]; }
    bool unknown() const { return (device.state & 0x10000) != 0; }

    std::string trace(unsigned old, unsigned divisor) const
    {
        char text[60];
        snprintf(text, sizeof text, "R %02x %02x %04x\nW %02x %02x %04x\n", GetParam().address,
                 GetParam().number, old, GetParam().address, GetParam().number, divisor);
        return text;
    }

    Fake_Bus bus;
    SW_Device device = make_device(GetParam().familyA, GetParam().familyB);
};

TEST_P(RateDivisor, EveryCodeHasItsDivisor)
{
    for (uint32_t code = 0; code < 13; ++code) {
        content() = 0xFFFF;
        device.state = 0xFFFFFFFF;
        EXPECT_EQ(set(code), SW_STATUS_OK);
        EXPECT_EQ(bus.take_trace(), trace(0xFFFF, 0xF000 | GetParam().divisors[code])) << code;
        EXPECT_EQ(device.state, 0xFFFEFFFFU) << "only the rate-unknown flag is cleared";
    }
}

TEST_P(RateDivisor, EveryCodeIsReadBack)
{
    for (uint32_t code = 0; code < 13; ++code) {
        content() = static_cast<uint16_t>(0xA000 | GetParam().divisors[code]);
        device.state = 0xFFFFFFFF;
        uint32_t rate = 99;
        EXPECT_EQ(get(&rate), SW_STATUS_OK);
        EXPECT_EQ(rate, code);
        EXPECT_EQ(device.state, 0xFFFEFFFFU);
    }
}

TEST_P(RateDivisor, UnknownRateIsTakenAsKilobitsAndFlagged)
{
    const uint64_t rates[] = {13, 14, 100, 1999, 2001, 249999, 250000, 250001, 256001, 1000000};
    for (const uint64_t rate : rates) {
        const uint64_t product = rate * GetParam().factor;
        uint64_t divisor = (8000000 + (GetParam().roundsUp ? product - 1 : 0)) / product;
        divisor = divisor == 0 ? 1 : divisor;
        content() = 0;
        EXPECT_EQ(set(static_cast<uint32_t>(rate)), SW_STATUS_OK);
        EXPECT_TRUE(unknown());
        EXPECT_EQ(content(), divisor & 0xFFF) << rate;
    }
    EXPECT_EQ(set(GT_1M), SW_STATUS_OK);
    EXPECT_FALSE(unknown());
}

TEST_P(RateDivisor, HostileRatesGiveTheSmallestDivisor)
{
    /* -1, -2147483648, and multiples of 2^27 to 2^31, whose products are 0 in 32 bits. */
    for (const uint32_t rate : {0xFFFFFFFFU, 0x80000000U, 0xF8000000U, 0x08000000U, 0x10000000U,
                                0x20000000U, 0x40000000U, 0x7FFFFFFFU}) {
        content() = 0;
        EXPECT_EQ(set(rate), SW_STATUS_OK);
        EXPECT_TRUE(unknown()) << rate;
        EXPECT_EQ(content(), 1) << rate;
    }
    for (uint64_t multiple = 1; multiple < 32; ++multiple) {
        content() = 0;
        EXPECT_EQ(set(static_cast<uint32_t>(multiple << 27)), SW_STATUS_OK);
        EXPECT_EQ(content(), 1) << multiple;
    }
}

TEST_P(RateDivisor, DivisorOfNoCodeIsReadAsKilobitsAndFlagged)
{
    for (uint32_t divisor = 1; divisor < 4096; ++divisor) {
        bool is_code = false;
        for (const uint32_t of_code : GetParam().divisors) {
            is_code |= of_code == divisor;
        }
        content() = static_cast<uint16_t>(divisor);
        uint32_t rate = 99;
        ASSERT_EQ(get(&rate), SW_STATUS_OK);
        ASSERT_EQ(unknown(), !is_code) << divisor;
        if (!is_code) {
            ASSERT_EQ(rate, 8000000 / (divisor * GetParam().factor)) << divisor;
            ASSERT_GE(rate, 48U);
        }
    }
}

TEST_P(RateDivisor, FailedGetLeavesTheResultAndTheFlag)
{
    bus.fail_at = 1;
    device.state = SW_STATE_RATE_UNKNOWN;
    uint32_t rate = 99;
    EXPECT_EQ(get(&rate), SW_STATUS_FAIL);
    EXPECT_EQ(rate, 99U);
    EXPECT_TRUE(unknown());
}

INSTANTIATE_TEST_SUITE_P(Families, RateDivisor, testing::ValuesIn(FAMILIES),
                         [](const auto &row) { return row.param.name; });

class RateCode : public testing::Test
{
protected:
    Fake_Bus bus;
    SW_Device device = make_device(1U << 4, 0);
};

TEST_F(RateCode, IsWrittenItselfByTheOldestChips)
{
    for (uint32_t code = 0; code < 8; ++code) {
        const SW_Egress_Rate egress = {code};
        SW_Egress_Rate got = {99};
        uint32_t rate = 99;
        bus.fill(0xFFFF);
        EXPECT_EQ(swSetEgressRate(&device, 2, &egress), SW_STATUS_OK);
        EXPECT_EQ(bus.registers[0x1A][10], 0xFFF8 | code);
        EXPECT_EQ(swGetEgressRate(&device, 2, &got), SW_STATUS_OK);
        EXPECT_EQ(got.rate, code);
        bus.fill(0xFFFF);
        EXPECT_EQ(swSetPri0Rate(&device, 2, code), SW_STATUS_OK);
        EXPECT_EQ(bus.registers[0x1A][10], 0xF8FF | code << 8);
        EXPECT_EQ(swGetPri0Rate(&device, 2, &rate), SW_STATUS_OK);
        EXPECT_EQ(rate, code);
    }
}

TEST_F(RateCode, AboveSevenIsABadParameterWithoutAccess)
{
    device.state = SW_STATE_RATE_UNKNOWN;
    for (const uint32_t rate : {8U, 12U, 13U, 0x80000000U, 0xFFFFFFFFU}) {
        const SW_Egress_Rate egress = {rate};
        EXPECT_EQ(swSetEgressRate(&device, 2, &egress), SW_STATUS_BAD_PARAM);
        EXPECT_EQ(swSetPri0Rate(&device, 2, rate), SW_STATUS_BAD_PARAM);
    }
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_EQ(device.state, SW_STATE_RATE_UNKNOWN);
}

TEST_F(RateCode, MissingHolderIsABadParameter)
{
    EXPECT_EQ(swSetEgressRate(&device, 2, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetEgressRate(&device, 2, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetPri0Rate(&device, 2, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(bus.take_trace(), "");
}

} // namespace
