#pragma once

#include "switch/chip/device.h"

/*
 * Registers and fields of registers, under the register lock. An SMI address of SMI_NONE is
 * SW_STATUS_BAD_PARAM without a register access; a lock that cannot be taken, and a failed register
 * access, is SW_STATUS_FAIL.
 */

/* Bits firstBit to firstBit + length - 1 of a register; up to bit 15 when that is beyond it. */
struct Field {
    uint8_t number;
    uint8_t firstBit; /* 0 to 15 */
    uint8_t length;   /* 1 or more */
};

/* The bits of the field in its register. */
constexpr uint32_t Field_Mask(const Field &field)
{
    const uint32_t end = uint32_t{field.firstBit} + field.length;
    return (1U << (end < 16 ? end : 16)) - (1U << field.firstBit);
}

/* A whole register: one access. A failed read leaves the value as it was. */
int Register_Read(SW_Device *device, uint8_t address, uint8_t number, uint16_t *value);
int Register_Write(SW_Device *device, uint8_t address, uint8_t number, uint16_t value);

/* A field of a hardware port's switch registers. Reading is one access, a failed one leaves the
 * value as it was, and a null pointer is SW_STATUS_BAD_PARAM. Writing reads the register and writes
 * it with the other bits kept, in one hold of the lock; `value` is cut to the field. */
int Field_Read_Port(SW_Device *device, uint32_t hardwarePort, const Field &field, uint32_t *value);
int Field_Write_Port(SW_Device *device, uint32_t hardwarePort, const Field &field, uint32_t value);

/* The same for the global registers. */
int Field_Read_Global(SW_Device *device, const Field &field, uint32_t *value);
int Field_Write_Global(SW_Device *device, const Field &field, uint32_t value);
