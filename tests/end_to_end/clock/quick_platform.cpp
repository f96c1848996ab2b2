/* Linked to the time client's main program: before main starts, it puts a platform in use whose
 * clock stands at 35 seconds past the start of 1970 and whose sleeps are short, so that the real
 * program makes its passes while a test looks on. */

#include "ntp/platform.h"

#include <unistd.h>

namespace
{

time_t never_set()
{
    return 35;
}

/* The first, longer one leaves main the time to set the run flag again, as 35 seconds surely do. */
void short_sleep(uint32_t seconds)
{
    usleep(seconds > 30 ? 300000 : 5000);
}

const NTP_Platform *install()
{
    static NTP_Platform quick = NTP_System_Platform;
    quick.now = never_set;
    quick.setClock = [](time_t) { return false; };
    quick.sleepSeconds = short_sleep;
    NTP_Set_Platform(&quick);
    return &quick;
}

[[maybe_unused]] const NTP_Platform *const INSTALLED = install();

} // namespace
