#include "switch/config/tokenizer.h"

#include "switch/config/characters.h"

#include <array>

namespace
{

enum Action : uint8_t {
    GO,            /* nothing but the next state */
    BEGIN_SECTION, /* the character is the first of a section's name */
    END_SECTION,   /* the character stands behind the section's name */
    BEGIN_NAME,
    END_NAME,
    BEGIN_VALUE,
    END_VALUE,      /* the character stands behind the value; the entry is complete */
    END_WITH_QUOTE, /* the character is the last of the value; the entry is complete */
    END_TEXT,
    FAIL
};

struct Transition {
    Action action;
    SW_Config_State state;
};

using enum SW_Config_State;
constexpr Transition DONE = {END_TEXT, START};
constexpr Transition WRONG = {FAIL, START};

// clang-format off
constexpr Transition TRANSITIONS[SW_CONFIG_STATES][SW_CHARACTERS] = {
    /* START: blank, line end, "[", "]", "=", word, digit, quote, other */
    {{GO, START}, {GO, START}, {GO, OPENED}, WRONG, WRONG, WRONG, WRONG, WRONG, DONE},
    /* OPENED */
    {WRONG, WRONG, WRONG, WRONG, WRONG, {BEGIN_SECTION, SECTION}, WRONG, WRONG, DONE},
    /* SECTION */
    {WRONG, WRONG, WRONG, {END_SECTION, BETWEEN}, WRONG, {GO, SECTION}, {GO, SECTION}, WRONG, DONE},
    /* BETWEEN */
    {{GO, BETWEEN}, {GO, BETWEEN}, {GO, OPENED}, WRONG, WRONG, {BEGIN_NAME, KEY}, WRONG, WRONG, DONE},
    /* KEY */
    {{END_NAME, AFTER_KEY}, WRONG, WRONG, WRONG, {END_NAME, EQUALS}, {GO, KEY}, {GO, KEY}, WRONG, DONE},
    /* AFTER_KEY */
    {{GO, AFTER_KEY}, WRONG, WRONG, WRONG, {GO, EQUALS}, WRONG, WRONG, WRONG, DONE},
    /* EQUALS */
    {{GO, BEFORE_VALUE}, WRONG, WRONG, WRONG, WRONG,
     {BEGIN_VALUE, PLAIN_VALUE}, {BEGIN_VALUE, PLAIN_VALUE}, {BEGIN_VALUE, QUOTED_VALUE}, DONE},
    /* BEFORE_VALUE */
    {{GO, BEFORE_VALUE}, WRONG, WRONG, WRONG, WRONG,
     {BEGIN_VALUE, PLAIN_VALUE}, {BEGIN_VALUE, PLAIN_VALUE}, {BEGIN_VALUE, QUOTED_VALUE}, DONE},
    /* PLAIN_VALUE */
    {{END_VALUE, BETWEEN}, {END_VALUE, BETWEEN}, WRONG, WRONG, WRONG,
     {GO, PLAIN_VALUE}, {GO, PLAIN_VALUE}, WRONG, DONE},
    /* QUOTED_VALUE */
    {{GO, QUOTED_VALUE}, {END_VALUE, BETWEEN}, {GO, QUOTED_VALUE}, {GO, QUOTED_VALUE}, {GO, QUOTED_VALUE},
     {GO, QUOTED_VALUE}, {GO, QUOTED_VALUE}, {END_WITH_QUOTE, BETWEEN}, DONE},
};
// clang-format on

constexpr const Transition &transition_of(SW_Config_State state, SW_Character character)
{
    return TRANSITIONS[static_cast<size_t>(state)][static_cast<size_t>(character)];
}

/* For each state the classes, as a set of bits, that do nothing but stay; a line end is left out
 * because it is counted. */
constexpr std::array<uint16_t, SW_CONFIG_STATES> make_runs()
{
    std::array<uint16_t, SW_CONFIG_STATES> runs = {};
    for (size_t state = 0; state < SW_CONFIG_STATES; state++) {
        for (size_t character = 0; character < SW_CHARACTERS; character++) {
            const Transition &transition = TRANSITIONS[state][character];
            if (transition.action == GO && static_cast<size_t>(transition.state) == state &&
                character != static_cast<size_t>(SW_Character::LINE_END)) {
                runs[state] = static_cast<uint16_t>(runs[state] | 1U << character);
            }
        }
    }
    return runs;
}
constexpr std::array<uint16_t, SW_CONFIG_STATES> RUNS = make_runs();

int32_t column_of(const SW_Config_Tokenizer *tokenizer, const char *at)
{
    return static_cast<int32_t>(at - tokenizer->lineStart + 1);
}

/* The view from the character that a text began with to the one at. */
std::string_view text_to(std::string_view begun, const char *at)
{
    return {begun.data(), static_cast<size_t>(at - begun.data())};
}

void begin_section(SW_Config_Tokenizer *tokenizer, const char *at)
{
    SW_Config_Entry &entry = tokenizer->entry;
    entry.section = {at, 1};
    entry.sectionKeyword = -1;
    entry.sectionNumber = -1;
    entry.sectionLine = tokenizer->line;
    entry.sectionColumn = column_of(tokenizer, at);
}

void begin_name(SW_Config_Tokenizer *tokenizer, const char *at)
{
    SW_Config_Entry &entry = tokenizer->entry;
    entry.name = {at, 1};
    entry.nameKeyword = -1;
    entry.nameIndex = -1;
    entry.nameLine = tokenizer->line;
    entry.nameColumn = column_of(tokenizer, at);
    entry.valueKeyword = -1;
}

void begin_value(SW_Config_Tokenizer *tokenizer, const char *at)
{
    SW_Config_Entry &entry = tokenizer->entry;
    entry.value = {at, 1};
    entry.valueLine = tokenizer->line;
    entry.valueColumn = column_of(tokenizer, at);
}

} // namespace

