#pragma once

#include "switch/chip/device.h"
#include "switch/chip/mdio.h"

/* The board's chip as a load leaves it in the device record, for where no chip is there to answer a
 * load. */
inline SW_Device board_device()
{
    SW_Device device = {};
    device.deviceId = 0x105;
    device.cpuPort = 3;
    device.baseRegAddr = 16;
    device.numberOfPorts = 6;
    device.validPortMask = 0x003F;
    device.phyPortMask = 0x0007;
    device.familyA = 1U << 13;
    device.loaded = 1;
    device.hooks.readRegister = MDIO_Bus_Read;
    device.hooks.writeRegister = MDIO_Bus_Write;
    return device;
}
