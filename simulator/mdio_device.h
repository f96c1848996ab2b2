#pragma once

#include "simulator/faults.h"
#include "simulator/trace.h"

/*
 * The character device "/dev/mdio" with the simulated chip behind it, as the server of such a
 * device sees it: one operation for each call of a client. It knows nothing of how the calls come
 * in. The chip stands behind the process's own register seam while the device is up, the planned
 * faults above it and the trace above both: one device at a time, single-threaded.
 */

struct Sim_Device_Counts {
    uint64_t opens;
    uint64_t requests; /* refused and failed ones too */
    uint64_t failed;   /* of the requests: those answered with an error */
    uint64_t closes;
    uint64_t mostOpen; /* opens at a time that were not yet closed */
};

/* Filled by the operations below; zeroed before the first use. Large, like the chip. */
struct Sim_Device {
    Sim_Chip chip;
    Sim_Layer seam;
    Sim_Faults faults; /* plan with Sim_Faults_Add, any time while the device is up */
    Sim_Trace trace;
    Sim_Device_Counts counts;
    uint64_t
        lastRequest; /* the device vanishes after so many requests; 0: never. Any time settable */
};

/* Brings the device up: the chip of the row after power-on, no faults, counts 0. The trace gets a
 * line for each request that the device knows, failed ones too; null: no trace. The file stays the
 * caller's and open. False, and nothing changed, when the device is up already. */
bool Sim_Device_Up(Sim_Device *device, const Sim_Chip_Row &row, Sim_Placement placement,
                   FILE *trace);

/* Gives the seam back. Chip and counts stay to be looked at. Nothing happens when it is not up. */
void Sim_Device_Down(Sim_Device *device);

/* A client opens or closes the node. Open returns 0, or ENODEV after the last request. */
int Sim_Device_Open(Sim_Device *device);
void Sim_Device_Close(Sim_Device *device);

/*
 * A client's ioctl: carries out `record` and stores a read's value in it. Returns 0, or the error
 * that the client is to see, the record's value as it was: ENOTTY for another request number than
 * MDIO_REQUEST, which no fault and no trace ever sees; EINVAL for an operation that is neither read
 * nor write; a planned fault's error; ENODEV after the last request.
 */
int Sim_Device_Request(Sim_Device *device, unsigned long number, MDIO_Record *record);

/* Whether the last request has been made and its client has closed the node: it is to vanish. */
bool Sim_Device_Is_Gone(const Sim_Device &device);

/* Prints the counts, a line each: "opens 3", "requests 3", "failed 0", "closes 3", then
 * "most open 1". */
void Sim_Device_Print_Counts(const Sim_Device_Counts &counts, FILE *file);
