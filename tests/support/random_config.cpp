#include "tests/support/random_config.h"

#include "switch/config/keywords.h"

#include <string>

namespace
{

/* A number from first to last, both included. */
uint32_t pick(std::mt19937 *generator, uint32_t first, uint32_t last)
{
    return std::uniform_int_distribution<uint32_t>(first, last)(*generator);
}

uint32_t pick_flag(std::mt19937 *generator)
{
    return pick(generator, 0, 1);
}

uint8_t pick_byte(std::mt19937 *generator)
{
    return static_cast<uint8_t>(pick(generator, 0, 255));
}

void set_random_port(SW_Port_Config *port, std::mt19937 *generator)
{
    port->portType = pick(generator, SW_Port_Type_CPU, SW_Port_Type_SFP);
    port->autoMode = pick(generator, 0, SW_AUTO_MODES - 1);
    port->vid = static_cast<uint16_t>(pick(generator, 0, 65535));
    port->dot1qMode = pick(generator, 0, SW_DOT1Q_MODES - 1);
    port->egressMode = pick(generator, 0, SW_EGRESS_MODES - 1);
    port->egressRate = pick(generator, 0, SW_RATES - 1);
    port->pri0Rate = pick(generator, 0, SW_RATES - 1);
    for (uint32_t *flag :
         {&port->vidForceDefault, &port->discardTagged, &port->discardUntagged, &port->useCoreTag,
          &port->limitMgmt, &port->countIfg, &port->countPre, &port->pri1Rate, &port->pri2Rate,
          &port->pri3Rate, &port->prioMapRule, &port->ipPrio, &port->userPrio}) {
        *flag = pick_flag(generator);
    }
    port->portPrio = pick_byte(generator);
}

void set_random_vlan(SW_Vlan_Entry *vlan, std::mt19937 *generator)
{
    vlan->vtu.dbNum = static_cast<uint16_t>(pick(generator, 0, 65535));
    vlan->vtu.vid = static_cast<uint16_t>(pick(generator, 0, 65535));
    vlan->vtu.vidPriOverride = pick_flag(generator);
    vlan->vtu.vidPolicy = pick_flag(generator);
    vlan->vtu.vidPriority = pick_byte(generator);
    vlan->vtu.sid = pick_byte(generator);
    for (int port = 0; port < VLAN_ENTRY_PORTS; port++) {
        vlan->vtu.memberTagP[port] = pick_byte(generator);
        vlan->vtu.portStateP[port] = pick_byte(generator);
    }
    vlan->defined = 1;
}

std::string pick_list(std::mt19937 *generator)
{
    static constexpr std::string_view CHARACTERS = "0123456789 \t[]=_azAZ";
    std::string list(pick(generator, 0, SW_RANGE_TEXT_SIZE - 1), '0');
    for (char &character : list) {
        character = CHARACTERS[pick(generator, 0, CHARACTERS.size() - 1)];
    }
    return list;
}

} // namespace

void SetRandomConfig(SW_Config *config, std::mt19937 *generator)
{
    ClearSwitchConfig(config);
    config->maxFrameSize = pick(generator, SW_Max_Frame_Size_1522, SW_Max_Frame_Size_1632);
    for (int port = 0; port < SW_PORTS; port++) {
        set_random_port(&config->ports[port], generator);
        config->vlanPortType[port] =
            pick(generator, SW_Vlan_Port_Type_NO, SW_Vlan_Port_Type_CUSTOM);
        SetRangeText(&config->vlanPortList[port], pick_list(generator));
    }
    for (uint32_t count = pick(generator, 0, 9); count > 0; count--) {
        set_random_vlan(&config->vlans[pick(generator, 1, SW_VLANS - 1)], generator);
    }
    for (const SW_Vlan_Entry &vlan : config->vlans) {
        config->vlanEntryCount += vlan.defined;
    }
    for (uint8_t &trafficClass : config->cosUserPrio) {
        trafficClass = pick_byte(generator);
    }
    for (uint8_t &trafficClass : config->cosDscp) {
        trafficClass = pick_byte(generator);
    }
}
