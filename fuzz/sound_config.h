#pragma once

#include "fuzz/target.h"
#include "switch/config/model.h"

#include <cstring>

/*
 * What holds for every record that began cleared or with the factory defaults, whatever a startup
 * file or an operator did to it since: enumerations and flags are within their lists, paddings are
 * zero, texts end and VLAN 0 does not exist.
 */

/* Two things that only an operator can do, both meant: a negative number passes the prompts of
 * enumerations, and a VLAN that is named again is counted again. */
enum class Origin { STARTUP_FILE, OPERATOR };

inline bool is_listed(uint32_t value, uint32_t last, Origin origin)
{
    return value <= last || (origin == Origin::OPERATOR && static_cast<int32_t>(value) < 0);
}

inline void require_sound_port(const SW_Port_Config &port, Origin origin)
{
    REQUIRE(port.portType <= 3);
    REQUIRE(port.vidPad == 0);
    REQUIRE(is_listed(port.autoMode, 11, origin));
    REQUIRE(is_listed(port.dot1qMode, 3, origin));
    REQUIRE(is_listed(port.egressMode, 3, origin));
    REQUIRE(is_listed(port.egressRate, 12, origin));
    REQUIRE(is_listed(port.pri0Rate, 12, origin));
    for (const uint32_t flag :
         {port.vidForceDefault, port.discardTagged, port.discardUntagged, port.useCoreTag,
          port.limitMgmt, port.countIfg, port.countPre, port.pri1Rate, port.pri2Rate, port.pri3Rate,
          port.prioMapRule, port.ipPrio, port.userPrio}) {
        REQUIRE(flag <= 1);
    }
    for (const uint8_t pad : port.portPrioPad) {
        REQUIRE(pad == 0);
    }
}

inline void require_sound_config(const SW_Config &config, Origin origin)
{
    REQUIRE(config.maxFrameSize <= 1);
    for (const SW_Port_Config &port : config.ports) {
        require_sound_port(port, origin);
    }
    uint32_t defined = 0;
    for (const SW_Vlan_Entry &vlan : config.vlans) {
        REQUIRE(vlan.defined <= 1 && vlan.pad[0] == 0 && vlan.pad[1] == 0 && vlan.pad[2] == 0);
        REQUIRE(vlan.vtu.vidPriOverride <= 1 && vlan.vtu.vidPolicy <= 1);
        defined += vlan.defined;
    }
    REQUIRE(config.vlans[0].defined == 0);
    REQUIRE(origin == Origin::OPERATOR || config.vlanEntryCount == defined);
    for (int port = 0; port < SW_PORTS; port++) {
        REQUIRE(config.vlanPortType[port] <= 4);
        REQUIRE(memchr(config.vlanPortList[port], '\0', SW_RANGE_TEXT_SIZE) != nullptr);
        REQUIRE(config.accessWords[port] == 0);
    }
}
