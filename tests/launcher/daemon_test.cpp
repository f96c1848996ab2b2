/* KVX_Ctrl in real processes: a child of the test calls it, and the test, to which orphans are
 * handed, waits for both the caller and the daemon. */

#include "launcher/daemon.h"
#include "tests/launcher/process_stand_in.h"
#include "tests/support/child_process.h"
#include "tests/support/output_capture.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <ostream>
#include <string>

namespace
{

constexpr int NONE = -1;

struct Outcome {
    int caller; /* exit status */
    int daemon; /* exit status, or NONE when there was no daemon process */
    pid_t id;   /* of the daemon process */
    std::string output;
};

/* Runs the caller in a process of its own until it and its daemon have ended. */
Outcome run(const std::function<int()> &caller)
{
    Output_Capture capture;
    const pid_t child = fork();
    if (child == 0) {
        exit(caller());
    }
    Outcome outcome{.caller = NONE, .daemon = NONE, .id = 0, .output = {}};
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(-1, &status, 0)) > 0) {
        if (ended == child) {
            outcome.caller = exit_status(status);
        } else {
            outcome.daemon = exit_status(status);
            outcome.id = ended;
        }
    }
    outcome.output = capture.finish();
    return outcome;
}

const char *is_open(int descriptor)
{
    return fcntl(descriptor, F_GETFD) < 0 ? "closed" : "open";
}

class Daemon : public testing::Test
{
protected:
    void SetUp() override
    {
        if (prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0) {
            GTEST_SKIP() << "orphans are not handed to the test here: " << std::strerror(errno);
        }
    }

    std::string id_file() const { return folder.path() + "/id"; }

    Temporary_Folder folder;
};

TEST_F(Daemon, ReturnsOneInAProcessOfItsOwn)
{
    const Outcome outcome = run([this] {
        const pid_t caller = getpid();
        const int result = KVX_Ctrl(id_file().c_str());
        printf("%d %d\n", result, getpid() != caller);
        return 7;
    });
    EXPECT_EQ(outcome.caller, 0);
    EXPECT_EQ(outcome.daemon, 7);
    EXPECT_EQ(outcome.output, "1 1\n");
}

TEST_F(Daemon, LeadsASessionOfItsOwn)
{
    const Outcome outcome = run([this] {
        const pid_t session = getsid(0);
        KVX_Ctrl(id_file().c_str());
        printf("%d %d\n", getsid(0) == getpid(), getsid(0) != session);
        return 0;
    });
    EXPECT_EQ(outcome.output, "1 1\n");
}

TEST_F(Daemon, WritesItsSessionIdAndNothingElse)
{
    folder.write("id", "an older and longer text\n");
    const Outcome outcome = run([this] { return KVX_Ctrl(id_file().c_str()); });
    EXPECT_EQ(folder.read("id"), std::to_string(outcome.id));
    EXPECT_EQ(outcome.output, "");
}

TEST_F(Daemon, IgnoresTheSecondText)
{
    const Outcome outcome = run([this] { return KVX_Ctrl(id_file().c_str(), "text"); });
    EXPECT_EQ(outcome.daemon, 1);
    EXPECT_EQ(folder.read("id"), std::to_string(outcome.id));
    EXPECT_EQ(outcome.output, "");
}

TEST_F(Daemon, ClearsTheFileCreationMask)
{
    const Outcome outcome = run([this] {
        umask(077);
        KVX_Ctrl(id_file().c_str());
        printf("%o\n", umask(0));
        return 0;
    });
    EXPECT_EQ(outcome.output, "0\n");
    struct stat file {
    };
    ASSERT_EQ(stat(id_file().c_str(), &file), 0);
    EXPECT_EQ(file.st_mode, static_cast<mode_t>(S_IFREG | 0666));
}

/* Standard input only, and the lowest free descriptor is then 0. It is opened first, since a test
 * may be started without one. The stream stays: it reads from what gets the number. */
