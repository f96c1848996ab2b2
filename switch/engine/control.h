#pragma once

#include "switch/chip/device.h"
#include "switch/config/model.h"

#include <cstdint>
#include <type_traits>

/* What the chip reports of one port, beside the device image; zero until it is read. */
struct SW_Port_Status {
    uint32_t phyDetected; /* flag */
    uint32_t speed;       /* SW_SPEED_... */
    uint32_t fullDuplex;  /* flag */
    uint32_t linkUp;      /* flag */
};

/*
 * The context of every engine and console operation, their first argument. It and everything that
 * it points to belong to the host of the console, live for the whole run and are used by one thread
 * only. No pointer is null. The host zeroes the two images and the two driver records once; nobody
 * does it later for startupImage.
 */
struct SW_Control {
    SW_Config *running;      /* what the console edits */
    SW_Config *applied;      /* copy of what was last handed to the chip */
    SW_Config *startupImage; /* the startup file as last read for the "Not Saved" check */
    SW_Config *deviceImage;  /* what the status views read back from the chip */
    const char *startupPath; /* the startup configuration file */
    uint32_t read = 1;       /* flag: status views read the chip into the device image */
    uint32_t print = 1;      /* flag: status views print the device image */
    SW_Port_Status portStatus[SW_PORTS] = {}; /* by port index; of the device image */
    SW_Device *device;                        /* handed to every driver operation */
    SW_Sys_Config *sysConfig;                 /* filled anew by every bring-up */
};
static_assert(std::is_trivially_copyable_v<SW_Control>);
