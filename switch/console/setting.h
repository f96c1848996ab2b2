#pragma once

#include "switch/console/menu.h"
#include "switch/console/ranges.h"

#include <cstdint>
#include <type_traits>

/*
 * The common flow of the keys that set something: ask for a range of items (ports, user priorities,
 * DSCPs), then for a value, and store it for every item of the range. A setting is a row; the flow
 * is written once. Single-threaded.
 */

/* A range that is asked for. */
struct SW_Setting_Range {
    const char *label;
    char (SW_Range_Texts::*text)[SW_RANGE_TEXT_SIZE];
    int32_t min;
    int32_t max;
    bool ofMenu;                      /* the menu text shows it: it goes into the visit's ports */
    void (*refuse)(const char *text); /* says that `text`, the range text, is refused */
};

/* The ports range as most keys ask for it: 0 to 4. */
extern const SW_Setting_Range SW_ANY_PORTS;

/* One value that is asked for, and where a configuration keeps it for an item. */
struct SW_Setting_Value {
    const char *label;
    bool (*ask)(const char *label, uint32_t *value);
    uint32_t (*get)(const SW_Config *config, int32_t item);
    void (*set)(SW_Config *config, int32_t item, uint32_t value);
};

inline constexpr int SW_SETTING_VALUES = 3;

struct SW_Setting {
    const SW_Setting_Range *range;
    SW_Setting_Value values[SW_SETTING_VALUES]; /* asked for in turn, up to one without prompt */
    /* Says so and returns true for a first value that must not be stored. Null: all are. */
    bool (*refused)(uint32_t value);
};

/* Prints "ERROR: Range_Str_To_Vector(\"%s\") - Failed\n". */
void SW_Refuse_Range(const char *text);

/*
 * The flow. A refused range ends it with a message. The first item's values are the defaults; what
 * the prompts return is not looked at, so Enter and a refused answer give the first item's value to
 * all items: meant. Then all values are stored for all items, or "Range is empty\n" is printed.
 */
void SW_Set_In_Range(SW_Menu_Visit &visit, const SW_Setting &setting);

/* The flow as the action of a key. */
template <const SW_Setting &Setting>
void SW_Act_Set(SW_Menu_Visit &visit)
{
    SW_Set_In_Range(visit, Setting);
}

/* Ask_Number, for rows. SW_Ask_Byte cuts the answer to its low 8 bits before any check: 256 is 0,
 * meant so. */
bool SW_Ask_Number(const char *label, uint32_t *value);
bool SW_Ask_Byte(const char *label, uint32_t *value);

/* The row of a field of a port's record. */
template <auto Field>
constexpr SW_Setting_Value SW_Port_Value(const char *label, bool (*ask)(const char *, uint32_t *))
{
    return {label, ask,
            [](const SW_Config *config, int32_t port) -> uint32_t {
                return config->ports[port].*Field;
            },
            [](SW_Config *config, int32_t port, uint32_t value) {
                auto &field = config->ports[port].*Field;
                field = static_cast<std::remove_reference_t<decltype(field)>>(value);
            }};
}

/* The row of a table of traffic classes. */
template <auto Table>
constexpr SW_Setting_Value SW_Class_Value(const char *label)
{
    return {
        label, SW_Ask_Byte,
        [](const SW_Config *config, int32_t index) -> uint32_t { return (config->*Table)[index]; },
        [](SW_Config *config, int32_t index, uint32_t value) {
            (config->*Table)[index] = static_cast<uint8_t>(value);
        }};
}
