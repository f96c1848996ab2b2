#pragma once

#include "switch/engine/control.h"

/*
 * What the chip reports, in the tables of tables.h. Single-threaded.
 *
 * A view reads its part of the chip into the device image (port status: into the records beside it)
 * when the control's read flag is set, and prints it from there when the print flag is set; a cell
 * is printed right after it was read. With the print flag off nothing is printed, no title or
 * header either. Driver failures are not reported, but for the maximum frame size: the image keeps
 * what it held, and that is shown.
 */

/* The views with their titles. */
void Print_Status_Title(const SW_Control *control);
void Dev_Max_Frame_Size(SW_Control *control); /* SW_Read_Max_Frame_Size */
void Dev_Ports_Status(SW_Control *control);
void Dev_Vlan_Tab(SW_Control *control);
void Dev_Vtu_Tab(SW_Control *control);
void Dev_Qos_Tab(SW_Control *control);
void Dev_Cos_Tab(SW_Control *control);

/* Dev_Vtu_Tab: reading empties the image's VLAN table first, so that what the chip lost does not
 * stay in it; when the chip's entries cannot be counted, the image keeps its table. A walk that
 * fails ends it with the entries up to there. */

/* When printing, the summary of the VLAN membership over the device image; reads nothing. */
void Dev_Vlan_Properties(const SW_Control *control);

/* All of the above in this order. */
void Print_Device_Status(SW_Control *control);

/* Print_Device_Status from the device image as it stands. Leaves the read flag off and the print
 * flag on. */
void Print_Device_Image(SW_Control *control);

/* Zeroes the device image and the port status records and reads all of it anew, without printing.
 * Leaves the flags as Print_Device_Image. */
void Refresh_Device_Image(SW_Control *control);

/* Views without their titles: header lines and rows. */
void Dev_Vlan_Rows(SW_Control *control);
void Dev_Qos_Rows(SW_Control *control);
void Dev_Vtu_Rows(SW_Control *control);

/* The VLAN Tab row of one port, 0 to 4 (of any other, nothing); its header is Print_Vlan_Header. */
void Dev_Vlan_Row(SW_Control *control, int port);

/*
 * Tables straight from the chip, whatever the flags are: header and rows without a title. The
 * device image is neither read nor changed; what cannot be read shows as zero.
 */

/* The Ports Status table. */
void Print_Chip_Ports_Status(const SW_Control *control);

/* The VTU table, walked on the chip entry by entry; "No VTU Entries\n" when the chip counts none or
 * the count fails. */
void Print_Chip_Vtu(const SW_Control *control);
