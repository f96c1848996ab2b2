/* The driver's VLAN table operations on every simulated chip. */

#include "tests/simulator/driver_on_simulator.h"

#include <cstring>
#include <map>

namespace
{

class DriverVlans : public DriverOnSimulator
{
protected:
    void SetUp() override
    {
        DriverOnSimulator::SetUp();
        load();
    }

    /* An entry with something in every field that the chip holds. */
    Vlan_Table_Entry make_entry(uint16_t vid) const
    {
        Vlan_Table_Entry entry = {};
        entry.vid = vid;
        entry.dbNum = static_cast<uint16_t>(vid % (GetParam().chip.databases + 1));
        for (unsigned port = 0; port < ports(); ++port) {
            entry.memberTagP[port] = static_cast<uint8_t>((vid + port) % 4);
            entry.portStateP[port] =
                static_cast<uint8_t>(supports("state") ? (vid + port) / 2 % 4 : 0);
        }
        if (supports("override")) {
            entry.vidPriOverride = 1;
            entry.vidPriority = vid % 8;
        }
        if (supports("extended")) {
            entry.extPriOverride = 1;
            entry.extPriority = vid % 8;
            entry.extSecondOverride = 1;
            entry.extSecondPriority = vid % 4;
            entry.extRateLimit = vid % 2;
        }
        return entry;
    }

    /* Adds the entries and walks the table: it must give them all, in order, and end. */
    void expect_walk(const std::vector<uint16_t> &vids)
    {
        for (const uint16_t vid : vids) {
            const Vlan_Table_Entry entry = make_entry(vid);
            ASSERT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK) << vid;
        }
        uint32_t count = 0;
        ASSERT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_OK);
        EXPECT_EQ(count, vids.size());

        std::map<uint16_t, Vlan_Table_Entry> expected;
        for (const uint16_t vid : vids) {
            expected[vid] = make_entry(vid);
        }
        Vlan_Table_Entry entry = {};
        int status = swVtuGetFirst(&device, &entry);
        for (const auto &[vid, wanted] : expected) {
            ASSERT_EQ(status, SW_STATUS_OK) << vid;
            ASSERT_EQ(entry.vid, vid);
            EXPECT_EQ(std::memcmp(&entry, &wanted, sizeof entry), 0) << vid;
            status = swVtuGetNext(&device, &entry);
        }
        EXPECT_EQ(status, SW_STATUS_FAIL) << "nothing is left";
    }
};

class DriverWithoutVlans : public DriverVlans
{
};

TEST_P(DriverWithoutVlans, FindsAnEmptyTableThatCannotBeFilled)
{
    Vlan_Table_Entry entry = {};
    uint32_t count = 77;
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swVtuGetFirst(&device, &entry), SW_STATUS_FAIL);
    EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_FAIL);
    EXPECT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_OK);
    EXPECT_EQ(count, 0U);
}

TEST_P(DriverVlans, AreNoneAtStart)
{
    expect_walk({});
}

TEST_P(DriverVlans, AreWalkedInOrderTo4095)
{
    expect_walk({4095, 1, 100, 4094, 0, 2});
}

TEST_P(DriverVlans, EndTheirWalkWhenOnly4095IsThere)
{
    expect_walk({4095});
}

TEST_P(DriverVlans, EndTheirWalkWhenOnly0IsThere)
{
    expect_walk({0});
}

TEST_P(DriverVlans, FillTheWholeTable)
{
    std::vector<uint16_t> all;
    for (int vid = 0; vid < SIM_VLANS; ++vid) {
        all.push_back(static_cast<uint16_t>(vid));
    }
    expect_walk(all);
}

TEST_P(DriverVlans, AreGoneAfterAFlush)
{
    expect_walk({1, 4095});
    ASSERT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    expect_walk({});
    expect_walk({5});
}

TEST_P(DriverVlans, StandInTheRegistersByHardwarePort)
{
    Vlan_Table_Entry entry = {};
    entry.vid = 7;
    entry.memberTagP[0] = 2;
    entry.memberTagP[ports() - 1] = 3;
    ASSERT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    if (chip->vlans.busyReads != 0) { /* the load ends when the busy bit has been read away */
        uint32_t count = 0;
        ASSERT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_OK);
    }
    const unsigned last = hardware_port(ports() - 1);
    EXPECT_EQ(chip->vlans.entries[7].data[0] & 3, 2);
    EXPECT_EQ(chip->vlans.entries[7].data[last / 4] >> (4 * (last % 4)) & 3, 3);
}

class DirectDriverVlans : public DriverVlans
{
};

TEST_P(DirectDriverVlans, TakeSixAccessesForALoadOnAnIdleChip)
{
    Sim_Recorder recorder{};
    ASSERT_TRUE(Sim_Recorder_Install(&recorder));
    const Vlan_Table_Entry entry = make_entry(100);
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_TRUE(Sim_Layer_Remove(&recorder.layer));

    constexpr struct {
        uint8_t operation;
        uint8_t number;
    } EXPECTED[] = {{MDIO_READ, 5},  {MDIO_WRITE, 6}, {MDIO_WRITE, 7},
                    {MDIO_WRITE, 8}, {MDIO_WRITE, 9}, {MDIO_WRITE, 5}};
    const int global = chip->row.layout == SIM_LAYOUT_NEWER ? 27 : 31;
    ASSERT_EQ(recorder.records.size(), std::size(EXPECTED));
    for (size_t place = 0; place < std::size(EXPECTED); ++place) {
        EXPECT_EQ(recorder.records[place].operation, EXPECTED[place].operation) << place;
        EXPECT_EQ(recorder.records[place].registerNumber, EXPECTED[place].number) << place;
        EXPECT_EQ(recorder.records[place].phyAddress, global) << place;
    }
}

bool has_table(const Driven_Case &driven)
{
    return driven.chip.databases != 0;
}

bool has_no_table(const Driven_Case &driven)
{
    return !has_table(driven);
}

bool is_direct_with_table(const Driven_Case &driven)
{
    return has_table(driven) && !is_indirect(driven);
}

INSTANTIATE_TEST_SUITE_P(Chips, DriverVlans, testing::ValuesIn(driven_cases(has_table)),
                         driven_name);
INSTANTIATE_TEST_SUITE_P(Chips, DriverWithoutVlans, testing::ValuesIn(driven_cases(has_no_table)),
                         driven_name);
INSTANTIATE_TEST_SUITE_P(Chips, DirectDriverVlans,
                         testing::ValuesIn(driven_cases(is_direct_with_table)), driven_name);

} // namespace
