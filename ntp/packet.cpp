#include "ntp/packet.h"

static_assert(sizeof(time_t) == 8, "times after 2038 need a 64-bit time_t");

time_t NTP_Seconds_To_Time(uint32_t seconds)
{
    /* Unsigned 32-bit arithmetic wraps into the next era; only the result is widened. */
    const uint32_t since_1970 = seconds - NTP_SECONDS_1900_TO_1970;
    return static_cast<time_t>(since_1970);
}

time_t NTP_Transmit_Time(const NTP_Packet &reply)
{
    uint32_t seconds = 0;
    for (size_t i = 0; i < sizeof seconds; ++i) {
        seconds = seconds << 8 | reply[NTP_TRANSMIT_TIMESTAMP + i];
    }
    return NTP_Seconds_To_Time(seconds);
}
