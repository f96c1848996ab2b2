#include "switch/config/converter.h"

#include "switch/config/decimal.h"
#include "switch/config/fields.h"
#include "switch/config/key_texts.h"

#include <algorithm>

namespace
{

constexpr size_t KEY_KEYWORDS =
    SW_Config_Keyword_VLAN_PORT_LIST - SW_Config_Keyword_MAX_FRAME_SIZE + 1;
constexpr uint8_t NO_KEY = 0xFF;

/* Section and key keyword to the row of SW_CONFIG_KEYS. */
using Key_Rows = std::array<std::array<uint8_t, KEY_KEYWORDS>, SW_CONFIG_SECTION_COUNT>;

constexpr Key_Rows make_key_rows()
{
    Key_Rows rows = {};
    for (auto &section : rows)
        section.fill(NO_KEY);
    for (size_t row = 0; row < SW_CONFIG_KEY_COUNT; row++) {
        const SW_Config_Key &key = SW_CONFIG_KEYS[row];
        rows[SectionPlace(key.section)][KeyPlace(key.keyword)] = static_cast<uint8_t>(row);
    }
    return rows;
}
constexpr Key_Rows KEY_ROWS = make_key_rows();

/* A name that ends in digits: what stands before them, and their number. */
struct Numbered {
    std::string_view stem;
    int32_t number; /* -1 without digits */
};

Numbered split_number(std::string_view text)
{
    size_t stem = text.size();
    while (stem > 0 && IsDecimalDigit(text[stem - 1]))
        stem--;
    const bool none = stem == text.size();
    return {text.substr(0, stem), none ? -1 : UnsignedDecimalValue(text.substr(stem))};
}

bool is_numbered(const SW_Config_Section &section, int32_t number)
{
    return number >= section.firstNumber && number - section.firstNumber < section.numbers;
}

/* No word that can be a section or a key ends in a digit, so a name with a number is no keyword
 * as it stands and only its stem is looked up. */
void convert_section(SW_Config_Entry *entry)
{
    const Numbered name = split_number(entry->section);
    entry->sectionKeyword = static_cast<int32_t>(FindKeyword(name.stem));
    if (name.number < 0)
        return;
    if (IsSectionKeyword(entry->sectionKeyword) &&
        is_numbered(SW_CONFIG_SECTIONS[SectionPlace(entry->sectionKeyword)], name.number))
        entry->sectionNumber = name.number;
    else
        entry->sectionKeyword = SW_Config_Keyword_UNDEFINED;
}

/* How many indexes a key has in a section. Those of the chip's ports count everywhere, a V only
 * where it has a table. */
int32_t indexes_of(int32_t name, int32_t section)
{
    if (name == SW_Config_Keyword_MEMBER_TAG_P || name == SW_Config_Keyword_PORT_STATE_P)
        return VLAN_ENTRY_PORTS;
    if (name == SW_Config_Keyword_V && section == SW_Config_Keyword_SW_COS_USER_PRIO)
        return SW_USER_PRIOS;
    if (name == SW_Config_Keyword_V && section == SW_Config_Keyword_SW_COS_DSCP)
        return SW_DSCPS;
    return 0;
}

void convert_name(SW_Config_Entry *entry)
{
    const Numbered name = split_number(entry->name);
    entry->nameKeyword = static_cast<int32_t>(FindKeyword(name.stem));
    if (name.number < 0)
        return;
    if (name.number < indexes_of(entry->nameKeyword, entry->sectionKeyword))
        entry->nameIndex = name.number;
    else
        entry->nameKeyword = SW_Config_Keyword_UNDEFINED;
}

bool is_number(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), IsDecimalDigit);
}

bool store_word(const SW_Config_Entry &entry, const SW_Config_Key &key, unsigned char *field)
{
    uint32_t value = 0;
    if (!WordValue(*key.words, static_cast<int32_t>(FindKeyword(entry.value)), &value))
        return false;
    StoreField(field, key.size, value);
    return true;
}

bool store_number(const SW_Config_Entry &entry, const SW_Config_Key &key, unsigned char *field)
{
    if (!is_number(entry.value))
        return false;
    StoreField(field, key.size, static_cast<uint32_t>(UnsignedDecimalValue(entry.value)));
    return true;
}

bool store_list(SW_Config_Entry *entry, unsigned char *field)
{
    char list[SW_RANGE_TEXT_SIZE];
    ConvertConfigValue(entry);
    if (!entry->isQuoted || !SetRangeText(&list, entry->unquoted))
        return false;
    memcpy(field, list, sizeof list);
    return true;
}

bool store_value(SW_Config_Entry *entry, const SW_Config_Key &key, unsigned char *field)
{
    switch (key.kind) {
    case SW_Value_Kind::WORD:
        return store_word(*entry, key, field);
    case SW_Value_Kind::NUMBER:
        return store_number(*entry, key, field);
    case SW_Value_Kind::LIST:
        return store_list(entry, field);
    }
    return false;
}

/* The row of the entry's key, NO_KEY when its section has none of that name. */
uint8_t key_row(const SW_Config_Entry &entry)
{
    return IsKeyKeyword(entry.nameKeyword)
               ? KEY_ROWS[SectionPlace(entry.sectionKeyword)][KeyPlace(entry.nameKeyword)]
               : NO_KEY;
}

SW_Entry_Outcome store_entry(SW_Config_Entry *entry, SW_Config *config, size_t *place)
{
    if (!IsSectionKeyword(entry->sectionKeyword))
        return SW_Entry_Outcome::BAD_SECTION;
    const bool numbered = SW_CONFIG_SECTIONS[SectionPlace(entry->sectionKeyword)].numbers > 0;
    if (numbered && entry->sectionNumber < 0)
        return SW_Entry_Outcome::IGNORED;
    const uint8_t row = key_row(*entry);
    if (row == NO_KEY)
        return SW_Entry_Outcome::BAD_NAME;
    const SW_Config_Key &key = SW_CONFIG_KEYS[row];
    if (key.indexes > 0 && entry->nameIndex < 0)
        return SW_Entry_Outcome::IGNORED;
    const size_t number = numbered ? static_cast<size_t>(entry->sectionNumber) : 0;
    const size_t index = key.indexes > 0 ? static_cast<size_t>(entry->nameIndex) : 0;
    unsigned char *const record = reinterpret_cast<unsigned char *>(config);
    if (!store_value(entry, key, record + FieldOffset(key, number, index)))
        return SW_Entry_Outcome::BAD_VALUE;
    if (key.section == SW_Config_Keyword_SW_VLAN)
        config->vlans[number].defined = 1;
    *place = SW_KEY_TEXTS.first[row] + index;
    return SW_Entry_Outcome::STORED;
}

} // namespace

SW_Entry_Outcome ConvertConfigEntry(SW_Config_Entry *entry, SW_Config *config, size_t *place)
{
    if (entry->sectionKeyword < 0)
        convert_section(entry);
    convert_name(entry);
    return store_entry(entry, config, place);
}

void ConvertConfigValue(SW_Config_Entry *entry)
{
    const std::string_view value = entry->value;
    entry->valueKeyword = static_cast<int32_t>(FindKeyword(value));
    entry->isNumber = is_number(value);
    /* Meant: a quote that stands alone is both the first and the last character. */
    entry->isQuoted = !value.empty() && value.front() == '"' && value.back() == '"';
    entry->unquoted = entry->isQuoted && value.size() > 2 ? value.substr(1, value.size() - 2)
                                                          : std::string_view();
}
