/* The simulated chip on the bus: every row, its addresses, reset values and read-only registers. */

#include "simulator/chip.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <memory>
#include <string>

namespace
{

constexpr uint8_t BASE = 16;
constexpr uint16_t NOBODY = 0xFFFF;

/* Places in direct mode with base 16, worked out by hand for each layout. */
struct Row {
    const char *name;
    uint16_t identifier;
    int ports;
    uint16_t validPorts;
    uint16_t phyPorts;
    int firstPhy;
    int firstPort;
    int global;
    int secondGlobal; /* 0: none of its own */
    int remaining;
    uint16_t controlPorts; /* port 1: to which ports it may send after power-on */
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.name;
}

// clang-format off
constexpr Row ROWS[] = {
    /*         id    ports valid   PHYs   first PHY, port  global second remaining */
    {"Id105", 0x105,  6, 0x003F, 0x0007,  0, 16, 27, 29, 28, 0x003D},
    {"Id095", 0x095, 11, 0x07FF, 0x00FF,  0, 16, 27, 29, 28, 0x07FD},
    {"Id106", 0x106,  8, 0x00FF, 0x00FF,  0, 16, 27, 29, 28, 0x00FD},
    {"Id1A7", 0x1A7, 10, 0x03FF, 0x0000,  0, 16, 27, 29, 28, 0x03FD},
    {"Id083", 0x083, 10, 0x03FF, 0x00FF,  0, 16, 27, 29, 28, 0x03FD},
    {"Id165", 0x165,  6, 0x003F, 0x001F,  0, 16, 27, 29, 28, 0x003D},
    {"Id352", 0x352,  7, 0x007F, 0x001F,  0, 16, 27, 29, 28, 0x007D},
    {"Id065", 0x065,  6, 0x003F, 0x001F, 16, 24, 31,  0, 30, 0x003D},
    {"Id063", 0x063,  6, 0x003F, 0x001F, 16, 24, 31,  0, 30, 0x003D},
    {"Id052", 0x052,  6, 0x003F, 0x001F, 16, 24, 31,  0, 30, 0x003D},
    {"Id060", 0x060,  6, 0x003F, 0x001F, 16, 24, 31,  0, 30, 0x003D},
    {"Id250", 0x250,  4, 0x0063, 0x0003, 16, 24, 31,  0, 23, 0x0061},
    {"Id071", 0x071,  7, 0x007F, 0x001F, 16, 24, 31,  0, 23, 0x007D},
    {"IdC00", 0xC00, 11, 0x07FF, 0x01FF,  0, 16, 27, 29, 28, 0x07FD},
};
// clang-format on

const Sim_Chip_Row &row_of(uint16_t identifier)
{
    for (const Sim_Chip_Row &candidate : Sim_Chip_Rows()) {
        if (candidate.identifier == identifier) {
            return candidate;
        }
    }
    ADD_FAILURE() << "no such row";
    return Sim_Board_Chip();
}

uint8_t address_of(int number)
{
    return static_cast<uint8_t>(number);
}

class SimulatedChip : public testing::TestWithParam<Row>
{
protected:
    void SetUp() override { Sim_Chip_Init(chip.get(), row(), {SIM_DIRECT, BASE}); }

    const Sim_Chip_Row &row() const { return row_of(GetParam().identifier); }

    uint16_t read(int address, int number) const
    {
        return Sim_Chip_Read(chip.get(), address_of(address), address_of(number));
    }
    void write(int address, int number, uint16_t value) const
    {
        Sim_Chip_Write(chip.get(), address_of(address), address_of(number), value);
    }
    static bool has(uint16_t mask, int port) { return ((mask >> port) & 1) != 0; }

