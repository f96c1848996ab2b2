#pragma once

#include <array>
#include <cstddef>
#include <string>

/*
 * The text of a startup file in other forms, for what is measured with it.
 */

/* The characters of keys and values; a quote counts as one. */
constexpr std::array<bool, 256> MakePairWordCharacters()
{
    std::array<bool, 256> word = {};
    for (const char *range : {"09", "AZ", "az", "__", "\"\""}) {
        for (int character = range[0]; character <= range[1]; character++) {
            word[static_cast<size_t>(character)] = true;
        }
    }
    return word;
}
inline constexpr std::array<bool, 256> PAIR_WORD_CHARACTERS = MakePairWordCharacters();

inline bool IsPairWord(char character)
{
    return PAIR_WORD_CHARACTERS[static_cast<unsigned char>(character)];
}

/* The same pairs with one pair a line, as inih reads them. */
std::string OnePairALine(const std::string &text);

/* The same lines with the pairs of each section in an order that is random and always the same. */
std::string ShuffledPairs(const std::string &lines);
