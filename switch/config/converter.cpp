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
    for (auto &section : rows) {
        section.fill(NO_KEY);
    }
    for (size_t row = 0; row < SW_CONFIG_KEY_COUNT; row++) {
        const SW_Config_Key &key = SW_CONFIG_KEYS[row];
        rows[SectionPlace(key.section)][KeyPlace(key.keyword)] = static_cast<uint8_t>(row);
    }
    return rows;
}
constexpr Key_Rows KEY_ROWS = make_key_rows();

/* Every keyword of a key has a row, and no row has taken another's place. */
constexpr bool has_every_key()
{
    size_t taken = 0;
    for (size_t keyword = 0; keyword < KEY_KEYWORDS; keyword++) {
        const size_t before = taken;
        for (const auto &section : KEY_ROWS) {
            taken += section[keyword] != NO_KEY ? 1U : 0U;
        }
        if (taken == before) {
            return false;
        }
    }
    return taken == SW_CONFIG_KEY_COUNT;
}
static_assert(has_every_key());

constexpr bool is_inside_record(const SW_Config_Key &key)
{
    const SW_Config_Section &section = SW_CONFIG_SECTIONS[SectionPlace(key.section)];
    const int number = section.numbers == 0 ? 0 : section.firstNumber + section.numbers - 1;
    const int index = key.indexes == 0 ? 0 : key.indexes - 1;
    const size_t offset = FieldOffset(key, static_cast<size_t>(number), static_cast<size_t>(index));
    return offset + key.size <= sizeof(SW_Config);
}

constexpr bool has_size_of_its_kind(const SW_Config_Key &key)
{
    return key.kind == SW_Value_Kind::LIST ? key.size == SW_RANGE_TEXT_SIZE
                                           : key.size == 1 || key.size == 2 || key.size == 4;
}

static_assert([] {
    for (const SW_Config_Key &key : SW_CONFIG_KEYS) {
        if (!is_inside_record(key) || !has_size_of_its_kind(key) ||
            (key.kind == SW_Value_Kind::WORD) != (key.words != nullptr)) {
            return false;
        }
    }
    return true;
}());

static_assert([] {
    for (size_t place = 0; place < SW_CONFIG_SECTION_COUNT; place++) {
        if (SectionPlace(SW_CONFIG_SECTIONS[place].keyword) != place) {
            return false;
        }
    }
    return true;
}());

/* A name that ends in digits: what stands before them, and their number. */
struct Numbered {
    std::string_view stem;
    int32_t number; /* -1 without digits */
};

Numbered split_number(std::string_view text)
{
    size_t stem = text.size();
    while (stem > 0 && IsDecimalDigit(text[stem - 1])) {
        stem--;
    }
    const bool none = stem == text.size();
    return {text.substr(0, stem), none ? -1 : UnsignedDecimalValue(text.substr(stem))};
}

/* The section of an entry whose section keyword is one. */
const SW_Config_Section &section_of(const SW_Config_Entry &entry)
{
    return SW_CONFIG_SECTIONS[SectionPlace(static_cast<uint32_t>(entry.sectionKeyword))];
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
    if (name.number < 0) {
        return;
    }
    if (IsSectionKeyword(entry->sectionKeyword) && is_numbered(section_of(*entry), name.number)) {
        entry->sectionNumber = name.number;
    } else {
        entry->sectionKeyword = SW_Config_Keyword_UNDEFINED;
    }
}

/* How many indexes a key has in a section. Those of the chip's ports count everywhere, a V only
 * where it has a table. */
int32_t indexes_of(int32_t name, int32_t section)
{
    if (name == SW_Config_Keyword_MEMBER_TAG_P || name == SW_Config_Keyword_PORT_STATE_P) {
        return VLAN_ENTRY_PORTS;
    }
    if (name == SW_Config_Keyword_V && section == SW_Config_Keyword_SW_COS_USER_PRIO) {
        return SW_USER_PRIOS;
    }
    if (name == SW_Config_Keyword_V && section == SW_Config_Keyword_SW_COS_DSCP) {
        return SW_DSCPS;
    }
    return 0;
}

void convert_name(SW_Config_Entry *entry)
{
    const Numbered name = split_number(entry->name);
    entry->nameKeyword = static_cast<int32_t>(FindKeyword(name.stem));
    if (name.number < 0) {
        return;
    }
    if (name.number < indexes_of(entry->nameKeyword, entry->sectionKeyword)) {
        entry->nameIndex = name.number;
    } else {
        entry->nameKeyword = SW_Config_Keyword_UNDEFINED;
    }
}

bool is_number(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), IsDecimalDigit);
}

bool store_word(const SW_Config_Entry &entry, const SW_Config_Key &key, unsigned char *field)
{
    uint32_t value = 0;
    if (!WordValue(*key.words, static_cast<int32_t>(FindKeyword(entry.value)), &value)) {
        return false;
    }
    StoreField(field, key.size, value);
    return true;
}

bool store_number(const SW_Config_Entry &entry, const SW_Config_Key &key, unsigned char *field)
{
    if (!is_number(entry.value)) {
        return false;
    }
    StoreField(field, key.size, static_cast<uint32_t>(UnsignedDecimalValue(entry.value)));
    return true;
}

bool store_list(SW_Config_Entry *entry, unsigned char *field)
{
    char list[SW_RANGE_TEXT_SIZE];
    ConvertConfigValue(entry);
    if (!entry->isQuoted || !SetRangeText(&list, entry->unquoted)) {
        return false;
    }
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
        break;
    }
    return store_list(entry, field);
}

/* The row of the entry's key, NO_KEY when its section has none of that name. */
uint8_t key_row(const SW_Config_Entry &entry)
{
    if (!IsKeyKeyword(entry.nameKeyword)) {
        return NO_KEY;
    }
    return KEY_ROWS[SectionPlace(static_cast<uint32_t>(entry.sectionKeyword))]
                   [KeyPlace(static_cast<uint32_t>(entry.nameKeyword))];
}

SW_Entry_Outcome store_entry(SW_Config_Entry *entry, SW_Config *config, size_t *place)
{
    if (!IsSectionKeyword(entry->sectionKeyword)) {
        return SW_Entry_Outcome::BAD_SECTION;
    }
    const bool numbered = section_of(*entry).numbers > 0;
    if (numbered && entry->sectionNumber < 0) {
        return SW_Entry_Outcome::IGNORED;
    }
    const uint8_t row = key_row(*entry);
    if (row == NO_KEY) {
        return SW_Entry_Outcome::BAD_NAME;
    }
    const SW_Config_Key &key = SW_CONFIG_KEYS[row];
    if (key.indexes > 0 && entry->nameIndex < 0) {
        return SW_Entry_Outcome::IGNORED;
    }
    const size_t number = numbered ? static_cast<size_t>(entry->sectionNumber) : 0;
    const size_t index = key.indexes > 0 ? static_cast<size_t>(entry->nameIndex) : 0;
    unsigned char *const record = reinterpret_cast<unsigned char *>(config);
    if (!store_value(entry, key, record + FieldOffset(key, number, index))) {
        return SW_Entry_Outcome::BAD_VALUE;
    }
    if (key.section == SW_Config_Keyword_SW_VLAN) {
        config->vlans[number].defined = 1;
    }
    *place = SW_KEY_TEXTS.first[row] + index;
    return SW_Entry_Outcome::STORED;
}

} // namespace

SW_Entry_Outcome ConvertConfigEntry(SW_Config_Entry *entry, SW_Config *config, size_t *place)
{
    if (entry->sectionKeyword < 0) {
        convert_section(entry);
    }
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
