#include "switch/config/keywords.h"
#include "tests/switch/engine/port_board.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace
{

constexpr size_t COPPER_ACCESSES = 46;
constexpr size_t OTHER_ACCESSES = 36;
constexpr size_t AUTO_MODE_ACCESSES = 10;

/* Registers 4, 7, 8, 9, 10 of a port. */
using Registers = std::array<uint16_t, 5>;
constexpr int REGISTER_NUMBERS[] = {4, 7, 8, 9, 10};

/* A change of one setting of a port with factory settings on a chip that was just brought up. */
struct Setting_Row {
    const char *name;
    int port;
    void (*change)(SW_Port_Config *port);
    const char *log;       /* all that is printed */
    const char *failure;   /* all that is printed when the first access fails */
    size_t first;          /* access of this setting among those of the port */
    const char *accesses;  /* all accesses of this setting */
    Registers final_state; /* what the port's registers hold at the end */
};

void PrintTo(const Setting_Row &row, std::ostream *out)
{
    *out << row.name;
}

using Port = SW_Port_Config;

constexpr Setting_Row SETTINGS[] = {
    {"AutoMode",
     LAN,
     [](Port *port) { port->autoMode = SPEED_100_DUPLEX_FULL; },
     "Switch: Port 1 Auto Mode: Speed Auto Duplex Auto -> Speed 100 Duplex Full\n",
     "Switch: ...Set Port LAN Auto Mode! Error:1\n",
     0,
     "R 01 02 5349\nR 01 03 b5a1\nR 01 01 796d\nR 01 0f 3000\nR 01 04 01e1\nW 01 04 0101\n"
     "R 01 09 0300\nW 01 09 0000\nR 01 00 1140\nW 01 00 1340\n",
     {0x0073, 0x0001, 0, 0, 0x3000}},
    {"Vid",
     SFP0,
     [](Port *port) { port->vid = 10; },
     "Switch: Port 3 VID: 1 -> 10\n",
     "Switch: ...Set Port SFP0 VID! Error:1\n",
     0,
     "R 14 07 0001\nW 14 07 000a\n",
     {0x0073, 0x000A, 0, 0, 0x3000}},
    {"ForceDefaultVid",
     SFP0,
     [](Port *port) { port->vidForceDefault = 1; },
     "Switch: Port 3 Force Default VID: False -> True\n",
     "Switch: ...Set Port SFP0 Force Default VID! Error:1\n",
     2,
     "R 14 07 0001\nW 14 07 1001\n",
     {0x0073, 0x1001, 0, 0, 0x3000}},
    {"Dot1qMode",
     SFP0,
     [](Port *port) { port->dot1qMode = SW_Dot1q_Mode_SECURE; },
     "Switch: Port 3 VLAN Dot1Q Mode: Disable -> Secure\n",
     "Switch: ...Set Port SFP0 Vlan Dot1q Mode! Error:1\n",
     4,
     "R 14 08 0000\nW 14 08 0c00\n",
     {0x0073, 0x0001, 0x0C00, 0, 0x3000}},
    {"DiscardTagged",
     SFP0,
     [](Port *port) { port->discardTagged = 1; },
     "Switch: Port 3 Discard Tagged: False -> True\n",
     "Switch: ...Set Port SFP0 Discard Tagged! Error:1\n",
     6,
     "R 14 08 0000\nW 14 08 0200\n",
     {0x0073, 0x0001, 0x0200, 0, 0x3000}},
    {"DiscardUntagged",
     SFP0,
     [](Port *port) { port->discardUntagged = 1; },
     "Switch: Port 3 Discard Untagged: False -> True\n",
     "Switch: ...Set Port SFP0 Discard Untagged! Error:1\n",
     8,
     "R 14 08 0000\nW 14 08 0100\n",
     {0x0073, 0x0001, 0x0100, 0, 0x3000}},
    {"EgressMode",
     SFP0,
     [](Port *port) { port->egressMode = SW_Egress_Mode_TAGGED_EGRESS; },
     "Switch: Port 3 Egress Mode: Unmodify egress -> Tagged egress\n",
     "Switch: ...Set Port SFP0 Egress Mode! Error:1\n",
     10,
     "R 14 04 0033\nW 14 04 2033\n",
     {0x2073, 0x0001, 0, 0, 0x3000}},
    {"UseCoreTag",
     SFP0,
     [](Port *port) { port->useCoreTag = 1; },
     "Switch: Port 3 Use Core Tag: False -> True\n",
     "Switch: ...Set Port SFP0 Use Core Tag! Error:1\n",
     12,
     "R 14 04 0033\nW 14 04 8033\n",
     {0x8073, 0x0001, 0, 0, 0x3000}},
    {"EgressRate",
     SFP0,
     [](Port *port) { port->egressRate = SW_Rate_1M; },
     "Switch: Port 3 Egress Rate: Not limited -> 1M bits/sec\n",
     "Switch: ...Set Port SFP0 Egress Rate! Error:1\n",
     14,
     "R 14 0a 0000\nW 14 0a 00fa\n",
     {0x0073, 0x0001, 0, 0, 0x30FA}},
    {"LimitMgmt",
     SFP0,
     [](Port *port) { port->limitMgmt = 1; },
     "Switch: Port 3 Limit MGMT: False -> True\n",
     "Switch: ...Set Port SFP0 Bytes Count! Error:1\n",
     16,
     "R 14 09 0000\nW 14 09 8000\nR 14 0a 0000\nW 14 0a 3000\n",
     {0x0073, 0x0001, 0, 0x8000, 0x3000}},
    {"CountIfg",
     SFP0,
     [](Port *port) { port->countIfg = 0; },
     "Switch: Port 3 Count IFG: True -> False\n",
     "Switch: ...Set Port SFP0 Bytes Count! Error:1\n",
     16,
     "R 14 09 0000\nW 14 09 0000\nR 14 0a 0000\nW 14 0a 1000\n",
     {0x0073, 0x0001, 0, 0, 0x1000}},
    {"CountPre",
     SFP0,
     [](Port *port) { port->countPre = 0; },
     "Switch: Port 3 Count Pre: True -> False\n",
     "Switch: ...Set Port SFP0 Bytes Count! Error:1\n",
     16,
     "R 14 09 0000\nW 14 09 0000\nR 14 0a 0000\nW 14 0a 2000\n",
     {0x0073, 0x0001, 0, 0, 0x2000}},
    {"AllBytesCounts",
     SFP0,
     [](Port *port) {
         port->limitMgmt = 1;
         port->countIfg = 0;
         port->countPre = 0;
     },
     "Switch: Port 3 Limit MGMT: False -> True\n"
     "Switch: Port 3 Count IFG: True -> False\n"
     "Switch: Port 3 Count Pre: True -> False\n",
     "Switch: ...Set Port SFP0 Bytes Count! Error:1\n",
     16,
     "R 14 09 0000\nW 14 09 8000\nR 14 0a 0000\nW 14 0a 0000\n",
     {0x0073, 0x0001, 0, 0x8000, 0}},
    {"Pri0Rate",
     SFP0,
     [](Port *port) { port->pri0Rate = SW_Rate_128K; },
     "Switch: Port 3 Pri0Rate: Not limited -> 128K bits/sec\n",
     "Switch: ...Set Port SFP0 QOS Pri0Rate! Error:1\n",
     20,
     "R 14 09 0000\nW 14 09 07a2\n",
     {0x0073, 0x0001, 0, 0x07A2, 0x3000}},
    {"Pri1Rate",
     SFP0,
     [](Port *port) { port->pri1Rate = 1; },
     "Switch: Port 3 Pri1Rate: False -> True\n",
     "Switch: ...Set Port SFP0 QOS Pri1Rate! Error:1\n",
     22,
     "R 14 09 0000\nW 14 09 1000\n",
     {0x0073, 0x0001, 0, 0x1000, 0x3000}},
    {"Pri2Rate",
     SFP0,
     [](Port *port) { port->pri2Rate = 1; },
     "Switch: Port 3 Pri2Rate: False -> True\n",
     "Switch: ...Set Port SFP0 QOS Pri2Rate! Error:1\n",
     24,
     "R 14 09 0000\nW 14 09 2000\n",
     {0x0073, 0x0001, 0, 0x2000, 0x3000}},
    {"Pri3Rate",
     SFP0,
     [](Port *port) { port->pri3Rate = 1; },
     "Switch: Port 3 Pri3Rate: False -> True\n",
     "Switch: ...Set Port SFP0 QOS Pri3Rate! Error:1\n",
     26,
     "R 14 09 0000\nW 14 09 4000\n",
     {0x0073, 0x0001, 0, 0x4000, 0x3000}},
    {"PrioMapRule",
     SFP0,
     [](Port *port) { port->prioMapRule = 0; },
     "Switch: Port 3 PrioMapRule: True -> False\n",
     "Switch: ...Set Port SFP0 QOS PrioMapRule! Error:1\n",
     28,
     "R 14 04 0033\nW 14 04 0033\n",
     {0x0033, 0x0001, 0, 0, 0x3000}},
    {"IpPrio",
     SFP0,
     [](Port *port) { port->ipPrio = 0; },
     "Switch: Port 3 IP prio: True -> False\n",
     "Switch: ...Set Port SFP0 QOS IP prio! Error:1\n",
     30,
     "R 14 04 0073\nW 14 04 0053\n",
     {0x0053, 0x0001, 0, 0, 0x3000}},
    {"UserPrio",
     SFP0,
     [](Port *port) { port->userPrio = 0; },
     "Switch: Port 3 User prio: True -> False\n",
     "Switch: ...Set Port SFP0 QOS User prio! Error:1\n",
     32,
     "R 14 04 0073\nW 14 04 0063\n",
     {0x0063, 0x0001, 0, 0, 0x3000}},
    {"PortPrio",
     SFP0,
     [](Port *port) { port->portPrio = 7; },
     "Switch: Port 3 Port prio: 0 -> 7\n",
     "Switch: ...Set Port SFP0 QOS Port prio! Error:1\n",
     34,
     "R 14 07 0001\nW 14 07 e001\n",
     {0x0073, 0xE001, 0, 0, 0x3000}},
};
static_assert(std::size(SETTINGS) == 18 - 1 + 4, "bytes count has a row for each flag, and one");

/* What a write of factory settings does on a chip that was just brought up. */
constexpr const char *SFP0_TRACE = "R 14 07 0001\nW 14 07 0001\n"
                                   "R 14 07 0001\nW 14 07 0001\n"
                                   "R 14 08 0000\nW 14 08 0000\n"
                                   "R 14 08 0000\nW 14 08 0000\n"
                                   "R 14 08 0000\nW 14 08 0000\n"
                                   "R 14 04 0033\nW 14 04 0033\n"
                                   "R 14 04 0033\nW 14 04 0033\n"
                                   "R 14 0a 0000\nW 14 0a 0000\n"
                                   "R 14 09 0000\nW 14 09 0000\nR 14 0a 0000\nW 14 0a 3000\n"
                                   "R 14 09 0000\nW 14 09 0000\n"
                                   "R 14 09 0000\nW 14 09 0000\n"
                                   "R 14 09 0000\nW 14 09 0000\n"
                                   "R 14 09 0000\nW 14 09 0000\n"
                                   "R 14 04 0033\nW 14 04 0073\n"
                                   "R 14 04 0073\nW 14 04 0073\n"
                                   "R 14 04 0073\nW 14 04 0073\n"
                                   "R 14 07 0001\nW 14 07 0001\n";

constexpr const char *LAN_TRACE =
    "R 01 02 5349\nR 01 03 b5a1\nR 01 01 796d\nR 01 0f 3000\nR 01 04 01e1\nW 01 04 01e1\n"
    "R 01 09 0300\nW 01 09 0300\nR 01 00 1140\nW 01 00 1340\n"
    "R 11 07 0001\nW 11 07 0001\n"
    "R 11 07 0001\nW 11 07 0001\n"
    "R 11 08 0000\nW 11 08 0000\n"
    "R 11 08 0000\nW 11 08 0000\n"
    "R 11 08 0000\nW 11 08 0000\n"
    "R 11 04 0033\nW 11 04 0033\n"
    "R 11 04 0033\nW 11 04 0033\n"
    "R 11 0a 0000\nW 11 0a 0000\n"
    "R 11 09 0000\nW 11 09 0000\nR 11 0a 0000\nW 11 0a 3000\n"
    "R 11 09 0000\nW 11 09 0000\n"
    "R 11 09 0000\nW 11 09 0000\n"
    "R 11 09 0000\nW 11 09 0000\n"
    "R 11 09 0000\nW 11 09 0000\n"
    "R 11 04 0033\nW 11 04 0073\n"
    "R 11 04 0073\nW 11 04 0073\n"
    "R 11 04 0073\nW 11 04 0073\n"
    "R 11 07 0001\nW 11 07 0001\n";

constexpr size_t TRACE_LINE = sizeof "R 14 07 0001";

/* The columns of a trace that say which register is accessed and how. */
std::string order_of(const std::string &trace)
{
    std::string order;
    for (size_t at = 0; at < trace.size(); at += TRACE_LINE) {
        order += trace.substr(at, sizeof "R 14 07");
    }
    return order;
}

class PortSetting : public Port_Board, public testing::WithParamInterface<Setting_Row>
{
protected:
    PortSetting() { GetParam().change(&running_.ports[GetParam().port]); }

    size_t accesses() const { return GetParam().port == LAN ? COPPER_ACCESSES : OTHER_ACCESSES; }

    Registers registers() const
    {
        Registers values = {};
        std::ranges::transform(REGISTER_NUMBERS, values.begin(), [this](int number) {
            return chip_.ports[SW_Chip_Ports[GetParam().port]][number];
        });
        return values;
    }
};

TEST_P(PortSetting, IsWrittenWithAllOthersAndLogged)
{
    const Setting_Row &row = GetParam();
    EXPECT_EQ(apply(row.port, true), row.log);
    EXPECT_TRUE(result_);
    const std::string trace = take_trace();
    const std::string accesses = row.accesses;
    EXPECT_EQ(order_of(trace), order_of(row.port == LAN ? LAN_TRACE : SFP0_TRACE));
    EXPECT_EQ(trace.substr(row.first * TRACE_LINE, accesses.size()), accesses);
    EXPECT_EQ(registers(), row.final_state);
}

TEST_P(PortSetting, IsWrittenSilentlyWithoutTheLog)
{
    EXPECT_EQ(apply(GetParam().port, false), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(registers(), GetParam().final_state);
    EXPECT_EQ(take_access_count(), accesses());
}

TEST_P(PortSetting, FailurePrintsItsLineInsteadOfTheLogAndStopsNothing)
{
    const Setting_Row &row = GetParam();
    const size_t own_accesses = std::string(row.accesses).size() / TRACE_LINE;
    for (const bool log : {true, false}) {
        Hook_Faults hooks(&device_);
        hooks.break_calls(row.first);
        EXPECT_EQ(apply(row.port, log), row.failure);
        EXPECT_FALSE(result_);
        EXPECT_EQ(hooks.calls(), accesses() - own_accesses + 1);
    }
}

INSTANTIATE_TEST_SUITE_P(PortSettings, PortSetting, testing::ValuesIn(SETTINGS),
                         [](const auto &row) { return std::string(row.param.name); });

class PortSettings : public Port_Board
{
};

TEST_F(PortSettings, CopperPortGetsEighteenSettingsInOrder)
{
    EXPECT_EQ(apply(LAN, true), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), LAN_TRACE);
}

TEST_F(PortSettings, OtherPortGetsSeventeenInOrder)
{
    EXPECT_EQ(apply(SFP0, true), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), SFP0_TRACE);
}

