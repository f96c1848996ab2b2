#include "tests/simulator/driver_on_simulator.h"

namespace
{

constexpr uint8_t BASE = 16; /* also the chip's own address in indirect mode */

} // namespace

void PrintTo(const Driven_Chip &chip, std::ostream *stream)
{
    *stream << chip.name;
}

bool has(const Driven_Chip &chip, const std::string &feature)
{
    return std::string(chip.features).find(" " + feature + " ") != std::string::npos;
}

const std::vector<Driven_Chip> &driven_chips()
{
    // clang-format off
    static const std::vector<Driven_Chip> CHIPS = {
        {"Id105", 0x105, 1U << 13, 0, 6, "012345",
         " vlan disc prio add core p123 bytes mirror frame prio3 detect p0div32 erdiv32 state override"
         " gigabit gigaport ", 63},
        {"Id095", 0x095, 1U << 11, 0, 11, "0123456789A",
         " vlan disc prio add core p123 bytes mirror frame prio3 detect p0div32 erdiv32 ", 63},
        {"Id106", 0x106, 1U << 15, 0, 8, "01234567",
         " vlan disc prio add core p123 bytes mirror frame prio3 detect p0div28 erdiv28 state gigabit ", 63},
        {"Id1A7", 0x1A7, 1U << 16, 0, 10, "0123456789",
         " vlan disc prio add core p123 bytes mirror frame prio3 detect p0div28 erdiv28 state gigaport ", 63},
        {"Id083", 0x083, 1U << 9, 0, 10, "0123456789",
         " prio add p123 bytes frame prio3 detect p0code erdiv32 ", 0},
        {"Id165", 0x165, 1U << 22, 0, 6, "012345",
         " vlan disc prio add mirror prio3 detect erdiv32 override gigabit gigaport ", 63},
        {"Id352", 0x352, 1U << 27, 0, 7, "0123456",
         " vlan disc prio add mirror prio3 detect erdiv32 override gigabit gigaport ", 63},
        {"Id065", 0x065, 1U << 17, 0, 6, "012345",
         " vlan disc prio frame prio3 erdiv40 extended linkphy ", 63},
        {"Id063", 0x063, 1U << 4, 0, 6, "012345",
         " vlan prio add p123 bytes frame p0code ercode ", 15},
        {"Id052", 0x052, 1U << 2, 0, 6, "012345", " vlan prio add frame ", 15},
        {"Id060", 0x060, 1U << 0, 0, 6, "012345", " prio frame ", 0},
        {"Id250", 0x250, 0, 1U << 9, 4, "0156",
         " vlan disc prio bytes mirror frame prio3 p0code erdiv40 state ", 63},
        {"Id071", 0x071, 0, 1U << 4, 7, "0123456",
         " vlan disc prio mirror frame prio3 erdiv40 state ", 63},
        {"IdC00", 0xC00, 0, 1U << 11, 11, "0123456789A", " frame detect gigabit gigaport ", 0},
    };
    // clang-format on
    return CHIPS;
}

void PrintTo(const Driven_Case &driven, std::ostream *stream)
{
    *stream << driven.chip.name << (driven.mode == SIM_DIRECT ? "Direct" : "Indirect")
            << (driven.busyReads != 0 ? "Busy" : "");
}

std::vector<Driven_Case> driven_cases(bool (*wanted)(const Driven_Case &))
{
    std::vector<Driven_Case> cases;
    for (const Driven_Chip &chip : driven_chips()) {
        cases.push_back({chip, SIM_DIRECT, 0});
        cases.push_back({chip, SIM_INDIRECT, 0});
        cases.push_back({chip, SIM_INDIRECT, 3});
    }
    std::erase_if(cases, [&](const auto &driven) { return wanted != nullptr && !wanted(driven); });
    return cases;
}

bool is_indirect(const Driven_Case &driven)
{
    return driven.mode == SIM_INDIRECT;
}

std::string driven_name(const testing::TestParamInfo<Driven_Case> &row)
{
    return testing::PrintToString(row.param);
}

SW_Sys_Config driver_configuration(const Driven_Chip &chip, Sim_Access_Mode mode)
{
    SW_Sys_Config config = {};
    config.cpuPort = chip.identifier == 0x250 ? 1 : 3; /* that one has no port 3 */
    config.initPorts = 1;
    config.hooks.readRegister = MDIO_Bus_Read;
    config.hooks.writeRegister = MDIO_Bus_Write;
    config.accessMode = mode == SIM_INDIRECT ? SW_ACCESS_INDIRECT : 0;
    config.address = BASE;
    return config;
}

void DriverOnSimulator::power_on()
{
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        if (row.identifier == GetParam().chip.identifier) {
            Sim_Chip_Init(chip.get(), row, {GetParam().mode, BASE});
        }
    }
    chip->vlans.busyReads = GetParam().busyReads;
    chip->command.busyReads = GetParam().busyReads;
}

void DriverOnSimulator::SetUp()
{
    power_on();
    ASSERT_TRUE(Sim_Seam_Install(&seam, chip.get()));
}

void DriverOnSimulator::TearDown()
{
    EXPECT_TRUE(Sim_Layer_Remove(&seam));
}

void DriverOnSimulator::load()
{
    const SW_Sys_Config config = driver_configuration(GetParam().chip, GetParam().mode);
    ASSERT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    ASSERT_EQ(swSysEnable(&device), SW_STATUS_OK);
}

void DriverOnSimulator::let_the_last_write_end()
{
    while (chip->command.busy) {
        Sim_Chip_Read(chip.get(), BASE, 0);
    }
}

uint8_t DriverOnSimulator::hardware_port(unsigned port) const
{
    const char letter = GetParam().chip.hardwarePorts[port];
    return static_cast<uint8_t>(letter == 'A' ? 10 : letter - '0');
}

bool DriverOnSimulator::has_phy(unsigned port) const
{
    return ((chip->row.phyPorts >> hardware_port(port)) & 1) != 0;
}
