#include "switch/config/unread_keys.h"

#include "switch/config/tokenizer.h"

#include <algorithm>
#include <cstring>

namespace
{

bool is_line_end(char character)
{
    return character == '\n' || character == '\r';
}

const char *line_end(const char *at, const char *end)
{
    return std::find_if(at, end, is_line_end);
}

/* Reads on to where the tokenizer stops; returns how many entries come before that. */
int32_t count_entries(SW_Config_Tokenizer *tokenizer, SW_Config_Token *last)
{
    int32_t entries = 0;
    while ((*last = NextConfigEntry(tokenizer)) == SW_Config_Token::ENTRY) {
        ++entries;
    }
    return entries;
}

/* Whether a key stands where the tokenizer has stopped. */
bool stopped_in_key(const SW_Config_Tokenizer &tokenizer, const char *end)
{
    switch (tokenizer.state) {
    case SW_Config_State::EQUALS:
    case SW_Config_State::BEFORE_VALUE:
    case SW_Config_State::PLAIN_VALUE:
    case SW_Config_State::QUOTED_VALUE:
        return true;
    case SW_Config_State::KEY:
    case SW_Config_State::AFTER_KEY: {
        const char *const stop = line_end(tokenizer.next, end);
        return std::find(tokenizer.next, stop, '=') != stop;
    }
    case SW_Config_State::START:
    case SW_Config_State::OPENED:
    case SW_Config_State::SECTION:
    case SW_Config_State::BETWEEN:
        break;
    }
    return false;
}

/* Where the grammar may hold again: after a list's closing quote, else after the line. */
const char *next_start(const SW_Config_Tokenizer &tokenizer, const char *end)
{
    const char *const stop = line_end(tokenizer.next, end);
    if (tokenizer.state == SW_Config_State::QUOTED_VALUE) {
        const char *const quote = std::find(tokenizer.next, stop, '"');
        return quote == stop ? stop : quote + 1;
    }
    return stop;
}

int32_t line_of(const char *text, const char *at)
{
    int32_t line = 1;
    for (; text != at; ++text) {
        const bool first_of_two = text[0] == '\r' && text[1] == '\n';
        line += is_line_end(*text) && !first_of_two ? 1 : 0;
    }
    return line;
}

} // namespace

SW_Unread_Keys FindUnreadKeys(const char *text, size_t length)
{
    const char *const end = text + length;
    SW_Config_Tokenizer tokenizer;
    SW_Config_Token token = SW_Config_Token::END;
    StartConfigTokenizer(&tokenizer, text);
    count_entries(&tokenizer, &token);
    if (token == SW_Config_Token::ERROR) {
        return {};
    }
    SW_Unread_Keys unread = {0, line_of(text, tokenizer.next)};
    while (tokenizer.next != end) {
        unread.keys += stopped_in_key(tokenizer, end) ? 1 : 0;
        StartConfigTokenizer(&tokenizer, next_start(tokenizer, end));
        tokenizer.state = SW_Config_State::BETWEEN;
        unread.keys += count_entries(&tokenizer, &token);
    }
    unread.keys += stopped_in_key(tokenizer, end) ? 1 : 0;
    return unread.keys == 0 ? SW_Unread_Keys{} : unread;
}
