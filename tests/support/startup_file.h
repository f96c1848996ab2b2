#pragma once

#include "switch/config/model.h"

#include <string>

/*
 * Startup files for tests and benchmarks, made without the program's reader, writer or tables.
 */

/* The factory defaults and every VLAN from 1 to 4095, with a value in every field that the file
 * has. Its file has 2,071,454 bytes and 114,848 keys. */
void SetAllVlans(SW_Config *config);

/* The file that a configuration is expected to be saved as. */
std::string StartupFileText(const SW_Config &config);
