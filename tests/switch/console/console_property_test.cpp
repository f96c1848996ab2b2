/* Random edits typed into both main menus, applied and looked at on the simulated chip, against a
 * plain model of the console. */

#include "switch/console/device_views.h"
#include "tests/support/random_seed.h"
#include "tests/switch/console/console_session.h"
#include "tests/switch/console/model_views.h"
#include "tests/switch/console/random_edits.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

namespace
{

constexpr int APPLIES = 4;     /* of a round */
constexpr int MOST_EDITS = 10; /* before an apply */
constexpr uint16_t BOARD_CHIP = 0x105;

class ConsoleProperty : public ConsoleSession
{
protected:
    /* The console at its start on the board's chip as after power-on, its ports in random ones of
     * the modes that they can have from a startup file without VLANs. */
    void start();
    void do_edit();
    void apply();
    void expect_config_view();
    void expect_device_status();
    void expect_vlan_words();
    void expect_other_device_views();

    const uint32_t seed = test_seed();
    Console_Model model;
    Random_Edits edits{seed, &model};

private:
    std::string type(Main_Variant menu, const std::string &lines);
    std::string type(Setting_Menu menu, const std::string &lines);
    std::string heading() const;
    void expect_ports_of_vlan_tab();
    void expect_device_image();
    std::string trace() const;

