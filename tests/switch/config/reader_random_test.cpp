#include "tests/support/random_config.h"
#include "tests/support/random_seed.h"
#include "tests/support/startup_file.h"
#include "tests/switch/config/plain_reader.h"
#include "tests/switch/config/reading.h"
#include "tests/switch/config/words.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace
{

using Generator = std::mt19937;

size_t pick(Generator *generator, size_t count)
{
    return std::uniform_int_distribution<size_t>(0, count - 1)(*generator);
}

template <size_t Count>
std::string pick_text(Generator *generator, const char *const (&texts)[Count])
{
    return texts[pick(generator, Count)];
}

/* Any word, with a number behind it now and then. */
std::string random_word(Generator *generator)
{
    static constexpr const char *OTHERS[] = {"FOO", "vid", "_", "V1", "SW_PORT3", "SW_VLAN77"};
    static constexpr const char *NUMBERS[] = {"",   "",   "",   "0",  "4",    "5",    "007",
                                              "10", "11", "63", "64", "4095", "4096", "4294967296"};
    const std::string word =
        pick(generator, 4) == 0 ? pick_text(generator, OTHERS) : pick_text(generator, WORDS);
    return word + pick_text(generator, NUMBERS);
}

std::string random_section(Generator *generator)
{
    static constexpr const char *SECTIONS[] = {
        "SW_COMMON", "SW_PORT0", "SW_PORT4", "SW_PORT5",         "SW_PORT",    "SW_VLAN1",
        "SW_VLAN20", "SW_VLAN0", "SW_VLAN",  "SW_COS_USER_PRIO", "SW_COS_DSCP"};
    return pick(generator, 5) == 0 ? random_word(generator) : pick_text(generator, SECTIONS);
}

std::string random_value(Generator *generator)
{
    static constexpr const char *VALUES[] = {"0",    "7",       "1522",    "65536",  "99999999999",
                                             "\"\"", "\"7 8\"", "\"x",     "\"",     "7x",
                                             "NO",   "YES",     "\"1-2\"", "\"1,2\""};
    return pick(generator, 3) == 0 ? random_word(generator) : pick_text(generator, VALUES);
}

/* Mostly well-formed entries of every kind. */
std::string random_entries(Generator *generator)
{
    static constexpr const char *EQUALS[] = {" = ", " = ", "=", "\t=", "=  "};
    static constexpr const char *ENDS[] = {"\n", "\n", " ", "\r\n", "\t", " \n\n "};
    std::string text;
    for (size_t sections = 1 + pick(generator, 4); sections > 0; sections--) {
        text.append("[").append(random_section(generator)).append("]\n");
        for (size_t entries = pick(generator, 6); entries > 0; entries--) {
            text += random_word(generator) + pick_text(generator, EQUALS) +
                    random_value(generator) + pick_text(generator, ENDS);
        }
    }
    return text;
}

/* The text with other blanks around its equals signs, the same everywhere or each its own. */
std::string respaced(const std::string &text, Generator *generator)
{
    static constexpr const char *EQUALS[] = {" = ", "=", " =", "= ", "\t = \t", "  =  "};
    const bool each = pick(generator, 2) == 0;
    std::string equals = pick_text(generator, EQUALS);
    std::string result;
    for (size_t at = 0; at < text.size(); at++) {
        if (text.compare(at, 3, " = ") != 0) {
            result += text[at];
            continue;
        }
        result += equals;
        at += 2;
        if (each) {
            equals = pick_text(generator, EQUALS);
        }
    }
    return result;
}

/* A saved file with a few edits; the order of its keys is the expected one, until it is not. */
std::string edited_file(Generator *generator)
{
    static constexpr const char *PIECES[] = {" ",
                                             "\n",
                                             "\r\n",
                                             "\t",
                                             "[",
                                             "]",
                                             "=",
                                             "\"",
                                             "-",
                                             ";",
                                             "7",
                                             "99999999999",
                                             "A",
                                             "NO",
                                             "YES",
                                             "_",
                                             "\n[SW_PORT1]\n",
                                             " VID = 3 ",
                                             " V3 = 1\n",
                                             " FOO = 1 ",
                                             "1522",
                                             " = "};
    const Record record = filled_record(0);
    SetRandomConfig(record.get(), generator);
    std::string text = StartupFileText(*record);
    if (pick(generator, 3) == 0) {
        text = respaced(text, generator);
    }
    for (size_t edits = pick(generator, 5); edits > 0; edits--) {
        const size_t at = pick(generator, text.size());
        switch (pick(generator, 4)) {
        case 0:
            text.insert(at, pick_text(generator, PIECES));
            break;
        case 1:
            text.erase(at, 1 + pick(generator, 30));
            break;
        case 2:
            text[at] = static_cast<char>(pick(generator, 256));
            break;
        default:
            text.insert(at, text.substr(pick(generator, text.size()), pick(generator, 200)));
        }
    }
    return pick(generator, 4) == 0 ? text.substr(0, pick(generator, text.size())) : text;
}

/* Reads a text in both ways into records of the same bytes. */
testing::AssertionResult reads_alike(const std::string &text, int byte)
{
    const Reading reading = read_text(text, byte);
    const Record record = filled_record(byte);
    std::string output;
    const bool good = ReadPlainly(text, record.get(), &output);
    if (good == reading.good && output == reading.output && same_bytes(*record, *reading.record)) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "text:\n"
                                       << text << "\nexpected " << good << " and:\n"
                                       << output << "\nread " << reading.good << " and:\n"
                                       << reading.output;
}

TEST(ReaderRandom, EntriesAreReadAsPlainly)
{
    Generator generator(test_seed());
    const int rounds = test_rounds(3000);
    for (int round = 0; round < rounds; round++) {
        ASSERT_TRUE(reads_alike(random_entries(&generator), 0)) << round;
    }
}

TEST(ReaderRandom, EditedFilesAreReadAsPlainly)
{
    Generator generator(test_seed());
    const int rounds = test_rounds(1500);
    for (int round = 0; round < rounds; round++) {
        ASSERT_TRUE(reads_alike(edited_file(&generator), round % 2)) << round;
    }
}

TEST(ReaderRandom, WholeFileIsReadAsPlainly)
{
    const Record record = filled_record(0);
    SetAllVlans(record.get());
    EXPECT_TRUE(reads_alike(StartupFileText(*record), 0));
}

/* Texts that end close behind a key, where fewer characters follow than the longest key has. */
TEST(ReaderRandom, TextsCutAnywhereAreReadAsPlainly)
{
    Generator generator(test_seed());
    const Record record = filled_record(0);
    SetRandomConfig(record.get(), &generator);
    const std::string text = StartupFileText(*record);
    for (size_t size = text.size() - 300; size < text.size(); size++) {
        ASSERT_TRUE(reads_alike(text.substr(0, size), 0)) << size;
    }
}

} // namespace
