#pragma once

#include "switch/chip/device.h"
#include "switch/chip/families.h"
#include "switch/chip/smi.h"

/*
 * The checks that every operation makes before it touches a register, in their order: missing
 * pointers and the port (SW_STATUS_BAD_PARAM), then the chip's support (SW_STATUS_NOT_SUPPORTED).
 */

/* Checks one call; `argument` is the operation's pointer, of any type. */
inline int Check_Global(const SW_Device *device, const void *argument, const Family_Test &support)
{
    if (device == nullptr || argument == nullptr) {
        return SW_STATUS_BAD_PARAM;
    }
    return Family_Passes(support, *device) ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED;
}

/* The same with the port; stores its hardware port, when there is a device record. */
inline int Check_Port(const SW_Device *device, uint32_t port, const void *argument,
                      const Family_Test &support, uint8_t *hardwarePort)
{
    if (device == nullptr) {
        return SW_STATUS_BAD_PARAM;
    }
    *hardwarePort = SMI_Hardware_Port(*device, port);
    return *hardwarePort == SMI_NONE ? SW_STATUS_BAD_PARAM
                                     : Check_Global(device, argument, support);
}
