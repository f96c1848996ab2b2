/* Hosts the switch console on standard input and output. */

#include "simulator/seam.h"
#include "simulator/trace.h"
#include "switch/console/main_menu.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <malloc.h>
#include <unistd.h>

namespace
{

constexpr int BAD_USAGE = 2;
constexpr const char *DEVICE_NODE = "/dev/mdio";

constexpr const char *USAGE =
    "usage: switch_console [--vlan] [--load] [--simulate] [--trace FILE] STARTUP_FILE\n"
    "\n"
    "Runs the switch console on standard input and output until its menu is left.\n"
    "\n"
    "  --vlan        show the menu for VLAN port modes in place of the full one\n"
    "  --load        load the startup file first\n"
    "  --simulate    use a simulated chip in place of the device /dev/mdio\n"
    "  --trace FILE  write a line for each register access: R or W, SMI address, register, value\n"
    "  --help        print this text\n"
    "\n"
    "STARTUP_FILE is what the console loads from and saves to.\n";

struct Options {
    bool help;
    bool vlan;
    bool load;
    bool simulate;
    const char *traceFile;
    const char *startupFile;
};

bool refuse(const char *message, const char *subject)
{
    fprintf(stderr, "switch_console: %s%s\n%s", message, subject, USAGE);
    return false;
}

bool take_startup_file(Options *options, const char *path)
{
    if (options->startupFile != nullptr) {
        return refuse("more than one startup file: ", path);
    }
    if (*path == '\0') {
        return refuse("the startup file's path is empty", "");
    }
    options->startupFile = path;
    return true;
}

/* The flag that an option sets; null for any other text. */
bool *flag_of(Options *options, const char *text)
{
    const struct {
        const char *name;
        bool *flag;
    } flags[] = {{"--help", &options->help},
                 {"--vlan", &options->vlan},
                 {"--load", &options->load},
                 {"--simulate", &options->simulate}};
    for (const auto &known : flags) {
        if (strcmp(text, known.name) == 0) {
            return known.flag;
        }
    }
    return nullptr;
}

/* Options up to --help, or all of them and the file. On false the reason has been printed. */
bool read_arguments(const char *const *argument, Options *options)
{
    for (++argument; *argument != nullptr && !options->help; ++argument) {
        if (bool *flag = flag_of(options, *argument)) {
            *flag = true;
        } else if (strcmp(*argument, "--trace") == 0) {
            options->traceFile = *++argument;
            if (options->traceFile == nullptr) {
                return refuse("--trace needs the path of a file", "");
            }
        } else if (**argument == '-') {
            return refuse("unknown option: ", *argument);
        } else if (!take_startup_file(options, *argument)) {
            return false;
        }
    }
    return options->help || options->startupFile != nullptr || refuse("no startup file", "");
}

/* All that the console works on; it lives as long as the program. */
struct Host {
    SW_Config running;
    SW_Config applied;
    SW_Config startupImage;
    SW_Config deviceImage;
    SW_Device device;
    SW_Sys_Config sysConfig;
    Sim_Chip chip;
    Sim_Layer seam;
    Sim_Trace trace;
};
Host host;

/* Blocks of a load, 2 MB for the largest file, go back to the system after it. The C library would
 * else raise the size from which it does so, and keep them from the second load on. */
void keep_no_large_blocks()
{
    constexpr int LARGE = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, LARGE);
}

/* The kernel device or the simulated chip, and the trace above it. */
bool prepare_seam(const Options &options)
{
    if (options.simulate) {
        Sim_Chip_Init(&host.chip, Sim_Board_Chip(), {SIM_DIRECT, 16});
        Sim_Seam_Install(&host.seam, &host.chip);
    } else if (access(DEVICE_NODE, F_OK) != 0) {
        fprintf(stderr, "switch_console: %s: %s\n", DEVICE_NODE, strerror(errno));
    }
    if (options.traceFile == nullptr) {
        return true;
    }
    FILE *file = Sim_Trace_Open(options.traceFile);
    if (file == nullptr) {
        fprintf(stderr, "switch_console: %s: %s\n", options.traceFile, strerror(errno));
        return false;
    }
    return Sim_Trace_Install(&host.trace, file);
}

void run_menu(const Options &options)
{
    SetSwitchConfigDefaults(&host.running);
    SetSwitchConfigDefaults(&host.applied);
    SW_Control control = {.running = &host.running,
                          .applied = &host.applied,
                          .startupImage = &host.startupImage,
                          .deviceImage = &host.deviceImage,
                          .startupPath = options.startupFile,
                          .device = &host.device,
                          .sysConfig = &host.sysConfig};
    uint32_t forceExit = 0;
    const auto menu = options.vlan ? Vlan_Main_Menu : Main_Menu;
    menu(&control, options.startupFile, &forceExit, options.load);
}

} // namespace

int main(int, char **arguments)
{
    Options options{};
    if (!read_arguments(arguments, &options)) {
        return BAD_USAGE;
    }
    if (options.help) {
        fputs(USAGE, stdout);
        return 0;
    }
    keep_no_large_blocks();
    if (!prepare_seam(options)) {
        return 1;
    }
    run_menu(options);
    return 0;
}
