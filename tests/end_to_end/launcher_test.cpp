/*
 * The built gateway_launcher with the real shell, stand-in programs at the fixed paths and a real
 * datagram socket as the system log, in a private mount namespace.
 */

#include "tests/support/private_root.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <regex>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

/* A stand-in writes its name, each of its arguments in brackets, its niceness and whether it
 * ignores SIGPIPE to /tmp/record, and a line to its standard output. */
constexpr const char *STAND_IN = R"script(#!/bin/sh
{
    printf '%s' "$0"
    for argument in "$@"; do printf ' [%s]' "$argument"; done
    printf '\nniceness %s\n' "$(nice)"
    ignored=$(sed -n 's/^SigIgn:[^0-9a-f]*//p' /proc/$$/status)
    printf 'SIGPIPE ignored: %d\n' $((0x$ignored >> 12 & 1))
} >> /tmp/record
echo "output of $0"
exit 9
)script";

constexpr const char *PROGRAMS[] = {"/tmp/kvx_ctrl_4", "/root/kvx_megaco_rt",
                                    "/root/fxs_fxo_connect", "/root/gpio_set_value"};

class System_Log
{
public:
    explicit System_Log(const std::string &path) : socket_(socket(AF_UNIX, SOCK_DGRAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(socket_, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    }
    ~System_Log() { close(socket_); }
    System_Log(const System_Log &) = delete;
    System_Log &operator=(const System_Log &) = delete;

    /* The records so far, the time stamp of each replaced by "TIME". */
    std::vector<std::string> take() const
    {
        const std::regex stamp("^(<[0-9]+>)[A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} ");
        std::vector<std::string> records;
        char text[20000];
        ssize_t got = 0;
        while ((got = recv(socket_, text, sizeof text, MSG_DONTWAIT)) >= 0) {
            records.push_back(
                std::regex_replace(std::string(text, static_cast<size_t>(got)), stamp, "$1TIME "));
        }
        return records;
    }

private:
    int socket_;
};

class GatewayLauncher : public testing::Test
{
protected:
    GatewayLauncher() : log(root.outside("/dev/log"))
    {
        for (const char *const program : PROGRAMS) {
            root.write(program, STAND_IN, 0755);
        }
    }

    void configure(const std::string &children)
    {
        root.write("/tmp/config.xml", "<Config>" + children + "</Config>");
    }

    /* One record as the socket gets it: LOG_USER and LOG_INFO are 14 together. */
    std::vector<std::string> record(const std::string &text) const
    {
        return {"<14>TIME KVX_daemon[" + std::to_string(run.process) + "]: " + text};
    }

    /* What the stand-in noted of itself, without its niceness and its signals. */
    std::string started() const
    {
        return std::regex_replace(root.read("/tmp/record"),
                                  std::regex("(niceness -?[0-9]+|SIGPIPE ignored: .)\n"), "");
    }

    void expect_niceness(int boost) const
    {
        if (geteuid() != 0) {
            GTEST_SKIP() << "niceness not compared: only root may raise a priority";
        }
        const int wanted = std::max(getpriority(PRIO_PROCESS, 0) - boost, -20);
        EXPECT_NE(root.read("/tmp/record").find("niceness " + std::to_string(wanted) + "\n"),
                  std::string::npos)
            << root.read("/tmp/record");
    }

    void launch() { run = root.run(GATEWAY_LAUNCHER); }

    /* What was printed, less the complaint of nice(1) for users who may not raise a priority. */
    std::string output() const
    {
        const std::string complaint = "nice: cannot set niceness: Permission denied\n";
        const size_t place = geteuid() == 0 ? std::string::npos : run.output.find(complaint);
        return place == std::string::npos ? run.output
                                          : std::string(run.output).erase(place, complaint.size());
    }

    int exit_status() const { return WIFEXITED(run.status) ? WEXITSTATUS(run.status) : -1; }

    Private_Root root;
    System_Log log;
    Private_Root::Run run{};
};

struct Launch {
    const char *name;
    const char *children;
    const char *output;
    const char *started;
    const char *record;
    int boost; /* of the priority, as nice(1) is told */
};

void PrintTo(const Launch &launch, std::ostream *out)
{
    *out << launch.name;
}

class GatewayLaunch : public GatewayLauncher, public testing::WithParamInterface<Launch>
{
};

TEST_P(GatewayLaunch, StartsOneProgramWithItsOutputInOrder)
{
    const Launch &row = GetParam();
    configure(row.children);
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 0);
    EXPECT_EQ(output(), row.output);
    EXPECT_EQ(started(), row.started);
    EXPECT_EQ(log.take(), record(row.record));
    expect_niceness(row.boost);
}

constexpr Launch LAUNCHES[] = {
    {"SipHidesTheProgramsOutput", "<Active_protocol protocol=\"sip\"/>",
     "attribut protocol = sip\n"
     "start SIP protocol\n"
     "UDP Server Started\n",
     "/tmp/kvx_ctrl_4 [-daemon]\n", "start SIP protocol", 20},
    {"UnknownProtocolIsSip", "<Active_protocol protocol=\"SIP\"/>",
     "start SIP protocol\n"
     "UDP Server Started\n",
     "/tmp/kvx_ctrl_4 [-daemon]\n", "start SIP protocol", 20},
    {"H248", "<Active_protocol protocol=\"h.248\"/>",
     "attribut protocol = h.248\n"
     "start H.248 protocol\n"
     "output of /root/kvx_megaco_rt\n"
     "UDP Server Started\n",
     "/root/kvx_megaco_rt [-c] [/tmp/config.xml] [-i] [/root/ini.ini] [-d]\n",
     "start H.248 protocol", 20},
    {"FxoHasTheLowerBoost", "<Active_protocol protocol=\"fxo\"/>",
     "attribut protocol = fxo\n"
     "start FXS FXO coupled mode\n"
     "output of /root/fxs_fxo_connect\n"
     "UDP Server Started\n",
     "/root/fxs_fxo_connect [-c] [/root/config.xml] [-i] [/root/fxo.ini] [-d]\n",
     "start FXS FXO coupled mode", 10},
    {"LastOfTwoDecides", "<Active_protocol protocol=\"h.248\"/><Active_protocol protocol=\"fxo\"/>",
     "attribut protocol = h.248\n"
     "attribut protocol = fxo\n"
     "start FXS FXO coupled mode\n"
     "output of /root/fxs_fxo_connect\n"
     "UDP Server Started\n",
     "/root/fxs_fxo_connect [-c] [/root/config.xml] [-i] [/root/fxo.ini] [-d]\n",
     "start FXS FXO coupled mode", 10},
};

INSTANTIATE_TEST_SUITE_P(Protocols, GatewayLaunch, testing::ValuesIn(LAUNCHES),
                         [](const auto &row) { return row.param.name; });

struct Unread {
    const char *name;
    const char *configuration;
    void (*inherited)(int); /* what is done at SIGPIPE */
    int status;
    const char *started;
    const char *ignored;
};

void PrintTo(const Unread &row, std::ostream *out)
{
    *out << row.name;
}

class GatewayLaunchUnread : public GatewayLauncher, public testing::WithParamInterface<Unread>
{
};

TEST_P(GatewayLaunchUnread, RunsItsCommandWithTheInheritedSignal)
{
    const Unread &row = GetParam();
    root.write("/tmp/config.xml", row.configuration);
    auto *const before = std::signal(SIGPIPE, row.inherited);
    run = root.run_unread(GATEWAY_LAUNCHER);
    std::signal(SIGPIPE, before);
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), row.status);
    EXPECT_EQ(started(), row.started);
    EXPECT_TRUE(root.read("/tmp/record").ends_with(row.ignored)) << root.read("/tmp/record");
}

