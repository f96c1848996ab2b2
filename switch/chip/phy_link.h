#pragma once

#include "switch/chip/device.h"

/* What a PHY says about its link. */
struct PHY_Link {
    uint32_t full;  /* 1 = full duplex */
    uint32_t speed; /* SW_SPEED_10 to SW_SPEED_UNKNOWN */
};

/*
 * Works the link facts of a hardware port out from its PHY, under the PHY lock: with
 * auto-negotiation on, the best ability that both ends advertise (IEEE 802.3, 28B.3), else the
 * speed and duplex that the control register forces. SW_STATUS_NOT_SUPPORTED: the port has no PHY.
 * SW_STATUS_FAIL: a register access failed. A failure leaves `link` as it was.
 */
int PHY_Read_Link(SW_Device *device, uint32_t hardwarePort, PHY_Link *link);
