#include "switch/console/main_menu.h"

#include "switch/config/keywords.h"
#include "switch/console/device_views.h"
#include "switch/console/main_commands.h"
#include "switch/console/prompts.h"
#include "switch/console/ranges.h"
#include "switch/console/setting_menus.h"
#include "switch/console/tables.h"
#include "switch/range/range_lists.h"

#include <cstdio>

namespace
{

void print_max_frame_size(const SW_Menu_Visit &visit)
{
    std::printf("%s) *CFG*", MaxFrameSizeDisplayText(visit.control->running->maxFrameSize));
}

void set_max_frame_size(SW_Menu_Visit &visit)
{
    Ask_Max_Frame_Size("Max Frame Size", &visit.control->running->maxFrameSize);
}

void print_ports_status(SW_Menu_Visit &visit)
{
    Print_Chip_Ports_Status(visit.control);
}

void print_vlan_tab(SW_Menu_Visit &visit)
{
    /* The ports of the range text, silently, with a bound of its own: meant, though an answer
     * replaces them and nothing shows without one. */
    std::vector<int32_t> ports = {0};
    int32_t count = 1;
    Int_Range_To_Int_List_Silent(SW_Ranges.ports, ports, count, 0, SW_PORTS);
    if (!Ask_Int_Range("Ports Range", &SW_Ranges.ports, ports, 0, SW_PORTS - 1)) {
        return;
    }
    Print_Vlan_Header();
    for (const int32_t port : ports) {
        Dev_Vlan_Row(visit.control, port);
    }
}

void print_vtu(SW_Menu_Visit &visit)
{
    Print_Chip_Vtu(visit.control);
}

void print_running_config(SW_Menu_Visit &visit)
{
    Print_Running_Config(visit.control);
}

void print_status(SW_Menu_Visit &visit)
{
    visit.control->read = 1;
    visit.control->print = 1;
    Print_Device_Status(visit.control);
}

template <void (*Menu)(SW_Control *, uint32_t *)>
void open_menu(SW_Menu_Visit &visit)
{
    Menu(visit.control, visit.forceExit);
}

using enum SW_Letters;
using enum SW_After;

// clang-format off
constexpr SW_Menu_Key KEYS[] = {
    {'1', AS_WRITTEN, NO_REPRINT, "1. Set Max Frame Size (", print_max_frame_size, set_max_frame_size},
    {'2', AS_WRITTEN, NO_REPRINT, "2. Get Ports Status =dev=", nullptr, print_ports_status},
    {'3', AS_WRITTEN, REPRINT, "3. Set Ports", nullptr, open_menu<Ports_Setting_Menu>},
    {'4', AS_WRITTEN, NO_REPRINT, "4. Get VLAN Tab =dev=", nullptr, print_vlan_tab},
    {'5', AS_WRITTEN, REPRINT, "5. Set VLAN Tab", nullptr, open_menu<Vlan_Setting_Menu>},
    {'6', AS_WRITTEN, NO_REPRINT, "6. Get VTU Entries =dev=", nullptr, print_vtu},
    {'7', AS_WRITTEN, REPRINT, "7. Set VTU Entries", nullptr, open_menu<Vtu_Setting_Menu>},
    {'8', AS_WRITTEN, REPRINT, "8. Get/Set QOS Tab", nullptr, open_menu<Qos_Setting_Menu>},
    SW_APPLY_KEY,
    {'c', BOTH_CASES, NO_REPRINT, "c. Switch: Print Running Config", nullptr, print_running_config},
    {'p', BOTH_CASES, NO_REPRINT, "p. Switch: Print Status", nullptr, print_status},
    SW_SAVE_KEY,
    SW_LOAD_KEY,
    SW_FACTORY_KEY,
    SW_REINIT_KEY,
    {'\n', AS_WRITTEN, REPRINT, "<Enter>. -", nullptr, nullptr},
};
// clang-format on

static_assert(SW_Keys_Are_Distinct(KEYS));
constexpr SW_Menu MENU = {SW_Print_Main_Heading, KEYS, "0. Exit\n00. Force Exit\n\n"};

} // namespace

void Main_Menu(SW_Control *context, const char *startup_path, uint32_t *force_exit,
               bool load_startup)
{
    SW_Menu_Visit visit = {context, force_exit, startup_path, {}};
    SW_Run_Main_Menu(MENU, visit, load_startup);
}
