#pragma once

#include "simulator/description.h"

/*
 * A simulated copper PHY with the management registers of IEEE 802.3, clause 22 (22.2.4, 28.2.4,
 * 40.5.1) on page 0. Register 22 selects the page and shows on every page; on another page than 0
 * every other register is that page's own. Auto-negotiation takes no time: the write that starts it
 * finds it ended.
 */

inline constexpr int SIM_PHY_REGISTERS = 32;
inline constexpr int SIM_PHY_PAGES = 32;
inline constexpr uint8_t SIM_PHY_PAGE_REGISTER = 22;

/* Registers 2 and 3 of every simulated PHY: no maker's number, and no switch identifier when
 * register 3 is taken for one. */
inline constexpr uint16_t SIM_PHY_IDENTIFIER_1 = 0x5349;
inline constexpr uint16_t SIM_PHY_IDENTIFIER_2 = 0xB5A1;

struct Sim_Phy {
    bool gigabit;
    bool linkWasLost; /* since the last read of the status register, which shows it once */
    uint8_t partner;  /* abilities at the far end */
    Sim_Link link;
    uint16_t control; /* register 0 without its self-clearing bits */
    uint16_t advertisement;
    uint16_t gigabitControl;
    uint16_t page;
    uint16_t pages[SIM_PHY_PAGES][SIM_PHY_REGISTERS]; /* page 0: the registers without a meaning */
};

/* The PHY after power-on: negotiating with everything that it can, the line settled. */
void Sim_Phy_Init(Sim_Phy *phy, bool gigabit, uint8_t partner);

/* Reads or writes one register, 0 to 31, as the bus does. Read-only registers keep their value; a
 * page that is not there reads as all ones. */
uint16_t Sim_Phy_Read(Sim_Phy *phy, uint8_t number);
void Sim_Phy_Write(Sim_Phy *phy, uint8_t number, uint16_t value);

/* Plugs the line into another far end (0: pulls it out); the link settles anew. */
void Sim_Phy_Plug(Sim_Phy *phy, uint8_t partner);
