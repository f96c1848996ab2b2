#include "tests/switch/console/random_lines.h"

#include <iterator>

namespace
{

/* Few VLANs are ever named, so that the startup file stays small when they are saved. */
constexpr const char *VALUES[] = {
    "0",
    "1",
    "2",
    "3",
    "4",
    "7",
    "8",
    "12",
    "13",
    "63",
    "64",
    "4095",
    "4096",
    "-1",
    "-3",
    "65537",
    "256",
    "y",
    "n",
    "Y",
    "yes",
    "abc",
    "0-4",
    "1-2",
    "1,2",
    "0-7",
    "0-63",
    "4-0",
    "1,,2",
    ",",
    " ",
    "1 - 2",
    "1-",
    "-",
    "\r",
    "0x",
    "999999999999",
    "2147483648",
    "1,4095",
    "1-34",
    "%s%n",
    "10",
};
constexpr char KEYS[] = "1234567812345678aAbBcCdDpPsSlLrR9eftz?\n";

} // namespace

std::string Random_Lines::next()
{
    switch (below(8)) {
    case 0:
        return "\n";
    case 1:
        return below(12) == 0 ? "0\n" : "2\n";
    case 2:
        return bytes(below(40)) + "\n";
    case 3:
        return below(40) == 0 ? bytes(900 + below(300)) + "\n" : "y\n";
    case 4:
    case 5:
        return std::string(VALUES[below(std::size(VALUES))]) + "\n";
    default:
        return std::string(1, KEYS[below(sizeof KEYS - 1)]) + "\n";
    }
}

std::string Random_Lines::next(int count)
{
    std::string lines;
    for (int i = 0; i < count; i++) {
        lines += next();
    }
    return lines;
}

uint32_t Random_Lines::below(size_t bound)
{
    return static_cast<uint32_t>(random_() % bound);
}

std::string Random_Lines::bytes(uint32_t length)
{
    std::string text;
    while (text.size() < length) {
        text += static_cast<char>(below(256));
    }
    return text;
}
