#include "switch/chip/smi.h"

#include "switch/chip/families.h"

#include <bit>

namespace
{

constexpr uint8_t COMMAND_REGISTER = 0;
constexpr uint8_t DATA_REGISTER = 1;
constexpr uint16_t BUSY = 0x8000;
/* Busy, clause 22 frame, operation. */
constexpr uint16_t WRITE_COMMAND = 0x9400;
constexpr uint16_t READ_COMMAND = 0x9800;
constexpr int MOST_REREADS = 1000;

constexpr uint8_t OLDER_PORTS = 8;
constexpr uint8_t OLDER_GLOBAL = 15;
constexpr uint8_t OLDER_BLOCK_A = 14;
constexpr uint8_t OLDER_BLOCK_B = 7;
constexpr uint8_t FIXED_PORTS = 0x10;
constexpr uint8_t FIXED_GLOBAL = 0x1B;
constexpr uint8_t FIXED_BLOCK = 0x1C;
constexpr uint8_t FIXED_SECOND_GLOBAL = 0x1D;

int read_directly(SW_Device *device, uint8_t address, uint8_t number, uint16_t *value)
{
    uint32_t answer = 0;
    if (device->hooks.readRegister == nullptr ||
        device->hooks.readRegister(device, address, number, &answer) == 0) {
        return SW_STATUS_FAIL;
    }
    *value = static_cast<uint16_t>(answer);
    return SW_STATUS_OK;
}

int write_directly(SW_Device *device, uint8_t address, uint8_t number, uint16_t value)
{
    if (device->hooks.writeRegister == nullptr ||
        device->hooks.writeRegister(device, address, number, value) == 0) {
        return SW_STATUS_FAIL;
    }
    return SW_STATUS_OK;
}

void pause_for_two_steps()
{
    volatile int steps = 2;
    while (steps > 0) {
        steps = steps - 1;
    }
}

int wait_for_command_register(SW_Device *device)
{
    uint16_t command = 0;
    int status = read_directly(device, device->smiAddress, COMMAND_REGISTER, &command);
    for (int rereads = 0; status == SW_STATUS_OK && (command & BUSY) != 0; ++rereads) {
        if (rereads == MOST_REREADS) {
            return SW_STATUS_FAIL;
        }
        pause_for_two_steps();
        status = read_directly(device, device->smiAddress, COMMAND_REGISTER, &command);
    }
    return status;
}

uint16_t command_word(uint16_t operation, uint8_t address, uint8_t number)
{
    return static_cast<uint16_t>(operation | (address << 5) | number);
}

int read_indirectly(SW_Device *device, uint8_t address, uint8_t number, uint16_t *value)
{
    int status = wait_for_command_register(device);
    if (status == SW_STATUS_OK) {
        status = write_directly(device, device->smiAddress, COMMAND_REGISTER,
                                command_word(READ_COMMAND, address, number));
    }
    if (status == SW_STATUS_OK) {
        status = wait_for_command_register(device);
    }
    return status == SW_STATUS_OK ? read_directly(device, device->smiAddress, DATA_REGISTER, value)
                                  : status;
}

/* Does not wait for the end of the command: the next access does. */
int write_indirectly(SW_Device *device, uint8_t address, uint8_t number, uint16_t value)
{
    int status = wait_for_command_register(device);
    if (status == SW_STATUS_OK) {
        status = write_directly(device, device->smiAddress, DATA_REGISTER, value);
    }
    return status == SW_STATUS_OK ? write_directly(device, device->smiAddress, COMMAND_REGISTER,
                                                   command_word(WRITE_COMMAND, address, number))
                                  : status;
}

bool has_port(uint16_t mask, uint32_t hardwarePort)
{
    return hardwarePort < 16 && ((mask >> hardwarePort) & 1U) != 0;
}

uint32_t fixed_address(uint32_t hardwarePort, SMI_Kind kind)
{
    switch (kind) {
    case SMI_PHY:
        return hardwarePort;
    case SMI_PORT:
        return FIXED_PORTS + hardwarePort;
    case SMI_GLOBAL:
        return FIXED_GLOBAL;
    case SMI_SECOND_GLOBAL:
        return FIXED_SECOND_GLOBAL;
    default:
        return FIXED_BLOCK;
    }
}

uint32_t address_after_base(const SW_Device &device, uint32_t hardwarePort, SMI_Kind kind)
{
    switch (kind) {
    case SMI_PHY:
        return hardwarePort;
    case SMI_PORT:
        return OLDER_PORTS + hardwarePort;
    case SMI_GLOBAL:
        return OLDER_GLOBAL;
    default:
        return device.familyB != 0 ? OLDER_BLOCK_B : OLDER_BLOCK_A;
    }
}

} // namespace

int SMI_Read(SW_Device *device, uint8_t address, uint8_t number, uint16_t *value)
{
    return device->accessMode == SW_ACCESS_INDIRECT
               ? read_indirectly(device, address, number, value)
               : read_directly(device, address, number, value);
}

int SMI_Write(SW_Device *device, uint8_t address, uint8_t number, uint16_t value)
{
    return device->accessMode == SW_ACCESS_INDIRECT
               ? write_indirectly(device, address, number, value)
               : write_directly(device, address, number, value);
}

uint8_t SMI_Hardware_Port(const SW_Device &device, uint32_t port)
{
    unsigned mask = device.validPortMask;
    for (; port > 0 && mask != 0; --port) {
        mask &= mask - 1; /* without its lowest set bit */
    }
    return mask != 0 ? static_cast<uint8_t>(std::countr_zero(mask)) : SMI_NONE;
}

uint8_t SMI_Address(const SW_Device &device, uint32_t hardwarePort, SMI_Kind kind)
{
    if ((kind == SMI_PHY && !has_port(device.phyPortMask, hardwarePort)) ||
        (kind == SMI_PORT && !has_port(device.validPortMask, hardwarePort))) {
        return SMI_NONE;
    }
    if (Family_Passes(FAMILY_NEWER_LAYOUT, device)) {
        return static_cast<uint8_t>(fixed_address(hardwarePort, kind));
    }
    return static_cast<uint8_t>(device.baseRegAddr +
                                address_after_base(device, hardwarePort, kind));
}
