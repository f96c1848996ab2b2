#include "bench/config/config_baselines.h"

#include "bench/config/pair_texts.h"

#include <ini.h>

namespace
{

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
            while (*at != ']') {
                at++;
            }
            at++;
            continue;
        }
        if (!IsPairWord(*at)) {
            at++;
            continue;
        }
        const char *key = at;
        while (IsPairWord(*at)) {
            at++;
        }
        *lengths += static_cast<size_t>(at - key);
        while (!IsPairWord(*at)) {
            at++;
        }
        const char *value = at;
        while (IsPairWord(*at)) {
            at++;
        }
        *lengths += static_cast<size_t>(at - value);
        pairs++;
    }
    return pairs;
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
