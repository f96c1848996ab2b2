#include "switch/config/writer.h"

#include "switch/config/fields.h"
#include "switch/config/key_texts.h"

#include <charconv>
#include <cstring>
#include <sys/stat.h>

namespace
{

/* Longest header, or pair with its line end. */
constexpr size_t LONGEST_PIECE = SW_Key_Text::CAPACITY + SW_RANGE_TEXT_SIZE + 4;

/* The stream gets whole blocks, which it passes on without a copy. */
constexpr size_t BLOCK = 65536;

struct Output {
    FILE *stream;
    size_t used;
    char text[BLOCK + LONGEST_PIECE];
};

void hand_over(Output *output, size_t size)
{
    fwrite(output->text, 1, size, output->stream);
    output->used -= size;
    memmove(output->text, output->text + size, output->used);
}

/* The place of the next piece, with room for the longest one. */
char *next_piece(Output *output)
{
    if (output->used >= BLOCK) {
        hand_over(output, BLOCK);
    }
    return output->text + output->used;
}

void end_piece(Output *output, const char *end)
{
    output->used = static_cast<size_t>(end - output->text);
}

char *append_text(char *at, std::string_view text)
{
    memcpy(at, text.data(), text.size());
    return at + text.size();
}

char *append_number(char *at, uint32_t number)
{
    if (number < 10) {
        *at = static_cast<char>('0' + number);
        return at + 1;
    }
    constexpr size_t MOST_DIGITS = 10;
    return std::to_chars(at, at + MOST_DIGITS, number).ptr;
}

char *append_list(char *at, const unsigned char *field)
{
    char text[SW_RANGE_TEXT_SIZE];
    memcpy(text, field, sizeof text);
    *at++ = '"';
    at = append_text(at, {text, strnlen(text, sizeof text)});
    *at++ = '"';
    return at;
}

char *append_value(char *at, const SW_Config_Key &key, const unsigned char *field)
{
    switch (key.kind) {
    case SW_Value_Kind::NUMBER:
        return append_number(at, LoadField(field, key.size));
    case SW_Value_Kind::WORD:
        return append_text(at, key.words->text(LoadField(field, key.size)));
    case SW_Value_Kind::LIST:
        break;
    }
    return append_list(at, field);
}

/* One key, or all indexes of one, from the field of section number 0. */
void write_key(Output *output, size_t row, const unsigned char *field)
{
    const SW_Config_Key &key = SW_CONFIG_KEYS[row];
    const SW_Key_Text *texts = &SW_KEY_TEXTS.texts[SW_KEY_TEXTS.first[row]];
    for (int index = 0; index == 0 || index < key.indexes; index++) {
        char *at = next_piece(output);
        if (index > 0 && index % key.perLine == 0) {
            *at++ = '\n';
        }
        if (texts[index].afterBlank) {
            *at++ = ' ';
        }
        memcpy(at, texts[index].text, SW_Key_Text::CAPACITY);
        at = append_value(at + texts[index].length, key, field);
        field += key.size;
        end_piece(output, at);
    }
    if (key.endsLine) {
        output->text[output->used++] = '\n';
    }
}

void write_header(Output *output, const SW_Config_Section &section, int number)
{
    char *at = next_piece(output);
    *at++ = '[';
    at = append_text(at, KeywordWord(section.keyword));
    if (section.numbers > 0) {
        at = append_number(at, static_cast<uint32_t>(number));
    }
    end_piece(output, append_text(at, "]\n"));
}

void write_section(Output *output, const SW_Config *config, const SW_Config_Section &section,
                   int number)
{
    const unsigned char *record = reinterpret_cast<const unsigned char *>(config);
    write_header(output, section, number);
    for (size_t row = 0; row < SW_CONFIG_KEY_COUNT; row++) {
        const SW_Config_Key &key = SW_CONFIG_KEYS[row];
        if (key.section == section.keyword) {
            write_key(output, row, record + FieldOffset(key, static_cast<size_t>(number), 0));
        }
    }
}

/* To open a FIFO would wait for a reader. */
bool is_fifo(const char *path)
{
    struct stat status = {};
    return stat(path, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

bool WriteSwitchConfig(const SW_Config *config, FILE *stream)
{
    if (stream == nullptr) {
        return false;
    }
    Output output;
    output.stream = stream;
    output.used = 0;
    for (const SW_Config_Section &section : SW_CONFIG_SECTIONS) {
        /* Meant: VLAN 0 is written if it is defined, although the reader refuses its section. */
        const int end = section.numbers == 0 ? 1 : section.firstNumber + section.numbers;
        for (int number = 0; number < end; number++) {
            if (section.keyword != SW_Config_Keyword_SW_VLAN ||
                config->vlans[number].defined != 0) {
                write_section(&output, config, section, number);
            }
        }
    }
    hand_over(&output, output.used);
    return true;
}

bool SaveSwitchConfigFile(const SW_Config *config, const char *path)
{
    FILE *file = is_fifo(path) ? nullptr : fopen(path, "w");
    if (file == nullptr) {
        return false;
    }
    WriteSwitchConfig(config, file);
    fclose(file);
    return true;
}
