/* What a chip holds, as text. */

#include "simulator/dump.h"
#include "simulator/registers.h"
#include "tests/support/memory_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>

namespace
{

class ChipDump : public testing::Test
{
protected:
    void SetUp() override { Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_DIRECT, 16}); }

    std::string dump() const
    {
        const Memory_File file;
        FILE *stream = fopen(file.path().c_str(), "w");
        Sim_Dump(*chip, stream);
        fclose(stream);
        return file.read();
    }
    /* Its lines that begin with the text. */
    std::string lines(const std::string &start) const
    {
        std::istringstream stream(dump());
        std::string found;
        for (std::string line; std::getline(stream, line);) {
            found += line.starts_with(start) ? line + "\n" : "";
        }
        return found;
    }
    void write(uint8_t address, uint8_t number, uint16_t value) const
    {
        Sim_Registers_Write(chip.get(), address, number, value);
    }
    void load_vlan(uint16_t vid, uint16_t data, uint16_t operation) const
    {
        write(0x1B, 6, 0x1000 | vid);
        write(0x1B, 7, data);
        write(0x1B, 8, 0x1234);
        write(0x1B, 9, 0x8000);
        write(0x1B, 5, operation);
    }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
};

TEST_F(ChipDump, HasEveryRegisterOfTheDevicesThatAnswer)
{
    const std::string registers = lines("register ");
    /* Three PHYs, six ports, three global blocks. */
    EXPECT_EQ(std::ranges::count(registers, '\n'), 12 * 32);
    EXPECT_EQ(lines("chip"), "chip 105 2\n");
    EXPECT_EQ(lines("register 10 03"), "register 10 03 1052\n");
    EXPECT_EQ(lines("register 15 07"), "register 15 07 0001\n");
    EXPECT_EQ(lines("register 1b 18"), "register 1b 18 fa50\n");
    EXPECT_EQ(lines("register 02 1f"), "register 02 1f 0000\n");
    EXPECT_EQ(lines("register 03"), "") << "the fourth port has no PHY";
}

TEST_F(ChipDump, FollowsTheChip)
{
    write(0x12, 7, 0x0ABC);
    EXPECT_EQ(lines("register 12 07"), "register 12 07 0abc\n");
}

TEST_F(ChipDump, HasThePagesOfThePhysAndTheirFirstOneAsRegisters)
{
    EXPECT_EQ(lines("page"), "page 00 00\npaged 00 03 10 1021\n"
                             "page 01 00\npaged 01 03 10 1021\n"
                             "page 02 00\npaged 02 03 10 1021\n");
    const std::string before = lines("register 01");
    write(1, 22, 0x1F);
    write(1, 0x1F, 0xBEEF);
    EXPECT_EQ(lines("page 01"), "page 01 1f\n");
    EXPECT_EQ(lines("paged 01"), "paged 01 03 10 1021\npaged 01 1f 1f beef\n");
    EXPECT_EQ(lines("register 01"), before);
}

TEST_F(ChipDump, HasTheVlanTable)
{
    EXPECT_EQ(lines("vlan"), "");
    load_vlan(4095, 0x3331, 0xB30F);
    load_vlan(1, 0x0002, 0xB000);
    load_vlan(0, 0x0003, 0xB001);
    EXPECT_EQ(lines("vlan"), "vlan 000 001 0003 1234 8000\n"
                             "vlan 001 000 0002 1234 8000\n"
                             "vlan fff 30f 3331 1234 8000\n");
}

/* A lost link shows once, a busy operation ends when it is read: not here. */
TEST_F(ChipDump, LeavesTheChipAsItIs)
{
    chip->vlans.busyReads = 1;
    load_vlan(5, 0x3331, 0xB000);
    write(1, 22, 3);
    Sim_Chip_Plug(chip.get(), 1, 0);
    Sim_Chip_Plug(chip.get(), 1, SIM_UP_TO_1000);
    const auto before = std::make_unique<Sim_Chip>(*chip);
    EXPECT_EQ(dump(), dump());
    EXPECT_TRUE(chip->phys[1].linkWasLost);
    EXPECT_TRUE(chip->vlans.busy);
    EXPECT_EQ(chip->phys[1].page, 3);
    EXPECT_EQ(chip->vlans.readsLeft, before->vlans.readsLeft);
}

} // namespace
