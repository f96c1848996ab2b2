#include "bench/config/pair_texts.h"

#include <algorithm>
#include <random>
#include <vector>

std::string OnePairALine(const std::string &text)
{
    std::string lines;
    size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '[') {
            const size_t end = text.find('\n', at) + 1;
            lines += text.substr(at, end - at);
            at = end;
        } else if (IsPairWord(text[at])) {
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
        for (const std::string &pair : pairs) {
            shuffled += pair;
        }
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
