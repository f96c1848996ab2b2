#include "tests/support/child_process.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace
{

constexpr int PATIENCE_MILLISECONDS = 10000;

} // namespace

Pipe make_pipe()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return {ends[0], ends[1]};
}

std::string read_all(int descriptor)
{
    std::string text;
    char block[4096];
    ssize_t got = 0;
    while ((got = read(descriptor, block, sizeof block)) > 0) {
        text.append(block, static_cast<size_t>(got));
    }
    close(descriptor);
    return text;
}

std::vector<char *> pointers(const std::vector<std::string> &texts)
{
    std::vector<char *> list;
    for (const std::string &text : texts) {
        list.push_back(const_cast<char *>(text.c_str()));
    }
    list.push_back(nullptr);
    return list;
}

int exit_status(int status)
{
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

Child_Process::Child_Process(const std::vector<std::string> &command, Reader reader)
{
    const Pipe output = make_pipe();
    const Pipe errors = make_pipe();
    output_ = output.readEnd;
    errors_ = errors.readEnd;
    if (reader == Reader::GONE) {
        stop_reading();
    }

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output.writeEnd, 1);
    posix_spawn_file_actions_adddup2(&actions, errors.writeEnd, 2);
    const int result = posix_spawnp(&process_, command.front().c_str(), &actions, nullptr,
                                    pointers(command).data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(output.writeEnd);
    close(errors.writeEnd);
    if (result != 0) {
        throw std::runtime_error(command.front() + ": " + std::strerror(result));
    }
}

Child_Process::~Child_Process()
{
    if (process_ > 0) {
        kill(process_, SIGKILL);
        wait();
    }
    stop_reading();
    close(errors_);
}

int Child_Process::wait()
{
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return exit_status(status);
}

const std::string &Child_Process::read_until(const std::string &text)
{
    pollfd watched{output_, POLLIN, 0};
    while (read_.find(text) == std::string::npos && poll(&watched, 1, PATIENCE_MILLISECONDS) > 0) {
        char block[4096];
        const ssize_t got = read(output_, block, sizeof block);
        if (got <= 0) {
            break;
        }
        read_.append(block, static_cast<size_t>(got));
    }
    return read_;
}

std::string Child_Process::output()
{
    return read_ + read_all(std::exchange(output_, -1));
}

std::string Child_Process::errors()
{
    return read_all(std::exchange(errors_, -1));
}

void Child_Process::stop_reading()
{
    close(std::exchange(output_, -1));
}
