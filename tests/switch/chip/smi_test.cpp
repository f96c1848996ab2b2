#include "switch/chip/smi.h"

#include "switch/chip/fields.h"
#include "tests/switch/chip/board_test.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr uint8_t COMMAND = 0x04; /* the chip's own address in the tests of indirect mode */

class DirectAccess : public Board_Test
{
};

TEST_F(DirectAccess, IsOneCallOfTheHook)
{
    bus.registers[0x1C][31] = 0x8765;
    uint16_t value = 0;
    EXPECT_EQ(SMI_Read(&device, 0x1C, 31, &value), SW_STATUS_OK);
    EXPECT_EQ(value, 0x8765);
    EXPECT_EQ(SMI_Write(&device, 0x11, 7, 0x4321), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1c 1f 8765\nW 11 07 4321\n");
}

TEST_F(DirectAccess, AnswerFalseOfTheHookIsAFailure)
{
    uint16_t value = 77;
    bus.fail_at = 1;
    EXPECT_EQ(SMI_Read(&device, 1, 2, &value), SW_STATUS_FAIL);
    EXPECT_EQ(value, 77);
    bus.fail_at = 2;
    EXPECT_EQ(SMI_Write(&device, 1, 2, 3), SW_STATUS_FAIL);
}

TEST_F(DirectAccess, MissingHookIsAFailure)
{
    uint16_t value = 77;
    device.hooks = {};
    EXPECT_EQ(SMI_Read(&device, 1, 2, &value), SW_STATUS_FAIL);
    EXPECT_EQ(SMI_Write(&device, 1, 2, 3), SW_STATUS_FAIL);
    EXPECT_EQ(value, 77);
}

TEST_F(DirectAccess, EveryModeButTwoIsDirect)
{
    for (const uint32_t mode : {0U, 1U, 3U, 0x102U, 0xFFFFFFFFU}) {
        device.accessMode = mode;
        EXPECT_EQ(SMI_Write(&device, 0x11, 7, 0x4321), SW_STATUS_OK);
        EXPECT_EQ(bus.take_trace(), "W 11 07 4321\n") << mode;
    }
}

class IndirectAccess : public Board_Test
{
protected:
    IndirectAccess()
    {
        bus.command_address = COMMAND;
        device.accessMode = 2;
        device.smiAddress = COMMAND;
        device.baseRegAddr = 0;
    }
};

TEST_F(IndirectAccess, WriteSendsDataThenCommandAndDoesNotWait)
{
    bus.command_busy_reads = 5;
    EXPECT_EQ(SMI_Write(&device, 0x11, 7, 0x4321), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 04 00 0000\nW 04 01 4321\nW 04 00 9627\n");
    EXPECT_EQ(bus.registers[0x11][7], 0x4321);
}

TEST_F(IndirectAccess, ReadWaitsForItsCommandAndTakesTheData)
{
    bus.registers[0x1B][31] = 0xBEEF;
    bus.command_busy_reads = 2;
    uint16_t value = 0;
    EXPECT_EQ(SMI_Read(&device, 0x1B, 31, &value), SW_STATUS_OK);
    EXPECT_EQ(value, 0xBEEF);
    EXPECT_EQ(bus.take_trace(), "R 04 00 0000\nW 04 00 9b7f\nR 04 00 8000\nR 04 00 8000\n"
                                "R 04 00 0000\nR 04 01 beef\n");
}

TEST_F(IndirectAccess, NextAccessWaitsForTheCommandBefore)
{
    bus.command_busy_reads = 1;
    EXPECT_EQ(SMI_Write(&device, 1, 2, 3), SW_STATUS_OK);
    bus.take_trace();
    EXPECT_EQ(SMI_Write(&device, 1, 2, 4), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 04 00 8000\nR 04 00 0000\nW 04 01 0004\nW 04 00 9422\n");
}

TEST_F(IndirectAccess, BusyBitIsReadAtMostAThousandTimesAgain)
{
    bus.command_busy_reads = 1000;
    EXPECT_EQ(SMI_Write(&device, 1, 2, 3), SW_STATUS_OK);
    bus.accesses = 0;
    /* The last of the thousand shows it clear. */
    EXPECT_EQ(SMI_Write(&device, 1, 2, 4), SW_STATUS_OK);
    EXPECT_EQ(bus.accesses, 1U + 1000U + 2U);

    bus.command_busy_reads = 1000000;
    EXPECT_EQ(SMI_Write(&device, 1, 2, 5), SW_STATUS_OK);
    bus.accesses = 0;
    bus.take_trace();
    EXPECT_EQ(SMI_Write(&device, 1, 2, 6), SW_STATUS_FAIL);
    EXPECT_EQ(bus.accesses, 1U + 1000U);
    EXPECT_EQ(bus.take_trace().find('W'), std::string::npos);
    EXPECT_EQ(bus.registers[1][2], 5);
}

TEST_F(IndirectAccess, ReadGivesUpAfterAThousandReadsOfItsOwnCommand)
{
    bus.command_busy_reads = 1000000;
    uint16_t value = 77;
    EXPECT_EQ(SMI_Read(&device, 1, 2, &value), SW_STATUS_FAIL);
    EXPECT_EQ(bus.accesses, 1U + 1U + 1U + 1000U);
    EXPECT_EQ(value, 77);
}

TEST_F(IndirectAccess, EveryFailedBusAccessFailsIt)
{
    for (unsigned k = 1; k <= 4; ++k) {
        bus.accesses = 0;
        bus.fail_at = k;
        uint16_t value = 77;
        EXPECT_EQ(SMI_Read(&device, 1, 2, &value), SW_STATUS_FAIL) << k;
        EXPECT_EQ(bus.accesses, k);
        EXPECT_EQ(value, 77);
    }
    for (unsigned k = 1; k <= 3; ++k) {
        bus.accesses = 0;
        bus.fail_at = k;
        EXPECT_EQ(SMI_Write(&device, 1, 2, 3), SW_STATUS_FAIL) << k;
        EXPECT_EQ(bus.accesses, k);
    }
}

TEST_F(IndirectAccess, FieldWriteIsOneReadAndOneWriteSequence)
{
    bus.registers[0x11][7] = 0xF123;
    EXPECT_EQ(Field_Write_Port(&device, 1, {7, 0, 12}, 0xABC), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 04 00 0000\nW 04 00 9a27\nR 04 00 0000\nR 04 01 f123\n"
                                "R 04 00 0000\nW 04 01 fabc\nW 04 00 9627\n");
}

struct Address_Row {
    const char *name;
    uint32_t familyA;
    uint32_t familyB;
    uint8_t base;
    SMI_Kind kind;
    uint8_t ofPort2; /* port 4 of PHYs and 6 of ports is missing */
};

void PrintTo(const Address_Row &row, std::ostream *stream)
{
    *stream << row.name;
}

constexpr auto OTHER_KIND = SMI_REMAINING;

const Address_Row ADDRESSES[] = {
    {"FixedPhy", 1U << 13, 0, 16, SMI_PHY, 2},
    {"FixedPort", 1U << 13, 0, 16, SMI_PORT, 18},
    {"FixedGlobal", 1U << 13, 0, 16, SMI_GLOBAL, 27},
    {"FixedSecondGlobal", 1U << 13, 0, 16, SMI_SECOND_GLOBAL, 29},
    {"FixedOther", 1U << 13, 0, 16, OTHER_KIND, 28},
    {"FixedGroupBPort", 0, 0x800, 16, SMI_PORT, 18},
    {"FixedGroupBOther", 0, 0x800, 16, OTHER_KIND, 28},
    {"OlderAPhy", 1U << 4, 0, 16, SMI_PHY, 18},
    {"OlderAPort", 1U << 4, 0, 16, SMI_PORT, 26},
    {"OlderAGlobal", 1U << 4, 0, 16, SMI_GLOBAL, 31},
    {"OlderASecondGlobal", 1U << 4, 0, 16, SMI_SECOND_GLOBAL, 30},
    {"OlderAOther", 1U << 4, 0, 16, OTHER_KIND, 30},
    {"OlderBPhy", 0, 0x200, 16, SMI_PHY, 18},
    {"OlderBPort", 0, 0x200, 16, SMI_PORT, 26},
    {"OlderBGlobal", 0, 0x200, 16, SMI_GLOBAL, 31},
    {"OlderBSecondGlobal", 0, 0x200, 16, SMI_SECOND_GLOBAL, 23},
    {"OlderBOther", 0, 0x200, 16, OTHER_KIND, 23},
    {"OlderBaseZeroPort", 1U << 4, 0, 0, SMI_PORT, 10},
    {"OlderBaseZeroGlobal", 1U << 4, 0, 0, SMI_GLOBAL, 15},
    /* The two lowest bits of set A alone are not the newer layout. */
    {"LowestBitsAreOlder", 3, 0, 16, SMI_PORT, 26},
};

class SmiAddress : public testing::TestWithParam<Address_Row>
{
};

TEST_P(SmiAddress, FollowsTheFamily)
{
    const Address_Row &row = GetParam();
    Fake_Bus bus;
    SW_Device device = make_device(row.familyA, row.familyB, 0x3F);
    device.phyPortMask = 0x0F;
    device.baseRegAddr = row.base;
    EXPECT_EQ(SMI_Address(device, 2, row.kind), row.ofPort2);
    if (row.kind == SMI_PHY || row.kind == SMI_PORT) {
        for (const uint32_t missing : {6U, 15U, 16U, 33U, 255U, 0xFFFFFFFFU}) {
            EXPECT_EQ(SMI_Address(device, missing, row.kind), 255) << missing;
        }
        EXPECT_EQ(SMI_Address(device, 4, row.kind) == 255, row.kind == SMI_PHY);
    }
}

INSTANTIATE_TEST_SUITE_P(Families, SmiAddress, testing::ValuesIn(ADDRESSES),
                         [](const auto &row) { return row.param.name; });

TEST(HardwarePort, IsTheNthSetBitOfTheMask)
{
    Fake_Bus bus;
    const SW_Device device = make_device(1U << 13, 0, 0x8063);
    const uint8_t expected[] = {0, 1, 5, 6, 15, 255, 255};
    for (uint32_t port = 0; port < 7; ++port) {
        EXPECT_EQ(SMI_Hardware_Port(device, port), expected[port]) << port;
    }
    EXPECT_EQ(SMI_Hardware_Port(device, 0xFFFFFFFF), 255);
    EXPECT_EQ(SMI_Hardware_Port(SW_Device{}, 0), 255);
}

struct Mask_Row {
    Field field;
    uint32_t mask;
};

TEST(FieldMask, CoversItsBitsAndNothingAboveBit15)
{
    const Mask_Row rows[] = {
        {{0, 0, 12}, 0x0FFF}, {{0, 12, 1}, 0x1000}, {{0, 13, 3}, 0xE000}, {{0, 14, 2}, 0xC000},
        {{0, 10, 2}, 0x0C00}, {{0, 8, 2}, 0x0300},  {{0, 8, 3}, 0x0700},  {{0, 4, 3}, 0x0070},
        {{0, 12, 4}, 0xF000}, {{0, 8, 4}, 0x0F00},  {{0, 15, 1}, 0x8000}, {{0, 9, 1}, 0x0200},
        {{0, 0, 16}, 0xFFFF}, {{0, 12, 8}, 0xF000},
    };
    for (const Mask_Row &row : rows) {
        EXPECT_EQ(Field_Mask(row.field), row.mask);
    }
}

class FieldAccess : public Board_Test
{
};

TEST_F(FieldAccess, WriteKeepsTheOtherBits)
{
    bus.registers[0x13][7] = 0x5678;
    EXPECT_EQ(Field_Write_Port(&device, 3, {7, 0, 12}, 0xFABC), SW_STATUS_OK);
    EXPECT_EQ(Field_Write_Port(&device, 3, {7, 12, 4}, 0x12), SW_STATUS_OK);
    EXPECT_EQ(Field_Write_Port(&device, 3, {7, 12, 8}, 0xFF), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 13 07 5678\nW 13 07 5abc\nR 13 07 5abc\nW 13 07 2abc\n"
                                "R 13 07 2abc\nW 13 07 fabc\n");
}

TEST_F(FieldAccess, ReadShiftsTheBitsDown)
{
    bus.registers[0x1B][26] = 0xA5C3;
    uint32_t value = 0;
    EXPECT_EQ(Field_Read_Global(&device, {26, 8, 4}, &value), SW_STATUS_OK);
    EXPECT_EQ(value, 5U);
    EXPECT_EQ(Field_Read_Global(&device, {26, 12, 8}, &value), SW_STATUS_OK);
    EXPECT_EQ(value, 10U);
}

TEST_F(FieldAccess, PortWithoutRegistersIsABadParameterWithoutAccess)
{
    uint32_t value = 77;
    uint16_t content = 77;
    EXPECT_EQ(Field_Read_Port(&device, 6, {7, 0, 12}, &value), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(Field_Write_Port(&device, 6, {7, 0, 12}, 1), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(Field_Read_Port(&device, 1, {7, 0, 12}, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(Register_Read(&device, SMI_NONE, 1, &content), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(Register_Write(&device, SMI_NONE, 1, 2), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_TRUE(bus.lock_calls.empty());
    EXPECT_EQ(value + content, 154U);
}

TEST_F(FieldAccess, RegisterLockIsHeldOnceAroundReadAndWrite)
{
    uint32_t value = 0;
    EXPECT_EQ(Field_Write_Port(&device, 1, {7, 0, 12}, 1), SW_STATUS_OK);
    EXPECT_EQ(bus.lock_calls, (std::vector<std::string>{"take 101 10", "give 101"}));
    EXPECT_EQ(Field_Read_Port(&device, 1, {7, 0, 12}, &value), SW_STATUS_OK);
    EXPECT_EQ(bus.lock_calls,
              (std::vector<std::string>{"take 101 10", "give 101", "take 101 10", "give 101"}));
    EXPECT_FALSE(bus.lock_misused);
}

TEST_F(FieldAccess, LockThatIsNotTakenFailsWithoutAccessAndIsNotGiven)
{
    uint32_t value = 77;
    uint16_t content = 77;
    bus.lock_to_refuse = 101;
    EXPECT_EQ(Field_Write_Port(&device, 1, {7, 0, 12}, 1), SW_STATUS_FAIL);
    EXPECT_EQ(Field_Read_Port(&device, 1, {7, 0, 12}, &value), SW_STATUS_FAIL);
    EXPECT_EQ(Register_Read(&device, 1, 2, &content), SW_STATUS_FAIL);
    EXPECT_EQ(Register_Write(&device, 1, 2, 3), SW_STATUS_FAIL);
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_EQ(bus.lock_calls, (std::vector<std::string>(4, "take 101 10")));
}

} // namespace
