#include "switch/console/device_views.h"
#include "switch/console/menu.h"
#include "switch/console/prompts.h"
#include "switch/console/ranges.h"
#include "switch/console/setting.h"
#include "switch/console/setting_menus.h"
#include "switch/console/tables.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace
{

void print_heading(const SW_Menu_Visit & /*visit*/)
{
    std::fputs("\nVTU Tab Setting Menu:\n", stdout);
}

void print_config(SW_Menu_Visit &visit)
{
    Print_Vtu_Rows(visit.control->running);
}

void print_status(SW_Menu_Visit &visit)
{
    Dev_Vtu_Rows(visit.control);
}

/* What the operator edits: the VLAN's ID and member tags, all else zero. A VLAN that does not exist
 * starts with tags of 0, "Unmodified", whatever its slot holds. */
Vlan_Table_Entry entry_to_edit(const SW_Vlan_Entry &existing, uint16_t vid)
{
    Vlan_Table_Entry entry = {};
    entry.vid = vid;
    if (existing.defined != 0) {
        entry.vid = existing.vtu.vid;
        std::copy(std::begin(existing.vtu.memberTagP), std::end(existing.vtu.memberTagP),
                  std::begin(entry.memberTagP));
    }
    return entry;
}

void add_entry(SW_Menu_Visit &visit)
{
    uint16_t vid = 1;
    Ask_Number("Port VID", &vid);
    if (vid == 0 || vid >= SW_VLANS) {
        std::printf("VID %d out of range\n", vid);
        return;
    }

    SW_Config *config = visit.control->running;
    SW_Vlan_Entry &stored = config->vlans[vid];
    Vlan_Table_Entry entry = entry_to_edit(stored, vid);
    for (int port = 0; port < SW_PORTS; port++) {
        char label[32];
        std::snprintf(label, sizeof label, "Tagging of Port %s", SW_Port_Names[port]);
        Ask_Member_Tag(label, &entry.memberTagP[SW_Chip_Ports[port]]);
    }
    stored.vtu = entry;
    if (stored.defined == 0) {
        stored.defined = 1;
        config->vlanEntryCount++;
    }
}

void remove_all(SW_Menu_Visit &visit)
{
    ClearVlanTable(visit.control->running);
}

void remove_range(SW_Menu_Visit &visit)
{
    std::vector<int32_t> vids;
    if (!Ask_Range_Vector("VLAN IDs Range", &SW_Ranges.vlanIds, vids, 1, SW_VLANS - 1)) {
        SW_Refuse_Range(SW_Ranges.vlanIds);
        return;
    }

    SW_Config *config = visit.control->running;
    for (const int32_t vid : vids) {
        config->vlans[vid] = {};
    }
    if (vids.empty()) {
        std::puts("Range is empty");
    } else {
        /* Meant: those named, not those found. */
        std::printf("Removed %d VTU Table entries\n", static_cast<int>(vids.size()));
    }
    config->vlanEntryCount = static_cast<uint32_t>(
        std::count_if(std::begin(config->vlans), std::end(config->vlans),
                      [](const SW_Vlan_Entry &entry) { return entry.defined != 0; }));
}

using enum SW_Letters;
using enum SW_After;

// clang-format off
constexpr SW_Menu_Key KEYS[] = {
    {'1', AS_WRITTEN, REPRINT, "1. VTU Entries Config Print *CFG*", nullptr, print_config},
    {'2', AS_WRITTEN, REPRINT, "2. Add/Replace VTU Entry *CFG*", nullptr, add_entry},
    {'3', AS_WRITTEN, REPRINT, "3. Remove all VTU entries *CFG*", nullptr, remove_all},
    {'4', AS_WRITTEN, REPRINT, "4. Remove VTU entries range *CFG*", nullptr, remove_range},
    SW_APPLY_KEY,
    {'p', BOTH_CASES, REPRINT, "p. VTU Entries Status Print =dev=", nullptr, print_status},
    {'\n', AS_WRITTEN, NO_REPRINT, nullptr, nullptr, nullptr},
};
// clang-format on

static_assert(SW_Keys_Are_Distinct(KEYS));
constexpr SW_Menu MENU = {print_heading, KEYS, "0. Back\n"};

} // namespace

void Vtu_Setting_Menu(SW_Control *control, uint32_t *forceExit)
{
    SW_Run_Setting_Menu(MENU, control, forceExit);
}
