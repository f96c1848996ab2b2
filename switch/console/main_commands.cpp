#include "switch/console/main_commands.h"

#include "switch/console/prompts.h"
#include "switch/engine/bring_up.h"
#include "switch/engine/commands.h"

#include <cstdio>

void SW_Run_Main_Menu(const SW_Menu &menu, SW_Menu_Visit &visit, bool loadStartup)
{
    SW_Start(visit.control, visit.startupPath, loadStartup);
    SW_Run_Menu(menu, visit);
}

void SW_Print_Main_Heading(const SW_Menu_Visit &visit)
{
    std::fputs("\nMarvell Switch Control Main Menu:\n", stdout);
    bool notApplied = false;
    bool notSaved = false;
    SW_Get_Config_State(visit.control, &notApplied, &notSaved);
    if (notApplied) {
        std::fputs("(*!!! QRB Switch Config: Changed, Not Applied)", stdout);
    }
    if (notSaved) {
        std::fputs("(*!!! QRB Switch Config: Changed, Not Saved)", stdout);
    }
    if (notApplied || notSaved) {
        std::fputc('\n', stdout);
    }
}

bool SW_Confirmed(const char *question)
{
    uint32_t yes = 0;
    Ask_Yes_No(question, &yes);
    return yes != 0;
}

void SW_Act_Save(SW_Menu_Visit &visit)
{
    SW_Save_Running_Config(visit.control, visit.startupPath);
}

void SW_Act_Load(SW_Menu_Visit &visit)
{
    if (SW_Confirmed("Load Startup Config To Running Config?")) {
        SW_Load_Running_Config(visit.control);
    }
}

void SW_Act_Factory(SW_Menu_Visit &visit)
{
    if (SW_Confirmed("Set Factory Settings?")) {
        SW_Set_Factory_Settings(visit.control);
    }
}

void SW_Act_Reinit(SW_Menu_Visit &visit)
{
    if (SW_Confirmed("Switch ReInit?")) {
        SW_ReInit(visit.control);
    }
}
