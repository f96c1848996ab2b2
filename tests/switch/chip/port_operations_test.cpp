#include "switch/chip/port_operations.h"

#include "switch/chip/rates.h"
#include "tests/switch/chip/board_test.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

namespace
{

using Set = int (*)(SW_Device *device, uint32_t port, uint32_t value);
using Get = int (*)(SW_Device *device, uint32_t port, uint32_t *value);

/* A field on the board's chip: what 0 leaves of a register of ones and what the largest value
 * leaves of a register of zeros. */
struct Row {
    const char *name;
    Set set;
    Get get;
    uint32_t port;
    uint32_t largest;
    const char *cleared; /* trace of setting 0 */
    const char *filled;  /* trace of setting the largest value */
    const char *gotOnes; /* trace of a get of the register of ones */
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.name;
}

// clang-format off
const Row ROWS[] = {
    {"PortVid", swSetPortVid, swGetPortVid, 1, 4095,
     "R 11 07 ffff\nW 11 07 f000\n", "R 11 07 0000\nW 11 07 0fff\n", "R 11 07 ffff\n"},
    {"PortForceDefaultVid", swSetPortForceDefaultVid, swGetPortForceDefaultVid, 0, 1,
     "R 10 07 ffff\nW 10 07 efff\n", "R 10 07 0000\nW 10 07 1000\n", "R 10 07 ffff\n"},
    {"PortDot1qMode", swSetPortDot1qMode, swGetPortDot1qMode, 5, 3,
     "R 15 08 ffff\nW 15 08 f3ff\n", "R 15 08 0000\nW 15 08 0c00\n", "R 15 08 ffff\n"},
    {"DiscardTagged", swSetDiscardTagged, swGetDiscardTagged, 2, 1,
     "R 12 08 ffff\nW 12 08 fdff\n", "R 12 08 0000\nW 12 08 0200\n", "R 12 08 ffff\n"},
    {"DiscardUntagged", swSetDiscardUntagged, swGetDiscardUntagged, 3, 1,
     "R 13 08 ffff\nW 13 08 feff\n", "R 13 08 0000\nW 13 08 0100\n", "R 13 08 ffff\n"},
    {"EgressMode", swSetEgressMode, swGetEgressMode, 4, 3,
     "R 14 04 ffff\nW 14 04 cfff\n", "R 14 04 0000\nW 14 04 3000\n", "R 14 04 ffff\n"},
    {"UseCoreTag", swSetUseCoreTag, swGetUseCoreTag, 1, 1,
     "R 11 04 ffff\nW 11 04 7fff\n", "R 11 04 0000\nW 11 04 8000\n", "R 11 04 ffff\n"},
    {"PrioMapRule", swSetPrioMapRule, swGetPrioMapRule, 1, 1,
     "R 11 04 ffff\nW 11 04 ffbf\n", "R 11 04 0000\nW 11 04 0040\n", "R 11 04 ffff\n"},
    {"UseIpPrio", swSetUseIpPrio, swGetUseIpPrio, 2, 1,
     "R 12 04 ffff\nW 12 04 ffdf\n", "R 12 04 0000\nW 12 04 0020\n", "R 12 04 ffff\n"},
    {"UseUserPrio", swSetUseUserPrio, swGetUseUserPrio, 3, 1,
     "R 13 04 ffff\nW 13 04 ffef\n", "R 13 04 0000\nW 13 04 0010\n", "R 13 04 ffff\n"},
    {"PortDefaultPrio", swSetPortDefaultPrio, swGetPortDefaultPrio, 0, 7,
     "R 10 07 ffff\nW 10 07 1fff\n", "R 10 07 0000\nW 10 07 e000\n", "R 10 07 ffff\n"},
    {"Pri3Rate", swSetPri3Rate, swGetPri3Rate, 5, 1,
     "R 15 09 ffff\nW 15 09 bfff\n", "R 15 09 0000\nW 15 09 4000\n", "R 15 09 ffff\n"},
    {"Pri2Rate", swSetPri2Rate, swGetPri2Rate, 4, 1,
     "R 14 09 ffff\nW 14 09 dfff\n", "R 14 09 0000\nW 14 09 2000\n", "R 14 09 ffff\n"},
    {"Pri1Rate", swSetPri1Rate, swGetPri1Rate, 3, 1,
     "R 13 09 ffff\nW 13 09 efff\n", "R 13 09 0000\nW 13 09 1000\n", "R 13 09 ffff\n"},
    {"IngressMirrorSource", swSetIngressMirrorSource, swGetIngressMirrorSource, 2, 1,
     "R 12 08 ffff\nW 12 08 ffdf\n", "R 12 08 0000\nW 12 08 0020\n", "R 12 08 ffff\n"},
    {"EgressMirrorSource", swSetEgressMirrorSource, swGetEgressMirrorSource, 1, 1,
     "R 11 08 ffff\nW 11 08 ffef\n", "R 11 08 0000\nW 11 08 0010\n", "R 11 08 ffff\n"},
};
// clang-format on

class PortOperation : public Board_Test, public testing::WithParamInterface<Row>
{
};

TEST_P(PortOperation, ZeroClearsItsBitsAndKeepsTheOthers)
{
    bus.fill(0xFFFF);
    EXPECT_EQ(GetParam().set(&device, GetParam().port, 0), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), GetParam().cleared);
    uint32_t value = 99;
    EXPECT_EQ(GetParam().get(&device, GetParam().port, &value), SW_STATUS_OK);
    EXPECT_EQ(value, 0U);
}

