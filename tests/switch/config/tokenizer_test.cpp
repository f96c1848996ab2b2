#include "switch/config/tokenizer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace
{

/* What a text is split into: "section/name=value" for each entry, then how it ended. */
using Entries = std::vector<std::string>;

constexpr const char *END = "end";
constexpr const char *ERROR = "error";

Entries entries_of(const std::string &text)
{
    Entries entries;
    SW_Config_Tokenizer tokenizer;
    StartConfigTokenizer(&tokenizer, text.c_str());
    SW_Config_Token token = NextConfigEntry(&tokenizer);
    for (; token == SW_Config_Token::ENTRY; token = NextConfigEntry(&tokenizer)) {
        const SW_Config_Entry &entry = tokenizer.entry;
        entries.push_back(std::string(entry.section) + "/" + std::string(entry.name) + "=" +
                          std::string(entry.value));
    }
    entries.push_back(token == SW_Config_Token::END ? END : ERROR);
    return entries;
}

/* The class of a character as a column of the table below. */
size_t column(int code)
{
    if (code == ' ' || code == '\t') {
        return 0;
    }
    if (code == '\n' || code == '\r') {
        return 1;
    }
    if (code == '[') {
        return 2;
    }
    if (code == ']') {
        return 3;
    }
    if (code == '=') {
        return 4;
    }
    if ((code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') || code == '_') {
        return 5;
    }
    if (code >= '0' && code <= '9') {
        return 6;
    }
    return code == '"' ? 7 : 8;
}

/* A state, a text that leads to it, and for each class of the next character the state that it
 * leads to, "E" for a syntax error or "X" for the end of the text. */
struct State {
    const char *name;
    const char *prefix;
    const char *next;
};

void PrintTo(const State &state, std::ostream *out)
{
    *out << state.name;
}

/* Columns: blank, line end, "[", "]", "=", word, digit, quote, other. */
const State STATES[] = {
    {"Start", "", "001EEEEEX"},
    {"Opened", "[", "EEEEE2EEX"},
    {"Section", "[S", "EEE3E22EX"},
    {"Between", "[S]", "331EE4EEX"},
    {"Key", "[S]K", "5EEE644EX"},
    {"AfterKey", "[S]K ", "5EEE6EEEX"},
    {"Equals", "[S]K=", "7EEEE889X"},
    {"BeforeValue", "[S]K= ", "7EEEE889X"},
    {"PlainValue", "[S]K=V", "33EEE88EX"},
    {"QuotedValue", "[S]K=\"", "93999993X"},
};

/* Texts that tell every state from every other by how the splitting ends and how often. */
const char *const PROBES[] = {"",        " ",      "\n",    "[",     "[A]B=C\n",  "A",
                              "A]B=C\n", "]B=C\n", "B=C\n", " =C\n", "=C\n",      "= C\n",
                              "=\"C\"",  "C\n",    "7 ",    "7]",    "\"C\"",     "\"",
                              "\"A=7\n", " A=7\n", "]\n",   "=\n",   "\n[A]B=7\n"};

size_t count_of(const Entries &entries)
{
    return entries.size() - 1;
}

/* Expects that after text the splitting goes on as after the prefix of a state. */
void expect_state(const std::string &text, const State &state)
{
    const size_t before = count_of(entries_of(text));
    const size_t prefixBefore = count_of(entries_of(state.prefix));
    for (const std::string probe : PROBES) {
        const Entries after = entries_of(text + probe);
        const Entries expected = entries_of(state.prefix + probe);
        EXPECT_EQ(after.back(), expected.back()) << text << "|" << probe;
        EXPECT_EQ(count_of(after) - before, count_of(expected) - prefixBefore)
            << text << "|" << probe;
    }
}

class TokenizerState : public testing::TestWithParam<State>
{
};

TEST(TokenizerProbes, TellTheStatesApart)
{
    /* EQUALS and BEFORE_VALUE accept the same texts. */
    for (const State &a : STATES) {
        for (const State &b : STATES) {
            bool same = true;
            for (const std::string probe : PROBES) {
                same = same &&
                       entries_of(a.prefix + probe).back() == entries_of(b.prefix + probe).back() &&
                       count_of(entries_of(a.prefix + probe)) ==
                           count_of(entries_of(b.prefix + probe));
            }
            const bool alike = std::string_view(a.next) == b.next;
            EXPECT_EQ(same, alike) << a.name << " " << b.name;
        }
    }
}

TEST_P(TokenizerState, EveryCharacterLeadsWhereItsClassSays)
{
    const State &state = GetParam();
    ASSERT_EQ(std::string(state.next).size(), 9U);
    for (int code = 0; code < 256; code++) {
        const std::string text = std::string(state.prefix) + static_cast<char>(code);
        const char next = state.next[column(code)];
        SCOPED_TRACE(testing::Message() << state.name << ", character " << code);
        if (next == 'E') {
            EXPECT_EQ(entries_of(text + "[A]B=C\n").back(), ERROR);
        } else if (next == 'X') {
            EXPECT_EQ(entries_of(text + "]=[\"=\n"), entries_of(state.prefix));
        } else {
            expect_state(text, STATES[next - '0']);
        }
    }
}

TEST_P(TokenizerState, TheEndOfTheTextIsNoErrorAndDropsWhatIsUnfinished)
{
    EXPECT_EQ(entries_of(GetParam().prefix), Entries{END});
    EXPECT_EQ(entries_of(std::string("[A]B=7\n") + GetParam().prefix), (Entries{"A/B=7", END}));
}

INSTANTIATE_TEST_SUITE_P(States, TokenizerState, testing::ValuesIn(STATES),
                         [](const auto &row) { return std::string(row.param.name); });

struct Text {
    const char *name;
    const char *text;
    Entries entries;
};

void PrintTo(const Text &text, std::ostream *out)
{
    *out << text.name;
}

class TokenizerText : public testing::TestWithParam<Text>
{
};

TEST_P(TokenizerText, IsSplitIntoItsEntries)
{
    EXPECT_EQ(entries_of(GetParam().text), GetParam().entries);
}

const Text TEXTS[] = {
    {"Empty", "", {END}},
    {"BlanksOnly", " \t\r\n \n", {END}},
    {"OnePair", "[S]\nK = 7\n", {"S/K=7", END}},
    {"NoBlanksAtAll", "[S]K=7\n", {"S/K=7", END}},
    {"ManyBlanks", "  [S]\t \n\t K \t =\t  7 \t\n", {"S/K=7", END}},
    {"PairsOnOneLine", "[S]A=1 B = 2\tC=x\n", {"S/A=1", "S/B=2", "S/C=x", END}},
    {"PairOnTheHeadersLine", "[S] A=1\n", {"S/A=1", END}},
    {"HeaderBehindPairs", "[S]A=1 [T]B=2\n", {"S/A=1", "T/B=2", END}},
    {"HeaderInHeader", "[S[T]B=2\n", {ERROR}},
    {"SectionsWithoutEntries", "[S]\n[T]\n[U]A=1\n[V]\n", {"U/A=1", END}},
    {"SameSectionTwice", "[S]A=1\n[S]A=2\n", {"S/A=1", "S/A=2", END}},
    {"DigitsInNames", "[S1x2]K9z=a1b2\n", {"S1x2/K9z=a1b2", END}},
    {"UnderscoreFirst", "[_]_=_\n", {"_/_=_", END}},
    {"LowerCase", "[abc]def=ghi\n", {"abc/def=ghi", END}},
    {"CarriageReturns", "[S]\rA=1\rB=2\r", {"S/A=1", "S/B=2", END}},
    {"CarriageReturnsAndLineFeeds", "[S]\r\nA=1\r\nB=\"x\"\r\n", {"S/A=1", "S/B=\"x\"", END}},
    {"PlainValueAtTheEndIsLost", "[S]A=1\nB=2", {"S/A=1", END}},
    {"PlainValueAndBlankAtTheEndIsKept", "[S]A=1 ", {"S/A=1", END}},
    {"QuotedValueAtTheEndIsKept", "[S]A=\"1\"", {"S/A=\"1\"", END}},
    {"OpenQuoteAtTheEndIsLost", "[S]A=\"1", {END}},
    {"OpenQuoteEndsWithItsLine", "[S]A=\"1\nB=2\n", {"S/A=\"1", "S/B=2", END}},
    {"EmptyQuotes", "[S]A=\"\"", {"S/A=\"\"", END}},
    {"LoneQuote", "[S]A=\"\nB=2\n", {"S/A=\"", "S/B=2", END}},
    {"BracketsAndEqualsInQuotes", "[S]A=\"[x]=\t7 \"", {"S/A=\"[x]=\t7 \"", END}},
    {"PairBehindQuotes", "[S]A=\"1\"B=2\n", {"S/A=\"1\"", "S/B=2", END}},
    {"MinusInQuotesEndsTheText", "[S]A=1\nB=\"10-20\"\nC=2\n", {"S/A=1", END}},
    {"CommaInQuotesEndsTheText", "[S]A=1\nB=\"1,2\"\nC=2\n", {"S/A=1", END}},
    {"CommentEndsTheText", "[S]A=1\n;B=2\n]]]", {"S/A=1", END}},
    {"HashEndsTheText", "[S]A=1 # B=2\n", {"S/A=1", END}},
    {"CommentFirst", "; a file\n[S]A=1\n", {END}},
    {"ByteOrderMarkFirst", "\xEF\xBB\xBF[S]A=1\n", {END}},
    {"HighByteInValue", "[S]A=1\nB=\xE9\n", {"S/A=1", END}},
    {"PairWithoutSection", "A=1\n", {ERROR}},
    {"DigitFirstInSection", "[1S]A=1\n", {ERROR}},
    {"DigitFirstInKey", "[S]1A=1\n", {ERROR}},
    {"EmptySection", "[]A=1\n", {ERROR}},
    {"BlankInHeader", "[S ]A=1\n", {ERROR}},
    {"BlankFirstInHeader", "[ S]A=1\n", {ERROR}},
    {"LineEndInHeader", "[S\n]A=1\n", {ERROR}},
    {"TwoWordsAsKey", "[S]A B=1\n", {ERROR}},
    {"KeyWithoutValue", "[S]A\n", {ERROR}},
    {"EmptyValue", "[S]A=\n", {ERROR}},
    {"EmptyValueBehindBlanks", "[S]A = \n", {ERROR}},
    {"TwoEquals", "[S]A==1\n", {ERROR}},
    {"EqualsInPlainValue", "[S]A=1=2\n", {ERROR}},
    {"QuoteInPlainValue", "[S]A=1\"\n", {ERROR}},
    {"BracketBehindPlainValue", "[S]A=1[T]\n", {ERROR}},
    {"QuoteBehindQuotes", "[S]A=\"1\"\"\n", {"S/A=\"1\"", ERROR}},
    {"NumberBehindQuotes", "[S]A=\"1\"2\n", {"S/A=\"1\"", ERROR}},
    {"ErrorBehindGoodEntries", "[S]A=1\nB=2\n=\n", {"S/A=1", "S/B=2", ERROR}},
    {"ErrorBehindTheEndIsNotSeen", "[S]A=1\n-\n=\n", {"S/A=1", END}},
};

INSTANTIATE_TEST_SUITE_P(Texts, TokenizerText, testing::ValuesIn(TEXTS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(TokenizerText, EndsAtAnInnerNul)
{
    const std::string text("[S]A=1\n\0B=2\n", 12);
    EXPECT_EQ(entries_of(text), (Entries{"S/A=1", END}));
}

/* Line and column of section, name and value of the last entry. */
struct Position {
    const char *name;
    const char *text;
    std::vector<int> positions;
};

void PrintTo(const Position &position, std::ostream *out)
{
    *out << position.name;
}

class TokenizerPosition : public testing::TestWithParam<Position>
{
};

TEST_P(TokenizerPosition, IsThatOfTheFirstCharacter)
{
    SW_Config_Tokenizer tokenizer;
    StartConfigTokenizer(&tokenizer, GetParam().text);
    std::vector<int> positions;
    while (NextConfigEntry(&tokenizer) == SW_Config_Token::ENTRY) {
        const SW_Config_Entry &entry = tokenizer.entry;
        positions = {entry.sectionLine, entry.sectionColumn, entry.nameLine,
                     entry.nameColumn,  entry.valueLine,     entry.valueColumn};
    }
    EXPECT_EQ(positions, GetParam().positions);
}

const Position POSITIONS[] = {
    {"FirstLine", "[S]K=7\n", {1, 2, 1, 4, 1, 6}},
    {"LineFeeds", "\n\n[S]\n\n K = 7\n", {3, 2, 5, 2, 5, 6}},
    {"CarriageReturns", "\r\r[S]\rK=7\r", {3, 2, 4, 1, 4, 3}},
    {"BothCountAsTwoLines", "[S]\r\nA=1\r\nK=7\r\n", {1, 2, 5, 1, 5, 3}},
    {"TabIsOneColumn", "\t[S]\t\tK\t=\t7\n", {1, 3, 1, 7, 1, 11}},
    {"QuotedValueStandsAtItsQuote", "[S]\nK = \"7\"", {1, 2, 2, 1, 2, 5}},
    {"LaterPairOfALine", "[S]\nA = 1 K = 7\n", {1, 2, 2, 7, 2, 11}},
    {"PairBehindTheLineEndOfAPlainValue", "[S]\nA = 1\nK = 7\n", {1, 2, 3, 1, 3, 5}},
    {"PairBehindTheLineEndOfAQuotedValue", "[S]\nA = \"1\nK = 7\n", {1, 2, 3, 1, 3, 5}},
    {"LineEndBehindAQuotedValue", "[S]\nA = \"1\"\nK = 7\n", {1, 2, 3, 1, 3, 5}},
    {"SecondSection", "[S]\nA=1\n  [T] K=7\n", {3, 4, 3, 7, 3, 9}},
};

INSTANTIATE_TEST_SUITE_P(Texts, TokenizerPosition, testing::ValuesIn(POSITIONS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(TokenizerEntry, IsNotYetConverted)
{
    SW_Config_Tokenizer tokenizer;
    StartConfigTokenizer(&tokenizer, "[SW_PORT1]VID=7\n");
    ASSERT_EQ(NextConfigEntry(&tokenizer), SW_Config_Token::ENTRY);
    EXPECT_EQ(tokenizer.entry.sectionKeyword, -1);
    EXPECT_EQ(tokenizer.entry.sectionNumber, -1);
    EXPECT_EQ(tokenizer.entry.nameKeyword, -1);
    EXPECT_EQ(tokenizer.entry.nameIndex, -1);
    EXPECT_EQ(tokenizer.entry.valueKeyword, -1);
}

} // namespace
