#include "switch/chip/fields.h"

#include "switch/chip/lock.h"
#include "switch/chip/smi.h"

namespace
{

static_assert(Field_Mask({0, 0, 12}) == 0x0FFF && Field_Mask({0, 12, 4}) == 0xF000);
static_assert(Field_Mask({0, 0, 16}) == 0xFFFF && Field_Mask({0, 12, 8}) == 0xF000);

int read_field(SW_Device *device, uint8_t address, const Field &field, uint32_t *value)
{
    uint16_t content = 0;
    if (value == nullptr) {
        return SW_STATUS_BAD_PARAM;
    }
    const int status = Register_Read(device, address, field.number, &content);
    if (status == SW_STATUS_OK) {
        *value = (content & Field_Mask(field)) >> field.firstBit;
    }
    return status;
}

int write_field(SW_Device *device, uint8_t address, const Field &field, uint32_t value)
{
    if (address == SMI_NONE) {
        return SW_STATUS_BAD_PARAM;
    }
    const Held_Lock lock(device, SW_LOCK_REGISTER);
    if (!lock.taken()) {
        return SW_STATUS_FAIL;
    }
    uint16_t old = 0;
    const int status = SMI_Read(device, address, field.number, &old);
    if (status != SW_STATUS_OK) {
        return status;
    }
    const uint32_t mask = Field_Mask(field);
    const uint32_t changed = (old & ~mask) | ((value << field.firstBit) & mask);
    return SMI_Write(device, address, field.number, static_cast<uint16_t>(changed));
}

} // namespace

int Register_Read(SW_Device *device, uint8_t address, uint8_t number, uint16_t *value)
{
    if (address == SMI_NONE) {
        return SW_STATUS_BAD_PARAM;
    }
    const Held_Lock lock(device, SW_LOCK_REGISTER);
    return lock.taken() ? SMI_Read(device, address, number, value) : SW_STATUS_FAIL;
}

int Register_Write(SW_Device *device, uint8_t address, uint8_t number, uint16_t value)
{
    if (address == SMI_NONE) {
        return SW_STATUS_BAD_PARAM;
    }
    const Held_Lock lock(device, SW_LOCK_REGISTER);
    return lock.taken() ? SMI_Write(device, address, number, value) : SW_STATUS_FAIL;
}

int Field_Read_Port(SW_Device *device, uint32_t hardwarePort, const Field &field, uint32_t *value)
{
    return read_field(device, SMI_Address(*device, hardwarePort, SMI_PORT), field, value);
}

int Field_Write_Port(SW_Device *device, uint32_t hardwarePort, const Field &field, uint32_t value)
{
    return write_field(device, SMI_Address(*device, hardwarePort, SMI_PORT), field, value);
}

int Field_Read_Global(SW_Device *device, const Field &field, uint32_t *value)
{
    return read_field(device, SMI_Address(*device, 0, SMI_GLOBAL), field, value);
}

int Field_Write_Global(SW_Device *device, const Field &field, uint32_t value)
{
    return write_field(device, SMI_Address(*device, 0, SMI_GLOBAL), field, value);
}
