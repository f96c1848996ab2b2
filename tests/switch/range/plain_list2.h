#pragma once

#include <cstdint>
#include <string>
#include <vector>

/* What a parse of the long range dialect gives: the values, or the printed line. */
struct Plain_Result {
    bool accepted;
    std::vector<int32_t> values;
    std::string line;
};

/* The dialect's state table, written out state by state and walked one character at a time. */
Plain_Result plain_list2(const std::string &text, int32_t min, int32_t max);
