#pragma once

#include <cstddef>
#include <getopt.h>
#include <span>
#include <vector>

/*
 * The command line of a program, read with getopt_long(3): long options, whose value is the next
 * argument or stands after "=", and operands, in any order; after "--" all are operands. Every
 * program has --help, which prints its usage, and --version, which prints its name and version.
 * A shortened option is unknown: it would change its meaning with the next option that begins like
 * it. One thread, once in a process.
 */

/* Returned by ReadArguments: the program is to do its work. */
inline constexpr int GO_ON = -1;
/* The exit status after arguments that are no good. */
inline constexpr int BAD_USAGE = 2;

struct Program {
    const char *name;
    const char *usage; /* whole, line feeds included */
};

enum class Taken {
    YES,
    NO,      /* the value is no such value */
    ANSWERED /* the option is a question, whose answer has been printed: nothing else is to do */
};

constexpr Taken TakenIf(bool good)
{
    return good ? Taken::YES : Taken::NO;
}

template <typename Options>
struct Option_Row {
    const char *name;  /* without its dashes */
    const char *value; /* what the value must be, as a refusal says it; null: it takes none */
    /* The value is null where it takes none. */
    Taken (*take)(Options *options, const char *value);
};

/* Takes an operand. Returns null, or why not, as a text that the operand completes. */
template <typename Options>
using Take_Operand = const char *(*)(Options *options, const char *operand);

/* The take of an option that sets a flag. */
template <typename Options, bool Options::*Flag>
Taken SetFlag(Options *options, const char * /*value*/)
{
    options->*Flag = true;
    return Taken::YES;
}

/* The take of an option whose value may be any text but an empty one. */
template <typename Options, const char *Options::*Text>
Taken SetText(Options *options, const char *value)
{
    options->*Text = value;
    return TakenIf(*value != '\0');
}

/* When text is "--help" or "--version", prints the answer on standard output. False for any other
 * text. */
bool AnswerQuestion(const Program &program, const char *text);

/* Prints "NAME: MESSAGESUBJECT" and the usage on standard error. Returns BAD_USAGE. */
int RefuseUsage(const Program &program, const char *message, const char *subject = "");

/* The same of "--OPTION needs VALUE", and of the text that was given in its place unless null. */
int RefuseValue(const Program &program, const char *option, const char *value, const char *text);

/* What stands next on a command line. */
struct Argument {
    enum Kind { OPTION, OPTION_WITHOUT_VALUE, OPERAND, UNKNOWN_OPTION, QUESTION, END } kind;
    size_t option;    /* of the first two: its place in the list */
    const char *text; /* the option's value, or the argument as it was typed; null without one */
};

struct Argument_Reader {
    std::span<char *const> arguments; /* those of main */
    std::vector<option> options;      /* the program's own, as getopt_long takes them */
    bool operandsOnly;                /* "--" has been read */
};
Argument NextArgument(Argument_Reader *reader);

/*
 * Reads all arguments, those of main, into options; takeOperand is null for a program without
 * operands. Returns GO_ON, or the exit status of a program that has nothing to do: 0 after a
 * question such as --help, whatever comes after it, BAD_USAGE after the first argument that is
 * refused; each has printed its text.
 */
template <typename Options, size_t Rows>
int ReadArguments(const Program &program, const Option_Row<Options> (&rows)[Rows],
                  Take_Operand<Options> takeOperand, std::span<char *const> arguments,
                  Options *options)
{
    Argument_Reader reader = {arguments, {}, false};
    for (const Option_Row<Options> &row : rows) {
        reader.options.push_back({row.name, row.value != nullptr, nullptr, 0});
    }
    for (;;) {
        const Argument next = NextArgument(&reader);
        const Option_Row<Options> &row = rows[next.option];
        const char *refusal = nullptr;
        switch (next.kind) {
        case Argument::OPTION:
            switch (row.take(options, next.text)) {
            case Taken::YES:
                break;
            case Taken::NO:
                return RefuseValue(program, row.name, row.value, next.text);
            case Taken::ANSWERED:
                return 0;
            }
            break;
        case Argument::OPTION_WITHOUT_VALUE:
            return RefuseValue(program, row.name, row.value, nullptr);
        case Argument::OPERAND:
            refusal = takeOperand != nullptr ? takeOperand(options, next.text) : "not an option: ";
            break;
        case Argument::UNKNOWN_OPTION:
            refusal = "unknown option: ";
            break;
        case Argument::QUESTION:
            AnswerQuestion(program, next.text);
            return 0;
        case Argument::END:
            return GO_ON;
        }
        if (refusal != nullptr) {
            return RefuseUsage(program, refusal, next.text);
        }
    }
}
