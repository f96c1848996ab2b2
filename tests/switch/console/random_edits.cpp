#include "tests/switch/console/random_edits.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace
{

constexpr int32_t HIGHEST_VID = MODEL_VIDS - 1;

/* Answers to the questions for a number; some of them are too large for what they are asked for,
 * some only before they are cut to 16 or 8 bits. */
const std::vector<int> VIDS = {0,  1,  1,   2,   3,    4,    10,   11,   12,    13,
                               19, 20, 100, 101, 4094, 4095, 4096, 4464, 65535, 65546};
const std::vector<int> PRIOS = {0, 1, 2, 3, 4, 5, 6, 7, 8, 255, 256, 263, 65536};

/* As the range prompts of the setting menus understand a range: in order, each number once. */
std::vector<int> sorted(const Model_Range &range)
{
    const std::set<int> values(range.values.begin(), range.values.end());
    return {values.begin(), values.end()};
}

bool is_within(const Model_Range &range, int lowest, int highest)
{
    return std::ranges::all_of(range.values,
                               [&](int value) { return value >= lowest && value <= highest; });
}

std::string line(char key)
{
    return std::string(1, key) + "\n";
}

std::string line(int32_t number)
{
    return std::to_string(number) + "\n";
}

/* All settings that one key asks for. */
std::vector<const Setting_Row *> rows_of_key(const Setting_Row &first)
{
    std::vector<const Setting_Row *> rows;
    for (const Setting_Row &row : setting_rows()) {
        if (row.menu == first.menu && row.key == first.key) {
            rows.push_back(&row);
        }
    }
    return rows;
}

int32_t highest_choice(Setting_Kind kind)
{
    switch (kind) {
    case Setting_Kind::RATE:
        return 12;
    case Setting_Kind::AUTO_MODE:
        return 11;
    default:
        return 3;
    }
}

/* What of a number is stored; false when it is refused. */
bool is_stored(const Setting_Row &row, int32_t *value)
{
    if (row.setting == SETTING_VID) {
        return *value <= HIGHEST_VID;
    }
    if (row.setting == SETTING_PORT_PRIO) {
        *value &= 0xFF;
        return *value <= 7;
    }
    return true;
}

int defined_vlans(const Model_State &state)
{
    return static_cast<int>(std::ranges::count(state.vlans, true, &Model_Vlan::defined));
}

/* As many numbers as there are VLANs: each of them, or the first twice and the last not. */
Model_Range as_many_as_vlans(bool each)
{
    Model_Range range = {each ? "1-4095" : "1-4094,1", {}};
    for (int vid = 1; vid < HIGHEST_VID; vid++) {
        range.values.push_back(vid);
    }
    range.values.push_back(each ? HIGHEST_VID : 1);
    return range;
}

/* What the VLAN menu makes of a VLAN that it names: no member. */
Model_Vlan fresh_vlan(int vid, bool defined)
{
    return {defined, vid, {{1, 1, 1, 1, 1}}};
}

} // namespace

Model_Range Random_Edits::pick_range(int lowest, int highest)
{
    Model_Range range;
    for (int pieces = 1 + below(3); pieces > 0; pieces--) {
        const int first = lowest + below(highest - lowest + 1);
        const int last = std::min(highest, first + below(std::min(20, highest - lowest + 1)));
        range.text += range.text.empty() ? "" : ",";
        range.text += run_text(first, last);
        for (int value = first; value <= last; value++) {
            range.values.push_back(value);
        }
    }
    return range;
}

/* Enter takes the range that was there. */
std::string Random_Edits::type_range(Model_Range *range, int lowest, int highest)
{
    if (below(5) == 0) {
        return "\n";
    }
    *range = pick_range(lowest, highest);
    return range->text + "\n";
}

std::string Random_Edits::type_ports()
{
    return type_range(&model_->ports, 0, MODEL_PORTS - 1);
}

