#pragma once

#include "switch/config/model.h"

#include <cstddef>

/*
 * Reads the startup file, which docs/startup-file.md describes, into a configuration. Neither
 * routine clears config first: what the text does not name keeps its value, and VLAN entries that
 * are defined stay so. Single-threaded, like the record.
 */

/*
 * Converts text, which ends at its first NUL: text[length] is one. length is at most
 * SW_STARTUP_TEXT_LENGTH.
 *
 * True: every entry was stored and vlanEntryCount counts the defined entries.
 * False with lines on standard output: the entries that they name were not stored, all others were,
 * and vlanEntryCount counts the defined entries.
 * False without a line: a syntax error, or no memory; config is unchanged.
 */
bool ParseSwitchConfig(const char *text, size_t length, SW_Config *config);

/*
 * The same for the file at path. Also false, without a line and with config unchanged, when
 * ReadStartupText cannot read it.
 */
bool LoadSwitchConfigFile(const char *path, SW_Config *config);
