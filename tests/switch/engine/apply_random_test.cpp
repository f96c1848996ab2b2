#include "switch/chip/driver.h"
#include "switch/config/keywords.h"
#include "switch/engine/apply.h"
#include "tests/support/random_config.h"
#include "tests/support/random_seed.h"
#include "tests/switch/engine/board.h"

#include <cstring>
#include <random>

namespace
{

/* Cuts the numbers of a random configuration to what the board's chip holds, so that it can be read
 * back whole. */
void fit_to_chip(SW_Config *config, const SW_Config &factory)
{
    for (int port = 0; port < SW_PORTS; ++port) {
        config->vlanPortType[port] = SW_Vlan_Port_Type_CUSTOM;
        config->ports[port].portType = factory.ports[port].portType;
        config->ports[port].vid &= 0x0FFF;
        config->ports[port].portPrio &= 7;
    }
    for (int vid = 0; vid < SW_VLANS; ++vid) {
        Vlan_Table_Entry &entry = config->vlans[vid].vtu;
        if (config->vlans[vid].defined == 0) {
            continue;
        }
        entry.vid = static_cast<uint16_t>(vid);
        entry.dbNum &= 63;
        entry.vidPriority = entry.vidPriOverride != 0 ? entry.vidPriority & 7 : 0;
        entry.sid = 0;
        entry.vidPolicy = 0;
        for (int slot = 0; slot < VLAN_ENTRY_PORTS; ++slot) {
            entry.memberTagP[slot] = slot < 6 ? entry.memberTagP[slot] & 3 : 0;
            entry.portStateP[slot] = slot < 6 ? entry.portStateP[slot] & 3 : 0;
        }
    }
    for (uint8_t &traffic_class : config->cosUserPrio) {
        traffic_class &= 3;
    }
    for (uint8_t &traffic_class : config->cosDscp) {
        traffic_class &= 3;
    }
}

/* Gives the running configuration some areas of another one. */
void edit(SW_Config *running, const SW_Config &other, std::mt19937 *generator)
{
    const auto chosen = [generator] { return ((*generator)() & 1U) != 0; };
    if (chosen()) {
        running->maxFrameSize = other.maxFrameSize;
    }
    for (int port = 0; port < SW_PORTS; ++port) {
        if (chosen()) {
            running->ports[port] = other.ports[port];
        }
    }
    if (chosen()) {
        std::memcpy(running->vlans, other.vlans, sizeof running->vlans);
        running->vlanEntryCount = other.vlanEntryCount;
    }
    if (chosen()) {
        std::memcpy(running->cosUserPrio, other.cosUserPrio, sizeof running->cosUserPrio);
    }
    if (chosen()) {
        std::memcpy(running->cosDscp, other.cosDscp, sizeof running->cosDscp);
    }
}

class RandomApply : public Board
{
protected:
    /* The driver's answer for a value. */
    template <class Getter>
    uint32_t get(Getter getter, uint32_t place)
    {
        uint32_t value = 0xFFFFFFFF;
        EXPECT_EQ(getter(&device_, place, &value), SW_STATUS_OK);
        return value;
    }

    /* The settings of a port as the chip holds them; what it cannot be asked for as wanted. */
    SW_Port_Config port_on_chip(int port)
    {
        const auto chip_port = static_cast<uint32_t>(SW_Chip_Ports[port]);
        SW_Port_Config settings = running_.ports[port];
        settings.vid = static_cast<uint16_t>(get(swGetPortVid, chip_port));
        settings.vidForceDefault = get(swGetPortForceDefaultVid, chip_port);
        settings.dot1qMode = get(swGetPortDot1qMode, chip_port);
        settings.discardTagged = get(swGetDiscardTagged, chip_port);
        settings.discardUntagged = get(swGetDiscardUntagged, chip_port);
        settings.egressMode = get(swGetEgressMode, chip_port);
        settings.useCoreTag = get(swGetUseCoreTag, chip_port);
        SW_Egress_Rate rate = {};
        EXPECT_EQ(swGetEgressRate(&device_, chip_port, &rate), SW_STATUS_OK);
        settings.egressRate = rate.rate;
        SW_Bytes_Count count = {};
        EXPECT_EQ(swGetBytesCount(&device_, chip_port, &count), SW_STATUS_OK);
        settings.limitMgmt = count.limitMgmt;
        settings.countIfg = count.countIfg;
        settings.countPre = count.countPre;
        settings.pri0Rate = get(swGetPri0Rate, chip_port);
        settings.pri1Rate = get(swGetPri1Rate, chip_port);
        settings.pri2Rate = get(swGetPri2Rate, chip_port);
        settings.pri3Rate = get(swGetPri3Rate, chip_port);
        settings.prioMapRule = get(swGetPrioMapRule, chip_port);
        settings.ipPrio = get(swGetUseIpPrio, chip_port);
        settings.userPrio = get(swGetUseUserPrio, chip_port);
        settings.portPrio = static_cast<uint8_t>(get(swGetPortDefaultPrio, chip_port));
        return settings;
    }

    /* The defined entries as the chip holds them. */
    void read_vlans(SW_Config *config)
    {
        Vlan_Table_Entry entry = {};
        int status = swVtuGetFirst(&device_, &entry);
        while (status == SW_STATUS_OK) {
            config->vlans[entry.vid].vtu = entry;
            config->vlans[entry.vid].defined = 1;
            config->vlanEntryCount++;
            status = swVtuGetNext(&device_, &entry);
        }
    }

    void expect_running_on_chip()
    {
        device_image_ = running_;
        ClearVlanTable(&device_image_);
        read_vlans(&device_image_);
        for (int port = 0; port < SW_PORTS; ++port) {
            device_image_.ports[port] = port_on_chip(port);
        }
        uint32_t size = 0;
        EXPECT_EQ(swGetMaxFrameSize(&device_, &size), SW_STATUS_OK);
        device_image_.maxFrameSize = size == 1 ? SW_Max_Frame_Size_1522 : SW_Max_Frame_Size_1632;
        for (uint32_t priority = 0; priority < SW_USER_PRIOS; ++priority) {
            device_image_.cosUserPrio[priority] =
                static_cast<uint8_t>(get(swGetUserPrioToTrafficClass, priority));
        }
        for (uint32_t dscp = 0; dscp < SW_DSCPS; ++dscp) {
            device_image_.cosDscp[dscp] = static_cast<uint8_t>(get(swGetDscpToTrafficClass, dscp));
        }
        EXPECT_EQ(std::memcmp(&device_image_, &running_, sizeof running_), 0);
    }
};

TEST_F(RandomApply, ChipHoldsTheRunningConfigurationAfterEveryApply)
{
    std::mt19937 generator(test_seed());
    SW_Config factory;
    SetSwitchConfigDefaults(&factory);
    set_custom_defaults();
    bring_up();
    ASSERT_TRUE(SW_Configure(&control_, false));
    expect_running_on_chip();
    const int rounds = test_rounds(100);
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        SetRandomConfig(&startup_image_, &generator);
        fit_to_chip(&startup_image_, factory);
        edit(&running_, startup_image_, &generator);
        EXPECT_EQ(printed([&] { EXPECT_TRUE(SW_Apply_Changes(&control_, false, true)); }), "");
        expect_running_on_chip();
        EXPECT_TRUE(applied_is_running());
    }
}

} // namespace
