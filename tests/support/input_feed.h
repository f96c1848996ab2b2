#pragma once

#include "tests/support/output_capture.h"

#include <string>
#include <string_view>

/*
 * Gives the process a standard input of the test's own: the text, then the end of input. What
 * standard input had read ahead before is dropped; the old one is put back by the destructor.
 */
class Input_Feed
{
public:
    explicit Input_Feed(std::string_view text);
    ~Input_Feed();
    Input_Feed(const Input_Feed &) = delete;
    Input_Feed &operator=(const Input_Feed &) = delete;

    /* Takes all that was not read yet. */
    std::string rest();

private:
    int saved_;
};

/* What a piece of the console printed on standard output, and what it left of its input. */
struct Console_Run {
    std::string output;
    std::string rest;
};

/* Runs action with `typed` as its whole standard input. */
template <class Action>
Console_Run run_console(std::string_view typed, const Action &action)
{
    Input_Feed input(typed);
    Output_Capture output;
    action();
    Console_Run run;
    run.output = output.finish();
    run.rest = input.rest();
    return run;
}
