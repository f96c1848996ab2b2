#pragma once

#include "switch/chip/device.h"
#include "switch/chip/vlan_entry.h"

/*
 * The chip's VLAN table (VTU), under the VTU lock. Statuses:
 *   SW_STATUS_BAD_PARAM      the device record, the entry or the result pointer is null; see each
 *   SW_STATUS_NOT_SUPPORTED  flush and add: the chip has no such table
 *   SW_STATUS_FAIL           a register access failed, or a lock was not taken; see each
 * With the first two there is no register access. Each operation waits, without a limit, until
 * the chip's table engine is idle; only a failed register access ends that wait early.
 */

/* Removes all entries. */
int swVtuFlush(SW_Device *device);

/* Adds the entry or replaces the one of the same VLAN ID. SW_STATUS_BAD_PARAM also for a VLAN ID
 * above 4095 and for a database number above 63 (15 on the oldest chips). Port arrays of the entry
 * beyond the chip's ports, `sid` and `vidPolicy` do not reach the chip; tags and states are cut to
 * 2 bits. */
int swVtuAddEntry(SW_Device *device, const Vlan_Table_Entry *entry);

/* The entry with the lowest VLAN ID, 0 to 4095. SW_STATUS_FAIL when the table is empty. A failure
 * leaves the entry as it was; success writes it whole, with 0 in what the chip does not hold. */
int swVtuGetFirst(SW_Device *device, Vlan_Table_Entry *entry);

/* Replaces the entry by the one with the next higher VLAN ID; only the ID is read, modulo 4096.
 * SW_STATUS_FAIL when there is none: nothing is above 4095, and the table's wrap is not followed. A
 * failure leaves the entry as it was. */
int swVtuGetNext(SW_Device *device, Vlan_Table_Entry *entry);

/* Counts the entries; 0 for an empty table. A failure leaves the count as it was. */
int swVtuGetEntryCount(SW_Device *device, uint32_t *count);
