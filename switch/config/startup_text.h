#pragma once

#include <cstddef>
#include <memory>

/* The most bytes of a startup file: lines and columns stay within 32 bits. */
inline constexpr size_t SW_STARTUP_TEXT_LENGTH = 2147483646;

/* A startup file in memory. */
struct SW_Startup_Text {
    std::unique_ptr<char[]> text; /* text[length] is NUL */
    size_t length;                /* 1 to SW_STARTUP_TEXT_LENGTH */
};

/*
 * Reads the startup file at path. False, and *text as it was, when the file is missing, empty,
 * unreadable or longer than a startup file may be, which is then not read, when it is neither a
 * regular file nor a link to one, which is then not opened, and when there is no memory for it.
 */
bool ReadStartupText(const char *path, SW_Startup_Text *text);
