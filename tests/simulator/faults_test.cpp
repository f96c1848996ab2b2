/* The layer that breaks requests. */

#include "simulator/faults.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>

namespace
{

constexpr uint16_t IDENTIFIER = 0x1052;

class BrokenSeam : public testing::Test
{
protected:
    void SetUp() override
    {
        Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_DIRECT, 16});
        ASSERT_TRUE(Sim_Seam_Install(&seam, chip.get()));
        ASSERT_TRUE(Sim_Faults_Install(&faults));
    }
    void TearDown() override
    {
        EXPECT_TRUE(Sim_Layer_Remove(&faults.layer));
        EXPECT_TRUE(Sim_Layer_Remove(&seam));
    }

    static int read(uint8_t address, uint8_t number, uint32_t *value)
    {
        MDIO_Record record = {address, MDIO_READ, number, 0, 0};
        const int answer = MDIO_Request(MDIO_REQUEST, &record);
        *value = record.value;
        return answer;
    }
    static int write(uint8_t address, uint8_t number, uint16_t value)
    {
        MDIO_Record record = {address, MDIO_WRITE, number, 0, value};
        return MDIO_Request(MDIO_REQUEST, &record);
    }
    /* Reads the identifier so often; a letter each: . whole, F failed, 1 all ones, B busy. */
    static std::string read_identifier(int times)
    {
        std::string result;
        for (int turn = 0; turn < times; ++turn) {
            uint32_t value = 0;
            const int answer = read(0x10, 3, &value);
            result += answer < 0 && value == 0                         ? 'F'
                      : answer == 0 && value == 0xFFFF                 ? '1'
                      : answer == 0 && value == (IDENTIFIER | 0x8000U) ? 'B'
                      : answer == 0 && value == IDENTIFIER             ? '.'
                                                                       : '?';
        }
        return result;
    }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
    Sim_Layer seam{};
    Sim_Faults faults{};
};

TEST_F(BrokenSeam, BreaksNothingWithoutAPlan)
{
    EXPECT_EQ(read_identifier(5), ".....");
    EXPECT_EQ(faults.requests, 5U);
    EXPECT_EQ(faults.broken, 0U);
}

struct Plan {
    const char *name;
    Sim_Fault fault;
    const char *reads; /* of eight */
};

void PrintTo(const Plan &row, std::ostream *stream)
{
    *stream << row.name;
}

constexpr Plan PLANS[] = {
    {"FirstFails", {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY}, "F......."},
    {"ThirdFails", {SIM_FAULT_FAIL, 3, 1, SIM_ANY, SIM_ANY}, "..F....."},
    {"AllFail", {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}, "FFFFFFFF"},
    {"AllFailFromTheFourth", {SIM_FAULT_FAIL, 4, SIM_FOREVER, SIM_ANY, SIM_ANY}, "...FFFFF"},
    {"SecondAllOnes", {SIM_FAULT_ALL_ONES, 2, 1, SIM_ANY, SIM_ANY}, ".1......"},
    {"BusyForThree", {SIM_FAULT_BUSY, 2, 3, 0x10, 3}, ".BBB...."},
    {"BusyElsewhere", {SIM_FAULT_BUSY, 1, 3, 0x11, 3}, "........"},
    {"OtherRegister", {SIM_FAULT_FAIL, 1, 3, SIM_ANY, 4}, "........"},
    {"SameAddress", {SIM_FAULT_FAIL, 1, 3, 0x10, SIM_ANY}, "FFF....."},
};

class PlannedFault : public BrokenSeam, public testing::WithParamInterface<Plan>
{
};

TEST_P(PlannedFault, BreaksTheRequestsThatItNames)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults, GetParam().fault));
    EXPECT_EQ(read_identifier(8), GetParam().reads);
    EXPECT_EQ(faults.requests, 8U);
}

INSTANTIATE_TEST_SUITE_P(Rows, PlannedFault, testing::ValuesIn(PLANS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(BrokenSeam, KeepsAFailedWriteFromTheChip)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 2, 1, 0x11, 7}));
    EXPECT_EQ(write(0x11, 7, 2), 0);
    EXPECT_EQ(write(0x11, 7, 3), -1);
    EXPECT_EQ(errno, EIO);
    EXPECT_EQ(chip->ports[1][7], 2);
    EXPECT_EQ(write(0x11, 7, 4), 0);
    EXPECT_EQ(faults.broken, 1U);
}

