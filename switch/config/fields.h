#pragma once

#include "switch/config/keys.h"

#include <cstring>

/* Access to the field of a key, for reader and writer. */

/* Where the field of a key is in SW_Config; number and index are 0 where the key has none. */
constexpr size_t FieldOffset(const SW_Config_Key &key, size_t number, size_t index)
{
    return key.offset + key.stride * number + key.size * index;
}

/* A numeric field of 1, 2 or 4 bytes. */
inline uint32_t LoadField(const unsigned char *field, size_t size)
{
    uint8_t byte = 0;
    uint16_t half = 0;
    uint32_t word = 0;
    switch (size) {
    case sizeof byte:
        return *field;
    case sizeof half:
        memcpy(&half, field, sizeof half);
        return half;
    default:
        memcpy(&word, field, sizeof word);
        return word;
    }
}

/* Meant: a number is cut to the width of its field, whatever its range. */
inline void StoreField(unsigned char *field, size_t size, uint32_t value)
{
    const uint16_t half = static_cast<uint16_t>(value);
    switch (size) {
    case sizeof(uint8_t):
        *field = static_cast<uint8_t>(value);
        break;
    case sizeof half:
        memcpy(field, &half, sizeof half);
        break;
    default:
        memcpy(field, &value, sizeof value);
    }
}

/* The number that a word means for an enumerated field; false when the field does not accept it. */
constexpr bool WordValue(const SW_Value_Words &words, int32_t keyword, uint32_t *value)
{
    const bool no = words.alsoNo && keyword == SW_Config_Keyword_NO;
    *value = no ? 0 : static_cast<uint32_t>(keyword) - words.first + words.firstValue;
    return no || IsKeywordBetween(keyword, words.first, words.last);
}
