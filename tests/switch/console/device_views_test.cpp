#include "switch/console/device_views.h"

#include "tests/switch/console/device_board.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace
{

TEST_F(DeviceViews, VlanTabShowsTheRegisters)
{
    EXPECT_EQ(shown(Dev_Vlan_Tab), VLAN_TITLE VLAN_HEADER CHIP_VLAN_ROWS);
    EXPECT_EQ(shown(Dev_Vlan_Rows), VLAN_HEADER CHIP_VLAN_ROWS);
}

TEST_F(DeviceViews, QosTabShowsTheRegisters)
{
    EXPECT_EQ(shown(Dev_Qos_Tab), QOS_TITLE QOS_HEADER CHIP_QOS_ROWS);
    EXPECT_EQ(shown(Dev_Qos_Rows), QOS_HEADER CHIP_QOS_ROWS);
}

TEST_F(DeviceViews, CosTabShowsTheRegisters)
{
    EXPECT_EQ(shown(Dev_Cos_Tab), COS_TITLE FACTORY_COS_TABLES);
}

TEST_F(DeviceViews, VtuTabShowsTheChipsTable)
{
    EXPECT_EQ(shown(Dev_Vtu_Tab), VTU_TITLE CHIP_VTU_ROWS);
    EXPECT_EQ(shown(Dev_Vtu_Rows), CHIP_VTU_ROWS);
}

TEST_F(DeviceViews, PortsStatusShowsTheLinks)
{
    EXPECT_EQ(shown(Dev_Ports_Status),
              PORTS_STATUS_TITLE PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS);
}

TEST_F(DeviceViews, PortsStatusShowsEverySpeed)
{
    Sim_Chip_Plug(&chip_, LAN, SIM_10_HALF);
    Sim_Chip_Plug(&chip_, WAN, 0);
    EXPECT_EQ(shown(Dev_Ports_Status), PORTS_STATUS_TITLE PORTS_STATUS_HEADER
              " CPU  | True       |   100 Mbps | True   | True      \n"
              " LAN  | True       |    10 Mbps | False  | True      \n"
              " WAN  | True       |    Unknown | False  | False     \n"
              " SFP0 | False      |  1000 Mbps | True   | True      \n"
              " SFP1 | False      |    Unknown | False  | False     \n");
}

TEST_F(DeviceViews, PortsStatusShowsNothingForASpeedOutsideTheList)
{
    control_.portStatus[1] = {2, 4, 2, 2};
    set_flags(0, 1);
    const std::string table = shown(Dev_Ports_Status);
    EXPECT_NE(table.find(" LAN  | False      |            | False  | False     \n"),
              std::string::npos);
}

TEST_F(DeviceViews, MaxFrameSizeShowsTheRegister)
{
    EXPECT_EQ(shown(Dev_Max_Frame_Size), "Max Frame Size: 1522 Bytes\n");
    EXPECT_EQ(device_image_.maxFrameSize, 0U);
    chip_.global[4] = 0x0400;
    EXPECT_EQ(shown(Dev_Max_Frame_Size), "Max Frame Size: 1632 Bytes\n");
    EXPECT_EQ(device_image_.maxFrameSize, 1U);
}

TEST_F(DeviceViews, DeviceStatusShowsEverythingInOrder)
{
    EXPECT_EQ(shown(Print_Device_Status), CHIP_STATUS);
    EXPECT_EQ(control_.read, 1U);
    EXPECT_EQ(control_.print, 1U);
}

TEST_F(DeviceViews, DeviceImageBeforeAnyReadIsZero)
{
    EXPECT_EQ(shown(Print_Device_Image), ZERO_STATUS("Max Frame Size: 1522 Bytes\n"));
    EXPECT_EQ(take_access_count(), 0U);
    EXPECT_EQ(control_.read, 0U);
    EXPECT_EQ(control_.print, 1U);
}

TEST_F(DeviceViews, DeviceImageShowsWhatWasReadLast)
{
    shown(Print_Device_Status);
    take_trace();
    std::memset(chip_.ports, 0, sizeof chip_.ports);
    EXPECT_EQ(shown(Print_Device_Image), CHIP_STATUS);
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(DeviceViews, RefreshReadsWithoutPrinting)
{
    set_flags(0, 0);
    EXPECT_EQ(shown(Refresh_Device_Image), "");
    EXPECT_EQ(control_.read, 0U);
    EXPECT_EQ(control_.print, 1U);
    EXPECT_EQ(shown(Print_Device_Image), CHIP_STATUS);
}

TEST_F(DeviceViews, RefreshForgetsWhatCanNoLongerBeRead)
{
    shown(Print_Device_Status);
    device_ = {};
    EXPECT_EQ(shown(Refresh_Device_Image), "");
    EXPECT_EQ(shown(Print_Device_Image), ZERO_STATUS("Max Frame Size: 1522 Bytes\n"));
    EXPECT_EQ(std::memcmp(&device_image_, &startup_image_, sizeof device_image_), 0);
}

TEST_F(DeviceViews, WithNeitherFlagNothingHappens)
{
    set_flags(0, 0);
    EXPECT_EQ(shown(Print_Device_Status), "");
    EXPECT_EQ(take_access_count(), 0U);
    set_flags(0, 1);
    EXPECT_EQ(shown(Print_Device_Status), ZERO_STATUS("Max Frame Size: 1522 Bytes\n"));
}

TEST_F(DeviceViews, WithThePrintFlagAloneNothingIsRead)
{
    set_flags(0, 1);
    device_image_.maxFrameSize = 2;
    EXPECT_EQ(shown(Print_Device_Status), ZERO_STATUS("Max Frame Size: 1632 Bytes\n"));
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(DeviceViews, WithTheReadFlagAloneNothingIsPrinted)
{
    set_flags(1, 0);
    EXPECT_EQ(shown(Print_Device_Status), "");
    EXPECT_GT(take_access_count(), 0U);
    set_flags(0, 1);
    EXPECT_EQ(shown(Print_Device_Status), CHIP_STATUS);
}

TEST_F(DeviceViews, RowsOfOtherPortsAreEmpty)
{
    EXPECT_EQ(printed([&] { Dev_Vlan_Row(&control_, -1); }), "");
    EXPECT_EQ(printed([&] { Dev_Vlan_Row(&control_, 5); }), "");
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(DeviceViews, ViewsDoNotTouchTheOtherRecords)
{
    shown(Print_Device_Status);
    SW_Config zero{};
    EXPECT_EQ(std::memcmp(&running_, &zero, sizeof zero), 0);
    EXPECT_EQ(std::memcmp(&applied_, &zero, sizeof zero), 0);
    EXPECT_EQ(std::memcmp(&startup_image_, &zero, sizeof zero), 0);
}

/* The settings that the chip does not hold stay as they are in the image. */
TEST_F(DeviceViews, ReadingKeepsTheImagesOtherFields)
{
    SetSwitchConfigDefaults(&device_image_);
    set_flags(1, 0);
    shown(Print_Device_Status);
    EXPECT_EQ(device_image_.ports[1].portType, 2U);
    EXPECT_EQ(device_image_.vlanPortType[4], 1U);
    EXPECT_STREQ(device_image_.vlanPortList[0], "1");
}

TEST_F(DeviceViews, VtuEntriesThatTheChipLostLeaveTheImage)
{
    shown(Dev_Vtu_Tab);
    chip_.vlans.entries[10].valid = false;
    chip_.vlans.entries[1].valid = false;
    EXPECT_EQ(shown(Dev_Vtu_Rows), VTU_HEADER
              " 4095 | Tagged     | Tagged     | Tagged     | Tagged     | Tagged    \n");
    EXPECT_EQ(device_image_.vlanEntryCount, 1U);
    EXPECT_EQ(device_image_.vlans[10].defined, 0);
    EXPECT_EQ(device_image_.vlans[10].vtu.vid, 0);
    EXPECT_EQ(device_image_.vlans[4095].defined, 1);
    chip_.vlans.entries[4095].valid = false;
    EXPECT_EQ(shown(Dev_Vtu_Rows), "No VTU Entries\n");
    EXPECT_EQ(device_image_.vlanEntryCount, 0U);
}

TEST_F(DeviceViews, VlanRowReadsItsRegistersInTheOrderOfTheColumns)
{
    set_flags(1, 0);
    Dev_Vlan_Row(&control_, 1);
    EXPECT_EQ(take_trace(), "R 11 07 ffff\n"
                            "R 11 07 ffff\n"
                            "R 11 08 0600\n"
                            "R 11 08 0600\n"
                            "R 11 08 0600\n"
                            "R 11 04 9070\n"
                            "R 11 04 9070\n"
                            "R 11 0a 37a2\n"
                            "R 11 09 f7a2\n"
                            "R 11 0a 37a2\n");
}

TEST_F(DeviceViews, VlanRowIsReadIntoItsPortOfTheImageAlone)
{
    for (const int port : {4, 3, 2, 1, 0}) {
        const SW_Config before = device_image_;
        set_flags(1, 0);
        Dev_Vlan_Row(&control_, port);
        for (int other = 0; other < SW_PORTS; other++) {
            EXPECT_EQ(std::memcmp(&before.ports[other], &device_image_.ports[other],
                                  sizeof(SW_Port_Config)) == 0,
                      other != port)
                << "row " << port << ", port " << other;
        }
    }
    set_flags(0, 1);
    EXPECT_EQ(shown(Dev_Vlan_Rows), VLAN_HEADER CHIP_VLAN_ROWS);
}

/* Prints each access among the cells. */
int print_access(void *context, unsigned long number, MDIO_Record *record)
{
    std::printf("<%d>", record->registerNumber);
    return Sim_Layer_Pass(*static_cast<Sim_Layer *>(context), number, record);
}

TEST_F(DeviceViews, CellsArePrintedRightAfterTheyAreRead)
{
    Sim_Layer layer = {};
    ASSERT_TRUE(Sim_Layer_Install(&layer, {print_access, &layer}));
    const std::string row = printed([&] { Dev_Vlan_Row(&control_, 1); });
    const std::string status = shown(Dev_Ports_Status);
    const std::string qos = shown(Dev_Qos_Rows);
    const std::string cos = shown(Dev_Cos_Tab);
    ASSERT_TRUE(Sim_Layer_Remove(&layer));
    EXPECT_EQ(row,
              "LAN |<7>4095|<7>True    |<8>Fallback  |<8>True   |<8>False   |<4>Untagged egress|"
              "<4>True    |<10>128K bits/sec|<9><10>True |True |True \n");
    const std::string status_start = PORTS_STATUS_TITLE PORTS_STATUS_HEADER
        " CPU  |<0> True       |<0>   100 Mbps |<0> True   |<0> True      \n LAN  |";
    EXPECT_EQ(status.substr(0, status_start.size()), status_start);
    const std::string qos_start = QOS_HEADER
        "CPU  |<9>   Not limited |<9> False    |<9> False    |<9> False    |<4> False       |"
        "<4> False   |<4> False     |<7>         0\nLAN  |";
    EXPECT_EQ(qos.substr(0, qos_start.size()), qos_start);
    const std::string cos_start = COS_TITLE "User_priority Traff_class:\n"
                                            "<24> 0  1<24> |  1  0<24> |  2  0";
    EXPECT_EQ(cos.substr(0, cos_start.size()), cos_start);
}

} // namespace
