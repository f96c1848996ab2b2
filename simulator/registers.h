#pragma once

#include "simulator/chip.h"

/*
 * The registers of the simulated chip's SMI devices as the chip itself numbers them, whatever the
 * way to it: in indirect mode what its commands reach. Addresses and registers as in chip.h.
 */
uint16_t Sim_Registers_Read(Sim_Chip *chip, uint8_t address, uint8_t number);
void Sim_Registers_Write(Sim_Chip *chip, uint8_t address, uint8_t number, uint16_t value);
