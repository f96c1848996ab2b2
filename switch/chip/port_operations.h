#pragma once

#include "switch/chip/device.h"

/*
 * Settings and facts of one port, each a field of its switch registers.
 *
 * `port` is the driver's port number, 0 to the number of ports - 1. Boolean settings: 1 is true,
 * every other value is written as false; boolean results are 1 or 0. Numbers wider than their field
 * are cut to it unless the operation says otherwise. A set reads and writes one register and keeps
 * its other bits; a get reads it. Statuses, in the order of the checks:
 *   SW_STATUS_BAD_PARAM      the device record or the result pointer is null; no such port
 *   SW_STATUS_NOT_SUPPORTED  the chip does not have the setting
 *   SW_STATUS_FAIL           a register access failed, or the register lock was not taken
 * With the first two there is no register access. A failed get leaves its result as it was.
 */

/* Default VLAN ID, 0 to 4095 (IEEE 802.1Q: the PVID). */
int swSetPortVid(SW_Device *device, uint32_t port, uint32_t vid);
int swGetPortVid(SW_Device *device, uint32_t port, uint32_t *vid);

/* Whether the default VLAN ID replaces the one that a frame brings. */
int swSetPortForceDefaultVid(SW_Device *device, uint32_t port, uint32_t force);
int swGetPortForceDefaultVid(SW_Device *device, uint32_t port, uint32_t *force);

/* 802.1Q mode: GT_DISABLE, GT_FALLBACK, GT_CHECK, GT_SECURE. */
int swSetPortDot1qMode(SW_Device *device, uint32_t port, uint32_t mode);
int swGetPortDot1qMode(SW_Device *device, uint32_t port, uint32_t *mode);

/* Whether tagged, untagged frames are dropped at the ingress. */
int swSetDiscardTagged(SW_Device *device, uint32_t port, uint32_t discard);
int swGetDiscardTagged(SW_Device *device, uint32_t port, uint32_t *discard);
int swSetDiscardUntagged(SW_Device *device, uint32_t port, uint32_t discard);
int swGetDiscardUntagged(SW_Device *device, uint32_t port, uint32_t *discard);

/* Egress mode: GT_UNMODIFY_EGRESS to GT_ADD_TAG. A value above 3 is SW_STATUS_FAIL; GT_ADD_TAG is
 * SW_STATUS_NOT_SUPPORTED on chips that cannot add a tag. */
int swSetEgressMode(SW_Device *device, uint32_t port, uint32_t mode);
int swGetEgressMode(SW_Device *device, uint32_t port, uint32_t *mode);

/* Whether the port uses the core tag. */
int swSetUseCoreTag(SW_Device *device, uint32_t port, uint32_t use);
int swGetUseCoreTag(SW_Device *device, uint32_t port, uint32_t *use);

/* Where the priority of a frame comes from: which of IP and user priority rules when both do,
 * whether the IP (DSCP) priority counts, whether the 802.1p user priority counts. */
int swSetPrioMapRule(SW_Device *device, uint32_t port, uint32_t rule);
int swGetPrioMapRule(SW_Device *device, uint32_t port, uint32_t *rule);
int swSetUseIpPrio(SW_Device *device, uint32_t port, uint32_t use);
int swGetUseIpPrio(SW_Device *device, uint32_t port, uint32_t *use);
int swSetUseUserPrio(SW_Device *device, uint32_t port, uint32_t use);
int swGetUseUserPrio(SW_Device *device, uint32_t port, uint32_t *use);

/* Default priority of the port, cut to the 3 or 2 bits that the chip has. */
int swSetPortDefaultPrio(SW_Device *device, uint32_t port, uint32_t priority);
int swGetPortDefaultPrio(SW_Device *device, uint32_t port, uint32_t *priority);

/* Whether the ingress rate limit counts for frames of priority 3, 2, 1. */
int swSetPri3Rate(SW_Device *device, uint32_t port, uint32_t limit);
int swGetPri3Rate(SW_Device *device, uint32_t port, uint32_t *limit);
int swSetPri2Rate(SW_Device *device, uint32_t port, uint32_t limit);
int swGetPri2Rate(SW_Device *device, uint32_t port, uint32_t *limit);
int swSetPri1Rate(SW_Device *device, uint32_t port, uint32_t limit);
int swGetPri1Rate(SW_Device *device, uint32_t port, uint32_t *limit);

/* What the rate limits count; three flags. */
struct SW_Bytes_Count {
    uint32_t limitMgmt; /* management frames */
    uint32_t countIfg;  /* the gap between frames */
    uint32_t countPre;  /* the preamble */
};

/* All three flags in one call. Chips of the newer layout have them in two registers: when the
 * second access fails, the first has been done; a failed get leaves `flags` as it was. */
int swSetBytesCount(SW_Device *device, uint32_t port, const SW_Bytes_Count *flags);
int swGetBytesCount(SW_Device *device, uint32_t port, SW_Bytes_Count *flags);

/* Whether frames that come in, go out at this port are copied to the mirror destination. */
int swSetIngressMirrorSource(SW_Device *device, uint32_t port, uint32_t mirror);
int swGetIngressMirrorSource(SW_Device *device, uint32_t port, uint32_t *mirror);
int swSetEgressMirrorSource(SW_Device *device, uint32_t port, uint32_t mirror);
int swGetEgressMirrorSource(SW_Device *device, uint32_t port, uint32_t *mirror);

/* Facts of the port: the switch has found a PHY on it; its link is up. */
int swGetPhyDetect(SW_Device *device, uint32_t port, uint32_t *detected);
int swGetLinkState(SW_Device *device, uint32_t port, uint32_t *up);

/* Duplex (1 = full) and speed (SW_SPEED_10 to SW_SPEED_UNKNOWN) of the link. On chips that do not
 * show them in a port register they are worked out from the port's PHY (IEEE 802.3, 22.2.4 and
 * 28B.3) under the PHY lock; a port without one is SW_STATUS_NOT_SUPPORTED there. */
int swGetDuplex(SW_Device *device, uint32_t port, uint32_t *full);
int swGetSpeedMode(SW_Device *device, uint32_t port, uint32_t *speed);