    std::vector<std::string> typed; /* of this round, with the name of the menu */
};

void ConsoleProperty::start()
{
    use_chip(BOARD_CHIP);
    SetSwitchConfigDefaults(&running_);
    model = model_at_start();
    for (int port = 0; port < SW_PORTS; port++) {
        constexpr int MODES[] = {MODE_NO, MODE_DEFAULT, MODE_CUSTOM, MODE_CUSTOM};
        const int mode = MODES[edits.below(static_cast<int>(std::size(MODES)))];
        running_.vlanPortType[port] = static_cast<uint32_t>(mode);
        model.running.modes[port] = mode;
    }
    applied_ = running_;
    model.applied = model.running;
    ClearSwitchConfig(&device_image_);
    SW_Ranges = SW_INITIAL_RANGES;
    bring_up();
    typed.clear();
}

std::string ConsoleProperty::type(Main_Variant menu, const std::string &lines)
{
    typed.push_back((menu == Main_Menu ? "main menu:\n" : "VLAN main menu:\n") + lines);
    const std::string output = enter(menu, lines);
    recorder_.records.clear();
    return output;
}

std::string ConsoleProperty::type(Setting_Menu menu, const std::string &lines)
{
    typed.push_back("setting menu:\n" + lines);
    const std::string output = visit(menu, lines);
    recorder_.records.clear();
    return output;
}

std::string ConsoleProperty::trace() const
{
    std::ostringstream text;
    text << "GATEWAY_TEST_SEED=" << seed << '\n';
    for (const std::string &lines : typed) {
        text << lines;
    }
    return text.str();
}

/* The full main menu as it is printed once. */
std::string ConsoleProperty::heading() const
{
    const std::string banner = model.running == model.applied ? "" : NOT_APPLIED "\n";
    return MAIN_TITLE + banner +
           (model.running.frame == 1 ? MAIN_KEYS("1632 Bytes") : MAIN_KEYS("1522 Bytes"));
}

void ConsoleProperty::do_edit()
{
    const Typed_Edit edit = edits.next();
    type(edit.vlanMenu ? Vlan_Main_Menu : Main_Menu, edit.lines);
}

/* With the key of one of the menus. */
void ConsoleProperty::apply()
{
    const std::string key = edits.below(2) == 0 ? "a\n0\n" : "A\n0\n";
    const std::string main_heading = heading();
    const std::string banner = model.running == model.applied ? "" : NOT_APPLIED "\n";
    const std::string log = model_apply(&model);
    switch (edits.below(4)) {
    case 0:
        ASSERT_EQ(type(Main_Menu, key), main_heading + log) << trace();
        break;
    case 1:
        ASSERT_EQ(type(Vlan_Main_Menu, key), MAIN_TITLE + banner + VLAN_KEYS + log) << trace();
        break;
    case 2:
        ASSERT_EQ(type(Qos_Setting_Menu, key), QOS_MENU + log) << trace();
        break;
    default:
        ASSERT_EQ(type(Vtu_Setting_Menu, key), VTU_MENU + log) << trace();
    }
}

void ConsoleProperty::expect_config_view()
{
    ASSERT_EQ(type(Main_Menu, "c\n0\n"), heading() + shown_running_config(model.running))
        << trace();
}

void ConsoleProperty::expect_device_status()
{
    ASSERT_EQ(type(Main_Menu, "p\n0\n"), heading() + shown_device_status(model.chip)) << trace();
}

/* What no view shows: the tag bits of the table by chip port, nothing in the others. */
void ConsoleProperty::expect_vlan_words()
{
    for (int vid = 0; vid < MODEL_VIDS; vid++) {
        const auto &tags = model.chip.vlans[vid].tags;
        const int low = tags[2] | tags[1] << 4 | tags[0] << 8 | tags[4] << 12;
        const Sim_Vlan_Entry &entry = chip_.vlans.entries[vid];
        ASSERT_EQ(entry.valid, model.chip.vlans[vid].defined) << vid << '\n' << trace();
        ASSERT_EQ(entry.data[0], low) << vid << '\n' << trace();
        ASSERT_EQ(entry.data[1], tags[3]) << vid << '\n' << trace();
        ASSERT_EQ(entry.data[2], 0) << vid << '\n' << trace();
        ASSERT_EQ(entry.database, 0) << vid << '\n' << trace();
    }
}

void ConsoleProperty::expect_ports_of_vlan_tab()
{
    const std::string offered = model.ports.text;
    const std::string line = edits.type_ports();
    std::string rows;
    for (const int port : model.ports.values) {
        rows += shown_vlan_row(model.chip, port);
    }
    ASSERT_EQ(type(Main_Menu, "4\n" + line + "0\n"),
              heading() + "Ports Range(" + offered + "):" + VLAN_HEADER + rows)
        << trace();
}

/* What the views have read into the image, and left in it. */
void ConsoleProperty::expect_device_image()
{
    EXPECT_EQ(shown(Print_Device_Image), shown_device_status(model.chip));
    EXPECT_EQ(take_trace(), "");
    set_flags(1, 1);
}

void ConsoleProperty::expect_other_device_views()
{
    const Model_State &chip = model.chip;
    const std::string links = shown_ports_status(chip);
    const std::string vlan_tab = shown_vlan_rows(chip);
    const std::string qos = shown_qos_rows(chip) + COS_TITLE + shown_cos_tables(chip);
    EXPECT_EQ(type(Main_Menu, "2\n0\n"), heading() + links);
    EXPECT_EQ(type(Main_Menu, "6\n0\n"), heading() + shown_vtu_rows(chip));
    EXPECT_EQ(type(Vlan_Main_Menu, "p\n0\n"), MAIN_TITLE VLAN_KEYS + shown_vlan_status(chip));
    EXPECT_EQ(type(Qos_Setting_Menu, "p\n0\n"), QOS_MENU + qos + QOS_MENU);
    EXPECT_EQ(type(Vtu_Setting_Menu, "p\n0\n"), VTU_MENU + shown_vtu_rows(chip) + VTU_MENU);
    EXPECT_TRUE(type(Ports_Setting_Menu, "p\n0\n").ends_with("0. Back\n" + links));
    /* Between the menu, whose lines show the running configuration, and its second print. */
    const std::string view = type(Vlan_Setting_Menu, "p\n0\n");
    EXPECT_NE(view.find("0. Back\n" + vlan_tab + "\nVLAN Tab Setting Menu:\n"), std::string::npos)
        << view;
    expect_ports_of_vlan_tab();
    expect_device_image();
    ASSERT_FALSE(HasFailure()) << trace();
}

TEST_F(ConsoleProperty, DeviceViewsShowWhatTheAppliedEditsPutOnTheChip)
{
    const int rounds = test_rounds(300);
    for (int round = 0; round < rounds && !HasFailure(); round++) {
        start();
        for (int turn = 0; turn < APPLIES && !HasFailure(); turn++) {
            for (int count = edits.below(MOST_EDITS); count >= 0; count--) {
                do_edit();
            }
            expect_config_view();
            if (!HasFailure()) {
                apply();
            }
            if (!HasFailure()) {
                expect_device_status();
            }
            if (!HasFailure()) {
                expect_other_device_views();
            }
            if (!HasFailure()) {
                expect_vlan_words();
            }
        }
    }
}

/* Edits alone do not; a re-initialisation among them does what it always does. */
TEST_F(ConsoleProperty, NothingReachesTheChipBeforeAnApply)
{
    const int rounds = test_rounds(20);
    for (int round = 0; round < rounds && !HasFailure(); round++) {
        start();
        for (int count = edits.below(MOST_EDITS); count >= 0; count--) {
            do_edit();
        }
        expect_device_status();
    }
}

} // namespace