constexpr const char *SIP_CONFIGURATION = "<Config><Active_protocol protocol=\"sip\"/></Config>";

const Unread UNREADS[] = {
    {"Launch", SIP_CONFIGURATION, SIG_DFL, 0, "/tmp/kvx_ctrl_4 [-daemon]\n", "ignored: 0\n"},
    {"LaunchIgnored", SIP_CONFIGURATION, SIG_IGN, 0, "/tmp/kvx_ctrl_4 [-daemon]\n", "ignored: 1\n"},
    {"Alarm", "<Config>", SIG_DFL, 1, "/root/gpio_set_value [alarm] [on]\n", "ignored: 0\n"},
    {"AlarmIgnored", "<Config>", SIG_IGN, 1, "/root/gpio_set_value [alarm] [on]\n", "ignored: 1\n"},
};

INSTANTIATE_TEST_SUITE_P(Nobody, GatewayLaunchUnread, testing::ValuesIn(UNREADS),
                         [](const auto &row) { return row.param.name; });

TEST_F(GatewayLauncher, AQuestionAloneIsAnsweredAndStartsNothing)
{
    const std::pair<const char *, const char *> questions[] = {
        {"--help", "usage: gateway_launcher\n"
                   "\n"
                   "Starts the protocol program that /tmp/config.xml selects, or raises the alarm "
                   "when the file\n"
                   "cannot be read. Exit status 0 when it was read, else 1.\n"
                   "\n"
                   "  --help     print this text\n"
                   "  --version  print the version\n"
                   "\n"
                   "These two count only alone; any other argument still starts the gateway.\n"},
        {"--version", "gateway_launcher 0.1.0\n"}};
    configure("<Active_protocol protocol=\"sip\"/>");
    for (const auto &[question, answer] : questions) {
        run = root.run(GATEWAY_LAUNCHER, {question});
        SKIP_IF_REFUSED(run);
        EXPECT_EQ(exit_status(), 0);
        EXPECT_EQ(output(), answer);
        EXPECT_EQ(started(), "");
    }
}

