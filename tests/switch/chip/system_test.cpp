#include "switch/chip/system.h"

#include "tests/switch/chip/board_test.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace
{

class SystemSettings : public Board_Test
{
};

TEST_F(SystemSettings, UserPriorityHasTwoBitsOfGlobal24)
{
    const char *const traces[] = {
        "R 1b 18 ffff\nW 1b 18 fffc\n", "R 1b 18 ffff\nW 1b 18 fff3\n",
        "R 1b 18 ffff\nW 1b 18 ffcf\n", "R 1b 18 ffff\nW 1b 18 ff3f\n",
        "R 1b 18 ffff\nW 1b 18 fcff\n", "R 1b 18 ffff\nW 1b 18 f3ff\n",
        "R 1b 18 ffff\nW 1b 18 cfff\n", "R 1b 18 ffff\nW 1b 18 3fff\n",
    };
    for (uint32_t priority = 0; priority < 8; ++priority) {
        bus.fill(0xFFFF);
        EXPECT_EQ(swSetUserPrioToTrafficClass(&device, priority, 0), SW_STATUS_OK);
        EXPECT_EQ(bus.take_trace(), traces[priority]);
        /* Only three bits of the priority count. */
        bus.fill(0xFFFF);
        EXPECT_EQ(swSetUserPrioToTrafficClass(&device, priority + 0xFFFFFFF8U, 0), SW_STATUS_OK);
        EXPECT_EQ(bus.take_trace(), traces[priority]);
    }
}

TEST_F(SystemSettings, UserPrioritiesAreReadBack)
{
    for (uint32_t priority = 0; priority < 8; ++priority) {
        EXPECT_EQ(swSetUserPrioToTrafficClass(&device, priority, (priority + 1) & 3), SW_STATUS_OK);
    }
    EXPECT_EQ(bus.registers[0x1B][24], 0x3939);
    bus.take_trace();
    for (uint32_t priority = 0; priority < 8; ++priority) {
        uint32_t got = 99;
        EXPECT_EQ(swGetUserPrioToTrafficClass(&device, priority, &got), SW_STATUS_OK);
        EXPECT_EQ(got, (priority + 1) & 3);
        EXPECT_EQ(bus.take_trace(), "R 1b 18 3939\n");
    }
}

TEST_F(SystemSettings, Dscp46ChangesBits12And13OfGlobal21)
{
    EXPECT_EQ(swSetDscpToTrafficClass(&device, 46, 3), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 15 0000\nW 1b 15 3000\n");
}

TEST_F(SystemSettings, EveryDscpHasItsTwoBitsOfGlobal16To23)
{
    for (uint32_t dscp = 0; dscp < 64; ++dscp) {
        bus.fill(0);
        /* A class is cut to two bits, a DSCP to six. */
        EXPECT_EQ(swSetDscpToTrafficClass(&device, dscp + 64 * dscp, 7), SW_STATUS_OK);
        const uint32_t number = 16 + dscp / 8;
        char expected[60];
        snprintf(expected, sizeof expected, "R 1b %02x 0000\nW 1b %02x %04x\n", number, number,
                 3U << 2 * (dscp % 8));
        EXPECT_EQ(bus.take_trace(), expected);
        uint32_t got = 99;
        EXPECT_EQ(swGetDscpToTrafficClass(&device, dscp, &got), SW_STATUS_OK);
        EXPECT_EQ(got, 3U);
        EXPECT_EQ(swGetDscpToTrafficClass(&device, dscp ^ 1, &got), SW_STATUS_OK);
        EXPECT_EQ(got, 0U);
        bus.take_trace();
    }
}

TEST_F(SystemSettings, FrameSizeBitIsTheInverseOfTheValue)
{
    bus.fill(0xFFFF);
    EXPECT_EQ(swSetMaxFrameSize(&device, 1), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 04 ffff\nW 1b 04 fbff\n");
    uint32_t got = 99;
    EXPECT_EQ(swGetMaxFrameSize(&device, &got), SW_STATUS_OK);
    EXPECT_EQ(got, 1U);
    EXPECT_EQ(bus.take_trace(), "R 1b 04 fbff\n");
    for (const uint32_t size : {0U, 2U, 1522U, 0xFFFFFFFFU}) {
        bus.fill(0);
        EXPECT_EQ(swSetMaxFrameSize(&device, size), SW_STATUS_OK);
        EXPECT_EQ(bus.take_trace(), "R 1b 04 0000\nW 1b 04 0400\n");
        EXPECT_EQ(swGetMaxFrameSize(&device, &got), SW_STATUS_OK);
        EXPECT_EQ(got, 0U);
        bus.take_trace();
    }
}

TEST_F(SystemSettings, FailedGetLeavesTheResult)
{
    for (int (*get)(SW_Device *, uint32_t *) :
         {swGetMaxFrameSize, swGetIngressMirrorDest, swGetEgressMirrorDest}) {
        bus.accesses = 0;
        bus.fail_at = 1;
        uint32_t value = 99;
        EXPECT_EQ(get(&device, &value), SW_STATUS_FAIL);
        EXPECT_EQ(value, 99U);
    }
}

TEST_F(SystemSettings, MirrorDestinationsAreFieldsOfGlobal26)
{
    bus.fill(0xFFFF);
    EXPECT_EQ(swSetIngressMirrorDest(&device, 0), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 1a ffff\nW 1b 1a f0ff\n");
    EXPECT_EQ(swSetEgressMirrorDest(&device, 5), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 1a f0ff\nW 1b 1a 50ff\n");
    uint32_t port = 99;
    EXPECT_EQ(swGetIngressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 0U);
    EXPECT_EQ(swGetEgressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 5U);
    EXPECT_EQ(bus.take_trace(), "R 1b 1a 50ff\nR 1b 1a 50ff\n");
}

TEST_F(SystemSettings, MirrorDestination15IsWrittenWithoutAPort)
{
    EXPECT_EQ(swSetEgressMirrorDest(&device, 15), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 1a 0000\nW 1b 1a f000\n");
    EXPECT_EQ(swSetIngressMirrorDest(&device, 15), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 1a f000\nW 1b 1a ff00\n");
    uint32_t port = 99;
    EXPECT_EQ(swGetEgressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 15U);
}

TEST_F(SystemSettings, OtherMirrorDestinationsMustBePorts)
{
    for (const uint32_t port : {6U, 14U, 16U, 255U, 0xFFFFFFFFU}) {
        EXPECT_EQ(swSetIngressMirrorDest(&device, port), SW_STATUS_BAD_PARAM) << port;
        EXPECT_EQ(swSetEgressMirrorDest(&device, port), SW_STATUS_BAD_PARAM) << port;
    }
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(SystemSettings, MirrorDestinationsAreHardwarePortsInTheRegister)
{
    device = make_device(0, 1U << 9, 0x63);
    EXPECT_EQ(swSetIngressMirrorDest(&device, 2), SW_STATUS_OK);
    EXPECT_EQ(swSetEgressMirrorDest(&device, 3), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1f 1a 0000\nW 1f 1a 0500\nR 1f 1a 0500\nW 1f 1a 6500\n");
    uint32_t port = 99;
    EXPECT_EQ(swGetIngressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 2U);
    EXPECT_EQ(swGetEgressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 3U);
    /* Hardware port 3 is not brought out: nothing is mirrored anywhere. */
    bus.registers[0x1F][26] = 0x3300;
    EXPECT_EQ(swGetIngressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 15U);
    EXPECT_EQ(swGetEgressMirrorDest(&device, &port), SW_STATUS_OK);
    EXPECT_EQ(port, 15U);
    EXPECT_EQ(swSetIngressMirrorDest(&device, 4), SW_STATUS_BAD_PARAM);
}

TEST_F(SystemSettings, PortOfAMirrorDestinationIsCheckedBeforeTheSupport)
{
    device = make_device(1U << 3, 0);
    uint32_t port = 0;
    EXPECT_EQ(swSetIngressMirrorDest(&device, 6), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swSetIngressMirrorDest(&device, 1), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swSetIngressMirrorDest(&device, 15), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swGetIngressMirrorDest(&device, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetIngressMirrorDest(&device, &port), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(bus.take_trace(), "");
}

} // namespace
