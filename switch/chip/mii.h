#pragma once

#include <cstdint>

struct SW_Device;

/*
 * The alternative to the kernel device: a second pair of bus hooks that drive a clause 22
 * management frame (IEEE 802.3, 22.2.4.5) bit by bit over two pins. The pin primitives are
 * placeholders until a board has such pins, and nothing installs these hooks.
 */

/* Non-zero: each hook prints a line on standard output. Zero at start; nothing sets it. */
extern int MII_Debug;

/*
 * One frame each, most significant bit first. The low 5 bits of address and register and the low 16
 * of the value are sent. Both return 1; the device handle is not looked at; `value` is not null.
 */
int MII_Bus_Read(SW_Device *device, uint32_t phyAddress, uint32_t registerNumber, uint32_t *value);
int MII_Bus_Write(SW_Device *device, uint32_t phyAddress, uint32_t registerNumber, uint32_t value);

/* The pin primitives: send the low `count` bits (1 to 32), the highest of them first; sample 16
 * bits. As placeholders they send nothing and sample 0. */
void MII_Send_Bits(uint32_t bits, int count);
uint32_t MII_Sample_Bits();
