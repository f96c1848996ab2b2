#pragma once

#include <cstdint>
#include <span>

/*
 * What the simulator must know of a chip to answer for it. Masks have bit n for hardware port n.
 */

/* Hardware ports that a simulated chip can have. */
inline constexpr int SIM_PORTS = 11;

/* Where the SMI devices are and how the port status register reads. */
enum Sim_Layout : uint8_t {
    SIM_LAYOUT_NEWER,   /* fixed: PHYs from 0, ports from 16, global 27, 29 and the remaining 28 */
    SIM_LAYOUT_OLDER_A, /* after the base: PHYs 0, ports 8, global 15, the remaining block 14 */
    SIM_LAYOUT_OLDER_B  /* after the base: PHYs 0, ports 8, global 15, the remaining block 7 */
};

struct Sim_Chip_Row {
    uint16_t identifier; /* 12 bits, as the chip answers it */
    uint8_t revision;    /* 4 bits */
    Sim_Layout layout;
    uint16_t validPorts;   /* the ports that are brought out */
    uint16_t phyPorts;     /* those that have a PHY */
    uint16_t gigabitPorts; /* those that reach 1000 Mbit/s, their PHYs as well */
    uint16_t databaseBits; /* of the VLAN operation register; 0: the chip has no VLAN table */
};

/* Every chip that can be simulated; the board's is the first. */
std::span<const Sim_Chip_Row> Sim_Chip_Rows();

/* The board's chip. */
const Sim_Chip_Row &Sim_Board_Chip();

/* Abilities of one end of a line, a bit each, the better the higher (IEEE 802.3, 28B.3). */
inline constexpr uint8_t SIM_10_HALF = 0x01;
inline constexpr uint8_t SIM_10_FULL = 0x02;
inline constexpr uint8_t SIM_100_HALF = 0x04;
inline constexpr uint8_t SIM_100_FULL = 0x08;
inline constexpr uint8_t SIM_1000_HALF = 0x10;
inline constexpr uint8_t SIM_1000_FULL = 0x20;
inline constexpr uint8_t SIM_UP_TO_100 = 0x0F;
inline constexpr uint8_t SIM_UP_TO_1000 = 0x3F;

/*
 * The abilities at the far end of each hardware port's line, 0 for nobody: WAN, LAN, CPU, SFP1,
 * SFP0 as the board wires them. SFP1 and the ports that it does not use have no partner.
 */
inline constexpr uint8_t SIM_BOARD_PARTNERS[SIM_PORTS] = {SIM_UP_TO_100, SIM_UP_TO_1000,
                                                          SIM_UP_TO_100, 0, SIM_UP_TO_1000};

/* The state of a line. */
struct Sim_Link {
    bool up;
    bool full;     /* false when down */
    uint8_t speed; /* 0, 1, 2: 10, 100, 1000 Mbit/s; 3 when down */
};

inline constexpr Sim_Link SIM_LINK_DOWN = {false, false, 3};

/* The link that two ends with these abilities agree on: the best in common, or none. */
Sim_Link Sim_Link_Of(unsigned oneEnd, unsigned otherEnd);
