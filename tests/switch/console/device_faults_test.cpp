#include "switch/console/device_views.h"

#include "switch/chip/driver.h"
#include "tests/switch/console/device_board.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <string>

namespace
{

constexpr size_t EVERY = 1000000;

TEST_F(DeviceViews, FailedReadsShowWhatTheImageHeld)
{
    set_flags(1, 0);
    shown(Print_Device_Status);
    std::memset(chip_.ports, 0, sizeof chip_.ports);
    std::memset(chip_.global, 0, sizeof chip_.global);
    set_flags(1, 1);
    Hook_Faults faults(&device_);
    faults.break_calls(0, EVERY);
    const std::string title = "Marvell Switch Status:\n";
    EXPECT_EQ(shown(Print_Device_Status), title + "...Get Max Frame Size! Error:1\n" +
                                              std::string(CHIP_STATUS).substr(title.size()));
}

TEST_F(DeviceViews, WithoutALoadedDriverTheImageStaysZero)
{
    device_ = {};
    EXPECT_EQ(shown(Print_Device_Status), ZERO_STATUS("...Get Max Frame Size! Error:1\n"
                                                      "Max Frame Size: 1522 Bytes\n"));
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(DeviceViews, FailuresAreSilentWithoutThePrintFlag)
{
    device_ = {};
    set_flags(1, 0);
    EXPECT_EQ(shown(Print_Device_Status), "");
}

/* A bus without an answer hides its failures: the registers read as 0. */
TEST_F(DeviceViews, BrokenBusReadsAsZeroes)
{
    set_flags(1, 0);
    shown(Print_Device_Status);
    set_flags(1, 1);
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}));
    EXPECT_EQ(shown(Print_Device_Status), ZERO_STATUS("Max Frame Size: 1522 Bytes\n"));
}

/* One failed access of a row of which everything differs from the image. */
struct Fault {
    const char *name;
    size_t call;
    const char *row;
};

void PrintTo(const Fault &fault, std::ostream *out)
{
    *out << fault.name;
}

// clang-format off
const Fault FAULTS[] = {
    {"Vid", 0,
"LAN |   0|True    |Fallback  |True   |True    |Untagged egress|True    |128K bits/sec|True |True |True \n"},
    {"ForceDefaultVid", 1,
"LAN |4095|False   |Fallback  |True   |True    |Untagged egress|True    |128K bits/sec|True |True |True \n"},
    {"Dot1qMode", 2,
"LAN |4095|True    |Disable   |True   |True    |Untagged egress|True    |128K bits/sec|True |True |True \n"},
    {"DiscardTagged", 3,
"LAN |4095|True    |Fallback  |False  |True    |Untagged egress|True    |128K bits/sec|True |True |True \n"},
    {"DiscardUntagged", 4,
"LAN |4095|True    |Fallback  |True   |False   |Untagged egress|True    |128K bits/sec|True |True |True \n"},
    {"EgressMode", 5,
"LAN |4095|True    |Fallback  |True   |True    |Unmodify egress|True    |128K bits/sec|True |True |True \n"},
    {"UseCoreTag", 6,
"LAN |4095|True    |Fallback  |True   |True    |Untagged egress|False   |128K bits/sec|True |True |True \n"},
    {"EgressRate", 7,
"LAN |4095|True    |Fallback  |True   |True    |Untagged egress|True    |  Not limited|True |True |True \n"},
    {"LimitMgmt", 8,
"LAN |4095|True    |Fallback  |True   |True    |Untagged egress|True    |128K bits/sec|False|False|False\n"},
    {"CountIfgAndPre", 9,
"LAN |4095|True    |Fallback  |True   |True    |Untagged egress|True    |128K bits/sec|False|False|False\n"},
};
// clang-format on

class VlanRowFault : public DeviceViews, public testing::WithParamInterface<Fault>
{
};

