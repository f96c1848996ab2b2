#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/* The classes of characters in a startup file. */
enum class SW_Character : uint8_t {
    BLANK,
    LINE_END,
    OPEN,  /* [ */
    CLOSE, /* ] */
    EQUAL,
    WORD, /* letter or underscore */
    DIGIT,
    QUOTE,
    OTHER /* all others, NUL and the bytes above 0x7F too; each ends the text */
};
inline constexpr size_t SW_CHARACTERS = static_cast<size_t>(SW_Character::OTHER) + 1;

constexpr std::array<SW_Character, 256> MakeCharacterTable()
{
    std::array<SW_Character, 256> table = {};
    table.fill(SW_Character::OTHER);
    const auto set = [&table](int first, int last, SW_Character character) {
        for (int code = first; code <= last; code++) {
            table[static_cast<size_t>(code)] = character;
        }
    };
    set('A', 'Z', SW_Character::WORD);
    set('a', 'z', SW_Character::WORD);
    set('_', '_', SW_Character::WORD);
    set('0', '9', SW_Character::DIGIT);
    set(' ', ' ', SW_Character::BLANK);
    set('\t', '\t', SW_Character::BLANK);
    set('\n', '\n', SW_Character::LINE_END);
    set('\r', '\r', SW_Character::LINE_END);
    set('[', '[', SW_Character::OPEN);
    set(']', ']', SW_Character::CLOSE);
    set('=', '=', SW_Character::EQUAL);
    set('"', '"', SW_Character::QUOTE);
    return table;
}
inline constexpr std::array<SW_Character, 256> SW_CHARACTER_TABLE = MakeCharacterTable();

constexpr SW_Character CharacterClass(char character)
{
    return SW_CHARACTER_TABLE[static_cast<unsigned char>(character)];
}
