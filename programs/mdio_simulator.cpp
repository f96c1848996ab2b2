/* Serves the device /dev/mdio with the simulated switch chip behind it. */

#include "programs/arguments.h"
#include "simulator/fault_text.h"
#include "simulator/serve.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

namespace
{

constexpr int FAILED = 1;
constexpr uint32_t HIGHEST_ADDRESS = 31;
constexpr uint32_t HIGHEST_IDENTIFIER = 0xFFF;
constexpr size_t MOST_NAME = 99;

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

using Options = Sim_Serve_Options;

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

Sim_Server server;

void tell_node(const char *node)
{
    printf("mdio_simulator: %s is there\n", node);
    fflush(stdout);
}

void complain(const char *subject, int error)
{
    fprintf(stderr, "mdio_simulator: %s: %s\n", subject, strerror(error));
    if (strcmp(subject, SIM_CUSE_PATH) != 0) {
        return;
    }
    if (error == ENOENT) {
        fputs("mdio_simulator: this kernel offers no CUSE; its module is named cuse\n", stderr);
    } else if (error == EACCES || error == EPERM) {
        fputs("mdio_simulator: to serve a device takes root's rights\n", stderr);
    }
}

} // namespace

int main(int count, char **arguments)
{
    Options options = {};
    options.name = "mdio";
    options.chip = &Sim_Board_Chip();
    options.placement = {SIM_DIRECT, 16};
    options.isThere = tell_node;
    options.failed = complain;
    const int status = ReadArguments<Options>(PROGRAM, OPTIONS, nullptr,
                                              {arguments, static_cast<size_t>(count)}, &options);
    if (status != GO_ON) {
        return status;
    }
    signal(SIGPIPE, SIG_IGN); /* clients are served, whoever reads the line or the trace */
    return Sim_Serve(&server, options) ? 0 : FAILED;
}
