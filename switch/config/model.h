#pragma once

#include "switch/chip/vlan_entry.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

/*
 * The switch configuration: one fixed-size record without pointers, copied with one assignment and
 * compared byte for byte. Every byte belongs to a field and paddings are named and always zero, so
 * that a comparison never sees an indeterminate byte. Single-threaded: the records belong to the
 * host of the console. A record takes 257 KiB; keep it in static storage, not on the stack.
 *
 * The enumerations that the fields hold are in switch/config/keywords.h.
 */

inline constexpr int SW_PORTS = 5;
inline constexpr int SW_VLANS = 4096; /* VLAN ID slots; 0 is never defined from the file */
inline constexpr int SW_USER_PRIOS = 8;
inline constexpr int SW_DSCPS = 64;
inline constexpr int SW_RANGE_TEXT_SIZE = 100; /* bytes of a range text, its NUL included */

/* Port index 0 to 4 to the name that messages and tables show. */
inline constexpr const char *SW_Port_Names[SW_PORTS] = {"CPU", "LAN", "WAN", "SFP0", "SFP1"};

/* Port index 0 to 4 to the chip's port number, which driver calls and per-chip-port arrays take. */
inline constexpr int SW_Chip_Ports[SW_PORTS] = {2, 1, 0, 4, 3};

/* Settings of one port. A flag is 0 for no and 1 for yes. The order of the fields is the order of
 * the keys in the startup file. */
struct SW_Port_Config {
    uint32_t portType; /* SW_Port_Type */
    uint32_t autoMode; /* SW_Auto_Mode */
    uint16_t vid;      /* default VLAN ID */
    uint16_t vidPad;
    uint32_t vidForceDefault; /* flag: the default VID on every ingress frame */
    uint32_t dot1qMode;       /* SW_Dot1q_Mode */
    uint32_t discardTagged;   /* flag */
    uint32_t discardUntagged; /* flag */
    uint32_t egressMode;      /* SW_Egress_Mode */
    uint32_t useCoreTag;      /* flag */
    uint32_t egressRate;      /* SW_Rate */
    uint32_t limitMgmt;       /* flag: rate limiting includes management frames */
    uint32_t countIfg;        /* flag: bytes of the inter-frame gap count */
    uint32_t countPre;        /* flag: bytes of the preamble count */
    uint32_t pri0Rate;        /* SW_Rate: ingress limit of priority 0 frames */
    uint32_t pri1Rate;        /* flag: the limit holds for priority 1 frames too */
    uint32_t pri2Rate;        /* flag */
    uint32_t pri3Rate;        /* flag */
    uint32_t prioMapRule;     /* flag */
    uint32_t ipPrio;          /* flag: use the DSCP priority */
    uint32_t userPrio;        /* flag: use the priority of the frame's tag */
    uint8_t portPrio;         /* default traffic class */
    uint8_t portPrioPad[3];
};

/* One VLAN ID: the chip's entry, handed to the driver as it stands, and whether it exists. Only
 * defined entries are written to the file, counted and applied. */
struct SW_Vlan_Entry {
    Vlan_Table_Entry vtu; /* per-port arrays indexed by chip port number */
    uint8_t defined;      /* flag */
    uint8_t pad[3];
};

struct SW_Config {
    uint32_t maxFrameSize; /* SW_Max_Frame_Size */
    SW_Port_Config ports[SW_PORTS];
    uint32_t vlanEntryCount;       /* number of defined entries of vlans */
    SW_Vlan_Entry vlans[SW_VLANS]; /* indexed by VLAN ID */
    uint8_t cosUserPrio[SW_USER_PRIOS];
    uint8_t cosDscp[SW_DSCPS];
    uint32_t vlanPortType[SW_PORTS]; /* SW_Vlan_Port_Type */
    /* Range list of the port's VLAN mode, NUL-terminated; set with SetRangeText only. */
    char vlanPortList[SW_PORTS][SW_RANGE_TEXT_SIZE];
    uint32_t accessWords[SW_PORTS]; /* set to 0 by the access command; otherwise unused */
};

static_assert(sizeof(SW_Port_Config) == 84);
static_assert(sizeof(SW_Vlan_Entry) == 64);
static_assert(sizeof(SW_Config) == 263184);
static_assert(offsetof(SW_Vlan_Entry, vtu) == 0);
static_assert(offsetof(SW_Vlan_Entry, defined) == sizeof(Vlan_Table_Entry));
static_assert(std::is_trivially_copyable_v<SW_Config>);
static_assert(std::has_unique_object_representations_v<SW_Config>);

/* What CompareSwitchConfig found to differ; every flag is 1 for differs. Starts all zero. */
struct SW_Config_Changes {
    uint8_t maxFrameSize;
    uint8_t anyPort;
    uint8_t port[SW_PORTS];
    uint8_t vlanTable;
    uint8_t cosUserPrio;
    uint8_t cosDscp;
    uint8_t anyVlanPortMode;
    uint8_t vlanPortMode[SW_PORTS];
};
static_assert(sizeof(SW_Config_Changes) == 16);

/* Sets every byte of config to zero. */
void ClearSwitchConfig(SW_Config *config);

/* Clears config, then sets the factory defaults. No VLAN is defined. */
void SetSwitchConfigDefaults(SW_Config *config);

/* Sets all VLAN entries, and their count, to zero. */
void ClearVlanTable(SW_Config *config);

/*
 * Sets in changes, which the caller has cleared, a flag for every area in which a and b differ.
 * VLAN port types, VLAN range texts and the entry count are not compared: each call marks the VLAN
 * port mode of every port and returns true, so that the modes are applied again on every apply.
 */
bool CompareSwitchConfig(SW_Config_Changes *changes, const SW_Config *a, const SW_Config *b);

/* The flag of one port; false for a port outside 0 to 4. */
bool PortChanged(const SW_Config_Changes *changes, int port);
bool VlanPortModeChanged(const SW_Config_Changes *changes, int port);

/*
 * Writes text, and zeroes behind it, to all bytes of a range text. False, and field unchanged, when
 * text is longer than 99 characters: a list is never cut. text may lie inside field.
 */
bool SetRangeText(char (*field)[SW_RANGE_TEXT_SIZE], std::string_view text);