Random_Edits::Typed_Number Random_Edits::type_flag(int32_t current)
{
    static const Typed_Number ANSWERS[] = {{"y\n", 1},  {"Y\n", 1}, {"yes\n", 1}, {"n\n", 0},
                                           {"no\n", 0}, {"x\n", 0}, {"1\n", 0}};
    const int answer = below(static_cast<int>(std::size(ANSWERS)) + 1);
    return answer == 0 ? Typed_Number{"\n", current} : ANSWERS[answer - 1];
}

/* Only the upper bound is looked at, so that negative numbers are stored where they are numbers
 * with a sign; letters are 0. */
Random_Edits::Typed_Number Random_Edits::type_choice(int32_t current, int32_t highest,
                                                     bool negatives)
{
    const int32_t negative = -1 - below(3);
    switch (below(12)) {
    case 0:
        return {"\n", current};
    case 1:
        return {line(highest + 1 + below(5)), current};
    case 2:
        return {line(negative), negatives ? negative : current};
    case 3:
        return {"abc\n", 0};
    default:
        const int32_t value = below(highest + 1);
        return {line(value), value};
    }
}

/* Numbers are cut to 16 bits. */
Random_Edits::Typed_Number Random_Edits::type_number(int32_t current,
                                                     const std::vector<int> &choices)
{
    const int choice = below(static_cast<int>(choices.size()) + 1);
    if (choice == 0) {
        return {"\n", current};
    }
    const int number = choices[static_cast<size_t>(choice - 1)];
    return {line(number), number & 0xFFFF};
}

Random_Edits::Typed_Number Random_Edits::type_vid(int32_t current)
{
    return type_number(current, VIDS);
}

Random_Edits::Typed_Number Random_Edits::type_value(const Setting_Row &row, int32_t current)
{
    if (row.kind == Setting_Kind::FLAG) {
        return type_flag(current);
    }
    if (row.kind == Setting_Kind::NUMBER) {
        return type_number(current, row.setting == SETTING_VID ? VIDS : PRIOS);
    }
    return type_choice(current, highest_choice(row.kind), true);
}

/* What the first port has is offered; Enter gives it to all ports. */
std::string Random_Edits::type_values(const std::vector<const Setting_Row *> &rows,
                                      const std::vector<int> &ports)
{
    Model_State &running = model_->running;
    const auto offered = running.ports[ports.front()];
    std::string lines;
    for (const Setting_Row *row : rows) {
        Typed_Number typed = type_value(*row, offered[row->setting]);
        lines += typed.line;
        if (!is_stored(*row, &typed.value)) {
            continue;
        }
        for (const int port : ports) {
            running.ports[port][row->setting] = typed.value;
        }
    }
    return lines;
}

std::string Random_Edits::set_ports()
{
    const auto all = setting_rows();
    const Setting_Row &row = all[static_cast<size_t>(below(static_cast<int>(all.size())))];
    /* The auto mode is for LAN and WAN; a range with other ports is refused. */
    const bool copper = row.setting == SETTING_AUTO_MODE;
    const bool good = copper && below(4) != 0;
    std::string lines =
        line(row.menu) + line(row.key) + (good ? type_range(&model_->ports, 1, 2) : type_ports());
    if (!copper || is_within(model_->ports, 1, 2)) {
        lines += type_values(rows_of_key(row), sorted(model_->ports));
    }
    return lines + "0\n";
}

std::string Random_Edits::set_classes(char key, int entries, Model_Range *range, int *classes)
{
    const std::string typed_range = type_range(range, 0, entries - 1);
    const std::vector<int> indexes = sorted(*range);
    const Typed_Number typed = type_number(classes[indexes.front()], PRIOS);
    if ((typed.value & 0xFF) < 4) {
        for (const int index : indexes) {
            classes[index] = typed.value & 0xFF;
        }
    }
    return "8\n" + line(key) + typed_range + typed.line + "0\n";
}

