#include "switch/range/range_lists.h"
#include "switch/range/range_text.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace
{

/* The numbers in the messages: constant texts, not lines of this file. */
enum Fault : int {
    FAULT_CHARACTER = 325,
    FAULT_NUMBER_BEFORE_NUMBER = 354,
    FAULT_NUMBER_BEFORE_COMMA = 370,
    FAULT_RANGE_BOUNDS = 384,
    FAULT_RANGE_ORDER = 396,
    FAULT_SEQUENCE = 404,
    FAULT_CUT_OFF = 412,
    FAULT_LAST_NUMBER = 426,
    FAULT_SEPARATOR = 438,
    FAULT_NO_VALUE = 463,
};

bool refuse(bool verbose, const char *routine, Fault fault, const char *kind)
{
    if (verbose) {
        printf("%s:%d: %s Error\n", routine, static_cast<int>(fault), kind);
    }
    return false;
}

bool split(const char *text, std::vector<Range_Lexem> &lexems, bool verbose)
{
    while (*text != '\0') {
        if (IsDecimalDigit(*text)) {
            lexems.push_back({Range_Lexem_NUMBER, TakeDigits(&text, 0)});
            continue;
        }
        if (*text == ',' || *text == '-') {
            lexems.push_back({*text == ',' ? Range_Lexem_COMMA : Range_Lexem_MINUS, 0});
        } else if (!IsBlank(*text)) {
            return refuse(verbose, "Range_Str_To_Lexems", FAULT_CHARACTER, "Parsing");
        }
        ++text;
    }
    return true;
}

/* One walk over the lexemes. The steps are deliberately no grammar: a comma met between two items
 * is skipped, so "5-10,,12" is accepted behind a range, while "5,,12" is refused. */
struct Walk {
    const std::vector<Range_Lexem> &lexems;
    std::vector<int32_t> &values;
    int32_t min;
    int32_t max;
    bool verbose;
    std::size_t at;
};

bool refuse(const Walk &walk, Fault fault, const char *kind)
{
    return refuse(walk.verbose, "Range_Lexems_To_Vector", fault, kind);
}

bool is_number(const Walk &walk, std::size_t index)
{
    return walk.lexems[index].kind == Range_Lexem_NUMBER;
}

/* Takes the number at the walk's place alone and goes on lexems further. */
bool take_number(Walk &walk, std::size_t lexems, Fault outOfBounds)
{
    const int32_t value = walk.lexems[walk.at].value;
    if (!IsWithin(value, walk.min, walk.max)) {
        return refuse(walk, outOfBounds, "Range");
    }
    walk.values.push_back(value);
    walk.at += lexems;
    return true;
}

/* Takes number, minus, number at the walk's place. */
bool take_range(Walk &walk)
{
    const int32_t first = walk.lexems[walk.at].value;
    const int32_t last = walk.lexems[walk.at + 2].value;
    if (!IsWithin(first, walk.min, walk.max) || !IsWithin(last, walk.min, walk.max)) {
        return refuse(walk, FAULT_RANGE_BOUNDS, "Range");
    }
    if (first >= last) {
        return refuse(walk, FAULT_RANGE_ORDER, "Parsing");
    }
    AppendRun(walk.values, first, last);
    walk.at += 3;
    return true;
}

bool skip_separator(Walk &walk)
{
    const bool between = walk.at > 0 && walk.at + 1 < walk.lexems.size();
    if (walk.lexems[walk.at].kind != Range_Lexem_COMMA || !between) {
        return refuse(walk, FAULT_SEPARATOR, "Parsing");
    }
    ++walk.at;
    return true;
}

/* The number at the walk's place has a separator behind it. */
bool take_before_separator(Walk &walk)
{
    if (walk.at + 2 >= walk.lexems.size()) {
        return refuse(walk, FAULT_CUT_OFF, "Parsing");
    }
    if (!is_number(walk, walk.at + 2)) {
        return refuse(walk, FAULT_SEQUENCE, "Parsing");
    }
    if (walk.lexems[walk.at + 1].kind == Range_Lexem_COMMA) {
        return take_number(walk, 2, FAULT_NUMBER_BEFORE_COMMA);
    }
    return take_range(walk);
}

bool step(Walk &walk)
{
    if (!is_number(walk, walk.at)) {
        return skip_separator(walk);
    }
    if (walk.at + 1 == walk.lexems.size()) {
        return take_number(walk, 1, FAULT_LAST_NUMBER);
    }
    if (is_number(walk, walk.at + 1)) {
        return take_number(walk, 1, FAULT_NUMBER_BEFORE_NUMBER);
    }
    return take_before_separator(walk);
}

bool collect(const std::vector<Range_Lexem> &lexems, std::vector<int32_t> &values, int32_t min,
             int32_t max, bool verbose)
{
    Walk walk{lexems, values, min, max, verbose, 0};
    while (walk.at < lexems.size()) {
        if (!step(walk)) {
            return false;
        }
    }
    return true;
}

/* Without an early exit, so that the loop can work on several values at once. */
bool is_increasing(const std::vector<int32_t> &values)
{
    unsigned misplaced = 0;
    for (std::size_t i = 1; i < values.size(); ++i) {
        misplaced |= static_cast<unsigned>(values[i - 1] >= values[i]);
    }
    return misplaced == 0;
}

void sort_without_repeats(std::vector<int32_t> &values)
{
    if (is_increasing(values)) {
        return;
    }
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
}

} // namespace

bool Range_Str_To_Lexems(const char *text, std::vector<Range_Lexem> &lexems, bool verbose)
{
    return WithoutThrowing([&] {
        std::vector<Range_Lexem> found;
        if (!split(text, found, verbose)) {
            return false;
        }
        lexems = std::move(found);
        return true;
    });
}

bool Range_Lexems_To_Vector(const std::vector<Range_Lexem> &lexems, std::vector<int32_t> &values,
                            int32_t min, int32_t max, bool verbose)
{
    return WithoutThrowing([&] {
        std::vector<int32_t> found;
        if (!collect(lexems, found, min, max, verbose)) {
            return false;
        }
        values = std::move(found);
        return true;
    });
}

bool Range_Str_To_Vector(const char *text, std::vector<int32_t> &values, int32_t min, int32_t max,
                         bool verbose)
{
    std::vector<Range_Lexem> lexems;
    std::vector<int32_t> found;
    if (!Range_Str_To_Lexems(text, lexems, verbose) ||
        !Range_Lexems_To_Vector(lexems, found, min, max, verbose)) {
        return false;
    }
    if (found.empty()) {
        return refuse(verbose, "Range_Str_To_Vector", FAULT_NO_VALUE, "Parsing");
    }
    sort_without_repeats(found);
    values = std::move(found);
    return true;
}
