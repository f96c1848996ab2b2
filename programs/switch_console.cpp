/* Hosts the switch console on standard input and output. */

#include "programs/arguments.h"
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

constexpr const char *DEVICE_NODE = "/dev/mdio";

constexpr Program PROGRAM = {
    "switch_console",
    "usage: switch_console [--vlan] [--load] [--simulate] [--trace FILE] STARTUP_FILE\n"
    "\n"
    "Runs the switch console on standard input and output until its menu is left.\n"
    "\n"
    "  --vlan        show the menu for VLAN port modes in place of the full one\n"
    "  --load        load the startup file first\n"
    "  --simulate    use a simulated chip in place of the device /dev/mdio\n"
    "  --trace FILE  write a line for each register access: R or W, SMI address, register, value\n"
    "  --help        print this text\n"
    "  --version     print the version\n"
    "\n"
    "STARTUP_FILE is what the console loads from and saves to.\n"};

struct Options {
    bool vlan;
    bool load;
    bool simulate;
    const char *traceFile;
    const char *startupFile;
};

constexpr Option_Row<Options> OPTIONS[] = {
    {"vlan", nullptr, SetFlag<Options, &Options::vlan>},
    {"load", nullptr, SetFlag<Options, &Options::load>},
    {"simulate", nullptr, SetFlag<Options, &Options::simulate>},
    {"trace", "the path of a file", SetText<Options, &Options::traceFile>},
};

const char *take_startup_file(Options *options, const char *path)
{
    if (options->startupFile != nullptr) {
        return "more than one startup file: ";
    }
    if (*path == '\0') {
        return "the startup file's path is empty";
    }
    options->startupFile = path;
    return nullptr;
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

int main(int count, char **arguments)
{
    Options options{};
    const int status = ReadArguments<Options>(PROGRAM, OPTIONS, take_startup_file,
                                              {arguments, static_cast<size_t>(count)}, &options);
    if (status != GO_ON) {
        return status;
    }
    if (options.startupFile == nullptr) {
        return RefuseUsage(PROGRAM, "no startup file");
    }
    keep_no_large_blocks();
    if (!prepare_seam(options)) {
        return 1;
    }
    run_menu(options);
    return 0;
}
