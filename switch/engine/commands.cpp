#include "switch/engine/commands.h"

#include "switch/config/reader.h"
#include "switch/config/writer.h"
#include "switch/engine/apply.h"
#include "switch/engine/bring_up.h"

#include <cstdio>
#include <cstring>

namespace
{

const char *result_text(bool ok)
{
    return ok ? "Ok" : "Failed";
}

/* Meant: running is not cleared first, so that what the file leaves out stays. */
bool load_into_running(SW_Control *control, const char *path)
{
    const bool loaded = LoadSwitchConfigFile(path, control->running);
    printf("Switch: Load SW Config from \"%s\" - %s\n", path, result_text(loaded));
    return loaded;
}

bool differs(const SW_Config *a, const SW_Config *b)
{
    return memcmp(a, b, sizeof *a) != 0;
}

} // namespace

int SW_Start(SW_Control *control, const char *startupPath, bool loadStartup)
{
    if (loadStartup) {
        load_into_running(control, startupPath);
        *control->applied = *control->running;
    }
    return SW_Init_Quiet(control);
}

bool SW_Load_Startup_Config(SW_Control * /*control*/, const char *path, SW_Config *config)
{
    ClearSwitchConfig(config);
    const bool loaded = LoadSwitchConfigFile(path, config);
    if (!loaded) {
        SetSwitchConfigDefaults(config);
    }
    return loaded;
}

bool SW_Load_Running_Config(SW_Control *control)
{
    const bool loaded = SW_Load_Startup_Config(control, control->startupPath, control->running);
    printf("Switch: Load Startup Config To Running Config - %s\n", result_text(loaded));
    return loaded;
}

bool SW_Save_Running_Config(SW_Control *control, const char *path)
{
    const bool saved = SaveSwitchConfigFile(control->running, path);
    printf("Save to \"%s\" - %s\n", path, result_text(saved));
    return saved;
}

void SW_Set_Factory_Settings(SW_Control *control)
{
    SetSwitchConfigDefaults(control->running);
    printf("Switch: Factory Settings\n");
}

int SW_Load_Config(SW_Control *control, const char *path, bool configure)
{
    if (!load_into_running(control, path)) {
        /* Meant: the line goes on with what is printed next. */
        printf("Switch: Default settings used");
        SetSwitchConfigDefaults(control->running);
    }
    if (configure) {
        printf("Switch: Configure: %s\n", result_text(SW_Configure(control, false)));
    }
    return 0;
}

int SW_Load_Config_And_Configure(SW_Control *control, const char *path)
{
    return SW_Load_Config(control, path, true);
}

void SW_Start_Configured(SW_Control *control, const char *path)
{
    SW_Config *running = control->running;
    SW_Init_Quiet(control);
    SetSwitchConfigDefaults(running);
    SW_Load_Config_And_Configure(control, path);
    SW_Rebuild_VTU(control, running->vlans, running->vlanEntryCount);
    SetSwitchConfigDefaults(running);
    if (!LoadSwitchConfigFile(path, running)) {
        SetSwitchConfigDefaults(running);
    }
    *control->applied = *running;
}

void SW_Get_Config_State(SW_Control *control, bool *notApplied, bool *notSaved)
{
    *notApplied = differs(control->running, control->applied);
    /* Meant: the image keeps what an earlier reading put into it and this one leaves out. */
    *notSaved = LoadSwitchConfigFile(control->startupPath, control->startupImage) &&
                differs(control->running, control->startupImage);
}
