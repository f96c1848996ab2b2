#include "tests/switch/chip/fake_bus.h"
#include "tests/switch/chip/operations.h"

#include <gtest/gtest.h>

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

struct Case {
    Operation_Call operation;
    Chip chip;
};

void PrintTo(const Case &row, std::ostream *stream)
{
    *stream << row.operation.name << " on " << row.chip.name;
}

std::vector<Case> all_cases()
{
    std::vector<Case> cases;
    for (const Chip &chip : CHIPS) {
        for (const Operation_Call &operation : all_operations()) {
            cases.push_back({operation, chip});
        }
    }
    return cases;
}

class Failure : public testing::TestWithParam<Case>
{
protected:
    /* A fresh bus for each run: PHYs that answer, and two VLANs. */
    int run(unsigned fail_at, SW_Lock lock_to_refuse, bool indirect)
    {
        Fake_Bus bus;
        SW_Device device = make_device(GetParam().chip.familyA, GetParam().chip.familyB);
        for (auto &registers : bus.registers) {
            registers[0] = 0x1000;
            registers[1] = 0x0100;
            registers[2] = 0x1234;
            registers[15] = 0x3000;
        }
        bus.vtu_address = GetParam().chip.global;
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
        const int status = GetParam().operation.call(&device, 2);
        accesses = bus.accesses;
        takes = bus.lock_calls.size();
        trace = bus.take_trace();
        EXPECT_FALSE(bus.lock_misused);
        for (const auto &[lock, count] : bus.held) {
            EXPECT_EQ(count, 0) << lock;
        }
        return status;
    }

    unsigned accesses = 0;
    size_t takes = 0;
    std::string trace;
};

TEST_P(Failure, OfTheNthAccessIsTheStatusAndGivesEveryLock)
{
    for (const bool indirect : {false, true}) {
        const int good = run(0, 0, indirect);
        ASSERT_TRUE(good == SW_STATUS_OK || good == SW_STATUS_NOT_SUPPORTED) << good;
        const unsigned all = accesses;
        EXPECT_EQ(all == 0, good == SW_STATUS_NOT_SUPPORTED);
        for (unsigned k = 1; k <= all; ++k) {
            EXPECT_EQ(run(k, 0, indirect), SW_STATUS_FAIL) << "access " << k << " of " << all;
        }
    }
}

TEST_P(Failure, OfTakingTheOuterLockTouchesNothing)
{
    const int good = run(0, 0, false);
    for (const SW_Lock lock : {101U, 102U, 103U}) {
        const size_t before = takes;
        const int status = run(0, lock, false);
        EXPECT_TRUE(status == good || (status == SW_STATUS_FAIL && trace.empty()))
            << lock << " " << before;
    }
    if (good == SW_STATUS_OK) {
        EXPECT_EQ(run(0, 101, false), SW_STATUS_FAIL) << "every access takes the register lock";
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, Failure, testing::ValuesIn(all_cases()), [](const auto &row) {
    return std::string(row.param.operation.name) + row.param.chip.name;
});

} // namespace
