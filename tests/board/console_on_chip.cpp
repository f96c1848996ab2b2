/*
 * The switch console's own program with one step more at its end: what its chip holds is written to
 * a file. Usage: console_on_chip REGISTERS_FILE, then the arguments of switch_console.
 */

int switch_console_main(int count, char **arguments);

#define main switch_console_main
#include "programs/switch_console.cpp"
#undef main

#include "simulator/dump.h"

int main(int count, char **arguments)
{
    if (count < 2) {
        return BAD_USAGE;
    }
    const int status = switch_console_main(count - 1, arguments + 1);
    FILE *file = fopen(arguments[1], "we");
    if (file == nullptr) {
        return 1;
    }
    Sim_Dump(host.chip, file);
    return fclose(file) == 0 ? status : 1;
}
