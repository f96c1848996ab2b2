#pragma once

#include "switch/engine/control.h"

#include <cstdint>
#include <span>

/*
 * The set of VLANs that exist: the defined entries of the running configuration's VLAN table and
 * their count. The chip is not touched.
 *
 * Nothing here reads the console. Its two keys ask for the VLAN range, then:
 *   set       SW_Report_Vlans; when good SW_Set_Existing_Vlans with print; in every case
 *             SW_Apply_Vlan_Port_Modes, so that access and trunk ports regain their membership
 *   remove    SW_Report_Vlans; when good SW_Remove_Existing_Vlans
 *
 * Lists of VIDs hold 1 to 4095 and may name a VID more than once; a number outside 0 to 4095 is
 * skipped. Lists are printed sixteen to a line. One thread.
 */

/* Prints the line "VLANs: ..." with text, the range text that the question left, and whether it was
 * understood. Returns parsed. */
bool SW_Report_Vlans(const char *text, bool parsed);

/*
 * Removes all VLANs, then defines those of vids without any member. The count grows by one for each
 * item of the list, so a VID that is named twice counts twice. With print, shows each item and ends
 * the line, also of an empty list.
 */
void SW_Set_Existing_Vlans(SW_Control *control, std::span<const int32_t> vids, bool print);

/*
 * Resets the entry of each of vids. Those that were defined are no longer, leave the count and are
 * printed. The line is ended even when it is empty.
 */
void SW_Remove_Existing_Vlans(SW_Control *control, std::span<const int32_t> vids);

/* Sets the VLAN table and its count to zero. */
void SW_Remove_All_Vlans(SW_Control *control);

/* Makes entry the one of a VLAN vid that is not defined and has none of the five ports as a member;
 * everything else is zero. control is not used. */
void SW_Reset_Vlan_Entry(SW_Control *control, SW_Vlan_Entry *entry, uint16_t vid);
