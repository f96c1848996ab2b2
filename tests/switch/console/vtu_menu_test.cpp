#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <string>

namespace
{

class VtuMenu : public ConsoleSession
{
protected:
    std::string vtu(std::string_view typed) { return visit(Vtu_Setting_Menu, typed); }
};

// clang-format off
#define TWO_VLANS VTU_HEADER \
    "    5 | None       | None       | Tagged     | None       | Untagged  \n" \
    "  101 | None       | None       | None       | None       | None      \n"

const Typed_Row VIEWS[] = {
    {"Entries", "1\n0\n", VTU_MENU TWO_VLANS VTU_MENU},
    {"Status", "p\n0\n", VTU_MENU CHIP_VTU_ROWS VTU_MENU},
    {"StatusUpperCase", "P\n0\n", VTU_MENU CHIP_VTU_ROWS VTU_MENU},
    {"Apply", "a\n0\n", VTU_MENU APPLY_OK},
    {"ApplyUpperCase", "A\n0\n", VTU_MENU APPLY_OK},
    {"Enter", "\n0\n", VTU_MENU},
    {"UnknownKeys", "5\nb\n\xFF\nz\n0\n", VTU_MENU VTU_MENU VTU_MENU VTU_MENU VTU_MENU},
    {"RemoveAllAsksNothing", "3\n1\n0\n", VTU_MENU VTU_MENU "No VTU Entries\n" VTU_MENU},
    {"LeaveWithOtherCharacterBehindZero", "0x\n", VTU_MENU},
    {"LastLineWithoutLineFeed", "1", VTU_MENU TWO_VLANS VTU_MENU},
};
// clang-format on

class VtuMenuView : public VtuMenu, public testing::WithParamInterface<Typed_Row>
{
};

TEST_P(VtuMenuView, Shows)
{
    Vlan_Table_Entry *entry = define_vlan(&running_, 5);
    entry->memberTagP[WAN] = 3;
    entry->memberTagP[SFP1] = 2;
    define_vlan(&running_, 101);
    applied_ = running_;
    EXPECT_EQ(vtu(GetParam().typed), GetParam().shown);
    EXPECT_EQ(force_exit_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Keys, VtuMenuView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(VtuMenu, TwoZeroesForceTheExit)
{
    EXPECT_EQ(vtu("00\n"), VTU_MENU);
    EXPECT_EQ(force_exit_, 1U);
}

TEST_F(VtuMenu, RemoveAllZeroesTheTableAndTheCount)
{
    define_vlan(&running_, 5);
    running_.vlans[7].vtu.memberTagP[0] = 1;
    vtu("3\n0\n");
    EXPECT_EQ(std::memcmp(&running_, &applied_, sizeof running_), 0);
}

// clang-format off
#define TAG_PROMPTS(cpu, lan, wan, sfp0, sfp1) \
    "Tagging of Port CPU" TAG_CHOICES "(" cpu "):" \
    "Tagging of Port LAN" TAG_CHOICES "(" lan "):" \
    "Tagging of Port WAN" TAG_CHOICES "(" wan "):" \
    "Tagging of Port SFP0" TAG_CHOICES "(" sfp0 "):" \
    "Tagging of Port SFP1" TAG_CHOICES "(" sfp1 "):"
#define NEW_TAG_PROMPTS TAG_PROMPTS("Unmodified", "Unmodified", "Unmodified", "Unmodified", "Unmodified")
// clang-format on

TEST_F(VtuMenu, AddsAnEntryWithTheTagsOfItsChipPorts)
{
    EXPECT_EQ(vtu("2\n10\n0\n1\n2\n3\n\n0\n"), VTU_MENU "Port VID(1):" NEW_TAG_PROMPTS VTU_MENU);
    SW_Vlan_Entry wanted = {};
    wanted.vtu.vid = 10;
    wanted.vtu.memberTagP[LAN] = 1;
    wanted.vtu.memberTagP[WAN] = 2;
    wanted.vtu.memberTagP[SFP0] = 3;
    wanted.defined = 1;
    EXPECT_EQ(std::memcmp(&running_.vlans[10], &wanted, sizeof wanted), 0);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
}

/* A VLAN that does not exist starts anew, whatever a port mode has left in its slot. */
TEST_F(VtuMenu, StoresANewEntryWhenEveryAnswerIsEnter)
{
    running_.vlans[1].vtu.memberTagP[CPU] = 1;
    EXPECT_EQ(vtu("2\n\n\n\n\n\n\n0\n"), VTU_MENU "Port VID(1):" NEW_TAG_PROMPTS VTU_MENU);
    SW_Vlan_Entry wanted = {};
    wanted.vtu.vid = 1;
    wanted.defined = 1;
    EXPECT_EQ(std::memcmp(&running_.vlans[1], &wanted, sizeof wanted), 0);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
}

TEST_F(VtuMenu, ReplacesAnEntryKeepingItsVidAndTagsOnly)
{
    Vlan_Table_Entry *entry = define_vlan(&running_, 4095);
    entry->vid = 4000;
    entry->memberTagP[9] = 3;
    entry->dbNum = 7;
    entry->portStateP[2] = 1;
    entry->vidPriOverride = 1;
    entry->vidPriority = 5;
    entry->sid = 6;
    entry->vidPolicy = 1;
    EXPECT_EQ(vtu("2\n4095\n3\n\n\n\n\n0\n"),
              VTU_MENU "Port VID(1):" TAG_PROMPTS("None", "None", "None", "None", "None") VTU_MENU);
    SW_Vlan_Entry wanted = {};
    wanted.vtu.vid = 4000;
    wanted.vtu.memberTagP[CPU] = 3;
    wanted.vtu.memberTagP[LAN] = wanted.vtu.memberTagP[WAN] = 1;
    wanted.vtu.memberTagP[SFP0] = wanted.vtu.memberTagP[SFP1] = 1;
    wanted.vtu.memberTagP[9] = 3;
    wanted.defined = 1;
    EXPECT_EQ(std::memcmp(&running_.vlans[4095], &wanted, sizeof wanted), 0);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
}

TEST_F(VtuMenu, RefusesAndReadsTagsLikeTheirPrompt)
{
    EXPECT_EQ(vtu("2\n10\n4\n-1\nabc\n65537\n000000000000000002\n0\n"),
              VTU_MENU "Port VID(1):"
                       "Tagging of Port CPU" TAG_CHOICES "(Unmodified):Value out of range!\n"
                       "Tagging of Port LAN" TAG_CHOICES "(Unmodified):Value out of range!\n"
                       "Tagging of Port WAN" TAG_CHOICES "(Unmodified):"
                       "Tagging of Port SFP0" TAG_CHOICES "(Unmodified):"
                       "Tagging of Port SFP1" TAG_CHOICES "(Unmodified):" VTU_MENU);
    const uint8_t *tags = running_.vlans[10].vtu.memberTagP;
    EXPECT_EQ(tags[CPU], 0);
    EXPECT_EQ(tags[LAN], 0);
    EXPECT_EQ(tags[WAN], 0);
    EXPECT_EQ(tags[SFP0], 1);
    EXPECT_EQ(tags[SFP1], 2);
}

struct Bad_Vid {
    const char *name;
    const char *typed;
    const char *shown;
};

void PrintTo(const Bad_Vid &vid, std::ostream *out)
{
    *out << vid.name;
}

const Bad_Vid BAD_VIDS[] = {
    {"Zero", "0\n", "VID 0 out of range\n"},
    {"Letters", "abc\n", "VID 0 out of range\n"},
    {"AboveTheHighest", "4096\n", "VID 4096 out of range\n"},
    {"Negative", "-1\n", "VID 65535 out of range\n"},
    {"CutTo16Bits", "65536\n", "VID 0 out of range\n"},
};

class VtuMenuBadVid : public VtuMenu, public testing::WithParamInterface<Bad_Vid>
{
};

TEST_P(VtuMenuBadVid, AddsNothing)
{
    EXPECT_EQ(vtu(std::string("2\n") + GetParam().typed + "0\n"),
              std::string(VTU_MENU "Port VID(1):") + GetParam().shown + VTU_MENU);
    EXPECT_EQ(std::memcmp(&running_, &applied_, sizeof running_), 0);
}

INSTANTIATE_TEST_SUITE_P(Answers, VtuMenuBadVid, testing::ValuesIn(BAD_VIDS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(VtuMenu, CountsTheVidsNamedNotThoseFound)
{
    define_vlan(&running_, 101);
    define_vlan(&running_, 200);
    running_.vlans[102].vtu.memberTagP[0] = 1;
    EXPECT_EQ(vtu("4\n100-102\n0\n"),
              VTU_MENU "VLAN IDs Range(1):Removed 3 VTU Table entries\n" VTU_MENU);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
    const SW_Vlan_Entry empty = {};
    EXPECT_EQ(std::memcmp(&running_.vlans[101], &empty, sizeof empty), 0);
    EXPECT_EQ(std::memcmp(&running_.vlans[102], &empty, sizeof empty), 0);
}

TEST_F(VtuMenu, CountsAVidThatIsNamedTwiceOnce)
{
    EXPECT_EQ(vtu("4\n5,5\n4\n\n0\n"),
              VTU_MENU "VLAN IDs Range(1):Removed 1 VTU Table entries\n" VTU_MENU
                       "VLAN IDs Range(5,5):Removed 1 VTU Table entries\n" VTU_MENU);
}

TEST_F(VtuMenu, RecountsAllEntriesAfterARemoval)
{
    define_vlan(&running_, 4095);
    running_.vlanEntryCount = 77;
    EXPECT_EQ(vtu("4\n1-4094\n0\n"),
              VTU_MENU "VLAN IDs Range(1):Removed 4094 VTU Table entries\n" VTU_MENU);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
}

TEST_F(VtuMenu, RemovesNothingForABadRange)
{
    define_vlan(&running_, 1);
    EXPECT_EQ(vtu("4\n0\n4\n4096\n4\n1-\n0\n"),
              VTU_MENU "VLAN IDs Range(1):Range_Lexems_To_Vector:426: Range Error\n"
                       "ERROR: Range_Str_To_Vector(\"0\") - Failed\n" VTU_MENU
                       "VLAN IDs Range(0):Range_Lexems_To_Vector:426: Range Error\n"
                       "ERROR: Range_Str_To_Vector(\"4096\") - Failed\n" VTU_MENU
                       "VLAN IDs Range(4096):Range_Lexems_To_Vector:412: Parsing Error\n"
                       "ERROR: Range_Str_To_Vector(\"1-\") - Failed\n" VTU_MENU);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
}

TEST_F(VtuMenu, StatusFollowsTheReadAndPrintFlags)
{
    set_flags(0, 1);
    EXPECT_EQ(vtu("p\n0\n"), VTU_MENU "No VTU Entries\n" VTU_MENU);
    set_flags(1, 0);
    EXPECT_EQ(vtu("p\n0\n"), VTU_MENU VTU_MENU);
}

} // namespace
