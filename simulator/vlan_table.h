#pragma once

#include <cstdint>

/*
 * The engine of the simulated chip's VLAN table behind global registers 5 to 9: a write of register
 * 5 with the busy bit starts an operation on registers 6 to 9, which ends when the busy bit reads
 * as clear. While it is busy, writes to its registers are lost and their old contents are read, so
 * that a driver that does not wait is found out.
 */

inline constexpr int SIM_VLANS = 4096;
inline constexpr uint8_t SIM_VLAN_OPERATION = 5;  /* busy 15, operation 12-14, database number */
inline constexpr uint8_t SIM_VLAN_ID = 6;         /* VLAN ID 0-11, valid flag 12 */
inline constexpr uint8_t SIM_VLAN_FIRST_DATA = 7; /* member tags, port states: kept as written */
inline constexpr uint8_t SIM_VLAN_LAST_DATA = 9;

enum Sim_Vlan_Operation : uint8_t {
    SIM_VLAN_FLUSH = 1,   /* removes every entry */
    SIM_VLAN_LOAD = 3,    /* stores the entry; without the valid flag, removes it */
    SIM_VLAN_GET_NEXT = 4 /* the next valid entry after an ID, wrapping after 4095 */
};

struct Sim_Vlan_Entry {
    uint16_t data[3];
    uint16_t database; /* as it stands in the operation register */
    bool valid;
};

struct Sim_Vlan_Table {
    uint16_t databaseBits; /* of the operation register; 0: no table, all registers read 0 */
    bool busy;
    uint32_t busyReads; /* how often an operation lets register 5 read busy; any time settable */
    uint32_t readsLeft;
    uint16_t operation;
    uint16_t vid; /* with the valid flag */
    uint16_t data[3];
    Sim_Vlan_Entry entries[SIM_VLANS];
};

/* An empty table, idle, that is never seen busy. */
void Sim_Vlan_Table_Init(Sim_Vlan_Table *table, uint16_t databaseBits);

/* Reads or writes one of registers 5 to 9. */
uint16_t Sim_Vlan_Table_Read(Sim_Vlan_Table *table, uint8_t number);
void Sim_Vlan_Table_Write(Sim_Vlan_Table *table, uint8_t number, uint16_t value);
