/* The query on a stand-in machine: every step, its arguments and its order. */

#include "ntp/client.h"
#include "tests/ntp/stand_in_platform.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <ostream>

namespace
{

using Calls = std::vector<std::string>;

struct Query {
    bool set;
    std::string output;
};

Query query(const char *server)
{
    Output_Capture capture;
    const bool set = NTP_Time_Get(server);
    return {set, capture.finish()};
}

class NtpQuery : public testing::Test
{
protected:
    NtpQuery() { setenv("TZ", "UTC", 1); }

    /* The fates of the first requests; later ones meet no answer. */
    void script(std::vector<Exchange> exchanges)
    {
        machine.exchange = [exchanges, next = size_t{0}]() mutable {
            return next < exchanges.size() ? exchanges[next++] : Exchange{.readable = false};
        };
    }

    Stand_In_Platform machine;
};

constexpr Exchange ANSWER{.seconds = 3908988800};
const char *const UPDATED = "NTP_Time_Get remote_server-192.0.2.1\n"
                            "NTP: Local Time Updated: Tue Nov 14 22:13:20 2023\n"
                            "\n";

TEST_F(NtpQuery, AsksOnceAndSetsTheClock)
{
    script({ANSWER});
    const Query result = query("192.0.2.1");
    EXPECT_TRUE(result.set);
    EXPECT_EQ(result.output, UPDATED);
    EXPECT_EQ(machine.journal, (Calls{"resolve 192.0.2.1", "open", "send 0 127.0.0.1",
                                      "wait 0 100000", "receive 0", "set 1700000000", "close 0"}));
    EXPECT_EQ(machine.request, NTP_REQUEST);
}

TEST_F(NtpQuery, PrintsTheLineAndFailsWhenTheClockIsRefused)
{
    script({ANSWER});
    machine.clockRefused = true;
    const Query result = query("192.0.2.1");
    EXPECT_FALSE(result.set);
    /* The clock is read back: it still shows its old time. */
    EXPECT_EQ(result.output, "NTP_Time_Get remote_server-192.0.2.1\n"
                             "NTP: Local Time Updated: Sun Sep 13 12:26:40 2020\n"
                             "\n");
    EXPECT_EQ(machine.journal, (Calls{"resolve 192.0.2.1", "open", "send 0 127.0.0.1",
                                      "wait 0 100000", "receive 0", "set 1700000000", "close 0"}));
}

TEST_F(NtpQuery, FailsWithoutASocketWhenTheNameHasNoAddress)
{
    machine.address = 0;
    const Query result = query("nowhere.example");
    EXPECT_FALSE(result.set);
    EXPECT_EQ(result.output, "NTP_Time_Get remote_server-nowhere.example\n");
    EXPECT_EQ(machine.journal, Calls{"resolve nowhere.example"});
}

TEST_F(NtpQuery, FailsWhenThereIsNoSocket)
{
    machine.socket = -1;
    const Query result = query("192.0.2.1");
    EXPECT_FALSE(result.set);
    EXPECT_EQ(result.output, "NTP_Time_Get remote_server-192.0.2.1\n");
    EXPECT_EQ(machine.journal, (Calls{"resolve 192.0.2.1", "open"}));
}

TEST_F(NtpQuery, TakesAServerTextOfAnyLength)
{
    machine.address = 0;
    const std::string server = std::string(60, 'a') + ".example";
    EXPECT_EQ(query(server.c_str()).output, "NTP_Time_Get remote_server-" + server + "\n");
    EXPECT_EQ(machine.journal, Calls{"resolve " + server});
}

struct Failure {
    const char *name;
    Exchange exchange;
    Calls calls; /* of each of the five attempts */
};

void PrintTo(const Failure &row, std::ostream *out)
{
    *out << row.name;
}

class NtpQueryFailure : public NtpQuery, public testing::WithParamInterface<Failure>
{
};

TEST_P(NtpQueryFailure, IsAnAttemptAndFiveAreMade)
{
    script(std::vector<Exchange>(6, GetParam().exchange));
    const Query result = query("192.0.2.1");
    EXPECT_FALSE(result.set);
    EXPECT_EQ(result.output, "NTP_Time_Get remote_server-192.0.2.1\n");
    Calls expected{"resolve 192.0.2.1", "open"};
    for (int attempt = 0; attempt < 5; ++attempt) {
        expected.insert(expected.end(), GetParam().calls.begin(), GetParam().calls.end());
    }
    expected.push_back("close 0");
    EXPECT_EQ(machine.journal, expected);
}

TEST_P(NtpQueryFailure, IsMadeGoodByAnAnswerToTheFifthRequest)
{
    const Exchange failure = GetParam().exchange;
    script({failure, failure, failure, failure, ANSWER});
    const Query result = query("192.0.2.1");
    EXPECT_TRUE(result.set);
    EXPECT_EQ(result.output, UPDATED);
    EXPECT_EQ(machine.clock, 1700000000);
}

const Calls SENT_ONLY{"send 0 127.0.0.1"};
const Calls WAITED{"send 0 127.0.0.1", "wait 0 100000"};
const Calls RECEIVED{"send 0 127.0.0.1", "wait 0 100000", "receive 0"};

const Failure FAILURES[] = {
    {"SendFails", {.sent = -1}, SENT_ONLY},
    {"NothingSent", {.sent = 0}, SENT_ONLY},
    {"NotReadable", {.readable = false}, WAITED},
    {"ReceiveFails", {.received = -1, .seconds = 3908988800}, RECEIVED},
    {"EmptyAnswer", {.received = 0, .seconds = 3908988800}, RECEIVED},
    {"Answer47", {.received = 47, .seconds = 3908988800}, RECEIVED},
    {"Answer49", {.received = 49, .seconds = 3908988800}, RECEIVED},
    {"Answer68WithAuthenticator", {.received = 68, .seconds = 3908988800}, RECEIVED},
};

INSTANTIATE_TEST_SUITE_P(Table, NtpQueryFailure, testing::ValuesIn(FAILURES),
                         [](const auto &row) { return row.param.name; });

/* Any positive count is a request sent. */
TEST_F(NtpQuery, WaitsAfterAPartSent)
{
    script({Exchange{.sent = 1, .seconds = 3908988800}});
    EXPECT_TRUE(query("192.0.2.1").set);
}

struct Date {
    const char *name;
    uint32_t seconds;
    const char *set;
    const char *text;
};

void PrintTo(const Date &row, std::ostream *out)
{
    *out << row.name;
}

class NtpQueryDate : public NtpQuery, public testing::WithParamInterface<Date>
{
};

TEST_P(NtpQueryDate, SetsAndPrints)
{
    script({Exchange{.seconds = GetParam().seconds}});
    const Query result = query("a");
    EXPECT_TRUE(result.set);
    EXPECT_EQ(result.output, std::string("NTP_Time_Get remote_server-a\n"
                                         "NTP: Local Time Updated: ") +
                                 GetParam().text + "\n\n");
    EXPECT_EQ(machine.journal.at(5), std::string("set ") + GetParam().set);
}

const Date DATES[] = {
    {"Zero", 0, "2085978496", "Thu Feb  7 06:28:16 2036"},
    {"LastBefore1970", 2208988799, "4294967295", "Sun Feb  7 06:28:15 2106"},
    {"StartOf1970", 2208988800, "0", "Thu Jan  1 00:00:00 1970"},
    {"LastBeforeTheWrap", 4294967295, "2085978495", "Thu Feb  7 06:28:15 2036"},
    {"Beyond2038", 61505152, "2147483648", "Tue Jan 19 03:14:08 2038"},
    {"Year2100", 2019686400, "4105664896", "Sun Feb  7 06:28:16 2100"},
};

INSTANTIATE_TEST_SUITE_P(Table, NtpQueryDate, testing::ValuesIn(DATES),
                         [](const auto &row) { return row.param.name; });

/* A clock far beyond the calendar, as a broken one may show. */
TEST_F(NtpQuery, PrintsAnEmptyTextForATimeWithoutADate)
{
    script({ANSWER});
    machine.clock = std::numeric_limits<time_t>::max();
    machine.clockRefused = true;
    EXPECT_EQ(query("a").output, "NTP_Time_Get remote_server-a\n"
                                 "NTP: Local Time Updated: \n");
}

/* The calendar text is of local time, and a changed time zone is seen. */
TEST_F(NtpQuery, PrintsLocalTime)
{
    script({ANSWER, ANSWER});
    query("192.0.2.1");
    setenv("TZ", "XYZ-2", 1);
    EXPECT_EQ(query("192.0.2.1").output, "NTP_Time_Get remote_server-192.0.2.1\n"
                                         "NTP: Local Time Updated: Wed Nov 15 00:13:20 2023\n"
                                         "\n");
}

} // namespace
