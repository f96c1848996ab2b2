#include "tests/switch/console/model_views.h"

#include "tests/switch/console/table_texts.h"

#include <cstdio>

namespace
{

constexpr const char *NAMES[] = {"CPU", "LAN", "WAN", "SFP0", "SFP1"};
constexpr const char *TAGS[] = {"Unmodified", "None", "Untagged", "Tagged"};
constexpr size_t RANGE_TEXT = 99; /* characters of a list of VLANs in the summary */

template <class... Arguments>
std::string formatted(const char *format, Arguments... arguments)
{
    char text[200];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

std::string cells(const Model_State &state, int port, Setting_View view)
{
    std::string row;
    for (const Setting_Row &column : setting_rows()) {
        if (column.view == view) {
            row += formatted(column.cell,
                             setting_text(column.kind, state.ports[port][column.setting]).c_str());
        }
    }
    return row;
}

/* The line of a port: PHY found, what its far end and the port's auto mode agree on. */
struct Line {
    const char *speed;
    bool full;
    bool up;
};

constexpr Line DOWN = {"Unknown", false, false};
constexpr Line FULL_1000 = {"1000 Mbps", true, true};
constexpr Line HALF_1000 = {"1000 Mbps", false, true};
constexpr Line FULL_100 = {"100 Mbps", true, true};
constexpr Line HALF_100 = {"100 Mbps", false, true};
constexpr Line FULL_10 = {"10 Mbps", true, true};
constexpr Line HALF_10 = {"10 Mbps", false, true};

/* By auto mode: the far end of LAN can everything, that of WAN everything but 1000 Mbit/s. */
constexpr Line LAN_LINES[] = {FULL_1000, FULL_1000, FULL_100, FULL_10,  FULL_1000, HALF_1000,
                              FULL_1000, HALF_1000, FULL_100, HALF_100, FULL_10,   HALF_10};
constexpr Line WAN_LINES[] = {FULL_100, DOWN, FULL_100, FULL_10,  FULL_100, HALF_100,
                              DOWN,     DOWN, FULL_100, HALF_100, FULL_10,  HALF_10};

Line line_of(const Model_State &chip, int port)
{
    switch (port) {
    case 0:
        return FULL_100;
    case 1:
        return LAN_LINES[chip.ports[port][SETTING_AUTO_MODE]];
    case 2:
        return WAN_LINES[chip.ports[port][SETTING_AUTO_MODE]];
    case 3:
        return FULL_1000;
    default:
        return DOWN;
    }
}

template <int Count>
std::string class_pairs(const Model_Array<int, Count> &classes)
{
    std::string text;
    for (int index = 0; index < Count; index++) {
        if (index != 0) {
            text += index % 8 == 0 ? "\n" : " | ";
        }
        text += formatted("%2d %2d", index, classes[index]);
    }
    return text + "\n";
}

/* The VLANs for which the test holds as a list of runs, cut to what the summary has room for. */
template <class Test>
std::string vlan_list(const Model_State &state, const Test &test)
{
    std::string list;
    for (int first = 0; first < MODEL_VIDS; first++) {
        if (!test(state.vlans[first])) {
            continue;
        }
        int last = first;
        while (last + 1 < MODEL_VIDS && test(state.vlans[last + 1])) {
            last++;
        }
        list += list.empty() ? "" : ",";
        list += run_text(first, last);
        first = last;
    }
    return list.substr(0, RANGE_TEXT);
}

/* The marks behind the VID of a port. */
std::string marks(const Model_State &state, int port)
{
    const auto &settings = state.ports[port];
    const Model_Vlan &vlan = state.vlans[settings[SETTING_VID]];
    if (settings[SETTING_VID] != 1 && !vlan.defined) {
        return "(Warning: not exists)";
    }
    const std::string ingress = settings[SETTING_DISCARD_TAGGED] != 0 ? "(tagged)" : "(untagged)";
    if (vlan.tags[port] == 2) {
        return ingress;
    }
    return ingress + (vlan.tags[port] == 3 ? "/(tagged)" : "/(other)");
}

std::string mode_text(const Model_State &state, int port)
{
    const auto &settings = state.ports[port];
    const std::string vid = formatted("(VID:%d", settings[SETTING_VID]);
    const bool missing = settings[SETTING_VID] != 1 && !state.vlans[settings[SETTING_VID]].defined;
    switch (settings[SETTING_DOT1Q_MODE]) {
    case 3:
        return " Access  " + vid + marks(state, port) + ")";
    case 2:
        return " Trunk   " + vid + marks(state, port) + ", Allowed:" + state.lists[port].text +
               " real:" +
               vlan_list(state,
                         [port](const Model_Vlan &vlan) {
                             return vlan.defined && vlan.tags[port] != 1;
                         }) +
               ")";
    case 1:
        return " Trunk   " + vid + marks(state, port) + ", Allowed: 1-4095 (ALL))";
    case 0:
        return " Custom  " + vid + (missing ? "(Warning: not exists)" : "") + ")";
    default:
        return "";
    }
}

std::string qos_mark(const Model_State &state, int port)
{
    const auto &settings = state.ports[port];
    const int32_t rule = settings[SETTING_MAP_RULE];
    const int32_t prio = settings[SETTING_PORT_PRIO];
    const bool alike = rule == settings[SETTING_IP_PRIO] && settings[SETTING_USER_PRIO] == 1;
    if (alike && (rule == 0 || (rule == 1 && prio == 0))) {
        return prio == 0 ? "" : formatted(" QOS:%d", prio);
    }
    return formatted(" QOS:%d - Custom", prio);
}

std::string summary_line(const Model_State &state, int port)
{
    const auto &settings = state.ports[port];
    const int32_t vid = settings[SETTING_VID];
    const std::string name = formatted("%-4s:", NAMES[port]);
    if (vid == 1 && settings[SETTING_DOT1Q_MODE] == 0) {
        return name + " Default (VID:1" +
               (settings[SETTING_DISCARD_TAGGED] == 1 ? ")\n" : "(untagged))\n");
    }
    if (vid == 0) {
        return name + " Failed  (VID:0)\n";
    }
    return name + mode_text(state, port) + qos_mark(state, port) +
           (state.modes[port] == MODE_CUSTOM ? " - Port Custom Settings\n" : "\n");
}

} // namespace

std::string shown_frame_size(const Model_State &state)
{
    return state.frame == 1 ? "Max Frame Size: 1632 Bytes\n" : "Max Frame Size: 1522 Bytes\n";
}

std::string shown_ports_status(const Model_State &chip)
{
    std::string text = PORTS_STATUS_HEADER;
    for (int port = 0; port < MODEL_PORTS; port++) {
        const Line line = line_of(chip, port);
        text += formatted(" %-4s | %-10s | %10s | %-6s | %-10s\n", NAMES[port],
                          port < 3 ? "True" : "False", line.speed, line.full ? "True" : "False",
                          line.up ? "True" : "False");
    }
    return text;
}

std::string shown_vlan_row(const Model_State &state, int port)
{
    return formatted("%-4s|", NAMES[port]) + cells(state, port, Setting_View::VLAN_TAB);
}

std::string shown_vlan_rows(const Model_State &state)
{
    std::string text = VLAN_HEADER;
    for (int port = 0; port < MODEL_PORTS; port++) {
        text += shown_vlan_row(state, port);
    }
    return text;
}

std::string shown_qos_rows(const Model_State &state)
{
    std::string text = QOS_HEADER;
    for (int port = 0; port < MODEL_PORTS; port++) {
        text += formatted("%-4s |", NAMES[port]) + cells(state, port, Setting_View::QOS_TAB);
    }
    return text;
}

std::string shown_vtu_rows(const Model_State &state)
{
    if (state.count < 1) {
        return "No VTU Entries\n";
    }
    std::string text = VTU_HEADER;
    for (const Model_Vlan &vlan : state.vlans) {
        if (!vlan.defined) {
            continue;
        }
        text += formatted(" %4d", vlan.vid);
        for (const int tag : vlan.tags) {
            text += formatted(" | %-10s", TAGS[tag]);
        }
        text += "\n";
    }
    return text;
}

std::string shown_cos_tables(const Model_State &state)
{
    return "User_priority Traff_class:\n" + class_pairs(state.userClasses) + "DSCP Traff_class:\n" +
           class_pairs(state.dscpClasses);
}

std::string shown_summary(const Model_State &state)
{
    const std::string vlans = vlan_list(state, [](const Model_Vlan &vlan) { return vlan.defined; });
    std::string text = "\nExisting VLANs:" + (vlans.empty() ? "<none>" : vlans) + "\n";
    for (int port = 0; port < MODEL_PORTS; port++) {
        text += summary_line(state, port);
    }
    return text;
}

std::string shown_device_status(const Model_State &chip)
{
    return "Marvell Switch Status:\n" + shown_frame_size(chip) + PORTS_STATUS_TITLE +
           shown_ports_status(chip) + VLAN_TITLE + shown_vlan_rows(chip) + VTU_TITLE +
           shown_vtu_rows(chip) + QOS_TITLE + shown_qos_rows(chip) + COS_TITLE +
           shown_cos_tables(chip) + shown_summary(chip);
}

std::string shown_running_config(const Model_State &running)
{
    std::string text = "Marvell Switch Config:\n" + shown_frame_size(running) +
                       PORTS_CONFIG_TITLE PORTS_CONFIG_HEADER;
    for (const int port : {1, 2}) {
        text +=
            formatted(" %-4s |", NAMES[port]) + cells(running, port, Setting_View::PORTS_CONFIG);
    }
    return text + VLAN_TITLE + shown_vlan_rows(running) + VTU_TITLE + shown_vtu_rows(running) +
           QOS_TITLE + shown_qos_rows(running) + COS_TITLE + shown_cos_tables(running) +
           shown_summary(running);
}

std::string shown_vlan_status(const Model_State &chip)
{
    return VTU_TITLE + shown_vtu_rows(chip) + VLAN_TITLE + shown_vlan_rows(chip) +
           shown_summary(chip);
}
