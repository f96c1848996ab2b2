#include "tests/support/heap_count.h"

#include <cstdlib>
#include <malloc.h>

/* The C library's own names for what is replaced below; operator new calls malloc. */
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *memory, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *memory);
}

namespace
{

size_t allocations;
size_t in_use;
size_t in_use_at_reset;
size_t peak;

void *counted(void *memory)
{
    if (memory != nullptr) {
        allocations++;
        in_use += malloc_usable_size(memory);
        peak = in_use > peak ? in_use : peak;
    }
    return memory;
}

void uncounted(void *memory)
{
    in_use -= memory == nullptr ? 0 : malloc_usable_size(memory);
}

} // namespace

extern "C" void *malloc(size_t size)
{
    return counted(__libc_malloc(size));
}

extern "C" void *calloc(size_t count, size_t size)
{
    return counted(__libc_calloc(count, size));
}

extern "C" void *realloc(void *memory, size_t size)
{
    uncounted(memory);
    return counted(__libc_realloc(memory, size));
}

extern "C" void *aligned_alloc(size_t alignment, size_t size)
{
    return counted(__libc_memalign(alignment, size));
}

extern "C" void free(void *memory)
{
    uncounted(memory);
    __libc_free(memory);
}

void ResetHeapCount()
{
    allocations = 0;
    in_use_at_reset = in_use;
    peak = in_use;
}

Heap_Count GetHeapCount()
{
    return {allocations, peak - in_use_at_reset,
            static_cast<ptrdiff_t>(in_use) - static_cast<ptrdiff_t>(in_use_at_reset)};
}
