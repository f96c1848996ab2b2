#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

/* One text for a range parser: its values if it is accepted, the printed line if it is refused. */
struct Range_Row {
    const char *name;
    std::string text;
    int32_t min;
    int32_t max;
    std::vector<int32_t> values;
    std::string line; /* empty: accepted */

    bool accepted() const { return line.empty(); }
};

inline void PrintTo(const Range_Row &row, std::ostream *out)
{
    *out << row.name;
}

inline std::string range_row_name(const testing::TestParamInfo<Range_Row> &row)
{
    return row.param.name;
}

/* first, first + 1, ... last. */
inline std::vector<int32_t> run(int32_t first, int32_t last)
{
    std::vector<int32_t> values;
    for (int32_t value = first; value <= last; ++value)
        values.push_back(value);
    return values;
}

inline std::vector<int32_t> operator+(std::vector<int32_t> left, const std::vector<int32_t> &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/* text, count times. */
inline std::string times(int count, const std::string &text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/* What the outputs hold before a parse, to see that a refused text leaves them alone. */
inline const std::vector<int32_t> OLD_VALUES = {-7, 77};
inline constexpr int32_t OLD_COUNT = -1;
