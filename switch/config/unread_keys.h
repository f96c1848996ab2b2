#pragma once

#include <cstddef>
#include <cstdint>

/* Keys of a startup file that the reader never comes to: it ends, without an error, at the first
 * character that has no place in the format, such as the minus sign of a list or a comment. */
struct SW_Unread_Keys {
    int32_t keys; /* how many; the one in which the reading ends counts */
    int32_t line; /* where it ends, as an editor counts lines: from 1, CR LF is one line end */
};

/*
 * Looks for them in text, whose text[length] is NUL; length is at most SW_STARTUP_TEXT_LENGTH. No
 * keys, and line 0, when the whole text is read or a syntax error refuses it. What comes after the
 * end is counted by the format's own grammar, each time from the next line on where that does not
 * hold either. Pure; any thread.
 */
SW_Unread_Keys FindUnreadKeys(const char *text, size_t length);
