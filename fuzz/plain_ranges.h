#pragma once

#include "tests/switch/range/plain_list2.h"

/*
 * The two other dialects of range lists, as plain and slow as can be; the program's parsers are
 * held against them. The long dialect stands with the tests.
 */

/* The short dialect: one-digit numbers. */
Plain_Result plain_list(const std::string &text, int32_t min, int32_t max);

/* The dialect of VLAN IDs: the values in order and without repeats. */
Plain_Result plain_vector(const std::string &text, int32_t min, int32_t max);
