#pragma once

#include "simulator/trace.h"
#include "switch/chip/driver.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

/*
 * The real driver on the simulated chip: every row of the chip table, in direct and in indirect
 * mode.
 */

/* What the operations make of a chip, by the masks of its family bit, worked out by hand. */
struct Driven_Chip {
    const char *name;
    uint16_t identifier;
    uint32_t familyA;
    uint32_t familyB;
    uint8_t ports;
    const char *hardwarePorts; /* of driver port 0, 1, ...: a letter each, '0' to '9', 'A' */
    const char *features;      /* words with a blank before and behind */
    unsigned databases;        /* highest database number; 0: no VLAN table */
};

void PrintTo(const Driven_Chip &chip, std::ostream *stream);

/*
 * Words of `features`:
 *   vlan       VLAN table, 802.1Q mode, forced VLAN ID
 *   disc       discard tagged and untagged
 *   prio       egress mode 0 to 2 and the priorities
 *   add        egress mode 3
 *   core       core tag
 *   p123       priority 1 to 3 rate flags
 *   bytes      bytes count
 *   mirror     mirroring
 *   frame      frame size
 *   prio3      default priority of 3 bits
 *   detect     PHY detect
 *   p0code     priority 0 rate as code 0 to 7; as divisor: p0div32, p0div28
 *   ercode     egress rate as code 0 to 7; as divisor: erdiv32, erdiv28, erdiv40
 *   state      port state in the VLAN table
 *   override   VLAN priority there
 *   extended   extended fields there
 *   gigabit    PHYs at 1000 Mbit/s
 *   gigaport   ports without PHY at 1000 Mbit/s
 *   linkphy    link facts from the PHY
 */
bool has(const Driven_Chip &chip, const std::string &feature);

/* All rows. */
const std::vector<Driven_Chip> &driven_chips();

struct Driven_Case {
    Driven_Chip chip;
    Sim_Access_Mode mode;
    uint32_t busyReads; /* of the VLAN table and, in indirect mode, of each command */
};

void PrintTo(const Driven_Case &driven, std::ostream *stream);

/* Every chip direct, indirect, and indirect with busy bits that take their time; those only that
 * `wanted` says yes to, where there is one. */
std::vector<Driven_Case> driven_cases(bool (*wanted)(const Driven_Case &) = nullptr);
bool is_indirect(const Driven_Case &driven);
std::string driven_name(const testing::TestParamInfo<Driven_Case> &row);

/* The configuration of the engine's bring-up for a way to the chip. */
SW_Sys_Config driver_configuration(const Driven_Chip &chip, Sim_Access_Mode mode);

/* Puts the chip of the case behind the seam; nothing real can be reached. */
class DriverOnSimulator : public testing::TestWithParam<Driven_Case>
{
protected:
    void SetUp() override;
    void TearDown() override;

    /* The chip of the case as it is after power-on. */
    void power_on();
    void load();
    /* An indirect write goes on after it returns: ends it, so that the chip can be looked into. */
    void let_the_last_write_end();
    unsigned ports() const { return GetParam().chip.ports; }
    uint8_t hardware_port(unsigned port) const;
    bool has_phy(unsigned port) const;
    bool supports(const std::string &feature) const { return has(GetParam().chip, feature); }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
    Sim_Layer seam{};
    SW_Device device{};
};
