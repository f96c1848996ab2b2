#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/* The built switch_console as a process of its own. */

struct Program_Run {
    int status; /* as waitpid gives it */
    std::string output;
    std::string errors;

    bool operator==(const Program_Run &) const = default;
};

inline void PrintTo(const Program_Run &run, std::ostream *out)
{
    *out << "status " << run.status << "\n--- output\n"
         << run.output << "--- errors\n"
         << run.errors;
}

/* Runs it with `typed`, of 60,000 bytes at most, in a pipe as its standard input. */
Program_Run run_in_pipe(const std::vector<std::string> &arguments, const std::string &typed);

/* The same with a pipe as its standard output that nobody reads any more. */
Program_Run run_without_a_reader(const std::vector<std::string> &arguments,
                                 const std::string &typed);

/* Runs it in a terminal of its own that neither echoes nor changes line ends. */
class Terminal_Session
{
public:
    explicit Terminal_Session(const std::vector<std::string> &arguments);
    ~Terminal_Session();
    Terminal_Session(const Terminal_Session &) = delete;
    Terminal_Session &operator=(const Terminal_Session &) = delete;

    void type(const std::string &text) const;

    /* Waits until `shown` is at least as long as `length`, or for ten seconds, or for the end. */
    void wait_for(size_t length);

    /* What the program has in memory for itself alone now, in KiB; 0 when it has ended. */
    size_t private_memory() const;

    /* Waits for the end of the program; its status as waitpid gives it. */
    int finish();

    std::string shown; /* all that the terminal has shown so far */

private:
    bool read_more();

    int terminal_;
    int process_;
};

/* As waitpid gives the status of a program that ended with `code`. */
constexpr int exit_status(int code)
{
    return code << 8;
}
