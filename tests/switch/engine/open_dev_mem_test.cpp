#include "switch/engine/bring_up.h"
#include "tests/support/output_capture.h"
#include "tests/switch/engine/system_stand_in.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>

namespace
{

class OpenDevMem : public testing::Test
{
protected:
    OpenDevMem()
    {
        memory_opens = {};
        SW_Mem_Mapped = 0;
    }
    ~OpenDevMem() override { SW_Mem_Mapped = 0; }

    std::string run()
    {
        Output_Capture output;
        result_ = SW_Open_Dev_Mem();
        return output.finish();
    }

    int result_ = 12345;
};

TEST_F(OpenDevMem, OpensForSynchronousReadingAndWriting)
{
    EXPECT_EQ(run(), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(memory_opens.count, 1);
    EXPECT_EQ(memory_opens.flags & O_ACCMODE, O_RDWR);
    EXPECT_EQ(memory_opens.flags & O_SYNC, O_DSYNC);
}

TEST_F(OpenDevMem, DoesNotKeepTheDescriptorAndOpensEachTime)
{
    run();
    EXPECT_EQ(fcntl(memory_opens.descriptor, F_GETFD), -1);
    EXPECT_EQ(errno, EBADF);
    run();
    EXPECT_EQ(memory_opens.count, 2);
    EXPECT_EQ(SW_Mem_Mapped, 0U);
}

TEST_F(OpenDevMem, RefusalPrintsTheLine)
{
    memory_opens.refused = true;
    EXPECT_EQ(run(), "Switch: Cannot open /dev/mem.\n");
    EXPECT_EQ(result_, -1);
    EXPECT_EQ(memory_opens.count, 1);
}

TEST_F(OpenDevMem, MappedMemoryIsNotOpened)
{
    memory_opens.refused = true;
    for (const uint32_t mapped : {1U, 0xFFFFFFFFU}) {
        SW_Mem_Mapped = mapped;
        EXPECT_EQ(run(), "");
        EXPECT_EQ(result_, 0);
    }
    EXPECT_EQ(memory_opens.count, 0);
}

} // namespace
