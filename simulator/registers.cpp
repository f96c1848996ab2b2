#include "simulator/registers.h"

#include <algorithm>
#include <iterator>

namespace
{

constexpr uint16_t NOBODY = 0xFFFF;

enum class Device : uint8_t { NONE, PHY, PORT, GLOBAL, SECOND_GLOBAL, REMAINING };

struct Place {
    Device device;
    uint8_t port; /* hardware port of a PHY or a port's registers */
};

/* Where a layout has its SMI devices; ports and PHYs are rows from these addresses on. */
struct Map {
    bool afterBase;
    uint8_t phys;
    uint8_t ports;
    uint8_t global;
    uint8_t secondGlobal;
    uint8_t remaining;
};

/* The older chips have no second global block: it stands where the remaining one does. */
constexpr Map MAPS[] = {
    /* SIM_LAYOUT_NEWER */ {false, 0, 0x10, 0x1B, 0x1D, 0x1C},
    /* SIM_LAYOUT_OLDER_A */ {true, 0, 8, 15, 14, 14},
    /* SIM_LAYOUT_OLDER_B */ {true, 0, 8, 15, 7, 7},
};

enum Port_Register : uint8_t {
    PORT_STATUS = 0,
    PORT_IDENTIFIER = 3,
    PORT_CONTROL = 4,
    PORT_BASED_VLANS = 6,
    PORT_DEFAULT_VLAN = 7
};

constexpr int IDENTIFIER_SHIFT = 4;
constexpr uint16_t CONTROL_AT_RESET = 0x0030; /* disabled; IP and user priority count */
constexpr uint16_t DEFAULT_VLAN_AT_RESET = 1;

struct Register_Value {
    uint8_t number;
    uint16_t value;
};

/* Two bits for each DSCP, its highest two; the classes that IEEE 802.1Q recommends for the user
 * priorities where there are four; no mirroring. */
constexpr Register_Value GLOBAL_AT_RESET[] = {
    {18, 0x5555}, {19, 0x5555}, {20, 0xAAAA}, {21, 0xAAAA},
    {22, 0xFFFF}, {23, 0xFFFF}, {24, 0xFA50}, {26, 0xFF00},
};

bool has(uint16_t mask, int hardwarePort)
{
    return hardwarePort >= 0 && hardwarePort < SIM_PORTS && ((mask >> hardwarePort) & 1) != 0;
}

int base_of(const Sim_Chip &chip, const Map &map)
{
    return map.afterBase && chip.placement.mode == SIM_DIRECT ? chip.placement.address : 0;
}

Place find_place(const Sim_Chip &chip, uint8_t address)
{
    const Map &map = MAPS[chip.row.layout];
    const int number = address - base_of(chip, map);
    if (has(chip.row.phyPorts, number - map.phys)) {
        return {Device::PHY, static_cast<uint8_t>(number - map.phys)};
    }
    if (has(chip.row.validPorts, number - map.ports)) {
        return {Device::PORT, static_cast<uint8_t>(number - map.ports)};
    }
    if (number == map.global) {
        return {Device::GLOBAL, 0};
    }
    if (number == map.remaining) {
        return {Device::REMAINING, 0};
    }
    return {number == map.secondGlobal ? Device::SECOND_GLOBAL : Device::NONE, 0};
}

/* Newer: PHY found 12, link 11, full duplex 10, speed 8-9. Older: link 12, full duplex 9, speed
 * 8. */
uint16_t port_status(const Sim_Chip &chip, uint8_t port)
{
    const Sim_Link link = Sim_Chip_Link(chip, port);
    const unsigned up = link.up ? 1 : 0;
    const unsigned full = link.full ? 1 : 0;
    if (chip.row.layout == SIM_LAYOUT_NEWER) {
        const unsigned found = has(chip.row.phyPorts, port) ? 1 : 0;
        const unsigned speed = link.speed;
        return static_cast<uint16_t>((found << 12) | (up << 11) | (full << 10) | (speed << 8));
    }
    const unsigned fast = link.speed == 1 ? 1 : 0;
    return static_cast<uint16_t>((up << 12) | (full << 9) | (fast << 8));
}

uint16_t read_port(const Sim_Chip &chip, uint8_t port, uint8_t number)
{
    switch (number) {
    case PORT_STATUS:
        return port_status(chip, port);
    case PORT_IDENTIFIER:
        return static_cast<uint16_t>((chip.row.identifier << IDENTIFIER_SHIFT) | chip.row.revision);
    default:
        return chip.ports[port][number];
    }
}

void write_port(Sim_Chip *chip, uint8_t port, uint8_t number, uint16_t value)
{
    if (number != PORT_STATUS && number != PORT_IDENTIFIER) {
        chip->ports[port][number] = value;
    }
}

bool of_vlan_table(uint8_t number)
{
    return number >= SIM_VLAN_OPERATION && number <= SIM_VLAN_LAST_DATA;
}

void reset_ports(Sim_Chip *chip)
{
    for (uint8_t port = 0; port < SIM_PORTS; ++port) {
        const unsigned others = chip->row.validPorts & ~(1U << port);
        chip->ports[port][PORT_CONTROL] = CONTROL_AT_RESET;
        chip->ports[port][PORT_BASED_VLANS] = static_cast<uint16_t>(others);
        chip->ports[port][PORT_DEFAULT_VLAN] = DEFAULT_VLAN_AT_RESET;
        Sim_Phy_Init(&chip->phys[port], has(chip->row.gigabitPorts, port), chip->partners[port]);
    }
}

} // namespace

