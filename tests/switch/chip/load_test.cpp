#include "switch/chip/load.h"

#include "switch/chip/chips.h"
#include "switch/chip/mdio.h"
#include "tests/support/output_capture.h"
#include "tests/switch/chip/fake_bus.h"
#include "tests/switch/chip/operations.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <unistd.h>

namespace
{

/* A chip as the load must find it; the masks and families written out. */
struct Chip {
    const char *name;
    uint16_t identifier; /* read from the chip */
    bool newer;          /* at the fixed address, else behind the base */
    uint8_t ports;
    uint16_t validPorts;
    uint16_t phyPorts;
    uint32_t familyA;
    uint32_t familyB;
    const char *setup; /* trace of the set-up steps in direct mode */
    uint8_t cpuPort;
};

void PrintTo(const Chip &chip, std::ostream *stream)
{
    *stream << chip.name;
}

#define PORTS_6                                                                                    \
    "R 10 04 0003\nR 11 04 0003\nR 12 04 0003\nR 13 04 0003\nR 14 04 0003\nR 15 04 0003\n"
#define PORTS_8 PORTS_6 "R 16 04 0003\nR 17 04 0003\n"
#define PORTS_10 PORTS_8 "R 18 04 0003\nR 19 04 0003\n"

// clang-format off
const Chip CHIPS[] = {
    {"C105", 0x105, true,   6, 0x003F, 0x0007, 0x00002000, 0, "R 1b 04 0000\n" PORTS_6, 3},
    {"C095", 0x095, true,  11, 0x07FF, 0x00FF, 0x00000800, 0, PORTS_10 "R 1a 04 0003\n", 3},
    {"C106", 0x106, true,   8, 0x00FF, 0x00FF, 0x00008000, 0, "R 1b 04 0000\n" PORTS_8, 3},
    {"C1A7", 0x1A7, true,  10, 0x03FF, 0x0000, 0x00010000, 0, "R 1b 04 0000\n" PORTS_10, 3},
    {"C083", 0x083, true,  10, 0x03FF, 0x00FF, 0x00000200, 0, "", 3},
    {"C165", 0x165, true,   6, 0x003F, 0x001F, 0x00400000, 0, "R 1b 04 0000\nR 1c 00 0000\n", 3},
    {"C352", 0x352, true,   7, 0x007F, 0x001F, 0x08000000, 0, "R 1b 04 0000\nR 1c 00 0000\n", 3},
    {"C065", 0x065, false,  6, 0x003F, 0x001F, 0x00020000, 0, "R 1e 00 0000\n", 3},
    {"C063", 0x063, false,  6, 0x003F, 0x001F, 0x00000010, 0, "", 3},
    {"C052", 0x052, false,  6, 0x003F, 0x001F, 0x00000004, 0, "", 3},
    {"C060", 0x060, false,  6, 0x003F, 0x001F, 0x00000001, 0, "", 3},
    {"C250", 0x250, false,  4, 0x0063, 0x0003, 0, 0x00000200, "R 1f 04 0000\nR 17 00 0000\n", 5},
    {"C071", 0x071, false,  7, 0x007F, 0x001F, 0, 0x00000010, "R 1f 04 0000\nR 17 00 0000\n", 3},
    {"CC00", 0xC00, true,  11, 0x07FF, 0x01FF, 0, 0x00000800, "R 1b 04 0000\nR 1c 00 0000\n", 3},
    {"CC07", 0xC07, true,  11, 0x07FF, 0x01FF, 0, 0x00000800, "R 1b 04 0000\nR 1c 00 0000\n", 3},
};
// clang-format on

SW_Sys_Config make_config(bool locks = true)
{
    SW_Sys_Config config = {};
    config.deviceNumber = 7;
    config.cpuPort = 3;
    config.initPorts = 1;
    config.hooks = Fake_Bus::hooks(locks);
    config.address = 16;
    return config;
}

auto fields(const SW_Hooks &hooks)
{
    return std::tuple(hooks.reserved, hooks.readRegister, hooks.writeRegister, hooks.lockCreate,
                      hooks.lockDelete, hooks.lockTake, hooks.lockGive);
}

auto fields(const SW_Device &device)
{
    return std::tuple(device.deviceId, device.cpuPort, device.baseRegAddr, device.numberOfPorts,
                      device.validPortMask, device.phyPortMask, device.smiAddress,
                      device.deviceNumber, device.familyA, device.familyB, device.accessMode,
                      device.state, device.loaded, fields(device.hooks),
                      std::to_array(device.locks));
}

bool is_zero(const SW_Device &device)
{
    return fields(device) == fields(SW_Device{});
}

class LoadChip : public testing::TestWithParam<Chip>
{
protected:
    LoadChip()
    {
        const unsigned at = GetParam().newer ? 0x10 : 0x18;
        bus.registers[at][3] = static_cast<uint16_t>(GetParam().identifier << 4 | 0xA);
        config.cpuPort = GetParam().cpuPort;
    }