TEST_F(PortSettings, OnlyCopperPortsGetAnAutoMode)
{
    for (const uint32_t type : {0U, 1U, 3U, 4U, 5U, 0xFFFFFFFFU}) {
        running_.ports[LAN].portType = type;
        running_.ports[LAN].autoMode = SPEED_10_DUPLEX_HALF;
        EXPECT_EQ(apply(LAN, true), "");
        EXPECT_EQ(order_of(take_trace()),
                  order_of(LAN_TRACE).substr(AUTO_MODE_ACCESSES * (sizeof "R 14 07")));
    }
    EXPECT_EQ(chip_.phys[1].advertisement, 0x01E1);
}

TEST_F(PortSettings, NewPortTypeDecidesAboutTheAutoMode)
{
    applied_.ports[SFP0].portType = SW_Port_Type_COPPER;
    running_.ports[LAN].portType = SW_Port_Type_COPPER;
    applied_.ports[LAN].portType = SW_Port_Type_SFP;
    apply(SFP0, true);
    EXPECT_EQ(take_access_count(), OTHER_ACCESSES);
    apply(LAN, true);
    EXPECT_EQ(take_access_count(), COPPER_ACCESSES);
}

TEST_F(PortSettings, AutoModeOfAPortWithoutPhyIsNotSupported)
{
    running_.ports[SFP0].portType = SW_Port_Type_COPPER;
    running_.ports[SFP0].vid = 2;
    EXPECT_EQ(apply(SFP0, true), "Switch: ...Set Port SFP0 Auto Mode! Error:16\n"
                                 "Switch: Port 3 VID: 1 -> 2\n");
    EXPECT_FALSE(result_);
}

