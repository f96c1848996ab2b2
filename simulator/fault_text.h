#pragma once

#include "simulator/faults.h"

/*
 * Reads a fault as people write it: N[:COUNT[:KIND[:ADDRESS[:REGISTER]]]], an empty field in
 * between for its default.
 *   N         the first request broken of those that fit, from 1
 *   COUNT     how many from there, from 1, or "forever"; default 1
 *   KIND      "ones", "busy", or the name of the error that fails the request; default EIO
 *   ADDRESS   SMI address, 0 to 31, or "any"; default any
 *   REGISTER  0 to 31, or "any"; default any
 * Numbers are decimal, or hexadecimal after "0x". False, and the fault is left alone, for any other
 * text. Whether the plan takes the fault is for Sim_Faults_Add to say.
 */
bool Sim_Fault_Of_Text(const char *text, Sim_Fault *fault);

/* Reads a whole text as a number of at most `most`, decimal or hexadecimal after "0x". False, and
 * the number is left alone, for any other text. */
bool Sim_Number_Of_Text(const char *text, uint32_t most, uint32_t *number);
