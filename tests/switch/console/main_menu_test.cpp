#include "switch/config/keywords.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <ostream>
#include <string>
#include <utility>

namespace
{

class MainMenu : public ConsoleSession
{
protected:
    std::string full(std::string_view typed, bool load = false)
    {
        return enter(Main_Menu, typed, load);
    }
};

// clang-format off
const Typed_Row VIEWS[] = {
    {"Leave", "0\n", MAIN_MENU},
    {"LeaveWithOtherCharacterBehindZero", "0x\n", MAIN_MENU},
    {"LeaveWithoutLineFeed", "0", MAIN_MENU},
    {"PortsStatus", "2\n0\n", MAIN_MENU PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS},
    {"PortsMenu", "3\n0\n0\n", MAIN_MENU + ports_menu("0", " CPU:Auto for both speed and duplex") + MAIN_MENU},
    {"VlanTabOfTheDefaultRange", "4\n\n0\n", MAIN_MENU "Ports Range(0):" VLAN_HEADER CHIP_VLAN_CPU},
    {"VlanTabInTheOrderTyped", "4\n3,1,1\n0\n",
     MAIN_MENU "Ports Range(0):" VLAN_HEADER CHIP_VLAN_SFP0 CHIP_VLAN_LAN CHIP_VLAN_LAN},
    {"VlanTabOfAllPorts", "4\n0-4\n0\n", MAIN_MENU "Ports Range(0):" VLAN_HEADER CHIP_VLAN_ROWS},
    {"VlanTabOfNoPort", "4\n,\n0\n", MAIN_MENU "Ports Range(0):" VLAN_HEADER},
    {"VlanTabOfABadRange", "4\n5\n4\n\n0\n", MAIN_MENU "Ports Range(0):Int_Range_To_Int_List:813: - Failed\n"
     "Range: 5 - bad value\nPorts Range(0):" VLAN_HEADER CHIP_VLAN_CPU},
    {"VlanTabOfLetters", "4\nLAN\n0\n",
     MAIN_MENU "Ports Range(0):Int_Range_To_Int_List:835: - Failed (c2: 'A' 0x41)\nRange: LAN - bad value\n"},
    {"VlanTabOfAnOverLongRange", "4\n0,1,2,3,4,0,1,2,3,9\n0\n",
     MAIN_MENU "Ports Range(0):" VLAN_HEADER CHIP_VLAN_ROWS
     CHIP_VLAN_CPU CHIP_VLAN_LAN CHIP_VLAN_WAN CHIP_VLAN_SFP0 MAIN_MENU},
    {"VlanMenu", "5\n0\n0\n", MAIN_MENU + vlan_menu({}) + MAIN_MENU},
    {"VtuEntries", "6\n0\n", MAIN_MENU CHIP_VTU_ROWS},
    {"VtuMenu", "7\n0\n0\n", MAIN_MENU VTU_MENU MAIN_MENU},
    {"QosMenu", "8\n0\n0\n", MAIN_MENU QOS_MENU MAIN_MENU},
    {"Apply", "a\n0\n", MAIN_MENU APPLY_OK},
    {"ApplyUpperCase", "A\n0\n", MAIN_MENU APPLY_OK},
    {"RunningConfig", "c\n0\n", MAIN_MENU FACTORY_CONFIG},
    {"RunningConfigUpperCase", "C\n0\n", MAIN_MENU FACTORY_CONFIG},
    {"Status", "p\n0\n", MAIN_MENU CHIP_STATUS},
    {"StatusUpperCase", "P\n0\n", MAIN_MENU CHIP_STATUS},
    {"LoadCancelled", "l\nn\n0\n", MAIN_MENU "Load Startup Config To Running Config?(y/n)(no):"},
    {"LoadCancelledByEnter", "L\n\n0\n", MAIN_MENU "Load Startup Config To Running Config?(y/n)(no):"},
    {"LoadWithoutAFile", "l\nyes\n0\n", MAIN_MENU "Load Startup Config To Running Config?(y/n)(no):"
     "Switch: Load Startup Config To Running Config - Failed\n"},
    {"FactoryCancelled", "d\nx\n0\n", MAIN_MENU "Set Factory Settings?(y/n)(no):"},
    {"FactoryCancelledByEnter", "D\n\n0\n", MAIN_MENU "Set Factory Settings?(y/n)(no):"},
    {"Factory", "d\nY\n0\n", MAIN_MENU "Set Factory Settings?(y/n)(no):Switch: Factory Settings\n"},
    {"AConfirmationHoldsOnce", "d\ny\nd\n\n0\n",
     MAIN_MENU "Set Factory Settings?(y/n)(no):Switch: Factory Settings\nSet Factory Settings?(y/n)(no):"},
    {"ReInitCancelled", "r\nno\n0\n", MAIN_MENU "Switch ReInit?(y/n)(no):"},
    {"ReInitCancelledByEnter", "R\n\n0\n", MAIN_MENU "Switch ReInit?(y/n)(no):"},
    {"ReInit", "r\ny\n0\n", MAIN_MENU "Switch ReInit?(y/n)(no):" REINIT_TEXT},
    {"Enter", "\n0\n", MAIN_MENU MAIN_MENU},
    {"EnterAfterAKey", "2\n\n0\n", MAIN_MENU PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS MAIN_MENU},
    {"UnknownKeys", "9\nb\ne\nt\nz\n \n\xFF\n0\n",
     MAIN_MENU MAIN_MENU MAIN_MENU MAIN_MENU MAIN_MENU MAIN_MENU MAIN_MENU MAIN_MENU},
    {"LastLineWithoutLineFeed", "2", MAIN_MENU PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS},
};
// clang-format on

class MainMenuView : public MainMenu, public testing::WithParamInterface<Typed_Row>
{
};

TEST_P(MainMenuView, Shows)
{
    EXPECT_EQ(full(GetParam().typed), GetParam().shown);
    EXPECT_EQ(force_exit_, 0U);
}

INSTANTIATE_TEST_SUITE_P(Keys, MainMenuView, testing::ValuesIn(VIEWS),
                         [](const auto &row) { return std::string(row.param.name); });

struct Size_Answer {
    const char *name;
    const char *typed;
    uint32_t size;
    const char *shown;
};

void PrintTo(const Size_Answer &answer, std::ostream *out)
{
    *out << answer.name;
}

// clang-format off
const Size_Answer SIZE_ANSWERS[] = {
    {"Good", "0\n", 0, ""},
    {"Enter", "\n", 1, ""},
    {"Letters", "abc\n", 0, ""},
    {"TooHigh", "2\n", 1, "Value out of range!\n"},
    {"Negative", "-1\n", 1, "Value out of range!\n"},
    {"CutTo16Bits", "65536\n", 0, ""},
    {"OverLongIsTheNextKey", "0000000000000000012\n", 1, PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS},
};
// clang-format on

class MainMenuFrameSize : public MainMenu, public testing::WithParamInterface<Size_Answer>
{
};

TEST_P(MainMenuFrameSize, IsStoredAndShownInTheMenu)
{
    const Size_Answer &answer = GetParam();
    const std::string again =
        answer.size == 0 ? MAIN_TITLE NOT_APPLIED "\n" MAIN_KEYS("1522 Bytes") : MAIN_MENU;
    EXPECT_EQ(full(std::string("1\n") + answer.typed + "\n0\n"),
              std::string(MAIN_MENU FRAME_SIZE_PROMPT "(1632 Bytes):") + answer.shown + again);
    EXPECT_EQ(running_.maxFrameSize, answer.size);
}

INSTANTIATE_TEST_SUITE_P(Answers, MainMenuFrameSize, testing::ValuesIn(SIZE_ANSWERS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(MainMenu, TwoZeroesForceTheExit)
{
    EXPECT_EQ(full("00\n"), MAIN_MENU);
    EXPECT_EQ(force_exit_, 1U);
}

TEST_F(MainMenu, TwoZeroesInASettingMenuEndTheMainMenuAtOnce)
{
    const std::pair<const char *, std::string> visits[] = {
        {"3\n00\n", ports_menu("0", " CPU:Auto for both speed and duplex")},
        {"5\n00\n", vlan_menu({})},
        {"7\n00\n", VTU_MENU},
        {"8\n00\n", QOS_MENU},
    };
    for (const auto &[typed, shown] : visits) {
        force_exit_ = 0;
        EXPECT_EQ(full(typed), MAIN_MENU + shown);
        EXPECT_EQ(force_exit_, 1U);
    }
}

TEST_F(MainMenu, OnlyStartsWhenTheExitIsForcedAlready)
{
    force_exit_ = 1;
    device_ = {};
    EXPECT_EQ(full("", true), "Switch: Load SW Config from \"\" - Failed\n");
    EXPECT_NE(device_.numberOfPorts, 0);
}

TEST_F(MainMenu, ShowsAnyFrameSizeButZeroAs1632Bytes)
{
    running_.maxFrameSize = 7;
    applied_ = running_;
    EXPECT_EQ(full("0\n"), MAIN_MENU);
}

TEST_F(MainMenu, ReInitWaitsASecondBeforeItBringsTheChipUp)
{
    full("r\ny\n0\n");
    EXPECT_EQ(waits_, (std::vector<uint32_t>{100000, 100000, 1000000}));
}

TEST_F(MainMenu, StatusSetsTheReadAndPrintFlags)
{
    set_flags(0, 0);
    EXPECT_EQ(full("p\n0\n"), MAIN_MENU CHIP_STATUS);
    EXPECT_EQ(control_.read, 1U);
    EXPECT_EQ(control_.print, 1U);
}

TEST_F(MainMenu, VlanTabFollowsTheFlagsButForItsHeader)
{
    set_flags(0, 1);
    EXPECT_EQ(full("4\n0-4\n0\n"), MAIN_MENU "Ports Range(0):" VLAN_HEADER ZERO_VLAN_ROWS);
    set_flags(0, 0);
    EXPECT_EQ(full("4\n\n0\n"), MAIN_MENU "Ports Range(0-4):" VLAN_HEADER);
}

TEST_F(MainMenu, VlanTabTakesAnUnreadableRangeTextSilently)
{
    SetRangeText(&SW_Ranges.ports, "1 - 2");
    EXPECT_EQ(full("4\n1\n0\n"), MAIN_MENU "Ports Range(1 - 2):" VLAN_HEADER CHIP_VLAN_LAN);
}

TEST_F(MainMenu, VtuAndPortsStatusIgnoreTheFlags)
{
    set_flags(0, 0);
    EXPECT_EQ(full("2\n6\n0\n"),
              MAIN_MENU PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS CHIP_VTU_ROWS);
}

TEST_F(MainMenu, AnEmptyVlanTableOfTheChipIsSaidSo)
{
    for (auto &entry : chip_.vlans.entries) {
        entry.valid = false;
    }
    EXPECT_EQ(full("6\n0\n"), MAIN_MENU "No VTU Entries\n");
}

/* With a startup file of the test's own. */
class MainMenuFile : public MainMenu
{
protected:
    MainMenuFile() { use_startup_file(folder_.write("startup.cfg", StartupFileText(running_))); }

    std::string load_line(const char *result) const
    {
        return "Switch: Load SW Config from \"" + path_ + "\" - " + result + "\n";
    }

    Temporary_Folder folder_;
};

TEST_F(MainMenuFile, StartsWithTheFileWhenToldTo)
{
    SW_Config other = running_;
    other.ports[1].vid = 77;
    folder_.write("startup.cfg", StartupFileText(other));
    EXPECT_EQ(full("0\n", true), load_line("Ok") + MAIN_MENU);
    EXPECT_EQ(lan().vid, 77);
    EXPECT_TRUE(applied_is_running());
}

TEST_F(MainMenuFile, StartsWithoutTheFileOtherwise)
{
    SW_Config other = running_;
    other.ports[1].vid = 77;
    folder_.write("startup.cfg", StartupFileText(other));
    EXPECT_EQ(full("0\n"), MAIN_TITLE NOT_SAVED "\n" MAIN_KEYS("1632 Bytes"));
    EXPECT_EQ(lan().vid, 1);
}

TEST_F(MainMenuFile, GoesOnWithWhatAFailedStartLoadLeft)
{
    std::remove(path_.c_str());
    running_.maxFrameSize = 0;
    EXPECT_EQ(full("0\n", true), load_line("Failed") + MAIN_TITLE MAIN_KEYS("1522 Bytes"));
    EXPECT_EQ(running_.maxFrameSize, 0U);
    EXPECT_TRUE(applied_is_running());
}

TEST_F(MainMenuFile, ShowsBothBannersOnOneLine)
{
    EXPECT_EQ(full("1\n0\n\n0\n"), MAIN_MENU FRAME_SIZE_PROMPT
              "(1632 Bytes):" MAIN_TITLE NOT_APPLIED NOT_SAVED "\n" MAIN_KEYS("1522 Bytes"));
}

TEST_F(MainMenuFile, ApplyingTakesOneBannerAwayAndSavingTheOther)
{
    for (uint32_t &type : running_.vlanPortType) {
        type = SW_Vlan_Port_Type_CUSTOM;
    }
    applied_ = running_;
    const std::string typed = "1\n0\na\n\ns\n\n0\n";
    EXPECT_EQ(full(typed),
              std::string(MAIN_TITLE NOT_SAVED "\n" MAIN_KEYS("1632 Bytes") FRAME_SIZE_PROMPT
                          "(1632 Bytes):"
                          "Switch: Max Frame Size: 1632->1522\n" APPLY_OK MAIN_TITLE NOT_SAVED
                          "\n" MAIN_KEYS("1522 Bytes") "Save to \"") +
                  path_ + "\" - Ok\n" MAIN_TITLE MAIN_KEYS("1522 Bytes"));
    EXPECT_EQ(folder_.read("startup.cfg"), StartupFileText(running_));
}

TEST_F(MainMenuFile, ForgetsNotSavedWhenTheFileIsGone)
{
    lan().countPre = 0;
    applied_ = running_;
    EXPECT_EQ(full("0\n"), MAIN_TITLE NOT_SAVED "\n" MAIN_KEYS("1632 Bytes"));
    std::remove(path_.c_str());
    EXPECT_EQ(full("0\n"), MAIN_MENU);
}

TEST_F(MainMenuFile, ReadsTheFileAnewForEveryMenu)
{
    EXPECT_EQ(full("0\n"), MAIN_MENU);
    SW_Config other = running_;
    other.cosDscp[63] = 0;
    folder_.write("startup.cfg", StartupFileText(other));
    EXPECT_EQ(full("0\n"), MAIN_TITLE NOT_SAVED "\n" MAIN_KEYS("1632 Bytes"));
}

TEST_F(MainMenuFile, LoadsTheFileIntoTheRunningConfigurationOnly)
{
    SW_Config other = running_;
    other.ports[2].vid = 99;
    folder_.write("startup.cfg", StartupFileText(other));
    running_.vlans[5].vtu.memberTagP[0] = 1;
    EXPECT_EQ(full("l\nY\n\n0\n"),
              MAIN_TITLE NOT_APPLIED NOT_SAVED "\n" MAIN_KEYS(
                  "1632 Bytes") "Load Startup Config To Running Config?(y/n)(no):"
                                "Switch: Load Startup Config To Running Config - Ok\n" MAIN_TITLE
                                    NOT_APPLIED "\n" MAIN_KEYS("1632 Bytes"));
    EXPECT_EQ(std::memcmp(&running_, &other, sizeof other), 0);
    EXPECT_EQ(applied_.ports[2].vid, 1);
}

TEST_F(MainMenuFile, AFailedLoadLeavesTheFactorySettings)
{
    folder_.write("startup.cfg", "[SW_COMMON\n");
    running_.maxFrameSize = 0;
    EXPECT_EQ(
        full("L\ny\n0\n"), MAIN_TITLE NOT_APPLIED
        "\n" MAIN_KEYS("1522 Bytes") "Load Startup Config To Running Config?(y/n)(no):"
                                     "Switch: Load Startup Config To Running Config - Failed\n");
    EXPECT_TRUE(applied_is_running());
}

TEST_F(MainMenuFile, FactorySettingsAreNeitherAppliedNorSaved)
{
    SW_Config other = running_;
    other.maxFrameSize = 0;
    applied_ = running_ = other;
    folder_.write("startup.cfg", StartupFileText(other));
    EXPECT_EQ(
        full("D\ny\n\n0\n"),
        MAIN_TITLE MAIN_KEYS(
            "1522 Bytes") "Set Factory Settings?(y/n)(no):Switch: Factory Settings\n" MAIN_TITLE
            NOT_APPLIED NOT_SAVED "\n" MAIN_KEYS("1632 Bytes"));
    EXPECT_EQ(applied_.maxFrameSize, 0U);
    EXPECT_EQ(folder_.read("startup.cfg"), StartupFileText(other));
}

TEST_F(MainMenuFile, SavesWhereTheMenuWasToldTo)
{
    path_ = folder_.path() + "/no such folder/startup.cfg";
    EXPECT_EQ(full("S\n0\n"), MAIN_MENU "Save to \"" + path_ + "\" - Failed\n");
    path_ = folder_.path() + "/other.cfg";
    EXPECT_EQ(full("s\n0\n"), MAIN_MENU "Save to \"" + path_ + "\" - Ok\n");
    EXPECT_EQ(folder_.read("other.cfg"), StartupFileText(running_));
}

/* A bad entry is reported each time the menu shows, between the title and the banners. */
TEST_F(MainMenuFile, ShowsTheFilesBadEntriesUnderTheTitle)
{
    folder_.write("startup.cfg", "[SW_COMMON]\nMAX_FRAME_SIZE = 9\n");
    running_.maxFrameSize = 0;
    EXPECT_EQ(full("0\n"),
              MAIN_TITLE "[1:2][SW_COMMON] MAX_FRAME_SIZE = 9 - bad variable value\n" NOT_APPLIED
                         "\n" MAIN_KEYS("1522 Bytes"));
}

/* The whole saved configuration, every VLAN with a value in every field, comes back. */
TEST_F(MainMenuFile, LoadsBackAllVlansThatItSaved)
{
    SetAllVlans(&running_);
    const SW_Config saved = running_;
    folder_.write("startup.cfg", "");
    EXPECT_NE(full("s\nd\ny\nl\ny\n0\n").find("Running Config - Ok\n"), std::string::npos);
    EXPECT_EQ(std::memcmp(&running_, &saved, sizeof saved), 0);
    EXPECT_EQ(running_.vlanEntryCount, 4095U);
    EXPECT_EQ(full("0\n", true), load_line("Ok") + MAIN_MENU);
}

/* The typical request: VIDs typed in the VLAN menu reach the chip by an apply. */
class TypicalRequest : public MainMenu, public testing::WithParamInterface<uint32_t>
{
protected:
    TypicalRequest()
    {
        for (uint32_t &type : running_.vlanPortType) {
            type = GetParam();
        }
        applied_ = running_;
    }

    uint32_t vid_register(int chipPort) const { return chip_.ports[chipPort][7] & 0x0FFFU; }

    static std::string transcript(const char *applied)
    {
        const Vlan_Items typed = {.range = "1-2",
                                  .vid = " LAN:20 WAN:20",
                                  .force = " LAN:False WAN:False",
                                  .dot1q = " LAN:Disable WAN:Disable",
                                  .tagged = " LAN:False WAN:False",
                                  .untagged = " LAN:False WAN:False",
                                  .egress = " LAN:Unmodify egress WAN:Unmodify egress",
                                  .core = " LAN:False WAN:False",
                                  .rate = " LAN:Not limited WAN:Not limited",
                                  .bytes =
                                      " LAN:Limit MGMT(False),Count IFG(True),Count Pre(True)"
                                      " WAN:Limit MGMT(False),Count IFG(True),Count Pre(True)"};
        return MAIN_MENU + vlan_menu({}) + "Ports Range(0):Port VID(1):" + vlan_menu(typed) +
               MAIN_TITLE NOT_APPLIED "\n" MAIN_KEYS("1632 Bytes") + applied + MAIN_MENU;
    }

    static constexpr const char *TYPED = "5\n2\n1-2\n20\n0\na\n\n0\n";
};

class TypicalRequestOfFreePorts : public TypicalRequest
{
};

TEST_P(TypicalRequestOfFreePorts, ReachesTheRegisters)
{
    EXPECT_EQ(full(TYPED), transcript("Switch: Port 1 VID: 1 -> 20\n"
                                      "Switch: Port 2 VID: 1 -> 20\n" APPLY_OK));
    EXPECT_EQ(vid_register(LAN), 20U);
    EXPECT_EQ(vid_register(WAN), 20U);
    EXPECT_EQ(vid_register(CPU), 1U);
    EXPECT_EQ(lan().vid, 20);
}

INSTANTIATE_TEST_SUITE_P(Types, TypicalRequestOfFreePorts,
                         testing::Values(SW_Vlan_Port_Type_NO, SW_Vlan_Port_Type_CUSTOM),
                         [](const auto &row) {
                             return row.param == SW_Vlan_Port_Type_NO ? "No" : "Custom";
                         });

class TypicalRequestOfDefaultPorts : public TypicalRequest
{
};

/* The port mode takes the edit back before the settings are written. */
TEST_P(TypicalRequestOfDefaultPorts, IsUndoneByThePortMode)
{
    EXPECT_EQ(full(TYPED), transcript(APPLY_OK));
    EXPECT_EQ(vid_register(LAN), 1U);
    EXPECT_EQ(vid_register(WAN), 1U);
    EXPECT_EQ(lan().vid, 1);
    EXPECT_EQ(wan().vid, 1);
}

INSTANTIATE_TEST_SUITE_P(Types, TypicalRequestOfDefaultPorts,
                         testing::Values(SW_Vlan_Port_Type_DEFAULT),
                         [](const auto &) { return "Default"; });

} // namespace
