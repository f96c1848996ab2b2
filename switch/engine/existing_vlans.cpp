#include "switch/engine/existing_vlans.h"

#include "switch/config/keywords.h"
#include "switch/engine/vlan_membership.h"

#include <cstdio>

namespace
{

constexpr int VIDS_PER_LINE = 16;

/* Prints vid behind as many others as printed tells, which it counts up. */
void print_vid(int32_t vid, int *printed)
{
    if (*printed > 0 && *printed % VIDS_PER_LINE == 0) {
        putchar('\n');
    }
    printf(" %4d", vid);
    ++*printed;
}

} // namespace

bool SW_Report_Vlans(const char *text, bool parsed)
{
    printf("VLANs: \"%s\" - %s\n", text, parsed ? "Ok" : "Failed");
    return parsed;
}

void SW_Set_Existing_Vlans(SW_Control *control, std::span<const int32_t> vids, bool print)
{
    SW_Config *config = control->running;
    SW_Remove_All_Vlans(control);
    int printed = 0;
    for (const int32_t vid : vids) {
        if (!HasVlanEntry(vid)) {
            continue;
        }
        SW_Vlan_Entry *entry = &config->vlans[vid];
        SW_Reset_Vlan_Entry(control, entry, static_cast<uint16_t>(vid));
        entry->defined = 1;
        config->vlanEntryCount++; /* meant: also for a VID that is named again */
        if (print) {
            print_vid(vid, &printed);
        }
    }
    if (print) {
        putchar('\n');
    }
}

void SW_Remove_Existing_Vlans(SW_Control *control, std::span<const int32_t> vids)
{
    SW_Config *config = control->running;
    int printed = 0;
    for (const int32_t vid : vids) {
        if (!HasVlanEntry(vid)) {
            continue;
        }
        SW_Vlan_Entry *entry = &config->vlans[vid];
        const bool existed = entry->defined != 0;
        SW_Reset_Vlan_Entry(control, entry, static_cast<uint16_t>(vid));
        if (!existed) {
            continue;
        }
        config->vlanEntryCount--;
        print_vid(vid, &printed);
    }
    putchar('\n');
}

void SW_Remove_All_Vlans(SW_Control *control)
{
    ClearVlanTable(control->running);
}

void SW_Reset_Vlan_Entry(SW_Control * /*control*/, SW_Vlan_Entry *entry, uint16_t vid)
{
    *entry = {};
    entry->vtu.vid = vid;
    for (const int chipPort : SW_Chip_Ports) {
        entry->vtu.memberTagP[chipPort] = SW_Member_Tag_NONE;
    }
}
