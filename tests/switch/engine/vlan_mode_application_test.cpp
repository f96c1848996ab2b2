#include "switch/engine/existing_vlans.h"
#include "switch/engine/vlan_modes.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/vlan_host.h"

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace
{

struct Applied {
    bool result;
    std::string output;
};

Applied apply_mode(Vlan_Host &host, int port, bool log)
{
    Output_Capture capture;
    const bool result = SW_Apply_Vlan_Port_Mode(host.control(), port, log);
    return {result, capture.finish()};
}

/* Applies the mode of port and compares what is printed and the whole record. */
void expect_applied(Vlan_Host &host, int port, bool log, const SW_Config &expected,
                    const std::string &output)
{
    const Applied applied = apply_mode(host, port, log);
    EXPECT_TRUE(applied.result);
    EXPECT_EQ(applied.output, output);
    EXPECT_TRUE(SameConfig(host.running(), expected));
    EXPECT_TRUE(host.only_running_was_edited());
}

std::string name_of_port_and_log(int port, bool log)
{
    return "port " + std::to_string(port) + (log ? " with log" : " without log");
}

/* Access */

struct Access_Row {
    const char *name;
    uint16_t vid;
    const char *list;
};

void PrintTo(const Access_Row &row, std::ostream *out)
{
    *out << row.name;
}

class AccessModeApplication : public testing::TestWithParam<Access_Row>
{
};

TEST_P(AccessModeApplication, MakesThePortAnUntaggedMemberOfItsVlanOnly)
{
    const Access_Row &row = GetParam();
    Vlan_Host host;
    for (int port = 0; port < 5; port++) {
        for (const bool log : {false, true}) {
            SCOPED_TRACE(name_of_port_and_log(port, log));
            host.set_untouched();
            host.running().vlanPortType[port] = 2;
            host.running().ports[port].vid = row.vid;
            const auto expected = host.copy_of_running();
            SetAccessPort(*expected, port, row.list);
            expect_applied(host, port, log, *expected, "");
        }
    }
}

const Access_Row ACCESS_ROWS[] = {
    {"VidZero", 0, "0"},
    {"VidOne", 1, "1"},
    {"VidTen", 10, "10"},
    {"VidOneBelowTheLast", 4094, "4094"},
    {"LastVid", 4095, "4095"},
    {"FirstVidWithoutEntry", 4096, "4096"},
    {"VidFromAFile", 5000, "5000"},
    {"MostVid", 65535, "65535"},
};

INSTANTIATE_TEST_SUITE_P(Vids, AccessModeApplication, testing::ValuesIn(ACCESS_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

/* Trunk */

struct Vid_Run {
    int first;
    int last;
};

struct Trunk_Row {
    const char *name;
    const char *list;
    std::vector<Vid_Run> tagged;
    uint16_t vid;
    uint32_t egressMode;
    uint32_t egressModeAfter;
    int nativeTag; /* 0: the native VLAN has no entry */
};

void PrintTo(const Trunk_Row &row, std::ostream *out)
{
    *out << row.name;
}

class TrunkModeApplication : public testing::TestWithParam<Trunk_Row>
{
};

TEST_P(TrunkModeApplication, MakesThePortATaggedMemberOfAllListedVlans)
{
    const Trunk_Row &row = GetParam();
    Vlan_Host host;
    for (int port = 0; port < 5; port++) {
        for (const uint8_t defined : std::initializer_list<uint8_t>{0, 1}) {
            SCOPED_TRACE(std::to_string(port) + (defined != 0 ? ", VLANs exist" : ", no VLANs"));
            host.set_untouched();
            for (SW_Vlan_Entry &entry : host.running().vlans) {
                entry.defined = defined;
            }
            host.running().vlanPortType[port] = 3;
            host.running().ports[port].vid = row.vid;
            host.running().ports[port].egressMode = row.egressMode;
            SetList(host.running(), port, row.list);
            const auto expected = host.copy_of_running();
            SetTags(*expected, port, 0, 4095, 1);
            for (const Vid_Run &run : row.tagged) {
                SetTags(*expected, port, run.first, run.last, 3);
            }
            if (row.nativeTag != 0) {
                SetTags(*expected, port, row.vid, row.vid, static_cast<uint8_t>(row.nativeTag));
            }
            expected->ports[port].dot1qMode = 2;
            expected->ports[port].discardTagged = 0;
            expected->ports[port].egressMode = row.egressModeAfter;
            expect_applied(host, port, false, *expected, "");
        }
    }
}

const Trunk_Row TRUNK_ROWS[] = {
    {"UnmodifiedEgressBecomesUntagged", "10-20", {{10, 20}}, 5, 0, 1, 2},
    {"UntaggedEgressStays", "10-20", {{10, 20}}, 5, 1, 1, 2},
    {"TaggedEgressStaysAndTagsTheNativeVlan", "10-20", {{10, 20}}, 5, 2, 2, 3},
    {"AddTagBecomesUntagged", "10-20", {{10, 20}}, 5, 3, 1, 2},
    {"UnknownEgressStays", "10-20", {{10, 20}}, 5, 4, 4, 2},
    {"NegativeEgressStays", "10-20", {{10, 20}}, 5, 4294967295U, 4294967295U, 2},
    {"NativeVlanInTheListIsUntagged", "10-20", {{10, 20}}, 12, 1, 1, 2},
    {"NativeVlanInTheListIsTaggedWithTaggedEgress", "10-20", {{10, 20}}, 12, 2, 2, 3},
    {"EmptyListLeavesTheNativeVlan", "", {}, 7, 1, 1, 2},
    {"OneVlan", "4095", {{4095, 4095}}, 1, 1, 1, 2},
    {"RepeatedVlans", "10,10,9-11,10", {{9, 11}}, 1, 1, 1, 2},
    {"UnorderedVlans", "300,20-22,1", {{300, 300}, {20, 22}, {1, 1}}, 21, 1, 1, 2},
    {"AllVlans", "1-4095", {{1, 4095}}, 1, 1, 1, 2},
    {"AllVlansTwice", "1-4095,1-4095", {{1, 4095}}, 4095, 2, 2, 3},
    {"NativeVidZero", "10", {{10, 10}}, 0, 1, 1, 2},
    {"NativeVidLast", "10", {{10, 10}}, 4095, 1, 1, 2},
    {"NativeVidWithoutEntry", "10", {{10, 10}}, 4096, 1, 1, 0},
    {"NativeVidFromAFile", "10", {{10, 10}}, 5000, 2, 2, 0},
    {"NativeVidMost", "10", {{10, 10}}, 65535, 0, 1, 0},
};

INSTANTIATE_TEST_SUITE_P(Lists, TrunkModeApplication, testing::ValuesIn(TRUNK_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(TrunkModeApplication, TakesAListOfNinetyNineCharacters)
{
    const std::string list =
        "1-9,11,13,15,17,19,21,23,25,27,29,31,33,35,37,39,41,43,45,47,49,51,53,"
        "55,57,59,61,63,65,67,101,4094";
    ASSERT_EQ(list.size(), 99U);
    Vlan_Host host;
    host.running().vlanPortType[3] = 3;
    host.running().ports[3].vid = 10;
    host.running().ports[3].egressMode = 1;
    SetList(host.running(), 3, list.c_str());
    const auto expected = host.copy_of_running();
    SetTags(*expected, 3, 0, 4095, 1);
    SetTags(*expected, 3, 1, 9, 3);
    for (int vid = 11; vid <= 67; vid += 2) {
        SetTags(*expected, 3, vid, vid, 3);
    }
    SetTags(*expected, 3, 101, 101, 3);
    SetTags(*expected, 3, 4094, 4094, 3);
    SetTags(*expected, 3, 10, 10, 2);
    expected->ports[3].dot1qMode = 2;
    expected->ports[3].discardTagged = 0;
    expect_applied(host, 3, true, *expected, "");
}

struct Bad_List_Row {
    const char *name;
    const char *list;
    const char *output;
};

void PrintTo(const Bad_List_Row &row, std::ostream *out)
{
    *out << row.name;
}

class BadTrunkList : public testing::TestWithParam<Bad_List_Row>
{
};

TEST_P(BadTrunkList, KeepsAllSettingsAtApplication)
{
    Vlan_Host host;
    for (int port = 0; port < 5; port++) {
        for (const bool log : {false, true}) {
            SCOPED_TRACE(name_of_port_and_log(port, log));
            host.set_untouched();
            host.running().vlanPortType[port] = 3;
            SetList(host.running(), port, GetParam().list);
            expect_applied(host, port, log, *host.copy_of_running(), GetParam().output);
        }
    }
}

const Bad_List_Row BAD_LIST_ROWS[] = {
    {"VidZero", "0", "Failed ('0')\n"},
    {"VidAboveTheLast", "4096", "Failed ('4096')\n"},
    {"RangeAboveTheLast", "1-4096", "Failed ('4096')\n"},
    {"RangeOfOne", "5-5", "Failed ('5')\n"},
    {"RangeBackwards", "7-3", "Failed ('3')\n"},
    {"CommaAtTheEnd", "10,", "Failed ('<cr>')\n"},
    {"MinusAtTheEnd", "10-", "Failed ('<cr>')\n"},
    {"Blank", "10, 11", "Failed (' ')\n"},
    {"BlankInFront", " 10", "Failed (' ')\n"},
    {"Letter", "abc", "Failed ('a')\n"},
    {"TwoCommas", "10,,11", "Failed (',')\n"},
    {"WrappedNumber", "4294967297", "Failed ('2147483647')\n"},
    {"BadBehindGoodVlans", "10-20,30,x", "Failed ('x')\n"},
};

INSTANTIATE_TEST_SUITE_P(Lists, BadTrunkList, testing::ValuesIn(BAD_LIST_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

/* Default and the others */

TEST(DefaultModeApplication, LeavesAllVlansAndResetsTheVid)
{
    Vlan_Host host;
    for (int port = 0; port < 5; port++) {
        for (const uint16_t vid :
             std::initializer_list<uint16_t>{0, 1, 100, 4095, 4096, 5000, 65535}) {
            SCOPED_TRACE(name_of_port_and_log(port, true) + ", VID " + std::to_string(vid));
            host.set_untouched();
            host.running().vlanPortType[port] = 1;
            host.running().ports[port].vid = vid;
            const auto expected = host.copy_of_running();
            SetDefaultPort(*expected, port);
            expect_applied(host, port, true, *expected, "");
        }
    }
}

TEST(OtherModeApplication, LeavesThePortAlone)
{
    Vlan_Host host;
    for (int port = 0; port < 5; port++) {
        for (const uint32_t type : {0U, 4U, 5U, 256U, 258U, 4294967295U}) {
            SCOPED_TRACE(name_of_port_and_log(port, false) + ", type " + std::to_string(type));
            host.set_untouched();
            host.running().vlanPortType[port] = type;
            expect_applied(host, port, false, *host.copy_of_running(), "");
        }
    }
}

TEST(ModeApplication, OfAPortOutsideTheBoardDoesNothing)
{
    Vlan_Host host;
    /* The words around the port types: the last range text and the first word of the area behind.
     */
    for (uint32_t &type : host.running().vlanPortType) {
        type = 2;
    }
    for (const int port : {-1, 5, 6, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(port);
        expect_applied(host, port, true, *host.copy_of_running(), "");
    }
}

TEST(ModesApplication, TakesEveryPortByItsOwnType)
{
    for (const bool log : {false, true}) {
        Vlan_Host host;
        const uint32_t types[] = {1, 2, 3, 3, 4};
        for (int port = 0; port < 5; port++) {
            host.running().vlanPortType[port] = types[port];
            host.running().ports[port].vid = 30;
            host.running().ports[port].egressMode = 2;
        }
        SetList(host.running(), 2, "29-31");
        SetList(host.running(), 3, "29-");
        const auto expected = host.copy_of_running();
        SetDefaultPort(*expected, 0);
        SetAccessPort(*expected, 1, "30");
        SetTags(*expected, 2, 0, 4095, 1);
        SetTags(*expected, 2, 29, 31, 3);
        expected->ports[2].dot1qMode = 2;
        expected->ports[2].discardTagged = 0;

        Output_Capture capture;
        EXPECT_TRUE(SW_Apply_Vlan_Port_Modes(host.control(), log));
        EXPECT_EQ(capture.finish(), "Failed ('<cr>')\n");
        EXPECT_TRUE(SameConfig(host.running(), *expected));
        EXPECT_TRUE(host.only_running_was_edited());
    }
}

TEST(ModesApplication, GivesPortsBackTheirMembershipInNewVlans)
{
    Vlan_Host host;
    host.set_factory();
    Output_Capture capture;
    const std::vector<int32_t> lan = {1};
    const std::vector<int32_t> wan = {2};
    const std::vector<int32_t> allowed = Numbers(10, 20);
    SW_Set_Access_Mode(host.control(), lan, 10);
    SW_Set_Trunk_Mode(host.control(), wan, 1, false, {"10-20", allowed});
    SW_Set_Existing_Vlans(host.control(), Numbers(10, 12), true);
    SW_Apply_Vlan_Port_Modes(host.control(), true);
    capture.finish();

    EXPECT_EQ(host.running().vlanEntryCount, 3U);
    for (int vid = 0; vid < 4096; vid++) {
        SCOPED_TRACE(vid);
        const SW_Vlan_Entry &entry = host.running().vlans[vid];
        EXPECT_EQ(entry.defined, vid >= 10 && vid <= 12 ? 1 : 0);
        EXPECT_EQ(entry.vtu.vid, entry.defined == 1 ? vid : 0);
        EXPECT_EQ(entry.vtu.memberTagP[CHIP_PORTS[1]], vid == 10 ? 2 : 1);
        const int trunkTag = vid >= 10 && vid <= 20 ? 3 : 1;
        EXPECT_EQ(entry.vtu.memberTagP[CHIP_PORTS[2]], vid == 1 ? 2 : trunkTag);
        for (const int port : {0, 3, 4}) {
            EXPECT_EQ(entry.vtu.memberTagP[CHIP_PORTS[port]], 1);
        }
    }
}

} // namespace