TEST_F(GatewayLauncher, AnyOtherArgumentIsNotUsed)
{
    const std::vector<std::string> strays[] = {
        {"--help", "--version"}, {"-h"}, {"--helpless"}, {""}, {"start"}};
    for (const std::vector<std::string> &arguments : strays) {
        run = root.run(GATEWAY_LAUNCHER, arguments);
        SKIP_IF_REFUSED(run);
        EXPECT_EQ(exit_status(), 1);
        EXPECT_EQ(output(),
                  "read_config:21\nFailed to open file\noutput of /root/gpio_set_value\n");
    }
}

TEST_F(GatewayLauncher, WithoutAProtocolNothingIsStarted)
{
    configure("<Telephony><Active_protocol protocol=\"sip\"/></Telephony>");
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 0);
    EXPECT_EQ(output(), "UDP Server Started\n");
    EXPECT_EQ(started(), "");
    EXPECT_TRUE(log.take().empty());
}

TEST_F(GatewayLauncher, MissingFileSwitchesTheAlarmOn)
{
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 1);
    EXPECT_EQ(output(), "read_config:21\nFailed to open file\noutput of /root/gpio_set_value\n");
    EXPECT_EQ(started(), "/root/gpio_set_value [alarm] [on]\n");
    EXPECT_TRUE(log.take().empty());
}

TEST_F(GatewayLauncher, MissingRootSwitchesTheAlarmOn)
{
    root.write("/tmp/config.xml", "<!-- nothing -->");
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 1);
    EXPECT_EQ(output(), "Failed to load file: No root element.\n"
                        "DON'T LOAD CONFIGoutput of /root/gpio_set_value\n");
    EXPECT_EQ(started(), "/root/gpio_set_value [alarm] [on]\n");
}

TEST_F(GatewayLauncher, MissingProgramIsTheShellsAffair)
{
    configure("<Active_protocol protocol=\"fxo\"/>");
    std::remove(root.outside("/root/fxs_fxo_connect").c_str());
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 0);
    EXPECT_NE(run.output.find("UDP Server Started\n"), std::string::npos) << run.output;
    EXPECT_EQ(log.take(), record("start FXS FXO coupled mode"));
}

TEST_F(GatewayLauncher, WithoutASystemLogTheProgramIsStartedAllTheSame)
{
    configure("<Active_protocol protocol=\"sip\"/>");
    std::remove(root.outside("/dev/log").c_str());
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 0);
    EXPECT_EQ(output(), "attribut protocol = sip\nstart SIP protocol\nUDP Server Started\n");
    EXPECT_EQ(started(), "/tmp/kvx_ctrl_4 [-daemon]\n");
}

TEST_F(GatewayLauncher, NestingBeyondTheLibraryIsALoadFailure)
{
    std::string levels;
    for (int level = 0; level < 100000; ++level) {
        levels += "<a>";
    }
    root.write("/tmp/config.xml", levels);
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(exit_status(), 1);
    EXPECT_EQ(output(), "read_config:21\nError: elements nested too deeply.\n"
                        "output of /root/gpio_set_value\n");
}

/* Nothing of the machine's own: the marks that the runs leave stay in the private folders. */
TEST_F(GatewayLauncher, TouchesNothingOutsideItsNamespace)
{
    const std::string mark = "/tmp/mark-" + std::to_string(getpid());
    root.write("/tmp/kvx_ctrl_4", "#!/bin/sh\ntouch " + mark + "\n", 0755);
    configure("<Active_protocol protocol=\"sip\"/>");
    launch();
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(access(root.outside(mark).c_str(), F_OK), 0);
    EXPECT_NE(access(mark.c_str(), F_OK), 0);
}

} // namespace