    std::string identification() const
    {
        char text[60];
        const unsigned word = uint32_t{GetParam().identifier} << 4U | 0xAU;
        snprintf(text, sizeof text,
                 GetParam().newer ? "R 10 03 %04x\n" : "R 10 03 0000\nR 18 03 %04x\n", word);
        return text;
    }

    /* The ports switched to forwarding, in the order of the driver's port numbers. */
    std::string starts() const
    {
        std::string trace;
        for (unsigned hardware_port = 0; hardware_port < 16; ++hardware_port) {
            if ((GetParam().validPorts >> hardware_port & 1U) != 0) {
                char text[60];
                const unsigned at = (GetParam().newer ? 0x10 : 0x18) + hardware_port;
                snprintf(text, sizeof text, "R %02x 04 0000\nW %02x 04 0003\n", at, at);
                trace += text;
            }
        }
        return trace;
    }

    Fake_Bus bus;
    SW_Sys_Config config = make_config();
    SW_Device device = {};
};

TEST_P(LoadChip, FillsTheRecordFromTheChipTable)
{
    const Chip &chip = GetParam();
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    EXPECT_EQ(device.deviceId, chip.identifier);
    EXPECT_EQ(device.cpuPort, chip.cpuPort);
    EXPECT_EQ(device.baseRegAddr, 16);
    EXPECT_EQ(device.numberOfPorts, chip.ports);
    EXPECT_EQ(device.validPortMask, chip.validPorts);
    EXPECT_EQ(device.phyPortMask, chip.phyPorts);
    EXPECT_EQ(device.familyA, chip.familyA);
    EXPECT_EQ(device.familyB, chip.familyB);
    EXPECT_EQ(device.smiAddress, 0);
    EXPECT_EQ(device.accessMode, 0U);
    EXPECT_EQ(device.state, 0U);
    EXPECT_EQ(device.loaded, 1U);
    EXPECT_EQ(device.deviceNumber, 7);
    EXPECT_TRUE(fields(device.hooks) == fields(config.hooks));
}

TEST_P(LoadChip, AccessesIdentifyStartPortsAndCheckTheBlocks)
{
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), identification() + starts() + GetParam().setup);
    EXPECT_EQ(bus.locks_created, 10U);
    EXPECT_TRUE(bus.deleted.empty());
}

TEST_P(LoadChip, WithoutTheFlagPortsStayAsTheyAre)
{
    config.initPorts = 2;
    config.skipWord = 0x736b6970;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), identification());
}

TEST_P(LoadChip, EveryFailedAccessUnloads)
{
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    const unsigned all = bus.accesses;
    for (unsigned k = 1; k <= all; ++k) {
        bus.fill(0);
        bus.registers[GetParam().newer ? 0x10 : 0x18][3] =
            static_cast<uint16_t>(GetParam().identifier << 4);
        bus.accesses = 0;
        bus.fail_at = k;
        bus.locks_created = 0;
        bus.deleted.clear();
        device = {};
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL) << k;
        EXPECT_EQ(bus.accesses, k);
        EXPECT_TRUE(is_zero(device)) << k;
        EXPECT_EQ(bus.deleted.size(), bus.locks_created) << k;
        EXPECT_FALSE(bus.lock_misused);
        for (const auto &[lock, count] : bus.held) {
            EXPECT_EQ(count, 0) << lock;
        }
    }
}

TEST_P(LoadChip, IndirectModeFindsItBehindTheCommandRegisters)
{
    bus.fill(0);
    const unsigned at = GetParam().newer ? 0x10 : 0x08;
    bus.registers[at][3] = static_cast<uint16_t>(GetParam().identifier << 4);
    bus.command_address = 0x1E;
    bus.command_busy_reads = 1;
    config.accessMode = 2;
    config.address = 0x1E;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    EXPECT_EQ(device.deviceId, GetParam().identifier);
    EXPECT_EQ(device.baseRegAddr, 0);
    EXPECT_EQ(device.smiAddress, 0x1E);
    EXPECT_EQ(device.accessMode, 2U);
    EXPECT_EQ(bus.registers[at][4] & 3, 3);
    uint32_t vid = 0;
    EXPECT_EQ(swSetPortVid(&device, 0, 0x123), SW_STATUS_OK);
    EXPECT_EQ(swGetPortVid(&device, 0, &vid), SW_STATUS_OK);
    EXPECT_EQ(vid, 0x123U);
    EXPECT_EQ(bus.registers[at][7], 0x123);
}

