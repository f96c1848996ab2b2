#pragma once

#include "switch/config/keywords.h"

#include <cstdint>

/* The driver counts the two maximum frame sizes the other way round than the configuration: driver
 * 1 is 1522 bytes, any other driver value 1632 bytes. Pure; any thread. */

constexpr uint32_t DriverFrameSize(uint32_t size)
{
    return size == SW_Max_Frame_Size_1522 ? 1 : 0;
}

constexpr uint32_t ConfigFrameSize(uint32_t driverSize)
{
    return driverSize == 1 ? SW_Max_Frame_Size_1522 : SW_Max_Frame_Size_1632;
}
