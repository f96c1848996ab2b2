#pragma once

#include "switch/engine/control.h"

#include <cstdint>
#include <span>
#include <string_view>

/*
 * VLAN port modes: Default (no VLANs), Access (one untagged VLAN) and Trunk (a native VLAN and a
 * list of allowed tagged VLANs), turned into a port's 802.1Q settings and its membership in the
 * VLAN table (IEEE 802.1Q, 6.9 and 8.8).
 *
 * Everything here edits the running configuration only; the chip is not touched. Which VLANs exist
 * is never changed: membership in a VLAN that does not exist stays in the record and never reaches
 * the chip. A VID above 4095 has no entry in the table: whatever else a step does is done without
 * it.
 *
 * Nothing here reads the console. A console key asks its questions in their order and hands over
 * the answers; the operations print what follows from an answer:
 *
 *   access    ports, VID -> SW_Set_Access_Mode
 *   trunk     ports, VID -> SW_Vid_In_Range, tag all, VLAN range -> SW_Report_Allowed_Vlans
 *             -> SW_Set_Trunk_Mode
 *   default   ports -> SW_Set_Default_Mode
 *
 * A question's default belongs to a copy of the first port's setting: nothing is edited before all
 * answers are good.
 *
 * Lists of ports hold port indices 0 to 4, others are skipped; lists of VIDs hold 1 to 4095,
 * numbers without an entry are skipped. Lists may be empty and may name an item more than once. One
 * thread.
 */

/*
 * Renews what the mode of port says: settings and membership of an access, trunk or default port. A
 * trunk whose list does not parse keeps everything, and the parser's message is the only output;
 * ports of other types, and ports outside 0 to 4, are left alone. log is not used. Returns true.
 */
bool SW_Apply_Vlan_Port_Mode(SW_Control *control, int port, bool log);

/* The same for ports 0 to 4. True when all returned true. */
bool SW_Apply_Vlan_Port_Modes(SW_Control *control, bool log);

/* Gives the ports the default mode, then prints the VLAN properties. */
void SW_Set_Default_Mode(SW_Control *control, std::span<const int32_t> ports);

/* False, after "VID %d out of range", for a VID above 4095; otherwise true. 0 is good. */
bool SW_Vid_In_Range(uint16_t vid);

/*
 * Gives the ports the access mode with vid, then prints the VLAN properties. False, with nothing
 * changed and no properties, when vid is refused as by SW_Vid_In_Range.
 */
bool SW_Set_Access_Mode(SW_Control *control, std::span<const int32_t> ports, uint16_t vid);

/* The answer to the question for a trunk's VLANs: what was written, and the VIDs that it names. */
struct SW_Allowed_Vlans {
    std::string_view text; /* at most 99 characters */
    std::span<const int32_t> vids;
};

/* Prints the line "Allowed VLANs: ..." with text, the range text that the question left, and
 * whether it was understood. Returns parsed. */
bool SW_Report_Allowed_Vlans(const char *text, bool parsed);

/*
 * Gives the ports the trunk mode with the native VLAN vid and the allowed VLANs, then prints the
 * VLAN properties. tagAll: the native VLAN is tagged at egress too. Only allowed VLANs that exist
 * get the ports as members. When all of 1 to 4095 are allowed, the membership except in the native
 * VLAN is left to SW_Apply_Vlan_Port_Mode.
 *
 * False, with nothing changed and no properties, when vid is refused as by SW_Vid_In_Range, or,
 * without a message, when the text is longer than a range text can be.
 */
bool SW_Set_Trunk_Mode(SW_Control *control, std::span<const int32_t> ports, uint16_t vid,
                       bool tagAll, const SW_Allowed_Vlans &allowed);
