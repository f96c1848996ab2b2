#pragma once

#include "switch/config/model.h"

/*
 * The ranges that the operator typed last, each the default of the next prompt that asks for one.
 * Main menus and setting menus share them. Prompts of different dialects do so too: a text that one
 * accepts may be refused by another. Single-threaded.
 */
struct SW_Range_Texts {
    char ports[SW_RANGE_TEXT_SIZE];
    char vlanIds[SW_RANGE_TEXT_SIZE];
    char userPrios[SW_RANGE_TEXT_SIZE];
    char dscps[SW_RANGE_TEXT_SIZE];
};

/* What they are at the start of the console. */
inline constexpr SW_Range_Texts SW_INITIAL_RANGES = {"0", "1", "0", "0"};

/* The texts themselves, process-wide: they live as long as the console. */
extern SW_Range_Texts SW_Ranges;
