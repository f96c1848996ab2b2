#include "switch/chip/chips.h"

#include "switch/chip/families.h"

#include <algorithm>
#include <bit>

namespace
{

// clang-format off
constexpr Chip_Row CHIPS[] = {
    /* identifier ports valid   PHYs  set  bit */
    {0x105,          6, 0x003F, 0x0007, 'A', 13}, /* the board's: six gigabit ports, three PHYs */
    {0x095,         11, 0x07FF, 0x00FF, 'A', 11}, /* eight fast and three gigabit ports */
    {0x106,          8, 0x00FF, 0x00FF, 'A', 15}, /* eight gigabit ports, rate divisor over 28 */
    {0x1A7,         10, 0x03FF, 0x0000, 'A', 16}, /* ten ports without PHYs, divisor over 28 */
    {0x083,         10, 0x03FF, 0x00FF, 'A',  9}, /* newer port layout, older rate registers */
    {0x165,          6, 0x003F, 0x001F, 'A', 22}, /* no global frame size, own egress-rate block */
    {0x352,          7, 0x007F, 0x001F, 'A', 27}, /* as before, seven ports */
    {0x065,          6, 0x003F, 0x001F, 'A', 17}, /* base-relative, link facts from the PHY */
    {0x063,          6, 0x003F, 0x001F, 'A',  4}, /* base-relative, rate codes in the register */
    {0x052,          6, 0x003F, 0x001F, 'A',  2}, /* the oldest with a VLAN table */
    {0x060,          6, 0x003F, 0x001F, 'A',  0}, /* the oldest, without a VLAN table */
    {0x250,          4, 0x0063, 0x0003, 'B',  9}, /* group B, hardware ports 2 to 4 not brought out */
    {0x071,          7, 0x007F, 0x001F, 'B',  4}, /* group B */
    {3072,          11, 0x07FF, 0x01FF, 'B', 11}, /* group B, newer layout; 0xC00 to 0xC07 */
};
// clang-format on

/* The hardware port behind these has no SMI address of its own: another block stands there. On the
 * newer layout it also has no slot in a VLAN table entry; in set A of the older one the extended
 * fields of an entry begin there. */
constexpr int most_ports(const Chip_Row &row)
{
    if (Family_Passes(FAMILY_NEWER_LAYOUT, Chip_Family_A(row), Chip_Family_B(row))) {
        return 11;
    }
    return row.familySet == 'A' ? 6 : 7;
}

constexpr bool row_is_sound(const Chip_Row &row)
{
    return row.ports == std::popcount(row.validPorts) && row.validPorts >> most_ports(row) == 0 &&
           (row.phyPorts & ~row.validPorts) == 0 &&
           (row.familySet == 'A' || row.familySet == 'B') && row.familyBit < 32 &&
           std::ranges::count(CHIPS, row.identifier, &Chip_Row::identifier) == 1;
}
static_assert(std::ranges::all_of(CHIPS, row_is_sound));

constexpr uint16_t normalised(uint16_t identifier)
{
    return (identifier & ~7U) == 0xC00 ? 3072 : identifier;
}

} // namespace

std::span<const Chip_Row> Chip_Table()
{
    return CHIPS;
}

const Chip_Row *Chip_Find(uint16_t identifier)
{
    const auto *row = std::ranges::find(CHIPS, normalised(identifier), &Chip_Row::identifier);
    return row != std::end(CHIPS) ? row : nullptr;
}
