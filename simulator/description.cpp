#include "simulator/description.h"

#include <algorithm>
#include <bit>

namespace
{

constexpr uint16_t FOUR_BITS = 0x000F; /* of the database number */
constexpr uint16_t SIX_BITS = 0x030F;
constexpr uint16_t NO_VLANS = 0;

// clang-format off
constexpr Sim_Chip_Row CHIP_ROWS[] = {
    /* id   rev  layout              valid   PHYs    gigabit databases */
    {0x105, 0x2, SIM_LAYOUT_NEWER,   0x003F, 0x0007, 0x003F, SIX_BITS},  /* the board's */
    {0x095, 0x1, SIM_LAYOUT_NEWER,   0x07FF, 0x00FF, 0x0700, SIX_BITS},
    {0x106, 0x1, SIM_LAYOUT_NEWER,   0x00FF, 0x00FF, 0x00FF, SIX_BITS},
    {0x1A7, 0x1, SIM_LAYOUT_NEWER,   0x03FF, 0x0000, 0x03FF, SIX_BITS},
    {0x083, 0x1, SIM_LAYOUT_NEWER,   0x03FF, 0x00FF, 0x0300, NO_VLANS},
    {0x165, 0x1, SIM_LAYOUT_NEWER,   0x003F, 0x001F, 0x003F, SIX_BITS},
    {0x352, 0x1, SIM_LAYOUT_NEWER,   0x007F, 0x001F, 0x007F, SIX_BITS},
    {0x065, 0x1, SIM_LAYOUT_OLDER_A, 0x003F, 0x001F, 0x0000, SIX_BITS},
    {0x063, 0x1, SIM_LAYOUT_OLDER_A, 0x003F, 0x001F, 0x0000, FOUR_BITS},
    {0x052, 0x1, SIM_LAYOUT_OLDER_A, 0x003F, 0x001F, 0x0000, FOUR_BITS},
    {0x060, 0x1, SIM_LAYOUT_OLDER_A, 0x003F, 0x001F, 0x0000, NO_VLANS},
    {0x250, 0x1, SIM_LAYOUT_OLDER_B, 0x0063, 0x0003, 0x0000, SIX_BITS},
    {0x071, 0x1, SIM_LAYOUT_OLDER_B, 0x007F, 0x001F, 0x0000, SIX_BITS},
    {0xC00, 0x1, SIM_LAYOUT_NEWER,   0x07FF, 0x01FF, 0x07FF, NO_VLANS},
};
// clang-format on

constexpr bool row_is_sound(const Sim_Chip_Row &row)
{
    return row.identifier < 0xFFF && row.revision < 16 && row.validPorts < 1 << SIM_PORTS &&
           (row.phyPorts & ~row.validPorts) == 0 && (row.gigabitPorts & ~row.validPorts) == 0;
}
static_assert(std::ranges::all_of(CHIP_ROWS, row_is_sound));

} // namespace

std::span<const Sim_Chip_Row> Sim_Chip_Rows()
{
    return CHIP_ROWS;
}

const Sim_Chip_Row &Sim_Board_Chip()
{
    return CHIP_ROWS[0];
}

Sim_Link Sim_Link_Of(unsigned oneEnd, unsigned otherEnd)
{
    const unsigned common = oneEnd & otherEnd & SIM_UP_TO_1000;
    if (common == 0) {
        return SIM_LINK_DOWN;
    }
    const auto best = static_cast<unsigned>(std::bit_width(common)) - 1;
    return {true, (best & 1U) != 0, static_cast<uint8_t>(best / 2)};
}
