#include "switch/console/device_views.h"

#include "tests/switch/console/device_board.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace
{

/* A view, what it prints of the chip and what of an image that is all zero. */
struct View {
    const char *name;
    void (*show)(SW_Control *control);
    const char *of_the_chip;
    const char *of_zeroes;
};

void PrintTo(const View &view, std::ostream *out)
{
    *out << view.name;
}

void title(SW_Control *control)
{
    Print_Status_Title(control);
}
void lan_row(SW_Control *control)
{
    Dev_Vlan_Row(control, 1);
}
void properties(SW_Control *control)
{
    Dev_Vlan_Properties(control);
}

// clang-format off
const View VIEWS[] = {
    {"MaxFrameSize", Dev_Max_Frame_Size, "Max Frame Size: 1522 Bytes\n", "Max Frame Size: 1522 Bytes\n"},
    {"PortsStatus", Dev_Ports_Status, PORTS_STATUS_TITLE PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS,
     PORTS_STATUS_TITLE PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS},
    {"VlanTab", Dev_Vlan_Tab, VLAN_TITLE VLAN_HEADER CHIP_VLAN_ROWS, VLAN_TITLE VLAN_HEADER ZERO_VLAN_ROWS},
    {"VlanRows", Dev_Vlan_Rows, VLAN_HEADER CHIP_VLAN_ROWS, VLAN_HEADER ZERO_VLAN_ROWS},
    {"VlanRow", lan_row, CHIP_VLAN_LAN,
"LAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n"},
    {"VtuTab", Dev_Vtu_Tab, VTU_TITLE CHIP_VTU_ROWS, VTU_TITLE "No VTU Entries\n"},
    {"VtuRows", Dev_Vtu_Rows, CHIP_VTU_ROWS, "No VTU Entries\n"},
    {"QosTab", Dev_Qos_Tab, QOS_TITLE QOS_HEADER CHIP_QOS_ROWS, QOS_TITLE QOS_HEADER ZERO_QOS_ROWS},
    {"QosRows", Dev_Qos_Rows, QOS_HEADER CHIP_QOS_ROWS, QOS_HEADER ZERO_QOS_ROWS},
    {"CosTab", Dev_Cos_Tab, COS_TITLE FACTORY_COS_TABLES, COS_TITLE ZERO_COS_TABLES},
};
// clang-format on

class DeviceView : public DeviceViews, public testing::WithParamInterface<View>
{
};

TEST_P(DeviceView, PrintsTheImageOnly)
{
    set_flags(0, 1);
    EXPECT_EQ(shown(GetParam().show), GetParam().of_zeroes);
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_P(DeviceView, DoesNothingWithoutFlags)
{
    set_flags(0, 0);
    EXPECT_EQ(shown(GetParam().show), "");
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_P(DeviceView, ReadsSilently)
{
    set_flags(1, 0);
    EXPECT_EQ(shown(GetParam().show), "");
    EXPECT_GT(take_access_count(), 0U);
    set_flags(0, 1);
    EXPECT_EQ(shown(GetParam().show), GetParam().of_the_chip);
}

TEST_P(DeviceView, ReadsAndPrints)
{
    set_flags(1, 1);
    EXPECT_EQ(shown(GetParam().show), GetParam().of_the_chip);
}

TEST_P(DeviceView, TakesEveryNonZeroFlag)
{
    set_flags(2, 0xFFFFFFFF);
    EXPECT_EQ(shown(GetParam().show), GetParam().of_the_chip);
}

INSTANTIATE_TEST_SUITE_P(Flags, DeviceView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(DeviceViews, TitleAndSummaryPrintWithThePrintFlagOnly)
{
    for (const uint32_t read : {0U, 1U}) {
        set_flags(read, 1);
        EXPECT_EQ(shown(title), "Marvell Switch Status:\n");
        EXPECT_EQ(shown(properties), ZERO_VLAN_SUMMARY);
        set_flags(read, 0);
        EXPECT_EQ(shown(title), "");
        EXPECT_EQ(shown(properties), "");
    }
    EXPECT_EQ(take_access_count(), 0U);
}

} // namespace
