#include "switch/chip/load.h"

#include "switch/chip/chips.h"
#include "switch/chip/families.h"
#include "switch/chip/fields.h"
#include "switch/chip/lock.h"
#include "switch/chip/smi.h"

namespace
{

constexpr uint8_t IDENTIFIER_REGISTER = 3;
constexpr int IDENTIFIER_FIRST_BIT = 4;
constexpr uint8_t FIXED_FIRST_PORT = 0x10;
constexpr uint8_t OLDER_FIRST_PORT = 8;
constexpr Field PORT_STATE = {4, 0, 2};
constexpr uint32_t FORWARDING = 3;
constexpr uint8_t CONTROL_REGISTER = 4;
constexpr uint16_t IDLE_BUS = 0xFFFF;

int take_configuration(SW_Device *device, const SW_Sys_Config &config)
{
    if (config.hooks.readRegister == nullptr || config.hooks.writeRegister == nullptr) {
        return SW_STATUS_FAIL;
    }
    const auto address = static_cast<uint8_t>(config.address);
    device->hooks = config.hooks;
    device->accessMode = config.accessMode;
    if (config.accessMode == SW_ACCESS_INDIRECT) {
        device->smiAddress = address;
    } else {
        device->baseRegAddr = address;
    }
    return SW_STATUS_OK;
}

void take_chip(SW_Device *device, const Chip_Row &row, uint16_t identifier)
{
    device->deviceId = identifier;
    device->numberOfPorts = row.ports;
    device->validPortMask = row.validPorts;
    device->phyPortMask = row.phyPorts;
    device->familyA = Chip_Family_A(row);
    device->familyB = Chip_Family_B(row);
}

/* Which of the two places holds the identifier depends on the chip that is not known yet: an answer
 * counts only when the chip that it names has its ports there. */
int identify_chip(SW_Device *device, const SW_Sys_Config & /*config*/)
{
    for (const bool newer : {true, false}) {
        const int address = newer ? FIXED_FIRST_PORT : device->baseRegAddr + OLDER_FIRST_PORT;
        uint16_t content = 0;
        const int status =
            SMI_Read(device, static_cast<uint8_t>(address), IDENTIFIER_REGISTER, &content);
        if (status != SW_STATUS_OK) {
            return status;
        }
        const auto identifier = static_cast<uint16_t>(content >> IDENTIFIER_FIRST_BIT);
        const Chip_Row *row = Chip_Find(identifier);
        if (row != nullptr &&
            newer == Family_Passes(FAMILY_NEWER_LAYOUT, Chip_Family_A(*row), Chip_Family_B(*row))) {
            take_chip(device, *row, identifier);
            return SW_STATUS_OK;
        }
    }
    return SW_STATUS_FAIL;
}

/* The CPU port is a hardware port number. */
int check_cpu_port(SW_Device *device, const SW_Sys_Config &config)
{
    if (SMI_Address(*device, config.cpuPort, SMI_PORT) == SMI_NONE) {
        return SW_STATUS_BAD_CPU_PORT;
    }
    device->cpuPort = config.cpuPort;
    return SW_STATUS_OK;
}

int create_locks(SW_Device *device, const SW_Sys_Config & /*config*/)
{
    return Lock_Create_All(device) ? SW_STATUS_OK : SW_STATUS_FAIL;
}

int start_ports(SW_Device *device, const SW_Sys_Config &config)
{
    int status = SW_STATUS_OK;
    const uint32_t ports = config.initPorts == 1 ? device->numberOfPorts : 0;
    for (uint32_t port = 0; status == SW_STATUS_OK && port < ports; ++port) {
        status = Field_Write_Port(device, SMI_Hardware_Port(*device, port), PORT_STATE, FORWARDING);
    }
    return status;
}

int check_answer(SW_Device *device, uint32_t hardwarePort, SMI_Kind kind, uint8_t number)
{
    uint16_t content = 0;
    const int status =
        Register_Read(device, SMI_Address(*device, hardwarePort, kind), number, &content);
    return status == SW_STATUS_OK && content == IDLE_BUS ? SW_STATUS_FAIL : status;
}

int check_global_registers(SW_Device *device)
{
    return check_answer(device, 0, SMI_GLOBAL, CONTROL_REGISTER);
}

int check_port_registers(SW_Device *device)
{
    int status = SW_STATUS_OK;
    for (uint32_t port = 0; status == SW_STATUS_OK && port < device->numberOfPorts; ++port) {
        status = check_answer(device, SMI_Hardware_Port(*device, port), SMI_PORT, CONTROL_REGISTER);
    }
    return status;
}

int check_remaining_block(SW_Device *device)
{
    return check_answer(device, 0, SMI_REMAINING, 0);
}

struct Setup_Step {
    Family_Test guard;
    int (*step)(SW_Device *device);
};

/* What each family adds must answer at its address. */
constexpr Setup_Step SETUP_STEPS[] = {
    {FAMILY_GLOBAL_SETUP, check_global_registers},
    {FAMILY_PORT_SETUP, check_port_registers},
    {FAMILY_EXTENDED, check_remaining_block},
    {FAMILY_BLOCK_SETUP, check_remaining_block},
};

int set_up_family(SW_Device *device, const SW_Sys_Config &config)
{
    if (config.skipWord == SW_SKIP_SETUP) {
        return SW_STATUS_OK;
    }
    for (const Setup_Step &row : SETUP_STEPS) {
        const int status = Family_Passes(row.guard, *device) ? row.step(device) : SW_STATUS_OK;
        if (status != SW_STATUS_OK) {
            return status;
        }
    }
    return SW_STATUS_OK;
}

int mark_loaded(SW_Device *device, const SW_Sys_Config &config)
{
    device->loaded = 1;
    device->deviceNumber = config.deviceNumber;
    return SW_STATUS_OK;
}

constexpr int (*LOAD_STEPS[])(SW_Device *device, const SW_Sys_Config &config) = {
    take_configuration, identify_chip, check_cpu_port, create_locks,
    start_ports,        set_up_family, mark_loaded,
};

void unload(SW_Device *device)
{
    Lock_Delete_All(device);
    *device = {};
}

} // namespace

int swLoadDriver(const SW_Sys_Config *config, SW_Device *device)
{
    if (config == nullptr || device == nullptr) {
        if (device != nullptr && device->loaded == 0) {
            *device = {};
        }
        return SW_STATUS_BAD_PARAM;
    }
    if (device->loaded != 0) {
        return SW_STATUS_ALREADY_LOADED;
    }
    *device = {};
    for (const auto step : LOAD_STEPS) {
        const int status = step(device, *config);
        if (status != SW_STATUS_OK) {
            unload(device);
            return status;
        }
    }
    return SW_STATUS_OK;
}

int swSysEnable(SW_Device *device)
{
    return device != nullptr ? SW_STATUS_OK : SW_STATUS_BAD_PARAM;
}
