#pragma once

#include "switch/config/decimal.h"
#include "switch/config/model.h"

#include <cstdint>
#include <exception>
#include <iterator>
#include <limits>
#include <new>
#include <vector>

/* What the range parsers share. Internal to this folder. */

constexpr bool IsBlank(char character)
{
    return character == ' ' || character == '\t';
}

constexpr bool IsWithin(int32_t value, int32_t min, int32_t max)
{
    return value >= min && value <= max;
}

/* The digits at *text appended to value, saturating; *text is moved behind them. */
inline int32_t TakeDigits(const char **text, int32_t value)
{
    /* Up to here a digit more cannot overflow: the common case, kept apart as it is much faster. */
    constexpr int32_t ROOM_FOR_DIGIT = std::numeric_limits<int32_t>::max() / 10 - 1;
    const char *at = *text;
    for (; IsDecimalDigit(*at); ++at) {
        value = value <= ROOM_FOR_DIGIT ? 10 * value + (*at - '0') : AppendDecimalDigit(value, *at);
    }
    *text = at;
    return value;
}

/* Walks over the whole numbers, as a source to insert from. Unsigned, so that the place behind the
 * largest value has a number too. */
struct Counting_Iterator {
    using iterator_category = std::forward_iterator_tag;
    using value_type = int32_t;
    using difference_type = std::ptrdiff_t;
    using pointer = const int32_t *;
    using reference = int32_t;

    uint32_t number;

    int32_t operator*() const { return static_cast<int32_t>(number); }
    Counting_Iterator &operator++()
    {
        ++number;
        return *this;
    }
    bool operator==(const Counting_Iterator &) const = default;
};

/* Appends first, first + 1, ... last; first is not above last. Throws when memory runs out. */
inline void AppendRun(std::vector<int32_t> &values, int32_t first, int32_t last)
{
    /* A value more than a 32-bit distance counts: no memory for it, the same on every build. */
    if (first <= 0 && last == std::numeric_limits<int32_t>::max()) {
        throw std::bad_alloc();
    }
    values.insert(values.end(), Counting_Iterator{static_cast<uint32_t>(first)},
                  Counting_Iterator{static_cast<uint32_t>(last) + 1});
}

/* Writes an accepted text to *rangeText if that is asked for; false if it is too long for it. */
inline bool Remember(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep)
{
    return !keep || rangeText == nullptr || SetRangeText(rangeText, text);
}

/* Gives found to the caller's list and count. */
inline bool HandOver(std::vector<int32_t> &found, std::vector<int32_t> &values, int32_t &count)
{
    values.swap(found);
    count = static_cast<int32_t>(values.size());
    return true;
}

/* Runs a parse, which returns bool; false when memory runs out in it. */
template <class Parse>
bool WithoutThrowing(const Parse &parse)
{
    try {
        return parse();
    } catch (const std::exception &) {
        return false;
    }
}
