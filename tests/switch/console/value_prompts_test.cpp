#include "switch/console/prompts.h"

#include "tests/support/input_feed.h"
#include "tests/switch/console/prompt_texts.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

using namespace std::string_view_literals;

namespace
{

/* The prompts for one value with one signature; the narrow values are widened. */
using Ask = bool (*)(const char *label, uint32_t *value);

template <class Value, bool (*Narrow)(const char *, Value *)>
bool widened(const char *label, uint32_t *value)
{
    Value narrow = static_cast<Value>(*value);
    const bool result = Narrow(label, &narrow);
    *value = narrow;
    return result;
}

constexpr Ask ASK_MEMBER_TAG = widened<uint8_t, Ask_Member_Tag>;
constexpr Ask ASK_NUMBER = widened<uint16_t, Ask_Number>;

/* Which of an answer's outcomes holds for a prompt. */
enum Rule : uint8_t { SIGNED, CUT, NUMBER, YES_NO };

struct Prompt {
    const char *name;
    Ask ask;
    Rule rule;
    uint32_t before;
    const char *shown;  /* the whole text of the prompt, `before` being the current value */
    bool refusalResult; /* for a number out of range */
    uint32_t last;      /* the highest number that is accepted */
};

void PrintTo(const Prompt &prompt, std::ostream *out)
{
    *out << prompt.name;
}

// clang-format off
const Prompt CHOICES[] = {
    {"EgressRate", Ask_Egress_Rate, SIGNED, 2, "Some label" RATE_CHOICES "(256K bits/sec):", true, 12},
    {"EgressMode", Ask_Egress_Mode, SIGNED, 2, "Some label" EGRESS_MODE_CHOICES "(Tagged egress):", true, 3},
    {"Dot1qMode", Ask_Dot1q_Mode, SIGNED, 2, "Some label" DOT1Q_MODE_CHOICES "(Check):", true, 3},
    {"AutoMode", Ask_Auto_Mode, SIGNED, 9, AUTO_MODE_LIST "Some label(Speed 100Mbps and Half duplex):", true, 11},
    {"PortSpeed", Ask_Port_Speed, SIGNED, 2, "Some label" SPEED_CHOICES ":", true, 2},
    {"MaxFrameSize", Ask_Max_Frame_Size, CUT, 5, "Some label" FRAME_SIZE_CHOICES "(1632 Bytes):", false, 1},
    {"MemberTag", ASK_MEMBER_TAG, CUT, 2, "Some label" TAG_CHOICES "(Untagged):", true, 3},
};
const Prompt OTHERS[] = {
    {"Number", ASK_NUMBER, NUMBER, 4711, "Some label(4711):", true, 65535},
    {"YesNo", Ask_Yes_No, YES_NO, 7, "Some label(y/n)(yes):", true, 0},
};
// clang-format on

/* What an answer does. */
struct Outcome {
    bool result; /* a refusal's is the prompt's own */
    bool refused;
    bool kept;
    uint32_t value; /* stored when not kept */
};

constexpr Outcome stored(uint32_t value)
{
    return {true, false, false, value};
}
constexpr Outcome KEPT = {true, false, true, 0};
constexpr Outcome NOTHING = {false, false, true, 0};
constexpr Outcome REFUSED = {true, true, true, 0};
constexpr Outcome ZERO = stored(0);
constexpr Outcome ONE = stored(1);

struct Answer {
    const char *name;
    std::string_view typed;
    std::string_view rest; /* what the next read of the console finds */
    Outcome outcomes[4];   /* by Rule */
};

void PrintTo(const Answer &answer, std::ostream *out)
{
    *out << answer.name;
}

// clang-format off
const Answer ANSWERS[] = {
    /* name, typed, rest, {signed check, cut to 16 bits first, number, yes or no} */
    {"Enter", "\nnext\n", "next\n", {KEPT, KEPT, KEPT, NOTHING}},
    {"EndOfInput", "", "", {NOTHING, NOTHING, NOTHING, NOTHING}},
    {"NulByteFirst", "\0" "1\nnext\n"sv, "next\n", {NOTHING, NOTHING, NOTHING, NOTHING}},
    {"NulByteAlone", "\0"sv, "", {NOTHING, NOTHING, NOTHING, NOTHING}},
    {"NulByteBehindADigit", "1\0" "2\nnext\n"sv, "next\n", {ONE, ONE, ONE, ZERO}},
    {"CarriageReturnLineFeed", "\r\nnext\n", "next\n", {ZERO, ZERO, ZERO, ZERO}},
    {"CarriageReturnAtTheEnd", "\r", "", {ZERO, ZERO, ZERO, ZERO}},
    {"NumberBeforeCarriageReturn", "1\r\n", "", {ONE, ONE, ONE, ZERO}},
    {"Blank", " \n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"Zero", "0\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"One", "1\n", "", {ONE, ONE, ONE, ZERO}},
    {"LastLineWithoutLineFeed", "1", "", {ONE, ONE, ONE, ZERO}},
    {"LeadingBlanks", " \t 1\n", "", {ONE, ONE, ONE, ZERO}},
    {"PlusSign", "+1\n", "", {ONE, ONE, ONE, ZERO}},
    {"LeadingZeros", "0001\n", "", {ONE, ONE, ONE, ZERO}},
    {"LettersBehindDigits", "1abc\n", "", {ONE, ONE, ONE, ZERO}},
    {"SecondNumberIsNotRead", "1 9\n", "", {ONE, ONE, ONE, ZERO}},
    {"Letters", "abc\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"HighBytes", "\xFF\xE9\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"MinusAlone", "-\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"MinusOne", "-1\n", "", {stored(0xFFFFFFFF), REFUSED, stored(65535), ZERO}},
    {"MinusThree", "-3\n", "", {stored(0xFFFFFFFD), REFUSED, stored(65533), ZERO}},
    {"Hundred", "100\n", "", {REFUSED, REFUSED, stored(100), ZERO}},
    {"Most16Bits", "65535\n", "", {REFUSED, REFUSED, stored(65535), ZERO}},
    {"ZeroIn16Bits", "65536\n", "", {REFUSED, ZERO, ZERO, ZERO}},
    {"OneIn16Bits", "65537\n", "", {REFUSED, ONE, ONE, ZERO}},
    {"OneIn16BitsNegative", "-65535\n", "", {stored(0xFFFF0001), ONE, ONE, ZERO}},
    {"Most32Bits", "2147483647\n", "", {REFUSED, REFUSED, stored(65535), ZERO}},
    {"SaturatesAbove32Bits", "4294967297\n", "", {REFUSED, REFUSED, stored(65535), ZERO}},
    {"SaturatesBelow32Bits", "-4294967297\n", "", {stored(0x80000000), ZERO, ZERO, ZERO}},
    {"SmallYes", "yes\n", "", {ZERO, ZERO, ZERO, ONE}},
    {"LargeYes", "Y\n", "", {ZERO, ZERO, ZERO, ONE}},
    {"BlankBeforeYes", " y\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"SmallNo", "n\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"WholeNo", "no\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"OtherLetter", "x\n", "", {ZERO, ZERO, ZERO, ZERO}},
    {"SeventeenCharacters", "00000000000000001\nnext\n", "next\n", {ONE, ONE, ONE, ZERO}},
    {"EighteenCharacters", "000000000000000001\nnext\n", "\nnext\n", {ONE, ONE, ONE, ZERO}},
    {"NineteenCharacters", "0000000000000000012\nnext\n", "2\nnext\n", {ONE, ONE, ONE, ZERO}},
    {"ThirtyCharacters", "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\n", "aaaaaaaaaaaa\n", {ZERO, ZERO, ZERO, ZERO}},
    {"ThirtyTimesYes", "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyy\n", "yyyyyyyyyyyy\n", {ZERO, ZERO, ZERO, ONE}},
};
// clang-format on

void expect_outcome(const Prompt &prompt, std::string_view typed, const Outcome &outcome,
                    std::string_view rest)
{
    uint32_t value = prompt.before;
    bool result = false;
    const Console_Run run = run_console(typed, [&] { result = prompt.ask("Some label", &value); });
    const std::string refusal = outcome.refused ? "Value out of range!\n" : "";
    EXPECT_EQ(run.output, prompt.shown + refusal);
    EXPECT_EQ(result, outcome.refused ? prompt.refusalResult : outcome.result);
    EXPECT_EQ(value, outcome.kept ? prompt.before : outcome.value);
    EXPECT_EQ(run.rest, rest);
}

class ValuePrompt : public testing::TestWithParam<std::tuple<Prompt, Answer>>
{
};

TEST_P(ValuePrompt, TakesTheAnswer)
{
    const auto &[prompt, answer] = GetParam();
    expect_outcome(prompt, answer.typed, answer.outcomes[prompt.rule], answer.rest);
}

std::string prompt_and_answer(const testing::TestParamInfo<std::tuple<Prompt, Answer>> &info)
{
    const auto &[prompt, answer] = info.param;
    return std::string(prompt.name) + "_" + answer.name;
}

INSTANTIATE_TEST_SUITE_P(Choices, ValuePrompt,
                         testing::Combine(testing::ValuesIn(CHOICES), testing::ValuesIn(ANSWERS)),
                         prompt_and_answer);
INSTANTIATE_TEST_SUITE_P(Others, ValuePrompt,
                         testing::Combine(testing::ValuesIn(OTHERS), testing::ValuesIn(ANSWERS)),
                         prompt_and_answer);

class ChoicePrompt : public testing::TestWithParam<Prompt>
{
};

TEST_P(ChoicePrompt, StoresEveryChoice)
{
    const Prompt &prompt = GetParam();
    for (uint32_t number = 0; number <= prompt.last; number++) {
        expect_outcome(prompt, std::to_string(number) + "\n", stored(number), "");
    }
}

TEST_P(ChoicePrompt, RefusesTheNumberAboveTheLast)
{
    const Prompt &prompt = GetParam();
    expect_outcome(prompt, std::to_string(prompt.last + 1) + "\n", REFUSED, "");
}

INSTANTIATE_TEST_SUITE_P(Prompts, ChoicePrompt, testing::ValuesIn(CHOICES),
                         [](const auto &row) { return std::string(row.param.name); });

/* The texts of the current values 0, 1, 2 and so on, the last ones outside the list. */
struct Current {
    const char *name;
    Ask ask;
    const char *opening; /* of the whole text, up to the current value's parenthesis */
    std::vector<const char *> texts;
};

void PrintTo(const Current &current, std::ostream *out)
{
    *out << current.name;
}

// clang-format off
const Current CURRENT[] = {
    {"YesNo", Ask_Yes_No, "Label(y/n)", {"no", "yes", "yes"}},
    {"EgressRate", Ask_Egress_Rate, "Label" RATE_CHOICES,
     {"Not limited", "128K bits/sec", "256K bits/sec", "512K bits/sec", "1M bits/sec", "2M bits/sec",
      "4M bits/sec", "8M bits/sec", "16M bits/sec", "32M bits/sec", "64M bits/sec", "128M bits/sec",
      "256M bits/sec", "", ""}},
    {"EgressMode", Ask_Egress_Mode, "Label" EGRESS_MODE_CHOICES,
     {"Unmodify egress", "Untagged egress", "Tagged egress", "Add tag", "", ""}},
    {"Dot1qMode", Ask_Dot1q_Mode, "Label" DOT1Q_MODE_CHOICES, {"Disable", "Fallback", "Check", "Secure", "", ""}},
    {"AutoMode", Ask_Auto_Mode, AUTO_MODE_LIST "Label",
     {"Auto for both speed and duplex", "Auto for duplex only and speed 1000Mbps",
      "Auto for duplex only and speed 100Mbps", "Auto for duplex only and speed 10Mbps",
      "Auto for speed only and Full duplex", "Auto for speed only and Half duplex",
      "Speed 1000Mbps and Full duplex", "Speed 1000Mbps and Half duplex",
      "Speed 100Mbps and Full duplex", "Speed 100Mbps and Half duplex",
      "Speed 10Mbps and Full duplex", "Speed 10Mbps and Half duplex", "", ""}},
    {"MaxFrameSize", Ask_Max_Frame_Size, "Label" FRAME_SIZE_CHOICES, {"1522 Bytes", "1632 Bytes", "1632 Bytes"}},
    {"MemberTag", ASK_MEMBER_TAG, "Label" TAG_CHOICES, {"Unmodified", "None", "Untagged", "Tagged", "", ""}},
    {"Number", ASK_NUMBER, "Label", {"0", "1", "2"}},
};
// clang-format on

class CurrentValue : public testing::TestWithParam<Current>
{
};

TEST_P(CurrentValue, IsShownAndKeptByEnter)
{
    const Current &current = GetParam();
    for (uint32_t before = 0; before < current.texts.size(); before++) {
        uint32_t value = before;
        const Console_Run run = run_console("\n", [&] { current.ask("Label", &value); });
        EXPECT_EQ(run.output, current.opening + std::string("(") + current.texts[before] + "):");
        EXPECT_EQ(value, before);
    }
}

INSTANTIATE_TEST_SUITE_P(Texts, CurrentValue, testing::ValuesIn(CURRENT),
                         [](const auto &row) { return std::string(row.param.name); });

/* A negative answer is stored, and the next prompt has no text for it. */
TEST(ValuePrompts, ShowNothingForANegativeValue)
{
    uint32_t mode = 1;
    const Console_Run run = run_console("-3\n\n", [&] {
        EXPECT_TRUE(Ask_Dot1q_Mode("Mode", &mode));
        EXPECT_TRUE(Ask_Dot1q_Mode("Mode", &mode));
    });
    EXPECT_EQ(run.output, "Mode" DOT1Q_MODE_CHOICES "(Fallback):Mode" DOT1Q_MODE_CHOICES "():");
    EXPECT_EQ(mode, 0xFFFFFFFDU);
}

TEST(ValuePrompts, ReadTheRestOfALongAnswerAsTheNextAnswer)
{
    uint32_t first = 0;
    uint16_t second = 0;
    const Console_Run run = run_console("00000000000000000142\n", [&] {
        EXPECT_TRUE(Ask_Egress_Rate("Egress Rate", &first));
        EXPECT_TRUE(Ask_Number("Port VID", &second));
    });
    EXPECT_EQ(run.output, "Egress Rate" RATE_CHOICES "(Not limited):Port VID(0):");
    EXPECT_EQ(first, 1U);
    EXPECT_EQ(second, 42);
}

TEST(ValuePrompts, ReadTheLineFeedOfAnEighteenCharacterAnswerAsEnter)
{
    uint16_t number = 3;
    uint32_t flag = 1;
    run_console("000000000000000012\n", [&] {
        EXPECT_TRUE(Ask_Number("Port VID", &number));
        EXPECT_FALSE(Ask_Yes_No("Tag All", &flag));
    });
    EXPECT_EQ(number, 12);
    EXPECT_EQ(flag, 1U);
}

TEST(ValuePrompts, ShowTheHighestNumber)
{
    uint16_t number = 65535;
    const Console_Run run = run_console("\n", [&] { Ask_Number("Port VID", &number); });
    EXPECT_EQ(run.output, "Port VID(65535):");
}

} // namespace
