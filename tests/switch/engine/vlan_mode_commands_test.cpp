#include "switch/engine/existing_vlans.h"
#include "switch/engine/vlan_modes.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/vlan_host.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace
{

/* The factory settings with VLANs 10, 11 and 12, of which no port is a member. */
void set_three_vlans(Vlan_Host &host)
{
    host.set_factory();
    SW_Set_Existing_Vlans(host.control(), Numbers(10, 12), false);
}

const char *const ALL_DEFAULT = "\n"
                                "Existing VLANs:10-12\n"
                                "CPU : Default (VID:1(untagged))\n"
                                "LAN : Default (VID:1(untagged))\n"
                                "WAN : Default (VID:1(untagged))\n"
                                "SFP0: Default (VID:1(untagged))\n"
                                "SFP1: Default (VID:1(untagged))\n";

/* What the commands do to the record, tried on one whose every byte shows a write. */

struct Ports_Row {
    const char *name;
    std::vector<int32_t> ports;
    std::vector<int> edited;
};

void PrintTo(const Ports_Row &row, std::ostream *out)
{
    *out << row.name;
}

const Ports_Row PORTS_ROWS[] = {
    {"None", {}, {}},
    {"First", {0}, {0}},
    {"Two", {1, 2}, {1, 2}},
    {"Unordered", {4, 0}, {0, 4}},
    {"Repeated", {3, 3, 1, 3}, {1, 3}},
    {"All", {0, 1, 2, 3, 4}, {0, 1, 2, 3, 4}},
    {"AllTwice", {0, 1, 2, 3, 4, 0, 1, 2, 3, 4}, {0, 1, 2, 3, 4}},
    {"Outside", {-1, 5, -48, INT_MIN, INT_MAX}, {}},
    {"SomeOutside", {5, 2, -1}, {2}},
};

class ModeCommand : public testing::TestWithParam<Ports_Row>
{
protected:
    /* Runs command and compares the record, but not what is printed of it. */
    void expect_edits(const std::function<void()> &command, const SW_Config &expected)
    {
        Output_Capture capture;
        command();
        EXPECT_EQ(capture.finish().substr(0, 17), "\nExisting VLANs:0");
        EXPECT_TRUE(SameConfig(host.running(), expected));
        EXPECT_TRUE(host.only_running_was_edited());
    }

    Vlan_Host host;
};

INSTANTIATE_TEST_SUITE_P(Ports, ModeCommand, testing::ValuesIn(PORTS_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_P(ModeCommand, DefaultEditsItsPorts)
{
    const auto expected = host.copy_of_running();
    for (const int port : GetParam().edited) {
        SetDefaultPort(*expected, port);
        expected->vlanPortType[port] = 1;
    }
    expect_edits([&] { SW_Set_Default_Mode(host.control(), GetParam().ports); }, *expected);
}

TEST_P(ModeCommand, AccessEditsItsPorts)
{
    for (const uint16_t vid : std::initializer_list<uint16_t>{0, 1, 100, 4095}) {
        SCOPED_TRACE(vid);
        host.set_untouched();
        const auto expected = host.copy_of_running();
        for (const int port : GetParam().edited) {
            expected->ports[port].vid = vid;
            SetAccessPort(*expected, port, std::to_string(vid).c_str());
            expected->vlanPortType[port] = 2;
            expected->accessWords[port] = 0;
        }
        expect_edits(
            [&] { EXPECT_TRUE(SW_Set_Access_Mode(host.control(), GetParam().ports, vid)); },
            *expected);
    }
}

TEST_P(ModeCommand, TrunkEditsItsPorts)
{
    const std::vector<int32_t> allowed = {20, 30, 20};
    for (const bool tagAll : {false, true}) {
        for (const uint16_t vid : std::initializer_list<uint16_t>{0, 20, 4095}) {
            SCOPED_TRACE(std::to_string(vid) + (tagAll ? ", tag all" : ""));
            host.set_untouched();
            host.running().vlans[30].defined = 0;
            const auto expected = host.copy_of_running();
            for (const int port : GetParam().edited) {
                SetTags(*expected, port, 0, 4095, 1);
                SetTags(*expected, port, 20, 20, 3);
                expected->ports[port].dot1qMode = 2;
                expected->vlanPortType[port] = 3;
                expected->ports[port].vid = vid;
                expected->ports[port].discardTagged = 0;
                expected->ports[port].egressMode = tagAll ? 2 : 1;
                SetTags(*expected, port, vid, vid, tagAll ? 3 : 2);
                SetList(*expected, port, "20,30,20");
            }
            expect_edits(
                [&] {
                    EXPECT_TRUE(SW_Set_Trunk_Mode(host.control(), GetParam().ports, vid, tagAll,
                                                  {"20,30,20", allowed}));
                },
                *expected);
        }
    }
}

/* What the commands print, whole. */

TEST(DefaultModeCommand, PrintsThePropertiesOnce)
{
    Vlan_Host host;
    set_three_vlans(host);
    host.running().ports[1].vid = 10;
    host.running().ports[1].dot1qMode = 3;
    const std::vector<int32_t> ports = {1};
    Output_Capture capture;
    SW_Set_Default_Mode(host.control(), ports);
    EXPECT_EQ(capture.finish(), ALL_DEFAULT);
}

struct Vid_Row {
    const char *name;
    uint16_t vid;
    const char *output;
};

void PrintTo(const Vid_Row &row, std::ostream *out)
{
    *out << row.name;
}

class AccessModeCommand : public testing::TestWithParam<Vid_Row>
{
};

TEST_P(AccessModeCommand, PrintsThePropertiesOnce)
{
    Vlan_Host host;
    set_three_vlans(host);
    const std::vector<int32_t> ports = {1, 2};
    Output_Capture capture;
    EXPECT_TRUE(SW_Set_Access_Mode(host.control(), ports, GetParam().vid));
    EXPECT_EQ(capture.finish(), GetParam().output);
}

const Vid_Row ACCESS_ROWS[] = {
    {"ExistingVlan", 10,
     "\n"
     "Existing VLANs:10-12\n"
     "CPU : Default (VID:1(untagged))\n"
     "LAN : Access  (VID:10(tagged))\n"
     "WAN : Access  (VID:10(tagged))\n"
     "SFP0: Default (VID:1(untagged))\n"
     "SFP1: Default (VID:1(untagged))\n"},
    {"MissingVlan", 4095,
     "\n"
     "Existing VLANs:10-12\n"
     "CPU : Default (VID:1(untagged))\n"
     "LAN : Access  (VID:4095(Warning: not exists))\n"
     "WAN : Access  (VID:4095(Warning: not exists))\n"
     "SFP0: Default (VID:1(untagged))\n"
     "SFP1: Default (VID:1(untagged))\n"},
    {"VlanOne", 1,
     "\n"
     "Existing VLANs:10-12\n"
     "CPU : Default (VID:1(untagged))\n"
     "LAN : Access  (VID:1(tagged))\n"
     "WAN : Access  (VID:1(tagged))\n"
     "SFP0: Default (VID:1(untagged))\n"
     "SFP1: Default (VID:1(untagged))\n"},
    {"VidZeroShowsAsFailed", 0,
     "\n"
     "Existing VLANs:10-12\n"
     "CPU : Default (VID:1(untagged))\n"
     "LAN : Failed  (VID:0)\n"
     "WAN : Failed  (VID:0)\n"
     "SFP0: Default (VID:1(untagged))\n"
     "SFP1: Default (VID:1(untagged))\n"},
};

INSTANTIATE_TEST_SUITE_P(Vids, AccessModeCommand, testing::ValuesIn(ACCESS_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

class RefusedVid : public testing::TestWithParam<Vid_Row>
{
};

TEST_P(RefusedVid, PrintsOneLineAndChangesNothing)
{
    const std::vector<int32_t> ports = {0, 1, 2, 3, 4};
    const std::vector<int32_t> allowed = {10};
    Vlan_Host host;
    const auto before = host.copy_of_running();
    const std::function<bool()> operations[] = {
        [&] { return SW_Vid_In_Range(GetParam().vid); },
        [&] { return SW_Set_Access_Mode(host.control(), ports, GetParam().vid); },
        [&] {
            return SW_Set_Trunk_Mode(host.control(), ports, GetParam().vid, true, {"10", allowed});
        },
    };
    for (const auto &operation : operations) {
        Output_Capture capture;
        EXPECT_FALSE(operation());
        EXPECT_EQ(capture.finish(), GetParam().output);
        EXPECT_TRUE(SameConfig(host.running(), *before));
    }
}

const Vid_Row REFUSED_ROWS[] = {
    {"FirstAboveTheLast", 4096, "VID 4096 out of range\n"},
    {"FiveThousand", 5000, "VID 5000 out of range\n"},
    {"Most", 65535, "VID 65535 out of range\n"},
};

INSTANTIATE_TEST_SUITE_P(Vids, RefusedVid, testing::ValuesIn(REFUSED_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(VidInRange, IsSilentForEveryVidThatHasAnEntry)
{
    Output_Capture capture;
    for (const uint16_t vid : std::initializer_list<uint16_t>{0, 1, 2, 4094, 4095}) {
        EXPECT_TRUE(SW_Vid_In_Range(vid)) << vid;
    }
    EXPECT_EQ(capture.finish(), "");
}

TEST(AllowedVlans, AreReportedWithTheirTextAndResult)
{
    Output_Capture capture;
    EXPECT_TRUE(SW_Report_Allowed_Vlans("10-20,30", true));
    EXPECT_TRUE(SW_Report_Allowed_Vlans("", true));
    EXPECT_FALSE(SW_Report_Allowed_Vlans("5-5", false));
    EXPECT_EQ(capture.finish(), "Allowed VLANs: \"10-20,30\" - Ok\n"
                                "Allowed VLANs: \"\" - Ok\n"
                                "Allowed VLANs: \"5-5\" - Failed\n");
}

struct Trunk_Row {
    const char *name;
    uint16_t vid;
    bool tagAll;
    const char *list;
    std::vector<int32_t> vids;
    const char *lanLine; /* without line end */
};

void PrintTo(const Trunk_Row &row, std::ostream *out)
{
    *out << row.name;
}

class TrunkModeCommand : public testing::TestWithParam<Trunk_Row>
{
};

TEST_P(TrunkModeCommand, PrintsThePropertiesOnce)
{
    const Trunk_Row &row = GetParam();
    Vlan_Host host;
    set_three_vlans(host);
    const std::vector<int32_t> ports = {1};
    Output_Capture capture;
    EXPECT_TRUE(
        SW_Set_Trunk_Mode(host.control(), ports, row.vid, row.tagAll, {row.list, row.vids}));
    EXPECT_EQ(capture.finish(), "\n"
                                "Existing VLANs:10-12\n"
                                "CPU : Default (VID:1(untagged))\n" +
                                    std::string(row.lanLine) +
                                    "\n"
                                    "WAN : Default (VID:1(untagged))\n"
                                    "SFP0: Default (VID:1(untagged))\n"
                                    "SFP1: Default (VID:1(untagged))\n");
}

const Trunk_Row TRUNK_ROWS[] = {
    {"AllowedMoreThanExist", 1, false, "10-20", Numbers(10, 20),
     "LAN : Trunk   (VID:1(untagged), Allowed:10-20 real:10-12)"},
    {"TagAll",
     11,
     true,
     "10,12",
     {10, 12},
     "LAN : Trunk   (VID:11(untagged)/(tagged), Allowed:10,12 real:10-12)"},
    {"NativeAllowed",
     11,
     false,
     "11",
     {11},
     "LAN : Trunk   (VID:11(untagged), Allowed:11 real:11)"},
    {"NativeMissing",
     20,
     false,
     "20",
     {20},
     "LAN : Trunk   (VID:20(Warning: not exists), Allowed:20 real:)"},
    {"NothingAllowed", 1, false, "", {}, "LAN : Trunk   (VID:1(untagged), Allowed: real:)"},
    {"VidZero", 0, false, "10", {10}, "LAN : Failed  (VID:0)"},
    {"AllVlansGetTheNativeOneOnly", 10, false, "1-4095", Numbers(1, 4095),
     "LAN : Trunk   (VID:10(untagged), Allowed:1-4095 real:10)"},
    {"AllButTheLast", 10, false, "1-4094", Numbers(1, 4094),
     "LAN : Trunk   (VID:10(untagged), Allowed:1-4094 real:10-12)"},
    {"ListInAnotherOrder",
     1,
     true,
     "12,10",
     {12, 10},
     "LAN : Trunk   (VID:1(untagged)/(tagged), Allowed:12,10 real:10,12)"},
};

INSTANTIATE_TEST_SUITE_P(Answers, TrunkModeCommand, testing::ValuesIn(TRUNK_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(TrunkModeCommand, LeavesTheMembershipInAllVlansToTheNextApplication)
{
    Vlan_Host host;
    const std::vector<int32_t> ports = {3};
    const auto expected = host.copy_of_running();
    SetTags(*expected, 3, 10, 10, 2);
    expected->ports[3].dot1qMode = 2;
    expected->vlanPortType[3] = 3;
    expected->ports[3].vid = 10;
    expected->ports[3].discardTagged = 0;
    expected->ports[3].egressMode = 1;
    SetList(*expected, 3, "1-4095");
    Output_Capture capture;
    EXPECT_TRUE(SW_Set_Trunk_Mode(host.control(), ports, 10, false, {"1-4095", Numbers(1, 4095)}));
    EXPECT_TRUE(SameConfig(host.running(), *expected));

    SetTags(*expected, 3, 0, 0, 1);
    SetTags(*expected, 3, 1, 4095, 3);
    SetTags(*expected, 3, 10, 10, 2);
    EXPECT_TRUE(SW_Apply_Vlan_Port_Mode(host.control(), 3, true));
    EXPECT_TRUE(SameConfig(host.running(), *expected));
    capture.finish();
}

TEST(TrunkModeCommand, TakesALongListWithRepeats)
{
    Vlan_Host host;
    host.set_factory();
    SW_Set_Existing_Vlans(host.control(), Numbers(1, 4095), false);
    std::vector<int32_t> vids = Numbers(1, 4095);
    const std::vector<int32_t> again = Numbers(1, 4095);
    vids.insert(vids.end(), again.begin(), again.end());
    const std::vector<int32_t> ports = {2};
    Output_Capture capture;
    EXPECT_TRUE(SW_Set_Trunk_Mode(host.control(), ports, 1, true, {"1-4095,1-4095", vids}));
    EXPECT_EQ(capture.finish(),
              "\n"
              "Existing VLANs:1-4095\n"
              "CPU : Default (VID:1(untagged))\n"
              "LAN : Default (VID:1(untagged))\n"
              "WAN : Trunk   (VID:1(untagged)/(tagged), Allowed:1-4095,1-4095 real:1-4095)\n"
              "SFP0: Default (VID:1(untagged))\n"
              "SFP1: Default (VID:1(untagged))\n");
}

TEST(TrunkModeCommand, MayTakeItsTextFromAPortOfTheRange)
{
    Vlan_Host host;
    set_three_vlans(host);
    SetList(host.running(), 1, "10-12");
    const std::vector<int32_t> ports = {1, 2};
    Output_Capture capture;
    EXPECT_TRUE(SW_Set_Trunk_Mode(host.control(), ports, 1, false,
                                  {host.running().vlanPortList[1], Numbers(10, 12)}));
    EXPECT_EQ(capture.finish(), "\n"
                                "Existing VLANs:10-12\n"
                                "CPU : Default (VID:1(untagged))\n"
                                "LAN : Trunk   (VID:1(untagged), Allowed:10-12 real:10-12)\n"
                                "WAN : Trunk   (VID:1(untagged), Allowed:10-12 real:10-12)\n"
                                "SFP0: Default (VID:1(untagged))\n"
                                "SFP1: Default (VID:1(untagged))\n");
}

TEST(TrunkModeCommand, RefusesATextLongerThanItsFieldWithoutAChange)
{
    const std::vector<int32_t> ports = {1, 2};
    const std::vector<int32_t> allowed = {10};
    Vlan_Host host;
    const auto before = host.copy_of_running();
    Output_Capture capture;
    EXPECT_FALSE(
        SW_Set_Trunk_Mode(host.control(), ports, 10, true, {std::string(100, '1'), allowed}));
    EXPECT_EQ(capture.finish(), "");
    EXPECT_TRUE(SameConfig(host.running(), *before));
}

TEST(TrunkModeCommand, TakesATextThatFillsItsField)
{
    const std::string text = "10," + std::string(94, '0') + "10";
    ASSERT_EQ(text.size(), 99U);
    const std::vector<int32_t> ports = {1};
    const std::vector<int32_t> allowed = {10, 10};
    Vlan_Host host;
    Output_Capture capture;
    EXPECT_TRUE(SW_Set_Trunk_Mode(host.control(), ports, 10, true, {text, allowed}));
    capture.finish();
    EXPECT_EQ(host.running().vlanPortList[1], text);
}

} // namespace
