#include "switch/config/keywords.h"
#include "tests/switch/engine/port_board.h"

namespace
{

using Port = SW_Port_Config;

/* Messages name a port by index or name, accesses go to its chip port. */
struct Port_Row {
    int port;
    const char *name;
    int chip_port;
    const char *failure;
    const char *log;
};

void PrintTo(const Port_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Port_Row PORTS[] = {
    {0, "CPU", 2, "Switch: ...Set Port CPU VID! Error:1\n", "Switch: Port 0 VID: 1 -> 99\n"},
    {1, "LAN", 1, "Switch: ...Set Port LAN VID! Error:1\n", "Switch: Port 1 VID: 1 -> 99\n"},
    {2, "WAN", 0, "Switch: ...Set Port WAN VID! Error:1\n", "Switch: Port 2 VID: 1 -> 99\n"},
    {3, "SFP0", 4, "Switch: ...Set Port SFP0 VID! Error:1\n", "Switch: Port 3 VID: 1 -> 99\n"},
    {4, "SFP1", 3, "Switch: ...Set Port SFP1 VID! Error:1\n", "Switch: Port 4 VID: 1 -> 99\n"},
};

class PortIdentity : public Port_Board, public testing::WithParamInterface<Port_Row>
{
protected:
    PortIdentity()
    {
        running_.ports[GetParam().port].vid = 99;
        running_.ports[GetParam().port].portType = SW_Port_Type_NO;
    }
};

TEST_P(PortIdentity, LogShowsTheIndexAndTheChipPortIsWritten)
{
    EXPECT_EQ(apply(GetParam().port, true), GetParam().log);
    for (int chip_port = 0; chip_port < 6; ++chip_port) {
        EXPECT_EQ(chip_.ports[chip_port][7], chip_port == GetParam().chip_port ? 99 : 1);
    }
}

TEST_P(PortIdentity, FailureShowsTheName)
{
    Hook_Faults hooks(&device_);
    hooks.break_calls(1);
    EXPECT_EQ(apply(GetParam().port, false), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(PortLog, PortIdentity, testing::ValuesIn(PORTS),
                         [](const auto &row) { return std::string(row.param.name); });

/* How old and new values are shown. */
struct Shown_Row {
    const char *name;
    uint32_t SW_Port_Config::*field;
    uint32_t before;
    uint32_t after;
    const char *line; /* behind "Switch: Port 1 " */
};

void PrintTo(const Shown_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Shown_Row SHOWN[] = {
    {"AutoMode0to1", &Port::autoMode, 0, 1,
     "Auto Mode: Speed Auto Duplex Auto -> Speed 1000 Duplex Auto\n"},
    {"AutoMode2to3", &Port::autoMode, 2, 3,
     "Auto Mode: Speed 100 Duplex Auto -> Speed 10 Duplex Auto\n"},
    {"AutoMode4to5", &Port::autoMode, 4, 5,
     "Auto Mode: Speed Auto Duplex Full -> Speed Auto Duplex Half\n"},
    {"AutoMode6to7", &Port::autoMode, 6, 7,
     "Auto Mode: Speed 1000 Duplex Full -> Speed 1000 Duplex Half\n"},
    {"AutoMode8to9", &Port::autoMode, 8, 9,
     "Auto Mode: Speed 100 Duplex Full -> Speed 100 Duplex Half\n"},
    {"AutoMode10to11", &Port::autoMode, 10, 11,
     "Auto Mode: Speed 10 Duplex Full -> Speed 10 Duplex Half\n"},
    {"AutoMode12to0", &Port::autoMode, 12, 0,
     "Auto Mode: Speed Auto Duplex Auto -> Speed Auto Duplex Auto\n"},
    {"AutoModeMinus1to0", &Port::autoMode, 0xFFFFFFFF, 0,
     "Auto Mode: Speed Auto Duplex Auto -> Speed Auto Duplex Auto\n"},
    {"Dot1q0to1", &Port::dot1qMode, 0, 1, "VLAN Dot1Q Mode: Disable -> Fallback\n"},
    {"Dot1q2to3", &Port::dot1qMode, 2, 3, "VLAN Dot1Q Mode: Check -> Secure\n"},
    {"Dot1q4to5", &Port::dot1qMode, 4, 5, "VLAN Dot1Q Mode:  -> \n"},
    {"Dot1q1toMinus1", &Port::dot1qMode, 1, 0xFFFFFFFF, "VLAN Dot1Q Mode: Fallback -> \n"},
    {"Egress0to1", &Port::egressMode, 0, 1, "Egress Mode: Unmodify egress -> Untagged egress\n"},
    {"Egress2to3", &Port::egressMode, 2, 3, "Egress Mode: Tagged egress -> Add tag\n"},
    {"Egress4to0", &Port::egressMode, 4, 0, "Egress Mode:  -> Unmodify egress\n"},
    {"EgressRate0to1", &Port::egressRate, 0, 1, "Egress Rate: Not limited -> 128K bits/sec\n"},
    {"EgressRate2to3", &Port::egressRate, 2, 3, "Egress Rate: 256K bits/sec -> 512K bits/sec\n"},
    {"EgressRate4to5", &Port::egressRate, 4, 5, "Egress Rate: 1M bits/sec -> 2M bits/sec\n"},
    {"EgressRate6to7", &Port::egressRate, 6, 7, "Egress Rate: 4M bits/sec -> 8M bits/sec\n"},
    {"EgressRate8to9", &Port::egressRate, 8, 9, "Egress Rate: 16M bits/sec -> 32M bits/sec\n"},
    {"EgressRate10to11", &Port::egressRate, 10, 11, "Egress Rate: 64M bits/sec -> 128M bits/sec\n"},
    {"EgressRate12to13", &Port::egressRate, 12, 13, "Egress Rate: 256M bits/sec -> \n"},
    {"EgressRate0toMinus1", &Port::egressRate, 0, 0xFFFFFFFF, "Egress Rate: Not limited -> \n"},
    {"Pri0Rate0to12", &Port::pri0Rate, 0, 12, "Pri0Rate: Not limited -> 256M bits/sec\n"},
    {"Pri0Rate13to14", &Port::pri0Rate, 13, 14, "Pri0Rate:  -> \n"},
    {"FlagAnyNumberIsTrue", &Port::discardTagged, 2, 1, "Discard Tagged: True -> True\n"},
    {"FlagZeroIsFalse", &Port::ipPrio, 0xFFFFFFFF, 0, "IP prio: True -> False\n"},
    {"CountFlagAnyNumberIsTrue", &Port::countPre, 0, 256, "Count Pre: False -> True\n"},
};

class ShownValue : public Port_Board, public testing::WithParamInterface<Shown_Row>
{
};

TEST_P(ShownValue, OldThenNew)
{
    const Shown_Row &row = GetParam();
    applied_.ports[LAN].*row.field = row.before;
    running_.ports[LAN].*row.field = row.after;
    EXPECT_EQ(apply(LAN, true), std::string("Switch: Port 1 ") + row.line);
}

INSTANTIATE_TEST_SUITE_P(PortLog, ShownValue, testing::ValuesIn(SHOWN),
                         [](const auto &row) { return std::string(row.param.name); });

class PortLog : public Port_Board
{
};

TEST_F(PortLog, NumbersOutsideTheirListsReachTheDriverAsTheyAre)
{
    running_.ports[SFP0].dot1qMode = 0xFFFFFFFF;  /* cut to two bits */
    running_.ports[SFP0].egressMode = 0xFFFFFFFF; /* refused */
    running_.ports[SFP0].egressRate = 0xFFFFFFFF; /* a rate of its own, the smallest divisor */
    running_.ports[SFP0].discardTagged = 2;       /* only 1 is written as true */
    EXPECT_EQ(apply(SFP0, true), "Switch: Port 3 VLAN Dot1Q Mode: Disable -> \n"
                                 "Switch: Port 3 Discard Tagged: False -> True\n"
                                 "Switch: ...Set Port SFP0 Egress Mode! Error:1\n"
                                 "Switch: Port 3 Egress Rate: Not limited -> \n");
    EXPECT_FALSE(result_);
    EXPECT_EQ(chip_.ports[4][8], 0x0C00);
    EXPECT_EQ(chip_.ports[4][10], 0x3001);
}

TEST_F(PortLog, NumbersAreShownWhole)
{
    applied_.ports[LAN].vid = 65535;
    applied_.ports[LAN].portPrio = 255;
    running_.ports[LAN].vid = 0;
    running_.ports[LAN].portPrio = 128;
    EXPECT_EQ(apply(LAN, true), "Switch: Port 1 VID: 65535 -> 0\n"
                                "Switch: Port 1 Port prio: 255 -> 128\n");
}

} // namespace
