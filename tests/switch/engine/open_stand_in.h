#pragma once

/*
 * A stand-in for the C library's open, linked in place of the real one: "/dev/mem" is never opened,
 * a harmless descriptor is handed out for it. Every other path goes to the kernel.
 */
struct Memory_Opens {
    bool refused;   /* opening fails */
    int count;      /* how often it was tried */
    int flags;      /* of the last time */
    int descriptor; /* handed out the last time */
};
extern Memory_Opens memory_opens;
