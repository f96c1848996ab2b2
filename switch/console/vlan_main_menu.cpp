#include "switch/console/device_views.h"
#include "switch/console/main_commands.h"
#include "switch/console/main_menu.h"
#include "switch/console/prompts.h"
#include "switch/console/ranges.h"
#include "switch/console/tables.h"
#include "switch/engine/existing_vlans.h"
#include "switch/engine/tdm_qos.h"
#include "switch/engine/vlan_modes.h"
#include "switch/engine/vlan_properties.h"

#include <string_view>

namespace
{

constexpr int32_t FIRST_VLAN = 1;
constexpr int32_t LAST_VLAN = SW_VLANS - 1;

void print_config(SW_Menu_Visit &visit)
{
    Print_Vtu_Tab(visit.control);
    Print_Vlan_Tab(visit.control);
    SW_Print_Vlan_Properties(visit.control);
}

void print_status(SW_Menu_Visit &visit)
{
    Dev_Vtu_Tab(visit.control);
    Dev_Vlan_Tab(visit.control);
    Dev_Vlan_Properties(visit.control);
}

void print_properties(SW_Menu_Visit &visit)
{
    SW_Print_Vlan_Properties(visit.control);
}

void remove_all(SW_Menu_Visit &visit)
{
    SW_Remove_All_Vlans(visit.control);
}

bool ask_vlans(std::vector<int32_t> &vids)
{
    return Ask_Range_List("VLAN Range", &SW_Ranges.vlanIds, vids, FIRST_VLAN, LAST_VLAN);
}

void set_existing(SW_Menu_Visit &visit)
{
    std::vector<int32_t> vids;
    const bool parsed = ask_vlans(vids);
    if (SW_Report_Vlans(SW_Ranges.vlanIds, parsed)) {
        SW_Set_Existing_Vlans(visit.control, vids, true);
    }
    SW_Apply_Vlan_Port_Modes(visit.control, true);
}

void remove_existing(SW_Menu_Visit &visit)
{
    SetRangeText(&SW_Ranges.vlanIds, "1");
    std::vector<int32_t> vids;
    const bool parsed = ask_vlans(vids);
    if (SW_Report_Vlans(SW_Ranges.vlanIds, parsed)) {
        SW_Remove_Existing_Vlans(visit.control, vids);
    }
}

bool ask_ports(std::vector<int32_t> &ports)
{
    return Ask_Int_Range("Ports Range", &SW_Ranges.ports, ports, 0, SW_PORTS - 1);
}

/* The port whose settings are the defaults of the questions; of a range without ports the CPU's. */
int32_t first_of(const std::vector<int32_t> &ports)
{
    return ports.empty() ? 0 : ports.front();
}

void set_access_mode(SW_Menu_Visit &visit)
{
    std::vector<int32_t> ports;
    if (!ask_ports(ports)) {
        return;
    }
    uint16_t vid = visit.control->running->ports[first_of(ports)].vid;
    Ask_Number("Port VID", &vid);
    SW_Set_Access_Mode(visit.control, ports, vid);
}

void set_trunk_mode(SW_Menu_Visit &visit)
{
    std::vector<int32_t> ports;
    if (!ask_ports(ports)) {
        return;
    }
    const SW_Config *config = visit.control->running;
    const int32_t first = first_of(ports);
    uint16_t vid = config->ports[first].vid;
    Ask_Number("Port VID", &vid);
    if (!SW_Vid_In_Range(vid)) {
        return;
    }
    uint32_t tagAll = config->ports[first].discardTagged; /* that field is meant */
    Ask_Yes_No("Tag All", &tagAll);
    SetRangeText(&SW_Ranges.vlanIds, config->vlanPortList[first]);
    std::vector<int32_t> vids;
    const bool parsed = ask_vlans(vids);
    if (SW_Report_Allowed_Vlans(SW_Ranges.vlanIds, parsed)) {
        SW_Set_Trunk_Mode(visit.control, ports, vid, tagAll != 0, {SW_Ranges.vlanIds, vids});
    }
}

void set_default_mode(SW_Menu_Visit &visit)
{
    std::vector<int32_t> ports;
    if (ask_ports(ports)) {
        SW_Set_Default_Mode(visit.control, ports);
    }
}

void set_tdm_qos(SW_Menu_Visit &visit)
{
    uint16_t prio = visit.control->running->ports[0].portPrio;
    Ask_Number("TDM prio(0-7)", &prio);
    SW_Set_Tdm_Qos(visit.control, prio);
}

/* The properties follow a "no" as well: meant. */
void set_default_tdm_qos(SW_Menu_Visit &visit)
{
    if (SW_Confirmed("Set Default TDM QOS Mode?")) {
        SW_Set_Default_Tdm_Qos(visit.control);
    } else {
        SW_Print_Vlan_Properties(visit.control);
    }
}

using enum SW_Letters;
using enum SW_After;

/* "GFG" is meant, and so is the missing key 2. */
// clang-format off
constexpr SW_Menu_Key KEYS[] = {
    {'1', AS_WRITTEN, NO_REPRINT, "1. VTU Entries Config Print *CFG*", nullptr, print_config},
    {'3', AS_WRITTEN, NO_REPRINT, "3. Remove all VTU entries *CFG*", nullptr, remove_all},
    {'p', BOTH_CASES, NO_REPRINT, "p. VTU Entries Status Print =dev=", nullptr, print_status},
    {'z', AS_WRITTEN, NO_REPRINT, "z. Set existing VLANs range *CFG*", nullptr, set_existing},
    {'x', AS_WRITTEN, NO_REPRINT, "x. Remove existing VLANs range *CFG*", nullptr, remove_existing},
    {'c', AS_WRITTEN, NO_REPRINT, "c. Set Access Mode to Port range *GFG*", nullptr, set_access_mode},
    {'v', AS_WRITTEN, NO_REPRINT, "v. Set Trunk Mode to Port range *GFG*", nullptr, set_trunk_mode},
    {'b', AS_WRITTEN, NO_REPRINT, "b. Set Default Mode to Port range *GFG*", nullptr, set_default_mode},
    {'n', AS_WRITTEN, NO_REPRINT, "n. Set TDM QOS Mode *GFG*", nullptr, set_tdm_qos},
    {'m', AS_WRITTEN, NO_REPRINT, "m. Set Default TDM QOS Mode *GFG*", nullptr, set_default_tdm_qos},
    {'g', AS_WRITTEN, NO_REPRINT, "g. Get VLANs Properties *CFG*", nullptr, print_properties},
    SW_APPLY_KEY,
    SW_SAVE_KEY,
    SW_LOAD_KEY,
    SW_FACTORY_KEY,
    SW_REINIT_KEY,
};
// clang-format on

static_assert(SW_Keys_Are_Distinct(KEYS));
constexpr SW_Menu MENU = {SW_Print_Main_Heading, KEYS, "0. Back\n"};

} // namespace

void Vlan_Main_Menu(SW_Control *context, const char *startup_path, uint32_t *force_exit,
                    bool load_startup)
{
    SW_Menu_Visit visit = {context, force_exit, startup_path, {}};
    SW_Run_Main_Menu(MENU, visit, load_startup);
}
