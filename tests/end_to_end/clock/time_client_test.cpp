/* The built time_client against a real server in a private network: with --dry-run, or on a
 * platform that refuses to set the clock. */

#include "tests/support/child_process.h"
#include "tests/support/private_network.h"
#include "tests/support/private_root.h"
#include "tests/support/scripted_server.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <future>
#include <ostream>
#include <string>
#include <vector>

#if !defined(__has_feature)
#define __has_feature(name) 0
#endif

namespace
{

using Arguments = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

const std::string USAGE =
    "usage: time_client [--once] [--dry-run] [--daemon ID_FILE] SERVER\n"
    "\n"
    "Sets the clock from an NTP server: soon after the start while the clock shows 1970, and "
    "every\n"
    "four hours, until SIGTERM or SIGINT.\n"
    "\n"
    "  --once            make one query and end: status 0 when the clock was set, or would be\n"
    "                    with --dry-run, else 1\n"
    "  --dry-run         report the time that the clock would be set to, and leave it alone\n"
    "  --daemon ID_FILE  detach first, and write the daemon's process id into the file\n"
    "  --help            print this text\n"
    "  --version         print the version\n"
    "\n"
    "SERVER is a host name or an IPv4 address, of 19 characters at most.\n";

const std::string ASKED = "NTP_Time_Get remote_server-127.0.0.1\n";
const std::string REPORTED = "NTP: Dry run, clock would be set to 1700000000\n"
                             "NTP: Local Time Updated: Tue Nov 14 22:13:20 2023\n"
                             "\n";
const std::string STARTED = ">>>NTP Thread_Init\n"
                            ">>>NTP Thread_Init:IP=127.0.0.1\n"
                            ">>>NTP Thread_Init:start=1\n";
const std::string CREATED = "--->>>NTP Tres_create 0\n";
const std::string PASS = "--->>>NTP_Thread Time ntp_remote_server-127.0.0.1\n";

Arguments command(const std::string &program, const Arguments &arguments)
{
    Arguments all{program};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return all;
}

struct Usage {
    const char *name;
    Arguments arguments;
    const char *message;
};

void PrintTo(const Usage &row, std::ostream *out)
{
    *out << row.name;
}

class TimeClientUsage : public testing::TestWithParam<Usage>
{
};

TEST_P(TimeClientUsage, IsRefusedWithAMessageAndTheUsage)
{
    Child_Process client(command(TIME_CLIENT, GetParam().arguments));
    EXPECT_EQ(client.output(), "");
    EXPECT_EQ(client.errors(), std::string("time_client: ") + GetParam().message + "\n" + USAGE);
    EXPECT_EQ(client.wait(), 2);
}

const Usage USAGES[] = {
    {"NoArguments", {}, "no server"},
    {"OptionsOnly", {"--once", "--dry-run"}, "no server"},
    {"EmptyServer", {"--dry-run", ""}, "the server is empty"},
    {"ServerOf20Characters",
     {"--once", "--dry-run", "abcdefghijklmnopqrst"},
     "a server of more than 19 characters: abcdefghijklmnopqrst"},
    {"ServerOf30Characters",
     {"--dry-run", "abcdefghijklmnopqrstuvwxyz.org"},
     "a server of more than 19 characters: abcdefghijklmnopqrstuvwxyz.org"},
    {"TwoServers", {"--dry-run", "a", "b"}, "more than one server: b"},
    {"UnknownOption", {"--dry-run", "--twice", "a"}, "unknown option: --twice"},
    {"ShortOption", {"-h"}, "unknown option: -h"},
    {"Dash", {"--dry-run", "--once", "-"}, "unknown option: -"},
    {"OptionCutShort", {"--dry-ru", "a"}, "unknown option: --dry-ru"},
    {"OptionTooLong", {"--dry-run=yes", "a"}, "unknown option: --dry-run=yes"},
    {"CapitalOption", {"--ONCE", "a"}, "unknown option: --ONCE"},
    {"DaemonWithoutFile", {"--dry-run", "a", "--daemon"}, "--daemon needs the path of an id file"},
    {"ErrorBeforeHelp", {"--bad", "--help"}, "unknown option: --bad"},
    {"HelpCutShort", {"--he"}, "unknown option: --he"},
    {"LettersAfterADash", {"--once", "-xy", "a"}, "unknown option: -xy"},
    {"OperandsAfterTwoDashes",
     {"--once", "--", "--once", "--dry-run"},
     "more than one server: --dry-run"},
    {"ShortenedOptionWithAValue", {"--daem", "id", "a"}, "unknown option: --daem"},
};

INSTANTIATE_TEST_SUITE_P(Table, TimeClientUsage, testing::ValuesIn(USAGES),
                         [](const auto &row) { return row.param.name; });

TEST(TimeClient, PrintsItsUsageOnRequest)
{
    for (const Arguments &arguments : {Arguments{"--help"},
                                       {"--once", "--help", "--bad"},
                                       {"--dry-run", "--once", "a", "--help"}}) {
        Child_Process client(command(TIME_CLIENT, arguments));
        EXPECT_EQ(client.output(), USAGE);
        EXPECT_EQ(client.errors(), "");
        EXPECT_EQ(client.wait(), 0);
    }
}

TEST(TimeClient, PrintsItsVersionOnRequest)
{
    Child_Process client({TIME_CLIENT, "--version"});
    EXPECT_EQ(client.output(), "time_client 0.1.0\n");
    EXPECT_EQ(client.errors(), "");
    EXPECT_EQ(client.wait(), 0);
}

/* A refused command line neither detaches nor leaves a file. */
TEST(TimeClient, DoesNotDetachOnBadUsage)
{
    const Temporary_Folder folder;
    Child_Process client({TIME_CLIENT, "--dry-run", "--daemon", folder.path() + "/id", ""});
    EXPECT_EQ(client.wait(), 2);
    EXPECT_NE(access((folder.path() + "/id").c_str(), F_OK), 0);
}

class TimeClientQuery : public testing::Test
{
protected:
    void SetUp() override
    {
        SKIP_IF_REFUSED(enter_private_network());
        setenv("TZ", "UTC", 1);
        signal(SIGPIPE, SIG_DFL); /* what a shell passes on; others may ignore it */
    }