INSTANTIATE_TEST_SUITE_P(Chips, LoadChip, testing::ValuesIn(CHIPS),
                         [](const auto &row) { return row.param.name; });

TEST(ChipTable, HasExactlyTheChipsThatTheLoadIsTestedWith)
{
    /* 0xC07 is the one that is not a row of its own. */
    EXPECT_EQ(Chip_Table().size() + 1, std::size(CHIPS));
    for (const int identifier : {0xC01, 0xC02, 0xC03, 0xC04, 0xC05, 0xC06}) {
        EXPECT_EQ(Chip_Find(static_cast<uint16_t>(identifier)), Chip_Find(0xC00));
    }
    for (const int identifier : {0x000, 0xFFF, 0xBFF, 0xC08, 0x104, 0x107, 0x051}) {
        EXPECT_EQ(Chip_Find(static_cast<uint16_t>(identifier)), nullptr) << identifier;
    }
}

class Load : public testing::Test
{
protected:
    Load() { bus.registers[0x10][3] = 0x1050; }

    Fake_Bus bus;
    SW_Sys_Config config = make_config();
    SW_Device device = {};
};

TEST_F(Load, MissingRecordIsABadParameter)
{
    EXPECT_EQ(swLoadDriver(nullptr, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swLoadDriver(&config, nullptr), SW_STATUS_BAD_PARAM);
    device.hooks = config.hooks;
    EXPECT_EQ(swLoadDriver(nullptr, &device), SW_STATUS_BAD_PARAM);
    EXPECT_TRUE(is_zero(device));
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(Load, LoadingTwiceKeepsTheLoadedRecord)
{
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    bus.take_trace();
    const SW_Device before = device;
    config.address = 3;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_ALREADY_LOADED);
    EXPECT_EQ(swLoadDriver(nullptr, &device), SW_STATUS_BAD_PARAM);
    EXPECT_TRUE(fields(device) == fields(before));
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_TRUE(bus.deleted.empty());
    uint32_t vid = 0;
    EXPECT_EQ(swGetPortVid(&device, 1, &vid), SW_STATUS_OK);
}

TEST_F(Load, ZeroedRecordLoadsAgain)
{
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    device = {};
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
}

TEST_F(Load, MissingRegisterHookIsAFailure)
{
    config.hooks.readRegister = nullptr;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    EXPECT_TRUE(is_zero(device));
    config = make_config();
    config.hooks.writeRegister = nullptr;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    EXPECT_TRUE(is_zero(device));
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(Load, UnknownIdentifierIsAFailure)
{
    for (const int word : {0x0000, 0xFFFF, 0x1040, 0x5010}) {
        bus.fill(static_cast<uint16_t>(word));
        device = {};
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL) << word;
        EXPECT_TRUE(is_zero(device));
        EXPECT_EQ(bus.accesses, 2U);
        bus.accesses = 0;
        EXPECT_EQ(bus.locks_created, 0U);
    }
}

TEST_F(Load, IdentifierCountsOnlyWhereItsChipHasItsPorts)
{
    /* An older chip's identifier at the fixed address is something else's register, and the other
     * way round. */
    bus.registers[0x10][3] = 0x0630;
    bus.registers[0x18][3] = 0x1050;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    bus.registers[0x18][3] = 0x0520;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    EXPECT_EQ(device.deviceId, 0x052U);
}

TEST_F(Load, CpuPortMustBeAPortOfTheChip)
{
    for (const int port : {6, 15, 16, 31, 255}) {
        config.cpuPort = static_cast<uint8_t>(port);
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_BAD_CPU_PORT) << port;
        EXPECT_TRUE(is_zero(device));
    }
    EXPECT_EQ(bus.locks_created, 0U);
    bus.fill(0);
    bus.registers[0x18][3] = 0x2500; /* without hardware ports 2 to 4 */
    for (uint8_t port = 0; port < 8; ++port) {
        device = {};
        config.cpuPort = port;
        const bool valid = port < 2 || port == 5 || port == 6;
        EXPECT_EQ(swLoadDriver(&config, &device), valid ? SW_STATUS_OK : SW_STATUS_BAD_CPU_PORT);
    }
}

TEST_F(Load, LockThatIsNotCreatedEndsItAndDeletesTheOthers)
{
    for (unsigned given = 0; given < 10; ++given) {
        bus.creations_before_refusal = given;
        bus.locks_created = 0;
        bus.deleted.clear();
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL) << given;
        EXPECT_TRUE(is_zero(device));
        std::vector<SW_Lock> expected;
        for (unsigned k = 0; k < given; ++k) {
            expected.push_back(101 + k);
        }
        EXPECT_EQ(bus.deleted, expected);
    }
    bus.creations_before_refusal = 10;
    bus.locks_created = 0;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
}

