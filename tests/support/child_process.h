#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/* A pipe whose ends close when a program is started. */
struct Pipe {
    int readEnd;
    int writeEnd;
};

/* Throws std::runtime_error when there is none. */
Pipe make_pipe();

/* All bytes until the other end is closed; closes this one. */
std::string read_all(int descriptor);

/* For execve() and its kind; valid as long as the texts are. */
std::vector<char *> pointers(const std::vector<std::string> &texts);

/* Whether somebody reads a program's standard output from its start on. */
enum class Reader { THERE, GONE };

/*
 * A program started with an empty standard input, its standard output and standard error in two
 * pipes, which its own children keep open. Killed and waited for at the end when it still runs.
 */
class Child_Process
{
public:
    /* command: a path, or a name to find in PATH, and the arguments. Throws std::runtime_error when
     * it cannot be started. */
    explicit Child_Process(const std::vector<std::string> &command, Reader reader = Reader::THERE);
    ~Child_Process();
    Child_Process(const Child_Process &) = delete;
    Child_Process &operator=(const Child_Process &) = delete;

    pid_t id() const { return process_; }

    /* Waits for the end of the program. Returns its exit status, or 1000 and the signal's number.
     */
    int wait();

    /* Reads standard output until it ends, or the text came up, or nothing came for ten seconds. */
    const std::string &read_until(const std::string &text);

    /* The whole standard output, read to its end; standard error likewise. */
    std::string output();
    std::string errors();

    /* Closes the reading end of standard output. */
    void stop_reading();

private:
    pid_t process_ = -1;
    int output_;
    int errors_;
    std::string read_;
};

/* What Child_Process::wait() returns, for a status as waitpid() gives it. */
int exit_status(int status);
