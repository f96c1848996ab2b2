#include "ntp/dry_run.h"

#include "ntp/platform.h"

#include <cstdint>
#include <cstdio>

namespace
{

constexpr int64_t NANOSECONDS = 1000000000;

struct Dry_Run {
    NTP_Platform platform;
    time_t (*nowBefore)();
    bool clockSet;
    time_t setTo;
    int64_t setAt;
};

Dry_Run dry_run;

/* Not the clock's own reading: the second that was set lasts a whole second, as on a real clock. */
int64_t steady_nanoseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * NANOSECONDS + now.tv_nsec;
}

time_t dry_run_now()
{
    if (!dry_run.clockSet) {
        return dry_run.nowBefore();
    }
    return dry_run.setTo + (steady_nanoseconds() - dry_run.setAt) / NANOSECONDS;
}

bool report_clock(time_t seconds)
{
    printf("NTP: Dry run, clock would be set to %lld\n", static_cast<long long>(seconds));
    dry_run.setTo = seconds;
    dry_run.setAt = steady_nanoseconds();
    dry_run.clockSet = true;
    return true;
}

} // namespace

void NTP_Use_Dry_Run_Clock()
{
    const NTP_Platform &before = NTP_Current_Platform();
    if (&before == &dry_run.platform) {
        return;
    }
    dry_run = {
        .platform = before, .nowBefore = before.now, .clockSet = false, .setTo = 0, .setAt = 0};
    dry_run.platform.now = dry_run_now;
    dry_run.platform.setClock = report_clock;
    NTP_Set_Platform(&dry_run.platform);
}
