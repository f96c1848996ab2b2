#pragma once

#include "simulator/mdio_device.h"

struct fuse_session;

/*
 * Serves the device as a character device of the kernel (CUSE): each call of a client on the node
 * becomes one operation of the device. A read of the node gets the end of file. The caller waits
 * for the session's descriptor to become readable and then steps. Single-threaded.
 */
struct Sim_Cuse {
    Sim_Device *device;
    fuse_session *session;
    void *memory; /* for the calls, large; the library gets it with the first one */
    bool ready;   /* the kernel has made the node */
};

/*
 * Starts to serve. The device is up and stays the caller's. name: of the node below /dev, 1 to 99
 * characters without a slash. descriptor: "/dev/cuse", open for reading and writing; closed by
 * Sim_Cuse_Stop, or here on failure. The node is there once `ready` is true, a step or two later.
 * False when the library refuses; it has then said why on standard error.
 */
bool Sim_Cuse_Start(Sim_Cuse *cuse, Sim_Device *device, const char *name, int descriptor);

/* To be waited for. */
int Sim_Cuse_Descriptor(const Sim_Cuse &cuse);

/* How a step ended. */
enum Sim_Cuse_Step : uint8_t {
    SIM_CUSE_GOES_ON,
    SIM_CUSE_GONE, /* the device is to vanish: stop */
    SIM_CUSE_LOST  /* the session cannot go on, errno says why; ENODEV: the kernel has ended it */
};

/* Takes one call, waiting for it when there is none, and answers it. */
Sim_Cuse_Step Sim_Cuse_Serve(Sim_Cuse *cuse);

/* Ends the session; the node vanishes, and calls that wait there fail. */
void Sim_Cuse_Stop(Sim_Cuse *cuse);
