#pragma once

#include "tests/switch/console/prompt_texts.h"

#include <string>

/* The menus' texts and the prompts that several tests expect. */

// clang-format off
#define QOS_MENU \
    "\nQOS Tab Setting Menu:\n" \
    "1. QOS Tab Config Print *CFG*\n" \
    "2. COS Tab Config Print *CFG*\n" \
    "3. Set QOS Pri0Rate *CFG*\n" \
    "4. Set QOS Pri1Rate *CFG*\n" \
    "5. Set QOS Pri2Rate *CFG*\n" \
    "6. Set QOS Pri3Rate *CFG*\n" \
    "7. Set QOS PrioMapRule *CFG*\n" \
    "8. Set QOS IP prio *CFG*\n" \
    "9. Set QOS User prio *CFG*\n" \
    "b. Set QOS Port prio *CFG*\n" \
    "c. Set COS User priority Traff class *CFG*\n" \
    "d. Set COS DCSP Traff class *CFG*\n" \
    "a. Switch: Apply Changes\n" \
    "p. QOS/COS Tab Status Print =dev=\n"

#define VTU_MENU \
    "\nVTU Tab Setting Menu:\n" \
    "1. VTU Entries Config Print *CFG*\n" \
    "2. Add/Replace VTU Entry *CFG*\n" \
    "3. Remove all VTU entries *CFG*\n" \
    "4. Remove VTU entries range *CFG*\n" \
    "a. Switch: Apply Changes\n" \
    "p. VTU Entries Status Print =dev=\n" \
    "0. Back\n"

#define MAIN_TITLE "\nMarvell Switch Control Main Menu:\n"
#define NOT_APPLIED "(*!!! QRB Switch Config: Changed, Not Applied)"
#define NOT_SAVED "(*!!! QRB Switch Config: Changed, Not Saved)"

#define MAIN_KEYS(frameSize) \
    "1. Set Max Frame Size (" frameSize ") *CFG*\n" \
    "2. Get Ports Status =dev=\n" \
    "3. Set Ports\n" \
    "4. Get VLAN Tab =dev=\n" \
    "5. Set VLAN Tab\n" \
    "6. Get VTU Entries =dev=\n" \
    "7. Set VTU Entries\n" \
    "8. Get/Set QOS Tab\n" \
    "a. Switch: Apply Changes\n" \
    "c. Switch: Print Running Config\n" \
    "p. Switch: Print Status\n" \
    "s. Switch: Save Running Config To Startup Config\n" \
    "l. Switch: Load Startup Config To Running Config\n" \
    "d. Switch: Reset Running Config To Factory Settings\n" \
    "r. Switch: ReInit\n" \
    "<Enter>. -\n" \
    "0. Exit\n" \
    "00. Force Exit\n" \
    "\n"

#define MAIN_MENU MAIN_TITLE MAIN_KEYS("1632 Bytes")

#define VLAN_KEYS \
    "1. VTU Entries Config Print *CFG*\n" \
    "3. Remove all VTU entries *CFG*\n" \
    "p. VTU Entries Status Print =dev=\n" \
    "z. Set existing VLANs range *CFG*\n" \
    "x. Remove existing VLANs range *CFG*\n" \
    "c. Set Access Mode to Port range *GFG*\n" \
    "v. Set Trunk Mode to Port range *GFG*\n" \
    "b. Set Default Mode to Port range *GFG*\n" \
    "n. Set TDM QOS Mode *GFG*\n" \
    "m. Set Default TDM QOS Mode *GFG*\n" \
    "g. Get VLANs Properties *CFG*\n" \
    "a. Switch: Apply Changes\n" \
    "s. Switch: Save Running Config To Startup Config\n" \
    "l. Switch: Load Startup Config To Running Config\n" \
    "d. Switch: Reset Running Config To Factory Settings\n" \
    "r. Switch: ReInit\n" \
    "0. Back\n"

#define VLAN_MAIN_MENU MAIN_TITLE VLAN_KEYS

#define APPLY_OK "Switch: Apply Changes - Ok\n"

#define FRAME_SIZE_PROMPT "Max Frame Size" FRAME_SIZE_CHOICES

#define FACTORY_CONFIG \
    "Marvell Switch Config:\n" \
    "Max Frame Size: 1632 Bytes\n" \
    PORTS_CONFIG_TITLE PORTS_CONFIG_HEADER \
    " LAN  | Auto for both speed and duplex\n" \
    " WAN  | Auto for both speed and duplex\n" \
    VLAN_TITLE VLAN_HEADER FACTORY_VLAN_ROWS \
    VTU_TITLE "No VTU Entries\n" \
    QOS_TITLE QOS_HEADER FACTORY_QOS_ROWS \
    COS_TITLE FACTORY_COS_TABLES \
    FACTORY_VLAN_SUMMARY

#define REINIT_TEXT \
    "Try load marvell switch driver......done.\n" \
    "Marvell switch init success!\n" \
    "Device ID     : 0x105\n" \
    "Base Reg Addr : 0x10\n" \
    "No of Ports   : 6\n" \
    "CPU Port      : 3\n" \
    "MaxFrameSize  : 1632 Bytes\n"
// clang-format on

/* The items that the VLAN menu's lines show between the parentheses; those of the CPU port after
 * the factory settings unless told otherwise. */
struct Vlan_Items {
    std::string range = "0";
    std::string vid = " CPU:1";
    std::string force = " CPU:False";
    std::string dot1q = " CPU:Disable";
    std::string tagged = " CPU:False";
    std::string untagged = " CPU:False";
    std::string egress = " CPU:Unmodify egress";
    std::string core = " CPU:False";
    std::string rate = " CPU:Not limited";
    std::string bytes = " CPU:Limit MGMT(False),Count IFG(True),Count Pre(True)";
};

inline std::string vlan_menu(const Vlan_Items &items)
{
    return "\nVLAN Tab Setting Menu:\n (Ports range: " + items.range +
           ")\n"
           "1. VLAN Tab Config Print *CFG*\n"
           "2. Port VID (" +
           items.vid + " ) *CFG*\n3. Force Default VID (" + items.force +
           " ) *CFG*\n4. Vlan Dot1q Mode (" + items.dot1q + " ) *CFG*\n5. Discard Tagged (" +
           items.tagged + " ) *CFG*\n6. Discard Untagged (" + items.untagged +
           " ) *CFG*\n7. Egress Mode (" + items.egress + " ) *CFG*\n8. Use Core Tag (" +
           items.core + " ) *CFG*\n9. Egress Rate (" + items.rate + " ) *CFG*\nb. Bytes Count (" +
           items.bytes +
           " ) *CFG*\n"
           "a. Switch: Apply Changes\n"
           "p. VLAN Tab Status Print =dev=\n"
           "0. Back\n";
}

/* items: what stands between the parentheses of line 2. */
inline std::string ports_menu(const std::string &range, const std::string &items)
{
    return "\nPorts Setting Menu:\n (Ports range: " + range +
           ")\n"
           "1. Get port Auto Mode *CFG*\n"
           "2. Set port Auto Mode *CFG* (" +
           items +
           " )\n"
           "a. Switch: Apply Changes\n"
           "p. Ports Status Print =dev=\n"
           "0. Back\n";
}
