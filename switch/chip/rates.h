#pragma once

#include "switch/chip/device.h"

/*
 * Rate limits of a port, as rate codes GT_NO_LIMIT to GT_256M. Statuses and register accesses as in
 * port_operations.h.
 *
 * Most chips hold a divisor. There a value that is no rate code is taken as kilobits per second and
 * sets SW_STATE_RATE_UNKNOWN in the device record; every other set clears it, and every other get
 * that could read the register. The divisor is cut to its 12 bits. A get turns the divisor back
 * into the code that it belongs to; a divisor of no code sets the flag and yields kilobits per
 * second, 48 or more. Older chips hold the code itself: values above 7 are SW_STATUS_BAD_PARAM.
 */

/* The egress rate travels in a holder. */
struct SW_Egress_Rate {
    uint32_t rate;
};

/* Ingress rate limit of priority 0. */
int swSetPri0Rate(SW_Device *device, uint32_t port, uint32_t rate);
int swGetPri0Rate(SW_Device *device, uint32_t port, uint32_t *rate);

/* Egress rate limit. */
int swSetEgressRate(SW_Device *device, uint32_t port, const SW_Egress_Rate *rate);
int swGetEgressRate(SW_Device *device, uint32_t port, SW_Egress_Rate *rate);
