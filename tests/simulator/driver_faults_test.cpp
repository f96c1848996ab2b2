/* The driver when the seam below it or the hooks before it break. */

#include "simulator/faults.h"
#include "tests/simulator/driver_on_simulator.h"
#include "tests/support/hook_faults.h"
#include "tests/support/random_seed.h"

#include <random>

namespace
{

class BrokenDriver : public DriverOnSimulator
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(Sim_Layer_Remove(&faults.layer), faults_installed);
        DriverOnSimulator::TearDown();
    }
    void install_faults()
    {
        faults_installed = Sim_Faults_Install(&faults);
        ASSERT_TRUE(faults_installed);
    }
    SW_Sys_Config configuration() const
    {
        return driver_configuration(GetParam().chip, GetParam().mode);
    }
    static bool is_zero(const SW_Device &record)
    {
        const auto *bytes = reinterpret_cast<const unsigned char *>(&record);
        for (size_t place = 0; place < sizeof record; ++place) {
            if (bytes[place] != 0) {
                return false;
            }
        }
        return true;
    }

    Sim_Faults faults{};
    bool faults_installed = false;
};

TEST_P(BrokenDriver, DoesNotLoadWhateverHookCallFails)
{
    SW_Sys_Config config = configuration();
    Hook_Faults hooks(&config.hooks);
    ASSERT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    const size_t calls = hooks.calls();
    ASSERT_GT(calls, 1U);
    for (size_t broken = 0; broken < calls; ++broken) {
        device = {};
        hooks.break_calls(broken);
        EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_FAIL) << broken;
        EXPECT_EQ(hooks.calls(), broken + 1) << "nothing is tried after a failure";
        EXPECT_TRUE(is_zero(device)) << broken;
    }
    EXPECT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
}

TEST_P(BrokenDriver, ReportsAFailedHookCallOfASettingAndGoesOnAfterIt)
{
    SW_Sys_Config config = configuration();
    Hook_Faults hooks(&config.hooks);
    ASSERT_EQ(swLoadDriver(&config, &device), SW_STATUS_OK);
    let_the_last_write_end();
    const size_t before = hooks.calls();
    ASSERT_EQ(swSetPortVid(&device, 1, 10), SW_STATUS_OK);
    const size_t calls = hooks.calls() - before;
    ASSERT_GT(calls, 1U);
    for (size_t broken = 0; broken < calls; ++broken) {
        let_the_last_write_end();
        hooks.break_calls(broken);
        EXPECT_EQ(swSetPortVid(&device, 1, 20), SW_STATUS_FAIL) << broken;
        uint32_t vid = 0;
        EXPECT_EQ(swGetPortVid(&device, 1, &vid), SW_STATUS_OK);
        EXPECT_EQ(vid, 10U) << broken;
    }
}

/* The bus hooks hide a failed request, a read of it gives 0: no status tells. */
TEST_P(BrokenDriver, SeesZeroWhereTheSeamFails)
{
    load();
    install_faults();
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}));
    uint32_t vid = 7;
    EXPECT_EQ(swGetPortVid(&device, 1, &vid), SW_STATUS_OK);
    EXPECT_EQ(vid, 0U);
    SW_Device other = {};
    const SW_Sys_Config config = configuration();
    EXPECT_EQ(swLoadDriver(&config, &other), SW_STATUS_FAIL) << "0 is no chip";
}

class BusyDriver : public BrokenDriver
{
};

TEST_P(BusyDriver, FailsAnIndirectAccessAfter1000RereadsOfABusyChip)
{
    load();
    install_faults();
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_BUSY, 1, SIM_FOREVER, 16, 0}));
    uint32_t vid = 7;
    EXPECT_EQ(swGetPortVid(&device, 1, &vid), SW_STATUS_FAIL);
    EXPECT_EQ(vid, 7U);
    EXPECT_EQ(faults.requests, 1001U);
}

TEST_P(BusyDriver, WaitsForABusyChipUpTo1000Rereads)
{
    load();
    let_the_last_write_end();
    install_faults();
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_BUSY, 1, 1000, 16, 0}));
    uint32_t vid = 7;
    EXPECT_EQ(swGetPortVid(&device, 1, &vid), SW_STATUS_OK);
    EXPECT_EQ(vid, 1U);
    Sim_Faults_Clear(&faults);
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_BUSY, 1, 1001, 16, 0}));
    EXPECT_EQ(swGetPortVid(&device, 1, &vid), SW_STATUS_FAIL);
}

/* Whatever a broken bus answers: every operation ends, and afterwards the driver works. The chip is
 * switched on anew each time, since all ones read for a field are written back around it. */
TEST_P(BrokenDriver, EndsEveryOperationOnABrokenBusAndRecovers)
{
    const uint32_t seed = test_seed();
    std::mt19937 generator(seed);
    const auto random = [&generator] { return static_cast<uint32_t>(generator()); };
    install_faults();
    const SW_Sys_Config config = configuration();
    const int turns = test_rounds(50);
    for (int turn = 0; turn < turns; ++turn) {
        power_on();
        load();
        ASSERT_TRUE(Sim_Faults_At_Random(&faults, random(), 2 + random() % 20));
        Vlan_Table_Entry entry = {};
        entry.vid = static_cast<uint16_t>(random() % SIM_VLANS);
        uint32_t number = 0;
        uint16_t word = 0;
        const unsigned port = random() % ports();
        swSetPortVid(&device, port, random());
        swSetPortAutoMode(&device, port, random() % 12);
        swReadPagedPhyReg(&device, port, 16, 3, &word);
        swVtuAddEntry(&device, &entry);
        swVtuGetFirst(&device, &entry);
        swVtuGetNext(&device, &entry);
        swVtuGetEntryCount(&device, &number);
        swGetSpeedMode(&device, port, &number);
        SW_Device other = {};
        swLoadDriver(&config, &other);
        Sim_Faults_Clear(&faults);

        ASSERT_EQ(swSetPortVid(&device, port, 9), SW_STATUS_OK) << "seed " << seed;
        ASSERT_EQ(swGetPortVid(&device, port, &number), SW_STATUS_OK) << "seed " << seed;
        ASSERT_EQ(number, 9U) << "seed " << seed;
        device = {};
    }
}

INSTANTIATE_TEST_SUITE_P(Chips, BusyDriver, testing::ValuesIn(driven_cases(is_indirect)),
                         driven_name);
INSTANTIATE_TEST_SUITE_P(Chips, BrokenDriver, testing::ValuesIn(driven_cases()), driven_name);

} // namespace
