#pragma once

#include "switch/engine/control.h"

#include <cstdint>

/*
 * Writing the running configuration to the chip. Every write is attempted, whatever failed before
 * it; a failed one is one line with the driver status and makes the result false. Nothing is rolled
 * back. Messages name a port by its index 0 to 4 or its name; driver calls take SW_Chip_Ports.
 * Single-threaded.
 *
 * log: print a line for each value that changed, old and new. write: access the chip.
 */

/*
 * Compares running with applied and writes what differs, in this order: maximum frame size, VLAN
 * table, VLAN port modes, settings of the changed ports, priority maps. Then copies running over
 * applied, whatever failed. Returns true when no write failed; with `log` prints
 * "Switch: Apply Changes - Ok\n" or "... - Failed\n".
 *
 * What differs is decided once, before the first step. So of the edits that the VLAN port modes
 * make to running, those to a port that differed already reach the chip in this pass. Those to
 * another port, and those to the VLAN table, do not; they are copied all the same, and wait for a
 * pass in which that port, or the table, differs for another reason.
 *
 * Without `write` only the frame-size log line remains of the steps; the copy is made all the same.
 */
bool SW_Apply_Changes(SW_Control *control, bool log, bool write);

/*
 * Writes the whole running configuration, whatever differs: maximum frame size, VLAN table, VLAN
 * port modes, all five ports, priority maps. `log` compares with applied, which stays as it is.
 * True when no step failed.
 */
bool SW_Configure(SW_Control *control, bool log);

/*
 * The maximum frame size. With `write`, *newValue other than 0 (1522 bytes) and 1 (1632 bytes) is
 * set to 1 first; a failed write prints its line only with `log` and returns false. With `log` and
 * differing values prints "Switch: Max Frame Size: %s->%s\n", also after a failed write.
 */
bool SW_Apply_Max_Frame_Size(SW_Control *control, uint32_t *newValue, const uint32_t *oldValue,
                             bool log, bool write);

/*
 * Flushes the chip's VLAN table and adds the first `vlanEntryCount` defined entries of `vlans`, an
 * array of SW_VLANS. A count that is smaller than the number of defined entries cuts the rest off.
 */
bool SW_Rebuild_VTU(SW_Control *control, const SW_Vlan_Entry *vlans, uint32_t vlanEntryCount);

/* Writes the settings of port 0 to 4: eighteen for a copper port, seventeen for any other, which
 * gets no auto mode. `log` compares newPort with oldPort. */
bool SW_Apply_Port(SW_Control *control, int port, const SW_Port_Config *newPort,
                   const SW_Port_Config *oldPort, bool log);

/* Write the traffic class of the user priorities, of the DSCPs 0 to `entries` - 1, as many of which
 * `table` holds. Each DSCP is written twice; a failure of the first write is not noticed. */
bool SW_Apply_User_Prio_Map(SW_Control *control, const uint8_t *table, int entries);
bool SW_Apply_Dscp_Map(SW_Control *control, const uint8_t *table, int entries);
