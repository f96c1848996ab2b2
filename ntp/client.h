#pragma once

#include <atomic>
#include <cstdint>

/*
 * A minimal NTP client (packet format of RFC 5905) that sets the clock, in whole seconds, from the
 * transmit time of one server. What it does goes to standard output, line by line.
 */

/* At most 19 characters and the terminating zero. */
inline constexpr int NTP_SERVER_SIZE = 20;

/*
 * Owned by the caller, shared with the client thread without a lock: the record must outlive the
 * thread, and the owner changes nothing but the run flag while the thread runs.
 */
struct NTP_Settings {
    /* Host name or dotted IPv4 address. Never read past its 20 bytes, of which 19 count. */
    char server[NTP_SERVER_SIZE];

    /* At the start, not 0 asks for a thread; while the thread runs, 0 means end after this pass. */
    std::atomic<int32_t> runFlag;
};

static_assert(std::atomic<int32_t>::is_always_lock_free);
static_assert(sizeof(NTP_Settings) == NTP_SERVER_SIZE + sizeof(int32_t));

/*
 * Starts the client thread, unless the run flag is 0. Returns true when a thread was created.
 *
 * The flag is cleared before the thread is created, also when creation then fails: the thread makes
 * one pass and ends, unless the owner sets the flag again after the start. Each start adds a
 * thread; a second one on the same record clears the flag for both. The thread is neither joined
 * nor detached.
 */
bool NTP_Thread_Init(NTP_Settings *settings);

/*
 * The thread function; settings points to an NTP_Settings. Sleeps for the polling period and 5
 * seconds, then makes passes, each ending with a sleep of the polling period, until the run flag is
 * 0 at the end of one. A pass queries the server when more than four hours have passed since the
 * last update (the end of the first sleep counts as one, and so does a failed four-hourly query),
 * and when the clock shows the year 1970, in local time. Returns null.
 */
void *NTP_Thread_Func(void *settings);

/*
 * Asks the server, a host name or dotted IPv4 address of any length, for the time and sets the
 * clock to it. Up to five requests, each with 100 milliseconds for an answer; name resolution takes
 * what it takes. Only the length of an answer is checked. Returns true when the clock was set;
 * false when the name does not resolve, no answer of 48 bytes came, or setting the clock was
 * refused. Any thread may call.
 */
bool NTP_Time_Get(const char *server);

/*
 * Sets the polling period, in seconds, of all client threads, from their next sleep on; 30 at the
 * start of the program. Returns false, without effect, for a period below 1 or above 2147483642.
 * Any thread may call.
 */
bool NTP_Set_Polling_Period(int32_t seconds);
