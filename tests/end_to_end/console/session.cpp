#include "tests/end_to_end/console/session.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace
{

constexpr int TEN_SECONDS = 10000;

[[noreturn]] void become(const std::vector<std::string> &arguments)
{
    signal(SIGINT, SIG_DFL); /* a job in the background of a script has it ignored */
    std::vector<char *> list = {const_cast<char *>(SWITCH_CONSOLE)};
    for (const std::string &argument : arguments) {
        list.push_back(const_cast<char *>(argument.c_str()));
    }
    list.push_back(nullptr);
    execv(SWITCH_CONSOLE, list.data());
    _exit(127);
}

std::string read_from_start(int file)
{
    std::string text;
    char block[65536];
    ssize_t got = 0;
    lseek(file, 0, SEEK_SET);
    while ((got = read(file, block, sizeof block)) > 0) {
        text.append(block, static_cast<size_t>(got));
    }
    close(file);
    return text;
}

int wait_for_end(int process)
{
    int status = -1;
    waitpid(process, &status, 0);
    return status;
}

int memory_file(const char *name)
{
    const int file = memfd_create(name, MFD_CLOEXEC);
    if (file < 0) {
        throw std::runtime_error("no memory file");
    }
    return file;
}

int run_with(const std::vector<std::string> &arguments, const std::string &typed, int output,
             int errors)
{
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    if (write(ends[1], typed.data(), typed.size()) != static_cast<ssize_t>(typed.size())) {
        throw std::runtime_error("the pipe is too small");
    }
    close(ends[1]);
    std::fflush(nullptr);
    const pid_t process = fork();
    if (process == 0) {
        dup2(ends[0], 0);
        dup2(output, 1);
        dup2(errors, 2);
        become(arguments);
    }
    close(ends[0]);
    return wait_for_end(process);
}

} // namespace

Program_Run run_in_pipe(const std::vector<std::string> &arguments, const std::string &typed)
{
    const int output = memory_file("output");
    const int errors = memory_file("errors");
    const int status = run_with(arguments, typed, output, errors);
    return {status, read_from_start(output), read_from_start(errors)};
}

Program_Run run_without_a_reader(const std::vector<std::string> &arguments,
                                 const std::string &typed)
{
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    close(ends[0]);
    const int errors = memory_file("errors");
    const int status = run_with(arguments, typed, ends[1], errors);
    close(ends[1]);
    return {status, "", read_from_start(errors)};
}

Live_Session::Live_Session(const std::vector<std::string> &arguments, Line line)
{
    std::fflush(nullptr);
    if (line == Line::TERMINAL) {
        start_in_terminal(arguments);
    } else {
        start_in_pipes(arguments);
    }
    if (process_ < 0) {
        throw std::runtime_error("no session");
    }
}

void Live_Session::start_in_terminal(const std::vector<std::string> &arguments)
{
    /* An ordinary terminal: whole lines, Ctrl-C and Ctrl-D. */
    termios settings = {};
    settings.c_lflag = ICANON | ISIG;
    settings.c_cflag = CS8 | CREAD;
    settings.c_cc[VINTR] = 3;
    settings.c_cc[VEOF] = 4;
    cfsetispeed(&settings, B38400);
    cfsetospeed(&settings, B38400);
    process_ = forkpty(&printed_, nullptr, &settings, nullptr);
    if (process_ == 0) {
        become(arguments);
    }
    typed_ = dup(printed_);
}

void Live_Session::start_in_pipes(const std::vector<std::string> &arguments)
{
    int input[2];
    int output[2];
    if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipes");
    }
    process_ = fork();
    if (process_ == 0) {
        dup2(input[0], 0);
        dup2(output[1], 1);
        dup2(output[1], 2);
        become(arguments);
    }
    close(input[0]);
    close(output[1]);
    typed_ = input[1];
    printed_ = output[0];
}

Live_Session::~Live_Session()
{
    if (process_ > 0) {
        kill(process_, SIGKILL);
        wait_for_end(process_);
    }
    close(typed_);
    close(printed_);
}

void Live_Session::type(const std::string &text) const
{
    if (write(typed_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        throw std::runtime_error("the program takes no input");
    }
}

/* False when nothing came for ten seconds, or nothing can come any more. */
bool Live_Session::read_more()
{
    pollfd waiting = {printed_, POLLIN, 0};
    if (poll(&waiting, 1, TEN_SECONDS) <= 0) {
        return false;
    }
    char block[4096];
    const ssize_t got = read(printed_, block, sizeof block);
    if (got > 0) {
        shown.append(block, static_cast<size_t>(got));
    }
    return got > 0;
}

void Live_Session::wait_for(size_t length)
{
    while (shown.size() < length && read_more()) {
    }
}

size_t Live_Session::private_memory() const
{
    std::ifstream status("/proc/" + std::to_string(process_) + "/status");
    std::string line;
    while (std::getline(status, line)) {
        size_t kib = 0;
        if (std::sscanf(line.c_str(), "RssAnon: %zu kB", &kib) == 1) {
            return kib;
        }
    }
    return 0;
}

int Live_Session::finish()
{
    while (read_more()) {
    }
    /* A program that hangs is ended by the destructor. */
    int status = -1;
    for (int tries = 0; tries < 1000 && waitpid(process_, &status, WNOHANG) == 0; tries++) {
        usleep(10000);
    }
    if (status != -1) {
        process_ = -1;
    }
    return status;
}
