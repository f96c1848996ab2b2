#include "switch/range/range_lists.h"
#include "switch/range/range_text.h"

#include <array>
#include <cstdio>

namespace
{

enum State : uint8_t { EXPECT_FIRST, FIRST, EXPECT_SECOND, SECOND, DONE };
constexpr int STATES = DONE;

enum Class : uint8_t { DIGIT, COMMA, MINUS, END, OTHER };
constexpr int CLASSES = OTHER + 1;

enum Action : uint8_t {
    READ_FIRST,       /* all digits that follow, into the first number */
    READ_SECOND,      /* the same, into the second number */
    PASS,             /* go on behind the character */
    TAKE_FIRST,       /* append the first number alone */
    TAKE_RANGE,       /* append first to second number */
    REFUSE_END,       /* the text ends too early */
    REFUSE_CHARACTER, /* the character has no place here */
};

struct Cell {
    Action action;
    State next;
};

struct Row {
    State state;
    Cell cells[CLASSES];
};

constexpr Cell REFUSED = {REFUSE_CHARACTER, DONE};
constexpr Cell CUT_OFF = {REFUSE_END, DONE};

// clang-format off
constexpr Row ROWS[STATES] = {
    /* DIGIT, COMMA, MINUS, END, OTHER */
    {EXPECT_FIRST,  {{READ_FIRST, FIRST},   REFUSED,                    REFUSED,                CUT_OFF,            REFUSED}},
    {FIRST,         {{READ_FIRST, FIRST},   {TAKE_FIRST, EXPECT_FIRST}, {PASS, EXPECT_SECOND},  {TAKE_FIRST, DONE}, REFUSED}},
    {EXPECT_SECOND, {{READ_SECOND, SECOND}, REFUSED,                    REFUSED,                CUT_OFF,            REFUSED}},
    {SECOND,        {{READ_SECOND, SECOND}, {TAKE_RANGE, EXPECT_FIRST}, REFUSED,                {TAKE_RANGE, DONE}, REFUSED}},
};
// clang-format on

constexpr bool rows_stand_at_their_states()
{
    for (int state = 0; state < STATES; ++state) {
        if (ROWS[state].state != state) {
            return false;
        }
    }
    return true;
}
static_assert(rows_stand_at_their_states());

/* All digits are read at once, which needs a further digit to do what the first one did. */
constexpr bool same_on_digit(State one, State other)
{
    const Cell &left = ROWS[one].cells[DIGIT];
    const Cell &right = ROWS[other].cells[DIGIT];
    return left.action == right.action && left.next == right.next;
}
static_assert(same_on_digit(EXPECT_FIRST, FIRST) && same_on_digit(EXPECT_SECOND, SECOND));

constexpr Class class_of(char character)
{
    if (IsDecimalDigit(character)) {
        return DIGIT;
    }
    switch (character) {
    case ',':
        return COMMA;
    case '-':
        return MINUS;
    case '\0':
        return END;
    default:
        return OTHER;
    }
}

constexpr std::array<Class, 256> CLASS_OF = [] {
    std::array<Class, 256> classes{};
    for (int c = 0; c < 256; ++c) {
        classes[static_cast<size_t>(c)] = class_of(static_cast<char>(c));
    }
    return classes;
}();

struct Machine {
    const char *at; /* the next character */
    int32_t first;
    int32_t second;
    int32_t min;
    int32_t max;
    std::vector<int32_t> &values;
};

bool refuse_number(int32_t number)
{
    printf("Failed ('%d')\n", number);
    return false;
}

bool refuse_end()
{
    printf("Failed ('<cr>')\n");
    return false;
}

bool refuse_character(char character)
{
    printf("Failed ('%c')\n", static_cast<unsigned char>(character));
    return false;
}

bool take_first(Machine &machine)
{
    if (!IsWithin(machine.first, machine.min, machine.max)) {
        return refuse_number(machine.first);
    }
    machine.values.push_back(machine.first);
    machine.first = 0;
    ++machine.at;
    return true;
}

bool take_range(Machine &machine)
{
    if (!IsWithin(machine.first, machine.min, machine.max)) {
        return refuse_number(machine.first);
    }
    if (!IsWithin(machine.second, machine.min, machine.max)) {
        return refuse_number(machine.second);
    }
    /* A range in the wrong order is refused with its second number, which is meant. */
    if (machine.second <= machine.first) {
        return refuse_number(machine.second);
    }
    AppendRun(machine.values, machine.first, machine.second);
    machine.first = machine.second = 0;
    ++machine.at;
    return true;
}

bool perform(Action action, Machine &machine)
{
    switch (action) {
    case READ_FIRST:
        machine.first = TakeDigits(&machine.at, machine.first);
        return true;
    case READ_SECOND:
        machine.second = TakeDigits(&machine.at, machine.second);
        return true;
    case PASS:
        ++machine.at;
        return true;
    case TAKE_FIRST:
        return take_first(machine);
    case TAKE_RANGE:
        return take_range(machine);
    case REFUSE_END:
        return refuse_end();
    case REFUSE_CHARACTER:
        break;
    }
    return refuse_character(*machine.at);
}

bool run(Machine &machine)
{
    State state = EXPECT_FIRST;
    while (state != DONE) {
        const Cell &cell = ROWS[state].cells[CLASS_OF[static_cast<unsigned char>(*machine.at)]];
        if (!perform(cell.action, machine)) {
            return false;
        }
        state = cell.next;
    }
    return true;
}

bool parse(const char *text, std::vector<int32_t> &values, int32_t min, int32_t max)
{
    /* The machine would refuse the empty text; it stands for an empty list, which is meant. */
    if (*text == '\0') {
        return true;
    }
    Machine machine{text, 0, 0, min, max, values};
    return run(machine);
}

constexpr const char *SAMPLES[] = {
    "2-10",
    "3,5-10",
    "4-10,15-20",
    "5-10,12,15-20",
    "5-10,12,15-20,30",
    "6-10,12,15,18-20,30",
    "7,9-12,15,18,20-25,30",
};
constexpr int32_t SAMPLE_MIN = 1;
constexpr int32_t SAMPLE_MAX = 4095;
constexpr int32_t MOST_PRINTED = 100;

bool run_sample(int index, const char *sample)
{
    std::vector<int32_t> values;
    int32_t count = 0;
    const bool parsed =
        Int_Range_To_Int_List2(sample, nullptr, false, values, count, SAMPLE_MIN, SAMPLE_MAX);
    printf("[%d]: s=\"%s\" res=%s channels(%d):", index, sample, parsed ? "true" : "false", count);
    if (count >= 1 && count <= MOST_PRINTED) {
        for (const int32_t value : values) {
            printf(" %d", value);
        }
    }
    printf("\n");
    return parsed;
}

} // namespace

bool Int_Range_To_Int_List2(const char *text, char (*rangeText)[SW_RANGE_TEXT_SIZE], bool keep,
                            std::vector<int32_t> &values, int32_t &count, int32_t min, int32_t max)
{
    return WithoutThrowing([&] {
        std::vector<int32_t> found;
        return parse(text, found, min, max) && Remember(text, rangeText, keep) &&
               HandOver(found, values, count);
    });
}

bool QRB_Int_Range_To_Int_List2_Test()
{
    printf("\n%s:%d:\n", "QRB_Int_Range_To_Int_List2_Test", __LINE__);
    bool passed = true;
    int index = 0;
    for (const char *sample : SAMPLES) {
        passed = run_sample(index++, sample) && passed;
    }
    return passed;
}
