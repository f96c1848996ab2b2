#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/*
 * Splits the text of a startup file into entries: one key and its value, with the section that they
 * stand in. docs/startup-file.md describes the format. Nothing is allocated: the texts of an entry
 * are views into the text. One tokenizer belongs to one thread.
 */

/* Lines and columns count from 1 and are those of the first character. A line feed and a carriage
 * return each begin a line; every other character, a tab too, is one column. */
struct SW_Config_Entry {
    std::string_view section; /* as between the brackets */
    int32_t sectionKeyword;   /* SW_Config_Keyword, -1 until converted */
    int32_t sectionNumber;    /* behind SW_PORT or SW_VLAN, -1 if none */
    int32_t sectionLine;
    int32_t sectionColumn;
    std::string_view name;
    int32_t nameKeyword; /* SW_Config_Keyword, -1 until converted */
    int32_t nameIndex;   /* behind MEMBER_TAG_P, PORT_STATE_P or V, -1 if none */
    int32_t nameLine;
    int32_t nameColumn;
    std::string_view value; /* a quoted value keeps its quotes */
    int32_t valueKeyword;   /* SW_Config_Keyword, -1 until converted */
    int32_t valueLine;
    int32_t valueColumn;
    bool isNumber;             /* digits only; set when converted, as are the next two */
    bool isQuoted;             /* begins and ends with a quote; a single quote does */
    std::string_view unquoted; /* between the quotes; empty when not quoted */
};

/* Where in the text the tokenizer stands. */
enum class SW_Config_State : uint8_t {
    START,        /* before the first section */
    OPENED,       /* behind "[" */
    SECTION,      /* in a section's name */
    BETWEEN,      /* behind a section header or an entry */
    KEY,          /* in a key */
    AFTER_KEY,    /* in the blanks behind a key */
    EQUALS,       /* behind "=" */
    BEFORE_VALUE, /* in the blanks behind "=" */
    PLAIN_VALUE,  /* in a value without quotes */
    QUOTED_VALUE  /* behind the opening quote of a value */
};
inline constexpr int SW_CONFIG_STATES = static_cast<int>(SW_Config_State::QUOTED_VALUE) + 1;

enum class SW_Config_Token {
    ENTRY, /* an entry is complete */
    END,   /* the text has ended, or a character that ends it was met; no further entry */
    ERROR  /* syntax error; no further entry */
};

struct SW_Config_Tokenizer {
    const char *next;      /* first character not yet looked at */
    const char *lineStart; /* first character of its line */
    int32_t line;
    SW_Config_State state;
    SW_Config_Entry entry;
};

/* Sets the tokenizer to the start of text, which ends at its first NUL and outlives it. At most
 * 2147483646 characters. */
void StartConfigTokenizer(SW_Config_Tokenizer *tokenizer, const char *text);

/*
 * Goes on to the next entry. ENTRY: tokenizer->entry is it, not yet converted. END: also in the
 * middle of an entry, which is dropped. After END and ERROR the tokenizer is not to be used; `next`
 * is the character that it stopped at, `state` where it stood before it.
 */
SW_Config_Token NextConfigEntry(SW_Config_Tokenizer *tokenizer);
