#pragma once

/*
 * The operator's lines. Every read of the console goes through SW_Read_Line. Single-threaded, like
 * the console.
 */

/* Buffer sizes of the reads; a read takes one character less at most. */
inline constexpr int SW_MENU_LINE_SIZE = 1000; /* menus, and the prompts for long ranges */
inline constexpr int SW_VALUE_LINE_SIZE = 19;  /* prompts for one value or a short range */

/*
 * Flushes standard output, then reads a line from standard input into `buffer` of `size` bytes (at
 * least 2): at most size - 1 characters, the line feed with them, and a NUL. What a longer line
 * holds beyond stays in the stream for the next read, whoever makes it. A last line without a line
 * feed counts. The line may hold NUL bytes: then its text ends early. Waits for the whole line also
 * where standard input is non-blocking, and after a signal.
 *
 * False at the end of input or on a read error, which drops a half line: `buffer` then holds the
 * empty text. No later read finds anything either, so a menu that gets false leaves.
 */
bool SW_Read_Line(char *buffer, int size);

/* True when the last read found the end of input: a menu whose prompt or sub-menu met it can leave
 * without printing its text once more. False before the first read. */
bool SW_Input_Ended();
