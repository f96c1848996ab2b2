#pragma once

#include <ctime>
#include <vector>

/*
 * Stand-ins for functions of the C library, linked in place of the real ones.
 *
 * open: "/dev/mem" is never opened, a harmless descriptor is handed out for it. Every other path
 * goes to the kernel.
 */
struct Memory_Opens {
    bool refused;   /* opening fails */
    int count;      /* how often it was tried */
    int flags;      /* of the last time */
    int descriptor; /* handed out the last time */
};
extern Memory_Opens memory_opens;

/* nanosleep: takes no time. As often as told it ends early, as if a signal had come, with a
 * nanosecond less than it was given still to go. */
struct Sleeps {
    int interruptions;
    std::vector<timespec> asked;
};
extern Sleeps sleeps;
