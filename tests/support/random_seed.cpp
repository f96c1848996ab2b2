#include "tests/support/random_seed.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

uint32_t test_seed()
{
    const char *const given = getenv("GATEWAY_TEST_SEED");
    const uint32_t seed = given != nullptr ? static_cast<uint32_t>(strtoul(given, nullptr, 10))
                                           : std::random_device()();
    fprintf(stderr, "GATEWAY_TEST_SEED=%u\n", static_cast<unsigned>(seed));
    return seed;
}

int test_rounds(int full)
{
    const char *const given = getenv("GATEWAY_TEST_DIVISOR");
    const int divisor = given != nullptr ? std::max(1, atoi(given)) : 1;
    return std::max(1, full / divisor);
}
