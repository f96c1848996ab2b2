#pragma once

#include "simulator/seam.h"

#include <cerrno>

/*
 * A layer over the register seam that breaks requests, as planned or at random.
 */

enum Sim_Fault_Kind : uint8_t {
    SIM_FAULT_FAIL,     /* a read or write does not reach the bus: -1, errno as planned */
    SIM_FAULT_ALL_ONES, /* a read yields 0xFFFF, as if nobody answered */
    SIM_FAULT_BUSY      /* a read yields its value with bit 15 set */
};

/* Matches every SMI address or register. */
inline constexpr uint8_t SIM_ANY = 0xFF;
/* A count without an end. */
inline constexpr uint32_t SIM_FOREVER = 0xFFFFFFFF;

struct Sim_Fault {
    Sim_Fault_Kind kind;
    uint32_t first;         /* the first one broken of the requests that fit, from 1 */
    uint32_t count;         /* how many from there, 1 or more */
    uint8_t address;        /* which requests fit: SMI address or SIM_ANY */
    uint8_t registerNumber; /* register or SIM_ANY */
    int error = EIO;        /* errno of a failed request; else not looked at */
};

inline constexpr int SIM_FAULTS = 8;

/* Filled by the operations below; zeroed before the first use. */
struct Sim_Faults {
    Sim_Layer layer;
    Sim_Fault planned[SIM_FAULTS];
    uint32_t fitted[SIM_FAULTS]; /* requests so far that fit */
    int plannedCount;
    uint32_t oneIn; /* random faults; 0: none */
    uint64_t random;
    uint32_t requests; /* so far, broken ones too */
    uint32_t broken;
};

/* Puts the layer on top. A plan without faults breaks nothing. */
bool Sim_Faults_Install(Sim_Faults *faults);

/*
 * Adds a fault to the plan. When several break the same request, the first added does. False, and
 * nothing added, when the plan is full, `first` or `count` is 0, `error` is below 1, or the fault
 * could keep the driver in its wait for the VLAN table without an end: SIM_FOREVER is for
 * SIM_FAULT_FAIL, and for SIM_FAULT_BUSY on register 0 of one address, the command register of
 * indirect mode.
 */
bool Sim_Faults_Add(Sim_Faults *faults, const Sim_Fault &fault);

/* From now on also breaks about one in `oneIn` requests (2 or more; 0: none), failed requests and
 * all ones alike, the same ones for the same seed. False, and nothing changed, for 1. */
bool Sim_Faults_At_Random(Sim_Faults *faults, uint64_t seed, uint32_t oneIn);

/* Forgets the plan, the random faults and the counts; the layer stays where it is. */
void Sim_Faults_Clear(Sim_Faults *faults);
