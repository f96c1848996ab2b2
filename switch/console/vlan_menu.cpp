#include "switch/console/device_views.h"
#include "switch/console/prompts.h"
#include "switch/console/setting.h"
#include "switch/console/setting_menus.h"
#include "switch/console/tables.h"

#include "switch/config/keywords.h"

#include <cstdio>

namespace
{

bool refused_vid(uint32_t vid)
{
    if (vid < SW_VLANS) {
        return false;
    }
    std::printf("VID %d out of range\n", static_cast<int>(vid));
    return true;
}

using Port = SW_Port_Config;

// clang-format off
constexpr SW_Setting PORT_VID =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::vid>("Port VID", SW_Ask_Number)}, refused_vid};
constexpr SW_Setting FORCE_DEFAULT =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::vidForceDefault>("Force Default VID", Ask_Yes_No)}, nullptr};
constexpr SW_Setting DOT1Q_MODE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::dot1qMode>("Vlan Dot1q Mode", Ask_Dot1q_Mode)}, nullptr};
constexpr SW_Setting DISCARD_TAGGED =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::discardTagged>("Discard Tagged", Ask_Yes_No)}, nullptr};
constexpr SW_Setting DISCARD_UNTAGGED =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::discardUntagged>("Discard Untagged", Ask_Yes_No)}, nullptr};
constexpr SW_Setting EGRESS_MODE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::egressMode>("Egress Mode", Ask_Egress_Mode)}, nullptr};
constexpr SW_Setting USE_CORE_TAG =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::useCoreTag>("Use Core Tag", Ask_Yes_No)}, nullptr};
constexpr SW_Setting EGRESS_RATE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::egressRate>("Egress Rate", Ask_Egress_Rate)}, nullptr};
constexpr SW_Setting BYTES_COUNT = {&SW_ANY_PORTS, {
    SW_Port_Value<&Port::limitMgmt>("BytesCount. Limit MGMT", Ask_Yes_No),
    SW_Port_Value<&Port::countIfg>("BytesCount. Count IFG", Ask_Yes_No),
    SW_Port_Value<&Port::countPre>("BytesCount. Count Pre", Ask_Yes_No)}, nullptr};
// clang-format on

void print_heading(const SW_Menu_Visit & /*visit*/)
{
    std::printf("\nVLAN Tab Setting Menu:\n (Ports range: %s)\n", SW_Ranges.ports);
}

constexpr const char *ITEMS_END = " ) *CFG*";

/* What the ports of the range have now, each as " NAME:TEXT". */
template <auto Field, const char *(*Text)(uint32_t)>
void print_texts(const SW_Menu_Visit &visit)
{
    for (const int32_t port : visit.ports) {
        const uint32_t value = visit.control->running->ports[port].*Field;
        std::printf(" %s:%s", SW_Port_Names[port], Text(value));
    }
    std::fputs(ITEMS_END, stdout);
}

void print_vids(const SW_Menu_Visit &visit)
{
    for (const int32_t port : visit.ports) {
        std::printf(" %s:%d", SW_Port_Names[port], visit.control->running->ports[port].vid);
    }
    std::fputs(ITEMS_END, stdout);
}

/* Meant: any number but 0 is "True" here, only 1 in the other lines. */
void print_bytes_counts(const SW_Menu_Visit &visit)
{
    for (const int32_t index : visit.ports) {
        const Port &port = visit.control->running->ports[index];
        std::printf(" %s:Limit MGMT(%s),Count IFG(%s),Count Pre(%s)", SW_Port_Names[index],
                    TrueFalseText(port.limitMgmt != 0), TrueFalseText(port.countIfg != 0),
                    TrueFalseText(port.countPre != 0));
    }
    std::fputs(ITEMS_END, stdout);
}

void print_config(SW_Menu_Visit &visit)
{
    Print_Vlan_Rows(visit.control->running);
}

void print_status(SW_Menu_Visit &visit)
{
    Dev_Vlan_Rows(visit.control);
}

using enum SW_Letters;
using enum SW_After;

// clang-format off
constexpr SW_Menu_Key KEYS[] = {
    {'1', AS_WRITTEN, REPRINT, "1. VLAN Tab Config Print *CFG*", nullptr, print_config},
    {'2', AS_WRITTEN, REPRINT, "2. Port VID (", print_vids, SW_Act_Set<PORT_VID>},
    {'3', AS_WRITTEN, REPRINT, "3. Force Default VID (", print_texts<&Port::vidForceDefault, SW_Flag_Cell_Text>, SW_Act_Set<FORCE_DEFAULT>},
    {'4', AS_WRITTEN, REPRINT, "4. Vlan Dot1q Mode (", print_texts<&Port::dot1qMode, Dot1qModeDisplayText>, SW_Act_Set<DOT1Q_MODE>},
    {'5', AS_WRITTEN, REPRINT, "5. Discard Tagged (", print_texts<&Port::discardTagged, SW_Flag_Cell_Text>, SW_Act_Set<DISCARD_TAGGED>},
    {'6', AS_WRITTEN, REPRINT, "6. Discard Untagged (", print_texts<&Port::discardUntagged, SW_Flag_Cell_Text>, SW_Act_Set<DISCARD_UNTAGGED>},
    {'7', AS_WRITTEN, REPRINT, "7. Egress Mode (", print_texts<&Port::egressMode, EgressModeDisplayText>, SW_Act_Set<EGRESS_MODE>},
    {'8', AS_WRITTEN, REPRINT, "8. Use Core Tag (", print_texts<&Port::useCoreTag, SW_Flag_Cell_Text>, SW_Act_Set<USE_CORE_TAG>},
    {'9', AS_WRITTEN, REPRINT, "9. Egress Rate (", print_texts<&Port::egressRate, RateDisplayText>, SW_Act_Set<EGRESS_RATE>},
    {'b', BOTH_CASES, REPRINT, "b. Bytes Count (", print_bytes_counts, SW_Act_Set<BYTES_COUNT>},
    SW_APPLY_KEY,
    {'p', BOTH_CASES, REPRINT, "p. VLAN Tab Status Print =dev=", nullptr, print_status},
    {'\n', AS_WRITTEN, NO_REPRINT, nullptr, nullptr, nullptr},
};
// clang-format on

static_assert(SW_Keys_Are_Distinct(KEYS));
constexpr SW_Menu MENU = {print_heading, KEYS, "0. Back\n"};

} // namespace

void Vlan_Setting_Menu(SW_Control *control, uint32_t *forceExit)
{
    SW_Run_Setting_Menu(MENU, control, forceExit);
}
