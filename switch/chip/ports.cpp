#include "switch/chip/ports.h"

#include "switch/chip/smi.h"

int Check_Global(const SW_Device *device, const void *argument, const Family_Test &support)
{
    if (device == nullptr || argument == nullptr) {
        return SW_STATUS_BAD_PARAM;
    }
    return Family_Passes(support, *device) ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED;
}

int Check_Port(const SW_Device *device, uint32_t port, const void *argument,
               const Family_Test &support, uint8_t *hardwarePort)
{
    if (device == nullptr || argument == nullptr) {
        return SW_STATUS_BAD_PARAM;
    }
    *hardwarePort = SMI_Hardware_Port(*device, port);
    if (*hardwarePort == SMI_NONE) {
        return SW_STATUS_BAD_PARAM;
    }
    return Family_Passes(support, *device) ? SW_STATUS_OK : SW_STATUS_NOT_SUPPORTED;
}
