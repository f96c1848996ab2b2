#include "switch/engine/tdm_qos.h"

#include "switch/engine/vlan_properties.h"

#include <cstdio>

namespace
{

constexpr int CPU_PORT = 0;
constexpr uint16_t MOST_PRIO = 7;

/* Both mapping flags are the same in either setting. */
void set_all_ports(SW_Config *config, uint32_t mapping)
{
    for (SW_Port_Config &settings : config->ports) {
        settings.prioMapRule = mapping;
        settings.ipPrio = mapping;
        settings.userPrio = 1;
        settings.portPrio = 0;
    }
}

} // namespace

bool SW_Set_Tdm_Qos(SW_Control *control, uint16_t prio)
{
    if (prio > MOST_PRIO) {
        printf("TDM prio %d out of range\n", prio);
        return false;
    }
    set_all_ports(control->running, 0);
    control->running->ports[CPU_PORT].portPrio = static_cast<uint8_t>(prio);
    SW_Print_Vlan_Properties(control);
    return true;
}

void SW_Set_Default_Tdm_Qos(SW_Control *control)
{
    set_all_ports(control->running, 1);
    SW_Print_Vlan_Properties(control);
}