void StartConfigTokenizer(SW_Config_Tokenizer *tokenizer, const char *text)
{
    *tokenizer = {};
    tokenizer->next = text;
    tokenizer->lineStart = text;
    tokenizer->line = 1;
}

SW_Config_Token NextConfigEntry(SW_Config_Tokenizer *tokenizer)
{
    SW_Config_Entry &entry = tokenizer->entry;
    const char *at = tokenizer->next;
    SW_Config_State state = tokenizer->state;
    for (;; at++) {
        const unsigned run = RUNS[static_cast<size_t>(state)];
        SW_Character character = CharacterClass(*at);
        while ((run >> static_cast<unsigned>(character) & 1U) != 0) {
            character = CharacterClass(*++at);
        }
        const Transition &transition = transition_of(state, character);
        bool complete = false;
        switch (transition.action) {
        case GO:
            break;
        case BEGIN_SECTION:
            begin_section(tokenizer, at);
            break;
        case END_SECTION:
            entry.section = text_to(entry.section, at);
            break;
        case BEGIN_NAME:
            begin_name(tokenizer, at);
            break;
        case END_NAME:
            entry.name = text_to(entry.name, at);
            break;
        case BEGIN_VALUE:
            begin_value(tokenizer, at);
            break;
        case END_VALUE:
            entry.value = text_to(entry.value, at);
            complete = true;
            break;
        case END_WITH_QUOTE:
            entry.value = text_to(entry.value, at + 1);
            complete = true;
            break;
        case END_TEXT:
        case FAIL:
            tokenizer->next = at;
            tokenizer->state = state;
            return transition.action == FAIL ? SW_Config_Token::ERROR : SW_Config_Token::END;
        }
        state = transition.state;
        if (character == SW_Character::LINE_END) {
            tokenizer->line++;
            tokenizer->lineStart = at + 1;
        }
        if (complete) {
            tokenizer->next = at + 1;
            tokenizer->state = state;
            return SW_Config_Token::ENTRY;
        }
    }
}
