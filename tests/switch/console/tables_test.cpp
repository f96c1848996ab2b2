#include "switch/console/tables.h"

#include "switch/config/keywords.h"
#include "tests/support/output_capture.h"
#include "tests/switch/console/table_texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace
{

class Tables : public testing::Test
{
protected:
    Tables() : control_{} { control_.running = &running_; }

    SW_Config running_{};
    SW_Control control_;
};

template <class Print>
std::string printed(const Print &print)
{
    Output_Capture output;
    print();
    return output.finish();
}

/* The settings of a table's row in the order of its columns. */
struct Vlan_Settings {
    uint16_t vid;
    uint32_t others[10];
};
struct Qos_Settings {
    uint32_t others[7];
    uint8_t portPrio;
};

constexpr uint32_t SW_Port_Config::*VLAN_FIELDS[] = {
    &SW_Port_Config::vidForceDefault, &SW_Port_Config::dot1qMode,  &SW_Port_Config::discardTagged,
    &SW_Port_Config::discardUntagged, &SW_Port_Config::egressMode, &SW_Port_Config::useCoreTag,
    &SW_Port_Config::egressRate,      &SW_Port_Config::limitMgmt,  &SW_Port_Config::countIfg,
    &SW_Port_Config::countPre};
constexpr uint32_t SW_Port_Config::*QOS_FIELDS[] = {
    &SW_Port_Config::pri0Rate, &SW_Port_Config::pri1Rate,    &SW_Port_Config::pri2Rate,
    &SW_Port_Config::pri3Rate, &SW_Port_Config::prioMapRule, &SW_Port_Config::ipPrio,
    &SW_Port_Config::userPrio};

template <size_t Count>
void set_fields(SW_Port_Config *port, uint32_t SW_Port_Config::*const (&fields)[Count],
                const uint32_t (&values)[Count])
{
    for (size_t i = 0; i < Count; i++) {
        port->*fields[i] = values[i];
    }
}

void set_ports(SW_Config *config, const Vlan_Settings (&rows)[SW_PORTS])
{
    for (int i = 0; i < SW_PORTS; i++) {
        config->ports[i].vid = rows[i].vid;
        set_fields(&config->ports[i], VLAN_FIELDS, rows[i].others);
    }
}

void set_ports(SW_Config *config, const Qos_Settings (&rows)[SW_PORTS])
{
    for (int i = 0; i < SW_PORTS; i++) {
        config->ports[i].portPrio = rows[i].portPrio;
        set_fields(&config->ports[i], QOS_FIELDS, rows[i].others);
    }
}

// clang-format off
/* Values of every kind, inside and outside their lists. */
constexpr Vlan_Settings VLAN_VALUES[] = {
    {1,     {0, 0, 0, 0, 0, 0, 0,  0, 1, 1}},
    {4095,  {1, 1, 1, 0, 1, 1, 1,  1, 0, 0}},
    {65535, {2, 2, 2, 1, 2, 2, 12, 2, 0xFFFFFFFF, 1}},
    {100,   {1, 3, 1, 1, 3, 1, 13, 1, 1, 2}},
    {0,     {0, 4, 0, 2, 0xFFFFFFFF, 0, 0xFFFFFFFD, 0, 0, 0}}};
// clang-format on

// clang-format off
#define VLAN_VALUE_ROWS \
"CPU |   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n" \
"LAN |4095|True    |Fallback  |True   |False   |Untagged egress|True    |128K bits/sec|True |False|False\n" \
"WAN |65535|False   |Check     |False  |True    |Tagged egress  |False   |256M bits/sec|False|False|True \n" \
"SFP0| 100|True    |Secure    |True   |True    |Add tag        |True    |             |True |True |False\n" \
"SFP1|   0|False   |          |False  |False   |               |False   |             |False|False|False\n"
// clang-format on

TEST_F(Tables, VlanTabShowsEveryKindOfValue)
{
    set_ports(&running_, VLAN_VALUES);
    EXPECT_EQ(printed([&] { Print_Vlan_Tab(&control_); }), VLAN_TITLE VLAN_HEADER VLAN_VALUE_ROWS);
}

TEST_F(Tables, VlanRowsHaveNoTitle)
{
    set_ports(&running_, VLAN_VALUES);
    EXPECT_EQ(printed([&] { Print_Vlan_Rows(&running_); }), VLAN_HEADER VLAN_VALUE_ROWS);
}

TEST_F(Tables, VlanHeaderStandsAlone)
{
    EXPECT_EQ(printed([] { Print_Vlan_Header(); }), VLAN_HEADER);
}

TEST_F(Tables, VlanTabOfZeroes)
{
    EXPECT_EQ(printed([&] { Print_Vlan_Tab(&control_); }), VLAN_TITLE VLAN_HEADER ZERO_VLAN_ROWS);
}

// clang-format off
constexpr Qos_Settings QOS_VALUES[] = {
    {{0,  0, 0, 0, 1, 1, 1}, 7},
    {{3,  1, 0, 0, 0, 0, 2}, 255},
    {{4,  0, 1, 0, 2, 1, 0}, 0},
    {{12, 2, 0, 1, 0, 0xFFFFFFFF, 0}, 0},
    {{13, 0, 2, 2, 0, 0, 1}, 10}};
// clang-format on

// clang-format off
#define QOS_VALUE_ROWS \
  "CPU  |   Not limited | False    | False    | False    | True        | True    | True      |         7\n" \
  "LAN  | 512K bits/sec | True     | False    | False    | False       | False   | False     |       255\n" \
  "WAN  |   1M bits/sec | False    | True     | False    | False       | True    | False     |         0\n" \
  "SFP0 | 256M bits/sec | False    | False    | True     | False       | False   | False     |         0\n" \
  "SFP1 |               | False    | False    | False    | False       | False   | True      |        10\n"
// clang-format on

TEST_F(Tables, QosTabShowsEveryKindOfValue)
{
    set_ports(&running_, QOS_VALUES);
    EXPECT_EQ(printed([&] { Print_Qos_Tab(&control_); }), QOS_TITLE QOS_HEADER QOS_VALUE_ROWS);
}

TEST_F(Tables, QosRowsHaveNoTitle)
{
    set_ports(&running_, QOS_VALUES);
    EXPECT_EQ(printed([&] { Print_Qos_Rows(&running_); }), QOS_HEADER QOS_VALUE_ROWS);
}

TEST_F(Tables, QosTabOfZeroes)
{
    EXPECT_EQ(printed([&] { Print_Qos_Tab(&control_); }), QOS_TITLE QOS_HEADER ZERO_QOS_ROWS);
}

TEST_F(Tables, PortsConfigListsLanAndWanOnly)
{
    running_.ports[0].autoMode = SPEED_100_DUPLEX_FULL;
    running_.ports[2].autoMode = SPEED_10_DUPLEX_HALF;
    running_.ports[3].autoMode = SPEED_1000_DUPLEX_FULL;
    EXPECT_EQ(printed([&] { Print_Ports_Config(&control_); }),
              PORTS_CONFIG_TITLE PORTS_CONFIG_HEADER " LAN  | Auto for both speed and duplex\n"
                                                     " WAN  | Speed 10Mbps and Half duplex  \n");
}

TEST_F(Tables, PortsConfigRowsHaveNoTitle)
{
    EXPECT_EQ(printed([&] { Print_Ports_Config_Rows(&running_); }),
              PORTS_CONFIG_HEADER " LAN  | Auto for both speed and duplex\n"
                                  " WAN  | Auto for both speed and duplex\n");
}

/* One column over the codes 0, 1, 2 ... and some outside its list. */
struct Column {
    const char *name;
    void (*print)(const SW_Config *config);
    uint32_t SW_Port_Config::*field;
    std::vector<std::string> rows; /* of port 1, by code; the last for every other code */
};

void PrintTo(const Column &column, std::ostream *out)
{
    *out << column.name;
}

std::vector<std::string> wrapped(const char *before, const char *after,
                                 std::vector<std::string> cells)
{
    for (std::string &cell : cells) {
        cell = before + cell + after;
    }
    return cells;
}

// clang-format off
const std::vector<std::string> RATE_CELLS = {
    "  Not limited", "128K bits/sec", "256K bits/sec", "512K bits/sec", "  1M bits/sec", "  2M bits/sec",
    "  4M bits/sec", "  8M bits/sec", " 16M bits/sec", " 32M bits/sec", " 64M bits/sec", "128M bits/sec",
    "256M bits/sec", "             "};

const Column COLUMNS[] = {
    {"AutoMode", Print_Ports_Config_Rows, &SW_Port_Config::autoMode, {
        " LAN  | Auto for both speed and duplex\n",
        " LAN  | Auto for duplex only and speed 1000Mbps\n",
        " LAN  | Auto for duplex only and speed 100Mbps\n",
        " LAN  | Auto for duplex only and speed 10Mbps\n",
        " LAN  | Auto for speed only and Full duplex\n",
        " LAN  | Auto for speed only and Half duplex\n",
        " LAN  | Speed 1000Mbps and Full duplex\n",
        " LAN  | Speed 1000Mbps and Half duplex\n",
        " LAN  | Speed 100Mbps and Full duplex \n",
        " LAN  | Speed 100Mbps and Half duplex \n",
        " LAN  | Speed 10Mbps and Full duplex  \n",
        " LAN  | Speed 10Mbps and Half duplex  \n",
        " LAN  |                               \n"}},
    {"EgressRate", Print_Vlan_Rows, &SW_Port_Config::egressRate, wrapped(
        "LAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |",
        "|False|False|False\n", RATE_CELLS)},
    {"Pri0Rate", Print_Qos_Rows, &SW_Port_Config::pri0Rate, wrapped(
        "LAN  | ",
        " | False    | False    | False    | False       | False   | False     |         0\n", RATE_CELLS)},
    {"Dot1qMode", Print_Vlan_Rows, &SW_Port_Config::dot1qMode, wrapped(
        "LAN |   0|False   |",
        "|False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n",
        {"Disable   ", "Fallback  ", "Check     ", "Secure    ", "          "})},
    {"EgressMode", Print_Vlan_Rows, &SW_Port_Config::egressMode, wrapped(
        "LAN |   0|False   |Disable   |False  |False   |",
        "|False   |  Not limited|False|False|False\n",
        {"Unmodify egress", "Untagged egress", "Tagged egress  ", "Add tag        ", "               "})},
    {"ForceDefaultVid", Print_Vlan_Rows, &SW_Port_Config::vidForceDefault, wrapped(
        "LAN |   0|",
        "|Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n",
        {"False   ", "True    ", "False   "})},
    {"DiscardTagged", Print_Vlan_Rows, &SW_Port_Config::discardTagged, wrapped(
        "LAN |   0|False   |Disable   |",
        "|False   |Unmodify egress|False   |  Not limited|False|False|False\n",
        {"False  ", "True   ", "False  "})},
    {"DiscardUntagged", Print_Vlan_Rows, &SW_Port_Config::discardUntagged, wrapped(
        "LAN |   0|False   |Disable   |False  |",
        "|Unmodify egress|False   |  Not limited|False|False|False\n",
        {"False   ", "True    ", "False   "})},
    {"UseCoreTag", Print_Vlan_Rows, &SW_Port_Config::useCoreTag, wrapped(
        "LAN |   0|False   |Disable   |False  |False   |Unmodify egress|",
        "|  Not limited|False|False|False\n",
        {"False   ", "True    ", "False   "})},
    {"LimitMgmt", Print_Vlan_Rows, &SW_Port_Config::limitMgmt, wrapped(
        "LAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|",
        "|False|False\n",
        {"False", "True ", "False"})},
    {"CountIfg", Print_Vlan_Rows, &SW_Port_Config::countIfg, wrapped(
        "LAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|",
        "|False\n",
        {"False", "True ", "False"})},
    {"CountPre", Print_Vlan_Rows, &SW_Port_Config::countPre, wrapped(
        "LAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|",
        "\n",
        {"False", "True ", "False"})},
    {"Pri1Rate", Print_Qos_Rows, &SW_Port_Config::pri1Rate, wrapped(
        "LAN  |   Not limited | ",
        " | False    | False    | False       | False   | False     |         0\n",
        {"False   ", "True    ", "False   "})},
    {"Pri2Rate", Print_Qos_Rows, &SW_Port_Config::pri2Rate, wrapped(
        "LAN  |   Not limited | False    | ",
        " | False    | False       | False   | False     |         0\n",
        {"False   ", "True    ", "False   "})},
    {"Pri3Rate", Print_Qos_Rows, &SW_Port_Config::pri3Rate, wrapped(
        "LAN  |   Not limited | False    | False    | ",
        " | False       | False   | False     |         0\n",
        {"False   ", "True    ", "False   "})},
    {"PrioMapRule", Print_Qos_Rows, &SW_Port_Config::prioMapRule, wrapped(
        "LAN  |   Not limited | False    | False    | False    | ",
        " | False   | False     |         0\n",
        {"False      ", "True       ", "False      "})},
    {"IpPrio", Print_Qos_Rows, &SW_Port_Config::ipPrio, wrapped(
        "LAN  |   Not limited | False    | False    | False    | False       | ",
        " | False     |         0\n",
        {"False  ", "True   ", "False  "})},
    {"UserPrio", Print_Qos_Rows, &SW_Port_Config::userPrio, wrapped(
        "LAN  |   Not limited | False    | False    | False    | False       | False   | ",
        " |         0\n",
        {"False    ", "True     ", "False    "})},
};
// clang-format on

class TableColumn : public testing::TestWithParam<Column>
{
};

TEST_P(TableColumn, ShowsEveryCode)
{
    const Column &column = GetParam();
    const uint32_t outside = static_cast<uint32_t>(column.rows.size() - 1);
    for (uint32_t code :
         {0U,  1U,  2U,  3U,  4U,  5U,   6U,   7U,          8U,          9U,
          10U, 11U, 12U, 13U, 14U, 256U, 257U, 0x80000001U, 0xFFFFFFFDU, 0xFFFFFFFFU}) {
        SW_Config config{};
        config.ports[1].*column.field = code;
        const std::string table = printed([&] { column.print(&config); });
        const std::string expected = column.rows[code < outside ? code : outside];
        const size_t row = table.find(expected.substr(0, 5));
        ASSERT_NE(row, std::string::npos) << code;
        EXPECT_EQ(table.substr(row, table.find('\n', row) + 1 - row), expected) << code;
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, TableColumn, testing::ValuesIn(COLUMNS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(Tables, CosTabShowsEightPairsInALine)
{
    SetSwitchConfigDefaults(&running_);
    EXPECT_EQ(printed([&] { Print_Cos_Tab(&control_); }), COS_TITLE FACTORY_COS_TABLES);
}

TEST_F(Tables, CosRowsHaveNoTitle)
{
    SetSwitchConfigDefaults(&running_);
    EXPECT_EQ(printed([&] { Print_Cos_Rows(&running_); }), FACTORY_COS_TABLES);
}

TEST_F(Tables, CosTabShowsClassesOutOfRangeAsTheyAre)
{
    running_.cosUserPrio[7] = 255;
    running_.cosDscp[0] = 4;
    running_.cosDscp[8] = 10;
    running_.cosDscp[63] = 100;
    const std::string table = printed([&] { Print_Cos_Tab(&control_); });
    EXPECT_NE(table.find(" |  6  0 |  7 255\nDSCP Traff_class:\n 0  4 |  1  0"), std::string::npos);
    EXPECT_NE(table.find(" |  7  0\n 8 10 |  9  0"), std::string::npos);
    EXPECT_EQ(table.substr(table.rfind('|')), "| 63 100\n");
}

/* Defines a VLAN; tags by chip port: WAN, LAN, CPU, SFP1, SFP0. */
void define(SW_Config *config, int vid, const uint8_t (&tags)[SW_PORTS])
{
    SW_Vlan_Entry &entry = config->vlans[vid];
    entry.defined = 1;
    entry.vtu.vid = static_cast<uint16_t>(vid);
    std::copy(std::begin(tags), std::end(tags), entry.vtu.memberTagP);
    config->vlanEntryCount++;
}

TEST_F(Tables, VtuTabShowsTheTagsOfThePortsInPortOrder)
{
    define(&running_, 1, {0, 1, 2, 3, 0});
    define(&running_, 10, {3, 3, 3, 1, 1});
    define(&running_, 4095, {1, 2, 3, 2, 1});
    EXPECT_EQ(printed([&] { Print_Vtu_Tab(&control_); }), VTU_TITLE VTU_HEADER
              "    1 | Untagged   | None       | Unmodified | Unmodified | Tagged    \n"
              "   10 | Tagged     | Tagged     | Tagged     | None       | None      \n"
              " 4095 | Tagged     | Untagged   | None       | None       | Untagged  \n");
}

TEST_F(Tables, VtuTabWithoutEntries)
{
    EXPECT_EQ(printed([&] { Print_Vtu_Tab(&control_); }), VTU_TITLE "No VTU Entries\n");
    EXPECT_EQ(printed([&] { Print_Vtu_Rows(&running_); }), "No VTU Entries\n");
}

TEST_F(Tables, VtuTabWithACountOfZeroShowsNoEntry)
{
    define(&running_, 5, {0, 0, 0, 0, 0});
    running_.vlanEntryCount = 0;
    EXPECT_EQ(printed([&] { Print_Vtu_Rows(&running_); }), "No VTU Entries\n");
}

TEST_F(Tables, VtuTabShowsTheLastVlanAlone)
{
    define(&running_, 4095, {0, 0, 0, 0, 0});
    EXPECT_EQ(printed([&] { Print_Vtu_Rows(&running_); }), VTU_HEADER
              " 4095 | Unmodified | Unmodified | Unmodified | Unmodified | Unmodified\n");
}

TEST_F(Tables, VtuTabEndsWithTheCount)
{
    define(&running_, 7, {1, 1, 1, 1, 1});
    define(&running_, 8, {1, 1, 1, 1, 1});
    running_.vlanEntryCount = 1;
    EXPECT_EQ(printed([&] { Print_Vtu_Rows(&running_); }), VTU_HEADER
              "    7 | None       | None       | None       | None       | None      \n");
}

TEST_F(Tables, VtuTabEndsWithTheTableWhenTheCountIsTooHigh)
{
    define(&running_, 7, {1, 1, 1, 1, 1});
    running_.vlanEntryCount = 0xFFFFFFFF;
    EXPECT_EQ(printed([&] { Print_Vtu_Rows(&running_); }), VTU_HEADER
              "    7 | None       | None       | None       | None       | None      \n");
}

TEST_F(Tables, VtuTabShowsTheVlanIdThatTheEntryHolds)
{
    define(&running_, 7, {4, 255, 1, 1, 1});
    running_.vlans[7].vtu.vid = 700;
    define(&running_, 0, {1, 1, 1, 1, 1});
    EXPECT_EQ(printed([&] { Print_Vtu_Rows(&running_); }), VTU_HEADER
              "    0 | None       | None       | None       | None       | None      \n"
              "  700 | None       |            |            | None       | None      \n");
}

TEST_F(Tables, MaxFrameSizeIs1522ForZeroOnly)
{
    EXPECT_EQ(printed([&] { Print_Max_Frame_Size(&control_); }), "Max Frame Size: 1522 Bytes\n");
    for (const uint32_t size : {1U, 2U, 0xFFFFFFFFU}) {
        running_.maxFrameSize = size;
        EXPECT_EQ(printed([&] { Print_Max_Frame_Size(&control_); }),
                  "Max Frame Size: 1632 Bytes\n");
    }
}

TEST_F(Tables, FlagCellsAreTrueForExactlyOne)
{
    EXPECT_STREQ(SW_Flag_Cell_Text(0), "False");
    EXPECT_STREQ(SW_Flag_Cell_Text(1), "True");
    EXPECT_STREQ(SW_Flag_Cell_Text(2), "False");
    EXPECT_STREQ(SW_Flag_Cell_Text(257), "False");
    EXPECT_STREQ(SW_Flag_Cell_Text(0xFFFFFFFF), "False");
}

// clang-format off
TEST_F(Tables, RunningConfigOfTheFactorySettings)
{
    SetSwitchConfigDefaults(&running_);
    EXPECT_EQ(printed([&] { Print_Running_Config(&control_); }),
              "Marvell Switch Config:\n"
              "Max Frame Size: 1632 Bytes\n"
              PORTS_CONFIG_TITLE PORTS_CONFIG_HEADER
              " LAN  | Auto for both speed and duplex\n"
              " WAN  | Auto for both speed and duplex\n"
              VLAN_TITLE VLAN_HEADER FACTORY_VLAN_ROWS
              VTU_TITLE "No VTU Entries\n"
              QOS_TITLE QOS_HEADER FACTORY_QOS_ROWS
              COS_TITLE FACTORY_COS_TABLES
              FACTORY_VLAN_SUMMARY);
}

TEST_F(Tables, RunningConfigOfZeroes)
{
    EXPECT_EQ(printed([&] { Print_Running_Config(&control_); }),
              "Marvell Switch Config:\n"
              "Max Frame Size: 1522 Bytes\n"
              PORTS_CONFIG_TITLE PORTS_CONFIG_HEADER
              " LAN  | Auto for both speed and duplex\n"
              " WAN  | Auto for both speed and duplex\n"
              VLAN_TITLE VLAN_HEADER ZERO_VLAN_ROWS
              VTU_TITLE "No VTU Entries\n"
              QOS_TITLE QOS_HEADER ZERO_QOS_ROWS
              COS_TITLE ZERO_COS_TABLES
              ZERO_VLAN_SUMMARY);
}
// clang-format on

} // namespace
