#pragma once

#include "switch/config/keywords.h"
#include "switch/engine/control.h"

#include <cstdint>
#include <span>

/*
 * A port's membership in the VLANs of the running configuration's table (IEEE 802.1Q, 8.8). Entries
 * need not be defined. Edits the record only; one thread.
 */

/* True for the port indices 0 to 4. */
constexpr bool IsPort(int port)
{
    return port >= 0 && port < SW_PORTS;
}

/* True for 0 to 4095, the VIDs that have a slot in the VLAN table. */
constexpr bool HasVlanEntry(int32_t vid)
{
    return vid >= 0 && vid < SW_VLANS;
}

/* Sets the member tag of port, 0 to 4, in the entry of vid; nothing for a VID without an entry. */
void SetMemberTag(SW_Config *config, int port, int32_t vid, SW_Member_Tag tag);

/* Takes port, 0 to 4, out of all 4096 entries. */
void LeaveAllVlans(SW_Config *config, int port);

/*
 * Makes port a tagged member of exactly those of vids that exist. With print, shows each of them as
 * " %d" and ends the line; "<none>" when there is none. Nothing at all for a port outside 0 to 4;
 * VIDs without an entry are skipped.
 */
void SW_Set_Trunk_Membership(SW_Control *control, int port, std::span<const int32_t> vids,
                             bool print);

/* True when vids holds each of 1 to 4095 once, in any order, and nothing else. */
bool SW_Is_All_Vlans(std::span<const int32_t> vids);
