#include "switch/config/model.h"

#include "switch/config/keywords.h"

#include <cstring>

namespace
{

constexpr int FACTORY_VID = 1;
constexpr const char *FACTORY_VLAN_LIST = "1";
constexpr int DSCPS_PER_CLASS = 16;

constexpr SW_Port_Type FACTORY_PORT_TYPES[SW_PORTS] = {
    SW_Port_Type_CPU, SW_Port_Type_COPPER, SW_Port_Type_COPPER, SW_Port_Type_SFP, SW_Port_Type_SFP};

/* The four-queue mapping of IEEE 802.1D, user priority to traffic class. */
constexpr uint8_t FACTORY_USER_PRIO_CLASSES[SW_USER_PRIOS] = {1, 0, 0, 1, 2, 2, 3, 3};

void set_port_defaults(SW_Config *config, int port)
{
    SW_Port_Config *settings = &config->ports[port];
    settings->portType = FACTORY_PORT_TYPES[port];
    settings->vid = FACTORY_VID;
    settings->countIfg = 1;
    settings->countPre = 1;
    settings->prioMapRule = 1;
    settings->ipPrio = 1;
    settings->userPrio = 1;
    config->vlanPortType[port] = SW_Vlan_Port_Type_DEFAULT;
    SetRangeText(&config->vlanPortList[port], FACTORY_VLAN_LIST);
}

bool is_port(int port)
{
    return port >= 0 && port < SW_PORTS;
}

template <class Area>
uint8_t differs(const Area &a, const Area &b)
{
    static_assert(std::has_unique_object_representations_v<Area>);
    return memcmp(&a, &b, sizeof(Area)) != 0;
}

} // namespace

void ClearSwitchConfig(SW_Config *config)
{
    memset(config, 0, sizeof *config);
}

void SetSwitchConfigDefaults(SW_Config *config)
{
    ClearSwitchConfig(config);
    config->maxFrameSize = SW_Max_Frame_Size_1632;
    for (int port = 0; port < SW_PORTS; port++) {
        set_port_defaults(config, port);
    }
    memcpy(config->cosUserPrio, FACTORY_USER_PRIO_CLASSES, sizeof config->cosUserPrio);
    for (int dscp = 0; dscp < SW_DSCPS; dscp++) {
        config->cosDscp[dscp] = static_cast<uint8_t>(dscp / DSCPS_PER_CLASS);
    }
}

void ClearVlanTable(SW_Config *config)
{
    memset(config->vlans, 0, sizeof config->vlans);
    config->vlanEntryCount = 0;
}

bool CompareSwitchConfig(SW_Config_Changes *changes, const SW_Config *a, const SW_Config *b)
{
    if (a->maxFrameSize != b->maxFrameSize) {
        changes->maxFrameSize = 1;
    }
    for (int port = 0; port < SW_PORTS; port++) {
        if (differs(a->ports[port], b->ports[port])) {
            changes->anyPort = changes->port[port] = 1;
        }
        /* Meant: the VLAN port mode counts as changed without a look at it. */
        changes->anyVlanPortMode = changes->vlanPortMode[port] = 1;
    }
    changes->vlanTable |= differs(a->vlans, b->vlans);
    changes->cosUserPrio |= differs(a->cosUserPrio, b->cosUserPrio);
    changes->cosDscp |= differs(a->cosDscp, b->cosDscp);
    return true;
}

bool PortChanged(const SW_Config_Changes *changes, int port)
{
    return is_port(port) && changes->port[port] != 0;
}

bool VlanPortModeChanged(const SW_Config_Changes *changes, int port)
{
    return is_port(port) && changes->vlanPortMode[port] != 0;
}

bool SetRangeText(char (*field)[SW_RANGE_TEXT_SIZE], std::string_view text)
{
    if (text.size() >= sizeof *field) {
        return false;
    }
    if (!text.empty()) {
        memmove(*field, text.data(), text.size());
    }
    memset(*field + text.size(), 0, sizeof *field - text.size());
    return true;
}
