#pragma once

#include "switch/chip/device.h"

/*
 * One 16-bit register of one SMI device, and where the SMI devices are. In indirect mode an access
 * is a sequence of the chip's command and data register; the callers hold the register lock around
 * it.
 */

/* What is asked for at an address; other numbers are the remaining global block. */
enum SMI_Kind : uint8_t {
    SMI_PHY = 1,
    SMI_PORT = 2,
    SMI_GLOBAL = 3,
    SMI_REMAINING = 4,
    SMI_SECOND_GLOBAL = 5
};

/* No hardware port, no SMI device. */
inline constexpr uint8_t SMI_NONE = 255;

/* Register of one read or write (IEEE 802.3, 22.2.4). Return SW_STATUS_OK or SW_STATUS_FAIL: a hook
 * is missing or answered false, or in indirect mode the chip stayed busy. A failed read leaves the
 * value. */
int SMI_Read(SW_Device *device, uint8_t address, uint8_t number, uint16_t *value);
int SMI_Write(SW_Device *device, uint8_t address, uint8_t number, uint16_t value);

/* The hardware port of the driver's port number: the n-th set bit of the valid-port mask, counted
 * from 0; SMI_NONE when the mask has fewer. */
uint8_t SMI_Hardware_Port(const SW_Device &device, uint32_t port);

/* The SMI address of a hardware port's or of the chip's registers; SMI_NONE when the port has none.
 * `hardwarePort` counts for SMI_PHY and SMI_PORT only. */
uint8_t SMI_Address(const SW_Device &device, uint32_t hardwarePort, SMI_Kind kind);
