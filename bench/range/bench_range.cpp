#include "switch/range/range_lists.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <vector>

/*
 * The range parsers beside a bare scan of the same text, which only turns the digits into values
 * and stores each value that the text names. The ratio of two lines of one text is what counts, not
 * the times.
 */

namespace
{

constexpr int32_t MIN_VID = 1;
constexpr int32_t MAX_VID = 4095;

std::string all_vlans()
{
    return "1-4095";
}

std::string odd_vlans()
{
    std::string text = "1";
    for (int32_t vid = 3; vid <= MAX_VID; vid += 2) {
        text.append(",").append(std::to_string(vid));
    }
    return text;
}

/* Checks nothing, keeps no state but the two numbers; values holds what the text names. */
size_t bare_scan(const char *text, int32_t *values)
{
    int32_t *end = values;
    while (*text != '\0') {
        int32_t first = 0;
        while (*text >= '0' && *text <= '9') {
            first = 10 * first + (*text++ - '0');
        }
        int32_t last = first;
        if (*text == '-') {
            ++text;
            last = 0;
            while (*text >= '0' && *text <= '9') {
                last = 10 * last + (*text++ - '0');
            }
        }
        for (int32_t value = first; value <= last; ++value) {
            *end++ = value;
        }
        if (*text == ',') {
            ++text;
        }
    }
    return static_cast<size_t>(end - values);
}

void expect_count(benchmark::State &state, size_t found, size_t expected)
{
    if (found != expected) {
        state.SkipWithError("wrong number of values");
    }
}

void scan(benchmark::State &state, const std::string &text, size_t expected)
{
    std::vector<int32_t> values(MAX_VID);
    size_t found = 0;
    while (state.KeepRunning()) {
        found = bare_scan(text.c_str(), values.data());
        benchmark::DoNotOptimize(values.data());
        benchmark::ClobberMemory();
    }
    expect_count(state, found, expected);
}

void list2(benchmark::State &state, const std::string &text, size_t expected)
{
    std::vector<int32_t> values;
    int32_t count = 0;
    while (state.KeepRunning()) {
        Int_Range_To_Int_List2(text.c_str(), nullptr, false, values, count, MIN_VID, MAX_VID);
        benchmark::DoNotOptimize(values.data());
        benchmark::ClobberMemory();
    }
    expect_count(state, values.size(), expected);
}

void vector(benchmark::State &state, const std::string &text, size_t expected)
{
    std::vector<int32_t> values;
    while (state.KeepRunning()) {
        Range_Str_To_Vector(text.c_str(), values, MIN_VID, MAX_VID, false);
        benchmark::DoNotOptimize(values.data());
        benchmark::ClobberMemory();
    }
    expect_count(state, values.size(), expected);
}

constexpr size_t ALL_COUNT = 4095;
constexpr size_t ODD_COUNT = 2048;

BENCHMARK_CAPTURE(scan, all, all_vlans(), ALL_COUNT);
BENCHMARK_CAPTURE(list2, all, all_vlans(), ALL_COUNT);
BENCHMARK_CAPTURE(vector, all, all_vlans(), ALL_COUNT);
BENCHMARK_CAPTURE(scan, odd, odd_vlans(), ODD_COUNT);
BENCHMARK_CAPTURE(list2, odd, odd_vlans(), ODD_COUNT);
BENCHMARK_CAPTURE(vector, odd, odd_vlans(), ODD_COUNT);

} // namespace

BENCHMARK_MAIN();
