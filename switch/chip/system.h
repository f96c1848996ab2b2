#pragma once

#include "switch/chip/device.h"

/*
 * Settings of the whole switch, each a field of its global registers. Statuses and register
 * accesses as in port_operations.h.
 */

/* Traffic class, 0 to 3, of an 802.1p user priority (its low 3 bits) and of a DSCP (its low 6
 * bits). */
int swSetUserPrioToTrafficClass(SW_Device *device, uint32_t priority, uint32_t trafficClass);
int swGetUserPrioToTrafficClass(SW_Device *device, uint32_t priority, uint32_t *trafficClass);
int swSetDscpToTrafficClass(SW_Device *device, uint32_t dscp, uint32_t trafficClass);
int swGetDscpToTrafficClass(SW_Device *device, uint32_t dscp, uint32_t *trafficClass);

/* Maximum frame size: 1 is 1522 bytes, any other value 1632 bytes; a get yields 1 or 0. */
int swSetMaxFrameSize(SW_Device *device, uint32_t size);
int swGetMaxFrameSize(SW_Device *device, uint32_t *size);

/* The port that gets the copies of mirrored frames, SW_MIRROR_NONE for none. A get yields
 * SW_MIRROR_NONE also for a number that is no port of the chip. */
int swSetIngressMirrorDest(SW_Device *device, uint32_t port);
int swGetIngressMirrorDest(SW_Device *device, uint32_t *port);
int swSetEgressMirrorDest(SW_Device *device, uint32_t port);
int swGetEgressMirrorDest(SW_Device *device, uint32_t *port);
