#include "tests/switch/chip/fake_bus.h"
#include "tests/switch/chip/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace
{

struct Chip {
    const char *name;
    uint32_t familyA;
    uint32_t familyB;
    int global;
};

/* Chips that reach every path between them: the board's, one with link facts from the PHY, one with
 * rate codes, one of group B. */
constexpr Chip CHIPS[] = {
    {"Board", 1U << 13, 0, 0x1B},
    {"Extended", 1U << 18, 0, 0x1F},
    {"Codes", 1U << 4, 0, 0x1F},
    {"GroupB", 0, 1U << 9, 0x1F},
};

class Failure : public testing::TestWithParam<Operation_Call>
{
protected:
    /* A fresh bus for each run: PHYs that answer, and two VLANs. */
    int run(const Chip &chip, unsigned fail_at, SW_Lock lock_to_refuse, bool indirect)
    {
        Fake_Bus bus;
        SW_Device device = make_device(chip.familyA, chip.familyB);
        for (auto &registers : bus.registers) {
            registers[0] = 0x1000;
            registers[1] = 0x0100;
            registers[2] = 0x1234;
            registers[15] = 0x3000;
        }
        bus.vtu_address = chip.global;
        bus.vtu_busy_reads = 1;
        bus.vtu[3] = {};
        bus.vtu[9] = {};
        bus.fail_at = fail_at;
        bus.lock_to_refuse = lock_to_refuse;
        if (indirect) {
            device.accessMode = SW_ACCESS_INDIRECT;
            device.smiAddress = 5;
            bus.command_address = 5;
            bus.command_busy_reads = 1;
        }
        const int status = GetParam().call(&device, 2);
        accesses = bus.accesses;
        trace = bus.take_trace();
        EXPECT_FALSE(bus.lock_misused);
        locks.clear();
        for (const auto &[lock, count] : bus.held) {
            EXPECT_EQ(count, 0) << lock;
            locks.push_back(lock);
        }
        return status;
    }

    unsigned accesses = 0;
    std::string trace;
    std::vector<SW_Lock> locks; /* taken at least once */
};

TEST_P(Failure, OfTheNthAccessIsTheStatusAndGivesEveryLock)
{
    for (const Chip &chip : CHIPS) {
        for (const bool indirect : {false, true}) {
            SCOPED_TRACE(std::string(chip.name) + (indirect ? " indirect" : " direct"));
            const int good = run(chip, 0, 0, indirect);
            ASSERT_TRUE(good == SW_STATUS_OK || good == SW_STATUS_NOT_SUPPORTED) << good;
            const unsigned all = accesses;
            EXPECT_EQ(all == 0, good == SW_STATUS_NOT_SUPPORTED);
            for (unsigned k = 1; k <= all; ++k) {
                EXPECT_EQ(run(chip, k, 0, indirect), SW_STATUS_FAIL) << k << " of " << all;
            }
        }
    }
}

TEST_P(Failure, OfTakingALockTouchesNothing)
{
    for (const Chip &chip : CHIPS) {
        SCOPED_TRACE(chip.name);
        const int good = run(chip, 0, 0, false);
        const std::vector<SW_Lock> needed = locks;
        /* Every access takes the register lock, 101. */
        EXPECT_EQ(std::ranges::count(needed, 101), good == SW_STATUS_OK ? 1 : 0);
        for (const SW_Lock lock : needed) {
            EXPECT_EQ(run(chip, 0, lock, false), SW_STATUS_FAIL) << lock;
            EXPECT_EQ(trace, "") << lock;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, Failure,
                         testing::ValuesIn(all_operations().begin(), all_operations().end()),
                         [](const auto &row) { return row.param.name; });

} // namespace
