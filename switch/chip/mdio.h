#pragma once

#include <cstddef>
#include <cstdint>

/*
 * The register seam: every register access of the switch driver is one MDIO request, a clause 22
 * management frame of IEEE 802.3 with the kernel device "/dev/mdio" behind it, unless the host has
 * installed another handler (a simulated chip, a trace, a fault injector). Single-threaded, like
 * the driver above it.
 */

/* The device's request number: read and write, 8 bytes, type 'W', number 1. */
inline constexpr unsigned long MDIO_REQUEST = 0xC0085701;

inline constexpr uint8_t MDIO_READ = 0;
inline constexpr uint8_t MDIO_WRITE = 1;

/* The request record, exactly as the kernel takes it. */
struct MDIO_Record {
    uint8_t phyAddress;     /* SMI device address, 0 to 31 */
    uint8_t operation;      /* MDIO_READ or MDIO_WRITE */
    uint8_t registerNumber; /* 0 to 31 */
    uint8_t reserved;       /* 0 */
    uint32_t value; /* the value to write; for a read 0 before, the register's value after */
};
static_assert(sizeof(MDIO_Record) == 8 && offsetof(MDIO_Record, value) == 4);

/*
 * A handler of requests: returns 0 or a positive number when the request was carried out, a
 * negative number when it failed. Handlers stack: one that passes requests on keeps the handler
 * that MDIO_Install returned and calls its function with its context.
 */
struct MDIO_Handler {
    int (*request)(void *context, unsigned long number, MDIO_Record *record);
    void *context;
};
