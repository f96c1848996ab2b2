#pragma once

#include "switch/console/menu.h"

/*
 * What the two main menus share: start, banners, confirmations and the keys for the configuration
 * as a whole. Single-threaded.
 */

/* The start of main_menu.h, then the menu. */
void SW_Run_Main_Menu(const SW_Menu &menu, SW_Menu_Visit &visit, bool loadStartup);

/* The title and, on one line, the banners that hold. */
void SW_Print_Main_Heading(const SW_Menu_Visit &visit);

/* Asks; true for yes. Anything else, Enter and the end of input too, is no. */
bool SW_Confirmed(const char *question);

void SW_Act_Save(SW_Menu_Visit &visit);
void SW_Act_Load(SW_Menu_Visit &visit);
void SW_Act_Factory(SW_Menu_Visit &visit);
void SW_Act_Reinit(SW_Menu_Visit &visit);

// clang-format off
inline constexpr SW_Menu_Key SW_SAVE_KEY =
    {'s', SW_Letters::BOTH_CASES, SW_After::NO_REPRINT, "s. Switch: Save Running Config To Startup Config", nullptr, SW_Act_Save};
inline constexpr SW_Menu_Key SW_LOAD_KEY =
    {'l', SW_Letters::BOTH_CASES, SW_After::NO_REPRINT, "l. Switch: Load Startup Config To Running Config", nullptr, SW_Act_Load};
inline constexpr SW_Menu_Key SW_FACTORY_KEY =
    {'d', SW_Letters::BOTH_CASES, SW_After::NO_REPRINT, "d. Switch: Reset Running Config To Factory Settings", nullptr, SW_Act_Factory};
inline constexpr SW_Menu_Key SW_REINIT_KEY =
    {'r', SW_Letters::BOTH_CASES, SW_After::NO_REPRINT, "r. Switch: ReInit", nullptr, SW_Act_Reinit};
// clang-format on
