#include "switch/chip/mii.h"

#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

/* Stand-ins for the pin primitives that write down what goes over the pins. */
namespace
{

std::string pins;
uint32_t sample = 0;

} // namespace

void MII_Send_Bits(uint32_t bits, int count)
{
    for (int bit = count - 1; bit >= 0; --bit) {
        pins += ((bits >> bit) & 1U) != 0 ? '1' : '0';
    }
    pins += ' ';
}

uint32_t MII_Sample_Bits()
{
    pins += "sample ";
    return sample;
}

namespace
{

class BitBangedBus : public testing::Test
{
protected:
    BitBangedBus() { pins.clear(); }
    ~BitBangedBus() override { MII_Debug = 0; }
    BitBangedBus(const BitBangedBus &) = delete;
    BitBangedBus &operator=(const BitBangedBus &) = delete;
};

TEST_F(BitBangedBus, ReadFrameEndsWithSamplesAndASingleOne)
{
    sample = 0xBEEF;
    uint32_t value = 0;
    Output_Capture output;
    EXPECT_EQ(MII_Bus_Read(nullptr, 0x11, 7, &value), 1);
    EXPECT_EQ(output.finish(), "");
    EXPECT_EQ(value, 0xBEEFU);
    EXPECT_EQ(pins, "11111111111111111111111111111111 0110 10001 00111 sample 1 ");
}

TEST_F(BitBangedBus, WriteFrameHasTurnaroundAndSixteenBits)
{
    Output_Capture output;
    EXPECT_EQ(MII_Bus_Write(nullptr, 0x02, 0x1F, 0xFFFFA5C3), 1);
    EXPECT_EQ(output.finish(), "");
    EXPECT_EQ(pins, "11111111111111111111111111111111 0101 00010 11111 10 1010010111000011 ");
}

TEST_F(BitBangedBus, DebugFlagPrintsEachCall)
{
    sample = 4660;
    MII_Debug = 1;
    uint32_t value = 0;
    Output_Capture output;
    MII_Bus_Read(nullptr, 17, 7, &value);
    MII_Bus_Write(nullptr, 2, 31, 65535);
    MII_Debug = -1;
    MII_Bus_Write(nullptr, 0, 0, 0);
    EXPECT_EQ(output.finish(), "readmii called! phy_addr=17; reg_addr=7; value=4660\n"
                               "writemii called! phy_addr=2; reg_addr=31; value=65535\n"
                               "writemii called! phy_addr=0; reg_addr=0; value=0\n");
}

} // namespace