    const Scripted_Answers answer{{.seconds = 3908988800}};
};

TEST_F(TimeClientQuery, ReportsTheServersTimeAndEndsWithZero)
{
    Scripted_Server server(answer);
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "127.0.0.1"});
    EXPECT_EQ(client.output(), ASKED + REPORTED);
    EXPECT_EQ(client.errors(), "");
    EXPECT_EQ(client.wait(), 0);

    const Seen_Requests seen = server.finish();
    ASSERT_EQ(seen.size(), 1U);
    std::vector<uint8_t> request(48, 0);
    request[0] = 0xD9;
    EXPECT_EQ(seen[0].bytes, request);
}

/* The clock of this platform stands still and refuses. */
TEST_F(TimeClientQuery, SetsTheClockUnlessItIsADryRun)
{
    Scripted_Server server(answer);
    Child_Process client({QUICK_TIME_CLIENT, "--once", "127.0.0.1"});
    EXPECT_EQ(client.output(), ASKED + "NTP: Local Time Updated: Thu Jan  1 00:00:35 1970\n\n");
    EXPECT_EQ(client.errors(), "");
    EXPECT_EQ(client.wait(), 1);
    EXPECT_EQ(server.finish().size(), 1U);
}

TEST_F(TimeClientQuery, TakesOptionsInAnyOrder)
{
    Scripted_Server server(answer);
    Child_Process client({TIME_CLIENT, "127.0.0.1", "--dry-run", "--once"});
    EXPECT_EQ(client.output(), ASKED + REPORTED);
    EXPECT_EQ(client.wait(), 0);
}

TEST_F(TimeClientQuery, SetsTheClockAlsoWhenNobodyReadsItsLines)
{
    Scripted_Server server(answer);
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "127.0.0.1"}, Reader::GONE);
    EXPECT_EQ(client.wait(), 0);
    EXPECT_EQ(server.finish().size(), 1U);
}

TEST_F(TimeClientQuery, EndsWithOneWhenNobodyAnswers)
{
    Scripted_Server server(Scripted_Answers{});
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "127.0.0.1"});
    EXPECT_EQ(client.output(), ASKED);
    EXPECT_EQ(client.wait(), 1);
    EXPECT_EQ(server.finish().size(), 5U);
}

TEST_F(TimeClientQuery, TakesAServerOf19Characters)
{
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "nowhere.abc.invalid"});
    EXPECT_EQ(client.output(), "NTP_Time_Get remote_server-nowhere.abc.invalid\n");
    EXPECT_EQ(client.wait(), 1);
}

/* The thread's first lines and the line of its creation have no fixed order, and the thread sees
 * the run flag before or after it is set again. */
