#include "bench/config/config_baselines.h"

#include <algorithm>
#include <array>
#include <ini.h>
#include <random>
#include <vector>

namespace
{

constexpr std::array<bool, 256> make_word_characters()
{
    std::array<bool, 256> word = {};
    for (const char *range : {"09", "AZ", "az", "__", "\"\""})
        for (int character = range[0]; character <= range[1]; character++)
            word[static_cast<size_t>(character)] = true;
    return word;
}
constexpr std::array<bool, 256> WORD_CHARACTERS = make_word_characters();

bool is_word(char character)
{
    return WORD_CHARACTERS[static_cast<unsigned char>(character)];
}

int count_pair(void *count, const char *, const char *, const char *)
{
    ++*static_cast<size_t *>(count);
    return 1;
}

} // namespace

size_t ScanPairs(const char *text, size_t *lengths)
{
    size_t pairs = 0;
    *lengths = 0;
    for (const char *at = text; *at != '\0';) {
        if (*at == '[') {
            while (*at != ']')
                at++;
            at++;
            continue;
        }
        if (!is_word(*at)) {
            at++;
            continue;
        }
        const char *key = at;
        while (is_word(*at))
            at++;
        *lengths += static_cast<size_t>(at - key);
        while (!is_word(*at))
            at++;
        const char *value = at;
        while (is_word(*at))
            at++;
        *lengths += static_cast<size_t>(at - value);
        pairs++;
    }
    return pairs;
}

std::string OnePairALine(const std::string &text)
{
    std::string lines;
    size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '[') {
            const size_t end = text.find('\n', at) + 1;
            lines += text.substr(at, end - at);
            at = end;
        } else if (is_word(text[at])) {
            const size_t value = text.find(" = ", at) + 3;
            const size_t end = text.find_first_of(" \n", value);
            lines += text.substr(at, end - at) + "\n";
            at = end;
        } else {
            at++;
        }
    }
    return lines;
}

std::string ShuffledPairs(const std::string &lines)
{
    std::mt19937 random;
    std::string shuffled;
    std::vector<std::string> pairs;
    const auto end_section = [&] {
        std::shuffle(pairs.begin(), pairs.end(), random);
        for (const std::string &pair : pairs)
            shuffled += pair;
        pairs.clear();
    };
    for (size_t at = 0; at < lines.size();) {
        const size_t end = lines.find('\n', at) + 1;
        if (lines[at] == '[') {
            end_section();
            shuffled += lines.substr(at, end - at);
        } else {
            pairs.push_back(lines.substr(at, end - at));
        }
        at = end;
    }
    end_section();
    return shuffled;
}

size_t ReadFileWithInih(const char *path)
{
    size_t pairs = 0;
    return ini_parse(path, count_pair, &pairs) == 0 ? pairs : 0;
}

size_t ReadTextWithInih(const char *text)
{
    size_t pairs = 0;
    return ini_parse_string(text, count_pair, &pairs) == 0 ? pairs : 0;
}
