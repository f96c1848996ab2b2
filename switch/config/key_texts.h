#pragma once

#include "switch/config/keys.h"
#include "switch/config/keyword_table.h"

/*
 * Each key as the writer puts it, one text for each index: "KEY = " or "KEY7 = ". Made by the
 * compiler from the table of keys.
 */

struct SW_Key_Text {
    static constexpr size_t CAPACITY = 24;
    char text[CAPACITY];
    uint8_t length;
    uint8_t keyLength; /* without the equals sign and its blanks */
    uint8_t row;       /* of SW_CONFIG_KEYS */
    uint8_t index;
    bool afterBlank; /* the writer puts a blank before it */
};

constexpr size_t CountKeyTexts()
{
    size_t count = 0;
    for (const SW_Config_Key &key : SW_CONFIG_KEYS) {
        count += key.indexes == 0 ? 1 : key.indexes;
    }
    return count;
}

struct SW_Key_Texts {
    std::array<SW_Key_Text, CountKeyTexts()> texts;
    std::array<uint8_t, SW_CONFIG_KEY_COUNT> first; /* place of a key's first text */
    bool fits;
};

constexpr void AppendToKeyText(SW_Key_Texts *all, size_t place, std::string_view characters)
{
    SW_Key_Text &text = all->texts[place];
    for (const char character : characters) {
        all->fits = all->fits && text.length < SW_Key_Text::CAPACITY;
        if (all->fits) {
            text.text[text.length++] = character;
        }
    }
}

/* Whether the writer begins a line with a plain key. */
constexpr bool BeginsLine(size_t key)
{
    return key == 0 || SW_CONFIG_KEYS[key - 1].endsLine;
}

constexpr SW_Key_Texts MakeKeyTexts()
{
    SW_Key_Texts all = {};
    all.fits = true;
    size_t place = 0;
    for (size_t row = 0; row < SW_CONFIG_KEY_COUNT; row++) {
        const SW_Config_Key &key = SW_CONFIG_KEYS[row];
        all.first[row] = static_cast<uint8_t>(place);
        for (int index = 0; index == 0 || index < key.indexes; index++, place++) {
            const char digits[] = {static_cast<char>('0' + index / 10),
                                   static_cast<char>('0' + index % 10)};
            SW_Key_Text &text = all.texts[place];
            text.row = static_cast<uint8_t>(row);
            text.index = static_cast<uint8_t>(index);
            text.afterBlank = key.indexes > 0 || !BeginsLine(row);
            AppendToKeyText(&all, place, KeywordWord(key.keyword));
            if (key.indexes > 0) {
                AppendToKeyText(&all, place,
                                {index < 10 ? digits + 1 : digits, size_t{index < 10 ? 1U : 2U}});
            }
            text.keyLength = text.length;
            AppendToKeyText(&all, place, " = ");
        }
    }
    return all;
}

inline constexpr SW_Key_Texts SW_KEY_TEXTS = MakeKeyTexts();
static_assert(SW_KEY_TEXTS.fits);
