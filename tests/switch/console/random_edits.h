#pragma once

#include "tests/switch/console/console_model.h"

#include <random>
#include <string>
#include <vector>

/* Lines typed into one of the two main menus, which they leave again. */
struct Typed_Edit {
    bool vlanMenu;
    std::string lines;
};

/*
 * Random edits of the running configuration as an operator types them: every setting key of both
 * main menus with values, ranges and choices that are taken and such that are refused, Enter among
 * them. Each is done in the model as well.
 */
class Random_Edits
{
public:
    Random_Edits(uint32_t seed, Console_Model *model) : random_(seed), model_(model) {}

    Typed_Edit next();

    /* A line for the prompt that asks for ports, the range that it leaves in the model. */
    std::string type_ports();

    int below(int bound) { return static_cast<int>(random_() % static_cast<uint32_t>(bound)); }

private:
    struct Typed_Number {
        std::string line;
        int32_t value;
    };

    std::string set_ports();
    std::string set_classes(char key, int entries, Model_Range *range, int *classes);
    std::string set_user_prio_classes();
    std::string set_dscp_classes();
    std::string set_vlan_entry();
    std::string remove_vlan_entries();
    std::string remove_all_entries();
    std::string remove_all_vlans();
    std::string set_frame_size();
    std::string reset_to_factory();
    std::string reinit();
    std::string set_existing();
    std::string remove_existing();
    std::string set_access();
    std::string set_trunk();
    std::string set_default();
    std::string set_tdm();
    std::string set_default_tdm();

    Model_Range pick_range(int lowest, int highest);
    std::string type_range(Model_Range *range, int lowest, int highest);
    Typed_Number type_flag(int32_t current);
    Typed_Number type_choice(int32_t current, int32_t highest, bool negatives);
    Typed_Number type_number(int32_t current, const std::vector<int> &choices);
    Typed_Number type_vid(int32_t current);
    Typed_Number type_value(const Setting_Row &row, int32_t current);
    std::string type_values(const std::vector<const Setting_Row *> &rows,
                            const std::vector<int> &ports);
    void remove_all();

    std::mt19937 random_;
    Console_Model *model_;
};