TEST_P(PortOperation, LargestValueFillsItsBitsAndKeepsTheOthers)
{
    EXPECT_EQ(GetParam().set(&device, GetParam().port, GetParam().largest), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), GetParam().filled);
    uint32_t value = 99;
    EXPECT_EQ(GetParam().get(&device, GetParam().port, &value), SW_STATUS_OK);
    EXPECT_EQ(value, GetParam().largest);
}

TEST_P(PortOperation, GetReadsOneRegister)
{
    bus.fill(0xFFFF);
    uint32_t value = 99;
    EXPECT_EQ(GetParam().get(&device, GetParam().port, &value), SW_STATUS_OK);
    EXPECT_EQ(value, GetParam().largest);
    EXPECT_EQ(bus.take_trace(), GetParam().gotOnes);
}

TEST_P(PortOperation, BooleansAreTrueForOneOnlyAndNumbersAreCut)
{
    const uint32_t mask = GetParam().largest;
    for (const uint32_t value : {2U, 255U, 4096U, 0x80000000U, 0xFFFFFFFFU}) {
        uint32_t got = 99;
        if (GetParam().set == swSetEgressMode && value > 3) {
            /* The one number that is checked. */
            EXPECT_EQ(GetParam().set(&device, GetParam().port, value), SW_STATUS_FAIL);
            continue;
        }
        EXPECT_EQ(GetParam().set(&device, GetParam().port, value), SW_STATUS_OK);
        EXPECT_EQ(GetParam().get(&device, GetParam().port, &got), SW_STATUS_OK);
        EXPECT_EQ(got, mask == 1 ? 0 : value & mask) << value;
    }
}

TEST_P(PortOperation, FailedGetLeavesTheResult)
{
    bus.fail_at = 1;
    uint32_t value = 99;
    EXPECT_EQ(GetParam().get(&device, GetParam().port, &value), SW_STATUS_FAIL);
    EXPECT_EQ(value, 99U);
}

TEST_P(PortOperation, FailedReadOfASetWritesNothing)
{
    bus.fail_at = 1;
    EXPECT_EQ(GetParam().set(&device, GetParam().port, 1), SW_STATUS_FAIL);
    EXPECT_EQ(bus.accesses, 1U);
}

INSTANTIATE_TEST_SUITE_P(Board, PortOperation, testing::ValuesIn(ROWS),
                         [](const auto &row) { return row.param.name; });

