#include "switch/engine/vlan_modes.h"

#include "switch/config/keywords.h"
#include "switch/engine/vlan_membership.h"
#include "switch/engine/vlan_properties.h"
#include "switch/range/range_lists.h"

#include <cstdio>
#include <vector>

namespace
{

constexpr int32_t FIRST_VID = 1;
constexpr int32_t LAST_VID = SW_VLANS - 1;
constexpr uint16_t DEFAULT_VID = 1;

void make_default_port(SW_Config *config, int port)
{
    SW_Port_Config &settings = config->ports[port];
    LeaveAllVlans(config, port);
    settings.vid = DEFAULT_VID;
    settings.dot1qMode = SW_Dot1q_Mode_DISABLE;
    settings.discardTagged = 0;
    settings.egressMode = SW_Egress_Mode_UNMODIFY_EGRESS;
    SetRangeText(&config->vlanPortList[port], "");
}

void make_access_port(SW_Config *config, int port)
{
    SW_Port_Config &settings = config->ports[port];
    LeaveAllVlans(config, port);
    settings.dot1qMode = SW_Dot1q_Mode_SECURE;
    settings.discardTagged = 1;
    settings.egressMode = SW_Egress_Mode_UNMODIFY_EGRESS;
    SetMemberTag(config, port, settings.vid, SW_Member_Tag_UNTAGGED);
    char text[SW_RANGE_TEXT_SIZE];
    snprintf(text, sizeof text, "%d", settings.vid);
    SetRangeText(&config->vlanPortList[port], text);
}

/* The native VLAN leaves the port with a tag exactly when the port tags everything. */
void join_native_vlan(SW_Config *config, int port)
{
    const SW_Port_Config &settings = config->ports[port];
    const bool tagged = settings.egressMode == SW_Egress_Mode_TAGGED_EGRESS;
    SetMemberTag(config, port, settings.vid,
                 tagged ? SW_Member_Tag_TAGGED : SW_Member_Tag_UNTAGGED);
}

void renew_trunk_port(SW_Config *config, int port)
{
    std::vector<int32_t> vids;
    int32_t count = 0;
    if (!Int_Range_To_Int_List2(config->vlanPortList[port], nullptr, false, vids, count, FIRST_VID,
                                LAST_VID)) {
        return;
    }
    SW_Port_Config &settings = config->ports[port];
    LeaveAllVlans(config, port);
    settings.dot1qMode = SW_Dot1q_Mode_CHECK;
    /* Meant: here, other than in the trunk command, VLANs that do not exist get the port too. */
    for (const int32_t vid : vids) {
        SetMemberTag(config, port, vid, SW_Member_Tag_TAGGED);
    }
    settings.discardTagged = 0;
    if (settings.egressMode == SW_Egress_Mode_UNMODIFY_EGRESS ||
        settings.egressMode == SW_Egress_Mode_ADD_TAG) {
        settings.egressMode = SW_Egress_Mode_UNTAGGED_EGRESS;
    }
    join_native_vlan(config, port);
}

void make_trunk_port(SW_Config *config, int port, uint16_t vid, bool tagAll, std::string_view text)
{
    SW_Port_Config &settings = config->ports[port];
    settings.dot1qMode = SW_Dot1q_Mode_CHECK;
    config->vlanPortType[port] = SW_Vlan_Port_Type_TRUNK;
    settings.vid = vid;
    settings.discardTagged = 0;
    settings.egressMode = tagAll ? SW_Egress_Mode_TAGGED_EGRESS : SW_Egress_Mode_UNTAGGED_EGRESS;
    join_native_vlan(config, port);
    SetRangeText(&config->vlanPortList[port], text);
}

/* Edits the ports of a command, then shows what has become of them. */
template <class Edit>
void edit_ports(SW_Control *control, std::span<const int32_t> ports, const Edit &edit)
{
    for (const int32_t port : ports) {
        if (IsPort(port)) {
            edit(port);
        }
    }
    SW_Print_Vlan_Properties(control);
}

} // namespace

bool SW_Apply_Vlan_Port_Mode(SW_Control *control, int port, bool /*log*/)
{
    if (!IsPort(port)) {
        return true;
    }
    SW_Config *config = control->running;
    switch (config->vlanPortType[port]) {
    case SW_Vlan_Port_Type_DEFAULT:
        make_default_port(config, port);
        break;
    case SW_Vlan_Port_Type_ACCESS:
        make_access_port(config, port);
        break;
    case SW_Vlan_Port_Type_TRUNK:
        renew_trunk_port(config, port);
        break;
    default:
        break;
    }
    return true;
}

bool SW_Apply_Vlan_Port_Modes(SW_Control *control, bool log)
{
    bool ok = true;
    for (int port = 0; port < SW_PORTS; port++) {
        ok = SW_Apply_Vlan_Port_Mode(control, port, log) && ok;
    }
    return ok;
}

void SW_Set_Default_Mode(SW_Control *control, std::span<const int32_t> ports)
{
    SW_Config *config = control->running;
    edit_ports(control, ports, [&](int port) {
        make_default_port(config, port);
        config->vlanPortType[port] = SW_Vlan_Port_Type_DEFAULT;
    });
}

bool SW_Vid_In_Range(uint16_t vid)
{
    if (HasVlanEntry(vid)) {
        return true;
    }
    printf("VID %d out of range\n", vid);
    return false;
}

bool SW_Set_Access_Mode(SW_Control *control, std::span<const int32_t> ports, uint16_t vid)
{
    if (!SW_Vid_In_Range(vid)) {
        return false;
    }
    SW_Config *config = control->running;
    edit_ports(control, ports, [&](int port) {
        config->ports[port].vid = vid;
        make_access_port(config, port);
        config->vlanPortType[port] = SW_Vlan_Port_Type_ACCESS;
        config->accessWords[port] = 0;
    });
    return true;
}

bool SW_Report_Allowed_Vlans(const char *text, bool parsed)
{
    printf("Allowed VLANs: \"%s\" - %s\n", text, parsed ? "Ok" : "Failed");
    return parsed;
}

bool SW_Set_Trunk_Mode(SW_Control *control, std::span<const int32_t> ports, uint16_t vid,
                       bool tagAll, const SW_Allowed_Vlans &allowed)
{
    if (!SW_Vid_In_Range(vid)) {
        return false;
    }
    if (allowed.text.size() >= SW_RANGE_TEXT_SIZE) {
        return false;
    }
    const bool all = SW_Is_All_Vlans(allowed.vids);
    edit_ports(control, ports, [&](int port) {
        if (!all) {
            SW_Set_Trunk_Membership(control, port, allowed.vids, false);
        }
        make_trunk_port(control->running, port, vid, tagAll, allowed.text);
    });
    return true;
}
