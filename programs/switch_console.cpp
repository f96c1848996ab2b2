/* Hosts the switch console on standard input and output. */

#include "programs/arguments.h"
#include "simulator/seam.h"
#include "simulator/trace.h"
#include "switch/config/startup_text.h"
#include "switch/config/unread_keys.h"
#include "switch/console/main_menu.h"
#include "switch/engine/commands.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <string>
#include <system_error>
#include <unistd.h>

namespace
{

constexpr const char *DEVICE_NODE = "/dev/mdio";

constexpr Program PROGRAM = {
    "switch_console",
    "usage: switch_console [--vlan] [--load | --configure] [--backup] [--simulate] [--trace FILE]\n"
    "                      STARTUP_FILE\n"
    "\n"
    "Runs the switch console on standard input and output until its menu is left.\n"
    "\n"
    "  --vlan        show the menu for VLAN port modes in place of the full one\n"
    "  --load        load the startup file first, for a chip that was configured from it before\n"
    "  --configure   load the startup file first and write it to the chip; the factory settings\n"
    "                when it cannot be loaded\n"
    "  --backup      keep the startup file as it is now as STARTUP_FILE.bak first\n"
    "  --simulate    use a simulated chip in place of the device /dev/mdio\n"
    "  --trace FILE  write a line for each register access: R or W, SMI address, register, value\n"
    "  --help        print this text\n"
    "  --version     print the version\n"
    "\n"
    "STARTUP_FILE is what the console loads from and saves to.\n"};

struct Options {
    bool vlan;
    bool load;
    bool configure;
    bool backup;
    bool simulate;
    const char *traceFile;
    const char *startupFile;
};

constexpr Option_Row<Options> OPTIONS[] = {
    {"vlan", nullptr, SetFlag<Options, &Options::vlan>},
    {"load", nullptr, SetFlag<Options, &Options::load>},
    {"configure", nullptr, SetFlag<Options, &Options::configure>},
    {"backup", nullptr, SetFlag<Options, &Options::backup>},
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

bool complain(const std::string &subject, const char *reason)
{
    fprintf(stderr, "switch_console: %s: %s\n", subject.c_str(), reason);
    return false;
}

/* Under another name first: a backup is whole, and the former one stays until then. */
bool back_up(const char *path)
{
    namespace fs = std::filesystem;
    const std::string backup = std::string(path) + ".bak";
    const std::string unfinished = backup + ".new";
    std::error_code error;
    if (!fs::exists(path, error) && !error) {
        return true;
    }
    if (!error && !fs::is_regular_file(path, error)) {
        return complain(path, "not a regular file");
    }
    if (!error) {
        fs::copy_file(path, unfinished, fs::copy_options::overwrite_existing, error);
    }
    if (!error) {
        fs::rename(unfinished, backup, error);
    }
    if (!error) {
        return true;
    }
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    return complain(backup, error.message().c_str());
}

/* The kernel device or the simulated chip, and the trace above it. */
bool prepare_seam(const Options &options)
{
    if (options.simulate) {
        Sim_Chip_Init(&host.chip, Sim_Board_Chip(), {SIM_DIRECT, 16});
        Sim_Seam_Install(&host.seam, &host.chip);
    } else if (access(DEVICE_NODE, F_OK) != 0) {
        complain(DEVICE_NODE, strerror(errno));
    }
    if (options.traceFile == nullptr) {
        return true;
    }
    FILE *file = Sim_Trace_Open(options.traceFile);
    if (file == nullptr) {
        return complain(options.traceFile, strerror(errno));
    }
    return Sim_Trace_Install(&host.trace, file);
}

/* They are lost to whoever loads and saves. */
void tell_unread_keys(const char *path)
{
    SW_Startup_Text file = {};
    if (!ReadStartupText(path, &file)) {
        return;
    }
    const SW_Unread_Keys unread = FindUnreadKeys(file.text.get(), file.length);
    if (unread.keys > 0) {
        fprintf(stderr, "switch_console: %s: %d keys after line %d are not read\n", path,
                unread.keys, unread.line);
    }
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
    if (options.configure) {
        SW_Start_Configured(&control, options.startupFile);
    }
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
    if (options.load && options.configure) {
        return RefuseUsage(PROGRAM, "--configure loads the file: not with --load");
    }
    signal(SIGPIPE, SIG_IGN); /* what is typed is carried out, whoever still reads */
    if (options.backup && !back_up(options.startupFile)) {
        return 1;
    }
    keep_no_large_blocks();
    if (!prepare_seam(options)) {
        return 1;
    }
    tell_unread_keys(options.startupFile);
    run_menu(options);
    if (host.trace.file != nullptr && !Sim_Trace_Close(&host.trace)) {
        complain(options.traceFile, strerror(errno));
    }
    return 0;
}
