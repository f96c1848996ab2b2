#pragma once

#include <cstdint>

/*
 * The seed of a random test: the environment variable GATEWAY_TEST_SEED, to replay a failure, or a
 * fresh one. Printed on standard error in either case.
 */
uint32_t test_seed();

/*
 * How often a random test goes round: `full` times, or that divided by the environment variable
 * GATEWAY_TEST_DIVISOR (1 or more) on slow machines; at least once.
 */
int test_rounds(int full);
