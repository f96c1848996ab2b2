#pragma once

#include "switch/engine/control.h"

/*
 * Moving a whole configuration between the startup file, the running configuration and the chip.
 * Those that load differ on purpose in what they clear first and in what a failure leaves; see
 * each. The converter of the startup file prints lines of its own for bad entries. Nothing here
 * reads from the console; the caller asks for confirmations first. Single-threaded.
 */

/*
 * The console's start. With loadStartup the file at startupPath is loaded into running, which is
 * not cleared first: a failed load leaves in it what the loader left. Prints
 * "Switch: Load SW Config from \"%s\" - %s\n" and copies running over applied in both cases. Then,
 * in any case, the quiet bring-up; nothing is written to the chip's settings. Returns its status.
 */
int SW_Start(SW_Control *control, const char *startupPath, bool loadStartup);

/* Clears config and loads the file at path; when that fails, config holds the factory defaults.
 * Returns the result of the load; prints nothing. */
bool SW_Load_Startup_Config(SW_Control *control, const char *path, SW_Config *config);

/* Key "l": SW_Load_Startup_Config from the control's startupPath into running; prints
 * "Switch: Load Startup Config To Running Config - %s\n". Nothing is applied. */
bool SW_Load_Running_Config(SW_Control *control);

/* Key "s": saves running to the file at path and prints "Save to \"%s\" - %s\n". */
bool SW_Save_Running_Config(SW_Control *control, const char *path);

/* Key "d": sets the factory defaults in running and prints "Switch: Factory Settings\n". Nothing is
 * applied or saved. */
void SW_Set_Factory_Settings(SW_Control *control);

/*
 * Loads the file at path into running, not cleared first, and prints
 * "Switch: Load SW Config from \"%s\" - %s\n". When that fails, prints
 * "Switch: Default settings used", which does not end its line, and sets the factory defaults. With
 * `configure` writes everything to the chip, without log, and prints "Switch: Configure: %s\n".
 * applied stays as it is. Returns 0 always.
 */
int SW_Load_Config(SW_Control *control, const char *path, bool configure);

/* SW_Load_Config with `configure`. */
int SW_Load_Config_And_Configure(SW_Control *control, const char *path);

/*
 * The start of a board whose chip is to hold the startup file: the quiet bring-up, then
 * SW_Load_Config_And_Configure with its lines. The chip gets the VLAN table once more after it: the
 * membership that the VLAN port modes give is in running only then. At last the file is loaded into
 * running again, over the factory settings, which stay when it cannot be loaded, and applied is a
 * copy: the modes' membership is no change of the operator's. So the loader prints the lines of a
 * bad file twice. Every write is attempted; each that fails has its line.
 */
void SW_Start_Configured(SW_Control *control, const char *path);

/*
 * The two warnings of the main menus. *notApplied: running and applied differ in any byte.
 * *notSaved: the file at startupPath can be loaded and running differs in any byte from
 * startupImage, into which it is loaded. The image is not cleared first: a VLAN that was removed
 * from the file stays in it, so that the warning then stays.
 */
void SW_Get_Config_State(SW_Control *control, bool *notApplied, bool *notSaved);
