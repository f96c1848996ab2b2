#include "switch/console/device_views.h"
#include "switch/console/prompts.h"
#include "switch/console/setting.h"
#include "switch/console/setting_menus.h"
#include "switch/console/tables.h"

#include <cstdio>

namespace
{

constexpr uint32_t TRAFFIC_CLASSES = 4;
constexpr uint32_t PORT_PRIOS = 8;

/* Meant: the message does not end its line; the menu text that follows does. */
template <uint32_t Limit>
bool refused_from(uint32_t value)
{
    if (value < Limit) {
        return false;
    }
    std::fputs("Value out of range!", stdout);
    return true;
}

constexpr SW_Setting_Range USER_PRIOS = {
    "User priority Range", &SW_Range_Texts::userPrios, 0, SW_USER_PRIOS - 1, false,
    SW_Refuse_Range};
/* "DCSP" is meant, here and in the menu line. */
constexpr SW_Setting_Range DSCPS = {"DCSP Range", &SW_Range_Texts::dscps, 0, SW_DSCPS - 1,
                                    false,        SW_Refuse_Range};

using Port = SW_Port_Config;

// clang-format off
constexpr SW_Setting PRI0_RATE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::pri0Rate>("Pri0Rate", Ask_Egress_Rate)}, nullptr};
constexpr SW_Setting PRI1_RATE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::pri1Rate>("Pri1Rate", Ask_Yes_No)}, nullptr};
constexpr SW_Setting PRI2_RATE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::pri2Rate>("Pri2Rate", Ask_Yes_No)}, nullptr};
constexpr SW_Setting PRI3_RATE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::pri3Rate>("Pri3Rate", Ask_Yes_No)}, nullptr};
constexpr SW_Setting PRIO_MAP_RULE =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::prioMapRule>("PrioMapRule", Ask_Yes_No)}, nullptr};
constexpr SW_Setting IP_PRIO =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::ipPrio>("IP prio", Ask_Yes_No)}, nullptr};
constexpr SW_Setting USER_PRIO =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::userPrio>("User prio", Ask_Yes_No)}, nullptr};
constexpr SW_Setting PORT_PRIO =
    {&SW_ANY_PORTS, {SW_Port_Value<&Port::portPrio>("Port prio", SW_Ask_Byte)}, refused_from<PORT_PRIOS>};
constexpr SW_Setting USER_CLASS =
    {&USER_PRIOS, {SW_Class_Value<&SW_Config::cosUserPrio>("Traff_class")}, refused_from<TRAFFIC_CLASSES>};
constexpr SW_Setting DSCP_CLASS =
    {&DSCPS, {SW_Class_Value<&SW_Config::cosDscp>("Traff_class")}, refused_from<TRAFFIC_CLASSES>};
// clang-format on

void print_heading(const SW_Menu_Visit & /*visit*/)
{
    std::fputs("\nQOS Tab Setting Menu:\n", stdout);
}

void print_qos_config(SW_Menu_Visit &visit)
{
    Print_Qos_Rows(visit.control->running);
}

void print_cos_config(SW_Menu_Visit &visit)
{
    Print_Cos_Rows(visit.control->running);
}

void print_status(SW_Menu_Visit &visit)
{
    Dev_Qos_Rows(visit.control);
    Dev_Cos_Tab(visit.control);
}

using enum SW_Letters;
using enum SW_After;

// clang-format off
constexpr SW_Menu_Key KEYS[] = {
    {'1', AS_WRITTEN, REPRINT, "1. QOS Tab Config Print *CFG*", nullptr, print_qos_config},
    {'2', AS_WRITTEN, REPRINT, "2. COS Tab Config Print *CFG*", nullptr, print_cos_config},
    {'3', AS_WRITTEN, REPRINT, "3. Set QOS Pri0Rate *CFG*", nullptr, SW_Act_Set<PRI0_RATE>},
    {'4', AS_WRITTEN, REPRINT, "4. Set QOS Pri1Rate *CFG*", nullptr, SW_Act_Set<PRI1_RATE>},
    {'5', AS_WRITTEN, REPRINT, "5. Set QOS Pri2Rate *CFG*", nullptr, SW_Act_Set<PRI2_RATE>},
    {'6', AS_WRITTEN, REPRINT, "6. Set QOS Pri3Rate *CFG*", nullptr, SW_Act_Set<PRI3_RATE>},
    {'7', AS_WRITTEN, REPRINT, "7. Set QOS PrioMapRule *CFG*", nullptr, SW_Act_Set<PRIO_MAP_RULE>},
    {'8', AS_WRITTEN, REPRINT, "8. Set QOS IP prio *CFG*", nullptr, SW_Act_Set<IP_PRIO>},
    {'9', AS_WRITTEN, REPRINT, "9. Set QOS User prio *CFG*", nullptr, SW_Act_Set<USER_PRIO>},
    {'b', BOTH_CASES, REPRINT, "b. Set QOS Port prio *CFG*", nullptr, SW_Act_Set<PORT_PRIO>},
    {'c', BOTH_CASES, REPRINT, "c. Set COS User priority Traff class *CFG*", nullptr, SW_Act_Set<USER_CLASS>},
    {'d', BOTH_CASES, REPRINT, "d. Set COS DCSP Traff class *CFG*", nullptr, SW_Act_Set<DSCP_CLASS>},
    SW_APPLY_KEY,
    {'p', BOTH_CASES, REPRINT, "p. QOS/COS Tab Status Print =dev=", nullptr, print_status},
    {'\n', AS_WRITTEN, NO_REPRINT, nullptr, nullptr, nullptr},
};
// clang-format on

static_assert(SW_Keys_Are_Distinct(KEYS));
/* Meant: this menu has no line for "0". */
constexpr SW_Menu MENU = {print_heading, KEYS, ""};

} // namespace

void Qos_Setting_Menu(SW_Control *control, uint32_t *forceExit)
{
    SW_Run_Setting_Menu(MENU, control, forceExit);
}
