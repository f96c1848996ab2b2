#pragma once

#include "switch/chip/driver.h"
#include "tests/simulator/register_model.h"

#include <array>
#include <cstdint>
#include <map>

/* What the driver's VLAN operations must make of a chip's table: the words of each entry, packed
 * and unpacked by hand from the register map. */

struct Vlan_Words {
    std::array<uint16_t, 3> data; /* of registers 7 to 9 */
    uint16_t database;            /* bits of register 5 */
};

struct Vlan_Model {
    Model_Sets sets;
    std::string hardwarePorts; /* as in Register_Model */
    std::map<uint32_t, Vlan_Words> entries;
};

/* Each carries out one operation on the model and returns the driver's status. */
int model_vlan_flush(Vlan_Model *model);
int model_vlan_add(Vlan_Model *model, const Vlan_Table_Entry &entry);
int model_vlan_first(const Vlan_Model &model, Vlan_Table_Entry *entry);
int model_vlan_next(const Vlan_Model &model, Vlan_Table_Entry *entry);