    /* Whether something stands at a bus address, by the table above. */
    static bool answers(int address)
    {
        const Row &p = GetParam();
        const int phy = address - p.firstPhy;
        const int port = address - p.firstPort;
        return (phy >= 0 && phy < 16 && has(p.phyPorts, phy)) ||
               (port >= 0 && port < 16 && has(p.validPorts, port)) || address == p.global ||
               (p.secondGlobal != 0 && address == p.secondGlobal) || address == p.remaining;
    }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
};

TEST_P(SimulatedChip, HasThePortsOfItsRow)
{
    EXPECT_EQ(row().validPorts, GetParam().validPorts);
    EXPECT_EQ(row().phyPorts, GetParam().phyPorts);
    EXPECT_EQ(std::popcount(row().validPorts), GetParam().ports);
}

TEST_P(SimulatedChip, AnswersItsIdentifierAtEveryPort)
{
    for (int port = 0; port < SIM_PORTS; ++port) {
        if (has(GetParam().validPorts, port)) {
            EXPECT_EQ(read(GetParam().firstPort + port, 3) >> 4, GetParam().identifier) << port;
            EXPECT_EQ(read(GetParam().firstPort + port, 3) & 0xF, row().revision) << port;
        }
    }
}

TEST_P(SimulatedChip, AnswersAllOnesWhereNothingStands)
{
    for (int address = 0; address < 256; ++address) {
        bool only_ones = true;
        for (int number = 0; number < 32; ++number) {
            if (address >= 32 || !answers(address)) {
                write(address, number, 0x1234);
                EXPECT_EQ(read(address, number), NOBODY) << address << ' ' << number;
            }
            only_ones = only_ones && read(address, number) == NOBODY;
        }
        EXPECT_EQ(only_ones, address >= 32 || !answers(address)) << address;
    }
}

TEST_P(SimulatedChip, AnswersAllOnesBeyondRegister31AndKeepsNothing)
{
    const auto before = std::make_unique<Sim_Chip>(*chip);
    for (int address = 0; address < 32; ++address) {
        for (const int number : {32, 36, 255}) {
            write(address, number, 0x1234);
            EXPECT_EQ(read(address, number), NOBODY) << address << ' ' << number;
        }
    }
    EXPECT_EQ(std::memcmp(chip.get(), before.get(), sizeof *chip), 0);
}

TEST_P(SimulatedChip, ResetsItsPortRegisters)
{
    const int port = GetParam().firstPort + 1;
    EXPECT_EQ(read(port, 4), 0x0030);
    EXPECT_EQ(read(port, 6), GetParam().controlPorts);
    EXPECT_EQ(read(port, 7), 0x0001);
    for (const int number : {1, 2, 5, 8, 9, 10, 11, 31}) {
        EXPECT_EQ(read(port, number), 0) << number;
    }
}

TEST_P(SimulatedChip, ResetsItsGlobalRegisters)
{
    constexpr struct {
        int number;
        uint16_t value;
    } EXPECTED[] = {{0, 0},       {4, 0},       {5, 0},       {6, 0},       {16, 0},
                    {17, 0},      {18, 0x5555}, {19, 0x5555}, {20, 0xAAAA}, {21, 0xAAAA},
                    {22, 0xFFFF}, {23, 0xFFFF}, {24, 0xFA50}, {26, 0xFF00}, {31, 0}};
    for (const auto &expected : EXPECTED) {
        EXPECT_EQ(read(GetParam().global, expected.number), expected.value) << expected.number;
    }
    EXPECT_EQ(read(GetParam().remaining, 0), 0);
}

TEST_P(SimulatedChip, KeepsWhatIsWrittenApartForEachDevice)
{
    uint16_t value = 0x4000;
    const auto each_place = [&](auto &&act) {
        for (int port = 0; port < SIM_PORTS; ++port) {
            if (has(GetParam().validPorts, port)) {
                for (const int number : {1, 2, 4, 5, 6, 7, 8, 9, 10, 24, 31}) {
                    act(GetParam().firstPort + port, number);
                }
            }
        }
        for (const int number : {0, 4, 10, 16, 24, 26, 31}) {
            act(GetParam().global, number);
            act(GetParam().remaining, number);
            if (GetParam().secondGlobal != 0) {
                act(GetParam().secondGlobal, number);
            }
        }
    };
    each_place([&](int address, int number) { write(address, number, value++); });
    value = 0x4000;
    each_place([&](int address, int number) {
        EXPECT_EQ(read(address, number), value++) << address << ' ' << number;
    });
}

TEST_P(SimulatedChip, KeepsStatusAndIdentifierWhenWritten)
{
    const int port = GetParam().firstPort;
    for (const int number : {0, 3}) {
        const uint16_t before = read(port, number);
        write(port, number, static_cast<uint16_t>(~before));
        EXPECT_EQ(read(port, number), before) << number;
    }
}

TEST_P(SimulatedChip, HasPhysThatAreNoSwitchIdentifier)
{
    for (const Row &other : ROWS) {
        EXPECT_NE(SIM_PHY_IDENTIFIER_2 >> 4, other.identifier);
    }
    EXPECT_NE(SIM_PHY_IDENTIFIER_2 >> 4 & 0xFF8, 0xC00);
    for (int port = 0; port < SIM_PORTS; ++port) {
        if (has(GetParam().phyPorts, port)) {
            EXPECT_EQ(read(GetParam().firstPhy + port, 2), 0x5349);
            EXPECT_EQ(read(GetParam().firstPhy + port, 3), 0xB5A1);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, SimulatedChip, testing::ValuesIn(ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

/* Port status of the board's five lines on every chip, by hardware port 0 to 4: WAN, LAN, CPU,
 * SFP1, SFP0; 0xFFFF where the chip has no such port. */
struct Status_Row {
    const char *name;
    uint16_t identifier;
    uint16_t wan;
    uint16_t lan;
    uint16_t cpu;
    uint16_t sfp1;
    uint16_t sfp0;
};

void PrintTo(const Status_Row &row, std::ostream *stream)
{
    *stream << row.name;
}

/* Newer: PHY 0x1000, link 0x0800, full 0x0400, speed 0x0000, 0x0100, 0x0200, none 0x0300.
 * Older: link 0x1000, full 0x0200, 100 Mbit/s 0x0100. */
// clang-format off
constexpr Status_Row STATUS_ROWS[] = {
    /*               WAN     LAN     CPU     SFP1    SFP0 */
    {"Id105", 0x105, 0x1D00, 0x1E00, 0x1D00, 0x0300, 0x0E00},
    {"Id095", 0x095, 0x1D00, 0x1D00, 0x1D00, 0x1300, 0x1D00},
    {"Id106", 0x106, 0x1D00, 0x1E00, 0x1D00, 0x1300, 0x1E00},
    {"Id1A7", 0x1A7, 0x0D00, 0x0E00, 0x0D00, 0x0300, 0x0E00},
    {"Id083", 0x083, 0x1D00, 0x1D00, 0x1D00, 0x1300, 0x1D00},
    {"Id165", 0x165, 0x1D00, 0x1E00, 0x1D00, 0x1300, 0x1E00},
    {"Id352", 0x352, 0x1D00, 0x1E00, 0x1D00, 0x1300, 0x1E00},
    {"Id065", 0x065, 0x1300, 0x1300, 0x1300, 0x0000, 0x1300},
    {"Id063", 0x063, 0x1300, 0x1300, 0x1300, 0x0000, 0x1300},
    {"Id052", 0x052, 0x1300, 0x1300, 0x1300, 0x0000, 0x1300},
    {"Id060", 0x060, 0x1300, 0x1300, 0x1300, 0x0000, 0x1300},
    {"Id250", 0x250, 0x1300, 0x1300, 0xFFFF, 0xFFFF, 0xFFFF},
    {"Id071", 0x071, 0x1300, 0x1300, 0x1300, 0x0000, 0x1300},
    {"IdC00", 0xC00, 0x1D00, 0x1E00, 0x1D00, 0x1300, 0x1E00},
};
// clang-format on

class SimulatedPortStatus : public testing::TestWithParam<Status_Row>
{
};

TEST_P(SimulatedPortStatus, FollowsTheLines)
{
    const auto chip = std::make_unique<Sim_Chip>();
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        if (row.identifier == GetParam().identifier) {
            Sim_Chip_Init(chip.get(), row, {SIM_DIRECT, BASE});
        }
    }
    const int first = chip->row.layout == SIM_LAYOUT_NEWER ? 16 : 24;
    const uint16_t expected[] = {GetParam().wan, GetParam().lan, GetParam().cpu, GetParam().sfp1,
                                 GetParam().sfp0};
    for (int port = 0; port < 5; ++port) {
        EXPECT_EQ(Sim_Chip_Read(chip.get(), address_of(first + port), 0), expected[port]) << port;
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, SimulatedPortStatus, testing::ValuesIn(STATUS_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(SimulatedChipRows, AreTheOnesTested)
{
    ASSERT_EQ(std::size(ROWS), Sim_Chip_Rows().size());
    ASSERT_EQ(std::size(STATUS_ROWS), Sim_Chip_Rows().size());
    for (size_t place = 0; place < std::size(ROWS); ++place) {
        EXPECT_EQ(ROWS[place].identifier, Sim_Chip_Rows()[place].identifier);
        EXPECT_EQ(STATUS_ROWS[place].identifier, Sim_Chip_Rows()[place].identifier);
    }
    EXPECT_EQ(Sim_Board_Chip().identifier, 0x105);
}

class BoardChip : public testing::Test
{
protected:
    void SetUp() override { Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_DIRECT, BASE}); }
    uint16_t status(int port) const { return Sim_Chip_Read(chip.get(), address_of(16 + port), 0); }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
};

TEST_F(BoardChip, ShowsTheResultOfItsPhyInThePortStatus)
{
    Sim_Chip_Write(chip.get(), 1, 9, 0);      /* LAN: no more 1000 Mbit/s */
    Sim_Chip_Write(chip.get(), 1, 4, 0x0081); /* 100 half */
    Sim_Chip_Write(chip.get(), 1, 0, 0x1340); /* restart */
    EXPECT_EQ(status(1), 0x1900);
    Sim_Chip_Write(chip.get(), 1, 0, 0x1940); /* power down */
    EXPECT_EQ(status(1), 0x1300);
}

TEST_F(BoardChip, ShowsALineThatIsPulledOutAndPluggedIn)
{
    Sim_Chip_Plug(chip.get(), 1, 0);
    Sim_Chip_Plug(chip.get(), 4, 0);
    EXPECT_EQ(status(1), 0x1300);
    EXPECT_EQ(status(4), 0x0300);
    Sim_Chip_Plug(chip.get(), 1, SIM_10_HALF);
    Sim_Chip_Plug(chip.get(), 3, SIM_1000_FULL);
    EXPECT_EQ(status(1), 0x1800);
    EXPECT_EQ(status(3), 0x0E00);
}

TEST_F(BoardChip, HasNoLineAtAPortThatIsNotThere)
{
    Sim_Chip_Plug(chip.get(), 6, SIM_UP_TO_1000);
    Sim_Chip_Plug(chip.get(), 255, SIM_UP_TO_1000);
    EXPECT_EQ(chip->partners[6], 0);
    EXPECT_FALSE(Sim_Chip_Link(*chip, 6).up);
    EXPECT_FALSE(Sim_Chip_Link(*chip, 255).up);
}

TEST_F(BoardChip, StaysAtItsFixedAddressesWhateverTheBase)
{
    Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_DIRECT, 8});
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 0x10, 3), 0x1052);
}

TEST(OlderChip, StandsAfterItsBase)
{
    const auto chip = std::make_unique<Sim_Chip>();
    Sim_Chip_Init(chip.get(), row_of(0x063), {SIM_DIRECT, 0});
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 8, 3), 0x0631);
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 15, 24), 0xFA50);
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 24, 3), NOBODY);
}

/* The bus has no address for them. */
TEST(OlderChip, DoesNotAnswerWithWhatItsBasePutsAboveAddress31)
{
    const auto chip = std::make_unique<Sim_Chip>();
    Sim_Chip_Init(chip.get(), row_of(0x063), {SIM_DIRECT, 23});
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 31, 3), 0x0631) << "port 0";
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 32, 3), NOBODY) << "port 1";
    EXPECT_EQ(Sim_Chip_Read(chip.get(), 38, 24), NOBODY) << "global";
    Sim_Chip_Write(chip.get(), 31, 7, 0x0123);
    Sim_Chip_Write(chip.get(), 32, 7, 0x0123);
    EXPECT_EQ(chip->ports[0][7], 0x0123);
    EXPECT_EQ(chip->ports[1][7], 0x0001);
}

} // namespace
