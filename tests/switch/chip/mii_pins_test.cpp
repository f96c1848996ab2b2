#include "switch/chip/mii.h"

#include <gtest/gtest.h>

namespace
{

TEST(PinPlaceholders, SendNothingAndSampleZero)
{
    uint32_t value = 99;
    EXPECT_EQ(MII_Debug, 0);
    EXPECT_EQ(MII_Bus_Write(nullptr, 1, 2, 3), 1);
    EXPECT_EQ(MII_Bus_Read(nullptr, 1, 2, &value), 1);
    EXPECT_EQ(value, 0U);
}

} // namespace
