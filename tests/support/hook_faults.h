#pragma once

#include "switch/chip/device.h"

/*
 * Stands in front of the two register hooks of a hook block, counts their calls and lets some of
 * them answer false without doing anything. Give hooks() to the load in place of the block. Hooks
 * have no context: one object of this class at a time, else it aborts.
 */
class Hook_Faults
{
public:
    explicit Hook_Faults(const SW_Hooks &below);
    ~Hook_Faults();
    Hook_Faults(const Hook_Faults &) = delete;
    Hook_Faults &operator=(const Hook_Faults &) = delete;

    /* The block with both register hooks replaced. */
    SW_Hooks hooks() const;

    /* From now on: counts anew from 1, and the calls first to first + count - 1 answer false; first
     * 0 for none. */
    void fail(unsigned first, unsigned count = 1);

    /* Calls since the last fail(), those that answered false too. */
    unsigned calls() const { return calls_; }

private:
    static int read(SW_Device *device, uint32_t address, uint32_t number, uint32_t *value);
    static int write(SW_Device *device, uint32_t address, uint32_t number, uint32_t value);
    bool next_fails();

    static Hook_Faults *current_;
    SW_Hooks below_;
    unsigned calls_ = 0;
    unsigned first_ = 0;
    unsigned count_ = 0;
};
