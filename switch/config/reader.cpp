#include "switch/config/reader.h"

#include "switch/config/converter.h"
#include "switch/config/keys.h"
#include "switch/config/startup_text.h"
#include "switch/config/tokenizer.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace
{

/* A word that can be no value, and is neither a number nor quoted. */
bool is_bad_word(const SW_Config_Entry &entry)
{
    return !IsKeywordBetween(entry.valueKeyword, SW_Config_Keyword_NO, SW_Config_Keyword_CUSTOM) &&
           !entry.isNumber && !entry.isQuoted;
}

bool is_faultless(const SW_Config_Entry &entry, SW_Entry_Outcome outcome)
{
    return outcome == SW_Entry_Outcome::IGNORED && IsKeyKeyword(entry.nameKeyword) &&
           !is_bad_word(entry);
}

int width(std::string_view text)
{
    return static_cast<int>(text.size());
}

/* The width and the characters of a text for "%.*s". */
#define TEXT(text) width(text), (text).data()

void print_keyword_errors(const SW_Config_Entry &entry)
{
    if (!IsSectionKeyword(entry.sectionKeyword)) {
        printf("ERROR: [%d][%d]: Section \"%.*s\" - \"%s\"\n", entry.sectionLine,
               entry.sectionColumn, TEXT(entry.section),
               ConfigKeywordText(static_cast<uint32_t>(entry.sectionKeyword)));
    }
    if (!IsKeyKeyword(entry.nameKeyword)) {
        printf("ERROR: [%d][%d][\"%.*s\"]: Name \"%.*s\" - \"%s\"\n", entry.nameLine,
               entry.nameColumn, TEXT(entry.section), TEXT(entry.name),
               ConfigKeywordText(static_cast<uint32_t>(entry.nameKeyword)));
    }
    if (is_bad_word(entry)) {
        printf("ERROR: [%d][%d][\"%.*s\"][\"%.*s\"]: Value \"%.*s\" - \"%s\"\n", entry.valueLine,
               entry.valueColumn, TEXT(entry.section), TEXT(entry.name), TEXT(entry.value),
               ConfigKeywordText(static_cast<uint32_t>(entry.valueKeyword)));
    }
}

/* Meant: all three lines carry the position of the section. */
void print_storing_error(const SW_Config_Entry &entry, SW_Entry_Outcome outcome)
{
    const int line = entry.sectionLine;
    const int column = entry.sectionColumn;
    switch (outcome) {
    case SW_Entry_Outcome::BAD_SECTION:
        printf("[%d:%d][%.*s] - bad section name\n", line, column, TEXT(entry.section));
        break;
    case SW_Entry_Outcome::BAD_NAME:
        printf("[%d:%d][%.*s] %.*s - bad variable name\n", line, column, TEXT(entry.section),
               TEXT(entry.name));
        break;
    case SW_Entry_Outcome::BAD_VALUE:
        printf("[%d:%d][%.*s] %.*s = %.*s - bad variable value\n", line, column,
               TEXT(entry.section), TEXT(entry.name), TEXT(entry.value));
        break;
    case SW_Entry_Outcome::STORED:
    case SW_Entry_Outcome::IGNORED:
        break;
    }
}
#undef TEXT

bool rest_is_well_formed(SW_Config_Tokenizer tokenizer)
{
    SW_Config_Token token = SW_Config_Token::ENTRY;
    while (token == SW_Config_Token::ENTRY) {
        token = NextConfigEntry(&tokenizer);
    }
    return token == SW_Config_Token::END;
}

enum class Result { GOOD, WITH_ERRORS, SYNTAX_ERROR };

/* Nothing is printed before the whole text is known to be well-formed: at the first fault the rest
 * is looked through. */
Result convert_text(const char *text, size_t length, SW_Config *config)
{
    Result result = Result::GOOD;
    SW_Config_Tokenizer tokenizer;
    StartConfigTokenizer(&tokenizer, text);
    SW_Config_Token token = NextConfigEntry(&tokenizer);
    for (; token == SW_Config_Token::ENTRY; token = NextConfigEntry(&tokenizer)) {
        SW_Config_Entry &entry = tokenizer.entry;
        size_t place = 0;
        const SW_Entry_Outcome outcome = ConvertConfigEntry(&entry, config, &place);
        if (outcome == SW_Entry_Outcome::STORED) {
            TakePlainPairs(&tokenizer, text + length, place, config);
            continue;
        }
        ConvertConfigValue(&entry);
        if (is_faultless(entry, outcome)) {
            continue;
        }
        if (result == Result::GOOD && !rest_is_well_formed(tokenizer)) {
            return Result::SYNTAX_ERROR;
        }
        result = Result::WITH_ERRORS;
        print_keyword_errors(entry);
        print_storing_error(entry, outcome);
    }
    return token == SW_Config_Token::END ? result : Result::SYNTAX_ERROR;
}

uint32_t count_defined_vlans(const SW_Config *config)
{
    uint32_t count = 0;
    for (const SW_Vlan_Entry &vlan : config->vlans) {
        count += vlan.defined != 0 ? 1 : 0;
    }
    return count;
}

} // namespace

bool ParseSwitchConfig(const char *text, size_t length, SW_Config *config)
{
    if (length > SW_STARTUP_TEXT_LENGTH) {
        return false;
    }
    const std::unique_ptr<SW_Config> before(new (std::nothrow) SW_Config);
    if (before == nullptr) {
        return false;
    }
    memcpy(before.get(), config, sizeof *config);
    const Result result = convert_text(text, length, config);
    if (result == Result::SYNTAX_ERROR) {
        memcpy(config, before.get(), sizeof *config);
        return false;
    }
    config->vlanEntryCount = count_defined_vlans(config);
    return result == Result::GOOD;
}

bool LoadSwitchConfigFile(const char *path, SW_Config *config)
{
    SW_Startup_Text file = {};
    return ReadStartupText(path, &file) && ParseSwitchConfig(file.text.get(), file.length, config);
}
