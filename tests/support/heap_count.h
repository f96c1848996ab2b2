#pragma once

#include <cstddef>

/*
 * Counts what the program takes from the heap: malloc and its kin and operator new are replaced in
 * this program. One thread.
 */
struct Heap_Count {
    size_t allocations; /* since the last reset */
    size_t peak;        /* most bytes in use at once since then, beyond those in use at it */
    ptrdiff_t left;     /* bytes in use now, beyond those in use at it */
};

void ResetHeapCount();
Heap_Count GetHeapCount();
