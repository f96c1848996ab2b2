#include "switch/engine/tdm_qos.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/vlan_host.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace
{

/* VLANs 1 with no entry, ports in trunk mode without a list: lines that end in the QoS mark. */
void set_trunk_ports(Vlan_Host &host)
{
    host.set_factory();
    for (int port = 0; port < 5; port++) {
        host.running().ports[port].dot1qMode = 1;
        SetTags(host.running(), port, 1, 1, 2);
    }
}

TEST(TdmQos, MapsByTheTagAndGivesTheCpuPortItsPriority)
{
    for (const uint16_t prio : std::initializer_list<uint16_t>{0, 1, 2, 3, 4, 5, 6, 7}) {
        SCOPED_TRACE(prio);
        Vlan_Host host;
        const auto expected = host.copy_of_running();
        for (SW_Port_Config &settings : expected->ports) {
            settings.prioMapRule = 0;
            settings.ipPrio = 0;
            settings.userPrio = 1;
            settings.portPrio = 0;
        }
        expected->ports[0].portPrio = static_cast<uint8_t>(prio);
        Output_Capture capture;
        EXPECT_TRUE(SW_Set_Tdm_Qos(host.control(), prio));
        capture.finish();
        EXPECT_TRUE(SameConfig(host.running(), *expected));
        EXPECT_TRUE(host.only_running_was_edited());
    }
}

TEST(TdmQos, PrintsThePropertiesOnce)
{
    Vlan_Host host;
    set_trunk_ports(host);
    Output_Capture capture;
    EXPECT_TRUE(SW_Set_Tdm_Qos(host.control(), 7));
    EXPECT_EQ(capture.finish(), "\n"
                                "Existing VLANs:<none>\n"
                                "CPU : Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL)) QOS:7\n"
                                "LAN : Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "WAN : Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "SFP0: Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "SFP1: Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n");
}

TEST(TdmQos, RefusesAPriorityAboveSevenWithoutAChange)
{
    for (const uint16_t prio : std::initializer_list<uint16_t>{8, 9, 255, 256, 263, 65535}) {
        Vlan_Host host;
        const auto before = host.copy_of_running();
        Output_Capture capture;
        EXPECT_FALSE(SW_Set_Tdm_Qos(host.control(), prio));
        EXPECT_EQ(capture.finish(), "TDM prio " + std::to_string(prio) + " out of range\n");
        EXPECT_TRUE(SameConfig(host.running(), *before));
    }
}

TEST(DefaultTdmQos, MapsByEverythingWithoutAPriority)
{
    Vlan_Host host;
    const auto expected = host.copy_of_running();
    for (SW_Port_Config &settings : expected->ports) {
        settings.prioMapRule = 1;
        settings.ipPrio = 1;
        settings.userPrio = 1;
        settings.portPrio = 0;
    }
    Output_Capture capture;
    SW_Set_Default_Tdm_Qos(host.control());
    capture.finish();
    EXPECT_TRUE(SameConfig(host.running(), *expected));
    EXPECT_TRUE(host.only_running_was_edited());
}

TEST(DefaultTdmQos, PrintsThePropertiesOnce)
{
    Vlan_Host host;
    set_trunk_ports(host);
    host.running().ports[0].portPrio = 7;
    host.running().ports[4].userPrio = 0;
    Output_Capture capture;
    SW_Set_Default_Tdm_Qos(host.control());
    EXPECT_EQ(capture.finish(), "\n"
                                "Existing VLANs:<none>\n"
                                "CPU : Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "LAN : Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "WAN : Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "SFP0: Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n"
                                "SFP1: Trunk   (VID:1(untagged), Allowed: 1-4095 (ALL))\n");
}

} // namespace
