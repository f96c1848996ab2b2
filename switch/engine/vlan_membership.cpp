#include "switch/engine/vlan_membership.h"

#include <bitset>
#include <cstdio>

namespace
{

constexpr size_t ALL_VLANS = SW_VLANS - 1; /* 1 to 4095 */

} // namespace

void SetMemberTag(SW_Config *config, int port, int32_t vid, SW_Member_Tag tag)
{
    if (HasVlanEntry(vid)) {
        config->vlans[vid].vtu.memberTagP[SW_Chip_Ports[port]] = static_cast<uint8_t>(tag);
    }
}

void LeaveAllVlans(SW_Config *config, int port)
{
    for (int32_t vid = 0; vid < SW_VLANS; vid++) {
        SetMemberTag(config, port, vid, SW_Member_Tag_NONE);
    }
}

void SW_Set_Trunk_Membership(SW_Control *control, int port, std::span<const int32_t> vids,
                             bool print)
{
    if (!IsPort(port)) {
        return;
    }
    SW_Config *config = control->running;
    LeaveAllVlans(config, port);
    bool any = false;
    for (const int32_t vid : vids) {
        if (!HasVlanEntry(vid) || config->vlans[vid].defined == 0) {
            continue;
        }
        SetMemberTag(config, port, vid, SW_Member_Tag_TAGGED);
        any = true;
        if (print) {
            printf(" %d", vid);
        }
    }
    if (print) {
        puts(any ? "" : "<none>");
    }
}

bool SW_Is_All_Vlans(std::span<const int32_t> vids)
{
    if (vids.size() != ALL_VLANS) {
        return false;
    }
    std::bitset<SW_VLANS> named;
    for (const int32_t vid : vids) {
        if (HasVlanEntry(vid)) {
            named.set(static_cast<size_t>(vid));
        }
    }
    return named.count() == ALL_VLANS && !named.test(0);
}
