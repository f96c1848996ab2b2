#pragma once

#include "simulator/description.h"
#include "simulator/phy.h"
#include "simulator/vlan_table.h"

/*
 * The simulated switch chip: one record that answers on an SMI bus of 32 addresses with 32
 * registers each (IEEE 802.3, 22.2.4.5). Addresses where nothing answers read as all ones, and
 * writes to them are lost. Single-threaded. The record is large (about 70 KB): static or on the
 * heap, not on a small stack.
 */

inline constexpr int SIM_BUS_REGISTERS = 32;

/* How the chip is reached. */
enum Sim_Access_Mode : uint8_t {
    SIM_DIRECT,  /* its SMI devices stand on the bus; address: base of the older layouts */
    SIM_INDIRECT /* behind command register 0 and data register 1 of one SMI address: its own */
};

struct Sim_Placement {
    Sim_Access_Mode mode;
    uint8_t address; /* 0 to 31 */
};

/* The command and data registers of indirect mode. An operation ends when the busy bit reads as
 * clear; while it is busy, writes to both registers are lost. */
struct Sim_Command {
    bool busy;
    uint32_t busyReads; /* how often a command lets register 0 read busy; any time settable */
    uint32_t readsLeft;
    uint16_t command;
    uint16_t data;
};

struct Sim_Chip {
    Sim_Chip_Row row;
    Sim_Placement placement;
    Sim_Command command;
    uint16_t ports[SIM_PORTS][SIM_BUS_REGISTERS]; /* 0 and 3 are made when read */
    uint16_t global[SIM_BUS_REGISTERS];           /* 5 to 9 belong to the VLAN table */
    uint16_t secondGlobal[SIM_BUS_REGISTERS];
    uint16_t remaining[SIM_BUS_REGISTERS];
    uint8_t partners[SIM_PORTS];
    Sim_Phy phys[SIM_PORTS];
    Sim_Vlan_Table vlans;
};

/* The chip of a row after power-on, with the board's line partners. Nothing is ever seen busy until
 * `vlans.busyReads` or `command.busyReads` is set. */
void Sim_Chip_Init(Sim_Chip *chip, const Sim_Chip_Row &row, Sim_Placement placement);

/* One access on the bus. Address and register 0 to 255; above 31 nothing answers. */
uint16_t Sim_Chip_Read(Sim_Chip *chip, uint8_t address, uint8_t number);
void Sim_Chip_Write(Sim_Chip *chip, uint8_t address, uint8_t number, uint16_t value);

/* Plugs the line of a hardware port into a far end with these abilities; 0 pulls it out. A port
 * that is not there is left alone. */
void Sim_Chip_Plug(Sim_Chip *chip, uint8_t hardwarePort, uint8_t abilities);

/* The link of a hardware port: its PHY's, or without one the best that the line allows. */
Sim_Link Sim_Chip_Link(const Sim_Chip &chip, uint8_t hardwarePort);
