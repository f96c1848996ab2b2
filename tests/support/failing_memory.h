#pragma once

#include <limits>

/*
 * While one exists, the allocation by operator new number `allowed` from then on, counted from 0,
 * and all later ones fail: with std::bad_alloc, or with null where that was asked for. This
 * program's operator new is replaced for it. One thread, one object at a time.
 */
class Failing_Memory
{
public:
    static constexpr int NO_LIMIT = std::numeric_limits<int>::max();

    explicit Failing_Memory(int allowed);
    ~Failing_Memory();
    Failing_Memory(const Failing_Memory &) = delete;
    Failing_Memory &operator=(const Failing_Memory &) = delete;

    /* Whether an allocation has failed so far. */
    bool failed() const;
};