void Sim_Chip_Init(Sim_Chip *chip, const Sim_Chip_Row &row, Sim_Placement placement)
{
    *chip = {};
    chip->row = row;
    chip->placement = placement;
    std::ranges::copy(SIM_BOARD_PARTNERS, chip->partners);
    reset_ports(chip);
    for (const Register_Value &reset : GLOBAL_AT_RESET) {
        chip->global[reset.number] = reset.value;
    }
    Sim_Vlan_Table_Init(&chip->vlans, row.databaseBits);
}

uint16_t Sim_Registers_Read(Sim_Chip *chip, uint8_t address, uint8_t number)
{
    const Place place = find_place(*chip, address);
    if (address >= 32 || number >= SIM_BUS_REGISTERS) {
        return NOBODY;
    }
    switch (place.device) {
    case Device::PHY:
        return Sim_Phy_Read(&chip->phys[place.port], number);
    case Device::PORT:
        return read_port(*chip, place.port, number);
    case Device::GLOBAL:
        return of_vlan_table(number) ? Sim_Vlan_Table_Read(&chip->vlans, number)
                                     : chip->global[number];
    case Device::SECOND_GLOBAL:
        return chip->secondGlobal[number];
    case Device::REMAINING:
        return chip->remaining[number];
    default:
        return NOBODY;
    }
}

void Sim_Registers_Write(Sim_Chip *chip, uint8_t address, uint8_t number, uint16_t value)
{
    const Place place = find_place(*chip, address);
    if (address >= 32 || number >= SIM_BUS_REGISTERS) {
        return;
    }
    switch (place.device) {
    case Device::PHY:
        Sim_Phy_Write(&chip->phys[place.port], number, value);
        break;
    case Device::PORT:
        write_port(chip, place.port, number, value);
        break;
    case Device::GLOBAL:
        if (of_vlan_table(number)) {
            Sim_Vlan_Table_Write(&chip->vlans, number, value);
        } else {
            chip->global[number] = value;
        }
        break;
    case Device::SECOND_GLOBAL:
        chip->secondGlobal[number] = value;
        break;
    case Device::REMAINING:
        chip->remaining[number] = value;
        break;
    default:
        break;
    }
}

void Sim_Chip_Plug(Sim_Chip *chip, uint8_t hardwarePort, uint8_t abilities)
{
    if (has(chip->row.validPorts, hardwarePort)) {
        chip->partners[hardwarePort] = abilities;
        Sim_Phy_Plug(&chip->phys[hardwarePort], abilities);
    }
}

Sim_Link Sim_Chip_Link(const Sim_Chip &chip, uint8_t hardwarePort)
{
    if (!has(chip.row.validPorts, hardwarePort)) {
        return SIM_LINK_DOWN;
    }
    if (has(chip.row.phyPorts, hardwarePort)) {
        return chip.phys[hardwarePort].link;
    }
    const bool gigabit = has(chip.row.gigabitPorts, hardwarePort);
    return Sim_Link_Of(gigabit ? SIM_UP_TO_1000 : SIM_UP_TO_100, chip.partners[hardwarePort]);
}
