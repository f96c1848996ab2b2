#pragma once

#include "fuzz/plain_ranges.h"
#include "fuzz/target.h"
#include "switch/range/range_lists.h"

#include <algorithm>
#include <cstring>

/* Bounds that the program's prompts use. */
struct Bounds {
    int32_t min;
    int32_t max;
};
inline constexpr Bounds BOUNDS[] = {{0, 4}, {0, 7}, {0, 63}, {1, 4095}};

/* What the outputs hold before a parse; a refused text must leave them so. */
inline constexpr int32_t OLD_VALUE = -77;

/* The outputs of one parse. */
struct Parsed {
    bool good = false;
    std::vector<int32_t> values = {OLD_VALUE};
    int32_t count = OLD_VALUE;
    char text[SW_RANGE_TEXT_SIZE] = "old";
    std::string printed;

    bool operator==(const Parsed &other) const = default;
};

inline bool is_remembered(const Parsed &parsed, const std::string &text)
{
    return text == parsed.text &&
           std::all_of(parsed.text + text.size(), parsed.text + SW_RANGE_TEXT_SIZE,
                       [](char character) { return character == '\0'; });
}

inline bool is_untouched(const Parsed &parsed)
{
    return parsed.values == std::vector{OLD_VALUE} && parsed.count == OLD_VALUE &&
           is_remembered(parsed, "old");
}

inline bool are_within(const std::vector<int32_t> &values, Bounds bounds)
{
    return std::all_of(values.begin(), values.end(), [bounds](int32_t value) {
        return value >= bounds.min && value <= bounds.max;
    });
}

inline std::vector<int32_t> sorted_without_repeats(std::vector<int32_t> values)
{
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    return values;
}

/* A dialect that can remember its text, by parse(text, keep, bounds), against the plain parser's
 * result. Returns what it gives without remembering. */
template <class Parse>
Parsed require_as_plain(const Plain_Result &expected, const Parse &parse, const char *text,
                        Bounds bounds)
{
    const Parsed parsed = parse(text, false, bounds);
    REQUIRE(parsed.good == expected.accepted);
    REQUIRE(parsed.printed == expected.line);
    REQUIRE(parsed.good ? parsed.values == expected.values : is_untouched(parsed));
    REQUIRE(are_within(expected.values, bounds));
    REQUIRE(!parsed.good || parsed.values.size() == static_cast<size_t>(parsed.count));
    const Parsed kept = parse(text, true, bounds);
    REQUIRE(kept.good == (parsed.good && strlen(text) < SW_RANGE_TEXT_SIZE));
    REQUIRE(kept.printed == parsed.printed);
    REQUIRE(kept.good ? is_remembered(kept, text) && kept.values == parsed.values
                      : is_untouched(kept));
    return parsed;
}

/* The bytes as a text, with each pair of bounds. */
template <class Rules>
void require_within_all_bounds(const uint8_t *data, size_t size, const Rules &rules)
{
    const std::unique_ptr<char[]> text = terminated(data, size);
    for (const Bounds bounds : BOUNDS) {
        rules(text.get(), bounds);
    }
}
