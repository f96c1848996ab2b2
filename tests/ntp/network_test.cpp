/* The query over the machine's real sockets, against a real server, in a private network. */

#include "ntp/client.h"
#include "ntp/platform.h"
#include "tests/support/output_capture.h"
#include "tests/support/private_network.h"
#include "tests/support/private_root.h"
#include "tests/support/scripted_server.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ostream>

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/* The machine's platform with another clock, and with a note of what passes. */
struct Noted {
    time_t clock;
    std::vector<int> sockets;
    std::vector<Clock::time_point> sends;
    std::vector<Clock::duration> waits;
};

Noted noted;

time_t now()
{
    return noted.clock;
}

bool set_clock(time_t seconds)
{
    noted.clock = seconds;
    return true;
}

int send_packet(int socket, uint32_t address, const NTP_Packet &packet)
{
    noted.sockets.push_back(socket);
    noted.sends.push_back(Clock::now());
    return NTP_System_Platform.sendPacket(socket, address, packet);
}

bool wait_readable(int socket, uint32_t microseconds)
{
    const Clock::time_point start = Clock::now();
    const bool readable = NTP_System_Platform.waitReadable(socket, microseconds);
    noted.waits.push_back(Clock::now() - start);
    return readable;
}

constexpr time_t UNTOUCHED = 1600000000;
constexpr uint32_t SECONDS = 3908988800;
const std::string ASKED = "NTP_Time_Get remote_server-127.0.0.1\n";
const std::string UPDATED = ASKED + "NTP: Local Time Updated: Tue Nov 14 22:13:20 2023\n\n";

class NtpNetwork : public testing::Test
{
protected:
    void SetUp() override
    {
        SKIP_IF_REFUSED(enter_private_network());
        setenv("TZ", "UTC", 1);
        forget();
        platform = NTP_System_Platform;
        platform.now = now;
        platform.setClock = set_clock;
        platform.sendPacket = send_packet;
        platform.waitReadable = wait_readable;
        NTP_Set_Platform(&platform);
    }
    void TearDown() override { NTP_Set_Platform(&NTP_System_Platform); }

    static void forget() { noted = {.clock = UNTOUCHED, .sockets = {}, .sends = {}, .waits = {}}; }

    bool query(const char *server = "127.0.0.1")
    {
        Output_Capture capture;
        const bool set = NTP_Time_Get(server);
        ended = Clock::now();
        output = capture.finish();
        return set;
    }

    /* Of attempts that each wait in vain. */
    void expect_spacing_of_100_milliseconds() const
    {
        for (size_t i = 0; i < noted.sends.size(); ++i) {
            const auto next = i + 1 < noted.sends.size() ? noted.sends[i + 1] : ended;
            EXPECT_GE(next - noted.sends[i], milliseconds(100)) << "attempt " << i;
        }
    }

    NTP_Platform platform{};
    Clock::time_point ended;
    std::string output;
};

TEST_F(NtpNetwork, SetsTheClockFromOneAnswer)
{
    Scripted_Server server(Scripted_Answers{{.seconds = SECONDS}});
    EXPECT_TRUE(query());
    EXPECT_EQ(output, UPDATED);
    EXPECT_EQ(noted.clock, 1700000000);
    EXPECT_EQ(server.finish().size(), 1U);
}

TEST_F(NtpNetwork, SendsARequestOf48Bytes)
{
    Scripted_Server server(Scripted_Answers{{.seconds = SECONDS}});
    query();
    std::vector<uint8_t> request(48, 0);
    request[0] = 0xD9;
    const Seen_Requests seen = server.finish();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].bytes, request);
}

TEST_F(NtpNetwork, AsksFiveTimes100MillisecondsApartWhenNobodyAnswers)
{
    Scripted_Server server(Scripted_Answers{});
    EXPECT_FALSE(query());
    EXPECT_EQ(output, ASKED);
    EXPECT_EQ(noted.clock, UNTOUCHED);
    EXPECT_EQ(noted.waits.size(), 5U);
    EXPECT_EQ(noted.sends.size(), 5U);
    expect_spacing_of_100_milliseconds();
    EXPECT_EQ(server.finish().size(), 5U);
}

/* A closed port is like a silent one: the socket is not connected and sees no refusal. */
TEST_F(NtpNetwork, AsksFiveTimesWhenThePortIsClosed)
{
    EXPECT_FALSE(query());
    EXPECT_EQ(output, ASKED);
    EXPECT_EQ(noted.sends.size(), 5U);
    expect_spacing_of_100_milliseconds();
}

class NtpNetworkLength : public NtpNetwork, public testing::WithParamInterface<size_t>
{
};

TEST_P(NtpNetworkLength, IsAFailedAttempt)
{
    const Scripted_Answer wrong{.size = GetParam(), .seconds = SECONDS};
    Scripted_Server server(Scripted_Answers(6, wrong));
    EXPECT_FALSE(query());
    EXPECT_EQ(output, ASKED);
    EXPECT_EQ(noted.clock, UNTOUCHED);
    EXPECT_EQ(server.finish().size(), 5U);
}

