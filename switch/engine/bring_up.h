#pragma once

#include "switch/engine/control.h"

/*
 * Bringing the switch chip under control. Nothing here writes the configuration to the chip. After
 * a failed bring-up the driver operations fail with their own statuses; the bring-up may be run
 * again at any time. Single-threaded.
 */

/*
 * Zeroes the driver's two records, fills the configuration record, loads the driver and enables the
 * device. Returns the driver status; a failure prints its line in both forms:
 *   "...load driver failed! Error:%d\n"   the load; the device is not enabled
 *   "sysConfig return Failed\n"           the enable step
 * verbose: announces the load and prints what the driver learnt about the chip; otherwise waits
 * 100 ms before and 100 ms after the load and prints nothing on success.
 */
int SW_Init(SW_Control *control, bool verbose);

/* SW_Init, not verbose: the bring-up of the console's start. The ports are not prepared. */
int SW_Init_Quiet(SW_Control *control);

/*
 * Prepares the ports: auto-negotiation of the driver ports 0 to 5 (port 2 offers 100 Mbit/s full
 * duplex only; IEEE 802.3, clause 28), frames of 1632 bytes, the LED function of the copper PHYs.
 * Prints the frame size that the chip then reports. Returns the status of the first of the two
 * frame-size operations that fails, whose line is printed and which ends the preparation; the
 * statuses of all others are not looked at.
 */
int SW_Init_Ports(SW_Control *control);

/* Waits one second, then SW_Init, verbose, and SW_Init_Ports whatever the first returned. 0, or -1
 * when either failed. */
int SW_ReInit(SW_Control *control);

/*
 * The maximum frame size of the device image. With the read flag it is read from the chip first; a
 * failed read leaves the image as it was and, with the print flag, prints
 * "...Get Max Frame Size! Error:%d\n". With the print flag "Max Frame Size: %s\n" is printed from
 * the image, also after a failed read.
 */
void SW_Read_Max_Frame_Size(SW_Control *control);

/* Not 0: memory is mapped already. 0 at start; nothing in the switch module sets it. */
extern uint32_t SW_Mem_Mapped;

/* Unless memory is mapped already, opens "/dev/mem" for reading and writing with synchronous data
 * writes, and closes it again. 0, or -1 with "Switch: Cannot open /dev/mem.\n" printed. */
int SW_Open_Dev_Mem();
