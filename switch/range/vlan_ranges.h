#pragma once

#include "switch/config/model.h"

#include <cstddef>

/*
 * Sets of VLAN IDs as range texts: "1-3,10,12". Runs of consecutive IDs, 0 to 4095 in increasing
 * order, as "first-last" or as the ID alone, joined by commas.
 *
 * Both routines write text and its NUL to buffer, at most size bytes in all, and nothing if size is
 * 0. A text that does not fit is cut off at the end of the buffer, also within a number. Bytes
 * behind the NUL stay as they were. Any thread may call that reads config.
 */

/* The defined VLANs. With none, prints "<none>", without a line feed, on standard output and leaves
 * the text empty: a caller prints its label first, then calls, then prints the text. */
void Format_Defined_Vlans(const SW_Config *config, char *buffer, size_t size);

/* The defined VLANs that have the port of the chip, 0 to 10, as a member: whose member code for it
 * is not 1. With none, or for another port, the text is empty and nothing is printed. */
void Format_Port_Vlans(const SW_Config *config, int chipPort, char *buffer, size_t size);
