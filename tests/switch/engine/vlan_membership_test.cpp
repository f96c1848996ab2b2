#include "switch/engine/vlan_membership.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/vlan_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <ostream>
#include <string>
#include <vector>

namespace
{

struct Members_Row {
    const char *name;
    std::vector<int32_t> vids;
    std::vector<int> tagged;
    const char *printed;
};

void PrintTo(const Members_Row &row, std::ostream *out)
{
    *out << row.name;
}

class TrunkMembership : public testing::TestWithParam<Members_Row>
{
protected:
    /* VLANs 5, 10, 11, 12 and 4095 exist, and entry 0 claims to. */
    TrunkMembership()
    {
        for (SW_Vlan_Entry &entry : host.running().vlans) {
            entry.defined = 0;
        }
        for (const int vid : {0, 5, 10, 11, 12, 4095}) {
            host.running().vlans[vid].defined = 1;
        }
    }

    void expect_membership(bool print, const std::string &printed)
    {
        for (int port = 0; port < 5; port++) {
            SCOPED_TRACE(port);
            const auto expected = host.copy_of_running();
            SetTags(*expected, port, 0, 4095, 1);
            for (const int vid : GetParam().tagged) {
                SetTags(*expected, port, vid, vid, 3);
            }
            Output_Capture capture;
            SW_Set_Trunk_Membership(host.control(), port, GetParam().vids, print);
            EXPECT_EQ(capture.finish(), printed);
            EXPECT_TRUE(SameConfig(host.running(), *expected));
            EXPECT_TRUE(host.only_running_was_edited());
        }
    }

    Vlan_Host host;
};

TEST_P(TrunkMembership, IsInTheListedVlansThatExist)
{
    expect_membership(false, "");
}

TEST_P(TrunkMembership, IsPrintedWhenAsked)
{
    expect_membership(true, GetParam().printed);
}

const Members_Row MEMBERS_ROWS[] = {
    {"EmptyList", {}, {}, "<none>\n"},
    {"NoneExists", {1, 9, 13, 4094}, {}, "<none>\n"},
    {"OneExists", {10}, {10}, " 10\n"},
    {"SomeExist", {9, 10, 11, 12, 13}, {10, 11, 12}, " 10 11 12\n"},
    {"OrderOfTheList", {4095, 5, 10}, {5, 10, 4095}, " 4095 5 10\n"},
    {"Repeats", {10, 10, 5, 10}, {5, 10}, " 10 10 5 10\n"},
    {"Ends", {0, 4095}, {0, 4095}, " 0 4095\n"},
    {"WithoutEntry", {-1, 4096, 5000, 65535, 65541, INT_MAX, INT_MIN}, {}, "<none>\n"},
    {"All", Numbers(1, 4095), {5, 10, 11, 12, 4095}, " 5 10 11 12 4095\n"},
};

INSTANTIATE_TEST_SUITE_P(Lists, TrunkMembership, testing::ValuesIn(MEMBERS_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(TrunkMembershipPort, OutsideTheBoardDoesNothing)
{
    const std::vector<int32_t> vids = {10};
    Vlan_Host host;
    const auto before = host.copy_of_running();
    Output_Capture capture;
    for (const int port : {-1, 5, INT_MIN, INT_MAX}) {
        SW_Set_Trunk_Membership(host.control(), port, vids, true);
    }
    EXPECT_EQ(capture.finish(), "");
    EXPECT_TRUE(SameConfig(host.running(), *before));
}

TEST(AllVlans, AreEachOf1To4095OnceInAnyOrder)
{
    std::vector<int32_t> vids = Numbers(1, 4095);
    EXPECT_TRUE(SW_Is_All_Vlans(vids));
    std::reverse(vids.begin(), vids.end());
    EXPECT_TRUE(SW_Is_All_Vlans(vids));
    std::rotate(vids.begin(), vids.begin() + 1000, vids.end());
    EXPECT_TRUE(SW_Is_All_Vlans(vids));
}

/* The numbers 1 to 4095 with the one at a place replaced. */
std::vector<int32_t> all_but(size_t place, int32_t replacement)
{
    std::vector<int32_t> vids = Numbers(1, 4095);
    vids[place] = replacement;
    return vids;
}

std::vector<int32_t> all_and(int32_t more)
{
    std::vector<int32_t> vids = Numbers(1, 4095);
    vids.push_back(more);
    return vids;
}

struct Not_All_Row {
    const char *name;
    std::vector<int32_t> vids;
};

void PrintTo(const Not_All_Row &row, std::ostream *out)
{
    *out << row.name;
}

class NotAllVlans : public testing::TestWithParam<Not_All_Row>
{
};

TEST_P(NotAllVlans, IsANearMiss)
{
    EXPECT_FALSE(SW_Is_All_Vlans(GetParam().vids));
}

const Not_All_Row NOT_ALL_ROWS[] = {
    {"Empty", {}},
    {"FirstMissing", Numbers(2, 4095)},
    {"LastMissing", Numbers(1, 4094)},
    {"ZeroToo", Numbers(0, 4095)},
    {"ZeroForTheLast", Numbers(0, 4094)},
    {"ZeroForTheFirst", all_but(0, 0)},
    {"OneAboveForTheFirst", Numbers(2, 4096)},
    {"RepeatForTheFirst", all_but(0, 2)},
    {"RepeatForTheLast", all_but(4094, 1)},
    {"RepeatForOneBetween", all_but(2000, 7)},
    {"RepeatToo", all_and(4095)},
    {"ZeroAtTheEndToo", all_and(0)},
    {"OneAboveToo", all_and(4096)},
    {"NegativeForTheLast", all_but(4094, -1)},
    {"SixteenBitWrapForTheFirst", all_but(0, 65537)},
    {"TwelveBitWrapForTheFirst", all_but(0, 4097)},
    {"MostForTheFirst", all_but(0, INT_MAX)},
    {"LeastForTheFirst", all_but(0, INT_MIN)},
};

INSTANTIATE_TEST_SUITE_P(Lists, NotAllVlans, testing::ValuesIn(NOT_ALL_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
