#include "switch/console/menu.h"

#include "switch/console/input.h"
#include "switch/console/ranges.h"
#include "switch/engine/apply.h"
#include "switch/range/range_lists.h"

#include <cstdio>

namespace
{

void print_menu(const SW_Menu &menu, const SW_Menu_Visit &visit)
{
    menu.heading(visit);
    for (const SW_Menu_Key &key : menu.keys) {
        if (key.line == nullptr) {
            continue;
        }
        std::fputs(key.line, stdout);
        if (key.lineEnd != nullptr) {
            key.lineEnd(visit);
        }
        std::fputc('\n', stdout);
    }
    std::fputs(menu.closing, stdout);
}

constexpr char lower_case(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

const SW_Menu_Key *find_key(const SW_Menu &menu, char typed)
{
    for (const SW_Menu_Key &key : menu.keys) {
        const bool both = key.letters == SW_Letters::BOTH_CASES;
        if (key.key == (both ? lower_case(typed) : typed)) {
            return &key;
        }
    }
    return nullptr;
}

} // namespace

void SW_Run_Menu(const SW_Menu &menu, SW_Menu_Visit &visit)
{
    char line[SW_MENU_LINE_SIZE];
    bool reprint = true;
    while (*visit.forceExit == 0) {
        if (reprint) {
            print_menu(menu, visit);
        }
        if (!SW_Read_Line(line, sizeof line)) {
            return;
        }
        if (line[0] == '0') {
            if (line[1] == '0') {
                *visit.forceExit = 1;
            }
            return;
        }
        const SW_Menu_Key *key = find_key(menu, line[0]);
        reprint = key == nullptr || key->after == SW_After::REPRINT;
        if (key != nullptr && key->act != nullptr) {
            key->act(visit);
        }
        /* A prompt or an inner menu may have met the end. */
        if (SW_Input_Ended()) {
            return;
        }
    }
}

void SW_Run_Setting_Menu(const SW_Menu &menu, SW_Control *control, uint32_t *forceExit)
{
    SW_Menu_Visit visit = {control, forceExit, nullptr, {}};
    Range_Str_To_Vector(SW_Ranges.ports, visit.ports, 0, SW_PORTS - 1, false);
    SW_Run_Menu(menu, visit);
}

void SW_Act_Apply(SW_Menu_Visit &visit)
{
    SW_Apply_Changes(visit.control, true, true);
}