std::string Random_Edits::set_user_prio_classes()
{
    return set_classes('c', 8, &model_->userPrios, model_->running.userClasses.values);
}

std::string Random_Edits::set_dscp_classes()
{
    return set_classes('d', 64, &model_->dscps, model_->running.dscpClasses.values);
}

std::string Random_Edits::set_vlan_entry()
{
    const Typed_Number vid = type_vid(1);
    std::string lines = "7\n2\n" + vid.line;
    if (vid.value >= 1 && vid.value <= HIGHEST_VID) {
        Model_Vlan &vlan = model_->running.vlans[vid.value];
        model_->running.count += vlan.defined ? 0 : 1;
        if (!vlan.defined) {
            vlan = {true, vid.value, {}};
        }
        for (int &tag : vlan.tags) {
            const Typed_Number typed = type_choice(tag, 3, false);
            lines += typed.line;
            tag = typed.value;
        }
    }
    return lines + "0\n";
}

std::string Random_Edits::remove_vlan_entries()
{
    const std::string typed = type_range(&model_->vlanIds, 1, HIGHEST_VID);
    const Model_Range &range = model_->vlanIds;
    if (!range.values.empty() && is_within(range, 1, HIGHEST_VID)) {
        for (const int vid : range.values) {
            model_->running.vlans[vid] = {};
        }
        model_->running.count = defined_vlans(model_->running);
    }
    return "7\n4\n" + typed + "0\n";
}

void Random_Edits::remove_all()
{
    std::ranges::fill(model_->running.vlans, Model_Vlan());
    model_->running.count = 0;
}

std::string Random_Edits::remove_all_entries()
{
    remove_all();
    return "7\n3\n0\n";
}

std::string Random_Edits::remove_all_vlans()
{
    remove_all();
    return "3\n";
}

std::string Random_Edits::set_frame_size()
{
    const Typed_Number typed = type_choice(model_->running.frame, 1, false);
    model_->running.frame = typed.value;
    return "1\n" + typed.line;
}

/* Each confirmation starts from no. */
std::string Random_Edits::reset_to_factory()
{
    const Typed_Number sure = type_flag(0);
    if (sure.value == 1) {
        model_factory(&model_->running);
    }
    return "d\n" + sure.line;
}

std::string Random_Edits::reinit()
{
    const Typed_Number sure = type_flag(0);
    if (sure.value == 1) {
        model_reinit(&model_->chip);
    }
    return "r\n" + sure.line;
}

/* A VLAN that is named twice counts twice. The modes are renewed after a bad range as well. */
std::string Random_Edits::set_existing()
{
    const std::string typed = type_range(&model_->vlanIds, 1, HIGHEST_VID);
    if (is_within(model_->vlanIds, 1, HIGHEST_VID)) {
        remove_all();
        for (const int vid : model_->vlanIds.values) {
            model_->running.vlans[vid] = fresh_vlan(vid, true);
            model_->running.count++;
        }
    }
    model_renew_modes(&model_->running);
    return "z\n" + typed;
}

std::string Random_Edits::remove_existing()
{
    model_->vlanIds = {"1", {1}};
    const std::string typed = type_range(&model_->vlanIds, 1, HIGHEST_VID);
    for (const int vid : model_->vlanIds.values) {
        Model_Vlan &vlan = model_->running.vlans[vid];
        model_->running.count -= vlan.defined ? 1 : 0;
        vlan = fresh_vlan(vid, false);
    }
    return "x\n" + typed;
}

std::string Random_Edits::set_access()
{
    Model_State &running = model_->running;
    const std::string ports = type_ports();
    const Typed_Number vid = type_vid(running.ports[model_->ports.values.front()][SETTING_VID]);
    if (vid.value <= HIGHEST_VID) {
        for (const int port : model_->ports.values) {
            model_access_mode(&running, port, vid.value);
        }
    }
    return "c\n" + ports + vid.line;
}

