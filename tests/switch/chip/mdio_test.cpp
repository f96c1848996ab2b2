#include "switch/chip/mdio.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <unistd.h>
#include <vector>

namespace
{

/* Keeps every request and answers with `result` and, for a read, `answer`. */
struct Journal {
    int result = 0;
    uint32_t answer = 0;
    std::vector<unsigned long> numbers;
    std::vector<std::array<uint8_t, 8>> records;
};

int keep_request(void *context, unsigned long number, MDIO_Record *record)
{
    auto *journal = static_cast<Journal *>(context);
    std::array<uint8_t, 8> bytes{};
    std::memcpy(bytes.data(), record, sizeof *record);
    journal->numbers.push_back(number);
    journal->records.push_back(bytes);
    if (record->operation == MDIO_READ && journal->result >= 0) {
        record->value = journal->answer;
    }
    return journal->result;
}

class MdioSeam : public testing::Test
{
protected:
    MdioSeam() : previous(MDIO_Install({keep_request, &journal})) {}
    ~MdioSeam() override { MDIO_Install(previous); }
    MdioSeam(const MdioSeam &) = delete;
    MdioSeam &operator=(const MdioSeam &) = delete;

    Journal journal;
    MDIO_Handler previous;
};

/* The record's value in the byte order of the machine. */
std::array<uint8_t, 8> record_bytes(uint8_t address, uint8_t operation, uint8_t number,
                                    uint32_t value)
{
    std::array<uint8_t, 8> bytes = {address, operation, number, 0, 0, 0, 0, 0};
    std::memcpy(bytes.data() + 4, &value, sizeof value);
    return bytes;
}

TEST_F(MdioSeam, WriteSendsAddressOperationRegisterAndValue)
{
    EXPECT_EQ(MDIO_Bus_Write(nullptr, 0x11, 7, 0x12345678), 1);
    EXPECT_EQ(journal.numbers, std::vector<unsigned long>{0xC0085701});
    ASSERT_EQ(journal.records.size(), 1U);
    EXPECT_EQ(journal.records[0], record_bytes(0x11, 1, 7, 0x12345678));
    /* The machines that the program is for are little-endian. */
    EXPECT_EQ(journal.records[0], (std::array<uint8_t, 8>{0x11, 1, 7, 0, 0x78, 0x56, 0x34, 0x12}));
}

TEST_F(MdioSeam, ReadSendsValueZeroAndTakesTheAnswerWhole)
{
    journal.answer = 0xABCD1234;
    uint32_t value = 0xFFFFFFFF;
    EXPECT_EQ(MDIO_Bus_Read(nullptr, 0x1B, 31, &value), 1);
    EXPECT_EQ(value, 0xABCD1234U);
    ASSERT_EQ(journal.records.size(), 1U);
    EXPECT_EQ(journal.records[0], record_bytes(0x1B, 0, 31, 0));
    EXPECT_EQ(journal.numbers, std::vector<unsigned long>{0xC0085701});
}

TEST_F(MdioSeam, AddressAndRegisterAreCutToEightBits)
{
    uint32_t value = 0;
    MDIO_Bus_Read(nullptr, 0x1234, 0x105, &value);
    MDIO_Bus_Write(nullptr, 0xFFFFFF02, 0x1FF, 3);
    ASSERT_EQ(journal.records.size(), 2U);
    EXPECT_EQ(journal.records[0], record_bytes(0x34, 0, 0x05, 0));
    EXPECT_EQ(journal.records[1], record_bytes(0x02, 1, 0xFF, 3));
}

TEST_F(MdioSeam, FailedRequestsAreHiddenAndReadsGiveZero)
{
    journal.result = -1;
    uint32_t value = 0xFFFFFFFF;
    EXPECT_EQ(MDIO_Bus_Read(nullptr, 1, 2, &value), 1);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(MDIO_Bus_Write(nullptr, 1, 2, 3), 1);
}

TEST_F(MdioSeam, RequestGivesTheHandlersAnswer)
{
    MDIO_Record record = {1, MDIO_READ, 2, 0, 0};
    for (const int answer : {0, 7, -5}) {
        journal.result = answer;
        EXPECT_EQ(MDIO_Request(99, &record), answer);
    }
    EXPECT_EQ(journal.numbers, (std::vector<unsigned long>{99, 99, 99}));
}

TEST_F(MdioSeam, InstallReturnsTheHandlerBefore)
{
    Journal second;
    const MDIO_Handler first = MDIO_Install({keep_request, &second});
    EXPECT_EQ(first.request, &keep_request);
    EXPECT_EQ(first.context, &journal);
    MDIO_Bus_Write(nullptr, 1, 2, 3);
    EXPECT_EQ(journal.records.size(), 0U);
    EXPECT_EQ(second.records.size(), 1U);
    MDIO_Install(first);
    MDIO_Bus_Write(nullptr, 1, 2, 3);
    EXPECT_EQ(journal.records.size(), 1U);
}

TEST_F(MdioSeam, NullFunctionStandsForTheKernelDevice)
{
    MDIO_Install({nullptr, &journal});
    const MDIO_Handler kernel = MDIO_Install({keep_request, &journal});
    EXPECT_EQ(kernel.request, previous.request);
    EXPECT_NE(kernel.request, nullptr);
    EXPECT_EQ(kernel.context, nullptr);
}

TEST(MdioKernelDevice, MissingNodePrintsItsTextWithoutNewlineAndReadsZero)
{
    if (access("/dev/mdio", F_OK) == 0) {
        GTEST_SKIP() << "this machine has a /dev/mdio, which a test must not open";
    }
    uint32_t value = 0xFFFFFFFF;
    MDIO_Record record = {1, MDIO_WRITE, 2, 0, 5};
    Output_Capture output;
    const int read_answer = MDIO_Bus_Read(nullptr, 1, 2, &value);
    const int write_answer = MDIO_Bus_Write(nullptr, 1, 2, 3);
    const int request_answer = MDIO_Request(MDIO_REQUEST, &record);
    EXPECT_EQ(output.finish(), "couldn't open nodecouldn't open nodecouldn't open node");
    EXPECT_EQ(read_answer, 1);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(write_answer, 1);
    EXPECT_EQ(request_answer, -1);
}

} // namespace
