#pragma once

#include "switch/config/model.h"
#include "switch/config/tokenizer.h"

#include <cstddef>

/*
 * Takes the entries of a startup file into a configuration. Prints nothing. Single-threaded, like
 * the record.
 */

enum class SW_Entry_Outcome {
    STORED,
    IGNORED, /* a numbered section or key without its number */
    BAD_SECTION,
    BAD_NAME, /* the section has no such key */
    BAD_VALUE /* the key does not accept the value */
};

/*
 * Sets the keywords, numbers and index of the entry's section, when the tokenizer has just begun
 * it, and of its name; then stores its value in config if the key accepts it. STORED: *place is the
 * place of the key, with its index, in SW_KEY_TEXTS.
 */
SW_Entry_Outcome ConvertConfigEntry(SW_Config_Entry *entry, SW_Config *config, size_t *place);

/* Sets what the entry tells of its value: keyword, isNumber, isQuoted and unquoted. */
void ConvertConfigValue(SW_Config_Entry *entry);

/*
 * Stores the plain pairs that follow the one at place: a key of its section, a number or a word
 * that the key accepts, and a blank or a line end. Ends before the first that is anything else,
 * where the tokenizer then stands; that one is for NextConfigEntry. It gives what NextConfigEntry
 * and ConvertConfigEntry would give for each of them, at less cost; pairs in the order of the
 * writer cost least. The tokenizer has just delivered the entry at place, which was stored, from a
 * text that stops at end.
 */
void TakePlainPairs(SW_Config_Tokenizer *tokenizer, const char *end, size_t place,
                    SW_Config *config);