void expect_polling(std::string output, const std::string &expected)
{
    const size_t created = output.find(CREATED);
    ASSERT_NE(created, std::string::npos) << output;
    output.erase(created, CREATED.size());
    const std::string later = "--->>>NTP_Thread_Func flag=1\n";
    const size_t flag = output.find(later);
    if (flag != std::string::npos) {
        output.replace(flag, later.size(), "--->>>NTP_Thread_Func flag=0\n");
    }
    EXPECT_EQ(output, expected);
}

class TimeClientEnd : public testing::TestWithParam<int>
{
};

TEST_P(TimeClientEnd, ComesWithinASecondAndWithZero)
{
    Child_Process client({TIME_CLIENT, "--dry-run", "127.0.0.1"});
    client.read_until("flag=");
    client.read_until(CREATED);
    const Clock::time_point told = Clock::now();
    ASSERT_EQ(kill(client.id(), GetParam()), 0);
    EXPECT_EQ(client.wait(), 0);
    EXPECT_LT(Clock::now() - told, std::chrono::seconds(1));
    expect_polling(client.output(), STARTED + "--->>>NTP_Thread_Func ip=127.0.0.1\n"
                                              "--->>>NTP_Thread_Func flag=0\n");
    EXPECT_EQ(client.errors(), "");
}

INSTANTIATE_TEST_SUITE_P(Signal, TimeClientEnd, testing::Values(SIGTERM, SIGINT),
                         [](const auto &row) { return row.param == SIGTERM ? "Term" : "Int"; });

const std::string FIRST_PASSES = STARTED +
                                 "--->>>NTP_Thread_Func ip=127.0.0.1\n"
                                 "--->>>NTP_Thread_Func flag=0\n"
                                 "--->>>NTP_Thread wake up\n"
                                 "--->>>NTP_Thread Time 23\n" +
                                 PASS + ASKED + REPORTED + "NTP: Time Initial Update - Ok\n" +
                                 PASS + PASS + PASS;

TEST_F(TimeClientQuery, KeepsPollingUntilItIsTold)
{
    Scripted_Server server(answer);
    Child_Process client({QUICK_TIME_CLIENT, "--dry-run", "127.0.0.1"});
    client.read_until(PASS + PASS + PASS);
    kill(client.id(), SIGTERM);
    EXPECT_EQ(client.wait(), 0);
    const std::string whole = client.output();
    expect_polling(whole.substr(0, whole.find(PASS + PASS) + 3 * PASS.size()), FIRST_PASSES);
    EXPECT_EQ(server.finish().size(), 1U);
}

/* A query without an answer takes half a second. A busy machine may tell the client only after it;
 * such a run is made again. */
TEST_F(TimeClientQuery, EndsAtOnceDuringAQuery)
{
    for (int run = 0; run < 20; run++) {
        Scripted_Server server(Scripted_Answers{});
        Child_Process client({QUICK_TIME_CLIENT, "--dry-run", "127.0.0.1"});
        client.read_until(ASKED);
        kill(client.id(), SIGTERM);
        EXPECT_EQ(client.wait(), 0);
        if (client.output().find("NTP: Time Initial Update") == std::string::npos) {
            return;
        }
    }
    FAIL() << "the query was waited for";
}

