#pragma once

#include "switch/chip/device.h"

/*
 * The PHYs of the ports, under the PHY lock. `port` is the driver's port number. Statuses, in the
 * order of the checks:
 *   SW_STATUS_BAD_PARAM      the device record or the result pointer is null; no such port
 *   SW_STATUS_NOT_SUPPORTED  the port has no PHY
 *   SW_STATUS_FAIL           the mode or the register is out of range; a register access failed, or
 *                            a lock was not taken
 * What the checks refuse accesses no register, unless an operation says otherwise.
 */

/*
 * Programs what the port's PHY advertises and restarts its auto-negotiation (IEEE 802.3, 22.2.4,
 * 28.2.4 and 40.5.1.1). The modes:
 *   0        every speed and duplex
 *   1, 2, 3  both duplexes at 1000, 100, 10 Mbit/s
 *   4, 5     full, half duplex at every speed
 *   6, 7     1000 Mbit/s full, half
 *   8, 9     100 Mbit/s full, half
 *   10, 11   10 Mbit/s full, half
 * A mode above 11 is SW_STATUS_FAIL. Modes 1, 6 and 7 on a PHY without gigabit are
 * SW_STATUS_NOT_SUPPORTED, an address where no PHY answers is SW_STATUS_FAIL: both are found out by
 * reading, before any write.
 */
int swSetPortAutoMode(SW_Device *device, uint32_t port, uint32_t mode);

/*
 * One register of one page of the port's PHY. The page that was selected before is selected again
 * on every path. `number` above 31 is SW_STATUS_FAIL. A failed read leaves the value as it was.
 */
int swReadPagedPhyReg(SW_Device *device, uint32_t port, uint32_t number, uint32_t page,
                      uint16_t *value);
int swWritePagedPhyReg(SW_Device *device, uint32_t port, uint32_t number, uint32_t page,
                       uint16_t value);
