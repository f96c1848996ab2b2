#pragma once

#include "switch/chip/device.h"

/*
 * Loads the driver: copies the hooks, identifies the chip, looks it up in the chip table, creates
 * the locks, switches the ports to forwarding and checks the register blocks of the chip's family.
 * `device` is zeroed, left by a failed load, or loaded.
 *   SW_STATUS_BAD_PARAM       a record is missing
 *   SW_STATUS_ALREADY_LOADED  `device` is loaded; it stays as it is
 *   SW_STATUS_FAIL            a register hook is missing, a register access failed, no chip of the
 *                             table answers, a lock could not be created, a block does not answer
 *   SW_STATUS_BAD_CPU_PORT    the configured CPU port is no port of the chip
 * After any status but 0 the locks that were created are deleted and the record is zero, unless it
 * was loaded before the call.
 */
int swLoadDriver(const SW_Sys_Config *config, SW_Device *device);

/* The step after a load. Nothing is left to do there: no register access, status 0, or
 * SW_STATUS_BAD_PARAM when `device` is null. */
int swSysEnable(SW_Device *device);
