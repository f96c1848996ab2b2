/* Load, settings, facts and negotiation of the real driver on every simulated chip. */

#include "tests/simulator/driver_on_simulator.h"

#include <algorithm>

namespace
{

constexpr uint32_t GARBAGE = 0xDEADBEEF;

/* A setting of a port or of the switch with its get twin; the port counts for port settings. */
struct Setting {
    const char *name;
    const char *feature; /* that the chip must have; empty: every chip */
    bool ofPort;
    uint32_t highest; /* values 0 to this are set and read back */
    int (*set)(SW_Device *device, uint32_t port, uint32_t value);
    int (*get)(SW_Device *device, uint32_t port, uint32_t *value);
};

struct Bytes_Values {
    static int set(SW_Device *device, uint32_t port, uint32_t value)
    {
        const SW_Bytes_Count flags = {value >> 2 & 1, value >> 1 & 1, value & 1};
        return swSetBytesCount(device, port, &flags);
    }
    static int get(SW_Device *device, uint32_t port, uint32_t *value)
    {
        SW_Bytes_Count flags = {GARBAGE, GARBAGE, GARBAGE};
        const int status = swGetBytesCount(device, port, &flags);
        if (status == SW_STATUS_OK) {
            *value = flags.limitMgmt << 2 | flags.countIfg << 1 | flags.countPre;
        }
        return status;
    }
};

struct Egress_Rates {
    static int set(SW_Device *device, uint32_t port, uint32_t value)
    {
        const SW_Egress_Rate rate = {value};
        return swSetEgressRate(device, port, &rate);
    }
    static int get(SW_Device *device, uint32_t port, uint32_t *value)
    {
        SW_Egress_Rate rate = {GARBAGE};
        const int status = swGetEgressRate(device, port, &rate);
        if (status == SW_STATUS_OK) {
            *value = rate.rate;
        }
        return status;
    }
};

template <int (*Set)(SW_Device *, uint32_t), int (*Get)(SW_Device *, uint32_t *)>
struct Whole_Switch {
    static int set(SW_Device *device, uint32_t /*port*/, uint32_t value)
    {
        return Set(device, value);
    }
    static int get(SW_Device *device, uint32_t /*port*/, uint32_t *value)
    {
        return Get(device, value);
    }
};

using Frame_Size = Whole_Switch<swSetMaxFrameSize, swGetMaxFrameSize>;
using Ingress_Mirror = Whole_Switch<swSetIngressMirrorDest, swGetIngressMirrorDest>;
using Egress_Mirror = Whole_Switch<swSetEgressMirrorDest, swGetEgressMirrorDest>;

// clang-format off
constexpr Setting SETTINGS[] = {
    {"Vid",              "",       true, 4095, swSetPortVid, swGetPortVid},
    {"ForceDefaultVid",  "vlan",   true, 1, swSetPortForceDefaultVid, swGetPortForceDefaultVid},
    {"Dot1qMode",        "vlan",   true, 3, swSetPortDot1qMode, swGetPortDot1qMode},
    {"DiscardTagged",    "disc",   true, 1, swSetDiscardTagged, swGetDiscardTagged},
    {"DiscardUntagged",  "disc",   true, 1, swSetDiscardUntagged, swGetDiscardUntagged},
    {"EgressMode",       "prio",   true, 2, swSetEgressMode, swGetEgressMode},
    {"EgressModeAddTag", "add",    true, 3, swSetEgressMode, swGetEgressMode},
    {"UseCoreTag",       "core",   true, 1, swSetUseCoreTag, swGetUseCoreTag},
    {"PrioMapRule",      "prio",   true, 1, swSetPrioMapRule, swGetPrioMapRule},
    {"UseIpPrio",        "prio",   true, 1, swSetUseIpPrio, swGetUseIpPrio},
    {"UseUserPrio",      "prio",   true, 1, swSetUseUserPrio, swGetUseUserPrio},
    {"DefaultPrio",      "prio",   true, 3, swSetPortDefaultPrio, swGetPortDefaultPrio},
    {"DefaultPrio3Bits", "prio3",  true, 7, swSetPortDefaultPrio, swGetPortDefaultPrio},
    {"Pri3Rate",         "p123",   true, 1, swSetPri3Rate, swGetPri3Rate},
    {"Pri2Rate",         "p123",   true, 1, swSetPri2Rate, swGetPri2Rate},
    {"Pri1Rate",         "p123",   true, 1, swSetPri1Rate, swGetPri1Rate},
    {"Pri0RateCode",     "p0code", true, 7, swSetPri0Rate, swGetPri0Rate},
    {"Pri0Rate32",       "p0div32", true, 12, swSetPri0Rate, swGetPri0Rate},
    {"Pri0Rate28",       "p0div28", true, 12, swSetPri0Rate, swGetPri0Rate},
    {"EgressRateCode",   "ercode",  true, 7, Egress_Rates::set, Egress_Rates::get},
    {"EgressRate32",     "erdiv32", true, 12, Egress_Rates::set, Egress_Rates::get},
    {"EgressRate28",     "erdiv28", true, 12, Egress_Rates::set, Egress_Rates::get},
    {"EgressRate40",     "erdiv40", true, 12, Egress_Rates::set, Egress_Rates::get},
    {"BytesCount",       "bytes",  true, 7, Bytes_Values::set, Bytes_Values::get},
    {"IngressMirror",    "mirror", true, 1, swSetIngressMirrorSource, swGetIngressMirrorSource},
    {"EgressMirror",     "mirror", true, 1, swSetEgressMirrorSource, swGetEgressMirrorSource},
    {"MaxFrameSize",     "frame",  false, 1, Frame_Size::set, Frame_Size::get},
    {"IngressMirrorDest", "mirror", false, 3, Ingress_Mirror::set, Ingress_Mirror::get},
    {"EgressMirrorDest", "mirror", false, 3, Egress_Mirror::set, Egress_Mirror::get},
    {"UserPrioClass",    "prio",   false, 3, swSetUserPrioToTrafficClass, swGetUserPrioToTrafficClass},
    {"DscpClass",        "prio",   false, 3, swSetDscpToTrafficClass, swGetDscpToTrafficClass},
};

/* What a chip without the words refuses altogether. */
constexpr struct {
    const char *features[4]; /* any of these has it */
    const char *setting;
} GUARDED[] = {
    {{"vlan"}, "ForceDefaultVid"},     {{"vlan"}, "Dot1qMode"},
    {{"disc"}, "DiscardTagged"},       {{"disc"}, "DiscardUntagged"},
    {{"prio"}, "EgressMode"},          {{"core"}, "UseCoreTag"},
    {{"prio"}, "PrioMapRule"},         {{"prio"}, "UseIpPrio"},
    {{"prio"}, "UseUserPrio"},         {{"prio"}, "DefaultPrio"},
    {{"p123"}, "Pri3Rate"},            {{"p123"}, "Pri2Rate"},
    {{"p123"}, "Pri1Rate"},            {{"p0code", "p0div32", "p0div28"}, "Pri0RateCode"},
    {{"ercode", "erdiv32", "erdiv28", "erdiv40"}, "EgressRateCode"},
    {{"bytes"}, "BytesCount"},         {{"mirror"}, "IngressMirror"},
    {{"mirror"}, "EgressMirror"},      {{"frame"}, "MaxFrameSize"},
    {{"mirror"}, "IngressMirrorDest"}, {{"mirror"}, "EgressMirrorDest"},
    {{"prio"}, "UserPrioClass"},       {{"prio"}, "DscpClass"},
};
// clang-format on

const Setting &setting_named(const std::string &name)
{
    return *std::ranges::find(SETTINGS, name, &Setting::name);
}

TEST_P(DriverOnSimulator, LoadsAndEnables)
{
    load();
    EXPECT_EQ(device.deviceId, GetParam().chip.identifier);
    EXPECT_EQ(device.familyA, GetParam().chip.familyA);
    EXPECT_EQ(device.familyB, GetParam().chip.familyB);
    EXPECT_EQ(device.numberOfPorts, GetParam().chip.ports);
    EXPECT_EQ(device.validPortMask, chip->row.validPorts);
    EXPECT_EQ(device.phyPortMask, chip->row.phyPorts);
    EXPECT_EQ(device.baseRegAddr, GetParam().mode == SIM_DIRECT ? 16 : 0);
    EXPECT_EQ(device.smiAddress, GetParam().mode == SIM_DIRECT ? 0 : 16);
    let_the_last_write_end();
    for (unsigned port = 0; port < ports(); ++port) {
        EXPECT_EQ(chip->ports[hardware_port(port)][4], 0x0033) << port;
    }
}

TEST_P(DriverOnSimulator, LeavesThePortsAsTheyAreWhenTold)
{
    SW_Sys_Config config = driver_configuration(GetParam().chip, GetParam().mode);
    config.initPorts = 0;
    ASSERT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    EXPECT_EQ(chip->ports[0][4], 0x0030);
}

TEST_P(DriverOnSimulator, RefusesACpuPortThatIsNotThere)
{
    SW_Sys_Config config = driver_configuration(GetParam().chip, GetParam().mode);
    config.cpuPort = GetParam().chip.identifier == 0x250 ? 3 : 11;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_BAD_CPU_PORT);
    EXPECT_EQ(device.loaded, 0U);
}

