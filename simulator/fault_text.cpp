#include "simulator/fault_text.h"

#include <cstdlib>
#include <cstring>

namespace
{

constexpr uint32_t MOST_COUNTED = SIM_FOREVER - 1;
constexpr uint32_t HIGHEST_ON_BUS = 31;
constexpr int HIGHEST_ERROR = 133; /* of Linux */
constexpr size_t FIELD_SIZE = 24;  /* the longest error's name and more */

using Take = bool (*)(const char *field, Sim_Fault *fault);

bool take_first(const char *field, Sim_Fault *fault)
{
    return Sim_Number_Of_Text(field, MOST_COUNTED, &fault->first) && fault->first > 0;
}

bool take_count(const char *field, Sim_Fault *fault)
{
    if (strcmp(field, "forever") == 0) {
        fault->count = SIM_FOREVER;
        return true;
    }
    return Sim_Number_Of_Text(field, MOST_COUNTED, &fault->count) && fault->count > 0;
}

bool take_error(const char *name, Sim_Fault *fault)
{
    for (int error = 1; error <= HIGHEST_ERROR; ++error) {
        const char *known = strerrorname_np(error);
        if (known != nullptr && strcmp(name, known) == 0) {
            fault->error = error;
            return true;
        }
    }
    return false;
}

bool take_kind(const char *field, Sim_Fault *fault)
{
    if (strcmp(field, "ones") == 0) {
        fault->kind = SIM_FAULT_ALL_ONES;
        return true;
    }
    if (strcmp(field, "busy") == 0) {
        fault->kind = SIM_FAULT_BUSY;
        return true;
    }
    return take_error(field, fault);
}

bool take_place(const char *field, uint8_t *place)
{
    uint32_t number = SIM_ANY;
    if (strcmp(field, "any") != 0 && !Sim_Number_Of_Text(field, HIGHEST_ON_BUS, &number)) {
        return false;
    }
    *place = static_cast<uint8_t>(number);
    return true;
}

bool take_address(const char *field, Sim_Fault *fault)
{
    return take_place(field, &fault->address);
}

bool take_register(const char *field, Sim_Fault *fault)
{
    return take_place(field, &fault->registerNumber);
}

/* Takes the field that the text begins with, unless it is empty, and moves the text behind it. */
bool take_field(const char **text, Take take, Sim_Fault *fault)
{
    char field[FIELD_SIZE];
    const size_t length = strcspn(*text, ":");
    if (length >= sizeof field) {
        return false;
    }
    memcpy(field, *text, length);
    field[length] = '\0';
    *text += length;
    return length == 0 || take(field, fault);
}

constexpr Take FIELDS[] = {take_first, take_count, take_kind, take_address, take_register};

} // namespace

bool Sim_Number_Of_Text(const char *text, uint32_t most, uint32_t *number)
{
    const bool hexadecimal = text[0] == '0' && text[1] == 'x';
    const char *digits = hexadecimal ? text + 2 : text;
    const char *known = hexadecimal ? "0123456789abcdefABCDEF" : "0123456789";
    if (*digits == '\0' || digits[strspn(digits, known)] != '\0') {
        return false;
    }
    errno = 0;
    const unsigned long long value = strtoull(digits, nullptr, hexadecimal ? 16 : 10);
    if (errno != 0 || value > most) {
        return false;
    }
    *number = static_cast<uint32_t>(value);
    return true;
}

bool Sim_Fault_Of_Text(const char *text, Sim_Fault *fault)
{
    Sim_Fault read = {SIM_FAULT_FAIL, 0, 1, SIM_ANY, SIM_ANY};
    for (const Take take : FIELDS) {
        if (!take_field(&text, take, &read)) {
            return false;
        }
        if (*text == '\0') {
            break;
        }
        ++text;
    }
    /* A text that goes on has a field too many, or a colon behind the last one. */
    if (read.first == 0 || *text != '\0' || text[-1] == ':') {
        return false;
    }
    *fault = read;
    return true;
}
