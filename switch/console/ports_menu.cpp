#include "switch/console/device_views.h"
#include "switch/console/prompts.h"
#include "switch/console/setting.h"
#include "switch/console/setting_menus.h"
#include "switch/console/tables.h"

#include "switch/config/keywords.h"

#include <cstdio>

namespace
{

void refuse_range(const char *text)
{
    std::printf("ERROR: Range(\"%s\") - Failed\n", text);
}

/* LAN and WAN: the only ports with a PHY to negotiate. */
constexpr SW_Setting_Range COPPER_PORTS = {"Ports Range", &SW_Range_Texts::ports, 1, 2, true,
                                           refuse_range};

constexpr SW_Setting AUTO_MODE = {
    &COPPER_PORTS,
    {SW_Port_Value<&SW_Port_Config::autoMode>("Port Auto Mode", Ask_Auto_Mode)},
    nullptr};

void print_heading(const SW_Menu_Visit & /*visit*/)
{
    std::printf("\nPorts Setting Menu:\n (Ports range: %s)\n", SW_Ranges.ports);
}

/* Meant: beside the n-th port of the range stands the mode of port n, counted from 0. */
void print_auto_modes(const SW_Menu_Visit &visit)
{
    int place = 0;
    for (const int32_t port : visit.ports) {
        const uint32_t mode = visit.control->running->ports[place++].autoMode;
        std::printf(" %s:%s", SW_Port_Names[port], AutoModeDisplayText(mode));
    }
    std::fputs(" )", stdout);
}

void print_config(SW_Menu_Visit &visit)
{
    Print_Ports_Config_Rows(visit.control->running);
}

void print_status(SW_Menu_Visit &visit)
{
    Print_Chip_Ports_Status(visit.control);
}

using enum SW_Letters;
using enum SW_After;

/* Meant: this menu is printed again after Enter, not after its keys; the other setting menus do it
 * the other way round. */
// clang-format off
constexpr SW_Menu_Key KEYS[] = {
    {'1', AS_WRITTEN, NO_REPRINT, "1. Get port Auto Mode *CFG*", nullptr, print_config},
    {'2', AS_WRITTEN, NO_REPRINT, "2. Set port Auto Mode *CFG* (", print_auto_modes, SW_Act_Set<AUTO_MODE>},
    SW_APPLY_KEY,
    {'p', BOTH_CASES, NO_REPRINT, "p. Ports Status Print =dev=", nullptr, print_status},
};
// clang-format on

static_assert(SW_Keys_Are_Distinct(KEYS));
constexpr SW_Menu MENU = {print_heading, KEYS, "0. Back\n"};

} // namespace

void Ports_Setting_Menu(SW_Control *control, uint32_t *forceExit)
{
    SW_Run_Setting_Menu(MENU, control, forceExit);
}
