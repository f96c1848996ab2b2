#include "tests/support/private_root.h"

#include "tests/support/child_process.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr const char *FOLDERS[] = {"/tmp", "/root", "/dev"};
constexpr const char *DEVICES[] = {"/dev/null", "/dev/zero", "/dev/urandom", "/dev/tty"};

[[noreturn]] void refuse(int report, const std::string &step)
{
    const std::string text = step + ": " + std::strerror(errno);
    [[maybe_unused]] const ssize_t ignored = write(report, text.data(), text.size());
    _exit(127);
}

void write_proc_file(int report, const char *path, const std::string &text)
{
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0 || write(file, text.data(), text.size()) < 0) {
        refuse(report, path);
    }
    close(file);
}

/* Another user than root gets a user namespace in which it is root. */
void enter_namespaces(int report)
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(CLONE_NEWNS | (user ? CLONE_NEWUSER : 0)) != 0) {
        refuse(report, "this machine refuses a private mount namespace");
    }
    if (user) {
        write_proc_file(report, "/proc/self/setgroups", "deny");
        write_proc_file(report, "/proc/self/uid_map", "0 " + std::to_string(user) + " 1");
        write_proc_file(report, "/proc/self/gid_map", "0 " + std::to_string(group) + " 1");
    }
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        refuse(report, "private mounts");
    }
}

void bind(int report, const std::string &from, const std::string &onto)
{
    if (mount(from.c_str(), onto.c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0) {
        refuse(report, "mounting " + onto);
    }
}

/* The folders are held open, since mounting one may hide the others. */
void lay_folders(int report, const std::string &stage,
                 const std::vector<Private_Root::Device> &devices)
{
    for (const Private_Root::Device &device : devices) {
        bind(report, device.machines, stage + device.path);
    }
    int held[std::size(FOLDERS)];
    for (size_t place = 0; place < std::size(FOLDERS); ++place) {
        held[place] = open((stage + FOLDERS[place]).c_str(), O_PATH | O_CLOEXEC);
    }
    for (size_t place = 0; place < std::size(FOLDERS); ++place) {
        bind(report, "/proc/self/fd/" + std::to_string(held[place]), FOLDERS[place]);
    }
}

[[noreturn]] void become(int report, int output, int errors, const std::string &stage,
                         const std::vector<Private_Root::Device> &devices,
                         const std::vector<std::string> &arguments,
                         const std::vector<std::string> &environment)
{
    const int program = open(arguments.front().c_str(), O_RDONLY | O_CLOEXEC);
    if (program < 0) {
        refuse(report, arguments.front());
    }
    enter_namespaces(report);
    lay_folders(report, stage, devices);

    const int input = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(input, 0);
    dup2(output, 1);
    dup2(errors, 2);
    for (const std::string &setting : environment) {
        putenv(const_cast<char *>(setting.c_str()));
    }
    fexecve(program, pointers(arguments).data(), environ);
    refuse(report, "starting " + arguments.front());
}

} // namespace

Private_Root::Private_Root()
{
    for (const char *const folder : FOLDERS) {
        mkdir((stage_.path() + folder).c_str(), 0755);
    }
    for (const char *const device : DEVICES) {
        lend_device(device, device);
    }
}

std::string Private_Root::outside(const std::string &path) const
{
    for (const char *const folder : FOLDERS) {
        if (path.starts_with(std::string(folder) + "/")) {
            return stage_.path() + path;
        }
    }
    throw std::invalid_argument(path + " is not in a private folder");
}

void Private_Root::write(const std::string &path, const std::string &text, mode_t mode) const
{
    const std::string place = outside(path);
    stage_.write(path, text);
    chmod(place.c_str(), mode);
}

void Private_Root::lend_device(const std::string &machines, const std::string &path)
{
    outside(path);
    stage_.write(path, "");
    devices_.push_back({machines, path});
}

std::string Private_Root::read(const std::string &path) const
{
    outside(path);
    return stage_.read(path);
}

Private_Root::Run Private_Root::run(const std::string &program,
                                    const std::vector<std::string> &arguments,
                                    const std::vector<std::string> &environment) const
{
    std::vector<std::string> all = {program};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return run_on(KEPT, all, environment);
}

Private_Root::Run Private_Root::run_unread(const std::string &program) const
{
    const Pipe unread = make_pipe();
    close(unread.readEnd);
    const Run run = run_on(unread.writeEnd, {program}, {});
    close(unread.writeEnd);
    return run;
}

Private_Root::Run Private_Root::run_on(int standardOutput, const std::vector<std::string> &command,
                                       const std::vector<std::string> &environment) const
{
    const Pipe report = make_pipe();
    const Pipe output = make_pipe();

    Run run{};
    run.process = fork();
    if (run.process == 0) {
        become(report.writeEnd, standardOutput == KEPT ? output.writeEnd : standardOutput,
               output.writeEnd, stage_.path(), devices_, command, environment);
    }
    close(report.writeEnd);
    close(output.writeEnd);
    run.refusal = read_all(report.readEnd);
    run.output = read_all(output.readEnd);
    waitpid(run.process, &run.status, 0);
    return run;
}

bool namespaces_are_required()
{
    const char *const setting = std::getenv("GATEWAY_NAMESPACES");
    return setting && std::strcmp(setting, "required") == 0;
}
