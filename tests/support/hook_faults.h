#pragma once

#include "switch/chip/device.h"

#include <cstddef>

/*
 * Stands in front of the two register hooks of a hook block until destroyed, counts their calls and
 * lets some of them answer false without an access. The block is a device record's, or that of a
 * configuration before its load. One at a time, else it aborts: hooks have no context of their own.
 */
class Hook_Faults
{
public:
    explicit Hook_Faults(SW_Hooks *hooks);
    explicit Hook_Faults(SW_Device *device) : Hook_Faults(&device->hooks) {}
    ~Hook_Faults();
    Hook_Faults(const Hook_Faults &) = delete;
    Hook_Faults &operator=(const Hook_Faults &) = delete;

    /* The calls from first on, count of them, answer false. Numbers the calls from 0 again. */
    void break_calls(size_t first, size_t count = 1);

    /* Calls since the numbers started, those that answered false too. */
    size_t calls() const { return calls_; }

private:
    static int read(SW_Device *device, uint32_t address, uint32_t number, uint32_t *value);
    static int write(SW_Device *device, uint32_t address, uint32_t number, uint32_t value);
    bool next_is_broken();

    static Hook_Faults *current_;
    SW_Hooks *hooks_;
    SW_Hooks before_;
    size_t calls_ = 0;
    size_t first_ = 0;
    size_t count_ = 0;
};
