#include "switch/console/prompts.h"

#include "switch/config/decimal.h"
#include "switch/config/keywords.h"
#include "switch/console/input.h"
#include "switch/range/range_lists.h"

#include <cstdio>
#include <cstring>

namespace
{

enum class Answer : uint8_t {
    NONE, /* end of input, or nothing that can be used */
    ENTER,
    TEXT
};

/* A prompt for one of the numbers 0 to last. */
struct Choice {
    const char *choices;           /* as the prompt line shows them */
    const char *(*text)(uint32_t); /* of the current value; null: it is not shown */
    int32_t last;
    bool cutFirst; /* to 16 bits, before the check; otherwise negative numbers pass it: meant */
    bool refusalResult; /* what the prompt returns for a number above last */
};

// clang-format off
constexpr Choice EGRESS_RATE = {
  "(0(Not limited)/1(128K)/2(256K)/3(512K)/4(1M)/5(2M)/6(4M)/7(8M)/8(16M)/9(32M)/10(64M)/11(128M)/12(256M))",
    RateDisplayText, SW_RATES - 1, false, true};
constexpr Choice EGRESS_MODE = {
    "(0(Unmodify egress)/1(Untagged egress)/2(Tagged egress)/3(Add tag))",
    EgressModeDisplayText, SW_EGRESS_MODES - 1, false, true};
constexpr Choice DOT1Q_MODE = {
    "(0(Disable)/1(Fallback)/2(Check)/3(Secure))",
    Dot1qModeDisplayText, SW_DOT1Q_MODES - 1, false, true};
constexpr Choice AUTO_MODE = {
    "", /* listed above the line */
    AutoModeDisplayText, SW_AUTO_MODES - 1, false, true};
constexpr Choice PORT_SPEED = {
    "(0(10 Mbps)/1(100 Mbps)/2(1000 Mbps))",
    nullptr, 2, false, true};
constexpr Choice MAX_FRAME_SIZE = {
    "(0(1522 Bytes)/1(1632 Bytes))",
    MaxFrameSizeDisplayText, SW_Max_Frame_Size_1632, true, false};
constexpr Choice MEMBER_TAG = {
    "(0(Unmodified)/1(None)/2(Untagged)/3(Tagged))",
    MemberTagDisplayText, SW_MEMBER_TAGS - 1, true, true};
// clang-format on

template <size_t Size>
Answer read_answer(char (&line)[Size])
{
    if (!SW_Read_Line(line, Size) || line[0] == '\0') {
        return Answer::NONE;
    }
    return line[0] == '\n' ? Answer::ENTER : Answer::TEXT;
}

bool ask_choice(const Choice &choice, const char *label, uint32_t *value)
{
    std::printf("%s%s", label, choice.choices);
    if (choice.text != nullptr) {
        std::printf("(%s)", choice.text(*value));
    }
    std::printf(":");

    char line[SW_VALUE_LINE_SIZE];
    const Answer answer = read_answer(line);
    if (answer != Answer::TEXT) {
        return answer == Answer::ENTER;
    }
    const int32_t typed = SignedDecimalValue(line);
    const int32_t number = choice.cutFirst ? static_cast<uint16_t>(typed) : typed;
    if (number > choice.last) {
        std::puts("Value out of range!");
        return choice.refusalResult;
    }
    *value = static_cast<uint32_t>(number);
    return true;
}

bool is_line_end(char character)
{
    return character == '\n' || character == '\r';
}

/* Takes at most `most` characters of a line end off. */
void strip_line_end(char *text, size_t most)
{
    size_t length = std::strlen(text);
    for (; most > 0 && length > 0 && is_line_end(text[length - 1]); most--) {
        text[--length] = '\0';
    }
}

using Range_Parser = bool (*)(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep,
                              std::vector<int32_t> &values, int32_t &count, int32_t min,
                              int32_t max);

/* The flow of the two prompts that keep the range text until the answer is accepted. Enter parses
 * the range text itself: it may be longer than the line. */
template <size_t Size>
bool ask_list(Range_Parser parse, char (&line)[Size], const char *label,
              char (*rangeText)[SW_RANGE_TEXT_SIZE], std::vector<int32_t> &values, int32_t min,
              int32_t max)
{
    std::printf("%s(%s):", label, *rangeText);
    int32_t count = 0;
    switch (read_answer(line)) {
    case Answer::NONE:
        return false;
    case Answer::ENTER:
        return parse(*rangeText, rangeText, true, values, count, min, max);
    case Answer::TEXT:
        break;
    }
    strip_line_end(line, 2);
    if (parse(line, rangeText, true, values, count, min, max)) {
        return true;
    }
    std::printf("Range: %s - bad value\n", line);
    return false;
}

} // namespace

