/* The served device, one operation for each call of a client. */

#include "simulator/mdio_device.h"
#include "tests/support/memory_file.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <vector>

namespace
{

class ServedDevice : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(up(Sim_Board_Chip(), {SIM_DIRECT, 16})); }
    void TearDown() override { Sim_Device_Down(device.get()); }

    bool up(const Sim_Chip_Row &row, Sim_Placement placement, FILE *file = nullptr) const
    {
        return Sim_Device_Up(device.get(), row, placement, file);
    }
    /* One access as a client makes it; the error of its request. */
    int access(MDIO_Record *record, unsigned long number = MDIO_REQUEST) const
    {
        EXPECT_EQ(Sim_Device_Open(device.get()), 0);
        const int error = Sim_Device_Request(device.get(), number, record);
        Sim_Device_Close(device.get());
        return error;
    }
    int write(uint8_t address, uint8_t number, uint32_t value) const
    {
        MDIO_Record record = {address, MDIO_WRITE, number, 0, value};
        return access(&record);
    }
    uint32_t read(uint8_t address, uint8_t number) const
    {
        MDIO_Record record = {address, MDIO_READ, number, 0, 0};
        EXPECT_EQ(access(&record), 0);
        return record.value;
    }
    std::vector<uint64_t> counts() const
    {
        const Sim_Device_Counts &counts = device->counts;
        return {counts.opens, counts.requests, counts.failed, counts.closes, counts.mostOpen};
    }

    const std::unique_ptr<Sim_Device> device = std::make_unique<Sim_Device>();
};

TEST_F(ServedDevice, AnswersForTheChip)
{
    EXPECT_EQ(read(0x10, 3), 0x1052U);
    EXPECT_EQ(write(0x11, 7, 0x0123), 0);
    EXPECT_EQ(read(0x11, 7), 0x0123U);
    EXPECT_EQ(read(9, 0), 0xFFFFU) << "nobody stands there";
}

TEST_F(ServedDevice, AnswersForAnyChipAtAnyPlace)
{
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        const uint32_t identifier = static_cast<uint32_t>(row.identifier << 4 | row.revision);
        Sim_Device_Down(device.get());
        ASSERT_TRUE(up(row, {SIM_DIRECT, 0}));
        EXPECT_EQ(read(row.layout == SIM_LAYOUT_NEWER ? 0x10 : 8, 3), identifier);
        Sim_Device_Down(device.get());
        ASSERT_TRUE(up(row, {SIM_INDIRECT, 5}));
        EXPECT_EQ(write(5, 0, row.layout == SIM_LAYOUT_NEWER ? 0x9A03 : 0x9903), 0);
        EXPECT_EQ(read(5, 1), identifier);
    }
}

TEST_F(ServedDevice, CountsEachCall)
{
    EXPECT_EQ(counts(), (std::vector<uint64_t>{0, 0, 0, 0, 0}));
    read(0x10, 3);
    write(0x11, 7, 1);
    EXPECT_EQ(counts(), (std::vector<uint64_t>{2, 2, 0, 2, 1}));
    EXPECT_EQ(Sim_Device_Open(device.get()), 0);
    EXPECT_EQ(counts(), (std::vector<uint64_t>{3, 2, 0, 2, 1}));
    EXPECT_EQ(Sim_Device_Open(device.get()), 0);
    Sim_Device_Close(device.get());
    Sim_Device_Close(device.get());
    read(0x10, 3);
    EXPECT_EQ(counts(), (std::vector<uint64_t>{5, 3, 0, 5, 2}));
}

TEST_F(ServedDevice, PrintsItsCounts)
{
    Memory_File file;
    FILE *stream = fopen(file.path().c_str(), "w");
    Sim_Device_Print_Counts({1, 20, 3, 18446744073709551615U, 4}, stream);
    fclose(stream);
    EXPECT_EQ(file.read(), "opens 1\nrequests 20\nfailed 3\ncloses 18446744073709551615\n"
                           "most open 4\n");
}

TEST_F(ServedDevice, RefusesRequestsThatItDoesNotKnow)
{
    ASSERT_TRUE(Sim_Faults_Add(&device->faults, {SIM_FAULT_FAIL, 1, 1, SIM_ANY, SIM_ANY}));
    MDIO_Record record = {0x10, MDIO_READ, 3, 0, 77};
    EXPECT_EQ(access(&record, MDIO_REQUEST + 1), ENOTTY);
    EXPECT_EQ(access(&record, 0x5401), ENOTTY);
    record.operation = 2;
    EXPECT_EQ(access(&record), EINVAL);
    EXPECT_EQ(record.value, 77U);
    EXPECT_EQ(device->faults.requests, 0U) << "a plan counts what the chip may get";
    EXPECT_EQ(counts(), (std::vector<uint64_t>{3, 3, 3, 3, 1}));
}

