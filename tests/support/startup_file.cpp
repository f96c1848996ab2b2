#include "tests/support/startup_file.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

namespace
{

using Words = std::vector<const char *>;

const Words FRAME_SIZES = {"1522", "1632", "LAST"};
const Words PORT_TYPES = {"NO", "CPU", "COPPER", "SFP", "LAST"};
const Words AUTO_MODES = {
    "SPEED_AUTO_DUPLEX_AUTO", "SPEED_1000_DUPLEX_AUTO", "SPEED_100_DUPLEX_AUTO",
    "SPEED_10_DUPLEX_AUTO",   "SPEED_AUTO_DUPLEX_FULL", "SPEED_AUTO_DUPLEX_HALF",
    "SPEED_1000_DUPLEX_FULL", "SPEED_1000_DUPLEX_HALF", "SPEED_100_DUPLEX_FULL",
    "SPEED_100_DUPLEX_HALF",  "SPEED_10_DUPLEX_FULL",   "SPEED_10_DUPLEX_HALF"};
const Words DOT1Q_MODES = {"DISABLE", "FALLBACK", "CHECK", "SECURE"};
const Words EGRESS_MODES = {"UNMODIFY_EGRESS", "UNTAGGED_EGRESS", "TAGGED_EGRESS", "ADD_TAG"};
const Words RATES = {"NO_LIMIT", "128K", "256K", "512K", "1M",   "2M",  "4M",
                     "8M",       "16M",  "32M",  "64M",  "128M", "256M"};
const Words VLAN_PORT_TYPES = {"NO", "DEFAULT", "ACCESS", "TRUNK", "CUSTOM", "LAST"};

const char *word(const Words &words, uint32_t value)
{
    return value < words.size() ? words[value] : "UNDEFINED";
}

const char *flag(uint32_t value)
{
    return value == 1 ? "YES" : "NO";
}

[[gnu::format(printf, 2, 3)]] void print(std::string *text, const char *format, ...)
{
    char piece[1000];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(piece, sizeof piece, format, arguments);
    va_end(arguments);
    *text += piece;
}

void print_port(std::string *text, const SW_Config &config, int n)
{
    const SW_Port_Config &port = config.ports[n];
    print(text, "[SW_PORT%d]\n", n);
    print(text, "PORT_TYPE = %s AUTO_MODE = %s VID = %d VID_FORCE_DEFAULT = %s\n",
          word(PORT_TYPES, port.portType), word(AUTO_MODES, port.autoMode), port.vid,
          flag(port.vidForceDefault));
    print(text, "DOT1Q_MODE = %s DISCARD_TAGGED = %s DISCARD_UNTAGGED = %s EGRESS_MODE = %s\n",
          word(DOT1Q_MODES, port.dot1qMode), flag(port.discardTagged), flag(port.discardUntagged),
          word(EGRESS_MODES, port.egressMode));
    print(text, "USE_CORE_TAG = %s EGRESS_RATE = %s LIMIT_MGMT = %s COUNT_IFG = %s\n",
          flag(port.useCoreTag), word(RATES, port.egressRate), flag(port.limitMgmt),
          flag(port.countIfg));
    print(text, "COUNT_PRE = %s PRI0RATE = %s PRI1RATE = %s PRI2RATE = %s PRI3RATE = %s\n",
          flag(port.countPre), word(RATES, port.pri0Rate), flag(port.pri1Rate), flag(port.pri2Rate),
          flag(port.pri3Rate));
    print(text, "PRIOMAPRULE = %s IP_PRIO = %s USER_PRIO = %s TRAFF_CLASS = %d\n",
          flag(port.prioMapRule), flag(port.ipPrio), flag(port.userPrio), port.portPrio);
    print(text, "VLAN_PORT_LIST = \"%s\"\n", config.vlanPortList[n]);
    print(text, "VLAN_PORT_TYPE = %s\n", word(VLAN_PORT_TYPES, config.vlanPortType[n]));
}

void print_vlan(std::string *text, const Vlan_Table_Entry &vlan, int id)
{
    print(text, "[SW_VLAN%d]\n", id);
    print(text, "DBNUM = %d VLAN_VID = %d VID_PRI_OVERRIDE = %s", vlan.dbNum, vlan.vid,
          flag(vlan.vidPriOverride));
    print(text, " VID_PRIORITY = %d SID = %d VID_POLICY = %s\n", vlan.vidPriority, vlan.sid,
          flag(vlan.vidPolicy));
    for (int port = 0; port < 11; port++) {
        print(text, " MEMBER_TAG_P%d = %d", port, vlan.memberTagP[port]);
    }
    print(text, "\n");
    for (int port = 0; port < 11; port++) {
        print(text, " PORT_STATE_P%d = %d", port, vlan.portStateP[port]);
    }
    print(text, "\n");
}

void set_vlan(SW_Vlan_Entry *entry, int id)
{
    Vlan_Table_Entry &vlan = entry->vtu;
    vlan.vid = static_cast<uint16_t>(id);
    vlan.dbNum = static_cast<uint16_t>(id % 64);
    vlan.sid = static_cast<uint8_t>(id % 64);
    vlan.vidPriOverride = vlan.vidPolicy = id % 2 == 1;
    vlan.vidPriority = static_cast<uint8_t>(id % 8);
    for (int port = 0; port < VLAN_ENTRY_PORTS; port++) {
        vlan.memberTagP[port] = static_cast<uint8_t>((id + port) % 4);
        vlan.portStateP[port] = static_cast<uint8_t>((id + port + 1) % 4);
    }
    entry->defined = 1;
}

} // namespace

void SetAllVlans(SW_Config *config)
{
    SetSwitchConfigDefaults(config);
    for (int id = 1; id < SW_VLANS; id++) {
        set_vlan(&config->vlans[id], id);
    }
    config->vlanEntryCount = SW_VLANS - 1;
}

std::string StartupFileText(const SW_Config &config)
{
    std::string text;
    print(&text, "[SW_COMMON]\nMAX_FRAME_SIZE = %s\n", word(FRAME_SIZES, config.maxFrameSize));
    for (int port = 0; port < SW_PORTS; port++) {
        print_port(&text, config, port);
    }
    for (int id = 0; id < SW_VLANS; id++) {
        if (config.vlans[id].defined != 0) {
            print_vlan(&text, config.vlans[id].vtu, id);
        }
    }
    print(&text, "[SW_COS_USER_PRIO]\n");
    for (int i = 0; i < 8; i++) {
        print(&text, " V%d = %d", i, config.cosUserPrio[i]);
    }
    print(&text, "\n[SW_COS_DSCP]\n");
    for (int i = 0; i < 64; i++) {
        print(&text, "%s V%d = %d", i > 0 && i % 8 == 0 ? "\n" : "", i, config.cosDscp[i]);
    }
    return text + "\n";
}
