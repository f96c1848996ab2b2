#include "tests/switch/console/console_model.h"

#include <iterator>
#include <set>

namespace
{

using Kind = Setting_Kind;
using View = Setting_View;

// clang-format off
constexpr Setting_Row ROWS[] = {
    {SETTING_AUTO_MODE,        Kind::AUTO_MODE,   '3', '2', "Auto Mode",         View::PORTS_CONFIG, " %-30s\n"},
    {SETTING_VID,              Kind::NUMBER,      '5', '2', "VID",               View::VLAN_TAB, "%4s|"},
    {SETTING_FORCE_VID,        Kind::FLAG,        '5', '3', "Force Default VID", View::VLAN_TAB, "%-8s|"},
    {SETTING_DOT1Q_MODE,       Kind::DOT1Q_MODE,  '5', '4', "VLAN Dot1Q Mode",   View::VLAN_TAB, "%-10s|"},
    {SETTING_DISCARD_TAGGED,   Kind::FLAG,        '5', '5', "Discard Tagged",    View::VLAN_TAB, "%-7s|"},
    {SETTING_DISCARD_UNTAGGED, Kind::FLAG,        '5', '6', "Discard Untagged",  View::VLAN_TAB, "%-8s|"},
    {SETTING_EGRESS_MODE,      Kind::EGRESS_MODE, '5', '7', "Egress Mode",       View::VLAN_TAB, "%-15s|"},
    {SETTING_CORE_TAG,         Kind::FLAG,        '5', '8', "Use Core Tag",      View::VLAN_TAB, "%-8s|"},
    {SETTING_EGRESS_RATE,      Kind::RATE,        '5', '9', "Egress Rate",       View::VLAN_TAB, "%13s|"},
    {SETTING_LIMIT_MGMT,       Kind::FLAG,        '5', 'b', "Limit MGMT",        View::VLAN_TAB, "%-5s|"},
    {SETTING_COUNT_IFG,        Kind::FLAG,        '5', 'b', "Count IFG",         View::VLAN_TAB, "%-5s|"},
    {SETTING_COUNT_PRE,        Kind::FLAG,        '5', 'b', "Count Pre",         View::VLAN_TAB, "%-5s\n"},
    {SETTING_PRI0_RATE,        Kind::RATE,        '8', '3', "Pri0Rate",          View::QOS_TAB, " %13s |"},
    {SETTING_PRI1_RATE,        Kind::FLAG,        '8', '4', "Pri1Rate",          View::QOS_TAB, " %-8s |"},
    {SETTING_PRI2_RATE,        Kind::FLAG,        '8', '5', "Pri2Rate",          View::QOS_TAB, " %-8s |"},
    {SETTING_PRI3_RATE,        Kind::FLAG,        '8', '6', "Pri3Rate",          View::QOS_TAB, " %-8s |"},
    {SETTING_MAP_RULE,         Kind::FLAG,        '8', '7', "PrioMapRule",       View::QOS_TAB, " %-11s |"},
    {SETTING_IP_PRIO,          Kind::FLAG,        '8', '8', "IP prio",           View::QOS_TAB, " %-7s |"},
    {SETTING_USER_PRIO,        Kind::FLAG,        '8', '9', "User prio",         View::QOS_TAB, " %-9s |"},
    {SETTING_PORT_PRIO,        Kind::NUMBER,      '8', 'b', "Port prio",         View::QOS_TAB, "%10s\n"},
};
// clang-format on
static_assert(std::size(ROWS) == MODEL_SETTINGS);

constexpr const char *RATES[] = {"Not limited",  "128K bits/sec", "256K bits/sec", "512K bits/sec",
                                 "1M bits/sec",  "2M bits/sec",   "4M bits/sec",   "8M bits/sec",
                                 "16M bits/sec", "32M bits/sec",  "64M bits/sec",  "128M bits/sec",
                                 "256M bits/sec"};
constexpr const char *DOT1Q_MODES[] = {"Disable", "Fallback", "Check", "Secure"};
constexpr const char *EGRESS_MODES[] = {"Unmodify egress", "Untagged egress", "Tagged egress",
                                        "Add tag"};
constexpr const char *AUTO_MODES[] = {
    "Auto for both speed and duplex",         "Auto for duplex only and speed 1000Mbps",
    "Auto for duplex only and speed 100Mbps", "Auto for duplex only and speed 10Mbps",
    "Auto for speed only and Full duplex",    "Auto for speed only and Half duplex",
    "Speed 1000Mbps and Full duplex",         "Speed 1000Mbps and Half duplex",
    "Speed 100Mbps and Full duplex",          "Speed 100Mbps and Half duplex",
    "Speed 10Mbps and Full duplex",           "Speed 10Mbps and Half duplex"};
constexpr const char *AUTO_MODE_LOGS[] = {
    "Speed Auto Duplex Auto", "Speed 1000 Duplex Auto", "Speed 100 Duplex Auto",
    "Speed 10 Duplex Auto",   "Speed Auto Duplex Full", "Speed Auto Duplex Half",
    "Speed 1000 Duplex Full", "Speed 1000 Duplex Half", "Speed 100 Duplex Full",
    "Speed 100 Duplex Half",  "Speed 10 Duplex Full",   "Speed 10 Duplex Half"};

template <size_t Count>
std::string listed(const char *const (&texts)[Count], int32_t value)
{
    return value >= 0 && value < static_cast<int32_t>(Count) ? texts[value] : "";
}

/* The modes are cut to two bits. A rate that is none of the codes, and faster than all of them,
 * ends at the highest. */
int32_t cut_to_chip(const Setting_Row &row, int32_t value)
{
    switch (row.kind) {
    case Kind::DOT1Q_MODE:
        return value & 3;
    case Kind::RATE:
        return value < 0 ? 12 : value;
    default:
        return value;
    }
}

/* The driver's status; only these two kinds know values that it refuses. */
int refusal(const Setting_Row &row, int32_t value)
{
    if (row.kind == Kind::EGRESS_MODE && (value < 0 || value > 3)) {
        return 1;
    }
    return row.kind == Kind::AUTO_MODE && (value < 0 || value > 11) ? 1 : 0;
}

constexpr const char *PORT_NAMES[] = {"CPU", "LAN", "WAN", "SFP0", "SFP1"};

bool is_copper(int port)
{
    return port == 1 || port == 2;
}

std::string logged(const Setting_Row &row, int32_t value)
{
    if (row.kind != Kind::AUTO_MODE) {
        return setting_text(row.kind, value);
    }
    const std::string text = listed(AUTO_MODE_LOGS, value);
    return text.empty() ? AUTO_MODE_LOGS[0] : text;
}

/* Writes a setting to the chip and adds the line that tells of it. True when it was taken. */
bool apply_setting(Console_Model *model, int port, const Setting_Row &row, std::string *lines)
{
    const int32_t value = model->running.ports[port][row.setting];
    const int32_t old = model->applied.ports[port][row.setting];
    const int status = refusal(row, value);
    if (status != 0) {
        *lines += "Switch: ...Set Port " + std::string(PORT_NAMES[port]) + " " + row.name +
                  "! Error:" + std::to_string(status) + "\n";
        return false;
    }
    model->chip.ports[port][row.setting] = cut_to_chip(row, value);
    if (value != old) {
        *lines += std::string("Switch: Port ") + std::to_string(port) + " " + row.name + ": " +
                  logged(row, old) + " -> " + logged(row, value) + "\n";
    }
    return true;
}

bool apply_port(Console_Model *model, int port, std::string *lines)
{
    bool good = true;
    for (const Setting_Row &row : ROWS) {
        if (row.setting != SETTING_AUTO_MODE || is_copper(port)) {
            good = apply_setting(model, port, row, lines) && good;
        }
    }
    return good;
}

/* Only VLANs that exist reach the chip. */
void apply_vlans(Console_Model *model)
{
    Model_State &chip = model->chip;
    chip.count = 0;
    for (int vid = 0; vid < MODEL_VIDS; vid++) {
        const Model_Vlan &vlan = model->running.vlans[vid];
        chip.vlans[vid] = vlan.defined ? vlan : Model_Vlan();
        chip.count += vlan.defined ? 1 : 0;
    }
}

std::string apply_frame(Console_Model *model)
{
    const int size = model->running.frame;
    if (size == model->applied.frame) {
        return "";
    }
    model->chip.frame = size;
    return size == 1 ? "Switch: Max Frame Size: 1522->1632\n"
                     : "Switch: Max Frame Size: 1632->1522\n";
}

void leave_all_vlans(Model_State *state, int port)
{
    for (Model_Vlan &vlan : state->vlans) {
        vlan.tags[port] = 1;
    }
}

void renew_access(Model_State *state, int port)
{
    auto &settings = state->ports[port];
    const int vid = settings[SETTING_VID];
    leave_all_vlans(state, port);
    settings[SETTING_DOT1Q_MODE] = 3;
    settings[SETTING_DISCARD_TAGGED] = 1;
    settings[SETTING_EGRESS_MODE] = 0;
    state->vlans[vid].tags[port] = 2;
    state->lists[port] = {std::to_string(vid), {vid}};
}

/* The native VLAN is tagged when everything is. */
void join_native_vlan(Model_State *state, int port)
{
    const auto &settings = state->ports[port];
    state->vlans[settings[SETTING_VID]].tags[port] = settings[SETTING_EGRESS_MODE] == 2 ? 3 : 2;
}

/* VLANs that do not exist get the port as well. */
void renew_trunk(Model_State *state, int port)
{
    auto &settings = state->ports[port];
    leave_all_vlans(state, port);
    settings[SETTING_DOT1Q_MODE] = 2;
    for (const int vid : state->lists[port].values) {
        state->vlans[vid].tags[port] = 3;
    }
    settings[SETTING_DISCARD_TAGGED] = 0;
    if (settings[SETTING_EGRESS_MODE] == 0 || settings[SETTING_EGRESS_MODE] == 3) {
        settings[SETTING_EGRESS_MODE] = 1;
    }
    join_native_vlan(state, port);
}

} // namespace