struct Fact_Row {
    const char *name;
    Get get;
    uint16_t content;
    uint32_t value;
};

void PrintTo(const Fact_Row &row, std::ostream *stream)
{
    *stream << row.name;
}

const Fact_Row FACTS[] = {
    {"PhyDetectOn", swGetPhyDetect, 0x1000, 1}, {"PhyDetectOff", swGetPhyDetect, 0xEFFF, 0},
    {"LinkUp", swGetLinkState, 0x0800, 1},      {"LinkDown", swGetLinkState, 0xF7FF, 0},
    {"DuplexFull", swGetDuplex, 0x0400, 1},     {"DuplexHalf", swGetDuplex, 0xFBFF, 0},
    {"Speed10", swGetSpeedMode, 0xFCFF, 0},     {"Speed100", swGetSpeedMode, 0x0100, 1},
    {"Speed1000", swGetSpeedMode, 0x0200, 2},   {"SpeedUnknown", swGetSpeedMode, 0x0300, 3},
};

class PortFact : public testing::TestWithParam<Fact_Row>
{
};

TEST_P(PortFact, IsReadFromThePortStatusRegister)
{
    Fake_Bus bus;
    SW_Device device = make_board_device();
    bus.registers[0x14][0] = GetParam().content;
    uint32_t value = 99;
    EXPECT_EQ(GetParam().get(&device, 4, &value), SW_STATUS_OK);
    EXPECT_EQ(value, GetParam().value);
    char line[20];
    snprintf(line, sizeof line, "R 14 00 %04x\n", GetParam().content);
    EXPECT_EQ(bus.take_trace(), line);
}

INSTANTIATE_TEST_SUITE_P(Board, PortFact, testing::ValuesIn(FACTS),
                         [](const auto &row) { return row.param.name; });

class PortSettings : public Board_Test
{
};

