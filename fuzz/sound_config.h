#pragma once

#include "fuzz/target.h"
#include "switch/config/model.h"

#include <cstring>

/*
 * What holds for every record that began cleared or with the factory defaults, whatever a startup
 * file or an operator did to it since: enumerations and flags are within their lists, paddings are
 * zero, texts end, VLAN 0 does not exist and the others are counted.
 */

inline void require_sound_port(const SW_Port_Config &port)
{
    REQUIRE(port.portType <= 3);
    REQUIRE(port.autoMode <= 11);
    REQUIRE(port.vidPad == 0);
    REQUIRE(port.dot1qMode <= 3);
    REQUIRE(port.egressMode <= 3);
    REQUIRE(port.egressRate <= 12);
    REQUIRE(port.pri0Rate <= 12);
    for (const uint32_t flag :
         {port.vidForceDefault, port.discardTagged, port.discardUntagged, port.useCoreTag,
          port.limitMgmt, port.countIfg, port.countPre, port.pri1Rate, port.pri2Rate, port.pri3Rate,
          port.prioMapRule, port.ipPrio, port.userPrio})
        REQUIRE(flag <= 1);
    for (const uint8_t pad : port.portPrioPad)
        REQUIRE(pad == 0);
}

inline void require_sound_config(const SW_Config &config)
{
    REQUIRE(config.maxFrameSize <= 1);
    for (const SW_Port_Config &port : config.ports)
        require_sound_port(port);
    uint32_t defined = 0;
    for (const SW_Vlan_Entry &vlan : config.vlans) {
        REQUIRE(vlan.defined <= 1 && vlan.pad[0] == 0 && vlan.pad[1] == 0 && vlan.pad[2] == 0);
        REQUIRE(vlan.vtu.vidPriOverride <= 1 && vlan.vtu.vidPolicy <= 1);
        defined += vlan.defined;
    }
    REQUIRE(config.vlans[0].defined == 0);
    REQUIRE(config.vlanEntryCount == defined);
    for (int port = 0; port < SW_PORTS; port++) {
        REQUIRE(config.vlanPortType[port] <= 4);
        REQUIRE(memchr(config.vlanPortList[port], '\0', SW_RANGE_TEXT_SIZE) != nullptr);
        REQUIRE(config.accessWords[port] == 0);
    }
}
