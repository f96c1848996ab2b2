#pragma once

#include "switch/chip/driver.h"

#include <ostream>
#include <span>

/* One call of a driver operation with fixed arguments, for tests that go over all operations. */
struct Operation_Call {
    const char *name;
    int (*call)(SW_Device *device, uint32_t port);
    bool takesPort;
};

void PrintTo(const Operation_Call &call, std::ostream *stream);

/* Every driver operation but the load and the enable step, once. */
std::span<const Operation_Call> all_operations();
