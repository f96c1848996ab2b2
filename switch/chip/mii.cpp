#include "switch/chip/mii.h"

#include <cstdio>

namespace
{

constexpr uint32_t START_AND_READ = 6;
constexpr uint32_t START_AND_WRITE = 5;
constexpr uint32_t TURNAROUND = 2;

void send_frame_head(uint32_t operation, uint32_t phyAddress, uint32_t registerNumber)
{
    MII_Send_Bits(0xFFFFFFFF, 32);
    MII_Send_Bits(operation, 4);
    MII_Send_Bits(phyAddress, 5);
    MII_Send_Bits(registerNumber, 5);
}

void print_call(const char *name, uint32_t phyAddress, uint32_t registerNumber, uint32_t value)
{
    if (MII_Debug != 0) {
        printf("%s called! phy_addr=%d; reg_addr=%d; value=%d\n", name,
               static_cast<int>(phyAddress), static_cast<int>(registerNumber),
               static_cast<int>(value));
    }
}

} // namespace

int MII_Debug = 0;

int MII_Bus_Read(SW_Device * /*device*/, uint32_t phyAddress, uint32_t registerNumber,
                 uint32_t *value)
{
    send_frame_head(START_AND_READ, phyAddress, registerNumber);
    *value = MII_Sample_Bits();
    MII_Send_Bits(1, 1);
    print_call("readmii", phyAddress, registerNumber, *value);
    return 1;
}

int MII_Bus_Write(SW_Device * /*device*/, uint32_t phyAddress, uint32_t registerNumber,
                  uint32_t value)
{
    print_call("writemii", phyAddress, registerNumber, value);
    send_frame_head(START_AND_WRITE, phyAddress, registerNumber);
    MII_Send_Bits(TURNAROUND, 2);
    MII_Send_Bits(value, 16);
    return 1;
}
