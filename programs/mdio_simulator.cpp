/* Serves the device /dev/mdio with the simulated switch chip behind it. */

#include "programs/arguments.h"
#include "simulator/cuse.h"
#include "simulator/dump.h"
#include "simulator/fault_text.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int FAILED = 1;
constexpr uint32_t HIGHEST_ADDRESS = 31;
constexpr uint32_t HIGHEST_IDENTIFIER = 0xFFF;
constexpr size_t MOST_NAME = 99;
constexpr size_t PATH_SIZE = 4096;
constexpr const char *CUSE = "/dev/cuse";

constexpr Program PROGRAM = {
    "mdio_simulator",
    "usage: mdio_simulator [--name NAME] [--chip CHIP] [--direct ADDRESS | --indirect ADDRESS]\n"
    "                      [--fault FAULT]... [--vanish N]\n"
    "                      [--trace FILE] [--counters FILE] [--registers FILE]\n"
    "\n"
    "Serves the device /dev/mdio with a simulated switch chip behind it, until SIGTERM or SIGINT.\n"
    "Needs the kernel's CUSE and the right to open /dev/cuse.\n"
    "\n"
    "  --name NAME         the device's name below /dev in place of mdio\n"
    "  --chip CHIP         the chip, as --chips lists it; default 0x105, the board's\n"
    "  --chips             list the chips\n"
    "  --direct ADDRESS    the chip is on the bus itself, the older ones from this SMI address "
    "on;\n"
    "                      the default, with 16\n"
    "  --indirect ADDRESS  it is reached through two registers of this SMI address\n"
    "  --fault FAULT       break requests: N[:COUNT[:KIND[:ADDRESS[:REGISTER]]]], up to 8 times\n"
    "                        N         the first one broken of those that fit, from 1\n"
    "                        COUNT     how many from there, or forever; default 1\n"
    "                        KIND      ones, busy, or an error's name; default EIO\n"
    "                        ADDRESS   SMI address, or any, the default; REGISTER likewise\n"
    "  --vanish N          end after N requests, so that the device vanishes\n"
    "  --trace FILE        write a line for each request: R or W, SMI address, register, value\n"
    "  --counters FILE     write the numbers of opens, requests, failures and closes\n"
    "  --registers FILE    write the chip's registers and its VLAN table\n"
    "  --help              print this text\n"
    "  --version           print the version\n"
    "\n"
    "Numbers are decimal, or hexadecimal after 0x. Counters and registers are written at the end\n"
    "and on SIGUSR1.\n"};

struct Options {
    const char *name;
    const Sim_Chip_Row *chip;
    Sim_Placement placement;
    Sim_Fault faults[SIM_FAULTS];
    int faultCount;
    uint32_t lastRequest; /* 0: never */
    const char *traceFile;
    const char *countersFile;
    const char *registersFile;
};

Taken take_name(Options *options, const char *text)
{
    options->name = text;
    return TakenIf(*text != '\0' && strlen(text) <= MOST_NAME && strchr(text, '/') == nullptr &&
                   strcmp(text, ".") != 0 && strcmp(text, "..") != 0);
}

Taken take_chip(Options *options, const char *text)
{
    uint32_t identifier = 0;
    if (!Sim_Number_Of_Text(text, HIGHEST_IDENTIFIER, &identifier)) {
        return Taken::NO;
    }
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        if (row.identifier == identifier) {
            options->chip = &row;
            return Taken::YES;
        }
    }
    return Taken::NO;
}

Taken take_placement(Options *options, Sim_Access_Mode mode, const char *text)
{
    uint32_t address = 0;
    if (!Sim_Number_Of_Text(text, HIGHEST_ADDRESS, &address)) {
        return Taken::NO;
    }
    options->placement = {mode, static_cast<uint8_t>(address)};
    return Taken::YES;
}

Taken take_direct(Options *options, const char *text)
{
    return take_placement(options, SIM_DIRECT, text);
}

Taken take_indirect(Options *options, const char *text)
{
    return take_placement(options, SIM_INDIRECT, text);
}

