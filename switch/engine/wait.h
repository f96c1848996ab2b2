#pragma once

#include <cstdint>

/* The engine's sleeps, process-wide and replaceable: tests install a function that only counts. */

struct SW_Wait_Handler {
    void (*wait)(void *context, uint32_t microseconds);
    void *context;
};

/* Makes `handler` the one that carries out every wait and returns the one before it, which always
 * has a function. A handler with a null function stands for sleeping, the handler at start. */
SW_Wait_Handler SW_Install_Wait(SW_Wait_Handler handler);

/* Returns after `microseconds`, as the current handler counts them. */
void SW_Wait(uint32_t microseconds);
