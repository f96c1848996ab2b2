#include "simulator/vlan_table.h"

#include <cstring>

namespace
{

constexpr uint16_t BUSY = 0x8000;
constexpr int OPERATION_SHIFT = 12;
constexpr uint16_t OPERATION_KEPT = 0x7000;
constexpr uint16_t VALID = 0x1000;
constexpr uint16_t VID_KEPT = 0x1FFF;
constexpr uint16_t VID_BITS = 0x0FFF;

void flush(Sim_Vlan_Table *table)
{
    std::memset(table->entries, 0, sizeof table->entries);
}

void load(Sim_Vlan_Table *table)
{
    Sim_Vlan_Entry entry{};
    if ((table->vid & VALID) != 0) {
        entry.valid = true;
        entry.database = table->operation & table->databaseBits;
        std::memcpy(entry.data, table->data, sizeof entry.data);
    }
    table->entries[table->vid & VID_BITS] = entry;
}

/* Answers the highest ID without the valid flag when there is no entry at all. */
void get_next(Sim_Vlan_Table *table)
{
    Sim_Vlan_Entry found{};
    unsigned vid = table->vid & VID_BITS;
    for (int steps = 0; steps < SIM_VLANS && !found.valid; ++steps) {
        vid = (vid + 1) % SIM_VLANS;
        found = table->entries[vid];
    }
    table->vid = static_cast<uint16_t>(found.valid ? VALID | vid : VID_BITS);
    table->operation = static_cast<uint16_t>((table->operation & OPERATION_KEPT) | found.database);
    std::memcpy(table->data, found.data, sizeof table->data);
}

/* Other operation numbers do nothing. */
void finish(Sim_Vlan_Table *table)
{
    table->busy = false;
    switch (table->operation >> OPERATION_SHIFT) {
    case SIM_VLAN_FLUSH:
        flush(table);
        break;
    case SIM_VLAN_LOAD:
        load(table);
        break;
    case SIM_VLAN_GET_NEXT:
        get_next(table);
        break;
    default:
        break;
    }
}

void write_operation(Sim_Vlan_Table *table, uint16_t value)
{
    table->operation = value & (OPERATION_KEPT | table->databaseBits);
    if ((value & BUSY) == 0) {
        return;
    }
    table->busy = true;
    table->readsLeft = table->busyReads;
    if (table->readsLeft == 0) {
        finish(table);
    }
}

uint16_t read_operation(Sim_Vlan_Table *table)
{
    if (table->busy && table->readsLeft == 0) {
        finish(table);
    }
    if (table->busy) {
        --table->readsLeft;
        return table->operation | BUSY;
    }
    return table->operation;
}

} // namespace

void Sim_Vlan_Table_Init(Sim_Vlan_Table *table, uint16_t databaseBits)
{
    *table = {};
    table->databaseBits = databaseBits;
}

uint16_t Sim_Vlan_Table_Read(Sim_Vlan_Table *table, uint8_t number)
{
    if (number == SIM_VLAN_OPERATION) {
        return read_operation(table);
    }
    return number == SIM_VLAN_ID ? table->vid : table->data[number - SIM_VLAN_FIRST_DATA];
}

void Sim_Vlan_Table_Write(Sim_Vlan_Table *table, uint8_t number, uint16_t value)
{
    if (table->busy || table->databaseBits == 0) {
        return;
    }
    if (number == SIM_VLAN_OPERATION) {
        write_operation(table, value);
    } else if (number == SIM_VLAN_ID) {
        table->vid = value & VID_KEPT;
    } else {
        table->data[number - SIM_VLAN_FIRST_DATA] = value;
    }
}
