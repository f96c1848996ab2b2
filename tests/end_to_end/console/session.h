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

/* What a session types into and reads: a terminal that neither echoes nor changes line ends, or a
 * pipe each way, for which stdio holds output back until it is flushed. */
enum class Line { TERMINAL, PIPES };

/* Runs it while the test types and looks at what shows. */
class Live_Session
{
public:
    explicit Live_Session(const std::vector<std::string> &arguments, Line line = Line::TERMINAL);
    ~Live_Session();
    Live_Session(const Live_Session &) = delete;
    Live_Session &operator=(const Live_Session &) = delete;

    void type(const std::string &text) const;

    /* Waits until `shown` is at least as long as `length`, or for ten seconds, or for the end. */
    void wait_for(size_t length);

    /* What the program has in memory for itself alone now, in KiB; 0 when it has ended. */
    size_t private_memory() const;

    /* Waits for the end of the program; its status as waitpid gives it. */
    int finish();

    std::string shown; /* all that the program has shown so far */

private:
    bool read_more();

    void start_in_terminal(const std::vector<std::string> &arguments);
    void start_in_pipes(const std::vector<std::string> &arguments);

    int typed_ = -1;   /* to the program */
    int printed_ = -1; /* from it */
    int process_ = -1;
};

/* As waitpid gives the status of a program that ended with `code`. */
constexpr int exit_status(int code)
{
    return code << 8;
}
