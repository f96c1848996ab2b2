#pragma once

#include "switch/config/model.h"

#include <cstdio>

/*
 * Writes a configuration as the startup file that docs/startup-file.md describes. What the reader
 * refuses is written all the same: a port of type NO, the words of numbers outside their
 * enumerations, a section SW_VLAN0. Any thread, one at a time for a record and a stream.
 */

/* False only when stream is null. Whether the stream could take everything is not looked at. */
bool WriteSwitchConfig(const SW_Config *config, FILE *stream);

/* Replaces the file at path, or writes to the device there. False, and nothing written, only when
 * it is a FIFO, which is not opened, or cannot be opened. */
bool SaveSwitchConfigFile(const SW_Config *config, const char *path);
