#include "switch/console/device_views.h"

#include "switch/chip/driver.h"
#include "switch/console/layouts.h"
#include "switch/console/tables.h"
#include "switch/engine/bring_up.h"
#include "switch/engine/vlan_properties.h"

#include <cstdio>

namespace
{

SW_Row_Steps steps_of(const SW_Control *control)
{
    return {control->read != 0, control->print != 0};
}

/* A title or header, which shows only when the view prints. */
void print_heading(const SW_Control *control, const char *text)
{
    if (control->print != 0) {
        std::fputs(text, stdout);
    }
}

using Class_Getter = int (*)(SW_Device *device, uint32_t index, uint32_t *trafficClass);

template <size_t Count>
void show_classes(SW_Control *control, const char *header, Class_Getter get,
                  uint8_t (&classes)[Count])
{
    print_heading(control, header);
    for (uint32_t index = 0; index < Count; index++) {
        uint32_t trafficClass = 0;
        if (control->read != 0 && get(control->device, index, &trafficClass) == SW_STATUS_OK) {
            classes[index] = static_cast<uint8_t>(trafficClass);
        }
        if (control->print != 0) {
            Print_Cos_Pair(static_cast<int>(index), classes[index]);
        }
    }
    print_heading(control, "\n");
}

/* Calls take(entry) for each entry of the chip's VLAN table. */
template <class Take>
void walk_vtu(SW_Device *device, const Take &take)
{
    Vlan_Table_Entry entry = {};
    for (int status = swVtuGetFirst(device, &entry); status == SW_STATUS_OK;
         status = swVtuGetNext(device, &entry)) {
        take(entry);
    }
}

/* The image's table is emptied first, so that what the chip has no longer does not stay in it. */
void read_vtu(SW_Device *device, SW_Config *image)
{
    uint32_t count = 0;
    if (swVtuGetEntryCount(device, &count) != SW_STATUS_OK) {
        return;
    }
    ClearVlanTable(image);
    image->vlanEntryCount = count;
    walk_vtu(device, [image](const Vlan_Table_Entry &entry) {
        image->vlans[entry.vid].vtu = entry;
        image->vlans[entry.vid].defined = 1;
    });
}

} // namespace

void Print_Status_Title(const SW_Control *control)
{
    print_heading(control, "Marvell Switch Status:\n");
}

void Dev_Max_Frame_Size(SW_Control *control)
{
    SW_Read_Max_Frame_Size(control);
}

void Dev_Ports_Status(SW_Control *control)
{
    print_heading(control, SW_PORTS_STATUS_TABLE.title);
    Device_Rows(SW_PORTS_STATUS_TABLE, steps_of(control), control->device, control->portStatus);
}

void Dev_Vlan_Tab(SW_Control *control)
{
    print_heading(control, SW_VLAN_TABLE.title);
    Dev_Vlan_Rows(control);
}

void Dev_Vtu_Tab(SW_Control *control)
{
    print_heading(control, SW_VTU_TITLE);
    Dev_Vtu_Rows(control);
}

void Dev_Qos_Tab(SW_Control *control)
{
    print_heading(control, SW_QOS_TABLE.title);
    Dev_Qos_Rows(control);
}

void Dev_Cos_Tab(SW_Control *control)
{
    SW_Config *image = control->deviceImage;
    print_heading(control, SW_COS_TITLE);
    show_classes(control, SW_USER_PRIO_HEADER, swGetUserPrioToTrafficClass, image->cosUserPrio);
    show_classes(control, SW_DSCP_HEADER, swGetDscpToTrafficClass, image->cosDscp);
}

void Dev_Vlan_Properties(const SW_Control *control)
{
    if (control->print != 0) {
        SW_Print_Vlan_Properties_Of(control->deviceImage);
    }
}

void Print_Device_Status(SW_Control *control)
{
    Print_Status_Title(control);
    Dev_Max_Frame_Size(control);
    Dev_Ports_Status(control);
    Dev_Vlan_Tab(control);
    Dev_Vtu_Tab(control);
    Dev_Qos_Tab(control);
    Dev_Cos_Tab(control);
    Dev_Vlan_Properties(control);
}

void Print_Device_Image(SW_Control *control)
{
    control->read = 0;
    control->print = 1;
    Print_Device_Status(control);
}

void Refresh_Device_Image(SW_Control *control)
{
    ClearSwitchConfig(control->deviceImage);
    for (SW_Port_Status &status : control->portStatus) {
        status = {};
    }
    control->read = 1;
    control->print = 0;
    Print_Device_Status(control);
    control->read = 0;
    control->print = 1;
}

void Dev_Vlan_Rows(SW_Control *control)
{
    Device_Rows(SW_VLAN_TABLE, steps_of(control), control->device, control->deviceImage->ports);
}

void Dev_Qos_Rows(SW_Control *control)
{
    Device_Rows(SW_QOS_TABLE, steps_of(control), control->device, control->deviceImage->ports);
}

void Dev_Vtu_Rows(SW_Control *control)
{
    if (control->read != 0) {
        read_vtu(control->device, control->deviceImage);
    }
    if (control->print != 0) {
        Print_Vtu_Rows(control->deviceImage);
    }
}

void Dev_Vlan_Row(SW_Control *control, int port)
{
    if (port >= 0 && port < SW_PORTS) {
        Device_Row(SW_VLAN_TABLE, steps_of(control), control->device, port,
                   &control->deviceImage->ports[port]);
    }
}

void Print_Chip_Ports_Status(const SW_Control *control)
{
    SW_Port_Status status[SW_PORTS] = {};
    Device_Rows(SW_PORTS_STATUS_TABLE, {true, true}, control->device, status);
}

void Print_Chip_Vtu(const SW_Control *control)
{
    uint32_t count = 0;
    swVtuGetEntryCount(control->device, &count);
    if (count == 0) {
        std::puts("No VTU Entries");
        return;
    }
    Print_Vtu_Header();
    walk_vtu(control->device, [](const Vlan_Table_Entry &entry) { Print_Vtu_Row(&entry); });
}
