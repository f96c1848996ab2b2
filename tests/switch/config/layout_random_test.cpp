/* Random records in files of every layout that the reader takes. */

#include "tests/support/random_config.h"
#include "tests/support/random_seed.h"
#include "tests/support/startup_file.h"
#include "tests/switch/config/reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace
{

struct Entry {
    std::string section;
    std::string name;
    std::string value;
};

/* The value that begins at a place of a line: quoted, or up to a blank or the line's end. */
std::string value_at(const std::string &line, size_t at)
{
    const size_t end = line[at] == '"' ? line.find('"', at + 1) + 1 : line.find(' ', at);
    return line.substr(at, end == std::string::npos ? end : end - at);
}

/* The entries of a line of NAME = VALUE pairs. */
void add_entries(const std::string &section, const std::string &line, std::vector<Entry> *entries)
{
    size_t at = line.find_first_not_of(' ');
    while (at < line.size()) {
        const size_t equals = line.find(" = ", at);
        const std::string value = value_at(line, equals + 3);
        entries->push_back({section, line.substr(at, equals - at), value});
        at = line.find_first_not_of(' ', equals + 3 + value.size());
    }
}

std::vector<Entry> entries_of(const std::string &text)
{
    std::vector<Entry> entries;
    std::string section;
    for (size_t at = 0; at < text.size();) {
        const size_t end = text.find('\n', at);
        const std::string line = text.substr(at, end - at);
        if (line[0] == '[') {
            section = line;
        } else {
            add_entries(section, line, &entries);
        }
        at = end + 1;
    }
    return entries;
}

template <size_t Count>
const char *pick(std::mt19937 *generator, const char *const (&texts)[Count])
{
    return texts[(*generator)() % Count];
}

/* The entries in any order, some of them twice, their sections named again and again. */
std::string mixed_up(std::vector<Entry> entries, std::mt19937 *generator)
{
    static constexpr const char *GAPS[] = {" ", "\t", "\n", "\r\n", " \n\n\t ", "\r"};
    static constexpr const char *EQUALS[] = {" = ", "=", " =", "= ", "\t = \t", "  =  "};
    std::ranges::shuffle(entries, *generator);
    for (int again = 0; again < 3; again++) {
        entries.push_back(entries[(*generator)() % entries.size()]);
    }
    std::string text = pick(generator, {"", "\n", "  \t\r\n"});
    std::string section;
    for (const Entry &entry : entries) {
        if (entry.section != section || (*generator)() % 8 == 0) {
            section = entry.section;
            text += section + pick(generator, {"", " ", "\n", "\r\n"});
        }
        text += entry.name + pick(generator, EQUALS) + entry.value + pick(generator, GAPS);
    }
    return text;
}

/* The comparison finds nothing but the VLAN modes, which it always reports. */
bool nothing_to_apply(const SW_Config &read, const SW_Config &written)
{
    SW_Config_Changes changes = {};
    return CompareSwitchConfig(&changes, &read, &written) && changes.maxFrameSize == 0 &&
           changes.anyPort == 0 && changes.vlanTable == 0 && changes.cosUserPrio == 0 &&
           changes.cosDscp == 0 && changes.anyVlanPortMode == 1;
}

TEST(LayoutRandom, RecordsAreReadTheSameFromFilesOfAnyLayout)
{
    std::mt19937 generator(test_seed());
    const Record record = filled_record(0);
    const int rounds = test_rounds(300);
    for (int round = 0; round < rounds; round++) {
        SetRandomConfig(record.get(), &generator);
        const std::string text = mixed_up(entries_of(StartupFileText(*record)), &generator);
        const Reading reading = read_text(text);
        ASSERT_TRUE(reading.good) << text;
        ASSERT_EQ(reading.output, "") << text;
        ASSERT_TRUE(same_bytes(*reading.record, *record)) << text;
        ASSERT_TRUE(nothing_to_apply(*reading.record, *record)) << text;
    }
}

} // namespace
