#pragma once

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

/*
 * What a chip with exactly one family bit has, worked out by hand from the masks. Cells:
 *   layout  N newer, o older            FDV     force default VID, VLAN table flush and add: y or -
 *   dot1q   port register, - none       disc    discard tagged and untagged: y or -
 *   egm     egress mode, priorities     add     egress mode 3
 *   core    core tag                    dprio   2b or 3b: bits of the default priority
 *   p123    port register, - none       p0      v10 code, d9 divisor, - none
 *   er      v10 code, d10 divisor, own block, - none
 *   bc      10, 9+10, - none            mir     mirroring
 *   phyd    PHY detect                  link    bit
 *   dupspd  n newer, o older, PHY       mfs     frame size
 *   div0    divisor of p0: 32up, 28dn   dive    divisor of er; own block not told here
 *   vst     port states in the table    r8      extended fields in the table
 *   gset, pset, x60, x7e  set-up steps of the load, in this order
 */
struct Features {
    std::string name; /* the bit: A0 to A31, B0 to B31 */
    uint32_t familyA = 0;
    uint32_t familyB = 0;
    std::map<std::string, std::string> cells;

    const std::string &operator[](const char *column) const { return cells.at(column); }
    bool has(const char *column) const { return cells.at(column) != "-"; }
};

void PrintTo(const Features &features, std::ostream *stream);

/* All 64 rows. */
const std::vector<Features> &all_features();
