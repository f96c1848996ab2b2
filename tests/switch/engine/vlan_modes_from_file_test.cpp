#include "switch/config/keywords.h"
#include "switch/engine/apply.h"
#include "switch/engine/commands.h"
#include "switch/engine/vlan_properties.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/engine/board.h"

#include <cstring>
#include <string>

namespace
{

constexpr int LAN = 1;
constexpr int LAN_CHIP_PORT = 1;

/* The file accepts every 16-bit VID for a port, the console only those that the table has. */
struct Vid_Row {
    const char *name;
    uint16_t vid;
    bool has_entry;
    uint16_t on_chip; /* the twelve bits that the chip keeps */
    const char *access_line;
    const char *trunk_line;
};

void PrintTo(const Vid_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Vid_Row VIDS[] = {
    {"Zero", 0, true, 0, "LAN : Failed  (VID:0)\n", "LAN : Failed  (VID:0)\n"},
    {"One", 1, true, 1, "LAN : Access  (VID:1(tagged))\n",
     "LAN : Trunk   (VID:1(untagged), Allowed:10 real:10)\n"},
    {"Last", 4095, true, 4095, "LAN : Access  (VID:4095(Warning: not exists))\n",
     "LAN : Trunk   (VID:4095(Warning: not exists), Allowed:10 real:10)\n"},
    {"FirstWithoutEntry", 4096, false, 0, "LAN : Failed  (VID:4096)\n",
     "LAN : Failed  (VID:4096)\n"},
    {"FiveThousand", 5000, false, 904, "LAN : Failed  (VID:5000)\n", "LAN : Failed  (VID:5000)\n"},
    {"Most", 65535, false, 4095, "LAN : Failed  (VID:65535)\n", "LAN : Failed  (VID:65535)\n"},
};

class VidFromFile : public Board, public testing::WithParamInterface<Vid_Row>
{
protected:
    /* Starts with factory settings over which the file sets VLAN 10 and LAN's VID and mode. */
    void start(const char *mode)
    {
        const std::string text = "[SW_PORT1]\nVID = " + std::to_string(GetParam().vid) +
                                 "\nVLAN_PORT_TYPE = " + mode +
                                 "\nVLAN_PORT_LIST = \"10\"\n"
                                 "[SW_VLAN10]\nVLAN_VID = 10\n";
        const std::string path = folder_.write("startup.ini", text);
        SetSwitchConfigDefaults(&running_);
        EXPECT_EQ(printed([&] { SW_Start(&control_, path.c_str(), true); }),
                  "Switch: Load SW Config from \"" + path + "\" - Ok\n");
        expected_ = running_;
        for (int port = 0; port < SW_PORTS; ++port) {
            for (int vid = 0; vid < SW_VLANS; ++vid) {
                set_tag(port, vid, SW_Member_Tag_NONE);
            }
            if (port != LAN) {
                std::memset(expected_.vlanPortList[port], 0, sizeof expected_.vlanPortList[port]);
            }
        }
    }

    void set_tag(int port, int vid, SW_Member_Tag tag)
    {
        expected_.vlans[vid].vtu.memberTagP[SW_Chip_Ports[port]] = static_cast<uint8_t>(tag);
    }

    void expect_applied(const std::string &lan_line)
    {
        EXPECT_EQ(printed([&] { SW_Apply_Changes(&control_, true, true); }),
                  "Switch: Apply Changes - Ok\n");
        EXPECT_EQ(std::memcmp(&running_, &expected_, sizeof running_), 0);
        EXPECT_TRUE(applied_is_running());
        EXPECT_EQ(printed([&] { SW_Print_Vlan_Properties(&control_); }),
                  "\nExisting VLANs:10\n"
                  "CPU : Default (VID:1(untagged))\n" +
                      lan_line +
                      "WAN : Default (VID:1(untagged))\n"
                      "SFP0: Default (VID:1(untagged))\n"
                      "SFP1: Default (VID:1(untagged))\n");
    }

    void expect_vid_on_chip(uint16_t vid)
    {
        EXPECT_EQ(printed([&] { EXPECT_TRUE(SW_Configure(&control_, true)); }), "");
        EXPECT_EQ(chip_.ports[LAN_CHIP_PORT][7], vid);
        EXPECT_EQ(vlans_on_chip(), "10");
    }

    Temporary_Folder folder_;
    SW_Config expected_{};
};

TEST_P(VidFromFile, OfAnAccessPortTouchesOnlyItsEntry)
{
    start("ACCESS");
    SW_Port_Config &lan = expected_.ports[LAN];
    lan.dot1qMode = SW_Dot1q_Mode_SECURE;
    lan.discardTagged = 1;
    std::memset(expected_.vlanPortList[LAN], 0, sizeof expected_.vlanPortList[LAN]);
    std::strcpy(expected_.vlanPortList[LAN], std::to_string(GetParam().vid).c_str());
    if (GetParam().has_entry) {
        set_tag(LAN, GetParam().vid, SW_Member_Tag_UNTAGGED);
    }
    expect_applied(GetParam().access_line);
    expect_vid_on_chip(GetParam().on_chip);
}

TEST_P(VidFromFile, OfATrunkPortTouchesOnlyItsEntry)
{
    start("TRUNK");
    SW_Port_Config &lan = expected_.ports[LAN];
    lan.dot1qMode = SW_Dot1q_Mode_CHECK;
    lan.egressMode = SW_Egress_Mode_UNTAGGED_EGRESS;
    set_tag(LAN, 10, SW_Member_Tag_TAGGED);
    if (GetParam().has_entry) {
        set_tag(LAN, GetParam().vid, SW_Member_Tag_UNTAGGED);
    }
    expect_applied(GetParam().trunk_line);
    expect_vid_on_chip(GetParam().on_chip);
}

TEST_P(VidFromFile, OfADefaultPortBecomesOne)
{
    start("DEFAULT");
    expected_.ports[LAN].vid = 1;
    std::memset(expected_.vlanPortList[LAN], 0, sizeof expected_.vlanPortList[LAN]);
    expect_applied("LAN : Default (VID:1(untagged))\n");
    expect_vid_on_chip(1);
}

INSTANTIATE_TEST_SUITE_P(VlanModes, VidFromFile, testing::ValuesIn(VIDS),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
