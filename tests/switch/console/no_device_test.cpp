/* Every key of both main menus where no chip answers. */

#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ostream>
#include <string>
#include <tuple>

namespace
{

/* As the kernel's device where its node is missing. */
int missing_node(void * /*context*/, unsigned long /*number*/, MDIO_Record * /*record*/)
{
    std::fputs("couldn't open node", stdout);
    return -1;
}

/* A bus on which nothing drives the data line. */
int idle_bus(void * /*context*/, unsigned long /*number*/, MDIO_Record *record)
{
    if (record->operation == MDIO_READ) {
        record->value = 0xFFFF;
    }
    return 0;
}

struct Bus {
    const char *name;
    int (*request)(void *context, unsigned long number, MDIO_Record *record);
    const char *loadText; /* what its two accesses print while the driver looks for a chip */
};

void PrintTo(const Bus &bus, std::ostream *out)
{
    *out << bus.name;
}

const Bus BUSES[] = {
    {"MissingNode", missing_node, "couldn't open nodecouldn't open node"},
    {"IdleBus", idle_bus, ""},
};

struct Key {
    const char *name;
    bool vlanMode;
    const char *typed;
    std::string shown;      /* behind the first menu, up to what a load prints */
    bool loads;             /* the key brings the chip up again */
    const char *afterwards; /* behind that */
};

void PrintTo(const Key &key, std::ostream *out)
{
    *out << key.name;
}

const std::string PORTS = ports_menu("0", " CPU:Auto for both speed and duplex");

// clang-format off
#define LOAD_FAILED "...load driver failed! Error:1\n"
#define ZERO_CLASS_VIEW COS_TITLE ZERO_COS_TABLES

const Key KEYS[] = {
    {"FrameSizeApplied", false, "1\n0\na\n\n", FRAME_SIZE_PROMPT "(1632 Bytes):"
     "Switch: ...Set Max Frame Size! Error:1\nSwitch: Max Frame Size: 1632->1522\n"
     "Switch: Apply Changes - Failed\n" MAIN_TITLE MAIN_KEYS("1522 Bytes"), false, ""},
    {"PortsStatus", false, "2\n", PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS, false, ""},
    {"PortsMenu", false, "3\n1\np\na\n0\n", PORTS + PORTS_CONFIG_HEADER
     " LAN  | Auto for both speed and duplex\n WAN  | Auto for both speed and duplex\n"
     PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS APPLY_OK MAIN_MENU, false, ""},
    {"VlanTab", false, "4\n0-4\n", "Ports Range(0):" VLAN_HEADER ZERO_VLAN_ROWS, false, ""},
    {"VlanMenu", false, "5\n1\np\na\n0\n", vlan_menu({}) + VLAN_HEADER FACTORY_VLAN_ROWS + vlan_menu({}) +
     VLAN_HEADER ZERO_VLAN_ROWS + vlan_menu({}) + APPLY_OK MAIN_MENU, false, ""},
    {"VtuEntries", false, "6\n", "No VTU Entries\n", false, ""},
    {"VtuMenu", false, "7\n1\np\na\n0\n", VTU_MENU "No VTU Entries\n" VTU_MENU "No VTU Entries\n" VTU_MENU
     APPLY_OK MAIN_MENU, false, ""},
    {"QosMenu", false, "8\n1\np\na\n0\n", QOS_MENU QOS_HEADER FACTORY_QOS_ROWS QOS_MENU
     QOS_HEADER ZERO_QOS_ROWS ZERO_CLASS_VIEW QOS_MENU APPLY_OK MAIN_MENU, false, ""},
    {"Apply", false, "a\n", APPLY_OK, false, ""},
    {"RunningConfig", false, "c\n", FACTORY_CONFIG, false, ""},
    {"Status", false, "p\n", ZERO_STATUS("...Get Max Frame Size! Error:1\nMax Frame Size: 1522 Bytes\n"),
     false, ""},
    {"Save", false, "s\n", "Save to \"\" - Failed\n", false, ""},
    {"Load", false, "l\ny\n", "Load Startup Config To Running Config?(y/n)(no):"
     "Switch: Load Startup Config To Running Config - Failed\n", false, ""},
    {"Factory", false, "d\ny\n", "Set Factory Settings?(y/n)(no):Switch: Factory Settings\n", false, ""},
    {"ReInit", false, "r\ny\n", "Switch ReInit?(y/n)(no):Try load marvell switch driver...", true,
     "...Set Max Frame Size! Error:1\n"},
    {"EnterAndUnknown", false, "\n9\n", MAIN_MENU MAIN_MENU, false, ""},
    {"VlanConfig", true, "1\n", VTU_TITLE "No VTU Entries\n" VLAN_TITLE VLAN_HEADER FACTORY_VLAN_ROWS
     FACTORY_VLAN_SUMMARY, false, ""},
    {"VlanRemoveAll", true, "3\n", "", false, ""},
    {"VlanStatus", true, "p\n", VTU_TITLE "No VTU Entries\n" VLAN_TITLE VLAN_HEADER ZERO_VLAN_ROWS
     ZERO_VLAN_SUMMARY, false, ""},
    {"VlanSetVlans", true, "z\n10\na\n", "VLAN Range(1):VLANs: \"10\" - Ok\n   10\n"
     "Switch: ...Remove All VTU Entries !Error:16\nSwitch: ...Add VTU Entry with Vlan ID 10 !Error:16\n"
     "Switch: Apply Changes - Failed\n", false, ""},
    {"VlanRemoveVlans", true, "x\n1\n", "VLAN Range(1):VLANs: \"1\" - Ok\n\n", false, ""},
    {"VlanAccess", true, "c\n0\n\n", "Ports Range(0):Port VID(1):\nExisting VLANs:<none>\n"
     "CPU : Access  (VID:1(tagged))\nLAN : Default (VID:1(untagged))\nWAN : Default (VID:1(untagged))\n"
     "SFP0: Default (VID:1(untagged))\nSFP1: Default (VID:1(untagged))\n", false, ""},
    {"VlanTrunk", true, "v\n0\n\n\n\n", "Ports Range(0):Port VID(1):Tag All(y/n)(no):VLAN Range(1):"
     "Allowed VLANs: \"1\" - Ok\n\nExisting VLANs:<none>\n"
     "CPU : Trunk   (VID:1(untagged), Allowed:1 real:)\nLAN : Default (VID:1(untagged))\n"
     "WAN : Default (VID:1(untagged))\nSFP0: Default (VID:1(untagged))\nSFP1: Default (VID:1(untagged))\n",
     false, ""},
    {"VlanDefault", true, "b\n\n", "Ports Range(0):" FACTORY_VLAN_SUMMARY, false, ""},
    {"VlanTdm", true, "n\n\n", "TDM prio(0-7)(0):" FACTORY_VLAN_SUMMARY, false, ""},
    {"VlanDefaultTdm", true, "m\ny\n", "Set Default TDM QOS Mode?(y/n)(no):" FACTORY_VLAN_SUMMARY, false, ""},
    {"VlanProperties", true, "g\n", FACTORY_VLAN_SUMMARY, false, ""},
    {"VlanApply", true, "a\n", APPLY_OK, false, ""},
    {"VlanSave", true, "s\n", "Save to \"\" - Failed\n", false, ""},
    {"VlanLoad", true, "l\n\n", "Load Startup Config To Running Config?(y/n)(no):", false, ""},
    {"VlanFactory", true, "d\n\n", "Set Factory Settings?(y/n)(no):", false, ""},
    {"VlanReInit", true, "r\ny\n", "Switch ReInit?(y/n)(no):Try load marvell switch driver...", true,
     "...Set Max Frame Size! Error:1\n"},
};
// clang-format on

class NoDevice : public ConsoleSession, public testing::WithParamInterface<std::tuple<Bus, Key>>
{
protected:
    NoDevice()
    {
        device_ = {};
        EXPECT_TRUE(Sim_Layer_Install(&bus_, {std::get<0>(GetParam()).request, nullptr}));
    }
    ~NoDevice() override { EXPECT_TRUE(Sim_Layer_Remove(&bus_)); }

    Sim_Layer bus_ = {};
};

TEST_P(NoDevice, TheConsoleWorksOn)
{
    const auto &[bus, key] = GetParam();
    const std::string load = std::string(bus.loadText) + LOAD_FAILED;
    EXPECT_EQ(enter(key.vlanMode ? Vlan_Main_Menu : Main_Menu, std::string(key.typed) + "0\n"),
              load + (key.vlanMode ? VLAN_MAIN_MENU : MAIN_MENU) + key.shown +
                  (key.loads ? load : "") + key.afterwards);
}

INSTANTIATE_TEST_SUITE_P(Keys, NoDevice,
                         testing::Combine(testing::ValuesIn(BUSES), testing::ValuesIn(KEYS)),
                         [](const auto &row) {
                             return std::string(std::get<0>(row.param).name) + "_" +
                                    std::get<1>(row.param).name;
                         });

} // namespace
