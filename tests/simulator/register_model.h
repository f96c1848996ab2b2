#pragma once

#include "switch/chip/driver.h"

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <tuple>

/*
 * What the driver's settings must make of a chip: plain registers, and for each set and get twin
 * the bits that it writes and reads. Written by hand from the register map, without the driver's
 * tables. Where two settings share bits, the last one written is what both read.
 */

/* What a set takes and a get gives: a single value, or the three bytes count flags, or value,
 * page and register of a PHY. */
using Model_Values = std::array<uint32_t, 3>;

/* The chip's bit in one of the two family sets. */
struct Model_Sets {
    uint32_t a;
    uint32_t b;
};

/* The newer layout, with fixed addresses, and the oldest one; most chips of the older layout are
 * between them. */
bool model_is_newer(Model_Sets sets);
bool model_is_oldest(Model_Sets sets);

/* The hardware port of a driver port by the letters of Driven_Chip; 255 when there is none. */
inline constexpr unsigned MODEL_NO_PORT = 255;
unsigned model_hardware_port(const std::string &hardwarePorts, uint32_t port);

struct Model_Bits {
    unsigned number;
    unsigned first;
    unsigned length;
};

enum class Model_Kind : uint8_t {
    NUMBER,
    FLAG, /* 1 is true, every other value false */
    EGRESS_MODE,
    BYTES_COUNT,
    PRI0_RATE,
    EGRESS_RATE,
    FACT, /* get only */
    LINK_FACT,
    CLASS, /* from here on not of a port; the index is a priority or DSCP */
    FRAME_SIZE,
    MIRROR_DEST,
    PHY_PAGE /* of a port again, behind its PHY */
};

/* A set and get twin. Null: there is no set; a kind that works its place out itself has no `place`.
 * A get takes a null pointer for the values as well. */
struct Model_Row {
    const char *name;
    Model_Kind kind;
    bool (*supported)(Model_Sets sets);
    Model_Bits (*place)(Model_Sets sets);
    int (*set)(SW_Device *device, uint32_t index, const Model_Values &values);
    int (*get)(SW_Device *device, uint32_t index, Model_Values *values);
};

std::span<const Model_Row> model_rows();

/* A link as its PHY shows it. */
struct Model_Link {
    uint32_t full;
    uint32_t speed;
};

struct Register_Model {
    Model_Sets sets;
    std::string hardwarePorts;        /* of driver port 0, 1, ...: a letter each, '0' to '9', 'A' */
    uint32_t phyPorts;                /* bit n: hardware port n has a PHY */
    unsigned base;                    /* address of the older layouts' first device */
    std::array<Model_Link, 11> links; /* by hardware port */
    uint16_t registers[32][32];       /* by SMI address */
    /* The PHYs' pages behind page 0, by hardware port, page, register; what is not here is as after
     * power-on. */
    std::map<std::tuple<unsigned, unsigned, unsigned>, uint16_t> pages;
    bool rateUnknown;
};

/* Carries out one operation on the model and returns the driver's status. A get that fails leaves
 * the values alone; null as in the driver. */
int model_set(Register_Model *model, const Model_Row &row, uint32_t index,
              const Model_Values &values);
int model_get(Register_Model *model, const Model_Row &row, uint32_t index, Model_Values *values);

/* A register of a PHY's page 1 to 31. */
uint16_t model_page(const Register_Model &model, unsigned hardware_port, unsigned page,
                    unsigned number);

/* SMI address of the global registers. */
unsigned model_global_address(const Register_Model &model);