/* A sixth request belongs to a pass that began after a line that nobody could read. */
TEST_F(TimeClientQuery, KeepsPollingWhenNobodyReadsItsLines)
{
    std::promise<void> sixth;
    Scripted_Server server(Scripted_Answers{}, [&, requests = 0]() mutable {
        if (++requests == 6) {
            sixth.set_value();
        }
    });
    Child_Process client({QUICK_TIME_CLIENT, "--dry-run", "127.0.0.1"});
    client.read_until(ASKED);
    client.stop_reading();
    EXPECT_EQ(sixth.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
    kill(client.id(), SIGTERM);
    EXPECT_EQ(client.wait(), 0);
}

/* A thread's default stack is as large as the limit says, and there is no room for this one. */
TEST(TimeClient, EndsWithOneWhenTheThreadCannotStart)
{
#if __has_feature(thread_sanitizer)
    GTEST_SKIP() << "the thread sanitizer does not start under this limit of the stack";
#endif
    rlimit limit{};
    getrlimit(RLIMIT_STACK, &limit);
    if (limit.rlim_max != RLIM_INFINITY) {
        GTEST_SKIP() << "the limit of the stack cannot be raised";
    }
    Child_Process client(
        {"prlimit", "--stack=140737488351232", TIME_CLIENT, "--dry-run", "127.0.0.1"});
    EXPECT_EQ(client.output(), STARTED + "--->>>NTP Tres_create b\n");
    EXPECT_EQ(client.wait(), 1);
}

/* With --daemon; the test takes the orphaned daemon over and waits for it. */
class TimeClientDaemon : public TimeClientQuery
{
protected:
    TimeClientDaemon() { prctl(PR_SET_CHILD_SUBREAPER, 1); }

    std::string id_file() const { return folder.path() + "/id"; }

    pid_t daemon_id() const { return std::atoi(folder.read("id").c_str()); }

    /* Waits for the one other child. */
    static int daemon_status()
    {
        int status = 0;
        return waitpid(-1, &status, 0) > 0 ? exit_status(status) : -1;
    }

    Temporary_Folder folder;
};

TEST_F(TimeClientDaemon, DetachesAndKeepsPolling)
{
    Scripted_Server server(answer);
    Child_Process client({QUICK_TIME_CLIENT, "--daemon", id_file(), "--dry-run", "127.0.0.1"});
    EXPECT_EQ(client.wait(), 0);
    client.read_until(PASS + PASS + PASS);
    EXPECT_EQ(getsid(daemon_id()), daemon_id());
    EXPECT_EQ(folder.read("id"), std::to_string(daemon_id()));

    const Clock::time_point told = Clock::now();
    ASSERT_EQ(kill(daemon_id(), SIGTERM), 0);
    EXPECT_EQ(daemon_status(), 0);
    EXPECT_LT(Clock::now() - told, std::chrono::seconds(1));

    const std::string whole = client.output();
    expect_polling(whole.substr(0, whole.find(PASS + PASS) + 3 * PASS.size()), FIRST_PASSES);
    EXPECT_EQ(client.errors(), "");
}

TEST_F(TimeClientDaemon, EndsWithinASecondWhileItSleeps)
{
    Child_Process client({TIME_CLIENT, "--dry-run", "--daemon", id_file(), "127.0.0.1"});
    EXPECT_EQ(client.wait(), 0);
    client.read_until("flag=");
    client.read_until(CREATED);
    const Clock::time_point told = Clock::now();
    ASSERT_EQ(kill(daemon_id(), SIGTERM), 0);
    EXPECT_EQ(daemon_status(), 0);
    EXPECT_LT(Clock::now() - told, std::chrono::seconds(1));
}

/* Descriptor 0 is free in the daemon, so its first socket gets that number, and works. */
TEST_F(TimeClientDaemon, QueriesOverDescriptorZero)
{
    std::string descriptor(100, '\0');
    Scripted_Server server(answer, [&] {
        const std::string link = "/proc/" + std::to_string(daemon_id()) + "/fd/0";
        const ssize_t size = readlink(link.c_str(), descriptor.data(), descriptor.size());
        descriptor.resize(size > 0 ? static_cast<size_t>(size) : 0);
    });
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "--daemon", id_file(), "127.0.0.1"});
    EXPECT_EQ(client.wait(), 0);
    EXPECT_EQ(client.output(), ASKED + REPORTED);
    EXPECT_EQ(daemon_status(), 0);
    server.finish();
    EXPECT_EQ(descriptor.substr(0, 8), "socket:[");
}

TEST_F(TimeClientDaemon, EndsItsOneQueryWithOneWhenNobodyAnswers)
{
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "--daemon", id_file(), "127.0.0.1"});
    EXPECT_EQ(client.wait(), 0);
    EXPECT_EQ(client.output(), ASKED);
    EXPECT_EQ(daemon_status(), 1);
}

TEST_F(TimeClientDaemon, SetsTheClockAlsoWhenNobodyReadsItsLines)
{
    Scripted_Server server(answer);
    Child_Process client({TIME_CLIENT, "--once", "--dry-run", "--daemon", id_file(), "127.0.0.1"},
                         Reader::GONE);
    EXPECT_EQ(client.wait(), 0);
    EXPECT_EQ(daemon_status(), 0);
    EXPECT_EQ(server.finish().size(), 1U);
}

TEST_F(TimeClientDaemon, ReportsAnIdFileThatCannotBeOpened)
{
    const std::string path = folder.path() + "/missing/id";
    Child_Process client({TIME_CLIENT, "--dry-run", "--daemon", path, "127.0.0.1"});
    EXPECT_EQ(client.wait(), 0);
    EXPECT_EQ(client.output(), "KVX_Ctrl: can't fork: fopen(\"" + path + "\",...) - Failed\n");
    EXPECT_EQ(daemon_status(), 1);
}

} // namespace
