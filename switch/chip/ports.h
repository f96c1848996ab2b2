#pragma once

#include "switch/chip/device.h"
#include "switch/chip/families.h"

/*
 * The checks that every operation makes before it touches a register, in their order: missing
 * pointers and the port (SW_STATUS_BAD_PARAM), then the chip's support (SW_STATUS_NOT_SUPPORTED).
 */

/* Checks one call; `argument` is the operation's pointer, of any type. */
int Check_Global(const SW_Device *device, const void *argument, const Family_Test &support);

/* The same with the port; stores its hardware port. On a failure that is not to be used. */
int Check_Port(const SW_Device *device, uint32_t port, const void *argument,
               const Family_Test &support, uint8_t *hardwarePort);
