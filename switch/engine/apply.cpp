#include "switch/engine/apply.h"

#include "switch/chip/driver.h"
#include "switch/engine/frame_size.h"
#include "switch/engine/vlan_modes.h"

#include <cstdio>

namespace
{

using Class_Setter = int (*)(SW_Device *device, uint32_t number, uint32_t trafficClass);

/* Meant: every DSCP is written twice and only the second status counts. */
int set_dscp_twice(SW_Device *device, uint32_t dscp, uint32_t trafficClass)
{
    swSetDscpToTrafficClass(device, dscp, trafficClass);
    return swSetDscpToTrafficClass(device, dscp, trafficClass);
}

bool apply_class_map(SW_Control *control, Class_Setter set, const uint8_t *table, int entries)
{
    bool ok = true;
    for (int entry = 0; entry < entries; entry++) {
        const int status = set(control->device, static_cast<uint32_t>(entry), table[entry]);
        if (status != SW_STATUS_OK) {
            /* Meant: the line says "User prio" for a DSCP, too. */
            printf("Switch: ...Set User prio %d to traff class! Error:%d\n", entry, status);
            ok = false;
        }
    }
    return ok;
}

const char *frame_size_text(uint32_t size)
{
    switch (size) {
    case SW_Max_Frame_Size_1522:
        return "1522";
    case SW_Max_Frame_Size_1632:
        return "1632";
    default:
        return "????";
    }
}

bool write_frame_size(SW_Control *control, uint32_t *size, bool log)
{
    if (*size != SW_Max_Frame_Size_1522 && *size != SW_Max_Frame_Size_1632) {
        *size = SW_Max_Frame_Size_1632;
    }
    const int status = swSetMaxFrameSize(control->device, DriverFrameSize(*size));
    /* Meant: unlike the settings of a port, this failure is silent without the log. */
    if (status != SW_STATUS_OK && log) {
        printf("Switch: ...Set Max Frame Size! Error:%d\n", status);
    }
    return status == SW_STATUS_OK;
}

bool apply_port(SW_Control *control, int port, bool log)
{
    return SW_Apply_Port(control, port, &control->running->ports[port],
                         &control->applied->ports[port], log);
}

/* Every step runs, whatever failed before it. */
bool write_changes(SW_Control *control, const SW_Config_Changes &changes, bool log)
{
    SW_Config *running = control->running;
    bool ok = true;
    if (changes.vlanTable != 0) {
        ok = SW_Rebuild_VTU(control, running->vlans, running->vlanEntryCount) && ok;
    }
    for (int port = 0; changes.anyVlanPortMode != 0 && port < SW_PORTS; port++) {
        if (VlanPortModeChanged(&changes, port)) {
            ok = SW_Apply_Vlan_Port_Mode(control, port, log) && ok;
        }
    }
    for (int port = 0; changes.anyPort != 0 && port < SW_PORTS; port++) {
        if (PortChanged(&changes, port)) {
            ok = apply_port(control, port, log) && ok;
        }
    }
    if (changes.cosUserPrio != 0) {
        ok = SW_Apply_User_Prio_Map(control, running->cosUserPrio, SW_USER_PRIOS) && ok;
    }
    if (changes.cosDscp != 0) {
        ok = SW_Apply_Dscp_Map(control, running->cosDscp, SW_DSCPS) && ok;
    }
    return ok;
}

} // namespace

bool SW_Apply_Max_Frame_Size(SW_Control *control, uint32_t *newValue, const uint32_t *oldValue,
                             bool log, bool write)
{
    const bool ok = !write || write_frame_size(control, newValue, log);
    if (log && *newValue != *oldValue) {
        printf("Switch: Max Frame Size: %s->%s\n", frame_size_text(*oldValue),
               frame_size_text(*newValue));
    }
    return ok;
}

bool SW_Rebuild_VTU(SW_Control *control, const SW_Vlan_Entry *vlans, uint32_t vlanEntryCount)
{
    bool ok = true;
    int status = swVtuFlush(control->device);
    if (status != SW_STATUS_OK) {
        printf("Switch: ...Remove All VTU Entries !Error:%d\n", status);
        ok = false;
    }
    uint32_t met = 0; /* failed entries count, too */
    for (int vid = 0; vid < SW_VLANS && met < vlanEntryCount; vid++) {
        if (vlans[vid].defined == 0) {
            continue;
        }
        met++;
        status = swVtuAddEntry(control->device, &vlans[vid].vtu);
        if (status != SW_STATUS_OK) {
            printf("Switch: ...Add VTU Entry with Vlan ID %d !Error:%d\n", vid, status);
            ok = false;
        }
    }
    return ok;
}

bool SW_Apply_User_Prio_Map(SW_Control *control, const uint8_t *table, int entries)
{
    return apply_class_map(control, swSetUserPrioToTrafficClass, table, entries);
}

bool SW_Apply_Dscp_Map(SW_Control *control, const uint8_t *table, int entries)
{
    return apply_class_map(control, set_dscp_twice, table, entries);
}

bool SW_Apply_Changes(SW_Control *control, bool log, bool write)
{
    SW_Config *running = control->running;
    SW_Config *applied = control->applied;
    SW_Config_Changes changes = {};
    bool ok = true;
    if (CompareSwitchConfig(&changes, running, applied)) {
        if (changes.maxFrameSize != 0) {
            ok = SW_Apply_Max_Frame_Size(control, &running->maxFrameSize, &applied->maxFrameSize,
                                         log, write);
        }
        if (write) {
            ok = write_changes(control, changes, log) && ok;
        }
        if (log) {
            printf("Switch: Apply Changes - %s\n", ok ? "Ok" : "Failed");
        }
    } else if (log) {
        printf("Switch: [no_changes]\n");
    }
    *applied = *running;
    return ok;
}

bool SW_Configure(SW_Control *control, bool log)
{
    SW_Config *running = control->running;
    bool ok = SW_Apply_Max_Frame_Size(control, &running->maxFrameSize,
                                      &control->applied->maxFrameSize, log, true);
    ok = SW_Rebuild_VTU(control, running->vlans, running->vlanEntryCount) && ok;
    ok = SW_Apply_Vlan_Port_Modes(control, log) && ok;
    for (int port = 0; port < SW_PORTS; port++) {
        ok = apply_port(control, port, log) && ok;
    }
    ok = SW_Apply_User_Prio_Map(control, running->cosUserPrio, SW_USER_PRIOS) && ok;
    ok = SW_Apply_Dscp_Map(control, running->cosDscp, SW_DSCPS) && ok;
    return ok;
}
