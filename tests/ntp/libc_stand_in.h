#pragma once

#include <string>
#include <vector>

/*
 * Stand-ins for the C library's settimeofday() and sleep(), linked into these tests in place of the
 * real ones: no test here can set the machine's clock, whatever it does. Each call appends a line:
 *
 *   settimeofday SECONDS MICROSECONDS, and " zone" when a time zone was given
 *   sleep SECONDS
 *
 * getaddrinfo() is the real one, but knows one name whatever the machine's own list of hosts says:
 * 192.0.2.8 in IPv4, 2001:db8::8 for all who do not ask for IPv4 alone.
 */
inline constexpr const char *NAME_OF_BOTH_FAMILIES = "both.example";

/* How many answers of getaddrinfo() have not been given back with freeaddrinfo(). */
int held_addresses();

/* The lines so far; empties them. */
std::vector<std::string> take_libc_calls();

/* What the next settimeofday() returns; 0 at the start of a test program. */
void answer_settimeofday(int result);

/* What the next calls of sleep() return, in this order; then 0. */
void answer_sleep(std::vector<unsigned> left);
