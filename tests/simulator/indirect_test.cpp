/* The simulated chip behind its command and data registers. */

#include "simulator/chip.h"
#include "simulator/registers.h"

#include <gtest/gtest.h>

#include <memory>

namespace
{

constexpr uint8_t OWN = 5;
constexpr uint16_t NOBODY = 0xFFFF;
constexpr uint16_t READ_PORT_1_VID = 0x9800 | 0x11 << 5 | 7;
constexpr uint16_t WRITE_PORT_1_VID = 0x9400 | 0x11 << 5 | 7;

class IndirectChip : public testing::Test
{
protected:
    void SetUp() override { Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_INDIRECT, OWN}); }

    uint16_t read(uint8_t number) const { return Sim_Chip_Read(chip.get(), OWN, number); }
    void write(uint8_t number, uint16_t value) const
    {
        Sim_Chip_Write(chip.get(), OWN, number, value);
    }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
};

TEST_F(IndirectChip, AnswersOnlyAtItsOwnAddressAndTwoRegisters)
{
    for (int address = 0; address < 32; ++address) {
        for (int number = 0; number < 32; ++number) {
            const uint16_t value = Sim_Chip_Read(chip.get(), static_cast<uint8_t>(address),
                                                 static_cast<uint8_t>(number));
            EXPECT_EQ(value, address == OWN && number < 2 ? 0 : NOBODY) << address << ' ' << number;
        }
    }
}

TEST_F(IndirectChip, LosesWritesToOtherAddresses)
{
    Sim_Chip_Write(chip.get(), 0x11, 7, 0x0123);
    Sim_Chip_Write(chip.get(), OWN + 1, 1, 0x0123);
    Sim_Chip_Write(chip.get(), OWN, 2, 0x0123);
    EXPECT_EQ(Sim_Registers_Read(chip.get(), 0x11, 7), 0x0001);
    EXPECT_EQ(read(1), 0);
}

TEST_F(IndirectChip, CarriesOutAWriteCommand)
{
    write(1, 0x0ABC);
    write(0, WRITE_PORT_1_VID);
    EXPECT_EQ(read(0) & 0x8000, 0);
    EXPECT_EQ(Sim_Registers_Read(chip.get(), 0x11, 7), 0x0ABC);
}

TEST_F(IndirectChip, CarriesOutAReadCommand)
{
    Sim_Registers_Write(chip.get(), 0x11, 7, 0x0456);
    write(0, READ_PORT_1_VID);
    EXPECT_EQ(read(0), READ_PORT_1_VID & 0x7FFF);
    EXPECT_EQ(read(1), 0x0456);
}

TEST_F(IndirectChip, AnswersAllOnesForACommandToAnAddressWhereNothingStands)
{
    write(0, 0x9800 | 0x08 << 5 | 3);
    EXPECT_EQ(read(1), NOBODY);
}

TEST_F(IndirectChip, StaysBusyForAsManyReadsAsToldAndEndsThen)
{
    chip->command.busyReads = 3;
    write(1, 0x0ABC);
    write(0, WRITE_PORT_1_VID);
    for (int turn = 0; turn < 3; ++turn) {
        EXPECT_EQ(read(0), WRITE_PORT_1_VID) << turn;
        EXPECT_EQ(Sim_Registers_Read(chip.get(), 0x11, 7), 0x0001) << turn;
    }
    EXPECT_EQ(read(0), WRITE_PORT_1_VID & 0x7FFF);
    EXPECT_EQ(Sim_Registers_Read(chip.get(), 0x11, 7), 0x0ABC);
}

TEST_F(IndirectChip, HasNoNewDataWhileItIsBusy)
{
    chip->command.busyReads = 1;
    write(0, READ_PORT_1_VID);
    EXPECT_EQ(read(1), 0);
    EXPECT_EQ(read(0), READ_PORT_1_VID);
    EXPECT_EQ(read(1), 0);
    EXPECT_EQ(read(0), READ_PORT_1_VID & 0x7FFF);
    EXPECT_EQ(read(1), 0x0001);
}

TEST_F(IndirectChip, LosesWritesWhileItIsBusy)
{
    chip->command.busyReads = 1;
    write(1, 0x0ABC);
    write(0, WRITE_PORT_1_VID);
    write(1, 0x0DEF);
    write(0, READ_PORT_1_VID);
    EXPECT_EQ(read(0), WRITE_PORT_1_VID);
    EXPECT_EQ(read(0), WRITE_PORT_1_VID & 0x7FFF);
    EXPECT_EQ(Sim_Registers_Read(chip.get(), 0x11, 7), 0x0ABC);
}

TEST_F(IndirectChip, DoesNothingForOtherFramesAndWithoutTheBusyBit)
{
    write(1, 0x0ABC);
    for (const uint16_t command :
         {static_cast<uint16_t>(WRITE_PORT_1_VID & 0x7FFF),  /* not started */
          static_cast<uint16_t>(WRITE_PORT_1_VID & ~0x1000), /* not a clause 22 frame */
          static_cast<uint16_t>(0x9000 | 0x11 << 5 | 7),     /* neither read nor write */
          static_cast<uint16_t>(0x9C00 | 0x11 << 5 | 7)}) {
        write(0, command);
        EXPECT_EQ(read(0), command & 0x7FFF);
        EXPECT_EQ(read(1), 0x0ABC);
        EXPECT_EQ(Sim_Registers_Read(chip.get(), 0x11, 7), 0x0001);
    }
}

TEST_F(IndirectChip, NumbersOlderChipsFromZero)
{
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        if (row.identifier == 0x063) {
            Sim_Chip_Init(chip.get(), row, {SIM_INDIRECT, OWN});
        }
    }
    write(0, 0x9800 | 0x08 << 5 | 3);
    EXPECT_EQ(read(1), 0x0631);
    write(0, 0x9800 | 0x10 << 5 | 3);
    EXPECT_EQ(read(1), NOBODY);
}

} // namespace
