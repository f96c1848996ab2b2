#pragma once

#include "simulator/chip.h"
#include "switch/chip/mdio.h"

/*
 * Layers over the register seam: each takes the place of the handler before it and gives it back
 * when it is removed. They stack; the last one installed is removed first. A layer record must stay
 * where it is while it is installed. Single-threaded, like the seam.
 */
struct Sim_Layer {
    MDIO_Handler own;   /* no function: not installed */
    MDIO_Handler below; /* what it took the place of */
};

/* Puts a handler on top. False, and nothing changed, when the layer is installed already. */
bool Sim_Layer_Install(Sim_Layer *layer, MDIO_Handler own);

/* Puts the handler below back. False, and nothing changed, when the layer is not the one on top. */
bool Sim_Layer_Remove(Sim_Layer *layer);

/* Hands a request to the handler below an installed layer and returns its answer. */
int Sim_Layer_Pass(const Sim_Layer &layer, unsigned long number, MDIO_Record *record);

/* Puts the simulated chip behind the seam. It answers every request itself: 0, or -1 with errno
 * ENOTTY for another request number than MDIO_REQUEST, EINVAL for an operation that is neither read
 * nor write. */
bool Sim_Seam_Install(Sim_Layer *layer, Sim_Chip *chip);
