#pragma once

#include "switch/config/model.h"

#include <cstdint>
#include <vector>

/*
 * The prompts of the console: each prints one line without a line feed, which shows the current
 * value, reads one line and changes the value or leaves it. None asks again. Single-threaded.
 *
 * For the prompts of one value:
 * - `label` opens the line; the value is the caller's and is never null.
 * - At most 18 characters of the answer are read; the rest of a longer line stays for the next read
 *   of the console, a menu's as well. That is meant.
 * - Enter keeps the value. A line that is only CR LF is not Enter: it is an answer without digits.
 * - Numbers are decimal, with leading blanks and a sign, up to the first other character; without
 *   digits they are 0. Beyond 32 bits they saturate.
 * - A number out of range prints "Value out of range!\n" and keeps the value.
 * - True: a value was stored, kept with Enter, or refused. False: end of input, or an answer that
 *   begins with a NUL byte; the value is kept. Two prompts differ, see there.
 */

/* Flag: y or Y as the first character stores 1, any other stores 0. False for Enter as well: a
 * confirmation starts from 0 and looks at the value. */
bool Ask_Yes_No(const char *label, uint32_t *value);

/* SW_Rate, SW_Egress_Mode, SW_Dot1q_Mode, SW_Auto_Mode, speed 0 to 2 (SW_SPEED_...). Checked
 * against the upper bound only, as signed numbers: a negative one is stored as it is, meant so.
 * Ask_Auto_Mode lists the modes before its line; Ask_Port_Speed shows no current value. */
bool Ask_Egress_Rate(const char *label, uint32_t *rate);
bool Ask_Egress_Mode(const char *label, uint32_t *mode);
bool Ask_Dot1q_Mode(const char *label, uint32_t *mode);
bool Ask_Auto_Mode(const char *label, uint32_t *mode);
bool Ask_Port_Speed(const char *label, uint32_t *speed);

/* SW_Max_Frame_Size. The number is cut to 16 bits before the check: 65536 is 0, and -1 is refused.
 * False also for a number out of range. */
bool Ask_Max_Frame_Size(const char *label, uint32_t *size);

/* SW_Member_Tag of a VLAN table entry. The number is cut to 16 bits before the check. */
bool Ask_Member_Tag(const char *label, uint8_t *tag);

/* Any number, cut to 16 bits; its range is the caller's to check. */
bool Ask_Number(const char *label, uint16_t *number);

/*
 * The prompts for ranges (switch/range/range_lists.h has the texts). `rangeText` is shown as the
 * current value and takes the accepted text, to be shown next time; `values` gets the numbers,
 * min to max inclusive. On false `values` is as it was.
 *
 * The first two: Enter takes the range text as it is. A line end of one or two CR or LF is removed;
 * a line that is only CR LF is the empty text, which both dialects accept. A refused text prints
 * the parser's own line, then "Range: %s - bad value\n" unless it is the text that Enter took; the
 * range text stays. At the end of input, or for an answer that begins with a NUL byte, false.
 */

/* Up to 999 characters, read by Int_Range_To_Int_List2: VLAN IDs. */
bool Ask_Range_List(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                    std::vector<int32_t> &values, int32_t min, int32_t max);

/* Up to 18 characters, read by Int_Range_To_Int_List: ports. */
bool Ask_Int_Range(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                   std::vector<int32_t> &values, int32_t min, int32_t max);

/*
 * Up to 98 characters, read by Range_Str_To_Vector, which prints its own line when it refuses. The
 * answer replaces the range text at once, before it is checked, so a bad one is shown next time. An
 * answer that begins with CR or LF is Enter. At the end of input the range text becomes empty. An
 * empty range text is refused without a line.
 */
bool Ask_Range_Vector(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                      std::vector<int32_t> &values, int32_t min, int32_t max);
