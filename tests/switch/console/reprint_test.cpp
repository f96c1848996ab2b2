/* After which first characters a menu prints its text again, for every character there is. */

#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>

namespace
{

using Setting_Menu = void (*)(SW_Control *control, uint32_t *forceExit);
using Main_Variant = void (*)(SW_Control *context, const char *startup_path, uint32_t *force_exit,
                              bool load_startup);

struct Menu {
    const char *name;
    Setting_Menu setting; /* this one or the next */
    Main_Variant main;
    const char *title;
    const char *suppress;                        /* the characters after which it does not */
    std::map<char, const char *> furtherAnswers; /* what else a key reads */
};

void PrintTo(const Menu &menu, std::ostream *out)
{
    *out << menu.name;
}

// clang-format off
const Menu MENUS[] = {
    {"Qos", Qos_Setting_Menu, nullptr, "\nQOS Tab Setting Menu:\n", "\naA",
     {{'3', "\n\n"}, {'4', "\n\n"}, {'5', "\n\n"}, {'6', "\n\n"}, {'7', "\n\n"}, {'8', "\n\n"}, {'9', "\n\n"},
      {'b', "\n\n"}, {'B', "\n\n"}, {'c', "\n\n"}, {'C', "\n\n"}, {'d', "\n\n"}, {'D', "\n\n"}}},
    {"Vlan", Vlan_Setting_Menu, nullptr, "\nVLAN Tab Setting Menu:\n", "\naA",
     {{'2', "\n\n"}, {'3', "\n\n"}, {'4', "\n\n"}, {'5', "\n\n"}, {'6', "\n\n"}, {'7', "\n\n"}, {'8', "\n\n"},
      {'9', "\n\n"}, {'b', "\n\n\n\n"}, {'B', "\n\n\n\n"}}},
    {"Vtu", Vtu_Setting_Menu, nullptr, "\nVTU Tab Setting Menu:\n", "\naA",
     {{'2', "\n\n\n\n\n\n"}, {'4', "\n"}}},
    {"Ports", Ports_Setting_Menu, nullptr, "\nPorts Setting Menu:\n", "12aApP", {{'2', "1\n\n"}}},
    {"FullMain", nullptr, Main_Menu, MAIN_TITLE, "1246aAcCpPsSlLdDrR",
     {{'1', "\n"}, {'3', "0\n"}, {'4', "\n"}, {'5', "0\n"}, {'7', "0\n"}, {'8', "0\n"},
      {'l', "\n"}, {'L', "\n"}, {'d', "\n"}, {'D', "\n"}, {'r', "\n"}, {'R', "\n"}}},
    {"VlanMain", nullptr, Vlan_Main_Menu, MAIN_TITLE, "13aAbcdDglLmnpPrRsSvxz",
     {{'b', "\n"}, {'c', "\n\n"}, {'v', "\n\n\n\n"}, {'n', "\n"}, {'m', "\n"}, {'x', "\n"}, {'z', "\n"},
      {'l', "\n"}, {'L', "\n"}, {'d', "\n"}, {'D', "\n"}, {'r', "\n"}, {'R', "\n"}}},
};
// clang-format on

class Reprint : public ConsoleSession, public testing::WithParamInterface<Menu>
{
protected:
    std::string run(const std::string &typed)
    {
        const Menu &menu = GetParam();
        return menu.main != nullptr ? enter(menu.main, typed) : visit(menu.setting, typed);
    }

    /* The character alone on a line, and what else it makes the console read. */
    static std::string lines_of(char first)
    {
        const auto &answers = GetParam().furtherAnswers;
        const auto further = answers.find(first);
        return (first == '\n' ? "" : std::string(1, first)) + "\n" +
               (further == answers.end() ? "" : further->second);
    }
};

TEST_P(Reprint, FollowsTheMatrix)
{
    const std::string suppress = GetParam().suppress;
    for (int code = 0; code < 256; code++) {
        const char first = static_cast<char>(code);
        if (first == '0') {
            continue;
        }
        const bool again = suppress.find(first) == std::string::npos;
        EXPECT_EQ(count_of(run(lines_of(first) + "0\n"), GetParam().title), again ? 2U : 1U)
            << "character " << code;
    }
}

/* The flag holds for one pass only. */
TEST_P(Reprint, IsHeldBackOnce)
{
    for (const char first : std::string(GetParam().suppress)) {
        EXPECT_EQ(count_of(run(lines_of(first) + "?\n0\n"), GetParam().title), 2U) << first;
    }
}

INSTANTIATE_TEST_SUITE_P(Menus, Reprint, testing::ValuesIn(MENUS),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
