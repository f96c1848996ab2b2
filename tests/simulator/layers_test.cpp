/* The simulated chip behind the register seam, and the layers that watch. */

#include "simulator/trace.h"
#include "tests/support/output_capture.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>

namespace
{

/* Nothing of these tests may reach a real device: this handler is below everything. */
int refuse_all(void *context, unsigned long /*number*/, MDIO_Record * /*record*/)
{
    ++*static_cast<int *>(context);
    return -7;
}

class SeamLayers : public testing::Test
{
protected:
    void SetUp() override
    {
        Sim_Chip_Init(chip.get(), Sim_Board_Chip(), {SIM_DIRECT, 16});
        before = MDIO_Install({refuse_all, &refused});
    }
    void TearDown() override { MDIO_Install(before); }

    static int request(uint8_t operation, uint8_t address, uint8_t number, uint32_t *value)
    {
        MDIO_Record record = {address, operation, number, 0, *value};
        const int answer = MDIO_Request(MDIO_REQUEST, &record);
        *value = record.value;
        return answer;
    }
    static uint32_t read(uint8_t address, uint8_t number)
    {
        uint32_t value = 0;
        request(MDIO_READ, address, number, &value);
        return value;
    }
    static int write(uint8_t address, uint8_t number, uint32_t value)
    {
        return request(MDIO_WRITE, address, number, &value);
    }

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();
    MDIO_Handler before{};
    int refused = 0;
};

TEST_F(SeamLayers, PutTheChipBehindTheSeam)
{
    Sim_Layer seam{};
    ASSERT_TRUE(Sim_Seam_Install(&seam, chip.get()));
    uint32_t value = 0;
    EXPECT_EQ(request(MDIO_READ, 0x10, 3, &value), 0);
    EXPECT_EQ(value, 0x1052U);
    EXPECT_EQ(write(0x11, 7, 0x0123), 0);
    EXPECT_EQ(read(0x11, 7), 0x0123U);
    EXPECT_EQ(read(9, 0), 0xFFFFU);
    EXPECT_EQ(refused, 0);
    EXPECT_TRUE(Sim_Layer_Remove(&seam));
}

TEST_F(SeamLayers, CutAWrittenValueTo16BitsOnTheBus)
{
    Sim_Layer seam{};
    Sim_Seam_Install(&seam, chip.get());
    EXPECT_EQ(write(0x11, 7, 0xABCD0123), 0);
    EXPECT_EQ(read(0x11, 7), 0x0123U);
    Sim_Layer_Remove(&seam);
}

TEST_F(SeamLayers, RefuseRequestsThatTheDeviceDoesNotKnow)
{
    Sim_Layer seam{};
    Sim_Seam_Install(&seam, chip.get());
    MDIO_Record record = {0x10, MDIO_READ, 3, 0, 0};
    EXPECT_EQ(MDIO_Request(MDIO_REQUEST + 1, &record), -1);
    EXPECT_EQ(errno, ENOTTY);
    record.operation = 2;
    EXPECT_EQ(MDIO_Request(MDIO_REQUEST, &record), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(record.value, 0U);
    Sim_Layer_Remove(&seam);
}

TEST_F(SeamLayers, GiveTheSeamBackWhenTheyAreRemoved)
{
    Sim_Layer seam{};
    Sim_Seam_Install(&seam, chip.get());
    EXPECT_TRUE(Sim_Layer_Remove(&seam));
    EXPECT_EQ(write(0x11, 7, 1), -7);
    EXPECT_EQ(refused, 1);
    EXPECT_TRUE(Sim_Seam_Install(&seam, chip.get())) << "and can be installed again";
    EXPECT_TRUE(Sim_Layer_Remove(&seam));
}

TEST_F(SeamLayers, AreRemovedInTheOppositeOrderOnly)
{
    Sim_Layer seam{};
    Sim_Counters counters{};
    ASSERT_TRUE(Sim_Seam_Install(&seam, chip.get()));
    ASSERT_TRUE(Sim_Counters_Install(&counters));
    EXPECT_FALSE(Sim_Layer_Remove(&seam));
    read(0x10, 3);
    EXPECT_EQ(counters.reads, 1U) << "both are still there";
    EXPECT_TRUE(Sim_Layer_Remove(&counters.layer));
    EXPECT_TRUE(Sim_Layer_Remove(&seam));
    EXPECT_FALSE(Sim_Layer_Remove(&seam)) << "removed already";
}

TEST_F(SeamLayers, AreInstalledOnceEach)
{
    Sim_Counters counters{};
    Sim_Recorder recorder{};
    Sim_Trace trace{};
    Sim_Layer seam{};
    ASSERT_TRUE(Sim_Seam_Install(&seam, chip.get()));
    ASSERT_TRUE(Sim_Counters_Install(&counters));
    ASSERT_TRUE(Sim_Recorder_Install(&recorder));
    ASSERT_TRUE(Sim_Trace_Install(&trace, stderr));
    EXPECT_FALSE(Sim_Seam_Install(&seam, chip.get()));
    EXPECT_FALSE(Sim_Counters_Install(&counters));
    EXPECT_FALSE(Sim_Recorder_Install(&recorder));
    EXPECT_FALSE(Sim_Trace_Install(&trace, stdout));
    EXPECT_EQ(trace.file, stderr);
    EXPECT_TRUE(Sim_Layer_Remove(&trace.layer));
    EXPECT_TRUE(Sim_Layer_Remove(&recorder.layer));
    EXPECT_TRUE(Sim_Layer_Remove(&counters.layer));
    EXPECT_TRUE(Sim_Layer_Remove(&seam));
}

TEST_F(SeamLayers, CountReadsWritesAndFailures)
{
    Sim_Layer seam{};
    Sim_Counters counters{};
    Sim_Counters_Install(&counters);
    read(0x10, 3);
    write(0x10, 3, 1);
    EXPECT_EQ(counters.failed, 2U) << "nothing answers yet";
    Sim_Layer_Remove(&counters.layer);

    MDIO_Install({[](void *, unsigned long, MDIO_Record *) { return 1; }, nullptr});
    counters = {};
    Sim_Counters_Install(&counters);
    EXPECT_EQ(write(0x10, 3, 1), 1);
    EXPECT_EQ(counters.failed, 0U) << "a positive answer is a good one";
    Sim_Layer_Remove(&counters.layer);

    counters = {};
    Sim_Seam_Install(&seam, chip.get());
    Sim_Counters_Install(&counters);
    read(0x10, 3);
    read(0x11, 7);
    write(0x11, 7, 1);
    EXPECT_EQ(counters.reads, 2U);
    EXPECT_EQ(counters.writes, 1U);
    EXPECT_EQ(counters.failed, 0U);
    Sim_Layer_Remove(&counters.layer);
    Sim_Layer_Remove(&seam);
}

TEST_F(SeamLayers, RecordEachAccessWithItsValueAfterwards)
{
    Sim_Layer seam{};
    Sim_Recorder recorder{};
    Sim_Seam_Install(&seam, chip.get());
    Sim_Recorder_Install(&recorder);
    read(0x10, 3);
    write(0x11, 7, 0x0123);
    Sim_Layer_Remove(&recorder.layer);
    Sim_Layer_Remove(&seam);

    ASSERT_EQ(recorder.records.size(), 2U);
    EXPECT_EQ(recorder.records[0].phyAddress, 0x10);
    EXPECT_EQ(recorder.records[0].operation, MDIO_READ);
    EXPECT_EQ(recorder.records[0].registerNumber, 3);
    EXPECT_EQ(recorder.records[0].value, 0x1052U);
    EXPECT_EQ(recorder.records[1].phyAddress, 0x11);
    EXPECT_EQ(recorder.records[1].operation, MDIO_WRITE);
    EXPECT_EQ(recorder.records[1].registerNumber, 7);
    EXPECT_EQ(recorder.records[1].value, 0x0123U);
}

TEST_F(SeamLayers, TraceALineForEachAccess)
{
    Sim_Layer seam{};
    Sim_Trace trace{};
    Output_Capture output;
    Sim_Seam_Install(&seam, chip.get());
    Sim_Trace_Install(&trace, stdout);
    read(0x10, 3);
    write(0x1B, 31, 0xABCD);
    read(0x09, 0);
    Sim_Layer_Remove(&trace.layer);
    read(0x10, 3);
    Sim_Layer_Remove(&seam);
    EXPECT_EQ(output.finish(), "R 10 03 1052\n"
                               "W 1b 1f abcd\n"
                               "R 09 00 ffff\n");
}

TEST_F(SeamLayers, TraceFailedAccessesToo)
{
    Sim_Trace trace{};
    Output_Capture output;
    Sim_Trace_Install(&trace, stdout);
    EXPECT_EQ(write(0x11, 7, 0x0005), -7);
    read(0x11, 7);
    Sim_Layer_Remove(&trace.layer);
    EXPECT_EQ(output.finish(), "W 11 07 0005\n"
                               "R 11 07 0000\n");
}

/* Whatever ends the program, the lines so far are there. */
TEST_F(SeamLayers, TraceIntoTheFileAtOnce)
{
    const Temporary_Folder folder;
    Sim_Layer seam{};
    Sim_Trace trace{};
    Sim_Seam_Install(&seam, chip.get());
    Sim_Trace_Install(&trace, Sim_Trace_Open((folder.path() + "/trace").c_str()));
    read(0x10, 3);
    EXPECT_EQ(folder.read("trace"), "R 10 03 1052\n");
    Sim_Layer_Remove(&trace.layer);
    Sim_Layer_Remove(&seam);
    EXPECT_TRUE(Sim_Trace_Close(&trace));
}

/* The request's own error goes to the caller, the line's to whoever closes the trace. */
TEST_F(SeamLayers, TellATraceThatCannotBeWritten)
{
    Sim_Layer seam{};
    Sim_Trace trace{};
    FILE *full = Sim_Trace_Open("/dev/full");
    ASSERT_NE(full, nullptr);
    Sim_Seam_Install(&seam, chip.get());
    Sim_Trace_Install(&trace, full);
    MDIO_Record record = {0x10, 7, 3, 0, 0};
    EXPECT_EQ(MDIO_Request(MDIO_REQUEST, &record), -1);
    EXPECT_EQ(errno, EINVAL) << "no such operation";
    Sim_Layer_Remove(&trace.layer);
    Sim_Layer_Remove(&seam);
    errno = 0;
    EXPECT_FALSE(Sim_Trace_Close(&trace));
    EXPECT_EQ(errno, ENOSPC);
}

TEST_F(SeamLayers, TraceTheWidestValueWhole)
{
    char line[SIM_TRACE_LINE];
    Sim_Trace_Line({255, MDIO_WRITE, 255, 0, 0xFFFFFFFF}, line);
    EXPECT_STREQ(line, "W ff ff ffffffff");
}

TEST_F(SeamLayers, StackInAnyOrder)
{
    Sim_Layer seam{};
    Sim_Counters inner{};
    Sim_Recorder recorder{};
    Sim_Counters outer{};
    Sim_Seam_Install(&seam, chip.get());
    Sim_Counters_Install(&inner);
    Sim_Recorder_Install(&recorder);
    Sim_Counters_Install(&outer);
    read(0x10, 3);
    write(0x11, 7, 2);
    EXPECT_EQ(inner.reads + inner.writes, 2U);
    EXPECT_EQ(outer.reads + outer.writes, 2U);
    EXPECT_EQ(recorder.records.size(), 2U);
    Sim_Layer_Remove(&outer.layer);
    Sim_Layer_Remove(&recorder.layer);
    Sim_Layer_Remove(&inner.layer);
    Sim_Layer_Remove(&seam);
    EXPECT_EQ(chip->ports[1][7], 2);
}

} // namespace
