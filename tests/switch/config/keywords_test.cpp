#include "switch/config/keywords.h"
#include "tests/switch/config/words.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace
{

static_assert(WORD_COUNT == 84);

TEST(ConfigKeyword, EveryWordHasItsNumberTextAndName)
{
    for (uint32_t number = 0; number < WORD_COUNT; number++) {
        const std::string word = WORDS[number];
        EXPECT_EQ(ConfigKeywordOf(word.c_str()), number) << word;
        EXPECT_EQ(ConfigKeywordText(number), word);
        EXPECT_EQ(ConfigKeywordName(number), "SW_Config_Keyword_" + word);
    }
}

TEST(ConfigKeyword, FixedNumbersOfTheRanges)
{
    EXPECT_EQ(SW_Config_Keyword_NO, 0);
    EXPECT_EQ(SW_Config_Keyword_CUSTOM, 43);
    EXPECT_EQ(SW_Config_Keyword_SW_COMMON, 44);
    EXPECT_EQ(SW_Config_Keyword_SW_COS_DSCP, 48);
    EXPECT_EQ(SW_Config_Keyword_MAX_FRAME_SIZE, 49);
    EXPECT_EQ(SW_Config_Keyword_VLAN_PORT_LIST, 81);
    EXPECT_EQ(SW_Config_Keyword_LAST, 82);
    EXPECT_EQ(SW_Config_Keyword_UNDEFINED, 83);
}

/* What a comparison with each word in value order gives. */
uint32_t first_match(const std::string &text)
{
    for (uint32_t number = 0; number < WORD_COUNT; number++) {
        if (text == WORDS[number]) {
            return number;
        }
    }
    return 83;
}

TEST(ConfigKeyword, NearMissesOfEveryWordAreFoundAsByComparisonInValueOrder)
{
    for (const std::string word : WORDS) {
        for (size_t place = 0; place < word.size(); place++) {
            for (int code = 1; code < 256; code++) {
                std::string other = word;
                other[place] = static_cast<char>(code);
                EXPECT_EQ(ConfigKeywordOf(other.c_str()), first_match(other)) << other;
            }
            const std::string shorter = word.substr(0, place) + word.substr(place + 1);
            EXPECT_EQ(ConfigKeywordOf(shorter.c_str()), first_match(shorter)) << shorter;
            const std::string longer = word.substr(0, place) + word[place] + word.substr(place);
            EXPECT_EQ(ConfigKeywordOf(longer.c_str()), first_match(longer)) << longer;
        }
    }
}

TEST(ConfigKeyword, ViewsOfTextsWithoutNulAreConverted)
{
    EXPECT_EQ(ConfigKeywordOf(std::string_view("VID_POLICY").substr(0, 3)), 52);
    EXPECT_EQ(ConfigKeywordOf(std::string_view("SW_PORT0").substr(0, 7)), 45);
    EXPECT_EQ(ConfigKeywordOf(std::string_view("V\0", 2)), 83);
    EXPECT_EQ(ConfigKeywordOf(std::string_view()), 83);
}

struct Unknown_Word {
    const char *name;
    const char *text;
};

void PrintTo(const Unknown_Word &word, std::ostream *out)
{
    *out << word.name;
}

class UnknownWord : public testing::TestWithParam<Unknown_Word>
{
};

TEST_P(UnknownWord, GivesTheFallBackOfEachEnumeration)
{
    const char *const text = GetParam().text;
    EXPECT_EQ(ConfigKeywordOf(text), 83);
    EXPECT_EQ(PortTypeOf(text), 5);
    EXPECT_EQ(MaxFrameSizeOf(text), 3);
    EXPECT_EQ(AutoModeOf(text), 11);
    EXPECT_EQ(Dot1qModeOf(text), 0);
    EXPECT_EQ(EgressModeOf(text), 0);
    EXPECT_EQ(RateOf(text), 0);
}

const Unknown_Word UNKNOWN_WORDS[] = {
    {"Missing", nullptr},
    {"Empty", ""},
    {"Blank", " "},
    {"Unknown", "FOO"},
    {"LowerCaseYes", "yes"},
    {"LowerCaseType", "cpu"},
    {"LowerCaseRate", "128k"},
    {"LeadingBlank", " CPU"},
    {"TrailingBlank", "SECURE "},
    {"OneMore", "1523"},
    {"Cut", "163"},
    {"TooLong", "SPEED_10_DUPLEX_HALF_"},
    {"DriverName", "GT_SECURE"},
    {"EnumeratorName", "SW_Port_Type_CPU"},
    {"Number", "1"},
    {"NumberedSection", "SW_PORT0"},
};

INSTANTIATE_TEST_SUITE_P(Keywords, UnknownWord, testing::ValuesIn(UNKNOWN_WORDS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(WordOfAnotherEnumeration, GivesTheFallBack)
{
    EXPECT_EQ(PortTypeOf("TRUNK"), 5);
    EXPECT_EQ(MaxFrameSizeOf("128K"), 3);
    EXPECT_EQ(AutoModeOf("SECURE"), 11);
    EXPECT_EQ(Dot1qModeOf("ADD_TAG"), 0);
    EXPECT_EQ(EgressModeOf("SECURE"), 0);
    EXPECT_EQ(RateOf("1522"), 0);
    EXPECT_EQ(RateOf("DEFAULT"), 0);
}

/* The members of the closed enumerations that are no settings. */
TEST(EndMarkers, AreFoundByName)
{
    EXPECT_EQ(PortTypeOf("LAST"), 4);
    EXPECT_EQ(PortTypeOf("UNDEFINED"), 5);
    EXPECT_EQ(MaxFrameSizeOf("LAST"), 2);
    EXPECT_EQ(MaxFrameSizeOf("UNDEFINED"), 3);
}

using Text_Of = const char *(*)(uint32_t);
using Value_Of = uint32_t (*)(const char *);

template <auto Function>
uint32_t number_of(const char *text)
{
    return Function(text);
}

/* One enumeration: its words in value order, its texts of a number and its number of a text. */
struct Enumeration {
    const char *name;
    std::vector<std::string> words;
    Text_Of text;
    const char *secondPrefix;
    Text_Of secondText;
    const char *secondUnknown;
    Value_Of value;
};

void PrintTo(const Enumeration &enumeration, std::ostream *out)
{
    *out << enumeration.name;
}

class Words : public testing::TestWithParam<Enumeration>
{
};

TEST_P(Words, ConvertBothWays)
{
    const Enumeration &row = GetParam();
    for (uint32_t number = 0; number < row.words.size(); number++) {
        const std::string &word = row.words[number];
        EXPECT_EQ(row.text(number), word);
        if (row.secondText != nullptr) {
            EXPECT_EQ(row.secondText(number), row.secondPrefix + word);
        }
        if (row.value != nullptr) {
            EXPECT_EQ(row.value(word.c_str()), number) << word;
        }
    }
}

TEST_P(Words, NumbersOutsideGiveTheFallBackTexts)
{
    const Enumeration &row = GetParam();
    const uint32_t count = static_cast<uint32_t>(row.words.size());
    for (const uint32_t number : {count, count + 1, 255U, 65536U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_STREQ(row.text(number), "UNDEFINED") << number;
        if (row.secondText != nullptr) {
            EXPECT_STREQ(row.secondText(number), row.secondUnknown) << number;
        }
    }
}

std::vector<std::string> words(uint32_t first, uint32_t last)
{
    return {WORDS + first, WORDS + last + 1};
}

constexpr SW_Config_Keyword (*KEYWORD_OF)(const char *) = ConfigKeywordOf;

const Enumeration ENUMERATIONS[] = {
    {"Keyword", words(0, 83), ConfigKeywordText, "SW_Config_Keyword_", ConfigKeywordName,
     "SW_Config_Keyword_UNDEFINED", number_of<KEYWORD_OF>},
    {"PortType",
     {"NO", "CPU", "COPPER", "SFP", "LAST", "UNDEFINED"},
     PortTypeText,
     "SW_Port_Type_",
     PortTypeName,
     "SW_Port_Type_UNDEFINED",
     number_of<PortTypeOf>},
    {"MaxFrameSize",
     {"1522", "1632", "LAST", "UNDEFINED"},
     MaxFrameSizeText,
     "SW_Max_Frame_Size_",
     MaxFrameSizeName,
     "SW_Max_Frame_Size_UNDEFINED",
     number_of<MaxFrameSizeOf>},
    {"AutoMode", words(7, 18), AutoModeText, "", AutoModeName, "SPEED_UNDEFINED",
     number_of<AutoModeOf>},
    {"Dot1qMode", words(19, 22), Dot1qModeText, "GT_", Dot1qModeDriverName, "GT_UNDEFINED",
     number_of<Dot1qModeOf>},
    {"EgressMode", words(23, 26), EgressModeText, "GT_", EgressModeDriverName, "GT_UNDEFINED",
     number_of<EgressModeOf>},
    {"Rate", words(27, 39), RateText, "GT_", RateDriverName, "GT_UNDEFINED", number_of<RateOf>},
    {"VlanPortType",
     {"NO", "DEFAULT", "ACCESS", "TRUNK", "CUSTOM", "LAST"},
     VlanPortTypeText,
     "",
     nullptr,
     "",
     nullptr},
};

INSTANTIATE_TEST_SUITE_P(Enumerations, Words, testing::ValuesIn(ENUMERATIONS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Flag, IsYesForExactlyOne)
{
    EXPECT_STREQ(FlagText(1), "YES");
    for (const uint32_t flag : {0U, 2U, 255U, 0xFFFFFFFFU}) {
        EXPECT_STREQ(FlagText(flag), "NO") << flag;
    }
}

struct Display {
    const char *name;
    Text_Of text;
    std::vector<std::string> texts;
    const char *other; /* outside the list */
};

void PrintTo(const Display &display, std::ostream *out)
{
    *out << display.name;
}

class DisplayTexts : public testing::TestWithParam<Display>
{
};

TEST_P(DisplayTexts, ShowEachNumberAndTheFallBackOutside)
{
    const Display &row = GetParam();
    const uint32_t count = static_cast<uint32_t>(row.texts.size());
    for (uint32_t number = 0; number < count; number++) {
        EXPECT_EQ(row.text(number), row.texts[number]) << number;
    }
    for (const uint32_t number : {count, count + 1, 255U, 0x80000000U, 0xFFFFFFFDU, 0xFFFFFFFFU}) {
        EXPECT_STREQ(row.text(number), row.other) << number;
    }
}

const Display DISPLAYS[] = {
    {"Rate",
     RateDisplayText,
     {"Not limited", "128K bits/sec", "256K bits/sec", "512K bits/sec", "1M bits/sec",
      "2M bits/sec", "4M bits/sec", "8M bits/sec", "16M bits/sec", "32M bits/sec", "64M bits/sec",
      "128M bits/sec", "256M bits/sec"},
     ""},
    {"EgressMode",
     EgressModeDisplayText,
     {"Unmodify egress", "Untagged egress", "Tagged egress", "Add tag"},
     ""},
    {"Dot1qMode", Dot1qModeDisplayText, {"Disable", "Fallback", "Check", "Secure"}, ""},
    {"MemberTag", MemberTagDisplayText, {"Unmodified", "None", "Untagged", "Tagged"}, ""},
    {"AutoMode",
     AutoModeDisplayText,
     {"Auto for both speed and duplex", "Auto for duplex only and speed 1000Mbps",
      "Auto for duplex only and speed 100Mbps", "Auto for duplex only and speed 10Mbps",
      "Auto for speed only and Full duplex", "Auto for speed only and Half duplex",
      "Speed 1000Mbps and Full duplex", "Speed 1000Mbps and Half duplex",
      "Speed 100Mbps and Full duplex", "Speed 100Mbps and Half duplex",
      "Speed 10Mbps and Full duplex", "Speed 10Mbps and Half duplex"},
     ""},
    {"AutoModeSpeed",
     AutoModeSpeedText,
     {"Auto", "1000", "100", "10", "Auto", "Auto", "1000", "1000", "100", "100", "10", "10"},
     "Auto"},
    {"AutoModeDuplex",
     AutoModeDuplexText,
     {"Auto", "Auto", "Auto", "Auto", "Full", "Half", "Full", "Half", "Full", "Half", "Full",
      "Half"},
     "Auto"},
    {"MaxFrameSize", MaxFrameSizeDisplayText, {"1522 Bytes", "1632 Bytes"}, "1632 Bytes"},
};

INSTANTIATE_TEST_SUITE_P(Numbers, DisplayTexts, testing::ValuesIn(DISPLAYS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(TrueFalse, ShowsABoolean)
{
    EXPECT_STREQ(TrueFalseText(true), "True");
    EXPECT_STREQ(TrueFalseText(false), "False");
}

} // namespace