TEST_P(DriverOnSimulator, ReadsBackEverySettingOfEveryPort)
{
    load();
    for (const Setting &setting : SETTINGS) {
        if (*setting.feature != '\0' && !supports(setting.feature)) {
            continue;
        }
        const uint32_t step = setting.highest > 100 ? 97 : 1;
        for (unsigned port = 0; port < (setting.ofPort ? ports() : 1); ++port) {
            for (uint32_t value = 0; value <= setting.highest; value += step) {
                uint32_t back = GARBAGE;
                ASSERT_EQ(setting.set(&device, port, value), SW_STATUS_OK)
                    << setting.name << ' ' << port << ' ' << value;
                ASSERT_EQ(setting.get(&device, port, &back), SW_STATUS_OK) << setting.name;
                ASSERT_EQ(back, value) << setting.name << ' ' << port;
            }
        }
    }
}

TEST_P(DriverOnSimulator, KeepsTheSettingsOfThePortsApart)
{
    load();
    for (unsigned port = 0; port < ports(); ++port) {
        ASSERT_EQ(swSetPortVid(&device, port, 100 + port), SW_STATUS_OK);
    }
    for (unsigned port = 0; port < ports(); ++port) {
        uint32_t vid = 0;
        ASSERT_EQ(swGetPortVid(&device, port, &vid), SW_STATUS_OK);
        EXPECT_EQ(vid, 100 + port);
        EXPECT_EQ(chip->ports[hardware_port(port)][7] & 0xFFF, 100 + port);
    }
    uint32_t vid = GARBAGE;
    EXPECT_EQ(swSetPortVid(&device, ports(), 1), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swGetPortVid(&device, ports(), &vid), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(vid, GARBAGE);
}

class DriverWithPriorities : public DriverOnSimulator
{
};

TEST_P(DriverWithPriorities, KeepsTheTrafficClassesApart)
{
    load();
    for (uint32_t priority = 0; priority < 8; ++priority) {
        ASSERT_EQ(swSetUserPrioToTrafficClass(&device, priority, priority / 3), SW_STATUS_OK);
    }
    for (uint32_t dscp = 0; dscp < 64; ++dscp) {
        ASSERT_EQ(swSetDscpToTrafficClass(&device, dscp, dscp % 4), SW_STATUS_OK);
    }
    uint32_t value = GARBAGE;
    for (uint32_t priority = 0; priority < 8; ++priority) {
        ASSERT_EQ(swGetUserPrioToTrafficClass(&device, priority, &value), SW_STATUS_OK);
        EXPECT_EQ(value, priority / 3);
    }
    for (uint32_t dscp = 0; dscp < 64; ++dscp) {
        ASSERT_EQ(swGetDscpToTrafficClass(&device, dscp, &value), SW_STATUS_OK);
        EXPECT_EQ(value, dscp % 4);
    }
    EXPECT_EQ(chip->global[24], 0xA540);
    EXPECT_EQ(chip->global[16], 0xE4E4);
    EXPECT_EQ(chip->global[23], 0xE4E4);
}

TEST_P(DriverOnSimulator, TurnsMirroringOffWithPort15)
{
    load();
    const int expected = supports("mirror") ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED;
    EXPECT_EQ(swSetIngressMirrorDest(&device, 0), expected);
    EXPECT_EQ(swSetIngressMirrorDest(&device, SW_MIRROR_NONE), expected);
    EXPECT_EQ(swSetEgressMirrorDest(&device, SW_MIRROR_NONE), expected);
    let_the_last_write_end();
    EXPECT_EQ(chip->global[26], 0xFF00);
}

TEST_P(DriverOnSimulator, RefusesWhatTheChipDoesNotHaveWithoutAnAccess)
{
    load();
    Sim_Counters counters{};
    ASSERT_TRUE(Sim_Counters_Install(&counters));
    for (const auto &row : GUARDED) {
        const bool there = std::ranges::any_of(row.features, [&](const char *feature) {
            return feature != nullptr && supports(feature);
        });
        if (there) {
            continue;
        }
        const Setting &setting = setting_named(row.setting);
        uint32_t value = GARBAGE;
        EXPECT_EQ(setting.set(&device, 0, 1), SW_STATUS_NOT_SUPPORTED) << row.setting;
        EXPECT_EQ(setting.get(&device, 0, &value), SW_STATUS_NOT_SUPPORTED) << row.setting;
        EXPECT_EQ(value, GARBAGE) << row.setting;
    }
    if (!supports("add")) {
        EXPECT_EQ(swSetEgressMode(&device, 0, GT_ADD_TAG), SW_STATUS_NOT_SUPPORTED);
    }
    EXPECT_EQ(counters.reads + counters.writes, 0U);
    EXPECT_TRUE(Sim_Layer_Remove(&counters.layer));
}

/* The board's lines by hardware port: WAN, LAN, CPU, SFP1, SFP0; nothing beyond. */
struct Expected_Link {
    bool up;
    bool full;
    uint32_t speed;
};

constexpr Expected_Link BOARD_LINKS[] = {
    {true, true, SW_SPEED_100},       {true, true, SW_SPEED_1000}, {true, true, SW_SPEED_100},
    {false, false, SW_SPEED_UNKNOWN}, {true, true, SW_SPEED_1000},
};

TEST_P(DriverOnSimulator, ShowsTheBoardsLinks)
{
    load();
    const bool newer = supports("detect");
    for (unsigned port = 0; port < ports(); ++port) {
        const unsigned line = hardware_port(port);
        Expected_Link expected = line < 5 ? BOARD_LINKS[line] : BOARD_LINKS[3];
        if (expected.speed == SW_SPEED_1000 && !supports(has_phy(port) ? "gigabit" : "gigaport")) {
            expected.speed = SW_SPEED_100;
        }
        const bool from_phy = supports("linkphy");
        if (!expected.up && !newer && !from_phy) {
            expected.speed = SW_SPEED_10; /* one bit cannot say more */
        }
        uint32_t up = GARBAGE;
        uint32_t full = GARBAGE;
        uint32_t speed = GARBAGE;
        const int status = from_phy && !has_phy(port) ? SW_STATUS_NOT_SUPPORTED : SW_STATUS_OK;
        EXPECT_EQ(swGetLinkState(&device, port, &up), SW_STATUS_OK) << port;
        EXPECT_EQ(up, expected.up ? 1U : 0U) << port;
        EXPECT_EQ(swGetDuplex(&device, port, &full), status) << port;
        EXPECT_EQ(swGetSpeedMode(&device, port, &speed), status) << port;
        if (status == SW_STATUS_OK) {
            EXPECT_EQ(full, expected.full ? 1U : 0U) << port;
            EXPECT_EQ(speed, expected.speed) << port;
        }
    }
}

TEST_P(DriverOnSimulator, DetectsThePhys)
{
    load();
    for (unsigned port = 0; port < ports(); ++port) {
        uint32_t detected = GARBAGE;
        EXPECT_EQ(swGetPhyDetect(&device, port, &detected),
                  supports("detect") ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED);
        EXPECT_EQ(detected, !supports("detect") ? GARBAGE : has_phy(port) ? 1U : 0U) << port;
    }
}

/* What each mode ends in with a partner that can everything. */
constexpr struct {
    Expected_Link gigabit;
    Expected_Link fast;
    int fastStatus;
} MODES[] = {
    {{true, true, SW_SPEED_1000}, {true, true, SW_SPEED_100}, SW_STATUS_OK},
    {{true, true, SW_SPEED_1000}, {}, SW_STATUS_NOT_SUPPORTED},
    {{true, true, SW_SPEED_100}, {true, true, SW_SPEED_100}, SW_STATUS_OK},
    {{true, true, SW_SPEED_10}, {true, true, SW_SPEED_10}, SW_STATUS_OK},
    {{true, true, SW_SPEED_1000}, {true, true, SW_SPEED_100}, SW_STATUS_OK},
    {{true, false, SW_SPEED_1000}, {true, false, SW_SPEED_100}, SW_STATUS_OK},
    {{true, true, SW_SPEED_1000}, {}, SW_STATUS_NOT_SUPPORTED},
    {{true, false, SW_SPEED_1000}, {}, SW_STATUS_NOT_SUPPORTED},
    {{true, true, SW_SPEED_100}, {true, true, SW_SPEED_100}, SW_STATUS_OK},
    {{true, false, SW_SPEED_100}, {true, false, SW_SPEED_100}, SW_STATUS_OK},
    {{true, true, SW_SPEED_10}, {true, true, SW_SPEED_10}, SW_STATUS_OK},
    {{true, false, SW_SPEED_10}, {true, false, SW_SPEED_10}, SW_STATUS_OK},
};

TEST_P(DriverOnSimulator, NegotiatesWhatAnAutoModeAdvertises)
{
    load();
    for (unsigned port = 0; port < ports(); ++port) {
        Sim_Chip_Plug(chip.get(), hardware_port(port), SIM_UP_TO_1000);
        for (uint32_t mode = 0; mode < std::size(MODES); ++mode) {
            const bool gigabit = supports("gigabit");
            const int status = !has_phy(port) ? SW_STATUS_NOT_SUPPORTED
                               : gigabit      ? SW_STATUS_OK
                                              : MODES[mode].fastStatus;
            ASSERT_EQ(swSetPortAutoMode(&device, port, mode), status) << port << ' ' << mode;
            if (status != SW_STATUS_OK) {
                continue;
            }
            const Expected_Link &expected = gigabit ? MODES[mode].gigabit : MODES[mode].fast;
            uint32_t up = GARBAGE;
            uint32_t full = GARBAGE;
            uint32_t speed = GARBAGE;
            EXPECT_EQ(swGetLinkState(&device, port, &up), SW_STATUS_OK);
            EXPECT_EQ(swGetDuplex(&device, port, &full), SW_STATUS_OK);
            EXPECT_EQ(swGetSpeedMode(&device, port, &speed), SW_STATUS_OK);
            EXPECT_EQ(up, 1U) << port << ' ' << mode;
            EXPECT_EQ(full, expected.full ? 1U : 0U) << port << ' ' << mode;
            EXPECT_EQ(speed, expected.speed) << port << ' ' << mode;
        }
    }
}

TEST_P(DriverOnSimulator, LosesTheLinkWhenNothingIsInCommon)
{
    load();
    for (unsigned port = 0; port < ports(); ++port) {
        if (!has_phy(port)) {
            continue;
        }
        Sim_Chip_Plug(chip.get(), hardware_port(port), SIM_10_HALF);
        ASSERT_EQ(swSetPortAutoMode(&device, port, 8), SW_STATUS_OK);
        uint32_t up = GARBAGE;
        EXPECT_EQ(swGetLinkState(&device, port, &up), SW_STATUS_OK);
        EXPECT_EQ(up, 0U) << port;
    }
}

TEST_P(DriverOnSimulator, ReachesThePagesOfThePhys)
{
    load();
    for (unsigned port = 0; port < ports(); ++port) {
        uint16_t value = 0;
        const int status = has_phy(port) ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED;
        EXPECT_EQ(swReadPagedPhyReg(&device, port, 16, 3, &value), status) << port;
        const auto led = static_cast<uint16_t>((value & 0xFFF0) | 0xE);
        EXPECT_EQ(swWritePagedPhyReg(&device, port, 16, 3, led), status) << port;
        let_the_last_write_end();
        if (has_phy(port)) {
            const Sim_Phy &phy = chip->phys[hardware_port(port)];
            EXPECT_EQ(value, 0x1021) << port;
            EXPECT_EQ(phy.pages[3][16], 0x102E) << port;
            EXPECT_EQ(phy.page, 0) << port;
            EXPECT_EQ(phy.pages[0][16], 0) << port;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Chips, DriverWithPriorities,
                         testing::ValuesIn(driven_cases([](const Driven_Case &driven) {
                             return has(driven.chip, "prio");
                         })),
                         driven_name);
INSTANTIATE_TEST_SUITE_P(Chips, DriverOnSimulator, testing::ValuesIn(driven_cases()), driven_name);

} // namespace