TEST_F(BrokenSeam, FailsWithThePlannedError)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY, ETIMEDOUT}));
    EXPECT_EQ(write(0x11, 7, 2), -1);
    EXPECT_EQ(errno, ETIMEDOUT);
}

TEST_F(BrokenSeam, CountsReadsOnlyForFaultsThatChangeTheirValue)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_ALL_ONES, 2, 1, SIM_ANY, SIM_ANY}));
    uint32_t value = 0;
    EXPECT_EQ(write(0x11, 7, 2), 0);
    EXPECT_EQ(read(0x11, 7, &value), 0);
    EXPECT_EQ(value, 2U);
    EXPECT_EQ(write(0x11, 7, 3), 0);
    EXPECT_EQ(read(0x11, 7, &value), 0);
    EXPECT_EQ(value, 0xFFFFU);
    EXPECT_EQ(read(0x11, 7, &value), 0);
    EXPECT_EQ(value, 3U);
}

TEST_F(BrokenSeam, FollowsSeveralPlansAtOnce)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_ALL_ONES, 2, 1, 0x10, 3}));
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 2, 2, SIM_ANY, SIM_ANY}));
    EXPECT_EQ(read_identifier(5), ".1F..") << "the first added breaks the second request";
}

TEST_F(BrokenSeam, RefusesPlansThatWouldNotEndOrDoNothing)
{
    constexpr Sim_Fault REFUSED[] = {
        {SIM_FAULT_FAIL, 0, 1, SIM_ANY, SIM_ANY},
        {SIM_FAULT_FAIL, 1, 0, SIM_ANY, SIM_ANY},
        {SIM_FAULT_ALL_ONES, 1, SIM_FOREVER, SIM_ANY, SIM_ANY},
        {SIM_FAULT_ALL_ONES, 1, SIM_FOREVER, 5, 0},
        {SIM_FAULT_BUSY, 1, SIM_FOREVER, 0x1B, 5},
        {SIM_FAULT_BUSY, 1, SIM_FOREVER, SIM_ANY, SIM_ANY},
        {SIM_FAULT_BUSY, 1, SIM_FOREVER, SIM_ANY, 0},
        {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY, 0},
        {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY, -1},
    };
    for (const Sim_Fault &fault : REFUSED) {
        EXPECT_FALSE(Sim_Faults_Add(&faults, fault));
    }
    EXPECT_EQ(faults.plannedCount, 0);
    for (int place = 0; place < SIM_FAULTS; ++place) {
        EXPECT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 100, 1, SIM_ANY, SIM_ANY}));
    }
    EXPECT_FALSE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 100, 1, SIM_ANY, SIM_ANY}));
    EXPECT_FALSE(Sim_Faults_At_Random(&faults, 1, 1));
    EXPECT_EQ(faults.oneIn, 0U);
}

TEST_F(BrokenSeam, HoldsTheCommandRegisterBusyForever)
{
    Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_INDIRECT, 5});
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_BUSY, 1, SIM_FOREVER, 5, 0}));
    for (int turn = 0; turn < 3000; ++turn) {
        uint32_t value = 0;
        ASSERT_EQ(read(5, 0, &value), 0);
        ASSERT_EQ(value, 0x8000U);
    }
}

TEST_F(BrokenSeam, BreaksTheSameRequestsForTheSameSeed)
{
    ASSERT_TRUE(Sim_Faults_At_Random(&faults, 42, 3));
    const std::string once = read_identifier(200);
    Sim_Faults_Clear(&faults);
    ASSERT_TRUE(Sim_Faults_At_Random(&faults, 42, 3));
    EXPECT_EQ(read_identifier(200), once);
    EXPECT_NE(once.find('F'), std::string::npos);
    EXPECT_NE(once.find('1'), std::string::npos);
    EXPECT_GT(faults.broken, 30U);
    EXPECT_LT(faults.broken, 110U);

    Sim_Faults_Clear(&faults);
    ASSERT_TRUE(Sim_Faults_At_Random(&faults, 43, 3));
    EXPECT_NE(read_identifier(200), once);
}

TEST_F(BrokenSeam, IsWholeAgainWhenItIsCleared)
{
    ASSERT_TRUE(Sim_Faults_Add(&faults, {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}));
    ASSERT_TRUE(Sim_Faults_At_Random(&faults, 42, 2));
    EXPECT_EQ(read_identifier(3), "FFF");
    Sim_Faults_Clear(&faults);
    EXPECT_EQ(read_identifier(20), "....................");
    EXPECT_EQ(faults.requests, 20U);
}

} // namespace