/* Tried on a plan of no device: only such faults are taken that the device's plan will take. */
Taken take_fault(Options *options, const char *text)
{
    Sim_Faults plan = {};
    Sim_Fault fault = {};
    if (options->faultCount == SIM_FAULTS || !Sim_Fault_Of_Text(text, &fault) ||
        !Sim_Faults_Add(&plan, fault)) {
        return Taken::NO;
    }
    options->faults[options->faultCount++] = fault;
    return Taken::YES;
}

Taken take_vanish(Options *options, const char *text)
{
    return TakenIf(Sim_Number_Of_Text(text, UINT32_MAX, &options->lastRequest) &&
                   options->lastRequest > 0);
}

Taken list_chips(Options * /*options*/, const char * /*value*/)
{
    constexpr const char *LAYOUTS[] = {"newer", "older, group A", "older, group B"};
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        printf("0x%03x  ports 0x%03x  PHYs 0x%03x  %s%s\n", static_cast<unsigned>(row.identifier),
               static_cast<unsigned>(row.validPorts), static_cast<unsigned>(row.phyPorts),
               LAYOUTS[row.layout], &row == &Sim_Board_Chip() ? ", the board's" : "");
    }
    return Taken::ANSWERED;
}

constexpr Option_Row<Options> OPTIONS[] = {
    {"name", "a name below /dev", take_name},
    {"chip", "a chip of the list", take_chip},
    {"chips", nullptr, list_chips},
    {"direct", "an SMI address from 0 to 31", take_direct},
    {"indirect", "an SMI address from 0 to 31", take_indirect},
    {"fault", "a fault that can be planned, one of 8", take_fault},
    {"vanish", "a number of requests from 1", take_vanish},
    {"trace", "the path of a file", SetText<Options, &Options::traceFile>},
    {"counters", "the path of a file", SetText<Options, &Options::countersFile>},
    {"registers", "the path of a file", SetText<Options, &Options::registersFile>},
};

/* All that is served; it lives as long as the program. */
struct Server {
    Sim_Device device;
    Sim_Cuse cuse;
    int signals;          /* readable when one has come */
    char node[PATH_SIZE]; /* the device's path */
};
Server server;

bool complain(const char *subject)
{
    fprintf(stderr, "mdio_simulator: %s: %s\n", subject, strerror(errno));
    return false;
}

void print_counts(FILE *file)
{
    Sim_Device_Print_Counts(server.device.counts, file);
}

void print_registers(FILE *file)
{
    Sim_Dump(server.device.chip, file);
}

/* Of a device or a pipe, which a rename would replace. */
bool is_no_file(const char *path)
{
    struct stat facts;
    return stat(path, &facts) == 0 && !S_ISREG(facts.st_mode);
}

/* A file under another name first: whoever finds it finds it whole. */
bool write_report(const char *path, void (*print)(FILE *file))
{
    char newPath[PATH_SIZE];
    const bool direct = is_no_file(path);
    snprintf(newPath, sizeof newPath, "%s%s", path, direct ? "" : ".new");
    FILE *file = fopen(newPath, "we");
    if (file == nullptr) {
        return complain(newPath);
    }
    print(file);
    const bool whole = ferror(file) == 0;
    return (fclose(file) == 0 && whole && (direct || rename(newPath, path) == 0)) || complain(path);
}

bool write_reports(const Options &options)
{
    const bool counted =
        options.countersFile == nullptr || write_report(options.countersFile, print_counts);
    const bool dumped =
        options.registersFile == nullptr || write_report(options.registersFile, print_registers);
    return counted && dumped;
}

bool end_trace(const Options &options)
{
    return server.device.trace.file == nullptr || Sim_Trace_Close(&server.device.trace) ||
           complain(options.traceFile);
}

/* Held back from here on, and read where the calls are waited for. */
bool hold_signals()
{
    sigset_t held;
    sigemptyset(&held);
    sigaddset(&held, SIGTERM);
    sigaddset(&held, SIGINT);
    sigaddset(&held, SIGUSR1);
    sigprocmask(SIG_BLOCK, &held, nullptr);
    server.signals = signalfd(-1, &held, SFD_CLOEXEC);
    return server.signals >= 0 || complain("signalfd");
}

