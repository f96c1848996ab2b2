#include "simulator/chip.h"

#include "simulator/registers.h"

namespace
{

constexpr uint8_t COMMAND_REGISTER = 0;
constexpr uint8_t DATA_REGISTER = 1;
constexpr uint16_t NOBODY = 0xFFFF;

constexpr uint16_t BUSY = 0x8000;
constexpr uint16_t OPERATION_BITS = 0x1C00; /* clause 22 frame, operation */
constexpr uint16_t WRITE_FRAME = 0x1400;
constexpr uint16_t READ_FRAME = 0x1800;
constexpr int ADDRESS_SHIFT = 5;

/* Only clause 22 reads and writes do something. */
void finish_command(Sim_Chip *chip)
{
    Sim_Command &command = chip->command;
    const auto address = static_cast<uint8_t>((command.command >> ADDRESS_SHIFT) & 31U);
    const auto number = static_cast<uint8_t>(command.command & 31U);
    command.busy = false;
    if ((command.command & OPERATION_BITS) == WRITE_FRAME) {
        Sim_Registers_Write(chip, address, number, command.data);
    } else if ((command.command & OPERATION_BITS) == READ_FRAME) {
        command.data = Sim_Registers_Read(chip, address, number);
    }
}

void start_command(Sim_Chip *chip, uint16_t value)
{
    Sim_Command &command = chip->command;
    command.command = value & static_cast<uint16_t>(~BUSY);
    command.busy = (value & BUSY) != 0;
    command.readsLeft = command.busyReads;
    if (command.busy && command.readsLeft == 0) {
        finish_command(chip);
    }
}

uint16_t read_command(Sim_Chip *chip)
{
    Sim_Command &command = chip->command;
    if (command.busy && command.readsLeft == 0) {
        finish_command(chip);
    }
    if (command.busy) {
        --command.readsLeft;
        return command.command | BUSY;
    }
    return command.command;
}

uint16_t read_indirectly(Sim_Chip *chip, uint8_t number)
{
    switch (number) {
    case COMMAND_REGISTER:
        return read_command(chip);
    case DATA_REGISTER:
        return chip->command.data;
    default:
        return NOBODY;
    }
}

void write_indirectly(Sim_Chip *chip, uint8_t number, uint16_t value)
{
    if (chip->command.busy) {
        return;
    }
    if (number == COMMAND_REGISTER) {
        start_command(chip, value);
    } else if (number == DATA_REGISTER) {
        chip->command.data = value;
    }
}

} // namespace

uint16_t Sim_Chip_Read(Sim_Chip *chip, uint8_t address, uint8_t number)
{
    if (chip->placement.mode == SIM_DIRECT) {
        return Sim_Registers_Read(chip, address, number);
    }
    return address == chip->placement.address ? read_indirectly(chip, number) : NOBODY;
}

void Sim_Chip_Write(Sim_Chip *chip, uint8_t address, uint8_t number, uint16_t value)
{
    if (chip->placement.mode == SIM_DIRECT) {
        Sim_Registers_Write(chip, address, number, value);
    } else if (address == chip->placement.address) {
        write_indirectly(chip, number, value);
    }
}
