#pragma once

#include "simulator/cuse.h"

/*
 * The device server: a device node with the simulated chip behind it, from the first call to the
 * last, and its reports.
 */

/* The kernel's device, which makes the node; a subject of `failed` below. */
inline constexpr const char *SIM_CUSE_PATH = "/dev/cuse";

struct Sim_Serve_Options {
    const char *name; /* of the node below /dev, 1 to 99 characters without a slash */
    const Sim_Chip_Row *chip;
    Sim_Placement placement;
    Sim_Fault faults[SIM_FAULTS];
    int faultCount;            /* the first so many are planned, in this order */
    uint32_t lastRequest;      /* the device vanishes after so many requests; 0: never */
    const char *traceFile;     /* gets a line for each request; null: no trace */
    const char *countersFile;  /* gets the counts; null: not reported */
    const char *registersFile; /* gets the chip's registers; null: not reported */
    /* Neither is null. */
    void (*isThere)(const char *node); /* called once the node can be used */
    /* Called for each failure: the path, or the call that has none, and the errno. */
    void (*failed)(const char *subject, int error);
};

/* Filled by the operation below; zeroed before. Large, like the chip. */
struct Sim_Server {
    Sim_Device device;
    Sim_Cuse cuse;
    int signals;    /* readable when one has come */
    char node[128]; /* the device's path */
};

/*
 * Serves until SIGTERM or SIGINT comes or the device vanishes as told. The counts and the registers
 * are written then, and on SIGUSR1: each file under another name first, so that it is whole when it
 * is there; to a pipe or a device directly. A node that is there already is left alone, and files
 * are opened only after the kernel's device. Once in a process, which is to end after it: the three
 * signals stay blocked, and files may be left open. Single-threaded.
 *
 * True when all went well. False when the node could not be served, or not to the end, or a file
 * could not be written; each reason has been told to `failed`, but those of Sim_Cuse_Start, which
 * are on standard error. A report that fails on SIGUSR1 is told and changes nothing else.
 */
bool Sim_Serve(Sim_Server *server, const Sim_Serve_Options &options);