TEST_F(PortSettings, EachFailureHasItsLineAndAllAreTried)
{
    Hook_Faults hooks(&device_);
    hooks.break_calls(0, 1000);
    running_.ports[LAN].vid = 9;
    EXPECT_EQ(apply(LAN, true), "Switch: ...Set Port LAN Auto Mode! Error:1\n"
                                "Switch: ...Set Port LAN VID! Error:1\n"
                                "Switch: ...Set Port LAN Force Default VID! Error:1\n"
                                "Switch: ...Set Port LAN Vlan Dot1q Mode! Error:1\n"
                                "Switch: ...Set Port LAN Discard Tagged! Error:1\n"
                                "Switch: ...Set Port LAN Discard Untagged! Error:1\n"
                                "Switch: ...Set Port LAN Egress Mode! Error:1\n"
                                "Switch: ...Set Port LAN Use Core Tag! Error:1\n"
                                "Switch: ...Set Port LAN Egress Rate! Error:1\n"
                                "Switch: ...Set Port LAN Bytes Count! Error:1\n"
                                "Switch: ...Set Port LAN QOS Pri0Rate! Error:1\n"
                                "Switch: ...Set Port LAN QOS Pri1Rate! Error:1\n"
                                "Switch: ...Set Port LAN QOS Pri2Rate! Error:1\n"
                                "Switch: ...Set Port LAN QOS Pri3Rate! Error:1\n"
                                "Switch: ...Set Port LAN QOS PrioMapRule! Error:1\n"
                                "Switch: ...Set Port LAN QOS IP prio! Error:1\n"
                                "Switch: ...Set Port LAN QOS User prio! Error:1\n"
                                "Switch: ...Set Port LAN QOS Port prio! Error:1\n");
    EXPECT_FALSE(result_);
}

