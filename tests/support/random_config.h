#pragma once

#include "switch/config/model.h"

#include <random>

/*
 * Sets config to random values, each of which the startup file can hold and is read back from it:
 * enumerations in their lists, port types other than NO, flags 0 or 1, lists without minus and
 * comma, nothing in undefined VLANs. A few VLANs are defined, sometimes none.
 */
void SetRandomConfig(SW_Config *config, std::mt19937 *generator);
