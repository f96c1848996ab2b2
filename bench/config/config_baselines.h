#pragma once

#include <cstddef>
#include <string>

/*
 * What reader and writer are held against.
 */

/* The pairs of a startup file's text as a tight loop finds them: where each key and each value
 * begins and ends, and nothing else. Returns their number; lengths is the sum of all lengths, so
 * that no work can be left out. */
size_t ScanPairs(const char *text, size_t *lengths);

/* Reads a file, or a text, with inih into a handler that counts. Returns the number of pairs. */
size_t ReadFileWithInih(const char *path);
size_t ReadTextWithInih(const char *text);
