#pragma once

#include "switch/config/model.h"

#include <cstdint>
#include <vector>

/*
 * Range lists: texts such as "5-10,12,15-20" that name sets of ports and VLAN IDs, parsed into
 * lists of numbers. Three dialects, each with its own quirks, which operators' texts and startup
 * files rely on: no dialect is a subset of another.
 *
 * For all parsers:
 * - text is NUL-terminated and not null, of any length. Bytes are taken as unsigned, so a byte
 * above 0x7F is an ordinary wrong character. Written numbers saturate at 2147483647, they never
 * wrap.
 * - min and max are inclusive. A list has no limit but memory: a text of n characters can name n
 *   times as many values as the bounds hold, so callers must not assume a count.
 * - True: the outputs are set. False: the text is refused or memory ran out; all outputs are as
 * they were. Messages go to standard output; running out of memory prints nothing.
 * - Nothing is thrown. Any thread may call, the messages of two threads may mix.
 */

/* What `Range_Str_To_Lexems` splits a text into. */
enum Range_Lexem_Kind : int32_t {
    Range_Lexem_NUMBER,
    Range_Lexem_COMMA,
    Range_Lexem_MINUS,
};

struct Range_Lexem {
    Range_Lexem_Kind kind;
    int32_t value; /* of a number, 0 to 2147483647; otherwise 0 */
};

/*
 * The distinct numbers of text in increasing order: VLAN ID ranges, port ranges of the sub-menus.
 * Numbers are separated by commas or blanks (space, tab), blanks may stand anywhere between numbers
 * and separators. At least one value must result.
 *
 * A refused text prints one line if verbose is set, "<routine>:<number>: Parsing Error" or
 * "... Range Error"; the numbers are constants that tell the cases apart.
 */
bool Range_Str_To_Vector(const char *text, std::vector<int32_t> &values, int32_t min, int32_t max,
                         bool verbose);

/* First stage: splits text. Succeeds on the empty text, with no lexemes; otherwise as above. */
bool Range_Str_To_Lexems(const char *text, std::vector<Range_Lexem> &lexems, bool verbose);

/* Second stage: the values of lexems in the order met, repeats included. Succeeds with no values on
 * no lexemes; otherwise as above. */
bool Range_Lexems_To_Vector(const std::vector<Range_Lexem> &lexems, std::vector<int32_t> &values,
                            int32_t min, int32_t max, bool verbose);

/*
 * The values of text in the order written, repeats kept: the long range prompt, and the VLAN lists
 * of trunk ports. Numbers and ranges "a-b" with a below b, separated by single commas, without any
 * blank. The empty text succeeds with no values.
 *
 * count is set to the number of values. With keep set and rangeText not null, the accepted text is
 * also written to *rangeText, whole and zero-filled; an otherwise good text longer than its 99
 * characters is then refused, without a message. text may be *rangeText itself.
 *
 * Any other refused text prints one line: "Failed ('...')" with the character, "<cr>" for the end
 * of the text, or the number out of place.
 */
bool Int_Range_To_Int_List2(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep,
                            std::vector<int32_t> &values, int32_t &count, int32_t min, int32_t max);

/*
 * The values of text in the order written, repeats kept, for numbers of one digit: short port
 * ranges. That limit is meant, ports are numbered 0 to 4. A comma may stand anywhere between items,
 * also twice; a blank (space, tab) only right behind a single number; behind a range nothing needs
 * to stand, so "1-34" is 1 2 3 4. Texts without an item, "" and ",", succeed with no values.
 *
 * rangeText, keep and count as for `Int_Range_To_Int_List2`. A refused text prints one line,
 * "Int_Range_To_Int_List:<number>: - Failed...".
 */
bool Int_Range_To_Int_List(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep,
                           std::vector<int32_t> &values, int32_t &count, int32_t min, int32_t max);

/* The same without messages and without remembering the text. */
bool Int_Range_To_Int_List_Silent(const char *text, std::vector<int32_t> &values, int32_t &count,
                                  int32_t min, int32_t max);

/*
 * Runs seven sample texts through `Int_Range_To_Int_List2` with bounds 1 and 4095 and prints for
 * each the text, the result and up to 100 values. True if every sample parses. The samples' values
 * are not compared here: they are printed to be looked at.
 */
bool QRB_Int_Range_To_Int_List2_Test();
