/* Sets the clock from an NTP server, once or for as long as it runs. */

#include "launcher/daemon.h"
#include "ntp/client.h"
#include "ntp/dry_run.h"
#include "programs/arguments.h"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace
{

constexpr Program PROGRAM = {
    "time_client",
    "usage: time_client [--once] [--dry-run] [--daemon ID_FILE] SERVER\n"
    "\n"
    "Sets the clock from an NTP server: soon after the start while the clock shows 1970, and "
    "every\n"
    "four hours, until SIGTERM or SIGINT.\n"
    "\n"
    "  --once            make one query and end: status 0 when the clock was set, or would be\n"
    "                    with --dry-run, else 1\n"
    "  --dry-run         report the time that the clock would be set to, and leave it alone\n"
    "  --daemon ID_FILE  detach first, and write the daemon's process id into the file\n"
    "  --help            print this text\n"
    "  --version         print the version\n"
    "\n"
    "SERVER is a host name or an IPv4 address, of 19 characters at most.\n"};

struct Options {
    bool once;
    bool dryRun;
    const char *idFile;
    const char *server;
};

constexpr Option_Row<Options> OPTIONS[] = {
    {"once", nullptr, SetFlag<Options, &Options::once>},
    {"dry-run", nullptr, SetFlag<Options, &Options::dryRun>},
    {"daemon", "the path of an id file", SetText<Options, &Options::idFile>},
};

const char *take_server(Options *options, const char *text)
{
    const size_t length = strlen(text);
    if (options->server) {
        return "more than one server: ";
    }
    if (length == 0) {
        return "the server is empty";
    }
    if (length >= NTP_SERVER_SIZE) {
        return "a server of more than 19 characters: ";
    }
    options->server = text;
    return nullptr;
}

/* Held back in every thread from here on, until the main thread waits for them. */
sigset_t hold_end_signals()
{
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    sigprocmask(SIG_BLOCK, &ends, nullptr);
    return ends;
}

int keep_polling(const char *server, const sigset_t &ends)
{
    /* The thread uses it until the process is gone. */
    static NTP_Settings settings{};
    snprintf(settings.server, sizeof settings.server, "%s", server);
    settings.runFlag.store(1, std::memory_order_relaxed);
    if (!NTP_Thread_Init(&settings)) {
        return 1;
    }
    /* The start has cleared it, which would end the thread after its first pass. */
    settings.runFlag.store(1, std::memory_order_relaxed);
    int signal = 0;
    sigwait(&ends, &signal);
    /* Not exit(): the thread may be printing, and exit() waits for that in some C libraries. */
    _exit(0);
}

int run(const Options &options)
{
    signal(SIGPIPE, SIG_IGN); /* the clock is set, whoever still reads the lines */
    /* Each line is out when it is printed, to a pipe or a file too. */
    setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    sigset_t ends{};
    if (!options.once) {
        ends = hold_end_signals();
    }
    if (options.idFile) {
        KVX_Ctrl(options.idFile);
    }
    if (options.dryRun) {
        NTP_Use_Dry_Run_Clock();
    }
    if (options.once) {
        return NTP_Time_Get(options.server) ? 0 : 1;
    }
    return keep_polling(options.server, ends);
}

} // namespace

int main(int count, char **arguments)
{
    Options options{};
    const int status = ReadArguments<Options>(PROGRAM, OPTIONS, take_server,
                                              {arguments, static_cast<size_t>(count)}, &options);
    if (status != GO_ON) {
        return status;
    }
    if (!options.server) {
        return RefuseUsage(PROGRAM, "no server");
    }
    return run(options);
}