TEST_F(PortSettings, StatusOfTheDriverStandsInTheLine)
{
    use_chip(0x165); /* without core tag, byte counts, ingress rates */
    bring_up();
    running_.ports[SFP0].egressMode = 4;
    EXPECT_EQ(apply(SFP0, true), "Switch: ...Set Port SFP0 Egress Mode! Error:1\n"
                                 "Switch: ...Set Port SFP0 Use Core Tag! Error:16\n"
                                 "Switch: ...Set Port SFP0 Bytes Count! Error:16\n"
                                 "Switch: ...Set Port SFP0 QOS Pri0Rate! Error:16\n"
                                 "Switch: ...Set Port SFP0 QOS Pri1Rate! Error:16\n"
                                 "Switch: ...Set Port SFP0 QOS Pri2Rate! Error:16\n"
                                 "Switch: ...Set Port SFP0 QOS Pri3Rate! Error:16\n");
    EXPECT_FALSE(result_);
}

TEST_F(PortSettings, WithoutALoadedDriverEverySettingIsABadParameter)
{
    device_ = {};
    const std::string text = apply(SFP0, true);
    EXPECT_EQ(std::ranges::count(text, '\n'), 17);
    EXPECT_EQ(text.substr(0, text.find('\n')), "Switch: ...Set Port SFP0 VID! Error:4");
    EXPECT_FALSE(result_);
}

} // namespace
