#include "tests/switch/range/failing_memory.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace
{

constexpr int NO_LIMIT = std::numeric_limits<int>::max();
int allowed_allocations = NO_LIMIT;
bool allocation_failed = false;

} // namespace

void *operator new(std::size_t size)
{
    if (allowed_allocations == 0) {
        allocation_failed = true;
        throw std::bad_alloc();
    }
    if (allowed_allocations != NO_LIMIT)
        --allowed_allocations;
    void *const memory = malloc(size > 0 ? size : 1);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void *memory) noexcept
{
    free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    free(memory);
}

Failing_Memory::Failing_Memory(int allowed)
{
    allocation_failed = false;
    allowed_allocations = allowed;
}

Failing_Memory::~Failing_Memory()
{
    allowed_allocations = NO_LIMIT;
}

bool Failing_Memory::failed() const
{
    return allocation_failed;
}
