#include "switch/chip/mii.h"

/* Placeholders: this board has no pins for the frame. */

void MII_Send_Bits(uint32_t /*bits*/, int /*count*/) {}

uint32_t MII_Sample_Bits()
{
    return 0;
}
