#pragma once

#include "switch/engine/control.h"

#include <cstdint>

/*
 * The console's entry, in two variants: the full main menu with the setting menus below it, and the
 * one for VLAN port modes. Single-threaded.
 *
 * Both start with SW_Start: with load_startup the file at startup_path becomes the running and the
 * applied configuration, then the chip is brought up, whatever came of either. Then the menu runs
 * on standard input and output until it is left with "0", with "00", which sets *force_exit to 1 as
 * well, or at the end of input, which does not. With *force_exit set on entry there is no menu,
 * only the start. Leaving neither applies nor saves.
 *
 * startup_path is also where key "s" saves; key "l" and the "Not Saved" banner read the context's
 * startupPath. A host gives the same file for both.
 */
void Main_Menu(SW_Control *context, const char *startup_path, uint32_t *force_exit,
               bool load_startup);
void Vlan_Main_Menu(SW_Control *context, const char *startup_path, uint32_t *force_exit,
                    bool load_startup);
