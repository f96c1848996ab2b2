#include "switch/chip/phy.h"

#include "switch/chip/port_operations.h"
#include "tests/switch/chip/board_test.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{

/* The board's PHYs are at SMI addresses 0 to 2. */
class Phy : public Board_Test
{
protected:
    Phy() { make_phy(1, true); }

    void make_phy(unsigned address, bool gigabit)
    {
        auto &phy = bus.registers[address];
        phy.fill(0);
        phy[1] = gigabit ? 0x7949 : 0x7849;
        phy[2] = 0x1234;
        phy[3] = 0x5678;
        phy[15] = gigabit ? 0x3000 : 0;
    }
};

struct Mode_Row {
    const char *name;
    uint32_t mode;
    unsigned base;    /* bits 5 to 8 of register 4 */
    unsigned gigabit; /* bits 8 and 9 of register 9 */
    bool needsGigabit;
};

void PrintTo(const Mode_Row &row, std::ostream *stream)
{
    *stream << row.name;
}

const Mode_Row MODES[] = {
    {"Everything", 0, 0x01E0, 0x0300, false},       {"Both1000", 1, 0x0000, 0x0300, true},
    {"Both100", 2, 0x0180, 0x0000, false},          {"Both10", 3, 0x0060, 0x0000, false},
    {"FullAtEverySpeed", 4, 0x0140, 0x0200, false}, {"HalfAtEverySpeed", 5, 0x00A0, 0x0100, false},
    {"Full1000", 6, 0x0000, 0x0200, true},          {"Half1000", 7, 0x0000, 0x0100, true},
    {"Full100", 8, 0x0100, 0x0000, false},          {"Half100", 9, 0x0080, 0x0000, false},
    {"Full10", 10, 0x0040, 0x0000, false},          {"Half10", 11, 0x0020, 0x0000, false},
};

class AutoMode : public Phy, public testing::WithParamInterface<Mode_Row>
{
protected:
    static std::string hex(const char *format, unsigned value)
    {
        char text[40];
        snprintf(text, sizeof text, format, value);
        return text;
    }
};

TEST_P(AutoMode, ReplacesTheAbilitiesOfAGigabitPhyAndRestarts)
{
    bus.registers[1][4] = 0xFFFF;
    bus.registers[1][9] = 0xFFFF;
    bus.registers[1][0] = 0x4D7F;
    EXPECT_EQ(swSetPortAutoMode(&device, 1, GetParam().mode), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 01 02 1234\nR 01 03 5678\nR 01 01 7949\nR 01 0f 3000\n"
                                "R 01 04 ffff\n" +
                                    hex("W 01 04 %04x\n", 0xFE1F | GetParam().base) +
                                    "R 01 09 ffff\n" +
                                    hex("W 01 09 %04x\n", 0xFCFF | GetParam().gigabit) +
                                    "R 01 00 4d7f\nW 01 00 5f7f\n");
}

TEST_P(AutoMode, LeavesGigabitRegistersOfAnotherPhyAlone)
{
    make_phy(1, false);
    bus.registers[1][4] = 0x0001;
    const int status = swSetPortAutoMode(&device, 1, GetParam().mode);
    const std::string identified = "R 01 02 1234\nR 01 03 5678\nR 01 01 7849\n";
    if (GetParam().needsGigabit) {
        EXPECT_EQ(status, SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(bus.take_trace(), identified);
        return;
    }
    EXPECT_EQ(status, SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), identified + "R 01 04 0001\n" +
                                    hex("W 01 04 %04x\n", 1 | GetParam().base) +
                                    "R 01 00 0000\nW 01 00 1200\n");
}

INSTANTIATE_TEST_SUITE_P(Modes, AutoMode, testing::ValuesIn(MODES),
                         [](const auto &row) { return row.param.name; });

