#pragma once

#include "switch/chip/device.h"

/*
 * The family sets that classify a chip, and the tests that operations make on them. Several masks
 * differ in one bit only; each is the right one for its operations and none may stand in for
 * another.
 */

/* What separates chips of the newer register layout, with fixed SMI addresses, from the older. */
inline constexpr uint32_t A_NEWER_LAYOUT = 0x7ef9fe03;
inline constexpr uint32_t B_NEWER_LAYOUT = 0x800;

inline constexpr uint32_t A_VLAN = 0x7efffd97;           /* VLAN table, 802.1Q, forced VLAN ID */
inline constexpr uint32_t A_DISCARD = 0x7efff800;        /* discard tagged, untagged */
inline constexpr uint32_t A_EGRESS_MODE = 0x7effffd7;    /* egress mode, priority operations */
inline constexpr uint32_t A_ADD_TAG = 0x7efdafd6;        /* egress mode GT_ADD_TAG */
inline constexpr uint32_t A_CORE_TAG = 0x1f800;          /* core tag */
inline constexpr uint32_t A_INGRESS_RATE = 0x1ffd0;      /* priority rates, bytes count */
inline constexpr uint32_t A_PRI123_FLAGS = 0x7ef9fc03;   /* priority 1 to 3 flags in register 9 */
inline constexpr uint32_t A_PRI0_DIVISOR = 0x7ef9fc00;   /* priority 0 rate as a divisor */
inline constexpr uint32_t A_EGRESS_RATE = 0x7effafd0;    /* egress rate */
inline constexpr uint32_t A_EGRESS_DIVISOR = 0x7ef9fe00; /* egress rate as a divisor */
inline constexpr uint32_t A_EGRESS_BLOCK = 0x7ef80000;   /* egress rate in a block of its own */
inline constexpr uint32_t A_DIVISOR_28 = 0x1c400;        /* rate divisors over 28 */
inline constexpr uint32_t A_MIRROR = 0x7ef9f800;         /* port mirroring */
inline constexpr uint32_t A_NO_FRAME_SIZE = 0x7ee00000;  /* no global frame size */
inline constexpr uint32_t A_LINK_BIT_11 = 0x7ef9fe00;    /* link state in bit 11 */
inline constexpr uint32_t A_EXTENDED = 0x60000;          /* extended VLAN entries, facts from PHY */
inline constexpr uint32_t A_VLAN_PORT_STATE = 0x5a000;   /* port states in the VLAN table */
inline constexpr uint32_t A_GLOBAL_SETUP = 0x7ef9f000;   /* set-up steps of the load */
inline constexpr uint32_t A_PORT_SETUP = 0x1fc00;
inline constexpr uint32_t A_BLOCK_SETUP = 0x7ef80000;

inline constexpr uint32_t B_GROUP = 0x3f1;        /* the group B chips */
inline constexpr uint32_t B_SETUP = 0xbf1;        /* set-up steps of the load */
inline constexpr uint32_t B_INGRESS_RATE = 0x200; /* priority 0 rate, bytes count */

/* How set A is compared: not looked at and true; any bit of the mask; the masked value above 3, so
 * that the two lowest bits alone do not count; no bit of the mask. */
enum class Family_Compare : uint8_t { ALWAYS, ANY, ABOVE_3, NONE };

/* True when set A compares as told, or has a bit of `alsoA`, or set B has one of `maskB`. */
struct Family_Test {
    Family_Compare compare;
    uint32_t maskA;
    uint32_t maskB;
    uint32_t alsoA;
};

constexpr bool Family_Passes(const Family_Test &test, uint32_t familyA, uint32_t familyB)
{
    const uint32_t masked = familyA & test.maskA;
    const bool compared = test.compare == Family_Compare::ALWAYS ||
                          (test.compare == Family_Compare::ANY && masked != 0) ||
                          (test.compare == Family_Compare::ABOVE_3 && masked > 3) ||
                          (test.compare == Family_Compare::NONE && masked == 0);
    return compared || (familyA & test.alsoA) != 0 || (familyB & test.maskB) != 0;
}

inline bool Family_Passes(const Family_Test &test, const SW_Device &device)
{
    return Family_Passes(test, device.familyA, device.familyB);
}

/* Tests that several operations share. */
inline constexpr Family_Test FAMILY_ALWAYS = {Family_Compare::ALWAYS, 0, 0, 0};
inline constexpr Family_Test FAMILY_NEWER_LAYOUT = {Family_Compare::ABOVE_3, A_NEWER_LAYOUT,
                                                    B_NEWER_LAYOUT, 0};
inline constexpr Family_Test FAMILY_NEWER_OR_GROUP = {Family_Compare::ABOVE_3, A_NEWER_LAYOUT,
                                                      B_NEWER_LAYOUT | B_GROUP, A_EXTENDED};
inline constexpr Family_Test FAMILY_VLAN = {Family_Compare::ABOVE_3, A_VLAN, B_GROUP, 0};
inline constexpr Family_Test FAMILY_PRIORITIES = {Family_Compare::ANY, A_EGRESS_MODE, B_GROUP, 0};
inline constexpr Family_Test FAMILY_MIRROR = {Family_Compare::ANY, A_MIRROR, B_GROUP, 0};
inline constexpr Family_Test FAMILY_INGRESS_RATE = {Family_Compare::ANY, A_INGRESS_RATE,
                                                    B_INGRESS_RATE, 0};
inline constexpr Family_Test FAMILY_EXTENDED = {Family_Compare::ANY, A_EXTENDED, 0, 0};
/* All but the oldest chips: more database numbers, egress rate as a divisor. */
inline constexpr Family_Test FAMILY_NOT_OLDEST = {Family_Compare::ANY, A_EGRESS_DIVISOR,
                                                  B_NEWER_LAYOUT | B_GROUP, A_EXTENDED};
/* The set-up steps of the load. */
inline constexpr Family_Test FAMILY_GLOBAL_SETUP = {Family_Compare::ANY, A_GLOBAL_SETUP, B_SETUP,
                                                    0};
inline constexpr Family_Test FAMILY_PORT_SETUP = {Family_Compare::ANY, A_PORT_SETUP, 0, 0};
inline constexpr Family_Test FAMILY_BLOCK_SETUP = {Family_Compare::ANY, A_BLOCK_SETUP, B_SETUP, 0};
