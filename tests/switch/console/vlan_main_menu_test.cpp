#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <string>

namespace
{

class VlanMainMenu : public ConsoleSession
{
protected:
    std::string vlan(std::string_view typed, bool load = false)
    {
        return enter(Vlan_Main_Menu, typed, load);
    }
};

// clang-format off
#define CONFIG_VIEW \
    VTU_TITLE "No VTU Entries\n" VLAN_TITLE VLAN_HEADER FACTORY_VLAN_ROWS FACTORY_VLAN_SUMMARY
/* The priority settings are not read by this view: zero. */
#define STATUS_VIEW \
    VTU_TITLE CHIP_VTU_ROWS VLAN_TITLE VLAN_HEADER CHIP_VLAN_ROWS \
    "\nExisting VLANs:1,10,4095\n" \
    "CPU : Default (VID:1(untagged))\n" \
    "LAN : Trunk   (VID:4095(tagged)/(tagged), Allowed: 1-4095 (ALL)) QOS:0 - Custom\n" \
    "WAN : Trunk   (VID:100(Warning: not exists), Allowed: real:10,4095) QOS:0 - Custom\n" \
    "SFP0: Access  (VID:4094(Warning: not exists)) QOS:0 - Custom\n" \
    "SFP1: Failed  (VID:0)\n"
#define DEFAULT_LINE(name) name ": Default (VID:1(untagged))\n"
#define SUMMARY(cpu, lan, wan, sfp0, sfp1) "\nExisting VLANs:<none>\n" cpu lan wan sfp0 sfp1

const Typed_Row VIEWS[] = {
    {"Leave", "0\n", ""},
    {"LeaveWithOtherCharacterBehindZero", "0x\n", ""},
    {"Config", "1\n0\n", CONFIG_VIEW},
    {"Status", "p\n0\n", STATUS_VIEW},
    {"StatusUpperCase", "P\n0\n", STATUS_VIEW},
    {"RemoveAll", "3\n0\n", ""},
    {"Properties", "g\n0\n", FACTORY_VLAN_SUMMARY},
    {"Apply", "a\n0\n", APPLY_OK},
    {"ApplyUpperCase", "A\n0\n", APPLY_OK},
    {"Enter", "\n0\n", VLAN_MAIN_MENU},
    {"NoKeyTwo", "2\n0\n", VLAN_MAIN_MENU},
    {"UpperCaseOfLowerCaseKeys", "C\nV\nB\nN\nM\nG\nZ\nX\n0\n",
     VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU
     VLAN_MAIN_MENU},
    {"UnknownKeys", "4\nt\ny\n\xFF\n0\n", VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU VLAN_MAIN_MENU},
    {"LastLineWithoutLineFeed", "g", FACTORY_VLAN_SUMMARY},
    {"SetVlans", "z\n10-12\n0\n", "VLAN Range(1):VLANs: \"10-12\" - Ok\n   10   11   12\n"},
    {"SetVlansSixteenToALine", "z\n1-17\n0\n", "VLAN Range(1):VLANs: \"1-17\" - Ok\n"
     "    1    2    3    4    5    6    7    8    9   10   11   12   13   14   15   16\n   17\n"},
    {"SetVlansAsTyped", "z\n4095,7,7\n0\n", "VLAN Range(1):VLANs: \"4095,7,7\" - Ok\n 4095    7    7\n"},
    {"SetVlansOfABadRange", "z\n0\n0\n",
     "VLAN Range(1):Failed ('0')\nRange: 0 - bad value\nVLANs: \"1\" - Failed\n"},
    {"SetVlansOfLetters", "z\nabc\n0\n",
     "VLAN Range(1):Failed ('a')\nRange: abc - bad value\nVLANs: \"1\" - Failed\n"},
    {"SetVlansKeepsTheRange", "z\n5\nz\n\n0\n",
     "VLAN Range(1):VLANs: \"5\" - Ok\n    5\nVLAN Range(5):VLANs: \"5\" - Ok\n    5\n"},
    {"RemoveVlansStartsFromOne", "z\n1-3\nx\n\n0\n", "VLAN Range(1):VLANs: \"1-3\" - Ok\n    1    2    3\n"
     "VLAN Range(1):VLANs: \"1\" - Ok\n    1\n"},
    {"RemoveVlansPrintsThoseThatExisted", "z\n10-12\nx\n11-20\nz\n\n0\n",
     "VLAN Range(1):VLANs: \"10-12\" - Ok\n   10   11   12\nVLAN Range(1):VLANs: \"11-20\" - Ok\n   11   12\n"
     "VLAN Range(11-20):VLANs: \"11-20\" - Ok\n   11   12   13   14   15   16   17   18   19   20\n"},
    {"RemoveVlansThatDoNotExist", "x\n5\n0\n", "VLAN Range(1):VLANs: \"5\" - Ok\n\n"},
    {"RemoveVlansOfABadRange", "x\n7-3\n0\n",
     "VLAN Range(1):Failed ('3')\nRange: 7-3 - bad value\nVLANs: \"1\" - Failed\n"},
    {"Access", "c\n1-2\n20\n0\n", "Ports Range(0):Port VID(1):" SUMMARY(DEFAULT_LINE("CPU "),
     "LAN : Access  (VID:20(Warning: not exists))\n", "WAN : Access  (VID:20(Warning: not exists))\n",
     DEFAULT_LINE("SFP0"), DEFAULT_LINE("SFP1"))},
    {"AccessWithTheDefaultVid", "c\n4\n\n0\n", "Ports Range(0):Port VID(1):" SUMMARY(DEFAULT_LINE("CPU "),
     DEFAULT_LINE("LAN "), DEFAULT_LINE("WAN "), DEFAULT_LINE("SFP0"), "SFP1: Access  (VID:1(tagged))\n")},
    {"AccessWithVidZero", "c\n\n0\n0\n", "Ports Range(0):Port VID(1):" SUMMARY("CPU : Failed  (VID:0)\n",
     DEFAULT_LINE("LAN "), DEFAULT_LINE("WAN "), DEFAULT_LINE("SFP0"), DEFAULT_LINE("SFP1"))},
    {"AccessOfNoPort", "c\n,\n5\n0\n", "Ports Range(0):Port VID(1):" FACTORY_VLAN_SUMMARY},
    {"AccessRefusesAVid", "c\n1\n4096\n0\n", "Ports Range(0):Port VID(1):VID 4096 out of range\n"},
    {"AccessRefusesANegativeVid", "c\n1\n-1\n0\n", "Ports Range(0):Port VID(1):VID 65535 out of range\n"},
    {"AccessRefusesPorts", "c\n5\n0\n",
     "Ports Range(0):Int_Range_To_Int_List:813: - Failed\nRange: 5 - bad value\n"},
    {"Trunk", "v\n3\n10\ny\n10-20,30\n0\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Allowed VLANs: \"10-20,30\" - Ok\n" SUMMARY(DEFAULT_LINE("CPU "), DEFAULT_LINE("LAN "),
     DEFAULT_LINE("WAN "), "SFP0: Trunk   (VID:10(Warning: not exists), Allowed:10-20,30 real:)\n",
     DEFAULT_LINE("SFP1"))},
    {"TrunkWithDefaults", "v\n\n\n\n\n0\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Allowed VLANs: \"1\" - Ok\n" SUMMARY("CPU : Trunk   (VID:1(untagged), Allowed:1 real:)\n",
     DEFAULT_LINE("LAN "), DEFAULT_LINE("WAN "), DEFAULT_LINE("SFP0"), DEFAULT_LINE("SFP1"))},
    {"TrunkRefusesAVidAtOnce", "v\n1\n4096\n0\n", "Ports Range(0):Port VID(1):VID 4096 out of range\n"},
    {"TrunkRefusesItsList", "v\n1\n10\nn\n1-\n0\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Failed ('<cr>')\nRange: 1- - bad value\nAllowed VLANs: \"1\" - Failed\n"},
    {"TrunkRefusesPorts", "v\n12\n0\n",
     "Ports Range(0):Int_Range_To_Int_List:835: - Failed (c2: '2' 0x32)\nRange: 12 - bad value\n"},
    {"Default", "b\n0-4\n0\n", "Ports Range(0):" FACTORY_VLAN_SUMMARY},
    {"DefaultRefusesPorts", "b\nx\n0\n",
     "Ports Range(0):Int_Range_To_Int_List:813: - Failed\nRange: x - bad value\n"},
    {"Tdm", "n\n7\n0\n", "TDM prio(0-7)(0):" FACTORY_VLAN_SUMMARY},
    {"TdmRefusesEight", "n\n8\n0\n", "TDM prio(0-7)(0):TDM prio 8 out of range\n"},
    {"TdmIsNotCutTo8Bits", "n\n263\n0\n", "TDM prio(0-7)(0):TDM prio 263 out of range\n"},
    {"TdmRefusesNegative", "n\n-1\n0\n", "TDM prio(0-7)(0):TDM prio 65535 out of range\n"},
    {"DefaultTdm", "m\ny\n0\n", "Set Default TDM QOS Mode?(y/n)(no):" FACTORY_VLAN_SUMMARY},
    {"DefaultTdmCancelledShowsTheSummaryToo", "m\n\n0\n",
     "Set Default TDM QOS Mode?(y/n)(no):" FACTORY_VLAN_SUMMARY},
    {"OverLongAnswerIsTheNextKey", "n\n000000000000000002g\n0\n",
     "TDM prio(0-7)(0):" FACTORY_VLAN_SUMMARY FACTORY_VLAN_SUMMARY},
    {"Load", "l\ny\n0\n", "Load Startup Config To Running Config?(y/n)(no):"
     "Switch: Load Startup Config To Running Config - Failed\n"},
    {"LoadUpperCaseCancelled", "L\n\n0\n", "Load Startup Config To Running Config?(y/n)(no):"},
    {"Factory", "d\ny\n0\n", "Set Factory Settings?(y/n)(no):Switch: Factory Settings\n"},
    {"FactoryUpperCaseCancelled", "D\nn\n0\n", "Set Factory Settings?(y/n)(no):"},
    {"ReInit", "r\ny\n0\n", "Switch ReInit?(y/n)(no):" REINIT_TEXT},
    {"ReInitUpperCaseCancelled", "R\n\n0\n", "Switch ReInit?(y/n)(no):"},
};
// clang-format on

class VlanMainMenuView : public VlanMainMenu, public testing::WithParamInterface<Typed_Row>
{
};

TEST_P(VlanMainMenuView, Shows)
{
    EXPECT_EQ(vlan(GetParam().typed), std::string(VLAN_MAIN_MENU) + GetParam().shown);
    EXPECT_EQ(force_exit_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Keys, VlanMainMenuView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(VlanMainMenu, TwoZeroesForceTheExit)
{
    EXPECT_EQ(vlan("00\n"), VLAN_MAIN_MENU);
    EXPECT_EQ(force_exit_, 1U);
}

TEST_F(VlanMainMenu, StatusFollowsTheReadAndPrintFlags)
{
    set_flags(1, 0);
    EXPECT_EQ(vlan("p\n0\n"), VLAN_MAIN_MENU);
    set_flags(0, 1);
    EXPECT_EQ(vlan("p\n0\n"), VLAN_MAIN_MENU STATUS_VIEW);
}

TEST_F(VlanMainMenu, SavesToItsFileAndShowsTheBanners)
{
    const Temporary_Folder folder;
    use_startup_file(folder.write("startup.cfg", StartupFileText(running_)));
    EXPECT_EQ(vlan("n\n5\n\nS\n\n0\n", true),
              "Switch: Load SW Config from \"" + path_ + "\" - Ok\n" +
                  VLAN_MAIN_MENU
                  "TDM prio(0-7)(0):" FACTORY_VLAN_SUMMARY MAIN_TITLE NOT_APPLIED NOT_SAVED
                  "\n" VLAN_KEYS "Save to \"" +
                  path_ + "\" - Ok\n" MAIN_TITLE NOT_APPLIED "\n" VLAN_KEYS);
    EXPECT_EQ(folder.read("startup.cfg"), StartupFileText(running_));
}

TEST_F(VlanMainMenu, TdmChangesThePrioritiesOfAllPortsAndTheCpuPort)
{
    wan().portPrio = 3;
    vlan("n\n5\n0\n");
    for (int port = 0; port < SW_PORTS; port++) {
        EXPECT_EQ(running_.ports[port].prioMapRule, 0U);
        EXPECT_EQ(running_.ports[port].portPrio, port == 0 ? 5 : 0);
    }
    vlan("m\ny\n0\n");
    EXPECT_EQ(running_.ports[0].prioMapRule, 1U);
    EXPECT_EQ(running_.ports[0].portPrio, 0);
}

TEST_F(VlanMainMenu, RemoveAllEmptiesTheTable)
{
    define_vlan(&running_, 5);
    vlan("3\n0\n");
    EXPECT_EQ(std::memcmp(&running_, &applied_, sizeof running_), 0);
}

/* The access port comes back as untagged member, the trunk as tagged one of all that it lists. */
TEST_F(VlanMainMenu, PortsRegainTheirMembershipWhenTheVlansAreSet)
{
    vlan("c\n1\n10\nv\n3\n10\nn\n10-20\nz\n10-12\n0\n");
    EXPECT_EQ(running_.vlanEntryCount, 3U);
    EXPECT_EQ(running_.vlans[10].vtu.memberTagP[LAN], 2);
    EXPECT_EQ(running_.vlans[10].vtu.memberTagP[SFP0], 2);
    EXPECT_EQ(running_.vlans[12].vtu.memberTagP[SFP0], 3);
    EXPECT_EQ(running_.vlans[20].vtu.memberTagP[SFP0], 3);
    EXPECT_EQ(running_.vlans[20].defined, 0);
}

TEST_F(VlanMainMenu, PortModesAreAppliedEvenAfterABadRange)
{
    lan().vid = 7;
    vlan("z\nabc\n0\n");
    EXPECT_EQ(lan().vid, 1);
}

TEST_F(VlanMainMenu, RemovingVlansDoesNotApplyThePortModes)
{
    lan().vid = 7;
    vlan("x\n7\n0\n");
    EXPECT_EQ(lan().vid, 7);
}

TEST_F(VlanMainMenu, AVlanNamedTwiceCountsTwice)
{
    vlan("z\n10,10\n0\n");
    EXPECT_EQ(running_.vlanEntryCount, 2U);
}

TEST_F(VlanMainMenu, AnEmptyListRemovesAllVlans)
{
    define_vlan(&running_, 5);
    EXPECT_EQ(vlan("z\n\r\n0\n"),
              MAIN_TITLE NOT_APPLIED "\n" VLAN_KEYS "VLAN Range(1):VLANs: \"\" - Ok\n\n");
    EXPECT_EQ(running_.vlanEntryCount, 0U);
}

/* Nothing of a trunk is edited before all answers are good. */
TEST_F(VlanMainMenu, ARefusedTrunkListChangesNothing)
{
    vlan("v\n1\n10\ny\n1-\n0\n");
    EXPECT_EQ(std::memcmp(&running_, &applied_, sizeof running_), 0);
}

TEST_F(VlanMainMenu, TrunkQuestionsStartFromTheFirstPort)
{
    wan().vid = 30;
    wan().discardTagged = 1;
    wan().dot1qMode = 3;
    SetRangeText(&running_.vlanPortList[2], "30,31");
    applied_ = running_;
    const std::string output = vlan("v\n2,1\n\n\n\n0\n");
    EXPECT_NE(output.find("Port VID(30):Tag All(y/n)(yes):VLAN Range(30,31):"
                          "Allowed VLANs: \"30,31\" - Ok\n"),
              std::string::npos)
        << output;
    EXPECT_EQ(lan().vid, 30);
    EXPECT_EQ(lan().egressMode, 2U);
    EXPECT_STREQ(running_.vlanPortList[1], "30,31");
    EXPECT_STREQ(SW_Ranges.vlanIds, "30,31");
}

} // namespace
