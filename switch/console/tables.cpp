#include "switch/console/tables.h"

#include "switch/config/keywords.h"
#include "switch/console/layouts.h"
#include "switch/engine/vlan_properties.h"

#include <cstdio>

namespace
{

void print_rows(const SW_Port_Table<SW_Port_Config> &table, const SW_Config *config, int firstPort,
                int lastPort)
{
    std::fputs(table.header, stdout);
    for (int port = firstPort; port <= lastPort; port++) {
        Print_Row(table, port, &config->ports[port]);
    }
}

template <size_t Count>
void print_classes(const char *header, const uint8_t (&classes)[Count])
{
    std::fputs(header, stdout);
    for (int index = 0; index < static_cast<int>(Count); index++) {
        Print_Cos_Pair(index, classes[index]);
    }
    std::putchar('\n');
}

} // namespace

const char *SW_Flag_Cell_Text(uint32_t flag)
{
    return TrueFalseText(flag == 1);
}

void Print_Config_Title()
{
    std::puts("Marvell Switch Config:");
}

void Print_Max_Frame_Size(const SW_Control *control)
{
    std::printf("Max Frame Size: %s\n", MaxFrameSizeDisplayText(control->running->maxFrameSize));
}

void Print_Ports_Config(const SW_Control *control)
{
    std::fputs(SW_PORTS_CONFIG_TABLE.title, stdout);
    Print_Ports_Config_Rows(control->running);
}

void Print_Vlan_Tab(const SW_Control *control)
{
    std::fputs(SW_VLAN_TABLE.title, stdout);
    Print_Vlan_Rows(control->running);
}

void Print_Vtu_Tab(const SW_Control *control)
{
    std::fputs(SW_VTU_TITLE, stdout);
    Print_Vtu_Rows(control->running);
}

void Print_Qos_Tab(const SW_Control *control)
{
    std::fputs(SW_QOS_TABLE.title, stdout);
    Print_Qos_Rows(control->running);
}

void Print_Cos_Tab(const SW_Control *control)
{
    std::fputs(SW_COS_TITLE, stdout);
    Print_Cos_Rows(control->running);
}

void Print_Running_Config(const SW_Control *control)
{
    Print_Config_Title();
    Print_Max_Frame_Size(control);
    Print_Ports_Config(control);
    Print_Vlan_Tab(control);
    Print_Vtu_Tab(control);
    Print_Qos_Tab(control);
    Print_Cos_Tab(control);
    SW_Print_Vlan_Properties(control);
}

void Print_Ports_Config_Rows(const SW_Config *config)
{
    /* LAN and WAN only: meant, the others have no copper PHY to configure. */
    print_rows(SW_PORTS_CONFIG_TABLE, config, 1, 2);
}

void Print_Vlan_Rows(const SW_Config *config)
{
    print_rows(SW_VLAN_TABLE, config, 0, SW_PORTS - 1);
}

void Print_Qos_Rows(const SW_Config *config)
{
    print_rows(SW_QOS_TABLE, config, 0, SW_PORTS - 1);
}

void Print_Cos_Rows(const SW_Config *config)
{
    print_classes(SW_USER_PRIO_HEADER, config->cosUserPrio);
    print_classes(SW_DSCP_HEADER, config->cosDscp);
}

void Print_Vtu_Rows(const SW_Config *config)
{
    if (config->vlanEntryCount < 1) {
        std::puts("No VTU Entries");
        return;
    }
    Print_Vtu_Header();
    uint32_t printed = 0;
    for (int vid = 0; vid < SW_VLANS && printed < config->vlanEntryCount; vid++) {
        if (config->vlans[vid].defined == 0) {
            continue;
        }
        Print_Vtu_Row(&config->vlans[vid].vtu);
        printed++;
    }
}

void Print_Vlan_Header()
{
    std::fputs(SW_VLAN_TABLE.header, stdout);
}

void Print_Vtu_Header()
{
    std::printf("  VID");
    for (const char *name : SW_Port_Names) {
        std::printf(" | %-10s", name);
    }
    std::putchar('\n');
}

void Print_Vtu_Row(const Vlan_Table_Entry *entry)
{
    std::printf(" %4d", entry->vid);
    for (const int chipPort : SW_Chip_Ports) {
        std::printf(" | %-10s", MemberTagDisplayText(entry->memberTagP[chipPort]));
    }
    std::putchar('\n');
}
