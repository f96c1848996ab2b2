#include "tests/switch/engine/load_stand_in.h"

#include "switch/chip/load.h"

int stand_in_enable_status = SW_STATUS_OK;

int swLoadDriver(const SW_Sys_Config *config, SW_Device *device)
{
    device->deviceId = 0x105;
    device->cpuPort = config->cpuPort;
    device->baseRegAddr = 16;
    device->numberOfPorts = 6;
    device->validPortMask = 0x3F;
    device->phyPortMask = 0x07;
    device->familyA = 1U << 13;
    device->hooks = config->hooks;
    device->loaded = 1;
    return SW_STATUS_OK;
}

int swSysEnable(SW_Device * /*device*/)
{
    return stand_in_enable_status;
}
