/* The console when its input ends: it leaves at once, wherever it stands, and repeats nothing. */

#include "switch/console/input.h"
#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>

namespace
{

/* Lines typed before the end, and all that is shown behind the main menu. */
struct Row {
    const char *name;
    bool vlanMode;
    const char *typed;
    std::string shown;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

const std::string PORTS = ports_menu("0", " CPU:Auto for both speed and duplex");

// clang-format off
#define VECTOR_FAILED "ERROR: Range_Str_To_Vector(\"\") - Failed\n"
#define NO_TAGS \
    "Tagging of Port CPU" TAG_CHOICES "(Unmodified):Tagging of Port LAN" TAG_CHOICES "(Unmodified):" \
    "Tagging of Port WAN" TAG_CHOICES "(Unmodified):Tagging of Port SFP0" TAG_CHOICES "(Unmodified):" \
    "Tagging of Port SFP1" TAG_CHOICES "(Unmodified):"

const Row ROWS[] = {
    {"MainMenu", false, "", ""},
    {"MainMenuAfterAKey", false, "2\n", PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS},
    {"FrameSize", false, "1\n", FRAME_SIZE_PROMPT "(1632 Bytes):"},
    {"PortsOfTheVlanTab", false, "4\n", "Ports Range(0):"},
    {"LoadConfirmation", false, "l\n", "Load Startup Config To Running Config?(y/n)(no):"},
    {"FactoryConfirmation", false, "d\n", "Set Factory Settings?(y/n)(no):"},
    {"ReInitConfirmation", false, "r\n", "Switch ReInit?(y/n)(no):"},
    {"PortsMenu", false, "3\n", PORTS},
    {"PortsMenuRange", false, "3\n2\n", PORTS + "Ports Range(0):ERROR: Range(\"\") - Failed\n"},
    {"PortsMenuMode", false, "3\n2\n1\n", PORTS + "Ports Range(0):" AUTO_MODE_LIST
     "Port Auto Mode(Auto for both speed and duplex):"},
    {"VlanMenu", false, "5\n", vlan_menu({})},
    {"VlanMenuRange", false, "5\n2\n", vlan_menu({}) + "Ports Range(0):" VECTOR_FAILED},
    {"VlanMenuVid", false, "5\n2\n\n", vlan_menu({}) + "Ports Range(0):Port VID(1):"},
    {"VlanMenuFlag", false, "5\n3\n1\n", vlan_menu({}) + "Ports Range(0):Force Default VID(y/n)(no):"},
    {"VlanMenuDot1qMode", false, "5\n4\n1\n", vlan_menu({}) +
     "Ports Range(0):Vlan Dot1q Mode(0(Disable)/1(Fallback)/2(Check)/3(Secure))(Disable):"},
    {"VlanMenuEgressMode", false, "5\n7\n1\n", vlan_menu({}) + "Ports Range(0):"
     "Egress Mode(0(Unmodify egress)/1(Untagged egress)/2(Tagged egress)/3(Add tag))(Unmodify egress):"},
    {"VlanMenuRate", false, "5\n9\n1\n", vlan_menu({}) +
     "Ports Range(0):Egress Rate" RATE_CHOICES "(Not limited):"},
    {"VlanMenuBytesCount", false, "5\nb\n\nn\n", vlan_menu({}) + "Ports Range(0):BytesCount. Limit MGMT(y/n)(no):"
     "BytesCount. Count IFG(y/n)(yes):BytesCount. Count Pre(y/n)(yes):"},
    {"QosMenu", false, "8\n", QOS_MENU},
    {"QosMenuRate", false, "8\n3\n\n", QOS_MENU "Ports Range(0):Pri0Rate" RATE_CHOICES "(Not limited):"},
    {"QosMenuFlag", false, "8\n9\n0\n", QOS_MENU "Ports Range(0):User prio(y/n)(yes):"},
    {"QosMenuPrio", false, "8\nb\n\n", QOS_MENU "Ports Range(0):Port prio(0):"},
    {"QosMenuClassRange", false, "8\nc\n", QOS_MENU "User priority Range(0):" VECTOR_FAILED},
    {"QosMenuDscpRange", false, "8\nd\n", QOS_MENU "DCSP Range(0):" VECTOR_FAILED},
    {"QosMenuUserPriorityClass", false, "8\nc\n7\n", QOS_MENU "User priority Range(0):Traff_class(3):"},
    {"QosMenuClass", false, "8\nd\n63\n", QOS_MENU "DCSP Range(0):Traff_class(3):"},
    {"VtuMenu", false, "7\n", VTU_MENU},
    {"VtuMenuVid", false, "7\n2\n", VTU_MENU "Port VID(1):" NO_TAGS},
    {"VtuMenuTag", false, "7\n2\n5\n", VTU_MENU "Port VID(1):" NO_TAGS},
    {"VtuMenuRange", false, "7\n4\n", VTU_MENU "VLAN IDs Range(1):" VECTOR_FAILED},
    {"VlanMainMenu", true, "", ""},
    {"SetVlans", true, "z\n", "VLAN Range(1):VLANs: \"1\" - Failed\n"},
    {"RemoveVlans", true, "x\n", "VLAN Range(1):VLANs: \"1\" - Failed\n"},
    {"AccessPorts", true, "c\n", "Ports Range(0):"},
    {"AccessVid", true, "c\n4\n", "Ports Range(0):Port VID(1):\nExisting VLANs:<none>\n"
     "CPU : Default (VID:1(untagged))\nLAN : Default (VID:1(untagged))\nWAN : Default (VID:1(untagged))\n"
     "SFP0: Default (VID:1(untagged))\nSFP1: Access  (VID:1(tagged))\n"},
    {"TrunkPorts", true, "v\n", "Ports Range(0):"},
    {"TrunkVid", true, "v\n4\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Allowed VLANs: \"1\" - Failed\n"},
    {"TrunkTagAll", true, "v\n4\n5\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Allowed VLANs: \"1\" - Failed\n"},
    {"TrunkList", true, "v\n4\n5\ny\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Allowed VLANs: \"1\" - Failed\n"},
    {"DefaultPorts", true, "b\n", "Ports Range(0):"},
    {"Tdm", true, "n\n", "TDM prio(0-7)(0):" FACTORY_VLAN_SUMMARY},
    {"DefaultTdm", true, "m\n", "Set Default TDM QOS Mode?(y/n)(no):" FACTORY_VLAN_SUMMARY},
    {"VlanModeLoad", true, "l\n", "Load Startup Config To Running Config?(y/n)(no):"},
    {"VlanModeFactory", true, "d\n", "Set Factory Settings?(y/n)(no):"},
    {"VlanModeReInit", true, "r\n", "Switch ReInit?(y/n)(no):"},
};
// clang-format on

class EndOfInput : public ConsoleSession
{
protected:
    std::string run(const Row &row, const std::string &typed)
    {
        return enter(row.vlanMode ? Vlan_Main_Menu : Main_Menu, typed);
    }
};

class EndOfInputAt : public EndOfInput, public testing::WithParamInterface<Row>
{
};

TEST_P(EndOfInputAt, LeavesTheConsole)
{
    const Row &row = GetParam();
    EXPECT_EQ(run(row, row.typed), (row.vlanMode ? VLAN_MAIN_MENU : MAIN_MENU) + row.shown);
    EXPECT_EQ(force_exit_, 0U);
    EXPECT_TRUE(SW_Input_Ended());
}

INSTANTIATE_TEST_SUITE_P(Places, EndOfInputAt, testing::ValuesIn(ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

/* A menu that is entered later, with an input of its own, is not bothered by an earlier end. */
TEST_F(EndOfInput, IsForgottenWithTheNextInput)
{
    EXPECT_EQ(enter(Main_Menu, ""), MAIN_MENU);
    EXPECT_EQ(enter(Main_Menu, "6\n0\n"), MAIN_MENU CHIP_VTU_ROWS);
}

/* A session through all menus; both variants leave none of it unread. */
constexpr const char *FULL_SESSION =
    "1\n0\n2\n4\n0-4\n6\na\np\n"
    "3\n1\n2\n1-2\n11\n\np\na\n0\n"
    "5\n2\n1-3\n100\n3\n\ny\n4\n\n3\n9\n\n12\nb\n\ny\nn\ny\n1\np\n\n0\n"
    "7\n2\n100\n0\n1\n2\n3\n3\n1\n4\n1-5,100\n3\np\n0\n"
    "8\n1\n2\n3\n0,4\n5\n7\n\nn\nb\n1\n7\nc\n0-7\n3\nd\n1-62\n1\np\na\n0\n"
    "c\nd\ny\na\nr\ny\nl\nn\n\n9\n00\n";
constexpr const char *VLAN_SESSION = "z\n1-20,4000\nx\n5-7\nc\n1-2\n10\nv\n3\n20\ny\n1-30\nb\n4\n"
                                     "n\n6\ng\n1\np\na\nm\ny\n3\nd\ny\nr\ny\nl\nn\n\nq\n00\n";

struct Session {
    const char *name;
    bool vlanMode;
    const char *typed;
};

void PrintTo(const Session &session, std::ostream *out)
{
    *out << session.name;
}

class EndOfInputInside : public EndOfInput, public testing::WithParamInterface<Session>
{
protected:
    /* From the same start every time. */
    std::string run_prefix(const std::string &typed)
    {
        SetSwitchConfigDefaults(&running_);
        applied_ = running_;
        SW_Ranges = SW_INITIAL_RANGES;
        force_exit_ = 0;
        recorder_.records.clear();
        return enter(GetParam().vlanMode ? Vlan_Main_Menu : Main_Menu, typed);
    }
};

/* Every read that finds a line acts once: a menu text needs a line, or the start, and a key's line
 * its key. */
TEST_P(EndOfInputInside, EndsTheConsoleAtEveryByte)
{
    const std::string session = GetParam().typed;
    for (size_t length = 0; length <= session.size(); length++) {
        const std::string typed = session.substr(0, length);
        const std::string output = run_prefix(typed);
        const auto lines = static_cast<size_t>(std::count(typed.begin(), typed.end(), '\n'));
        EXPECT_LE(count_of(output, " Menu:\n"), lines + 2) << "after " << length << " bytes";
        const size_t applies = count_of("\n" + typed, "\na");
        EXPECT_EQ(count_of(output, "Switch: Apply Changes - "), applies) << length << " bytes";
        EXPECT_EQ(force_exit_, length >= session.size() - 1 ? 1U : 0U) << length << " bytes";
    }
}

INSTANTIATE_TEST_SUITE_P(Sessions, EndOfInputInside,
                         testing::Values(Session{"Full", false, FULL_SESSION},
                                         Session{"VlanMode", true, VLAN_SESSION}),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
