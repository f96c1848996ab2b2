#pragma once

#include "tests/support/output_capture.h"

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
    for (int32_t value = first; value <= last; ++value) {
        values.push_back(value);
    }
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
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

/* What the outputs hold before a parse, to see that a refused text leaves them alone. */
inline const std::vector<int32_t> OLD_VALUES = {-7, 77};
inline constexpr int32_t OLD_COUNT = -1;

/* Runs parse(text, values, count), which returns bool, on a row and compares all that it gives. */
template <class Parse>
void expect_row(const Range_Row &row, const std::string &line, const Parse &parse)
{
    std::vector<int32_t> values = OLD_VALUES;
    int32_t count = OLD_COUNT;
    Output_Capture output;
    const bool accepted = parse(row.text.c_str(), values, count);
    EXPECT_EQ(output.finish(), line);
    EXPECT_EQ(accepted, row.accepted());
    EXPECT_EQ(values, row.accepted() ? row.values : OLD_VALUES);
    EXPECT_EQ(count, row.accepted() ? static_cast<int32_t>(row.values.size()) : OLD_COUNT);
}