TEST_F(Daemon, ClosesStandardInputOnly)
{
    const Outcome outcome = run([this] {
        close(0);
        printf("%d\n", open("/dev/null", O_RDONLY | O_CLOEXEC));
        KVX_Ctrl(id_file().c_str());
        printf("%s %s %s\n", is_open(0), is_open(1), is_open(2));
        printf("%d\n", open(folder.write("next", "x").c_str(), O_RDONLY | O_CLOEXEC));
        printf("%c\n", getchar());
        return 0;
    });
    EXPECT_EQ(outcome.output, "0\nclosed open open\n0\nx\n");
}

TEST_F(Daemon, StaysInItsFolder)
{
    const Outcome outcome = run([this] {
        if (chdir(folder.path().c_str()) != 0) {
            return 1;
        }
        KVX_Ctrl("id");
        char *const place = getcwd(nullptr, 0);
        printf("%s\n", place);
        free(place);
        return 0;
    });
    EXPECT_EQ(outcome.output, folder.path() + "\n");
    EXPECT_EQ(folder.read("id"), std::to_string(outcome.id));
}

TEST_F(Daemon, PrintsNothingTwice)
{
    const Outcome outcome = run([this] {
        printf("before, without a line end ");
        KVX_Ctrl(id_file().c_str());
        printf("after\n");
        return 0;
    });
    EXPECT_EQ(outcome.output, "before, without a line end after\n");
}

struct Path {
    const char *name;
    const char *inFolder;
};

void PrintTo(const Path &row, std::ostream *out)
{
    *out << row.name;
}

class DaemonIdFile : public Daemon, public testing::WithParamInterface<Path>
{
protected:
    DaemonIdFile() { EXPECT_EQ(symlink("/dev/full", (folder.path() + "/full").c_str()), 0); }
};

/* The caller has ended with 0 before the daemon meets the failure. */
TEST_P(DaemonIdFile, ThatCannotBeWrittenEndsTheDaemonProcess)
{
    const std::string path = folder.path() + GetParam().inFolder;
    const Outcome outcome = run([&] {
        printf("before ");
        KVX_Ctrl(path.c_str());
        printf("not reached\n");
        return 7;
    });
    EXPECT_EQ(outcome.caller, 0);
    EXPECT_EQ(outcome.daemon, 1);
    EXPECT_EQ(outcome.output,
              "before KVX_Ctrl: can't fork: fopen(\"" + path + "\",...) - Failed\n");
}

const Path PATHS[] = {
    {"InAMissingFolder", "/missing/id"},
    {"IsAFolder", "/"},
    {"HasAPerCentSign", "/100%d/id"},
    {"IsOnAFullDisk", "/full"},
};

INSTANTIATE_TEST_SUITE_P(Table, DaemonIdFile, testing::ValuesIn(PATHS),
                         [](const auto &row) { return row.param.name; });

TEST_F(Daemon, EndsTheCallerWhenForkFails)
{
    const Outcome outcome = run([this] {
        printf("before ");
        refuse_fork();
        KVX_Ctrl(id_file().c_str());
        printf("not reached\n");
        return 7;
    });
    EXPECT_EQ(outcome.caller, 1);
    EXPECT_EQ(outcome.daemon, NONE);
    EXPECT_EQ(outcome.output, "before KVX_Ctrl: can't fork: parpip=-1 - Failed\n");
    EXPECT_NE(access(id_file().c_str(), F_OK), 0);
}

TEST_F(Daemon, EndsTheDaemonProcessWhenThereIsNoSession)
{
    const Outcome outcome = run([this] {
        printf("before ");
        refuse_session();
        KVX_Ctrl(id_file().c_str());
        printf("not reached\n");
        return 7;
    });
    EXPECT_EQ(outcome.caller, 0);
    EXPECT_EQ(outcome.daemon, 1);
    EXPECT_EQ(outcome.output, "before KVX_Ctrl: can't fork: sid=-1 - Failed\n");
    EXPECT_NE(access(id_file().c_str(), F_OK), 0);
}

} // namespace
