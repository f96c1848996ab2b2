#pragma once

#include "switch/engine/control.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/*
 * What all menus of the console are made of. A menu is a table of keys; the loop that runs it is
 * written once. Single-threaded. Internal to this folder, as setting.h and main_commands.h are.
 */

/* One visit of a menu, from its entry until it is left. */
struct SW_Menu_Visit {
    SW_Control *control;
    uint32_t *forceExit;        /* flag: every menu is to be left */
    const char *startupPath;    /* where the main menus save; null in a setting menu */
    std::vector<int32_t> ports; /* setting menus: the ports range as it was last understood */
};

/* Which letters select a key. */
enum class SW_Letters : uint8_t { AS_WRITTEN, BOTH_CASES };

/* Whether the menu text is printed once more after a key. */
enum class SW_After : uint8_t { REPRINT, NO_REPRINT };

struct SW_Menu_Key {
    char key; /* the first character of a typed line, in lower case; '\n' for Enter alone */
    SW_Letters letters;
    SW_After after;
    const char *line; /* of the menu text, without its line feed; null: none */
    void (*lineEnd)(const SW_Menu_Visit &visit); /* prints what belongs to the line; or null */
    void (*act)(SW_Menu_Visit &visit);           /* null: nothing */
};

struct SW_Menu {
    void (*heading)(const SW_Menu_Visit &visit); /* prints what stands above the keys' lines */
    std::span<const SW_Menu_Key> keys;
    const char *closing; /* what stands below them */
};

/* True when no two keys answer to the same character, and none to "0", which leaves every menu. */
constexpr bool SW_Keys_Are_Distinct(std::span<const SW_Menu_Key> keys)
{
    for (size_t i = 0; i < keys.size(); i++) {
        if (keys[i].key == '0') {
            return false;
        }
        for (size_t j = 0; j < i; j++) {
            if (keys[i].key == keys[j].key) {
                return false;
            }
        }
    }
    return true;
}

/*
 * Runs the menu until it is left: prints its text, unless the key before does without, reads a line
 * and acts on its first character. A character that is no key prints the text again. "0" leaves;
 * "00" also sets the force-exit flag. A menu is left, too, when an action has set that flag, and at
 * the end of input, whether the menu or a prompt finds it; that does not set the flag. On entry
 * with the flag set nothing is printed or read.
 */
void SW_Run_Menu(const SW_Menu &menu, SW_Menu_Visit &visit);

/* Runs a setting menu, with the ports range as it stands; no port when it cannot be parsed. */
void SW_Run_Setting_Menu(const SW_Menu &menu, SW_Control *control, uint32_t *forceExit);

/* The key that all menus share. */
void SW_Act_Apply(SW_Menu_Visit &visit);
// clang-format off
inline constexpr SW_Menu_Key SW_APPLY_KEY =
    {'a', SW_Letters::BOTH_CASES, SW_After::NO_REPRINT, "a. Switch: Apply Changes", nullptr, SW_Act_Apply};
// clang-format on