TEST_F(PortSettings, VlanId4096WritesZeroAndKeepsTheHighBits)
{
    bus.registers[0x11][7] = 0xB123;
    EXPECT_EQ(swSetPortVid(&device, 1, 4096), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 11 07 b123\nW 11 07 b000\n");
}

TEST_F(PortSettings, EgressModeAboveThreeFailsWithoutAccess)
{
    for (const uint32_t mode : {4U, 5U, 7U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(swSetEgressMode(&device, 1, mode), SW_STATUS_FAIL) << mode;
    }
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(PortSettings, ChecksRunInTheOrderPointerPortSupportValue)
{
    SW_Device older = make_device(1U << 3, 0); /* no egress mode, no core tag */
    uint32_t value = 0;
    EXPECT_EQ(swGetUseCoreTag(&older, 1, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetUseCoreTag(&older, 6, &value), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetUseCoreTag(&older, 1, &value), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swSetEgressMode(&older, 6, 4), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swSetEgressMode(&older, 1, 4), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swSetEgressMode(&device, 1, 4), SW_STATUS_FAIL);
    EXPECT_EQ(bus.take_trace(), "");
}

/* No chip has two family bits. Two set by hand reach what the tests of the layouts say of set B:
 * the chip that has that bit supports none of these settings. */
TEST_F(PortSettings, NewerLayoutOfSetBMovesTheFieldsThatSetAAllows)
{
    const SW_Egress_Rate rate = {GT_1M};
    device = make_device(1U << 4, 1U << 11);
    EXPECT_EQ(swSetPortDot1qMode(&device, 1, 3), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 11 08 0000\nW 11 08 0c00\n");
    EXPECT_EQ(swSetPortDefaultPrio(&device, 1, 7), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 11 07 0000\nW 11 07 e000\n");
    EXPECT_EQ(swSetPri3Rate(&device, 1, 1), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 11 09 0000\nW 11 09 4000\n");
    EXPECT_EQ(swSetPri0Rate(&device, 1, GT_1M), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 11 09 4000\nW 11 09 40fa\n");
    EXPECT_EQ(swSetEgressRate(&device, 1, &rate), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 11 0a 0000\nW 11 0a 00fa\n");
}

TEST_F(PortSettings, BytesCountWritesItsTwoRegistersOnce)
{
    bus.fill(0xFFFF);
    SW_Bytes_Count flags = {0, 0, 0};
    EXPECT_EQ(swSetBytesCount(&device, 3, &flags), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 13 09 ffff\nW 13 09 7fff\nR 13 0a ffff\nW 13 0a cfff\n");
    bus.fill(0);
    flags = {1, 1, 0};
    EXPECT_EQ(swSetBytesCount(&device, 3, &flags), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 13 09 0000\nW 13 09 8000\nR 13 0a 0000\nW 13 0a 2000\n");
    flags = {2, 255, 1};
    EXPECT_EQ(swSetBytesCount(&device, 3, &flags), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 13 09 8000\nW 13 09 0000\nR 13 0a 2000\nW 13 0a 1000\n");
}

TEST_F(PortSettings, BytesCountIsReadBackFlagByFlag)
{
    for (uint32_t k = 0; k < 8; ++k) {
        const SW_Bytes_Count flags = {k & 1, (k >> 1) & 1, (k >> 2) & 1};
        SW_Bytes_Count got = {9, 9, 9};
        EXPECT_EQ(swSetBytesCount(&device, 0, &flags), SW_STATUS_OK);
        bus.take_trace();
        EXPECT_EQ(swGetBytesCount(&device, 0, &got), SW_STATUS_OK);
        EXPECT_EQ(got.limitMgmt, flags.limitMgmt);
        EXPECT_EQ(got.countIfg, flags.countIfg);
        EXPECT_EQ(got.countPre, flags.countPre);
    }
    EXPECT_EQ(bus.take_trace(), "R 10 09 8000\nR 10 0a 3000\n");
}

TEST_F(PortSettings, BytesCountOfTheOlderLayoutIsOneFieldOfThreeBits)
{
    device = make_device(1U << 4, 0);
    bus.fill(0xFFFF);
    SW_Bytes_Count flags = {0, 0, 0};
    EXPECT_EQ(swSetBytesCount(&device, 1, &flags), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 19 0a ffff\nW 19 0a ff8f\n");
    const struct {
        SW_Bytes_Count flags;
        const char *trace;
    } rows[] = {
        {{1, 0, 0}, "R 19 0a 0000\nW 19 0a 0040\nR 19 0a 0040\n"},
        {{0, 1, 0}, "R 19 0a 0000\nW 19 0a 0020\nR 19 0a 0020\n"},
        {{0, 0, 1}, "R 19 0a 0000\nW 19 0a 0010\nR 19 0a 0010\n"},
    };
    for (const auto &row : rows) {
        bus.fill(0);
        SW_Bytes_Count got = {9, 9, 9};
        EXPECT_EQ(swSetBytesCount(&device, 1, &row.flags), SW_STATUS_OK);
        EXPECT_EQ(swGetBytesCount(&device, 1, &got), SW_STATUS_OK);
        EXPECT_EQ(bus.take_trace(), row.trace);
        EXPECT_EQ(got.limitMgmt, row.flags.limitMgmt);
        EXPECT_EQ(got.countIfg, row.flags.countIfg);
        EXPECT_EQ(got.countPre, row.flags.countPre);
    }
}

TEST_F(PortSettings, BytesCountStopsAtTheFirstFailedAccessAndLeavesTheResult)
{
    bus.fail_at = 2;
    const SW_Bytes_Count flags = {1, 1, 1};
    EXPECT_EQ(swSetBytesCount(&device, 3, &flags), SW_STATUS_FAIL);
    EXPECT_EQ(bus.take_trace(), "R 13 09 0000\nW 13 09 failed\n");
    bus.accesses = 0;
    SW_Bytes_Count got = {9, 9, 9};
    EXPECT_EQ(swGetBytesCount(&device, 3, &got), SW_STATUS_FAIL);
    EXPECT_EQ(got.limitMgmt + got.countIfg + got.countPre, 27U);
}

} // namespace
