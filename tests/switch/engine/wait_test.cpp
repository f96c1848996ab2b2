#include "switch/engine/wait.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

void keep_wait(void *context, uint32_t microseconds)
{
    static_cast<std::vector<uint32_t> *>(context)->push_back(microseconds);
}

TEST(Wait, InstalledFunctionTakesEveryWait)
{
    std::vector<uint32_t> waits;
    const SW_Wait_Handler before = SW_Install_Wait({keep_wait, &waits});
    SW_Wait(100000);
    SW_Wait(0);
    SW_Wait(1000000);
    const SW_Wait_Handler mine = SW_Install_Wait(before);
    EXPECT_EQ(waits, (std::vector<uint32_t>{100000, 0, 1000000}));
    EXPECT_EQ(mine.wait, &keep_wait);
    EXPECT_EQ(mine.context, &waits);
}

TEST(Wait, NullFunctionStandsForSleeping)
{
    std::vector<uint32_t> waits;
    const SW_Wait_Handler before = SW_Install_Wait({keep_wait, &waits});
    SW_Install_Wait({nullptr, &waits});
    SW_Wait(1);
    const SW_Wait_Handler sleeping = SW_Install_Wait(before);
    EXPECT_TRUE(waits.empty());
    EXPECT_EQ(sleeping.wait, before.wait);
    EXPECT_EQ(sleeping.context, nullptr);
}

} // namespace