bool raise_device(const Options &options)
{
    FILE *trace = nullptr;
    if (options.traceFile != nullptr) {
        trace = Sim_Trace_Open(options.traceFile);
        if (trace == nullptr) {
            return complain(options.traceFile);
        }
    }
    Sim_Device_Up(&server.device, *options.chip, options.placement, trace);
    for (int place = 0; place < options.faultCount; ++place) {
        Sim_Faults_Add(&server.device.faults, options.faults[place]);
    }
    server.device.lastRequest = options.lastRequest;
    return true;
}

bool complain_about_cuse()
{
    const int error = errno;
    complain(CUSE);
    if (error == ENOENT) {
        fputs("mdio_simulator: this kernel offers no CUSE; its module is named cuse\n", stderr);
    } else if (error == EACCES || error == EPERM) {
        fputs("mdio_simulator: to serve a device takes root's rights\n", stderr);
    }
    return false;
}

/* Opens the kernel's device for a node that is not there yet. Not blocking: a call may be taken
 * back after it was announced. On false the reason has been printed. */
bool open_cuse(const Options &options, int *descriptor)
{
    snprintf(server.node, sizeof server.node, "/dev/%s", options.name);
    if (access(server.node, F_OK) == 0) {
        errno = EEXIST;
        return complain(server.node);
    }
    *descriptor = open(CUSE, O_RDWR | O_CLOEXEC | O_NONBLOCK);
    return *descriptor >= 0 || complain_about_cuse();
}

/* The trace after the kernel's device: opening it empties a file that may be the trace of a server
 * at work. */
bool start_serving(const Options &options)
{
    int descriptor = -1;
    return open_cuse(options, &descriptor) && raise_device(options) &&
           Sim_Cuse_Start(&server.cuse, &server.device, options.name, descriptor);
}

/* False when the signal ends the program. */
bool take_signal(const Options &options)
{
    signalfd_siginfo taken = {};
    if (read(server.signals, &taken, sizeof taken) != sizeof taken) {
        return true;
    }
    if (taken.ssi_signo != SIGUSR1) {
        return false;
    }
    write_reports(options);
    return true;
}

Sim_Cuse_Step take_call()
{
    const bool wasReady = server.cuse.ready;
    const Sim_Cuse_Step step = Sim_Cuse_Serve(&server.cuse);
    if (server.cuse.ready && !wasReady) {
        printf("mdio_simulator: %s is there\n", server.node);
        fflush(stdout);
    }
    return step;
}

/* Calls first, so that the counts of an end have every close that a client has made before it.
 * False when the kernel has ended the session; the reason has been printed. */
bool serve(const Options &options)
{
    for (;;) {
        pollfd watched[] = {{Sim_Cuse_Descriptor(server.cuse), POLLIN, 0},
                            {server.signals, POLLIN, 0}};
        poll(watched, 2, -1);
        if (watched[0].revents != 0) {
            const Sim_Cuse_Step step = take_call();
            if (step != SIM_CUSE_GOES_ON) {
                return step == SIM_CUSE_GONE || complain(server.node);
            }
        } else if (watched[1].revents != 0 && !take_signal(options)) {
            return true;
        }
    }
}

bool run(const Options &options)
{
    if (!hold_signals() || !start_serving(options)) {
        return false;
    }
    const bool served = serve(options);
    Sim_Cuse_Stop(&server.cuse);
    Sim_Device_Down(&server.device);
    const bool traced = end_trace(options);
    return write_reports(options) && traced && served;
}

} // namespace

int main(int count, char **arguments)
{
    Options options = {};
    options.name = "mdio";
    options.chip = &Sim_Board_Chip();
    options.placement = {SIM_DIRECT, 16};
    const int status = ReadArguments<Options>(PROGRAM, OPTIONS, nullptr,
                                              {arguments, static_cast<size_t>(count)}, &options);
    if (status != GO_ON) {
        return status;
    }
    signal(SIGPIPE, SIG_IGN); /* clients are served, whoever reads the line or the trace */
    return run(options) ? 0 : FAILED;
}