TEST_F(ServedDevice, FailsAsPlanned)
{
    ASSERT_TRUE(
        Sim_Faults_Add(&device->faults, {SIM_FAULT_FAIL, 2, 2, SIM_ANY, SIM_ANY, ETIMEDOUT}));
    ASSERT_TRUE(Sim_Faults_Add(&device->faults, {SIM_FAULT_ALL_ONES, 2, 1, 0x10, 3}));
    EXPECT_EQ(write(0x11, 7, 1), 0);
    EXPECT_EQ(write(0x11, 7, 2), ETIMEDOUT);
    EXPECT_EQ(write(0x11, 7, 3), ETIMEDOUT);
    EXPECT_EQ(read(0x11, 7), 1U);
    EXPECT_EQ(read(0x10, 3), 0x1052U);
    EXPECT_EQ(read(0x10, 3), 0xFFFFU);
    EXPECT_EQ(counts(), (std::vector<uint64_t>{6, 6, 2, 6, 1}));
}

TEST_F(ServedDevice, VanishesWithTheCloseAfterItsLastRequest)
{
    device->lastRequest = 2;
    read(0x10, 3);
    EXPECT_FALSE(Sim_Device_Is_Gone(*device));
    EXPECT_EQ(Sim_Device_Open(device.get()), 0);
    MDIO_Record record = {0x10, MDIO_READ, 3, 0, 0};
    EXPECT_EQ(Sim_Device_Request(device.get(), MDIO_REQUEST, &record), 0);
    EXPECT_EQ(record.value, 0x1052U);
    EXPECT_FALSE(Sim_Device_Is_Gone(*device)) << "the client still has it open";
    EXPECT_EQ(Sim_Device_Request(device.get(), MDIO_REQUEST, &record), ENODEV);
    EXPECT_EQ(Sim_Device_Open(device.get()), ENODEV);
    Sim_Device_Close(device.get());
    EXPECT_TRUE(Sim_Device_Is_Gone(*device));
    EXPECT_EQ(counts(), (std::vector<uint64_t>{2, 3, 1, 2, 1}));
}

TEST_F(ServedDevice, TracesWholeLinesOfWhatTheClientSees)
{
    Memory_File file;
    FILE *stream = fopen(file.path().c_str(), "w");
    Sim_Device_Down(device.get());
    ASSERT_TRUE(up(Sim_Board_Chip(), {SIM_DIRECT, 16}, stream));
    ASSERT_TRUE(Sim_Faults_Add(&device->faults, {SIM_FAULT_FAIL, 3, 1, SIM_ANY, SIM_ANY}));
    MDIO_Record record = {0x10, MDIO_READ, 3, 0, 0};
    EXPECT_EQ(access(&record, MDIO_REQUEST + 1), ENOTTY);
    EXPECT_EQ(read(0x10, 3), 0x1052U);
    EXPECT_EQ(write(0x11, 7, 0x123), 0);
    EXPECT_EQ(write(0x11, 7, 0x124), EIO);
    EXPECT_EQ(read(0x11, 7), 0x123U);
    Sim_Device_Down(device.get());
    fclose(stream);
    EXPECT_EQ(file.read(), "R 10 03 1052\nW 11 07 0123\nW 11 07 0124\nR 11 07 0123\n");
}

TEST_F(ServedDevice, IsUpOnceAndStartsAnewWithAChipAfterPowerOn)
{
    EXPECT_FALSE(up(Sim_Board_Chip(), {SIM_DIRECT, 16}));
    ASSERT_TRUE(Sim_Faults_Add(&device->faults, {SIM_FAULT_FAIL, 2, 1, SIM_ANY, SIM_ANY}));
    device->lastRequest = 3;
    EXPECT_EQ(write(0x11, 7, 5), 0);
    Sim_Device_Down(device.get());
    EXPECT_EQ(device->chip.ports[1][7], 5) << "still to be looked at";
    EXPECT_EQ(device->counts.requests, 1U);
    Sim_Device_Down(device.get());
    ASSERT_TRUE(up(Sim_Board_Chip(), {SIM_DIRECT, 16}));
    EXPECT_EQ(counts(), (std::vector<uint64_t>{0, 0, 0, 0, 0}));
    EXPECT_EQ(read(0x11, 7), 1U);
    EXPECT_EQ(read(0x11, 7), 1U);
    EXPECT_EQ(read(0x11, 7), 1U);
    EXPECT_FALSE(Sim_Device_Is_Gone(*device));
}

} // namespace
