#pragma once

#include "simulator/chip.h"

#include <cstdio>

/*
 * Prints what the chip holds, a line for each fact, all numbers hexadecimal; the command and data
 * registers of indirect mode are no part of it. The chip is left as it is: nothing counts as read.
 * Not to be called by two threads at once.
 *   chip 105 2                  identifier and revision
 *   register 10 03 1052         SMI address, register, value; PHYs as on page 0. Addresses whose
 *                               registers all read as all ones are left out
 *   page 01 00                  hardware port of a PHY, the page that is selected
 *   paged 01 03 10 1021         hardware port, page from 1, register, value; only values but 0
 *   vlan 001 000 3331 0000 0000 VLAN ID, database number, the three data registers
 */
void Sim_Dump(const Sim_Chip &chip, FILE *file);
