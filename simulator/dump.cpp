#include "simulator/dump.h"

#include "simulator/registers.h"

#include <algorithm>

namespace
{

constexpr uint16_t NOBODY = 0xFFFF;

using Block = uint16_t[SIM_BUS_REGISTERS];

bool somebody_answers(const Block &block)
{
    return std::ranges::any_of(block, [](uint16_t value) { return value != NOBODY; });
}

void read_block(Sim_Chip *chip, uint8_t address, Block *block)
{
    for (uint8_t number = 0; number < SIM_BUS_REGISTERS; ++number) {
        (*block)[number] = Sim_Registers_Read(chip, address, number);
    }
}

/* Reads leave their marks in a chip (a lost link, an operation that ends): this one is a copy. */
void dump_blocks(Sim_Chip *copy, FILE *file)
{
    for (Sim_Phy &phy : copy->phys) {
        phy.page = 0;
    }
    for (unsigned address = 0; address < 32; ++address) {
        Block block;
        read_block(copy, static_cast<uint8_t>(address), &block);
        for (unsigned number = 0; number < SIM_BUS_REGISTERS && somebody_answers(block); ++number) {
            fprintf(file, "register %02x %02x %04x\n", address, number,
                    static_cast<unsigned>(block[number]));
        }
    }
}

void dump_pages(const Sim_Phy &phy, unsigned port, FILE *file)
{
    fprintf(file, "page %02x %02x\n", port, static_cast<unsigned>(phy.page));
    for (unsigned page = 1; page < SIM_PHY_PAGES; ++page) {
        for (unsigned number = 0; number < SIM_PHY_REGISTERS; ++number) {
            const unsigned value = phy.pages[page][number];
            if (value != 0) {
                fprintf(file, "paged %02x %02x %02x %04x\n", port, page, number, value);
            }
        }
    }
}

void dump_vlan(const Sim_Vlan_Entry &entry, unsigned vid, FILE *file)
{
    fprintf(file, "vlan %03x %03x %04x %04x %04x\n", vid, static_cast<unsigned>(entry.database),
            static_cast<unsigned>(entry.data[0]), static_cast<unsigned>(entry.data[1]),
            static_cast<unsigned>(entry.data[2]));
}

} // namespace

void Sim_Dump(const Sim_Chip &chip, FILE *file)
{
    static Sim_Chip copy; /* too large for the stack */
    copy = chip;
    fprintf(file, "chip %03x %x\n", static_cast<unsigned>(chip.row.identifier),
            static_cast<unsigned>(chip.row.revision));
    dump_blocks(&copy, file);
    for (unsigned port = 0; port < SIM_PORTS; ++port) {
        if (((chip.row.phyPorts >> port) & 1U) != 0) {
            dump_pages(chip.phys[port], port, file);
        }
    }
    for (unsigned vid = 0; vid < SIM_VLANS; ++vid) {
        if (chip.vlans.entries[vid].valid) {
            dump_vlan(chip.vlans.entries[vid], vid, file);
        }
    }
}
