#pragma once

#include <cstdint>
#include <span>

/* What the driver knows about one chip. */
struct Chip_Row {
    uint16_t identifier;
    uint8_t ports;       /* as many as validPorts has bits */
    uint16_t validPorts; /* bit n: hardware port n is brought out */
    uint16_t phyPorts;   /* bit n: hardware port n has a PHY */
    char familySet;      /* 'A' or 'B' */
    uint8_t familyBit;   /* the one bit in that set */
};

/* All chips. */
std::span<const Chip_Row> Chip_Table();

/* The row of a device identifier, null when there is none. 0xC00 to 0xC07 are one chip. */
const Chip_Row *Chip_Find(uint16_t identifier);

/* The row's family sets. */
constexpr uint32_t Chip_Family_A(const Chip_Row &row)
{
    return row.familySet == 'A' ? 1U << row.familyBit : 0;
}

constexpr uint32_t Chip_Family_B(const Chip_Row &row)
{
    return row.familySet == 'B' ? 1U << row.familyBit : 0;
}
