#include "tests/support/failing_memory.h"

#include <cstdlib>
#include <new>

namespace
{

int allowed_allocations = Failing_Memory::NO_LIMIT;
bool allocation_failed = false;

void *allocate(std::size_t size)
{
    if (allowed_allocations == 0) {
        allocation_failed = true;
        return nullptr;
    }
    if (allowed_allocations != Failing_Memory::NO_LIMIT) {
        --allowed_allocations;
    }
    return malloc(size > 0 ? size : 1);
}

void *allocate_or_throw(std::size_t size)
{
    void *const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

void *operator new(std::size_t size)
{
    return allocate_or_throw(size);
}

void *operator new[](std::size_t size)
{
    return allocate_or_throw(size);
}

void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size);
}

void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    return allocate(size);
}

void operator delete(void *memory) noexcept
{
    free(memory);
}

void operator delete[](void *memory) noexcept
{
    free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    free(memory);
}

void operator delete[](void *memory, std::size_t) noexcept
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
