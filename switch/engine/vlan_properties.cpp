#include "switch/engine/vlan_properties.h"

#include "switch/config/keywords.h"
#include "switch/range/vlan_ranges.h"

#include <cstdio>

namespace
{

constexpr int DEFAULT_VID = 1;
constexpr int FIRST_VID = 1;
constexpr int LAST_VID = SW_VLANS - 1;

void print_existing_vlans(const SW_Config *config)
{
    char text[SW_RANGE_TEXT_SIZE];
    /* The label comes first: the formatter itself prints the "<none>" of an empty table. */
    printf("\nExisting VLANs:");
    Format_Defined_Vlans(config, text, sizeof text);
    printf("%s\n", text);
}

/* Three texts behind a VID. */
struct Marks {
    const char *ingress;
    const char *egress;
    const char *warning;
};

const char *egress_mark(uint8_t memberTag)
{
    if (memberTag == SW_Member_Tag_UNTAGGED) {
        return "";
    }
    return memberTag == SW_Member_Tag_TAGGED ? "/(tagged)" : "/(other)";
}

/* For a port whose VID is 1 to 4095. VLAN 1 counts as existing even when it is not defined. */
Marks marks_of(const SW_Config *config, int port)
{
    const SW_Port_Config &settings = config->ports[port];
    const SW_Vlan_Entry &entry = config->vlans[settings.vid];
    if (settings.vid != DEFAULT_VID && entry.defined == 0) {
        return {"", "", "(Warning: not exists)"};
    }
    /* Meant: this mark shows the discard flag, not the egress mode. */
    return {settings.discardTagged != 0 ? "(tagged)" : "(untagged)",
            egress_mark(entry.vtu.memberTagP[SW_Chip_Ports[port]]), ""};
}

void print_mode(const SW_Config *config, int port)
{
    const SW_Port_Config &settings = config->ports[port];
    const Marks marks = marks_of(config, port);
    char real[SW_RANGE_TEXT_SIZE];
    switch (settings.dot1qMode) {
    case SW_Dot1q_Mode_SECURE:
        printf(" Access  (VID:%d%s%s%s)", settings.vid, marks.ingress, marks.egress, marks.warning);
        break;
    case SW_Dot1q_Mode_CHECK:
        Format_Port_Vlans(config, SW_Chip_Ports[port], real, sizeof real);
        printf(" Trunk   (VID:%d%s%s%s, Allowed:%s real:%s)", settings.vid, marks.ingress,
               marks.egress, marks.warning, config->vlanPortList[port], real);
        break;
    case SW_Dot1q_Mode_FALLBACK:
        printf(" Trunk   (VID:%d%s%s%s, Allowed: %d-%d (ALL))", settings.vid, marks.ingress,
               marks.egress, marks.warning, FIRST_VID, LAST_VID);
        break;
    case SW_Dot1q_Mode_DISABLE:
        printf(" Custom  (VID:%d%s)", settings.vid, marks.warning);
        break;
    default:
        break;
    }
}

void print_qos_mark(const SW_Port_Config &settings)
{
    const bool factoryRule = settings.prioMapRule == 1 && settings.ipPrio == 1;
    const bool tdmRule = settings.prioMapRule == 0 && settings.ipPrio == 0;
    const bool known =
        settings.userPrio == 1 && (tdmRule || (factoryRule && settings.portPrio == 0));
    if (!known) {
        printf(" QOS:%d - Custom", settings.portPrio);
    } else if (settings.portPrio != 0) {
        printf(" QOS:%d", settings.portPrio);
    }
}

void print_port(const SW_Config *config, int port)
{
    const SW_Port_Config &settings = config->ports[port];
    printf("%-4s:", SW_Port_Names[port]);
    if (settings.vid == DEFAULT_VID && settings.dot1qMode == SW_Dot1q_Mode_DISABLE) {
        /* Meant: exactly 1 here, while the other modes look for any value but 0. */
        printf(" Default (VID:%d%s)\n", settings.vid,
               settings.discardTagged == 1 ? "" : "(untagged)");
        return;
    }
    if (settings.vid < FIRST_VID || settings.vid > LAST_VID) {
        printf(" Failed  (VID:%d)\n", settings.vid);
        return;
    }
    print_mode(config, port);
    print_qos_mark(settings);
    if (config->vlanPortType[port] == SW_Vlan_Port_Type_CUSTOM) {
        printf(" - Port Custom Settings");
    }
    putchar('\n');
}

} // namespace

void SW_Print_Vlan_Properties(const SW_Control *control)
{
    SW_Print_Vlan_Properties_Of(control->running);
}

void SW_Print_Vlan_Properties_Of(const SW_Config *config)
{
    print_existing_vlans(config);
    for (int port = 0; port < SW_PORTS; port++) {
        print_port(config, port);
    }
}
