/* The example server and the time client together, as tools/show_clock starts them. */

#include "tests/support/child_process.h"
#include "tests/support/private_network.h"
#include "tests/support/private_root.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace
{

const std::string USAGE =
    "usage: time_server [--open] [--time SECONDS] COMMAND [ARGUMENT...]\n"
    "\n"
    "Runs the command in a private network in which 127.0.0.1 serves the time over NTP.\n"
    "\n"
    "  --open          serve all of this machine on its own 127.0.0.1, without a private network\n"
    "  --time SECONDS  serve this time, in seconds since 1970, instead of the machine's\n"
    "  --help          print this text\n";

class TimeServer : public testing::Test
{
protected:
    void SetUp() override
    {
        SKIP_IF_REFUSED(enter_private_network());
        setenv("TZ", "UTC", 1);
    }
};

TEST_F(TimeServer, TellsTheClientTheTime)
{
    Child_Process server(
        {TIME_SERVER, "--time", "1700000000", TIME_CLIENT, "--dry-run", "--once", "127.0.0.1"});
    EXPECT_EQ(server.output(), "NTP_Time_Get remote_server-127.0.0.1\n"
                               "NTP: Dry run, clock would be set to 1700000000\n"
                               "NTP: Local Time Updated: Tue Nov 14 22:13:20 2023\n"
                               "\n");
    EXPECT_EQ(server.errors(), "");
    EXPECT_EQ(server.wait(), 0);
}

TEST_F(TimeServer, TellsTheMachinesTimeUnlessToldOtherwise)
{
    const time_t before = time(nullptr);
    Child_Process server({TIME_SERVER, TIME_CLIENT, "--dry-run", "--once", "127.0.0.1"});
    const std::string output = server.output();
    const time_t after = time(nullptr);
    const std::string report = "would be set to ";
    const size_t place = output.find(report);
    ASSERT_NE(place, std::string::npos) << output;
    const time_t told = std::atoll(output.c_str() + place + report.size());
    EXPECT_LE(before, told);
    EXPECT_LE(told, after);
}

TEST_F(TimeServer, EndsWithTheStatusOfItsCommand)
{
    Child_Process server({TIME_SERVER, "sh", "-c", "exit 7"});
    EXPECT_EQ(server.wait(), 7);
}

TEST_F(TimeServer, EndsWithOneWhenItsCommandIsKilled)
{
    Child_Process server({TIME_SERVER, "sh", "-c", "kill -9 $$"});
    EXPECT_EQ(server.wait(), 1);
}

TEST_F(TimeServer, ReportsACommandThatCannotBeStarted)
{
    Child_Process server({TIME_SERVER, "/nowhere/command"});
    EXPECT_EQ(server.output(), "");
    EXPECT_EQ(server.errors(), "time_server: /nowhere/command: No such file or directory\n");
    EXPECT_EQ(server.wait(), 1);
}

/* Served is the command alone: the client of another network gets no answer. */
TEST_F(TimeServer, ServesNobodyElse)
{
    Child_Process server({TIME_SERVER, "sh", "-c", "echo up; sleep 2"});
    server.read_until("up");
    Child_Process client({TIME_CLIENT, "--dry-run", "--once", "127.0.0.1"});
    EXPECT_EQ(client.output(), "NTP_Time_Get remote_server-127.0.0.1\n");
    EXPECT_EQ(client.wait(), 1);
}

/* The test's own network stands for the machine's. */
TEST_F(TimeServer, OpenServesTheWholeMachine)
{
    Child_Process server(
        {TIME_SERVER, "--open", "--time", "1700000000", "sh", "-c", "echo up; sleep 2"});
    server.read_until("up");
    Child_Process client({TIME_CLIENT, "--dry-run", "--once", "127.0.0.1"});
    EXPECT_EQ(client.output(), "NTP_Time_Get remote_server-127.0.0.1\n"
                               "NTP: Dry run, clock would be set to 1700000000\n"
                               "NTP: Local Time Updated: Tue Nov 14 22:13:20 2023\n"
                               "\n");
    EXPECT_EQ(client.wait(), 0);
}

TEST_F(TimeServer, RefusesBadArguments)
{
    const std::vector<std::vector<std::string>> all = {
        {TIME_SERVER},
        {TIME_SERVER, "--time"},
        {TIME_SERVER, "--time", "1700000000"},
        {TIME_SERVER, "--time", "", "true"},
        {TIME_SERVER, "--time", "12x", "true"},
        {TIME_SERVER, "--tim", "12", "true"},
        {TIME_SERVER, "--open"},
        {TIME_SERVER, "--time", "12", "--open", "true"},
    };
    for (const std::vector<std::string> &arguments : all) {
        Child_Process server(arguments);
        EXPECT_EQ(server.output(), "");
        EXPECT_EQ(server.errors(), "time_server: bad arguments\n" + USAGE);
        EXPECT_EQ(server.wait(), 2);
    }
}

TEST(TimeServerUsage, IsPrintedOnRequest)
{
    Child_Process server({TIME_SERVER, "--help"});
    EXPECT_EQ(server.output(), USAGE);
    EXPECT_EQ(server.errors(), "");
    EXPECT_EQ(server.wait(), 0);
}

} // namespace
