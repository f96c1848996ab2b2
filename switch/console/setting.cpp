#include "switch/console/setting.h"

#include "switch/console/prompts.h"

#include <cstdio>

const SW_Setting_Range SW_ANY_PORTS = {"Ports Range", &SW_Range_Texts::ports, 0, SW_PORTS - 1,
                                       true,          SW_Refuse_Range};

void SW_Refuse_Range(const char *text)
{
    std::printf("ERROR: Range_Str_To_Vector(\"%s\") - Failed\n", text);
}

void SW_Set_In_Range(SW_Menu_Visit &visit, const SW_Setting &setting)
{
    const SW_Setting_Range &range = *setting.range;
    char(&text)[SW_RANGE_TEXT_SIZE] = SW_Ranges.*range.text;
    std::vector<int32_t> ofThisKey;
    std::vector<int32_t> &items = range.ofMenu ? visit.ports : ofThisKey;
    if (!Ask_Range_Vector(range.label, &text, items, range.min, range.max)) {
        range.refuse(text);
        return;
    }

    SW_Config *config = visit.control->running;
    const int32_t first = items.empty() ? range.min : items.front();
    uint32_t values[SW_SETTING_VALUES] = {};
    int count = 0;
    for (; count < SW_SETTING_VALUES && setting.values[count].ask != nullptr; count++) {
        values[count] = setting.values[count].get(config, first);
        setting.values[count].ask(setting.values[count].label, &values[count]);
    }
    if (setting.refused != nullptr && setting.refused(values[0])) {
        return;
    }
    if (items.empty()) {
        std::puts("Range is empty");
    }
    for (const int32_t item : items) {
        for (int i = 0; i < count; i++) {
            setting.values[i].set(config, item, values[i]);
        }
    }
}

bool SW_Ask_Number(const char *label, uint32_t *value)
{
    uint16_t number = static_cast<uint16_t>(*value);
    const bool taken = Ask_Number(label, &number);
    *value = number;
    return taken;
}

bool SW_Ask_Byte(const char *label, uint32_t *value)
{
    const bool taken = SW_Ask_Number(label, value);
    *value = static_cast<uint8_t>(*value);
    return taken;
}
