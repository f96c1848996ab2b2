#include "switch/config/characters.h"
#include "switch/config/converter.h"
#include "switch/config/decimal.h"
#include "switch/config/fields.h"
#include "switch/config/key_texts.h"

namespace
{

/* A key text is compared eight bytes at a time, through a mask for its length. */
constexpr size_t CHUNK = sizeof(uint64_t);
constexpr size_t CHUNKS = SW_Key_Text::CAPACITY / CHUNK;
static_assert(CHUNK * CHUNKS == SW_Key_Text::CAPACITY);

using Mask = std::array<unsigned char, SW_Key_Text::CAPACITY>;
using Masks = std::array<Mask, SW_Key_Text::CAPACITY + 1>;

constexpr Masks make_masks()
{
    Masks masks = {};
    for (size_t length = 0; length < masks.size(); length++)
        for (size_t byte = 0; byte < length; byte++)
            masks[length][byte] = 0xFF;
    return masks;
}
constexpr Masks MASKS = make_masks();

uint64_t load_chunk(const void *bytes, size_t chunk)
{
    uint64_t value = 0;
    memcpy(&value, static_cast<const unsigned char *>(bytes) + chunk * CHUNK, CHUNK);
    return value;
}

/* at has as many readable characters as a key text can have. */
bool begins_with_key(const char *at, const SW_Key_Text &text)
{
    const Mask &mask = MASKS[text.keyLength];
    uint64_t difference = 0;
    for (size_t chunk = 0; chunk < CHUNKS; chunk++)
        difference |=
            (load_chunk(at, chunk) ^ load_chunk(text.text, chunk)) & load_chunk(mask.data(), chunk);
    return difference == 0;
}

bool is_in_value(SW_Character character)
{
    return character == SW_Character::WORD || character == SW_Character::DIGIT;
}

bool ends_value(SW_Character character)
{
    return character == SW_Character::BLANK || character == SW_Character::LINE_END;
}

const char *skip_blanks(const char *at)
{
    while (CharacterClass(*at) == SW_Character::BLANK)
        at++;
    return at;
}

/* The character behind the equals sign and the blanks around it, null without one. */
const char *take_equals(const char *at)
{
    at = skip_blanks(at);
    return *at == '=' ? skip_blanks(at + 1) : nullptr;
}

/* Digits that can not overflow; others are not expected. */
const char *take_number(const char *at, uint32_t *value)
{
    constexpr int MOST_DIGITS = 9;
    const char *const start = at;
    *value = 0;
    for (; IsDecimalDigit(*at) && at - start < MOST_DIGITS; at++)
        *value = *value * 10 + static_cast<uint32_t>(*at - '0');
    return at == start ? nullptr : at;
}

const char *take_word(const char *at, const SW_Value_Words &words, uint32_t *value)
{
    const char *const start = at;
    while (is_in_value(CharacterClass(*at)))
        at++;
    const SW_Config_Keyword keyword = FindKeyword({start, static_cast<size_t>(at - start)});
    return WordValue(words, static_cast<int32_t>(keyword), value) ? at : nullptr;
}

/* The character behind an expected value, null when the value is not one. */
const char *take_value(const char *at, const SW_Config_Key &key, uint32_t *value)
{
    switch (key.kind) {
    case SW_Value_Kind::NUMBER:
        at = take_number(at, value);
        break;
    case SW_Value_Kind::WORD:
        at = take_word(at, *key.words, value);
        break;
    case SW_Value_Kind::LIST:
        return nullptr;
    }
    return at != nullptr && ends_value(CharacterClass(*at)) ? at : nullptr;
}

} // namespace

void TakeExpectedPairs(SW_Config_Tokenizer *tokenizer, const char *end, size_t place,
                       SW_Config *config)
{
    const SW_Config_Entry &entry = tokenizer->entry;
    const size_t number = entry.sectionNumber < 0 ? 0 : static_cast<size_t>(entry.sectionNumber);
    unsigned char *const record = reinterpret_cast<unsigned char *>(config);
    const char *at = tokenizer->next;
    for (place++; place < SW_KEY_TEXTS.texts.size(); place++) {
        const SW_Key_Text &text = SW_KEY_TEXTS.texts[place];
        const SW_Config_Key &key = SW_CONFIG_KEYS[text.row];
        if (static_cast<int32_t>(key.section) != entry.sectionKeyword)
            return;
        for (; ends_value(CharacterClass(*at)); at++)
            if (CharacterClass(*at) == SW_Character::LINE_END) {
                tokenizer->line++;
                tokenizer->lineStart = at + 1;
            }
        tokenizer->next = at;
        if (end - at < static_cast<ptrdiff_t>(SW_Key_Text::CAPACITY) || !begins_with_key(at, text))
            return;
        uint32_t value = 0;
        at = take_equals(at + text.keyLength);
        if (at != nullptr)
            at = take_value(at, key, &value);
        if (at == nullptr)
            return;
        StoreField(record + FieldOffset(key, number, text.index), key.size, value);
        tokenizer->next = at;
    }
}