bool Ask_Yes_No(const char *label, uint32_t *value)
{
    std::printf("%s(y/n)(%s):", label, *value != 0 ? "yes" : "no");
    char line[SW_VALUE_LINE_SIZE];
    if (read_answer(line) != Answer::TEXT) {
        return false;
    }
    *value = line[0] == 'y' || line[0] == 'Y' ? 1 : 0;
    return true;
}

bool Ask_Egress_Rate(const char *label, uint32_t *rate)
{
    return ask_choice(EGRESS_RATE, label, rate);
}

bool Ask_Egress_Mode(const char *label, uint32_t *mode)
{
    return ask_choice(EGRESS_MODE, label, mode);
}

bool Ask_Dot1q_Mode(const char *label, uint32_t *mode)
{
    return ask_choice(DOT1Q_MODE, label, mode);
}

bool Ask_Auto_Mode(const char *label, uint32_t *mode)
{
    std::puts("Autonegotiation mode:");
    for (uint32_t listed = 0; listed < SW_AUTO_MODES; listed++) {
        std::printf("%-2u - %s\n", listed, AutoModeDisplayText(listed));
    }
    return ask_choice(AUTO_MODE, label, mode);
}

bool Ask_Port_Speed(const char *label, uint32_t *speed)
{
    return ask_choice(PORT_SPEED, label, speed);
}

bool Ask_Max_Frame_Size(const char *label, uint32_t *size)
{
    return ask_choice(MAX_FRAME_SIZE, label, size);
}

bool Ask_Member_Tag(const char *label, uint8_t *tag)
{
    uint32_t value = *tag;
    const bool taken = ask_choice(MEMBER_TAG, label, &value);
    *tag = static_cast<uint8_t>(value);
    return taken;
}

bool Ask_Number(const char *label, uint16_t *number)
{
    std::printf("%s(%d):", label, *number);
    char line[SW_VALUE_LINE_SIZE];
    const Answer answer = read_answer(line);
    if (answer == Answer::TEXT) {
        *number = static_cast<uint16_t>(SignedDecimalValue(line));
    }
    return answer != Answer::NONE;
}

bool Ask_Range_List(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                    std::vector<int32_t> &values, int32_t min, int32_t max)
{
    char line[SW_MENU_LINE_SIZE];
    return ask_list(Int_Range_To_Int_List2, line, label, rangeText, values, min, max);
}

bool Ask_Int_Range(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                   std::vector<int32_t> &values, int32_t min, int32_t max)
{
    char line[SW_VALUE_LINE_SIZE];
    return ask_list(Int_Range_To_Int_List, line, label, rangeText, values, min, max);
}

bool Ask_Range_Vector(const char *label, char (*rangeText)[SW_RANGE_TEXT_SIZE],
                      std::vector<int32_t> &values, int32_t min, int32_t max)
{
    std::printf("%s(%s):", label, *rangeText);
    char line[SW_RANGE_TEXT_SIZE];
    /* One character less than the range text holds: meant. The end of input reads as the empty
     * text and empties the range text with it: meant too. */
    SW_Read_Line(line, sizeof line - 1);
    if (!is_line_end(line[0])) {
        SetRangeText(rangeText, line);
    }
    strip_line_end(*rangeText, SW_RANGE_TEXT_SIZE);
    if ((*rangeText)[0] == '\0') {
        return false;
    }
    return Range_Str_To_Vector(*rangeText, values, min, max, true);
}
