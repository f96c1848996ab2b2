#include "simulator/serve.h"

#include "simulator/dump.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr size_t PATH_SIZE = 4096;

bool fail(const Sim_Serve_Options &options, const char *subject)
{
    options.failed(subject, errno);
    return false;
}

void print_counts(const Sim_Device &device, FILE *file)
{
    Sim_Device_Print_Counts(device.counts, file);
}

void print_registers(const Sim_Device &device, FILE *file)
{
    Sim_Dump(device.chip, file);
}

/* Of a device or a pipe, which a rename would replace. */
bool is_no_file(const char *path)
{
    struct stat facts;
    return stat(path, &facts) == 0 && !S_ISREG(facts.st_mode);
}

using Print = void (*)(const Sim_Device &device, FILE *file);

/* A file under another name first: whoever finds it finds it whole. */
bool write_report(const Sim_Server &server, const Sim_Serve_Options &options, const char *path,
                  Print print)
{
    char newPath[PATH_SIZE];
    const bool direct = is_no_file(path);
    snprintf(newPath, sizeof newPath, "%s%s", path, direct ? "" : ".new");
    FILE *file = fopen(newPath, "we");
    if (file == nullptr) {
        return fail(options, newPath);
    }
    print(server.device, file);
    const bool whole = ferror(file) == 0;
    return (fclose(file) == 0 && whole && (direct || rename(newPath, path) == 0)) ||
           fail(options, path);
}

bool write_reports(const Sim_Server &server, const Sim_Serve_Options &options)
{
    const bool counted = options.countersFile == nullptr ||
                         write_report(server, options, options.countersFile, print_counts);
    const bool dumped = options.registersFile == nullptr ||
                        write_report(server, options, options.registersFile, print_registers);
    return counted && dumped;
}

bool end_trace(Sim_Server *server, const Sim_Serve_Options &options)
{
    return server->device.trace.file == nullptr || Sim_Trace_Close(&server->device.trace) ||
           fail(options, options.traceFile);
}

/* Held back from here on, and read where the calls are waited for. */
bool hold_signals(Sim_Server *server, const Sim_Serve_Options &options)
{
    sigset_t held;
    sigemptyset(&held);
    sigaddset(&held, SIGTERM);
    sigaddset(&held, SIGINT);
    sigaddset(&held, SIGUSR1);
    sigprocmask(SIG_BLOCK, &held, nullptr);
    server->signals = signalfd(-1, &held, SFD_CLOEXEC);
    return server->signals >= 0 || fail(options, "signalfd");
}

bool raise_device(Sim_Server *server, const Sim_Serve_Options &options)
{
    FILE *trace = nullptr;
    if (options.traceFile != nullptr) {
        trace = Sim_Trace_Open(options.traceFile);
        if (trace == nullptr) {
            return fail(options, options.traceFile);
        }
    }
    Sim_Device_Up(&server->device, *options.chip, options.placement, trace);
    for (int place = 0; place < options.faultCount; ++place) {
        Sim_Faults_Add(&server->device.faults, options.faults[place]);
    }
    server->device.lastRequest = options.lastRequest;
    return true;
}

/* Opens the kernel's device for a node that is not there yet. Not blocking: a call may be taken
 * back after it was announced. On false the reason has been told. */
bool open_cuse(Sim_Server *server, const Sim_Serve_Options &options, int *descriptor)
{
    snprintf(server->node, sizeof server->node, "/dev/%s", options.name);
    if (access(server->node, F_OK) == 0) {
        errno = EEXIST;
        return fail(options, server->node);
    }
    *descriptor = open(SIM_CUSE_PATH, O_RDWR | O_CLOEXEC | O_NONBLOCK);
    return *descriptor >= 0 || fail(options, SIM_CUSE_PATH);
}

/* The trace after the kernel's device: opening it empties a file that may be the trace of a server
 * at work. */
bool start_serving(Sim_Server *server, const Sim_Serve_Options &options)
{
    int descriptor = -1;
    return open_cuse(server, options, &descriptor) && raise_device(server, options) &&
           Sim_Cuse_Start(&server->cuse, &server->device, options.name, descriptor);
}

/* False when the signal ends the program. */
bool take_signal(const Sim_Server &server, const Sim_Serve_Options &options)
{
    signalfd_siginfo taken = {};
    if (read(server.signals, &taken, sizeof taken) != sizeof taken) {
        return true;
    }
    if (taken.ssi_signo != SIGUSR1) {
        return false;
    }
    write_reports(server, options);
    return true;
}

Sim_Cuse_Step take_call(Sim_Server *server, const Sim_Serve_Options &options)
{
    const bool wasReady = server->cuse.ready;
    const Sim_Cuse_Step step = Sim_Cuse_Serve(&server->cuse);
    if (server->cuse.ready && !wasReady) {
        options.isThere(server->node);
    }
    return step;
}

/* Calls first, so that the counts of an end have every close that a client has made before it.
 * False when the kernel has ended the session; the reason has been told. */
bool serve(Sim_Server *server, const Sim_Serve_Options &options)
{
    for (;;) {
        pollfd watched[] = {{Sim_Cuse_Descriptor(server->cuse), POLLIN, 0},
                            {server->signals, POLLIN, 0}};
        poll(watched, 2, -1);
        if (watched[0].revents != 0) {
            const Sim_Cuse_Step step = take_call(server, options);
            if (step != SIM_CUSE_GOES_ON) {
                return step == SIM_CUSE_GONE || fail(options, server->node);
            }
        } else if (watched[1].revents != 0 && !take_signal(*server, options)) {
            return true;
        }
    }
}

} // namespace

bool Sim_Serve(Sim_Server *server, const Sim_Serve_Options &options)
{
    if (!hold_signals(server, options) || !start_serving(server, options)) {
        return false;
    }
    const bool served = serve(server, options);
    Sim_Cuse_Stop(&server->cuse);
    Sim_Device_Down(&server->device);
    const bool traced = end_trace(server, options);
    return write_reports(*server, options) && traced && served;
}