TEST_F(Load, WithoutLockHooksLocksArePlaceholders)
{
    config = make_config(false);
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    for (const SW_Lock lock : device.locks) {
        EXPECT_EQ(lock, 1U);
    }
    EXPECT_EQ(swSetPortVid(&device, 1, 5), SW_STATUS_OK);
    EXPECT_TRUE(bus.lock_calls.empty());
}

TEST_F(Load, PlaceholderLocksAreDeletedThroughTheHook)
{
    config.hooks.lockCreate = nullptr;
    bus.registers[0x1B][4] = 0xFFFF;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    EXPECT_EQ(bus.deleted, std::vector<SW_Lock>(10, 1));
}

TEST_F(Load, LockThatIsNotTakenUnloads)
{
    bus.lock_to_refuse = 101;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    EXPECT_TRUE(is_zero(device));
    EXPECT_EQ(bus.deleted.size(), 10U);
}

TEST_F(Load, IdleBusAtABlockUnloads)
{
    const struct {
        unsigned address;
        unsigned number;
    } blocks[] = {{0x1B, 4}, {0x10, 4}, {0x15, 4}};
    for (const auto &block : blocks) {
        bus.fill(0);
        bus.registers[0x10][3] = 0x1050;
        bus.registers[block.address][block.number] = 0xFFFF;
        bus.locks_created = 0;
        bus.deleted.clear();
        device = {};
        config.initPorts = 0;
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
        EXPECT_TRUE(is_zero(device));
        EXPECT_EQ(bus.deleted.size(), 10U);
        device = {};
        config.skipWord = 0x736b6970;
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
        config.skipWord = 0x736b6971; /* another word skips nothing */
        device = {};
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
        config.skipWord = 0;
    }
}

TEST_F(Load, IdleBusAtTheRemainingBlockUnloads)
{
    bus.registers[0x10][3] = 0x1650;
    bus.registers[0x1C][0] = 0xFFFF;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    bus.fill(0);
    bus.registers[0x18][3] = 0x0650;
    bus.registers[0x1E][0] = 0xFFFF;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL);
    bus.registers[0x1E][0] = 0;
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
}

TEST_F(Load, EnableTouchesNothing)
{
    EXPECT_EQ(swSysEnable(&device), SW_STATUS_OK);
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    bus.take_trace();
    const SW_Device before = device;
    EXPECT_EQ(swSysEnable(&device), SW_STATUS_OK);
    EXPECT_TRUE(fields(device) == fields(before));
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_EQ(swSysEnable(nullptr), SW_STATUS_BAD_PARAM);
}

TEST_F(Load, OperationsOnARecordThatIsNotLoadedFailWithTheirStatuses)
{
    uint32_t value = 77;
    for (const Operation_Call &operation : all_operations()) {
        const std::string name = operation.name;
        const bool mapped = name.find("TrafficClass") != std::string::npos ||
                            name.find("MirrorDest") != std::string::npos || name == "swVtuFlush" ||
                            name == "swVtuAddEntry";
        EXPECT_EQ(operation.call(&device, 0), operation.takesPort ? SW_STATUS_BAD_PARAM
                                              : mapped            ? SW_STATUS_NOT_SUPPORTED
                                                                  : SW_STATUS_FAIL)
            << name;
        EXPECT_EQ(operation.call(nullptr, 0), SW_STATUS_BAD_PARAM) << name;
    }
    EXPECT_EQ(swGetMaxFrameSize(&device, &value), SW_STATUS_FAIL);
    EXPECT_EQ(value, 77U);
    EXPECT_EQ(bus.take_trace(), "");
}

TEST(LoadWithoutHardware, MissingNodeIsAnUnknownChip)
{
    if (access("/dev/mdio", F_OK) == 0) {
        GTEST_SKIP() << "this machine has a /dev/mdio, which a test must not open";
    }
    SW_Sys_Config config = {};
    config.cpuPort = 3;
    config.initPorts = 1;
    config.hooks.readRegister = MDIO_Bus_Read;
    config.hooks.writeRegister = MDIO_Bus_Write;
    config.address = 16;
    SW_Device device = {};
    Output_Capture output;
    const int status = swLoadDriver(&config, &device);
    EXPECT_EQ(output.finish(), "couldn't open nodecouldn't open node");
    EXPECT_EQ(status, SW_STATUS_FAIL);
    EXPECT_TRUE(is_zero(device));
}

} // namespace
