/* The engine of the simulated VLAN table. */

#include "simulator/vlan_table.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

constexpr uint16_t SIX_BITS = 0x030F;

class SimulatedVlanTable : public testing::Test
{
protected:
    void SetUp() override { Sim_Vlan_Table_Init(table.get(), SIX_BITS); }

    uint16_t read(uint8_t number) const { return Sim_Vlan_Table_Read(table.get(), number); }
    void write(uint8_t number, uint16_t value) const
    {
        Sim_Vlan_Table_Write(table.get(), number, value);
    }
    void load(uint16_t vid, uint16_t data, uint16_t database = 0) const
    {
        write(6, 0x1000 | vid);
        write(7, data);
        write(8, data + 1);
        write(9, data + 2);
        write(5, 0xB000 | database);
    }
    /* Register 6 after a get-next from the VLAN ID. */
    uint16_t next(uint16_t vid) const
    {
        write(6, vid);
        write(5, 0xC000);
        return read(6);
    }

    const std::unique_ptr<Sim_Vlan_Table> table = std::make_unique<Sim_Vlan_Table>();
};

TEST_F(SimulatedVlanTable, IsEmptyAndIdleAtStart)
{
    EXPECT_EQ(read(5), 0);
    for (const uint16_t start : std::initializer_list<uint16_t>{0, 100, 4095}) {
        EXPECT_EQ(next(start), 0x0FFF) << "no valid flag, wherever it starts: " << start;
    }
    EXPECT_EQ(read(7), 0);
}

TEST_F(SimulatedVlanTable, GivesBackWhatWasLoaded)
{
    load(100, 0x1132, 0x0205);
    EXPECT_EQ(next(4095), 0x1064);
    EXPECT_EQ(read(5), 0x4205);
    EXPECT_EQ(read(7), 0x1132);
    EXPECT_EQ(read(8), 0x1133);
    EXPECT_EQ(read(9), 0x1134);
}

TEST_F(SimulatedVlanTable, KeepsOnlyTheDatabaseBitsThatTheChipHas)
{
    Sim_Vlan_Table_Init(table.get(), 0x000F);
    load(100, 0, 0x0F3F);
    next(4095);
    EXPECT_EQ(read(5), 0x400F);
}

TEST_F(SimulatedVlanTable, ReplacesAnEntryOfTheSameId)
{
    load(100, 0x1111, 3);
    load(100, 0x2222, 4);
    EXPECT_EQ(next(4095), 0x1064);
    EXPECT_EQ(read(7), 0x2222);
    EXPECT_EQ(read(5), 0x4004);
    EXPECT_EQ(next(100), 0x1064) << "there is one entry only";
}

TEST_F(SimulatedVlanTable, RemovesAnEntryLoadedWithoutTheValidFlag)
{
    load(100, 0x1111);
    load(200, 0x2222);
    write(6, 100);
    write(5, 0xB000);
    EXPECT_EQ(next(4095), 0x10C8);
    EXPECT_EQ(next(200), 0x10C8);
}

TEST_F(SimulatedVlanTable, WalksUpwardsAndWrapsAfter4095)
{
    for (const uint16_t vid : std::initializer_list<uint16_t>{4095, 7, 0, 4094}) {
        load(vid, vid);
    }
    EXPECT_EQ(next(4095), 0x1000);
    EXPECT_EQ(next(0), 0x1007);
    EXPECT_EQ(next(7), 0x1FFE);
    EXPECT_EQ(next(8), 0x1FFE) << "the start need not be in the table";
    EXPECT_EQ(next(4094), 0x1FFF);
    EXPECT_EQ(next(4095), 0x1000);
}

TEST_F(SimulatedVlanTable, ComesBackToTheOnlyEntry)
{
    load(4095, 1);
    EXPECT_EQ(next(4095), 0x1FFF);
    EXPECT_EQ(next(0), 0x1FFF);
}

TEST_F(SimulatedVlanTable, HoldsEveryId)
{
    for (int vid = 0; vid < 4096; ++vid) {
        load(static_cast<uint16_t>(vid), static_cast<uint16_t>(vid));
    }
    for (int vid = 0; vid < 4096; ++vid) {
        const int before = (vid + 4095) % 4096;
        ASSERT_EQ(next(static_cast<uint16_t>(before)), 0x1000 | vid);
        ASSERT_EQ(read(7), vid);
    }
}

TEST_F(SimulatedVlanTable, FlushesEveryEntry)
{
    load(0, 1);
    load(4095, 1);
    write(5, 0x9000);
    EXPECT_EQ(next(100), 0x0FFF);
    for (const uint8_t number : std::initializer_list<uint8_t>{7, 8, 9}) {
        EXPECT_EQ(read(number), 0) << "nothing is left of the last entry: " << int{number};
    }
}

TEST_F(SimulatedVlanTable, DoesNothingForOtherOperationsAndWithoutTheBusyBit)
{
    load(100, 0x1111);
    for (const uint16_t operation : std::initializer_list<uint16_t>{
             0x8000, 0xA000, 0xD000, 0xE000, 0xF000, 0x1000, 0x3000, 0x4000}) {
        write(6, 0x1000 | 50);
        write(5, operation);
        EXPECT_EQ(read(5), operation & 0x7000);
        EXPECT_EQ(read(6), 0x1000 | 50) << operation;
    }
    EXPECT_EQ(next(4095), 0x1064);
}

TEST_F(SimulatedVlanTable, IsBusyForAsManyReadsAsTold)
{
    load(100, 0x1111);
    table->busyReads = 3;
    write(6, 4095);
    write(5, 0xC000);
    for (int turn = 0; turn < 3; ++turn) {
        EXPECT_EQ(read(5), 0xC000) << turn;
        EXPECT_EQ(read(6), 0x0FFF) << "not ended";
    }
    EXPECT_EQ(read(5), 0x4000);
    EXPECT_EQ(read(6), 0x1064);
    EXPECT_EQ(read(5), 0x4000);
}

TEST_F(SimulatedVlanTable, LosesWritesWhileItIsBusy)
{
    table->busyReads = 1;
    load(100, 0x1111);
    write(6, 0x1000 | 200);
    write(7, 0x2222);
    write(5, 0x9000);
    EXPECT_EQ(read(5), 0xB000);
    EXPECT_EQ(read(5), 0x3000);
    table->busyReads = 0;
    EXPECT_EQ(next(4095), 0x1064);
    EXPECT_EQ(read(7), 0x1111);
}

TEST_F(SimulatedVlanTable, IsNotThereOnAChipWithoutOne)
{
    Sim_Vlan_Table_Init(table.get(), 0);
    load(100, 0x1111, 5);
    for (const uint8_t number : std::initializer_list<uint8_t>{5, 6, 7, 8, 9}) {
        EXPECT_EQ(read(number), 0) << int{number};
    }
    EXPECT_EQ(next(4095), 0);
}

} // namespace
