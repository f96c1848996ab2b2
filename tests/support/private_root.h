#pragma once

#include "tests/support/temporary_folder.h"

#include <string>
#include <sys/types.h>
#include <vector>

/*
 * Runs a built program in a private mount namespace, in which /tmp, /root and /dev are folders of
 * the test's own, so that the program's fixed paths lead there and nothing outside is touched.
 * Needs root or unprivileged user namespaces.
 *
 * Files are named by their paths inside, "/tmp/config.xml"; other folders than the three are those
 * of the machine, and refused. /dev holds null, zero, urandom and tty.
 */
class Private_Root
{
public:
    struct Run {
        std::string refusal; /* why the kernel refused the namespace; empty when the program ran */
        int status;          /* as waitpid gives it */
        pid_t process;       /* its id, as the caller's process-id namespace counts */
        std::string output;  /* standard output and standard error, in the order written */
    };

    Private_Root();

    /* Writes a file; mode as chmod takes it. */
    void write(const std::string &path, const std::string &text, mode_t mode = 0644) const;

    /* Puts a device of the machine at a path inside, "/dev/...": the runs see it there. */
    void lend_device(const std::string &machines, const std::string &path);

    /* The bytes of a file; empty when it is not there. */
    std::string read(const std::string &path) const;

    /* Where a path inside lies outside, for sockets, pipes and mounts. */
    std::string outside(const std::string &path) const;

    /* Runs the program at a path of the outside with its arguments and an empty standard input, and
     * waits for it and for all that holds its output open. environment: "NAME=value" to add. */
    Run run(const std::string &program, const std::vector<std::string> &arguments = {},
            const std::vector<std::string> &environment = {}) const;

    /* The same while nobody reads standard output, from before the start: what is kept is standard
     * error alone. */
    Run run_unread(const std::string &program) const;

    struct Device {
        std::string machines;
        std::string path; /* inside */
    };

private:
    /* standardOutput: a descriptor, or KEPT for that of standard error. */
    static constexpr int KEPT = -1;
    Run run_on(int standardOutput, const std::vector<std::string> &command,
               const std::vector<std::string> &environment) const;

    Temporary_Folder stage_;
    std::vector<Device> devices_;
};

/* In a test: skips it when the namespace was refused, or fails it where the environment variable
 * GATEWAY_NAMESPACES reads "required". */
#define SKIP_IF_REFUSED(run)                                                                       \
    do {                                                                                           \
        if (!(run).refusal.empty()) {                                                              \
            if (namespaces_are_required()) {                                                       \
                FAIL() << "namespaces are required here, but: " << (run).refusal;                  \
            }                                                                                      \
            GTEST_SKIP() << (run).refusal;                                                         \
        }                                                                                          \
    } while (false)

bool namespaces_are_required();
