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
    for (size_t length = 0; length < masks.size(); length++) {
        for (size_t byte = 0; byte < length; byte++) {
            masks[length][byte] = 0xFF;
        }
    }
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
    for (size_t chunk = 0; chunk < CHUNKS; chunk++) {
        difference |=
            (load_chunk(at, chunk) ^ load_chunk(text.text, chunk)) & load_chunk(mask.data(), chunk);
    }
    return difference == 0;
}

bool ends_value(SW_Character character)
{
    return character == SW_Character::BLANK || character == SW_Character::LINE_END;
}

/* Behind the letters, underscores and digits of a key or a value. */
const char *skip_word(const char *at)
{
    SW_Character character = CharacterClass(*at);
    while (character == SW_Character::WORD || character == SW_Character::DIGIT) {
        character = CharacterClass(*++at);
    }
    return at;
}

const char *skip_blanks(const char *at)
{
    while (CharacterClass(*at) == SW_Character::BLANK) {
        at++;
    }
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
    for (; IsDecimalDigit(*at) && at - start < MOST_DIGITS; at++) {
        *value = *value * 10 + static_cast<uint32_t>(*at - '0');
    }
    return at == start ? nullptr : at;
}

const char *take_word(const char *at, const SW_Value_Words &words, uint32_t *value)
{
    const char *const start = at;
    at = skip_word(at);
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

/* Whether at begins with the key of text, one of the section. */
bool begins_with(const char *at, const SW_Key_Text *text, int32_t section)
{
    return text != SW_KEY_TEXTS.texts.data() + SW_KEY_TEXTS.texts.size() &&
           static_cast<int32_t>(SW_CONFIG_KEYS[text->row].section) == section &&
           begins_with_key(at, *text);
}

/* Stores the pairs from the one at place on, as long as they stand in the order of the writer. */
void take_in_order(SW_Config_Tokenizer *tokenizer, const char *end, size_t place, SW_Config *config)
{
    const SW_Config_Entry &entry = tokenizer->entry;
    const size_t number = entry.sectionNumber < 0 ? 0 : static_cast<size_t>(entry.sectionNumber);
    unsigned char *const record = reinterpret_cast<unsigned char *>(config);
    const char *at = tokenizer->next;
    for (const SW_Key_Text *text = SW_KEY_TEXTS.texts.data() + place;; text++) {
        for (; ends_value(CharacterClass(*at)); at++) {
            if (CharacterClass(*at) == SW_Character::LINE_END) {
                tokenizer->line++;
                tokenizer->lineStart = at + 1;
            }
        }
        tokenizer->next = at;
        if (end - at < static_cast<ptrdiff_t>(SW_Key_Text::CAPACITY) ||
            !begins_with(at, text, entry.sectionKeyword)) {
            return;
        }
        const SW_Config_Key &key = SW_CONFIG_KEYS[text->row];
        uint32_t value = 0;
        at = take_equals(at + text->keyLength);
        if (at != nullptr) {
            at = take_value(at, key, &value);
        }
        if (at == nullptr) {
            return;
        }
        StoreField(record + FieldOffset(key, number, text->index), key.size, value);
    }
}

/* The place of a key in its section is guessed from a few of its characters; whoever takes a guess
 * compares the whole key. The multipliers were found by trial: no two keys of a section share a
 * slot. */
constexpr size_t GUESS_SLOTS = 128;
using Guesses = std::array<std::array<uint8_t, GUESS_SLOTS>, SW_CONFIG_SECTION_COUNT>;
static_assert(SW_KEY_TEXTS.texts.size() <= UINT8_MAX);

/* Of a key with at least two characters. */
constexpr size_t guess_slot(std::string_view key)
{
    const size_t length = key.size();
    const auto character = [key](size_t index) {
        return size_t{static_cast<unsigned char>(key[index])};
    };
    return (character(length - 1) + 10 * character(length - 2) + 36 * character(length * 3 / 8) +
            6 * length) %
           GUESS_SLOTS;
}

constexpr uint8_t &guess_of(Guesses &guesses, const SW_Key_Text &text)
{
    const size_t section = SectionPlace(SW_CONFIG_KEYS[text.row].section);
    return guesses[section][guess_slot({text.text, text.keyLength})];
}

constexpr Guesses make_guesses()
{
    Guesses guesses = {};
    for (size_t place = 0; place < SW_KEY_TEXTS.texts.size(); place++) {
        guess_of(guesses, SW_KEY_TEXTS.texts[place]) = static_cast<uint8_t>(place);
    }
    return guesses;
}
constexpr Guesses GUESSES = make_guesses();

static_assert([] {
    Guesses guesses = GUESSES;
    for (size_t place = 0; place < SW_KEY_TEXTS.texts.size(); place++) {
        if (guess_of(guesses, SW_KEY_TEXTS.texts[place]) != place) {
            return false;
        }
    }
    return true;
}());

/* The place that a key at may have in the section; any place when it is none. */
size_t guess_place(const char *at, int32_t section)
{
    const std::string_view key(at, static_cast<size_t>(skip_word(at) - at));
    if (key.size() < 2) {
        return 0;
    }
    return GUESSES[SectionPlace(static_cast<uint32_t>(section))][guess_slot(key)];
}

} // namespace

void TakePlainPairs(SW_Config_Tokenizer *tokenizer, const char *end, size_t place,
                    SW_Config *config)
{
    const char *stopped = nullptr;
    take_in_order(tokenizer, end, place + 1, config);
    while (tokenizer->next != stopped && CharacterClass(*tokenizer->next) == SW_Character::WORD) {
        stopped = tokenizer->next;
        place = guess_place(stopped, tokenizer->entry.sectionKeyword);
        take_in_order(tokenizer, end, place, config);
    }
}
