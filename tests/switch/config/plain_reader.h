#pragma once

#include "switch/config/model.h"

#include <string>

/*
 * A second reader of startup files, as plain and slow as can be: one character at a time, a list of
 * all entries, comparison with every word, no table shared with the program. What the program's
 * reader gives is held against it.
 */

/* The result; the lines go to output, the values to config. */
bool ReadPlainly(const std::string &text, SW_Config *config, std::string *output);
