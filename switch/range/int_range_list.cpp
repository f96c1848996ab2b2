#include "switch/range/range_lists.h"
#include "switch/range/range_text.h"

#include <cstdio>

namespace
{

/* The numbers in the messages: constant texts, not lines of this file. */
enum Fault : int {
    FAULT_NONE = 0,
    FAULT_NUMBER = 813,
    FAULT_RANGE = 829,
    FAULT_SEPARATOR = 835,
};

/* What is wrong with a text, for the message. */
struct Refusal {
    Fault fault;
    unsigned char c2; /* the character behind the number */
};

/* No test for a digit: any other character gives a value that the bounds refuse. */
int32_t value_of(char character)
{
    return static_cast<unsigned char>(character) - '0';
}

/* Takes the item at *text, which is neither a comma nor the end, and moves *text behind it. */
Refusal take_item(const char **text, std::vector<int32_t> &values, int32_t min, int32_t max)
{
    const char *at = *text;
    const int32_t first = value_of(at[0]);
    const char c2 = at[1];
    if (c2 == ',' || c2 == '\0' || IsBlank(c2)) {
        if (!IsWithin(first, min, max)) {
            return {FAULT_NUMBER, 0};
        }
        values.push_back(first);
        *text = at + (c2 == '\0' ? 1 : 2);
        return {FAULT_NONE, 0};
    }
    if (c2 != '-') {
        return {FAULT_SEPARATOR, static_cast<unsigned char>(c2)};
    }
    /* At the end of the text this is the NUL, whose value is below every first one. */
    const int32_t last = value_of(at[2]);
    if (!IsWithin(first, min, max) || !IsWithin(last, min, max) || first >= last) {
        return {FAULT_RANGE, 0};
    }
    AppendRun(values, first, last);
    *text = at + 3;
    return {FAULT_NONE, 0};
}

Refusal parse(const char *text, std::vector<int32_t> &values, int32_t min, int32_t max)
{
    while (*text != '\0') {
        if (*text == ',') {
            ++text;
            continue;
        }
        const Refusal refusal = take_item(&text, values, min, max);
        if (refusal.fault != FAULT_NONE) {
            return refusal;
        }
    }
    return {FAULT_NONE, 0};
}

void print(const Refusal &refusal)
{
    const char *const routine = "Int_Range_To_Int_List";
    const int number = refusal.fault;
    if (refusal.fault == FAULT_SEPARATOR) {
        printf("%s:%d: - Failed (c2: '%c' 0x%02X)\n", routine, number, refusal.c2, refusal.c2);
    } else {
        printf("%s:%d: - Failed\n", routine, number);
    }
}

} // namespace

bool Int_Range_To_Int_List(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep,
                           std::vector<int32_t> &values, int32_t &count, int32_t min, int32_t max)
{
    return WithoutThrowing([&] {
        std::vector<int32_t> found;
        const Refusal refusal = parse(text, found, min, max);
        if (refusal.fault != FAULT_NONE) {
            print(refusal);
            return false;
        }
        return Remember(text, rangeText, keep) && HandOver(found, values, count);
    });
}

bool Int_Range_To_Int_List_Silent(const char *text, std::vector<int32_t> &values, int32_t &count,
                                  int32_t min, int32_t max)
{
    return WithoutThrowing([&] {
        std::vector<int32_t> found;
        return parse(text, found, min, max).fault == FAULT_NONE && HandOver(found, values, count);
    });
}
