#pragma once

#include "simulator/seam.h"

#include <cstdio>
#include <vector>

/*
 * Layers over the register seam that watch: each request goes on unchanged to the handler below.
 */

/* The line of an access in a trace, "R 11 07 0001": R or W, SMI address, register, and the value
 * after the access; hexadecimal, without the line feed. */
inline constexpr int SIM_TRACE_LINE = 24;
void Sim_Trace_Line(const MDIO_Record &record, char (&line)[SIM_TRACE_LINE]);

/* Opens a file for a trace, a new one: whole to its last line also when a signal ends the program.
 * Null when it cannot be opened; errno says why. */
FILE *Sim_Trace_Open(const char *path);

/* Writes a line for each request, failed ones too. The file stays the caller's and open, until
 * Sim_Trace_Close. */
struct Sim_Trace {
    Sim_Layer layer;
    FILE *file;
    int error; /* errno of the first line that could not be written; 0: none */
};
bool Sim_Trace_Install(Sim_Trace *trace, FILE *file);

/* Closes the file of a trace that was installed. False, and errno says why, when any line could not
 * be written. */
bool Sim_Trace_Close(Sim_Trace *trace);

/* Keeps each request's record as it was after the access, in order. May be cleared at any time. */
struct Sim_Recorder {
    Sim_Layer layer;
    std::vector<MDIO_Record> records;
};
bool Sim_Recorder_Install(Sim_Recorder *recorder);

/* Counts. May be set to 0 at any time. */
struct Sim_Counters {
    Sim_Layer layer;
    uint64_t reads;
    uint64_t writes;
    uint64_t failed; /* of both: those with a negative answer */
};
bool Sim_Counters_Install(Sim_Counters *counters);
