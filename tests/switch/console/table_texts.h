#pragma once

/* Titles, header lines and whole tables that several tests expect. */

// clang-format off
#define PORTS_CONFIG_TITLE "===== Ports Config =====\n"
#define PORTS_CONFIG_HEADER " Port | Speed Auto Mode\n"

#define VLAN_TITLE "===== VLAN Tab =====\n"
#define VLAN_HEADER \
"Port|Port|Force   |Vlan Dot1q|Discard|Discard |Egress Mode    |Use Core|Egress Rate  |Limit|Count|Count\n" \
"    |VID |Def. VID|Mode      |Tagged |Untagged|               |Tag     |             |MGMT |IFG  |Pre\n"

#define VTU_TITLE "===== VTU Tab =====\n"
#define VTU_HEADER "  VID | CPU        | LAN        | WAN        | SFP0       | SFP1      \n"

#define QOS_TITLE "===== QOS Tab =====\n"
#define QOS_HEADER \
    "Port |      Pri0Rate | Pri1Rate | Pri2Rate | Pri3Rate | PrioMapRule | IP prio | User prio | Port prio\n"

#define COS_TITLE "===== COS Tab =====\n"

#define PORTS_STATUS_TITLE "===== Ports Status =====\n"
#define PORTS_STATUS_HEADER " Port | PHY Detect | Speed Mode | Duplex | Link State\n"

/* The tables of a record that is all zero. */
#define ZERO_VLAN_ROWS \
"CPU |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n" \
"LAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n" \
"WAN |   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n" \
"SFP0|   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n" \
"SFP1|   0|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|False|False\n"

#define ZERO_QOS_ROWS \
  "CPU  |   Not limited | False    | False    | False    | False       | False   | False     |         0\n" \
  "LAN  |   Not limited | False    | False    | False    | False       | False   | False     |         0\n" \
  "WAN  |   Not limited | False    | False    | False    | False       | False   | False     |         0\n" \
  "SFP0 |   Not limited | False    | False    | False    | False       | False   | False     |         0\n" \
  "SFP1 |   Not limited | False    | False    | False    | False       | False   | False     |         0\n"

#define ZERO_COS_TABLES \
    "User_priority Traff_class:\n" \
    " 0  0 |  1  0 |  2  0 |  3  0 |  4  0 |  5  0 |  6  0 |  7  0\n" \
    "DSCP Traff_class:\n" \
    " 0  0 |  1  0 |  2  0 |  3  0 |  4  0 |  5  0 |  6  0 |  7  0\n" \
    " 8  0 |  9  0 | 10  0 | 11  0 | 12  0 | 13  0 | 14  0 | 15  0\n" \
    "16  0 | 17  0 | 18  0 | 19  0 | 20  0 | 21  0 | 22  0 | 23  0\n" \
    "24  0 | 25  0 | 26  0 | 27  0 | 28  0 | 29  0 | 30  0 | 31  0\n" \
    "32  0 | 33  0 | 34  0 | 35  0 | 36  0 | 37  0 | 38  0 | 39  0\n" \
    "40  0 | 41  0 | 42  0 | 43  0 | 44  0 | 45  0 | 46  0 | 47  0\n" \
    "48  0 | 49  0 | 50  0 | 51  0 | 52  0 | 53  0 | 54  0 | 55  0\n" \
    "56  0 | 57  0 | 58  0 | 59  0 | 60  0 | 61  0 | 62  0 | 63  0\n"

#define ZERO_PORTS_STATUS_ROWS \
    " CPU  | False      |    10 Mbps | False  | False     \n" \
    " LAN  | False      |    10 Mbps | False  | False     \n" \
    " WAN  | False      |    10 Mbps | False  | False     \n" \
    " SFP0 | False      |    10 Mbps | False  | False     \n" \
    " SFP1 | False      |    10 Mbps | False  | False     \n"

#define ZERO_VLAN_SUMMARY \
    "\n" \
    "Existing VLANs:<none>\n" \
    "CPU : Failed  (VID:0)\n" \
    "LAN : Failed  (VID:0)\n" \
    "WAN : Failed  (VID:0)\n" \
    "SFP0: Failed  (VID:0)\n" \
    "SFP1: Failed  (VID:0)\n"

/* The tables of the factory settings. */
#define FACTORY_VLAN_ROWS \
"CPU |   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n" \
"LAN |   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n" \
"WAN |   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n" \
"SFP0|   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n" \
"SFP1|   1|False   |Disable   |False  |False   |Unmodify egress|False   |  Not limited|False|True |True \n"

#define FACTORY_QOS_ROWS \
  "CPU  |   Not limited | False    | False    | False    | True        | True    | True      |         0\n" \
  "LAN  |   Not limited | False    | False    | False    | True        | True    | True      |         0\n" \
  "WAN  |   Not limited | False    | False    | False    | True        | True    | True      |         0\n" \
  "SFP0 |   Not limited | False    | False    | False    | True        | True    | True      |         0\n" \
  "SFP1 |   Not limited | False    | False    | False    | True        | True    | True      |         0\n"

#define FACTORY_COS_TABLES \
    "User_priority Traff_class:\n" \
    " 0  1 |  1  0 |  2  0 |  3  1 |  4  2 |  5  2 |  6  3 |  7  3\n" \
    "DSCP Traff_class:\n" \
    " 0  0 |  1  0 |  2  0 |  3  0 |  4  0 |  5  0 |  6  0 |  7  0\n" \
    " 8  0 |  9  0 | 10  0 | 11  0 | 12  0 | 13  0 | 14  0 | 15  0\n" \
    "16  1 | 17  1 | 18  1 | 19  1 | 20  1 | 21  1 | 22  1 | 23  1\n" \
    "24  1 | 25  1 | 26  1 | 27  1 | 28  1 | 29  1 | 30  1 | 31  1\n" \
    "32  2 | 33  2 | 34  2 | 35  2 | 36  2 | 37  2 | 38  2 | 39  2\n" \
    "40  2 | 41  2 | 42  2 | 43  2 | 44  2 | 45  2 | 46  2 | 47  2\n" \
    "48  3 | 49  3 | 50  3 | 51  3 | 52  3 | 53  3 | 54  3 | 55  3\n" \
    "56  3 | 57  3 | 58  3 | 59  3 | 60  3 | 61  3 | 62  3 | 63  3\n"

#define FACTORY_VLAN_SUMMARY \
    "\n" \
    "Existing VLANs:<none>\n" \
    "CPU : Default (VID:1(untagged))\n" \
    "LAN : Default (VID:1(untagged))\n" \
    "WAN : Default (VID:1(untagged))\n" \
    "SFP0: Default (VID:1(untagged))\n" \
    "SFP1: Default (VID:1(untagged))\n"
// clang-format on