std::string Random_Edits::set_trunk()
{
    Model_State &running = model_->running;
    const std::string ports = type_ports();
    const int first = model_->ports.values.front();
    const Typed_Number vid = type_vid(running.ports[first][SETTING_VID]);
    if (vid.value > HIGHEST_VID) {
        return "v\n" + ports + vid.line;
    }
    const Typed_Number tag_all = type_flag(running.ports[first][SETTING_DISCARD_TAGGED]);
    Model_Range list = running.lists[first];
    std::string typed_list = type_range(&list, 1, HIGHEST_VID);
    /* Enter may offer the "0" of an access port: refused, but offered again from then on. */
    if (below(10) == 0) {
        list = as_many_as_vlans(below(2) == 0);
        typed_list = list.text + "\n";
    }
    model_->vlanIds = list;
    if (is_within(list, 1, HIGHEST_VID)) {
        for (const int port : model_->ports.values) {
            model_trunk_mode(&running, port, vid.value, tag_all.value != 0, list);
        }
    }
    return "v\n" + ports + vid.line + tag_all.line + typed_list;
}

std::string Random_Edits::set_default()
{
    const std::string ports = type_ports();
    for (const int port : model_->ports.values) {
        model_default_mode(&model_->running, port);
    }
    return "b\n" + ports;
}

std::string Random_Edits::set_tdm()
{
    const Typed_Number prio = type_number(model_->running.ports[0][SETTING_PORT_PRIO], PRIOS);
    if (prio.value > 7) {
        return "n\n" + prio.line;
    }
    for (auto &settings : model_->running.ports) {
        settings[SETTING_MAP_RULE] = settings[SETTING_IP_PRIO] = settings[SETTING_PORT_PRIO] = 0;
        settings[SETTING_USER_PRIO] = 1;
    }
    model_->running.ports[0][SETTING_PORT_PRIO] = prio.value;
    return "n\n" + prio.line;
}

std::string Random_Edits::set_default_tdm()
{
    const Typed_Number sure = type_flag(0);
    if (sure.value == 1) {
        for (auto &settings : model_->running.ports) {
            settings[SETTING_MAP_RULE] = settings[SETTING_IP_PRIO] = 1;
            settings[SETTING_USER_PRIO] = 1;
            settings[SETTING_PORT_PRIO] = 0;
        }
    }
    return "m\n" + sure.line;
}

/* Settings of ports most of the time: they are the most. */
Typed_Edit Random_Edits::next()
{
    using Edit = std::string (Random_Edits::*)();
    struct Row {
        bool vlanMenu;
        int share;
        Edit edit;
    };
    static constexpr Row ROWS[] = {
        {false, 32, &Random_Edits::set_ports},
        {false, 3, &Random_Edits::set_user_prio_classes},
        {false, 3, &Random_Edits::set_dscp_classes},
        {false, 4, &Random_Edits::set_vlan_entry},
        {false, 2, &Random_Edits::remove_vlan_entries},
        {false, 1, &Random_Edits::remove_all_entries},
        {false, 2, &Random_Edits::set_frame_size},
        {false, 1, &Random_Edits::reset_to_factory},
        {false, 2, &Random_Edits::reinit},
        {true, 4, &Random_Edits::set_existing},
        {true, 2, &Random_Edits::remove_existing},
        {true, 1, &Random_Edits::remove_all_vlans},
        {true, 4, &Random_Edits::set_access},
        {true, 4, &Random_Edits::set_trunk},
        {true, 2, &Random_Edits::set_default},
        {true, 1, &Random_Edits::set_tdm},
        {true, 1, &Random_Edits::set_default_tdm},
    };
    int all = 0;
    for (const Row &row : ROWS) {
        all += row.share;
    }
    int chosen = below(all);
    const Row *row = ROWS;
    while (chosen >= row->share) {
        chosen -= row++->share;
    }
    return {row->vlanMenu, (this->*row->edit)() + "0\n"};
}