TEST_F(Phy, ExtendedStatusWithoutGigabitBitsIsNoGigabitPhy)
{
    bus.registers[1][15] = 0xCFFF;
    EXPECT_EQ(swSetPortAutoMode(&device, 1, 6), SW_STATUS_NOT_SUPPORTED);
    bus.registers[1][15] = 0x1000;
    EXPECT_EQ(swSetPortAutoMode(&device, 1, 6), SW_STATUS_OK);
    bus.registers[1][15] = 0x2000;
    EXPECT_EQ(swSetPortAutoMode(&device, 1, 6), SW_STATUS_OK);
}

TEST_F(Phy, ModeAboveElevenIsAFailureWithoutAccess)
{
    for (const uint32_t mode : {12U, 13U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(swSetPortAutoMode(&device, 1, mode), SW_STATUS_FAIL) << mode;
    }
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(Phy, NobodyAnsweringIsAFailureBeforeAnyWrite)
{
    for (const uint16_t answer : {uint16_t{0}, uint16_t{0xFFFF}}) {
        bus.registers[1][2] = answer;
        bus.registers[1][3] = answer;
        EXPECT_EQ(swSetPortAutoMode(&device, 1, 0), SW_STATUS_FAIL);
        EXPECT_EQ(bus.take_trace().find('W'), std::string::npos);
    }
    for (const uint16_t first : {uint16_t{0}, uint16_t{0xFFFF}}) {
        bus.registers[1][2] = first;
        bus.registers[1][3] = static_cast<uint16_t>(~first);
        EXPECT_EQ(swSetPortAutoMode(&device, 1, 0), SW_STATUS_OK);
    }
}

TEST_F(Phy, PortWithoutPhyIsNotSupportedAndNoPortABadParameter)
{
    uint16_t value = 77;
    for (const uint32_t port : {3U, 4U, 5U}) {
        EXPECT_EQ(swSetPortAutoMode(&device, port, 0), SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(swSetPortAutoMode(&device, port, 12), SW_STATUS_NOT_SUPPORTED);
        for (const uint32_t number : {16U, 32U}) {
            EXPECT_EQ(swReadPagedPhyReg(&device, port, number, 3, &value), SW_STATUS_NOT_SUPPORTED);
            EXPECT_EQ(swWritePagedPhyReg(&device, port, number, 3, 1), SW_STATUS_NOT_SUPPORTED);
        }
    }
    EXPECT_EQ(swSetPortAutoMode(&device, 6, 0), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swSetPortAutoMode(&device, 6, 12), SW_STATUS_BAD_PARAM);
    for (const uint32_t number : {16U, 32U}) {
        EXPECT_EQ(swReadPagedPhyReg(&device, 6, number, 3, &value), SW_STATUS_BAD_PARAM);
        EXPECT_EQ(swWritePagedPhyReg(&device, 6, number, 3, 1), SW_STATUS_BAD_PARAM);
        EXPECT_EQ(swReadPagedPhyReg(&device, 3, number, 3, nullptr), SW_STATUS_BAD_PARAM);
    }
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_TRUE(bus.lock_calls.empty());
    EXPECT_EQ(value, 77);
}

TEST_F(Phy, PagedReadSelectsThePageAndRestoresTheOneBefore)
{
    bus.registers[1][22] = 0x0012;
    bus.registers[1][16] = 0xBEEF;
    uint16_t value = 0;
    EXPECT_EQ(swReadPagedPhyReg(&device, 1, 16, 3, &value), SW_STATUS_OK);
    EXPECT_EQ(value, 0xBEEF);
    EXPECT_EQ(bus.take_trace(), "R 01 16 0012\nW 01 16 0003\nR 01 10 beef\nW 01 16 0012\n");
}

TEST_F(Phy, PagedWriteSelectsThePageAndRestoresTheOneBefore)
{
    bus.registers[1][22] = 0x0012;
    EXPECT_EQ(swWritePagedPhyReg(&device, 1, 16, 0xFACE, 0x123E), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 01 16 0012\nW 01 16 face\nW 01 10 123e\nW 01 16 0012\n");
}

TEST_F(Phy, PageIsRestoredOnEveryPathOnceItIsKnown)
{
    const char *const reads[] = {
        "R 01 16 failed\n",
        "R 01 16 0012\nW 01 16 failed\nW 01 16 0012\n",
        "R 01 16 0012\nW 01 16 0003\nR 01 10 failed\nW 01 16 0012\n",
        "R 01 16 0012\nW 01 16 0003\nR 01 10 0000\nW 01 16 failed\n",
    };
    const char *const writes[] = {
        "R 01 16 failed\n",
        "R 01 16 0012\nW 01 16 failed\nW 01 16 0012\n",
        "R 01 16 0012\nW 01 16 0003\nW 01 10 failed\nW 01 16 0012\n",
        "R 01 16 0012\nW 01 16 0003\nW 01 10 0055\nW 01 16 failed\n",
    };
    for (unsigned k = 0; k < 4; ++k) {
        bus.registers[1][22] = 0x0012;
        bus.accesses = 0;
        bus.fail_at = k + 1;
        uint16_t value = 77;
        EXPECT_EQ(swReadPagedPhyReg(&device, 1, 16, 3, &value), SW_STATUS_FAIL);
        EXPECT_EQ(value, 77);
        EXPECT_EQ(bus.take_trace(), reads[k]);
        bus.registers[1][22] = 0x0012;
        bus.accesses = 0;
        EXPECT_EQ(swWritePagedPhyReg(&device, 1, 16, 3, 0x55), SW_STATUS_FAIL);
        EXPECT_EQ(bus.take_trace(), writes[k]);
        bus.registers[1][16] = 0;
    }
}

TEST_F(Phy, PagedRegisterAboveThirtyOneIsAFailureWithoutAccess)
{
    uint16_t value = 77;
    EXPECT_EQ(swReadPagedPhyReg(&device, 1, 32, 3, &value), SW_STATUS_FAIL);
    EXPECT_EQ(swWritePagedPhyReg(&device, 1, 0xFFFFFFFF, 3, 1), SW_STATUS_FAIL);
    EXPECT_EQ(value, 77);
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_EQ(swReadPagedPhyReg(&device, 1, 31, 3, &value), SW_STATUS_OK);
}

TEST_F(Phy, PhyLockIsHeldAroundTheWholeOperation)
{
    uint16_t value = 0;
    EXPECT_EQ(swReadPagedPhyReg(&device, 1, 16, 3, &value), SW_STATUS_OK);
    EXPECT_EQ(bus.lock_calls.size(), 10U);
    EXPECT_EQ(bus.lock_calls.front(), "take 103 10");
    EXPECT_EQ(bus.lock_calls.back(), "give 103");
    EXPECT_FALSE(bus.lock_misused);
}

/* Link facts of a chip that shows them in its PHYs only; port 2's PHY is at 16 + 2. */
struct Link_Row {
    const char *name;
    bool gigabit;
    uint16_t control;    /* register 0 */
    uint16_t ours;       /* 4 */
    uint16_t partners;   /* 5 */
    uint16_t ours1000;   /* 9 */
    uint16_t theirs1000; /* 10 */
    uint32_t speed;
    uint32_t full;
};

void PrintTo(const Link_Row &row, std::ostream *stream)
{
    *stream << row.name;
}

const Link_Row LINKS[] = {
    {"Negotiated1000Full", true, 0x1000, 0x01E0, 0x01E0, 0x0300, 0x0C00, 2, 1},
    {"Negotiated1000Half", true, 0x1000, 0x01E0, 0x01E0, 0x0100, 0x0C00, 2, 0},
    {"Partner1000HalfOnly", true, 0x1000, 0x01E0, 0x01E0, 0x0300, 0x0400, 2, 0},
    {"NoGigabitInCommon", true, 0x1000, 0x01E0, 0x01E0, 0x0100, 0x0800, 1, 1},
    {"GigabitBitsOfAPlainPhyDoNotCount", false, 0x1000, 0x01E0, 0x01E0, 0x0300, 0x0C00, 1, 1},
    {"Negotiated100Half", false, 0x1000, 0x00E0, 0x01E0, 0, 0, 1, 0},
    {"Negotiated10Full", false, 0x1000, 0x01E0, 0x0060, 0, 0, 0, 1},
    {"Negotiated10Half", false, 0x1000, 0x0020, 0x01E0, 0, 0, 0, 0},
    {"NothingInCommon", true, 0x1000, 0x0180, 0x0060, 0x0200, 0x0400, 3, 0},
    {"ForcedBitsDoNotCountWhileNegotiating", false, 0x3140, 0x0020, 0x0020, 0, 0, 0, 0},
    {"Forced1000Full", true, 0x0140, 0x01E0, 0x01E0, 0, 0, 2, 1},
    {"Forced100Full", false, 0x2100, 0, 0, 0, 0, 1, 1},
    {"Forced100Half", false, 0x2000, 0, 0, 0, 0, 1, 0},
    {"Forced10Half", false, 0x0000, 0x01E0, 0x01E0, 0, 0, 0, 0},
    {"ForcedReservedSpeedIsUnknown", false, 0x2140, 0, 0, 0, 0, 3, 1},
};

class PhyLink : public testing::TestWithParam<Link_Row>
{
};

TEST_P(PhyLink, GivesSpeedAndDuplexOfThePort)
{
    Fake_Bus bus;
    SW_Device device = make_device(1U << 17, 0);
    auto &phy = bus.registers[18];
    const Link_Row &row = GetParam();
    phy[0] = row.control;
    phy[1] = row.gigabit ? 0x0100 : 0;
    phy[15] = 0x3000;
    phy[4] = row.ours;
    phy[5] = row.partners;
    phy[9] = row.ours1000;
    phy[10] = row.theirs1000;
    uint32_t value = 99;
    EXPECT_EQ(swGetSpeedMode(&device, 2, &value), SW_STATUS_OK);
    EXPECT_EQ(value, row.speed);
    EXPECT_EQ(swGetDuplex(&device, 2, &value), SW_STATUS_OK);
    EXPECT_EQ(value, row.full);
}

INSTANTIATE_TEST_SUITE_P(Links, PhyLink, testing::ValuesIn(LINKS),
                         [](const auto &row) { return row.param.name; });

class PhyFacts : public testing::Test
{
protected:
    Fake_Bus bus;
    SW_Device device = make_device(1U << 18, 0);
};

TEST_F(PhyFacts, AreReadInThisOrder)
{
    bus.registers[18][0] = 0x1000;
    bus.registers[18][1] = 0x0100;
    bus.registers[18][15] = 0x1000;
    uint32_t value = 99;
    EXPECT_EQ(swGetSpeedMode(&device, 2, &value), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 12 00 1000\nR 12 04 0000\nR 12 05 0000\nR 12 01 0100\n"
                                "R 12 0f 1000\nR 12 09 0000\nR 12 0a 0000\n");
    EXPECT_EQ(bus.lock_calls.front(), "take 103 10");
    EXPECT_EQ(bus.lock_calls.back(), "give 103");
}

TEST_F(PhyFacts, PortWithoutPhyIsNotSupported)
{
    device.phyPortMask = 0x1F;
    uint32_t value = 99;
    EXPECT_EQ(swGetSpeedMode(&device, 5, &value), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swGetDuplex(&device, 5, &value), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swGetDuplex(&device, 6, &value), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetDuplex(&device, 5, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_EQ(value, 99U);
}

TEST_F(PhyFacts, FailedReadLeavesTheResult)
{
    bus.registers[18][0] = 0x1000;
    bus.registers[18][1] = 0x0100;
    bus.registers[18][15] = 0x1000;
    for (unsigned k = 1; k <= 7; ++k) {
        bus.accesses = 0;
        bus.fail_at = k;
        uint32_t value = 99;
        EXPECT_EQ(swGetSpeedMode(&device, 2, &value), SW_STATUS_FAIL) << k;
        EXPECT_EQ(value, 99U);
        EXPECT_EQ(bus.accesses, k);
    }
}

} // namespace
