#pragma once

#include <cstddef>

/* The deepest nesting that a gateway configuration may have. The XML library parses and frees a
 * document by recursion, about 300 bytes of stack a level, and would run off the stack behind it.
 */
inline constexpr int XML_DEPTH_LIMIT = 10000;

/*
 * The depth to which elements nest in an XML text: 0 without an element, 1 for a root alone. Where
 * the text is not well-formed, at least the depth that the XML library reaches before it gives up.
 * text: any bytes, need not end in NUL. No allocation, no recursion. Any thread.
 */
int xml_depth(const char *text, size_t length);
