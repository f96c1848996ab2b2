#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

/*
 * The program's one conversion of decimal texts. Results saturate at the limits of 32 bits on every
 * build, where the library's conversion would depend on the width of long. Pure; any thread.
 */

/* True for the digits 0 to 9 only, whatever the locale. */
constexpr bool IsDecimalDigit(char character)
{
    return character >= '0' && character <= '9';
}

/* value, 0 to 2147483647, with digit ('0' to '9') appended: 10 * value + digit, at most 2147483647.
 */
constexpr int32_t AppendDecimalDigit(int32_t value, char digit)
{
    const int64_t sum = int64_t{10} * value + (digit - '0');
    return sum > std::numeric_limits<int32_t>::max() ? std::numeric_limits<int32_t>::max()
                                                     : static_cast<int32_t>(sum);
}

/* The number that text begins with: digits up to the first other character; 0 without a digit. A
 * blank or a sign is another character. */
constexpr int32_t UnsignedDecimalValue(std::string_view text)
{
    int32_t value = 0;
    for (const char character : text) {
        if (!IsDecimalDigit(character)) {
            break;
        }
        value = AppendDecimalDigit(value, character);
    }
    return value;
}

/* The same behind leading blanks (space, tab, line feed, carriage return, vertical tab, form feed)
 * and at most one sign; between -2147483648 and 2147483647. */
constexpr int32_t SignedDecimalValue(std::string_view text)
{
    const size_t start = text.find_first_not_of(" \t\n\r\v\f");
    if (start == std::string_view::npos) {
        return 0;
    }
    text.remove_prefix(start);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') {
        text.remove_prefix(1);
    }
    const int64_t limit = negative ? -int64_t{std::numeric_limits<int32_t>::min()}
                                   : int64_t{std::numeric_limits<int32_t>::max()};
    int64_t magnitude = 0;
    for (const char character : text) {
        if (!IsDecimalDigit(character)) {
            break;
        }
        magnitude = 10 * magnitude + (character - '0');
        magnitude = magnitude > limit ? limit : magnitude;
    }
    return static_cast<int32_t>(negative ? -magnitude : magnitude);
}