TEST_P(VlanRowFault, KeepsWhatThatReadWouldHaveBrought)
{
    set_port(LAN, {0xFFFF, 0x0700, 0x9070, 0xF7A2, 0x37A2});
    Hook_Faults faults(&device_);
    faults.break_calls(GetParam().call);
    EXPECT_EQ(printed([&] { Dev_Vlan_Row(&control_, 1); }), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(Reads, VlanRowFault, testing::ValuesIn(FAULTS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(DeviceViews, QosCellKeepsWhatItsFailedReadWouldHaveBrought)
{
    device_image_.ports[0].pri0Rate = GT_4M;
    device_image_.ports[0].portPrio = 5;
    Hook_Faults faults(&device_);
    faults.break_calls(0);
    const std::string rate_kept = shown(Dev_Qos_Rows);
    EXPECT_NE(rate_kept.find("CPU  |   4M bits/sec | False "), std::string::npos);
    EXPECT_NE(rate_kept.find("| False     |         0\nLAN  |"), std::string::npos);
}

TEST_F(DeviceViews, CosPairKeepsWhatItsFailedReadWouldHaveBrought)
{
    std::memset(device_image_.cosUserPrio, 9, sizeof device_image_.cosUserPrio);
    Hook_Faults faults(&device_);
    faults.break_calls(1, 2);
    const std::string table = shown(Dev_Cos_Tab);
    EXPECT_NE(table.find("\n 0  1 |  1  9 |  2  9 |  3  1 |"), std::string::npos);
}

TEST_F(DeviceViews, PortStatusKeepsWhatItsFailedReadWouldHaveBrought)
{
    control_.portStatus[0] = {0, SW_SPEED_1000, 0, 0};
    Hook_Faults faults(&device_);
    faults.break_calls(1, 3);
    const std::string table = shown(Dev_Ports_Status);
    EXPECT_NE(table.find(" CPU  | True       |  1000 Mbps | False  | False     \n"),
              std::string::npos);
}

/* How many register accesses the count takes, on a device record that fails none. */
size_t accesses_of_count(SW_Device *device)
{
    Hook_Faults counter(device);
    uint32_t count = 0;
    EXPECT_EQ(swVtuGetEntryCount(device, &count), SW_STATUS_OK);
    EXPECT_EQ(count, 3U);
    return counter.calls();
}

TEST_F(DeviceViews, VtuTableStaysWhereItCannotBeCounted)
{
    set_flags(1, 0);
    shown(Dev_Vtu_Rows);
    set_flags(1, 1);
    add_vlan(20, 0, 0);
    add_vlan(1, 0, 0);
    Hook_Faults faults(&device_);
    faults.break_calls(0);
    EXPECT_EQ(shown(Dev_Vtu_Rows), CHIP_VTU_ROWS);
}

TEST_F(DeviceViews, VtuWalkThatFailsShowsTheEntriesUpToThere)
{
    const size_t count_accesses = accesses_of_count(&device_);
    Hook_Faults faults(&device_);
    uint32_t count = 0;
    Vlan_Table_Entry first = {};
    swVtuGetEntryCount(&device_, &count);
    swVtuGetFirst(&device_, &first);
    const size_t second_entry = faults.calls();
    ASSERT_GT(second_entry, count_accesses);

    faults.break_calls(second_entry, EVERY);
    EXPECT_EQ(shown(Dev_Vtu_Rows), VTU_HEADER
              "    1 | None       | None       | None       | None       | None      \n");
    EXPECT_EQ(device_image_.vlanEntryCount, 3U);
    faults.break_calls(second_entry, EVERY);
    EXPECT_EQ(printed([&] { Print_Chip_Vtu(&control_); }), VTU_HEADER
              "    1 | None       | None       | None       | None       | None      \n");
    faults.break_calls(count_accesses, EVERY);
    EXPECT_EQ(shown(Dev_Vtu_Rows), VTU_HEADER);
}

/* Whatever the chip answers, the VLAN ID has 12 bits. */
TEST_F(DeviceViews, VtuAnswerOfAllOnesIsVlan4095)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_ALL_ONES, 1, 1000, 0x1B, 6}));
    EXPECT_EQ(shown(Dev_Vtu_Rows), VTU_HEADER
              " 4095 | None       | None       | None       | None       | None      \n");
}

/* Straight from the chip: nothing of the image shows through. */
TEST_F(DeviceViews, ChipTablesShowZeroesWhereReadingFails)
{
    shown(Print_Device_Status);
    Hook_Faults faults(&device_);
    faults.break_calls(0, EVERY);
    EXPECT_EQ(printed([&] { Print_Chip_Ports_Status(&control_); }),
              PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS);
    EXPECT_EQ(printed([&] { Print_Chip_Vtu(&control_); }), "No VTU Entries\n");
}

TEST_F(DeviceViews, ChipTablesWithoutALoadedDriver)
{
    device_ = {};
    EXPECT_EQ(printed([&] { Print_Chip_Ports_Status(&control_); }),
              PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS);
    EXPECT_EQ(printed([&] { Print_Chip_Vtu(&control_); }), "No VTU Entries\n");
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(DeviceViews, ChipTablesIgnoreTheFlagsAndTheImage)
{
    for (const uint32_t flag : {0U, 1U}) {
        set_flags(flag, 0);
        EXPECT_EQ(printed([&] { Print_Chip_Ports_Status(&control_); }),
                  PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS);
        EXPECT_EQ(printed([&] { Print_Chip_Vtu(&control_); }), CHIP_VTU_ROWS);
    }
    EXPECT_EQ(std::memcmp(&device_image_, &startup_image_, sizeof device_image_), 0);
    const SW_Port_Status zero[SW_PORTS] = {};
    EXPECT_EQ(std::memcmp(control_.portStatus, zero, sizeof zero), 0);
}

TEST_F(DeviceViews, ChipVtuOfAnEmptyTable)
{
    for (const int vid : {1, 10, 4095}) {
        chip_.vlans.entries[vid].valid = false;
    }
    EXPECT_EQ(printed([&] { Print_Chip_Vtu(&control_); }), "No VTU Entries\n");
}

TEST_F(DeviceViews, ChipVtuOfEveryVlan)
{
    std::string expected = VTU_HEADER;
    for (int vid = 1; vid < SW_VLANS; vid++) {
        add_vlan(vid, 0x2222, 0x0002);
        std::string number = std::to_string(vid);
        number.insert(0, 5 - number.size(), ' ');
        expected += number + " | Untagged   | Untagged   | Untagged   | Untagged   | Untagged  \n";
    }
    EXPECT_EQ(printed([&] { Print_Chip_Vtu(&control_); }), expected);
    EXPECT_EQ(shown(Dev_Vtu_Rows), expected);
}

} // namespace
