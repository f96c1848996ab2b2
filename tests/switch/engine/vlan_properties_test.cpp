#include "switch/engine/vlan_properties.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/vlan_host.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <ostream>
#include <string>

namespace
{

std::string properties_of(Vlan_Host &host)
{
    const auto before = host.copy_of_running();
    Output_Capture capture;
    SW_Print_Vlan_Properties(host.control());
    std::string output = capture.finish();
    EXPECT_TRUE(SameConfig(host.running(), *before));
    EXPECT_TRUE(host.only_running_was_edited());
    return output;
}

void define(SW_Config &config, int first, int last)
{
    for (int vid = first; vid <= last; vid++) {
        config.vlans[vid].defined = 1;
        for (int port = 0; port < 5; port++) {
            SetTags(config, port, vid, vid, 1);
        }
    }
}

/* The summary as a whole. */

TEST(VlanProperties, OfTheFactorySettings)
{
    Vlan_Host host;
    host.set_factory();
    EXPECT_EQ(properties_of(host), "\n"
                                   "Existing VLANs:<none>\n"
                                   "CPU : Default (VID:1(untagged))\n"
                                   "LAN : Default (VID:1(untagged))\n"
                                   "WAN : Default (VID:1(untagged))\n"
                                   "SFP0: Default (VID:1(untagged))\n"
                                   "SFP1: Default (VID:1(untagged))\n");
}

/* A port in each mode; each is a member by its own chip port only. */
void set_each_mode(SW_Config &config)
{
    define(config, 1, 3);
    define(config, 10, 10);
    define(config, 12, 12);
    config.ports[0].vid = 10;
    config.ports[0].dot1qMode = 3;
    config.ports[0].discardTagged = 1;
    SetTags(config, 0, 10, 10, 2);
    config.ports[1].vid = 12;
    config.ports[1].dot1qMode = 2;
    config.ports[1].portPrio = 5;
    SetList(config, 1, "1,10-20");
    SetTags(config, 1, 1, 2, 3);
    SetTags(config, 1, 12, 12, 3);
    config.ports[2].vid = 4;
    config.ports[2].dot1qMode = 1;
    config.vlanPortType[2] = 4;
    config.ports[3].vid = 5000;
    config.ports[4].vid = 2;
}

const char *const EACH_MODE =
    "\n"
    "Existing VLANs:1-3,10,12\n"
    "CPU : Access  (VID:10(tagged))\n"
    "LAN : Trunk   (VID:12(untagged)/(tagged), Allowed:1,10-20 real:1-2,12) QOS:5 - Custom\n"
    "WAN : Trunk   (VID:4(Warning: not exists), Allowed: 1-4095 (ALL)) - Port Custom Settings\n"
    "SFP0: Failed  (VID:5000)\n"
    "SFP1: Custom  (VID:2)\n";

TEST(VlanProperties, ShowEveryModeOnce)
{
    Vlan_Host host;
    host.set_factory();
    set_each_mode(host.running());
    EXPECT_EQ(properties_of(host), EACH_MODE);
}

TEST(VlanProperties, CanBeShownOfAnyRecord)
{
    SW_Control control = {};
    Vlan_Host host;
    host.set_factory();
    set_each_mode(host.running());
    control.deviceImage = &host.running();
    Output_Capture capture;
    SW_Print_Vlan_Properties_Of(control.deviceImage);
    EXPECT_EQ(capture.finish(), EACH_MODE);
}

/* The line of one port; the others have the factory settings. */

struct Line_Row {
    const char *name;
    std::function<void(SW_Config &)> edit; /* of the WAN port, number 2, chip port 0 */
    const char *line;
};

void PrintTo(const Line_Row &row, std::ostream *out)
{
    *out << row.name;
}

class PortProperties : public testing::TestWithParam<Line_Row>
{
};

TEST_P(PortProperties, StandOnOneLine)
{
    Vlan_Host host;
    host.set_factory();
    define(host.running(), 10, 12);
    GetParam().edit(host.running());
    EXPECT_EQ(properties_of(host), "\n"
                                   "Existing VLANs:10-12\n"
                                   "CPU : Default (VID:1(untagged))\n"
                                   "LAN : Default (VID:1(untagged))\n" +
                                       std::string(GetParam().line) +
                                       "\n"
                                       "SFP0: Default (VID:1(untagged))\n"
                                       "SFP1: Default (VID:1(untagged))\n");
}

constexpr int WAN = 2;

/* WAN with a VID and an 802.1Q mode. */
SW_Port_Config &wan(SW_Config &config, uint16_t vid, uint32_t dot1qMode)
{
    config.ports[WAN].vid = vid;
    config.ports[WAN].dot1qMode = dot1qMode;
    return config.ports[WAN];
}

/* The same with a discard flag and a member tag in the entry of the VID. */
void wan_member(SW_Config &config, uint16_t vid, uint32_t dot1qMode, uint32_t discardTagged,
                uint8_t tag)
{
    wan(config, vid, dot1qMode).discardTagged = discardTagged;
    SetTags(config, WAN, vid, vid, tag);
}

const Line_Row MODE_ROWS[] = {
    {"Default", [](SW_Config &) {}, "WAN : Default (VID:1(untagged))"},
    {"DefaultDiscardingTagged", [](SW_Config &c) { c.ports[WAN].discardTagged = 1; },
     "WAN : Default (VID:1)"},
    {"DefaultWithAnotherDiscardValue", [](SW_Config &c) { c.ports[WAN].discardTagged = 2; },
     "WAN : Default (VID:1(untagged))"},
    {"DefaultWhateverElse",
     [](SW_Config &c) {
         c.ports[WAN].portPrio = 3;
         c.ports[WAN].userPrio = 0;
         c.ports[WAN].egressMode = 2;
         c.vlanPortType[WAN] = 4;
         SetTags(c, WAN, 1, 1, 3);
     },
     "WAN : Default (VID:1(untagged))"},
    {"FailedZero", [](SW_Config &c) { wan(c, 0, 3); }, "WAN : Failed  (VID:0)"},
    {"FailedZeroWithoutMode", [](SW_Config &c) { wan(c, 0, 0); }, "WAN : Failed  (VID:0)"},
    {"FailedFirstAbove", [](SW_Config &c) { wan(c, 4096, 2); }, "WAN : Failed  (VID:4096)"},
    {"FailedMost", [](SW_Config &c) { wan(c, 65535, 1); }, "WAN : Failed  (VID:65535)"},
    {"FailedWhateverElse",
     [](SW_Config &c) {
         wan(c, 5000, 2).portPrio = 3;
         c.vlanPortType[WAN] = 4;
     },
     "WAN : Failed  (VID:5000)"},
    {"AccessUntaggedMember", [](SW_Config &c) { wan_member(c, 10, 3, 1, 2); },
     "WAN : Access  (VID:10(tagged))"},
    {"AccessTaggedMember", [](SW_Config &c) { wan_member(c, 10, 3, 1, 3); },
     "WAN : Access  (VID:10(tagged)/(tagged))"},
    {"AccessNoMember", [](SW_Config &c) { wan_member(c, 10, 3, 0, 1); },
     "WAN : Access  (VID:10(untagged)/(other))"},
    {"AccessUnmodifiedMember", [](SW_Config &c) { wan_member(c, 10, 3, 0, 0); },
     "WAN : Access  (VID:10(untagged)/(other))"},
    {"AccessUnknownTag", [](SW_Config &c) { wan_member(c, 10, 3, 0, 255); },
     "WAN : Access  (VID:10(untagged)/(other))"},
    {"AccessWithAnotherDiscardValue", [](SW_Config &c) { wan_member(c, 10, 3, 2, 2); },
     "WAN : Access  (VID:10(tagged))"},
    {"AccessShowsNotTheEgressMode",
     [](SW_Config &c) {
         wan_member(c, 10, 3, 0, 2);
         c.ports[WAN].egressMode = 2;
     },
     "WAN : Access  (VID:10(untagged))"},
    {"AccessMissingVlan", [](SW_Config &c) { wan_member(c, 13, 3, 1, 3); },
     "WAN : Access  (VID:13(Warning: not exists))"},
    {"AccessVlanOneNeedNotExist", [](SW_Config &c) { wan_member(c, 1, 3, 1, 2); },
     "WAN : Access  (VID:1(tagged))"},
    {"AccessLastVlan", [](SW_Config &c) { wan_member(c, 4095, 3, 1, 2); },
     "WAN : Access  (VID:4095(Warning: not exists))"},
    {"Trunk",
     [](SW_Config &c) {
         wan_member(c, 11, 2, 0, 3);
         SetTags(c, WAN, 10, 10, 2);
         SetTags(c, WAN, 20, 30, 3);
         SetList(c, WAN, "10-30");
     },
     "WAN : Trunk   (VID:11(untagged)/(tagged), Allowed:10-30 real:10-11)"},
    {"TrunkCountsUnmodifiedMembership",
     [](SW_Config &c) {
         wan_member(c, 1, 2, 1, 2);
         SetTags(c, WAN, 12, 12, 0);
         SetList(c, WAN, "12");
     },
     "WAN : Trunk   (VID:1(tagged), Allowed:12 real:12)"},
    {"TrunkWithoutAnything",
     [](SW_Config &c) {
         wan(c, 13, 2);
         SetList(c, WAN, "");
     },
     "WAN : Trunk   (VID:13(Warning: not exists), Allowed: real:)"},
    {"TrunkListNeedNotParse",
     [](SW_Config &c) {
         wan_member(c, 10, 2, 0, 1);
         SetList(c, WAN, "%d,5-5 x");
     },
     "WAN : Trunk   (VID:10(untagged)/(other), Allowed:%d,5-5 x real:)"},
    {"TrunkOfAll", [](SW_Config &c) { wan_member(c, 10, 1, 0, 2); },
     "WAN : Trunk   (VID:10(untagged), Allowed: 1-4095 (ALL))"},
    {"TrunkOfAllTagged", [](SW_Config &c) { wan_member(c, 1, 1, 1, 3); },
     "WAN : Trunk   (VID:1(tagged)/(tagged), Allowed: 1-4095 (ALL))"},
    {"TrunkOfAllMissingVlan", [](SW_Config &c) { wan(c, 9, 1); },
     "WAN : Trunk   (VID:9(Warning: not exists), Allowed: 1-4095 (ALL))"},
    {"CustomShowsNoMarks", [](SW_Config &c) { wan_member(c, 10, 0, 1, 3); },
     "WAN : Custom  (VID:10)"},
    {"CustomMissingVlan", [](SW_Config &c) { wan(c, 13, 0); },
     "WAN : Custom  (VID:13(Warning: not exists))"},
    {"UnknownMode", [](SW_Config &c) { wan(c, 10, 4); }, "WAN :"},
    {"UnknownModeWithVlanOne", [](SW_Config &c) { wan(c, 1, 4294967295U).portPrio = 2; },
     "WAN : QOS:2 - Custom"},
    {"CustomType",
     [](SW_Config &c) {
         wan(c, 10, 0);
         c.vlanPortType[WAN] = 4;
     },
     "WAN : Custom  (VID:10) - Port Custom Settings"},
    {"CustomTypeBehindQos",
     [](SW_Config &c) {
         wan_member(c, 10, 3, 1, 2);
         c.ports[WAN].portPrio = 1;
         c.vlanPortType[WAN] = 4;
     },
     "WAN : Access  (VID:10(tagged)) QOS:1 - Custom - Port Custom Settings"},
    {"OtherType",
     [](SW_Config &c) {
         wan(c, 10, 0);
         c.vlanPortType[WAN] = 5;
     },
     "WAN : Custom  (VID:10)"},
};

INSTANTIATE_TEST_SUITE_P(Modes, PortProperties, testing::ValuesIn(MODE_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

/* The mark of the quality of service, behind a custom line. */

struct Qos_Row {
    const char *name;
    uint32_t prioMapRule;
    uint32_t ipPrio;
    uint32_t userPrio;
    uint8_t portPrio;
    const char *mark;
};

void PrintTo(const Qos_Row &row, std::ostream *out)
{
    *out << row.name;
}

class QosMark : public testing::TestWithParam<Qos_Row>
{
};

TEST_P(QosMark, ShowsWhatIsNotTheFactorySetting)
{
    const Qos_Row &row = GetParam();
    Vlan_Host host;
    host.set_factory();
    SW_Port_Config &settings = wan(host.running(), 13, 0);
    settings.prioMapRule = row.prioMapRule;
    settings.ipPrio = row.ipPrio;
    settings.userPrio = row.userPrio;
    settings.portPrio = row.portPrio;
    EXPECT_EQ(properties_of(host), "\n"
                                   "Existing VLANs:<none>\n"
                                   "CPU : Default (VID:1(untagged))\n"
                                   "LAN : Default (VID:1(untagged))\n"
                                   "WAN : Custom  (VID:13(Warning: not exists))" +
                                       std::string(row.mark) +
                                       "\n"
                                       "SFP0: Default (VID:1(untagged))\n"
                                       "SFP1: Default (VID:1(untagged))\n");
}

const Qos_Row QOS_ROWS[] = {
    {"Factory", 1, 1, 1, 0, ""},
    {"FactoryWithPriority", 1, 1, 1, 3, " QOS:3 - Custom"},
    {"Tdm", 0, 0, 1, 0, ""},
    {"TdmWithPriority", 0, 0, 1, 7, " QOS:7"},
    {"TdmWithLargePriority", 0, 0, 1, 255, " QOS:255"},
    {"AllOff", 0, 0, 0, 0, " QOS:0 - Custom"},
    {"NoUserPrio", 1, 1, 0, 0, " QOS:0 - Custom"},
    {"NoIpPrio", 1, 0, 1, 0, " QOS:0 - Custom"},
    {"NoRule", 0, 1, 1, 0, " QOS:0 - Custom"},
    {"NoUserPrioWithPriority", 0, 0, 0, 6, " QOS:6 - Custom"},
    {"RuleOfTwo", 2, 1, 1, 0, " QOS:0 - Custom"},
    {"IpPrioOfTwo", 1, 2, 1, 0, " QOS:0 - Custom"},
    {"UserPrioOfTwo", 1, 1, 2, 0, " QOS:0 - Custom"},
    {"TdmUserPrioOfTwo", 0, 0, 2, 5, " QOS:5 - Custom"},
};

INSTANTIATE_TEST_SUITE_P(Settings, QosMark, testing::ValuesIn(QOS_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

/* Range texts that do not fit. */

/* 99 characters: the last number, 70, is cut after its first digit. */
const char *const CUT_TEXT =
    "2,4,6,8,10,12,14,16,18,20,22,24,26,28,30,32,34,36,38,40,42,44,46,48,50,"
    "52,54,56,58,60,62,64,66,68,7";

TEST(VlanProperties, CutRangeTextsAt99Characters)
{
    ASSERT_EQ(strlen(CUT_TEXT), 99U);
    Vlan_Host host;
    host.set_factory();
    for (int vid = 2; vid <= 4094; vid += 2) {
        define(host.running(), vid, vid);
        SetTags(host.running(), WAN, vid, vid, 3);
    }
    wan(host.running(), 2, 2);
    const std::string longest(99, '9');
    SetList(host.running(), WAN, longest.c_str());
    EXPECT_EQ(properties_of(host), std::string("\n"
                                               "Existing VLANs:") +
                                       CUT_TEXT +
                                       "\n"
                                       "CPU : Default (VID:1(untagged))\n"
                                       "LAN : Default (VID:1(untagged))\n"
                                       "WAN : Trunk   (VID:2(untagged)/(tagged), Allowed:" +
                                       longest + " real:" + CUT_TEXT +
                                       ")\n"
                                       "SFP0: Default (VID:1(untagged))\n"
                                       "SFP1: Default (VID:1(untagged))\n");
}

TEST(VlanProperties, ShowAllVlansAsOneRange)
{
    Vlan_Host host;
    host.set_factory();
    define(host.running(), 1, 4095);
    wan_member(host.running(), 4095, 3, 0, 2);
    EXPECT_EQ(properties_of(host), "\n"
                                   "Existing VLANs:1-4095\n"
                                   "CPU : Default (VID:1(untagged))\n"
                                   "LAN : Default (VID:1(untagged))\n"
                                   "WAN : Access  (VID:4095(untagged))\n"
                                   "SFP0: Default (VID:1(untagged))\n"
                                   "SFP1: Default (VID:1(untagged))\n");
}

} // namespace
