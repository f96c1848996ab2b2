#pragma once

#include "switch/config/model.h"
#include "switch/engine/control.h"

#include <cstdint>

/*
 * The tables of settings on standard output, printed from a configuration record. Device views,
 * which print the same tables from what the chip reports, are in device_views.h. Ports stand in the
 * order of SW_Port_Names. Single-threaded.
 */

/* "True" for exactly 1, else "False": the rule of all tables. (Log lines, prompts and the Bytes
 * Count menu line have others.) */
const char *SW_Flag_Cell_Text(uint32_t flag);

/* Views of the running configuration, with their titles. */
void Print_Config_Title();
void Print_Max_Frame_Size(const SW_Control *control);
void Print_Ports_Config(const SW_Control *control); /* LAN and WAN only */
void Print_Vlan_Tab(const SW_Control *control);
void Print_Vtu_Tab(const SW_Control *control);
void Print_Qos_Tab(const SW_Control *control);
void Print_Cos_Tab(const SW_Control *control);

/* All of the above in this order, then the summary of the VLAN membership. */
void Print_Running_Config(const SW_Control *control);

/* The same tables of any configuration without their titles: header lines and rows. */
void Print_Ports_Config_Rows(const SW_Config *config);
void Print_Vlan_Rows(const SW_Config *config);
void Print_Qos_Rows(const SW_Config *config);
void Print_Cos_Rows(const SW_Config *config); /* both tables, user priorities and DSCPs */

/* The VLAN table: "No VTU Entries\n", or the header line and the first `vlanEntryCount` defined
 * entries, each with the VLAN ID that it holds. */
void Print_Vtu_Rows(const SW_Config *config);

/* The two header lines of the VLAN Tab, for rows printed one by one. */
void Print_Vlan_Header();

/* The header line of the VTU table; one row of it. */
void Print_Vtu_Header();
void Print_Vtu_Row(const Vlan_Table_Entry *entry);
