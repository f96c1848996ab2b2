#pragma once

#include "switch/chip/driver.h"
#include "tests/switch/console/table_texts.h"
#include "tests/switch/engine/board.h"

#include <string>

/* Chip ports of CPU, LAN, WAN, SFP0, SFP1. */
inline constexpr int CPU = 2;
inline constexpr int LAN = 1;
inline constexpr int WAN = 0;
inline constexpr int SFP0 = 4;
inline constexpr int SFP1 = 3;

/* A brought-up board whose registers hold values that tell the columns and the ports apart. */
class DeviceViews : public Board
{
protected:
    DeviceViews()
    {
        bring_up();
        set_port(CPU, {0x0001, 0x0000, 0x0000, 0x0000, 0x3000});
        set_port(LAN, {0xFFFF, 0x0600, 0x9070, 0xF7A2, 0x37A2});
        set_port(WAN, {0x3064, 0x0900, 0x2020, 0x10FA, 0x0020});
        set_port(SFP0, {0x6FFE, 0x0F00, 0x3050, 0x2001, 0x27D0});
        set_port(SFP1, {0x8000, 0x0000, 0x0040, 0x4003, 0x1003});
        chip_.global[4] = 0;
        chip_.global[24] = 0xFA41;
        for (int i = 0; i < 8; i++) {
            chip_.global[16 + i] = static_cast<uint16_t>(i / 2 * 0x5555);
        }
        add_vlan(1, 0x1111, 0x0001);
        add_vlan(10, 0x1023, 0x0002);
        add_vlan(4095, 0x3333, 0x0003);
        take_trace();
    }

    struct Port_Registers {
        uint16_t vid;     /* register 7: priority 13-15, force default VID 12, VID 0-11 */
        uint16_t control; /* 8: 802.1Q mode 10-11, discard tagged 9, discard untagged 8 */
        uint16_t tags;    /* 4: core tag 15, egress mode 12-13, map rule 6, IP 5, user 4 */
        uint16_t ingress; /* 9: limit MGMT 15, priority 3 to 1 rates 14-12, rate divisor 0-11 */
        uint16_t egress;  /* 10: count IFG 13, count preamble 12, rate divisor 0-11 */
    };

    void set_port(int chipPort, const Port_Registers &registers)
    {
        uint16_t *port = chip_.ports[chipPort];
        port[7] = registers.vid;
        port[8] = registers.control;
        port[4] = registers.tags;
        port[9] = registers.ingress;
        port[10] = registers.egress;
    }

    /* Tags of chip ports 0 to 3 in the lowest bits of each digit of the first word, of 4 in the
     * second. */
    void add_vlan(int vid, uint16_t first, uint16_t second)
    {
        chip_.vlans.entries[vid] = {{first, second, 0}, 0, true};
    }

    void set_flags(uint32_t read, uint32_t print)
    {
        control_.read = read;
        control_.print = print;
    }

    template <class View>
    std::string shown(View view)
    {
        return printed([&] { view(&control_); });
    }
};

/* What the views show of these registers. */
// clang-format off
#define CHIP_VLAN_CPU \
  "CPU |   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n"
#define CHIP_VLAN_LAN \
  "LAN |4095|True    |Fallback  |True   |False   |Untagged egress|True    |128K bits/sec|True |True |True \n"
#define CHIP_VLAN_WAN \
  "WAN | 100|True    |Check     |False  |True    |Tagged egress  |False   |  8M bits/sec|False|False|False\n"
#define CHIP_VLAN_SFP0 \
  "SFP0|4094|False   |Secure    |True   |True    |Add tag        |False   |             |False|True |False\n"
#define CHIP_VLAN_SFP1 \
  "SFP1|   0|False   |Disable   |False  |False   |Unmodify egress|False   |             |False|False|True \n"
#define CHIP_VLAN_ROWS CHIP_VLAN_CPU CHIP_VLAN_LAN CHIP_VLAN_WAN CHIP_VLAN_SFP0 CHIP_VLAN_SFP1

#define CHIP_QOS_ROWS \
  "CPU  |   Not limited | False    | False    | False    | False       | False   | False     |         0\n" \
  "LAN  | 128K bits/sec | True     | True     | True     | True        | True    | True      |         7\n" \
  "WAN  |   1M bits/sec | True     | False    | False    | False       | True    | False     |         1\n" \
  "SFP0 | 256M bits/sec | False    | True     | False    | True        | False   | True      |         3\n" \
  "SFP1 |               | False    | False    | True     | True        | False   | False     |         4\n"

#define CHIP_VTU_ROWS VTU_HEADER \
    "    1 | None       | None       | None       | None       | None      \n" \
    "   10 | Unmodified | Untagged   | Tagged     | Untagged   | None      \n" \
    " 4095 | Tagged     | Tagged     | Tagged     | Tagged     | Tagged    \n"

#define CHIP_PORTS_STATUS_ROWS \
    " CPU  | True       |   100 Mbps | True   | True      \n" \
    " LAN  | True       |  1000 Mbps | True   | True      \n" \
    " WAN  | True       |   100 Mbps | True   | True      \n" \
    " SFP0 | False      |  1000 Mbps | True   | True      \n" \
    " SFP1 | False      |    Unknown | False  | False     \n"

#define CHIP_SUMMARY \
    "\n" \
    "Existing VLANs:1,10,4095\n" \
    "CPU : Default (VID:1(untagged))\n" \
    "LAN : Trunk   (VID:4095(tagged)/(tagged), Allowed: 1-4095 (ALL)) QOS:7 - Custom\n" \
    "WAN : Trunk   (VID:100(Warning: not exists), Allowed: real:10,4095) QOS:1 - Custom\n" \
    "SFP0: Access  (VID:4094(Warning: not exists)) QOS:3 - Custom\n" \
    "SFP1: Failed  (VID:0)\n"

#define CHIP_STATUS \
    "Marvell Switch Status:\n" \
    "Max Frame Size: 1522 Bytes\n" \
    PORTS_STATUS_TITLE PORTS_STATUS_HEADER CHIP_PORTS_STATUS_ROWS \
    VLAN_TITLE VLAN_HEADER CHIP_VLAN_ROWS \
    VTU_TITLE CHIP_VTU_ROWS \
    QOS_TITLE QOS_HEADER CHIP_QOS_ROWS \
    COS_TITLE FACTORY_COS_TABLES \
    CHIP_SUMMARY

#define ZERO_STATUS(frameSizeLines) \
    "Marvell Switch Status:\n" \
    frameSizeLines \
    PORTS_STATUS_TITLE PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS \
    VLAN_TITLE VLAN_HEADER ZERO_VLAN_ROWS \
    VTU_TITLE "No VTU Entries\n" \
    QOS_TITLE QOS_HEADER ZERO_QOS_ROWS \
    COS_TITLE ZERO_COS_TABLES \
    ZERO_VLAN_SUMMARY
// clang-format on
