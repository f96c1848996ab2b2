#include "switch/engine/existing_vlans.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/vlan_host.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace
{

/* The entry of vid as a reset leaves it. */
SW_Vlan_Entry reset_entry(int vid)
{
    SW_Vlan_Entry entry;
    memset(&entry, 0, sizeof entry);
    entry.vtu.vid = static_cast<uint16_t>(vid);
    for (int chipPort = 0; chipPort < 5; chipPort++) {
        entry.vtu.memberTagP[chipPort] = 1;
    }
    return entry;
}

SW_Vlan_Entry defined_entry(int vid)
{
    SW_Vlan_Entry entry = reset_entry(vid);
    entry.defined = 1;
    return entry;
}

struct List_Row {
    const char *name;
    std::vector<int32_t> vids;
    std::vector<int> defined;
    uint32_t count;
    const char *printed;
};

void PrintTo(const List_Row &row, std::ostream *out)
{
    *out << row.name;
}

const List_Row LIST_ROWS[] = {
    {"None", {}, {}, 0, "\n"},
    {"One", {10}, {10}, 1, "   10\n"},
    {"Widths", {1, 22, 333, 4095}, {1, 22, 333, 4095}, 4, "    1   22  333 4095\n"},
    {"Fifteen", Numbers(1, 15), Numbers(1, 15), 15,
     "    1    2    3    4    5    6    7    8    9   10   11   12   13   14   15\n"},
    {"Sixteen", Numbers(1, 16), Numbers(1, 16), 16,
     "    1    2    3    4    5    6    7    8    9   10   11   12   13   14   15   16\n"},
    {"Seventeen", Numbers(1, 17), Numbers(1, 17), 17,
     "    1    2    3    4    5    6    7    8    9   10   11   12   13   14   15   16\n"
     "   17\n"},
    {"ThirtyTwo", Numbers(101, 132), Numbers(101, 132), 32,
     "  101  102  103  104  105  106  107  108  109  110  111  112  113  114  115  116\n"
     "  117  118  119  120  121  122  123  124  125  126  127  128  129  130  131  132\n"},
    {"ThirtyThree", Numbers(4063, 4095), Numbers(4063, 4095), 33,
     " 4063 4064 4065 4066 4067 4068 4069 4070 4071 4072 4073 4074 4075 4076 4077 4078\n"
     " 4079 4080 4081 4082 4083 4084 4085 4086 4087 4088 4089 4090 4091 4092 4093 4094\n"
     " 4095\n"},
    {"NumbersWithoutEntry", {-1, 4096, 7, 65535, 65546, INT_MAX, INT_MIN}, {7}, 1, "    7\n"},
};

class VlanList : public testing::TestWithParam<List_Row>
{
protected:
    /* running with exactly the row's VLANs in its table. */
    std::unique_ptr<SW_Config> with_vlans_set()
    {
        auto expected = host.copy_of_running();
        memset(expected->vlans, 0, sizeof expected->vlans);
        for (const int vid : GetParam().defined) {
            expected->vlans[vid] = defined_entry(vid);
        }
        expected->vlanEntryCount = GetParam().count;
        return expected;
    }

    Vlan_Host host;
};

INSTANTIATE_TEST_SUITE_P(Lists, VlanList, testing::ValuesIn(LIST_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_P(VlanList, ReplacesTheExistingVlans)
{
    for (const bool print : {true, false}) {
        host.set_untouched();
        const auto expected = with_vlans_set();
        Output_Capture capture;
        SW_Set_Existing_Vlans(host.control(), GetParam().vids, print);
        EXPECT_EQ(capture.finish(), print ? GetParam().printed : "");
        EXPECT_TRUE(SameConfig(host.running(), *expected));
        EXPECT_TRUE(host.only_running_was_edited());
    }
}

TEST_P(VlanList, IsRemovedAndPrinted)
{
    host.running().vlanEntryCount = 4096;
    const auto expected = host.copy_of_running();
    expected->vlanEntryCount -= GetParam().count;
    for (const int vid : GetParam().defined) {
        expected->vlans[vid] = reset_entry(vid);
    }
    Output_Capture capture;
    SW_Remove_Existing_Vlans(host.control(), GetParam().vids);
    EXPECT_EQ(capture.finish(), GetParam().printed);
    EXPECT_TRUE(SameConfig(host.running(), *expected));
    EXPECT_TRUE(host.only_running_was_edited());
}

TEST(SetExistingVlans, CountsARepeatedVlanAgain)
{
    const std::vector<int32_t> vids = {10, 10, 12, 10};
    Vlan_Host host;
    host.set_factory();
    const auto expected = host.copy_of_running();
    expected->vlans[10] = defined_entry(10);
    expected->vlans[12] = defined_entry(12);
    expected->vlanEntryCount = 4;
    Output_Capture capture;
    SW_Set_Existing_Vlans(host.control(), vids, true);
    EXPECT_EQ(capture.finish(), "   10   10   12   10\n");
    EXPECT_TRUE(SameConfig(host.running(), *expected));
}

TEST(SetExistingVlans, TakesAllVlans)
{
    Vlan_Host host;
    const auto expected = host.copy_of_running();
    memset(expected->vlans, 0, sizeof expected->vlans);
    for (int vid = 1; vid <= 4095; vid++) {
        expected->vlans[vid] = defined_entry(vid);
    }
    expected->vlanEntryCount = 4095;
    Output_Capture capture;
    SW_Set_Existing_Vlans(host.control(), Numbers(1, 4095), false);
    EXPECT_EQ(capture.finish(), "");
    EXPECT_TRUE(SameConfig(host.running(), *expected));
}

TEST(RemoveExistingVlans, ResetsUndefinedOnesWithoutCountingOrPrintingThem)
{
    const std::vector<int32_t> vids = {9, 10, 11, 12, 13};
    Vlan_Host host;
    for (const int vid : {9, 11, 13}) {
        host.running().vlans[vid].defined = 0;
    }
    host.running().vlanEntryCount = 2;
    const auto expected = host.copy_of_running();
    for (const int vid : {9, 10, 11, 12, 13}) {
        expected->vlans[vid] = reset_entry(vid);
    }
    expected->vlanEntryCount = 0;
    Output_Capture capture;
    SW_Remove_Existing_Vlans(host.control(), vids);
    EXPECT_EQ(capture.finish(), "   10   12\n");
    EXPECT_TRUE(SameConfig(host.running(), *expected));
}

TEST(RemoveExistingVlans, OfNoneThatExistsEndsAnEmptyLine)
{
    const std::vector<int32_t> vids = {1, 4095};
    Vlan_Host host;
    host.set_factory();
    Output_Capture capture;
    SW_Remove_Existing_Vlans(host.control(), vids);
    EXPECT_EQ(capture.finish(), "\n");
    EXPECT_EQ(host.running().vlanEntryCount, 0U);
}

TEST(RemoveExistingVlans, TakesARepeatedVlanOffOnce)
{
    const std::vector<int32_t> vids = {10, 10};
    Vlan_Host host;
    host.set_factory();
    SW_Set_Existing_Vlans(host.control(), Numbers(10, 12), false);
    Output_Capture capture;
    SW_Remove_Existing_Vlans(host.control(), vids);
    EXPECT_EQ(capture.finish(), "   10\n");
    EXPECT_EQ(host.running().vlanEntryCount, 2U);
}

TEST(RemoveExistingVlans, BreaksLinesByTheNumberPrinted)
{
    /* 1 to 34, of which the even ones exist: the seventeenth printed one is 34. */
    Vlan_Host host;
    host.set_factory();
    std::vector<int32_t> even;
    for (int32_t vid = 2; vid <= 34; vid += 2) {
        even.push_back(vid);
    }
    SW_Set_Existing_Vlans(host.control(), even, false);
    Output_Capture capture;
    SW_Remove_Existing_Vlans(host.control(), Numbers(1, 34));
    EXPECT_EQ(capture.finish(),
              "    2    4    6    8   10   12   14   16   18   20   22   24   26   28   30   32\n"
              "   34\n");
    EXPECT_EQ(host.running().vlanEntryCount, 0U);
}

TEST(RemoveAllVlans, ZeroesTheTableAndItsCountOnly)
{
    Vlan_Host host;
    const auto expected = host.copy_of_running();
    memset(expected->vlans, 0, sizeof expected->vlans);
    expected->vlanEntryCount = 0;
    SW_Remove_All_Vlans(host.control());
    EXPECT_TRUE(SameConfig(host.running(), *expected));
    EXPECT_TRUE(host.only_running_was_edited());
}

TEST(ResetVlanEntry, LeavesItsVidAndTheFivePortsOutside)
{
    Vlan_Host host;
    for (const uint16_t vid : std::initializer_list<uint16_t>{0, 1, 4095, 65535}) {
        SW_Vlan_Entry entry;
        memset(&entry, 0x5A, sizeof entry);
        SW_Reset_Vlan_Entry(host.control(), &entry, vid);
        const SW_Vlan_Entry expected = reset_entry(vid);
        EXPECT_EQ(memcmp(&entry, &expected, sizeof entry), 0) << vid;
    }
}

TEST(Vlans, AreReportedWithTheirTextAndResult)
{
    Output_Capture capture;
    EXPECT_TRUE(SW_Report_Vlans("1", true));
    EXPECT_TRUE(SW_Report_Vlans("", true));
    EXPECT_FALSE(SW_Report_Vlans("10-20,30", false));
    EXPECT_EQ(capture.finish(), "VLANs: \"1\" - Ok\n"
                                "VLANs: \"\" - Ok\n"
                                "VLANs: \"10-20,30\" - Failed\n");
}

} // namespace
