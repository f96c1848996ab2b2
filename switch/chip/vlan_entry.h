#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

/* Slots of the per-port arrays: the most ports that a chip of the driver has. */
inline constexpr int VLAN_ENTRY_PORTS = 11;

/*
 * One entry of the chip's VLAN table, as the driver takes and returns it. Per-port arrays are
 * indexed by the driver's port number. Flags are 1 for true; every byte belongs to a field, the
 * paddings are named and zero, so that entries can be compared byte for byte.
 */
struct Vlan_Table_Entry {
    uint16_t dbNum;                       /* address database number, 0 to 63 */
    uint16_t vid;                         /* VLAN ID, 0 to 4095 (IEEE 802.1Q, 9.6) */
    uint8_t memberTagP[VLAN_ENTRY_PORTS]; /* 0 unmodified, 1 not a member, 2 untagged, 3 tagged */
    uint8_t portStateP[VLAN_ENTRY_PORTS]; /* port state in this VLAN, 0 to 3 */
    uint8_t pad0[2];
    uint32_t vidPriOverride; /* flag: vidPriority replaces the frame's priority */
    uint8_t vidPriority;     /* 0 to 7 */
    uint8_t sid;             /* spanning-tree instance; kept, not carried to the chip */
    uint8_t pad1[2];
    uint32_t vidPolicy;      /* flag; kept, not carried to the chip */
    uint32_t extPriOverride; /* extended fields, for the chips that have them: flag, */
    uint8_t extPriority;     /* 0 to 7 */
    uint8_t pad2[3];
    uint32_t extSecondOverride; /* flag */
    uint8_t extSecondPriority;  /* 0 to 3 */
    uint8_t pad3[3];
    uint32_t extRateLimit; /* flag */
};

static_assert(sizeof(Vlan_Table_Entry) == 60);
static_assert(std::has_unique_object_representations_v<Vlan_Table_Entry>);
static_assert(offsetof(Vlan_Table_Entry, memberTagP) == 4);
static_assert(offsetof(Vlan_Table_Entry, portStateP) == 15);
static_assert(offsetof(Vlan_Table_Entry, vidPriOverride) == 28);
static_assert(offsetof(Vlan_Table_Entry, sid) == 33);
static_assert(offsetof(Vlan_Table_Entry, extRateLimit) == 56);