std::span<const Setting_Row> setting_rows()
{
    return ROWS;
}

std::string setting_text(Setting_Kind kind, int32_t value)
{
    switch (kind) {
    case Kind::FLAG:
        return value == 1 ? "True" : "False";
    case Kind::RATE:
        return listed(RATES, value);
    case Kind::DOT1Q_MODE:
        return listed(DOT1Q_MODES, value);
    case Kind::EGRESS_MODE:
        return listed(EGRESS_MODES, value);
    case Kind::AUTO_MODE:
        return listed(AUTO_MODES, value);
    default:
        return std::to_string(value);
    }
}

std::string run_text(int first, int last)
{
    std::string text = std::to_string(first);
    if (last > first) {
        text.append("-").append(std::to_string(last));
    }
    return text;
}

void model_factory(Model_State *state)
{
    *state = Model_State();
    state->frame = 1;
    for (int port = 0; port < MODEL_PORTS; port++) {
        for (const Model_Setting one : {SETTING_VID, SETTING_COUNT_IFG, SETTING_COUNT_PRE,
                                        SETTING_MAP_RULE, SETTING_IP_PRIO, SETTING_USER_PRIO}) {
            state->ports[port][one] = 1;
        }
        state->modes[port] = MODE_DEFAULT;
        state->lists[port] = {"1", {1}};
    }
    state->userClasses = {{1, 0, 0, 1, 2, 2, 3, 3}};
    for (int dscp = 0; dscp < 64; dscp++) {
        state->dscpClasses[dscp] = dscp / 16;
    }
}

