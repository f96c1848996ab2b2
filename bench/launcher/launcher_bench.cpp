#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/*
 * How long the launcher takes to raise the alarm when the gateway's configuration is missing, from
 * its start to its end, beside the shell that runs the alarm command, which the launcher starts
 * too. Only tools/bench_private has the stand-ins that they run on; no real alarm is ever raised.
 */

namespace
{

constexpr const char *LAUNCHER = "/tmp/gateway_launcher";
constexpr const char *ALARM_COMMAND = "/root/gpio_set_value alarm on";

bool has_stand_ins()
{
    return access(LAUNCHER, X_OK) == 0 && access("/tmp/libmdio_preload.so", R_OK) == 0 &&
           access("/tmp/config.xml", F_OK) != 0;
}

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

/* Runs a program to its end, silently and with an empty environment. Returns its exit status, or
 * -1; *cost is the processor time of it and of what it started and waited for, in seconds. */
int run(const char *const *command, double *cost)
{
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&quiet, STDOUT_FILENO, STDERR_FILENO);
    char *nothing = nullptr;
    pid_t process = -1;
    int status = -1;
    rusage usage = {};
    if (posix_spawn(&process, command[0], &quiet, nullptr, const_cast<char *const *>(command),
                    &nothing) == 0) {
        wait4(process, &status, 0, &usage);
    }
    *cost = seconds(usage.ru_utime) + seconds(usage.ru_stime);
    posix_spawn_file_actions_destroy(&quiet);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void time_runs(benchmark::State &state, const char *const *command, int expected)
{
    if (!has_stand_ins()) {
        state.SkipWithError("no stand-ins: use tools/bench_private");
        return;
    }
    while (state.KeepRunning()) {
        double cost = 0;
        if (run(command, &cost) != expected) {
            state.SkipWithError("another exit status than expected");
            break;
        }
        state.SetIterationTime(cost);
    }
}

void launcher_alarm(benchmark::State &state)
{
    const char *const command[] = {LAUNCHER, nullptr};
    time_runs(state, command, 1);
}
BENCHMARK(launcher_alarm)->UseManualTime()->Unit(benchmark::kMicrosecond);

void shell_alarm(benchmark::State &state)
{
    const char *const command[] = {"/bin/sh", "-c", ALARM_COMMAND, nullptr};
    time_runs(state, command, 0);
}
BENCHMARK(shell_alarm)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
