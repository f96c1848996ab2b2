#include "programs/arguments.h"

#include <cstdio>
#include <cstring>

namespace
{

constexpr int OPERAND_FOUND = 1;    /* getopt_long's answer, with "-" before its letters */
constexpr int FIRST_OPTION = 0x100; /* what an option is answered as: above every letter */

/* The argument in which getopt_long has just found an option. */
const char *typed_option(std::span<char *const> arguments)
{
    const char *const last = arguments[static_cast<size_t>(optind) - 1];
    const bool valueApart = optarg != nullptr && optarg == last;
    return valueApart ? arguments[static_cast<size_t>(optind) - 2] : last;
}

/* The argument of the unknown letter that getopt_long has just met; it stays there while more
 * letters follow. */
const char *typed_letter(std::span<char *const> arguments)
{
    const char *const last = arguments[static_cast<size_t>(optind) - 1];
    const bool alone = last[0] == '-' && last[1] == optopt && last[2] == '\0';
    return alone ? last : arguments[static_cast<size_t>(optind)];
}

bool is_whole(const char *argument, const char *name)
{
    const size_t length = strlen(name);
    const char *const text = argument + strlen("--");
    return strncmp(text, name, length) == 0 && (text[length] == '\0' || text[length] == '=');
}

/* options: those of the reader, then the two questions; answer: what getopt_long has called it. */
Argument found_option(const Argument_Reader &reader, const std::vector<option> &options, int answer)
{
    const size_t place = static_cast<size_t>(answer - FIRST_OPTION);
    const char *const argument = typed_option(reader.arguments);
    if (!is_whole(argument, options[place].name)) {
        return {Argument::UNKNOWN_OPTION, 0, argument};
    }
    if (place >= reader.options.size()) {
        return {Argument::QUESTION, 0, argument};
    }
    return {Argument::OPTION, place, optarg};
}

Argument found_operand(const char *argument)
{
    const bool dash = strcmp(argument, "-") == 0;
    return {dash ? Argument::UNKNOWN_OPTION : Argument::OPERAND, 0, argument};
}

Argument next_operand(std::span<char *const> arguments)
{
    if (static_cast<size_t>(optind) >= arguments.size()) {
        return {Argument::END, 0, nullptr};
    }
    return {Argument::OPERAND, 0, arguments[static_cast<size_t>(optind++)]};
}

std::vector<option> with_questions(std::vector<option> options)
{
    options.push_back({"help", no_argument, nullptr, 0});
    options.push_back({"version", no_argument, nullptr, 0});
    for (size_t place = 0; place < options.size(); ++place) {
        options[place].val = FIRST_OPTION + static_cast<int>(place);
    }
    options.push_back({});
    return options;
}

} // namespace

bool AnswerQuestion(const Program &program, const char *text)
{
    if (strcmp(text, "--help") == 0) {
        fputs(program.usage, stdout);
        return true;
    }
    if (strcmp(text, "--version") == 0) {
        printf("%s %s\n", program.name, GATEWAY_VERSION);
        return true;
    }
    return false;
}

int RefuseUsage(const Program &program, const char *message, const char *subject)
{
    fprintf(stderr, "%s: %s%s\n%s", program.name, message, subject, program.usage);
    return BAD_USAGE;
}

int RefuseValue(const Program &program, const char *option, const char *value, const char *text)
{
    fprintf(stderr, "%s: --%s needs %s%s%s\n%s", program.name, option, value,
            text == nullptr ? "" : ": ", text == nullptr ? "" : text, program.usage);
    return BAD_USAGE;
}

Argument NextArgument(Argument_Reader *reader)
{
    if (reader->operandsOnly) {
        return next_operand(reader->arguments);
    }
    const std::vector<option> options = with_questions(reader->options);
    opterr = 0; /* refusals are printed in our own words */
    const int found = getopt_long(static_cast<int>(reader->arguments.size()),
                                  reader->arguments.data(), "-:", options.data(), nullptr);
    if (found >= FIRST_OPTION) {
        return found_option(*reader, options, found);
    }
    switch (found) {
    case OPERAND_FOUND:
        return found_operand(optarg);
    case ':': {
        Argument argument = found_option(*reader, options, optopt);
        if (argument.kind == Argument::OPTION) {
            argument.kind = Argument::OPTION_WITHOUT_VALUE;
        }
        return argument;
    }
    case '?': {
        const bool letter = optopt != 0 && optopt < FIRST_OPTION;
        return {Argument::UNKNOWN_OPTION, 0,
                letter ? typed_letter(reader->arguments) : typed_option(reader->arguments)};
    }
    default:
        reader->operandsOnly = true;
        return next_operand(reader->arguments);
    }
}