Console_Model model_at_start()
{
    Console_Model model;
    model_factory(&model.running);
    model.applied = model.running;
    /* What the chip holds after power-on and load. */
    for (auto &settings : model.chip.ports) {
        settings[SETTING_VID] = settings[SETTING_IP_PRIO] = settings[SETTING_USER_PRIO] = 1;
    }
    model.chip.userClasses = {{0, 0, 1, 1, 2, 2, 3, 3}};
    model.chip.dscpClasses = model.running.dscpClasses;
    return model;
}

std::string model_apply(Console_Model *model)
{
    const Model_State before = model->running;
    const Model_State &applied = model->applied;
    std::string lines = apply_frame(model);
    if (before.vlans != applied.vlans) {
        apply_vlans(model);
    }
    /* What the modes change here is written with its port only, and VLANs not at all. */
    model_renew_modes(&model->running);
    bool good = true;
    for (int port = 0; port < MODEL_PORTS; port++) {
        if (before.ports[port] != applied.ports[port]) {
            good = apply_port(model, port, &lines) && good;
        }
    }
    if (before.userClasses != applied.userClasses) {
        model->chip.userClasses = before.userClasses;
    }
    if (before.dscpClasses != applied.dscpClasses) {
        model->chip.dscpClasses = before.dscpClasses;
    }
    model->applied = model->running;
    return lines + "Switch: Apply Changes - " + (good ? "Ok" : "Failed") + "\n";
}

void model_reinit(Model_State *chip)
{
    chip->frame = 1;
    for (auto &settings : chip->ports) {
        settings[SETTING_AUTO_MODE] = 0;
    }
}

void model_default_mode(Model_State *state, int port)
{
    auto &settings = state->ports[port];
    leave_all_vlans(state, port);
    settings[SETTING_VID] = 1;
    settings[SETTING_DOT1Q_MODE] = 0;
    settings[SETTING_DISCARD_TAGGED] = 0;
    settings[SETTING_EGRESS_MODE] = 0;
    state->lists[port] = {};
    state->modes[port] = MODE_DEFAULT;
}

void model_access_mode(Model_State *state, int port, int vid)
{
    state->ports[port][SETTING_VID] = vid;
    state->modes[port] = MODE_ACCESS;
    renew_access(state, port);
}

void model_trunk_mode(Model_State *state, int port, int vid, bool tagAll, const Model_Range &list)
{
    auto &settings = state->ports[port];
    const std::set<int> named(list.values.begin(), list.values.end());
    if (named.size() != MODEL_VIDS - 1) { /* a list of all VLANs waits for the apply */
        leave_all_vlans(state, port);
        for (const int allowed : list.values) {
            if (state->vlans[allowed].defined) {
                state->vlans[allowed].tags[port] = 3;
            }
        }
    }
    settings[SETTING_DOT1Q_MODE] = 2;
    state->modes[port] = MODE_TRUNK;
    settings[SETTING_VID] = vid;
    settings[SETTING_DISCARD_TAGGED] = 0;
    settings[SETTING_EGRESS_MODE] = tagAll ? 2 : 1;
    join_native_vlan(state, port);
    state->lists[port] = list;
}

void model_renew_modes(Model_State *state)
{
    for (int port = 0; port < MODEL_PORTS; port++) {
        switch (state->modes[port]) {
        case MODE_DEFAULT:
            model_default_mode(state, port);
            break;
        case MODE_ACCESS:
            renew_access(state, port);
            break;
        case MODE_TRUNK:
            renew_trunk(state, port);
            break;
        default:
            break;
        }
    }
}
