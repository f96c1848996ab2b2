#include "tests/switch/config/plain_reader.h"

#include "tests/switch/config/words.h"

#include <cstring>
#include <vector>

namespace
{

struct Entry {
    std::string section, name, value;
    int sectionLine, sectionColumn, nameLine, nameColumn, valueLine, valueColumn;
};

bool is_one_of(char character, const char *characters)
{
    return character != '\0' && strchr(characters, character) != nullptr;
}

bool is_blank(char c)
{
    return is_one_of(c, " \t");
}

bool is_line_end(char c)
{
    return is_one_of(c, "\r\n");
}

bool is_digit(char c)
{
    return is_one_of(c, "0123456789");
}

bool is_word(char c)
{
    return is_one_of(c, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_");
}

/* One character in one state: the next state, or -1 for a syntax error. */
int step(int state, char c, int line, int column, Entry *entry, std::vector<Entry> *entries)
{
    switch (state) {
    case 0:
        return c == '[' ? 1 : is_blank(c) || is_line_end(c) ? 0 : -1;
    case 1:
        if (!is_word(c)) {
            return -1;
        }
        *entry = {std::string(1, c), "", "", line, column, 0, 0, 0, 0};
        return 2;
    case 2:
        if (c == ']') {
            return 3;
        }
        entry->section += c;
        return is_word(c) || is_digit(c) ? 2 : -1;
    case 3:
        if (is_word(c)) {
            entry->name = c;
            entry->nameLine = line;
            entry->nameColumn = column;
            return 4;
        }
        return c == '[' ? 1 : is_blank(c) || is_line_end(c) ? 3 : -1;
    case 4:
        if (is_word(c) || is_digit(c)) {
            entry->name += c;
            return 4;
        }
        return is_blank(c) ? 5 : c == '=' ? 6 : -1;
    case 5:
        return is_blank(c) ? 5 : c == '=' ? 6 : -1;
    case 6:
    case 7:
        if (is_blank(c)) {
            return 7;
        }
        entry->value = c;
        entry->valueLine = line;
        entry->valueColumn = column;
        return is_word(c) || is_digit(c) ? 8 : c == '"' ? 9 : -1;
    case 8:
        if (is_word(c) || is_digit(c)) {
            entry->value += c;
            return 8;
        }
        if (!is_blank(c) && !is_line_end(c)) {
            return -1;
        }
        entries->push_back(*entry);
        return 3;
    default:
        if (!is_line_end(c)) {
            entry->value += c;
        }
        if (!is_line_end(c) && c != '"') {
            return 9;
        }
        entries->push_back(*entry);
        return 3;
    }
}

bool split(const std::string &text, std::vector<Entry> *entries)
{
    Entry entry = {};
    int state = 0;
    int line = 1;
    int column = 1;
    for (const char c : text) {
        if (!is_blank(c) && !is_line_end(c) && !is_digit(c) && !is_word(c) &&
            !is_one_of(c, "[]=\"")) {
            return true;
        }
        state = step(state, c, line, column, &entry, entries);
        if (state < 0) {
            return false;
        }
        column = is_line_end(c) ? 1 : column + 1;
        line += is_line_end(c) ? 1 : 0;
    }
    return true;
}

constexpr int UNDEFINED = 83;

int word_number(const std::string &text)
{
    for (uint32_t number = 0; number < WORD_COUNT; number++) {
        if (text == WORDS[number]) {
            return static_cast<int>(number);
        }
    }
    return UNDEFINED;
}

bool is_number(const std::string &text)
{
    return text.find_first_not_of("0123456789") == std::string::npos;
}

int64_t number_of(const std::string &digits)
{
    int64_t number = 0;
    for (const char digit : digits) {
        number = number * 10 + (digit - '0');
        number = number > 2147483647 ? 2147483647 : number;
    }
    return number;
}

/* The number of a text that is prefix and a number below end, not less than first; else -1. */
int numbered(const std::string &text, const std::string &prefix, int first, int end)
{
    if (!text.starts_with(prefix) || !is_number(text.substr(prefix.size()))) {
        return -1;
    }
    const int64_t number = number_of(text.substr(prefix.size()));
    return number >= first && number < end ? static_cast<int>(number) : -1;
}

std::string at(int line, int column)
{
    return std::string("[").append(std::to_string(line)) + "][" + std::to_string(column) + "]";
}

/* The value as a number of its kind, -1 when the key does not accept it. */
int64_t accepted(const std::string &value, int first, int last, int firstValue)
{
    const int number = word_number(value);
    return number >= first && number <= last ? number - first + firstValue : -1;
}

template <class Field>
bool put(Field *field, int64_t value)
{
    if (value >= 0) {
        *field = static_cast<Field>(value);
    }
    return value >= 0;
}

enum { STORED, BAD_NAME, BAD_VALUE };

int store_port(const Entry &entry, int n, int key, SW_Config *config)
{
    SW_Port_Config *port = &config->ports[n];
    uint32_t *const fields[] = {&port->portType,        &port->autoMode,   nullptr,
                                &port->vidForceDefault, &port->dot1qMode,  &port->discardTagged,
                                &port->discardUntagged, &port->egressMode, &port->useCoreTag,
                                &port->egressRate,      &port->limitMgmt,  &port->countIfg,
                                &port->countPre,        &port->pri0Rate,   &port->pri1Rate,
                                &port->pri2Rate,        &port->pri3Rate,   &port->prioMapRule,
                                &port->ipPrio,          &port->userPrio};
    const int64_t number = is_number(entry.value) ? number_of(entry.value) : -1;
    bool good = false;
    if (key == 80) {
        good = put(&config->vlanPortType[n],
                   entry.value == "NO" ? 0 : accepted(entry.value, 40, 43, 1));
    } else if (key == 81) {
        const bool quoted = entry.value.front() == '"' && entry.value.back() == '"';
        const std::string list =
            entry.value.size() < 3 ? "" : entry.value.substr(1, entry.value.size() - 2);
        good = quoted && list.size() < 100;
        if (good) {
            strncpy(config->vlanPortList[n], list.c_str(), 100);
        }
    } else if (key < 50 || key > 70) {
        return BAD_NAME;
    } else if (key == 52) {
        good = put(&port->vid, number);
    } else if (key == 70) {
        good = put(&port->portPrio, number);
    } else {
        const int64_t value = key == 50                ? accepted(entry.value, 4, 6, 1)
                              : key == 51              ? accepted(entry.value, 7, 18, 0)
                              : key == 54              ? accepted(entry.value, 19, 22, 0)
                              : key == 57              ? accepted(entry.value, 23, 26, 0)
                              : key == 59 || key == 63 ? accepted(entry.value, 27, 39, 0)
                                                       : accepted(entry.value, 0, 1, 0);
        good = put(fields[key - 50], value);
    }
    return good ? STORED : BAD_VALUE;
}

int store_vlan(const Entry &entry, int n, int key, int index, SW_Config *config)
{
    Vlan_Table_Entry *vlan = &config->vlans[n].vtu;
    const int64_t number = is_number(entry.value) ? number_of(entry.value) : -1;
    const int64_t flag = accepted(entry.value, 0, 1, 0);
    if (key < 71 || key > 78) {
        return BAD_NAME;
    }
    if (key >= 77 && index < 0) {
        return STORED;
    }
    const bool good = key == 71   ? put(&vlan->dbNum, number)
                      : key == 72 ? put(&vlan->vid, number)
                      : key == 73 ? put(&vlan->vidPriOverride, flag)
                      : key == 74 ? put(&vlan->vidPriority, number)
                      : key == 75 ? put(&vlan->sid, number)
                      : key == 76 ? put(&vlan->vidPolicy, flag)
                      : key == 77 ? put(&vlan->memberTagP[index], number)
                                  : put(&vlan->portStateP[index], number);
    if (good) {
        config->vlans[n].defined = 1;
    }
    return good ? STORED : BAD_VALUE;
}

int store(const Entry &entry, int section, int n, int key, int index, SW_Config *config)
{
    if ((section == 45 || section == 46) && n < 0) {
        return STORED;
    }
    if (section == 45) {
        return store_port(entry, n, key, config);
    }
    if (section == 46) {
        return store_vlan(entry, n, key, index, config);
    }
    if (section == 44) {
        if (key != 49) {
            return BAD_NAME;
        }
        return put(&config->maxFrameSize, accepted(entry.value, 2, 3, 0)) ? STORED : BAD_VALUE;
    }
    if (key != 79) {
        return BAD_NAME;
    }
    if (index < 0) {
        return STORED;
    }
    uint8_t *field = section == 47 ? &config->cosUserPrio[index] : &config->cosDscp[index];
    return put(field, is_number(entry.value) ? number_of(entry.value) : -1) ? STORED : BAD_VALUE;
}

/* Converts one entry; the lines that it gives. */
std::string convert(const Entry &entry, SW_Config *config)
{
    int section = word_number(entry.section);
    int n = -1;
    if (section == UNDEFINED && (n = numbered(entry.section, "SW_PORT", 0, 5)) >= 0) {
        section = 45;
    }
    if (section == UNDEFINED && (n = numbered(entry.section, "SW_VLAN", 1, 4096)) >= 0) {
        section = 46;
    }
    int key = word_number(entry.name);
    int index = -1;
    if (key == UNDEFINED && (index = numbered(entry.name, "MEMBER_TAG_P", 0, 11)) >= 0) {
        key = 77;
    }
    if (key == UNDEFINED && (index = numbered(entry.name, "PORT_STATE_P", 0, 11)) >= 0) {
        key = 78;
    }
    const int values = section == 47 ? 8 : section == 48 ? 64 : 0;
    if (key == UNDEFINED && (index = numbered(entry.name, "V", 0, values)) >= 0) {
        key = 79;
    }
    const int value = word_number(entry.value);
    const bool quoted = entry.value.front() == '"' && entry.value.back() == '"';

    std::string lines;
    const bool badSection = section < 44 || section > 48;
    if (badSection) {
        lines += "ERROR: " + at(entry.sectionLine, entry.sectionColumn) + ": Section \"" +
                 entry.section + "\" - \"" + WORDS[section] + "\"\n";
    }
    if (key < 49 || key > 81) {
        lines += "ERROR: " + at(entry.nameLine, entry.nameColumn) + "[\"" + entry.section +
                 "\"]: Name \"" + entry.name + "\" - \"" + WORDS[key] + "\"\n";
    }
    if (value >= 44 && !is_number(entry.value) && !quoted) {
        lines += "ERROR: " + at(entry.valueLine, entry.valueColumn) + "[\"" + entry.section +
                 "\"][\"" + entry.name + "\"]: Value \"" + entry.value + "\" - \"" + WORDS[value] +
                 "\"\n";
    }
    const std::string place = std::string("[").append(std::to_string(entry.sectionLine)) + ":" +
                              std::to_string(entry.sectionColumn) + "][" + entry.section + "]";
    if (badSection) {
        return lines + place + " - bad section name\n";
    }
    const int outcome = store(entry, section, n, key, index, config);
    if (outcome == BAD_NAME) {
        lines += place + " " + entry.name + " - bad variable name\n";
    }
    if (outcome == BAD_VALUE) {
        lines += place + " " + entry.name + " = " + entry.value + " - bad variable value\n";
    }
    return lines;
}

} // namespace

bool ReadPlainly(const std::string &text, SW_Config *config, std::string *output)
{
    std::vector<Entry> entries;
    if (!split(text, &entries)) {
        return false;
    }
    for (const Entry &entry : entries) {
        *output += convert(entry, config);
    }
    config->vlanEntryCount = 0;
    for (const SW_Vlan_Entry &vlan : config->vlans) {
        config->vlanEntryCount += vlan.defined != 0 ? 1U : 0U;
    }
    return output->empty();
}
