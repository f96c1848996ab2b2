#pragma once

#include <cstddef>
#include <cstdint>

/*
 * The register seam: every register access of the switch driver is one MDIO request, a clause 22
 * management frame of IEEE 802.3 with the kernel device "/dev/mdio" behind it, unless the host has
 * installed another handler (a simulated chip, a trace, a fault injector). Single-threaded, like
 * the driver above it.
 */

struct SW_Device;

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

/*
 * Makes `handler` the one that carries out every request and returns the one before it, which
 * always has a function. A handler with a null function stands for the kernel device, the handler
 * at start.
 */
MDIO_Handler MDIO_Install(MDIO_Handler handler);

/*
 * Hands the request to the current handler and returns its answer. The kernel device's: opens
 * "/dev/mdio" for reading and writing, issues the ioctl, closes the node, and returns the ioctl's
 * result. When the node cannot be opened it prints "couldn't open node" and returns the negative
 * descriptor; when the ioctl fails it prints "ioctl failed". Neither text ends its line.
 */
int MDIO_Request(unsigned long number, MDIO_Record *record);

/*
 * The bus hooks, as the driver's load operation takes them: one request each. Address and register
 * are cut to 8 bits; the device handle is not looked at. Both return 1 (true) whatever happened:
 * the read of a failed request stores 0. `value` is not null.
 */
int MDIO_Bus_Read(SW_Device *device, uint32_t phyAddress, uint32_t registerNumber, uint32_t *value);
int MDIO_Bus_Write(SW_Device *device, uint32_t phyAddress, uint32_t registerNumber, uint32_t value);