TEST_P(NtpNetworkLength, IsFollowedByAnotherAttempt)
{
    Scripted_Server server(
        Scripted_Answers{{.size = GetParam(), .seconds = SECONDS}, {.seconds = SECONDS}});
    EXPECT_TRUE(query());
    EXPECT_EQ(output, UPDATED);
    EXPECT_EQ(noted.clock, 1700000000);
    EXPECT_EQ(server.finish().size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Wrong, NtpNetworkLength,
                         testing::Values(0U, 1U, 44U, 47U, 49U, 68U, 1400U),
                         [](const auto &row) { return "Of" + std::to_string(row.param); });

/*
 * Answers close to the limit of 100 milliseconds. A busy machine may be late with the answer, or
 * with the end of the wait, which then meets an answer that came too late; such a run is made
 * again.
 */
class NtpNetworkLimit : public NtpNetwork
{
protected:
    /* Queries until a run was on time; sets `set` and `seen`. */
    void query_on_time(const Scripted_Answers &answers)
    {
        for (int run = 0; run < 50; ++run) {
            forget();
            Scripted_Server server(answers);
            set = query();
            seen = server.finish();
            if (wait_was_on_time() && answers_were_on_time(answers)) {
                return;
            }
        }
        FAIL() << "the machine is too busy";
    }

    Seen_Requests seen;
    bool set = false;

private:
    static bool wait_was_on_time()
    {
        return std::all_of(noted.waits.begin(), noted.waits.end(),
                           [](Clock::duration wait) { return wait < milliseconds(107); });
    }

    bool answers_were_on_time(const Scripted_Answers &answers) const
    {
        for (size_t i = 0; i < answers.size() && i < noted.sends.size(); ++i) {
            if (!answers[i].silent && was_late(i, answers[i])) {
                return false;
            }
        }
        return true;
    }

    /* An answer that never came was late too, but for the last request's: the query was over. */
    bool was_late(size_t request, const Scripted_Answer &answer) const
    {
        if (request >= seen.size() || seen[request].answered == Clock::time_point{}) {
            return request + 1 < noted.sends.size();
        }
        return seen[request].answered - noted.sends[request] >
               milliseconds(answer.milliseconds + 7);
    }
};

TEST_F(NtpNetworkLimit, TakesAnAnswerAfter90MillisecondsInTheFirstAttempt)
{
    query_on_time({{.seconds = SECONDS, .milliseconds = 90}});
    EXPECT_TRUE(set);
    EXPECT_EQ(output, UPDATED);
    EXPECT_EQ(seen.size(), 1U);
}

TEST_F(NtpNetworkLimit, TakesAnAnswerAfter110MillisecondsInTheSecondAttempt)
{
    query_on_time({{.seconds = SECONDS, .milliseconds = 110}});
    EXPECT_TRUE(set);
    EXPECT_EQ(output, UPDATED);
    EXPECT_EQ(seen.size(), 2U);
    EXPECT_GE(noted.waits[0], milliseconds(100));
}

TEST_F(NtpNetworkLimit, MissesAnAnswer110MillisecondsAfterTheFifthRequest)
{
    const Scripted_Answer none{.silent = true};
    query_on_time({none, none, none, none, {.seconds = SECONDS, .milliseconds = 110}});
    EXPECT_FALSE(set);
    EXPECT_EQ(output, ASKED);
    EXPECT_EQ(noted.clock, UNTOUCHED);
    EXPECT_EQ(seen.size(), 5U);
}

TEST_F(NtpNetwork, TakesAnAnswerToTheFifthRequest)
{
    const Scripted_Answer none{.silent = true};
    Scripted_Server server(Scripted_Answers{none, none, none, none, {.seconds = SECONDS}});
    EXPECT_TRUE(query());
    EXPECT_EQ(output, UPDATED);
    EXPECT_EQ(server.finish().size(), 5U);
}

TEST_F(NtpNetwork, TakesAnAnswerFromAnotherAddress)
{
    Scripted_Server server(Scripted_Answers{{.seconds = SECONDS, .fromElsewhere = true}});
    EXPECT_TRUE(query());
    EXPECT_EQ(output, UPDATED);
    EXPECT_EQ(noted.clock, 1700000000);
}

TEST_F(NtpNetwork, FailsForANameThatDoesNotResolve)
{
    for (const char *const server : {"nowhere.invalid", "", "0.0.0.0", "256.0.0.1", "not a name"}) {
        EXPECT_FALSE(query(server));
        EXPECT_EQ(output, std::string("NTP_Time_Get remote_server-") + server + "\n");
    }
    EXPECT_TRUE(noted.sends.empty());
}

/* No route leads out of the private network, so every send fails at once. */
TEST_F(NtpNetwork, DoesNotWaitAfterASendThatFails)
{
    EXPECT_FALSE(query("192.0.2.1"));
    EXPECT_EQ(output, "NTP_Time_Get remote_server-192.0.2.1\n");
    EXPECT_EQ(noted.sends.size(), 5U);
    EXPECT_TRUE(noted.waits.empty());
}

TEST_F(NtpNetwork, WorksWithASocketOfNumberZero)
{
    Scripted_Server server(Scripted_Answers{{.seconds = SECONDS}});
    Output_Capture capture;
    const int input = dup(0);
    close(0);
    const bool set = NTP_Time_Get("127.0.0.1");
    const int still_open = fcntl(0, F_GETFD);
    if (input >= 0) {
        dup2(input, 0);
        close(input);
    }
    EXPECT_EQ(capture.finish(), UPDATED);
    EXPECT_TRUE(set);
    EXPECT_EQ(noted.sockets, std::vector<int>{0});
    EXPECT_EQ(still_open, -1) << "the socket was not closed";
}

TEST_F(NtpNetwork, ClosesItsSocket)
{
    Scripted_Server server(Scripted_Answers{});
    query();
    ASSERT_FALSE(noted.sockets.empty());
    EXPECT_EQ(fcntl(noted.sockets[0], F_GETFD), -1);
}

} // namespace
