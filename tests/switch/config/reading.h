#pragma once

#include "tests/switch/config/records.h"

#include <string>

/* What reading a text gave: the result, the lines printed, and the record. */
struct Reading {
    bool good;
    std::string output;
    Record record;
};

/* Reads text into a record of which every byte was byte. */
Reading read_text(const std::string &text, int byte = 0);
