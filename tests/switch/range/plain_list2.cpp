#include "tests/switch/range/plain_list2.h"

#include <algorithm>

namespace
{

constexpr char END = '\0';

/* A number saturates at the 32-bit limit. */
int64_t with_digit(int64_t number, char digit)
{
    return std::min<int64_t>(10 * number + (digit - '0'), INT32_MAX);
}

bool is_digit(char c)
{
    return std::string("0123456789").find(c) != std::string::npos;
}

Plain_Result refused(const std::string &what)
{
    return {false, {}, "Failed ('" + what + "')\n"};
}

} // namespace

Plain_Result plain_list2(const std::string &text, int32_t min, int32_t max)
{
    Plain_Result result{true, {}, ""};
    if (text.empty()) {
        return result;
    }
    int64_t a = 0;
    int64_t b = 0;
    int state = 0;
    for (size_t i = 0;; ++i) {
        const char c = i < text.size() ? text[i] : END;
        const std::string shown = c == END ? "<cr>" : std::string(1, c);
        if (state == 0) {
            if (!is_digit(c)) {
                return refused(shown);
            }
            a = with_digit(a, c);
            state = 1;
        } else if (state == 1) {
            if (is_digit(c)) {
                a = with_digit(a, c);
            } else if (c == '-') {
                state = 2;
            } else if (c == ',' || c == END) {
                if (a < min || a > max) {
                    return refused(std::to_string(a));
                }
                result.values.push_back(static_cast<int32_t>(a));
                if (c == END) {
                    return result;
                }
                a = 0;
                state = 0;
            } else {
                return refused(shown);
            }
        } else if (state == 2) {
            if (!is_digit(c)) {
                return refused(shown);
            }
            b = with_digit(b, c);
            state = 3;
        } else if (is_digit(c)) {
            b = with_digit(b, c);
        } else if (c == ',' || c == END) {
            if (a < min || a > max) {
                return refused(std::to_string(a));
            }
            if (b < min || b > max || b <= a) {
                return refused(std::to_string(b));
            }
            for (int64_t value = a; value <= b; ++value) {
                result.values.push_back(static_cast<int32_t>(value));
            }
            if (c == END) {
                return result;
            }
            a = b = 0;
            state = 0;
        } else {
            return refused(shown);
        }
    }
}
