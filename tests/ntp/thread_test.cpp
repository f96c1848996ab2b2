/* Start and thread on a stand-in machine, whose sleeps make simulated days pass at once. */

#include "ntp/client.h"
#include "tests/ntp/stand_in_platform.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>
#include <utility>

namespace
{

using Sleeps = std::vector<uint32_t>;

const std::string BEFORE = "--->>>NTP_Thread_Func ip=ntp.example\n"
                           "--->>>NTP_Thread_Func flag=0\n"
                           "--->>>NTP_Thread wake up\n"
                           "--->>>NTP_Thread Time 5f5e1023\n";
const std::string PASS = "--->>>NTP_Thread Time ntp_remote_server-ntp.example\n";
const std::string ASK = "NTP_Time_Get remote_server-ntp.example\n";
const std::string AFTER = ">>>>>>>>>>>>>>>>>>>>>>>>exit NTP_Thread\n";

std::string passes(int count)
{
    std::string text;
    for (int pass = 0; pass < count; ++pass) {
        text += PASS;
    }
    return text;
}

std::string set_to(const std::string &calendar_text)
{
    return ASK + "NTP: Local Time Updated: " + calendar_text + "\n\n";
}

class NtpThread : public testing::Test
{
protected:
    NtpThread() { setenv("TZ", "UTC", 1); }

    /* Lets the owner set the run flag at once and clear it so that this many passes are made. */
    void make_passes(size_t count)
    {
        machine.onSleep = [this, count](size_t sleep) { settings.runFlag = sleep < count; };
    }

    std::string run()
    {
        Output_Capture capture;
        EXPECT_EQ(NTP_Thread_Func(&settings), nullptr);
        return capture.finish();
    }

    /* Answers with the time that it is, so that the clock does not jump. */
    Exchange right_time() const
    {
        return {.seconds = static_cast<uint32_t>(machine.clock + 2208988800)};
    }

    Stand_In_Platform machine;
    NTP_Settings settings{"ntp.example", 0};
};

TEST_F(NtpThread, MakesOnePassAndEnds)
{
    EXPECT_EQ(run(), BEFORE + PASS + AFTER);
    EXPECT_EQ(machine.sleeps, (Sleeps{35, 30}));
    EXPECT_EQ(machine.journal, (std::vector<std::string>{"sleep 35", "sleep 30"}));
}

TEST_F(NtpThread, PrintsTheWakeUpTimeAs32Bits)
{
    machine.clock = 0x180000010 - 35;
    EXPECT_EQ(run(), "--->>>NTP_Thread_Func ip=ntp.example\n"
                     "--->>>NTP_Thread_Func flag=0\n"
                     "--->>>NTP_Thread wake up\n"
                     "--->>>NTP_Thread Time 80000010\n" +
                         PASS + AFTER);
}

struct Flag {
    const char *name;
    int32_t atStart;
    std::vector<std::pair<size_t, int32_t>> settings; /* number of the sleep, value */
    int passes;
};

void PrintTo(const Flag &row, std::ostream *out)
{
    *out << row.name;
}

class NtpRunFlag : public NtpThread, public testing::WithParamInterface<Flag>
{
};

TEST_P(NtpRunFlag, IsLookedAtOncePerPass)
{
    settings.runFlag = GetParam().atStart;
    machine.onSleep = [this](size_t sleep) {
        for (const auto &[number, value] : GetParam().settings) {
            if (number == sleep) {
                settings.runFlag = value;
            }
        }
    };
    EXPECT_EQ(run(), "--->>>NTP_Thread_Func ip=ntp.example\n"
                     "--->>>NTP_Thread_Func flag=" +
                         std::to_string(GetParam().atStart) +
                         "\n"
                         "--->>>NTP_Thread wake up\n"
                         "--->>>NTP_Thread Time 5f5e1023\n" +
                         passes(GetParam().passes) + AFTER);
}

const Flag FLAGS[] = {
    {"ClearAllTheTime", 0, {}, 1},
    {"SetBeforeTheThreadLooks", 1, {{1, 0}}, 1},
    {"SetBeforeTheThreadLooksClearedInTheThirdPass", 1, {{3, 0}}, 3},
    {"ClearedDuringTheFirstSleep", 1, {{0, 0}}, 1},
    {"SetDuringTheFirstSleep", 0, {{0, 1}, {4, 0}}, 4},
    {"SetDuringTheFirstPass", 0, {{1, 1}, {2, 0}}, 2},
    {"ClearedAndSetAgainWithinAPass", 1, {{1, 0}, {1, 1}, {2, 0}}, 2},
    {"NegativeMeansRun", 0, {{0, -1}, {2, 0}}, 2},
    {"LowByteZeroMeansRun", 0, {{0, 256}, {2, 0}}, 2},
};

INSTANTIATE_TEST_SUITE_P(Table, NtpRunFlag, testing::ValuesIn(FLAGS),
                         [](const auto &row) { return row.param.name; });

TEST_F(NtpThread, FinishesThePassInWhichTheFlagIsCleared)
{
    machine.clock = 0;
    settings.runFlag = 1;
    machine.exchange = [this] {
        settings.runFlag = 0;
        return Exchange{.seconds = 3908988800};
    };
    EXPECT_EQ(run(), "--->>>NTP_Thread_Func ip=ntp.example\n"
                     "--->>>NTP_Thread_Func flag=1\n"
                     "--->>>NTP_Thread wake up\n"
                     "--->>>NTP_Thread Time 23\n" +
                         PASS + set_to("Tue Nov 14 22:13:20 2023") +
                         "NTP: Time Initial Update - Ok\n" + AFTER);
    EXPECT_EQ(machine.sleeps, (Sleeps{35, 30}));
}

/* 480 passes are exactly four hours after the wake-up: not yet more than the interval. */
TEST_F(NtpThread, DoesNotUpdateAtTheInterval)
{
    make_passes(481);
    EXPECT_EQ(run(), BEFORE + passes(481) + AFTER);
}

TEST_F(NtpThread, UpdatesAfterTheInterval)
{
    make_passes(482);
    machine.exchange = [this] { return right_time(); };
    EXPECT_EQ(run(), BEFORE + passes(482) + "NTP: Auto Restart\n" +
                         set_to("Sun Sep 13 16:27:45 2020") + "NTP: Time Auto Update - Ok\n" +
                         AFTER);
}

/* Two days are 5760 passes; every 481st updates. */
TEST_F(NtpThread, UpdatesElevenTimesInTwoDays)
{
    make_passes(5760);
    machine.exchange = [this] { return right_time(); };
    const char *const updates[] = {
        "Sun Sep 13 16:27:45 2020", "Sun Sep 13 20:28:15 2020", "Mon Sep 14 00:28:45 2020",
        "Mon Sep 14 04:29:15 2020", "Mon Sep 14 08:29:45 2020", "Mon Sep 14 12:30:15 2020",
        "Mon Sep 14 16:30:45 2020", "Mon Sep 14 20:31:15 2020", "Tue Sep 15 00:31:45 2020",
        "Tue Sep 15 04:32:15 2020", "Tue Sep 15 08:32:45 2020",
    };
    std::string expected = BEFORE + PASS;
    for (const char *const update : updates) {
        expected +=
            passes(481) + "NTP: Auto Restart\n" + set_to(update) + "NTP: Time Auto Update - Ok\n";
    }
    EXPECT_EQ(run(), expected + passes(5760 - 1 - 11 * 481) + AFTER);
    EXPECT_EQ(machine.clock, 1600000000 + 35 + 5760 * 30);
}

/* The last update is noted before the query: after a failure the next comes four hours later. */
TEST_F(NtpThread, RepeatsAFailedUpdateAfterTheInterval)
{
    make_passes(482 + 481);
    int attempts = 0;
    machine.exchange = [&] {
        ++attempts;
        return attempts <= 5 ? Exchange{.readable = false} : right_time();
    };
    EXPECT_EQ(run(), BEFORE + passes(482) + "NTP: Auto Restart\n" + ASK +
                         "NTP: Time Auto Update - Fail\n" + passes(481) + "NTP: Auto Restart\n" +
                         set_to("Sun Sep 13 20:28:15 2020") + "NTP: Time Auto Update - Ok\n" +
                         AFTER);
    EXPECT_EQ(attempts, 6);
}

/* What counts is the time before the update; here the server sets the clock five hours on, and the
 * next pass finds the interval passed again. */
TEST_F(NtpThread, CountsTheIntervalFromBeforeTheUpdate)
{
    make_passes(484);
    machine.exchange = [this, first = true]() mutable {
        Exchange answer = right_time();
        answer.seconds += std::exchange(first, false) ? 18000 : 0;
        return answer;
    };
    EXPECT_EQ(run(), BEFORE + passes(482) + "NTP: Auto Restart\n" +
                         set_to("Sun Sep 13 21:27:45 2020") + "NTP: Time Auto Update - Ok\n" +
                         PASS + "NTP: Auto Restart\n" + set_to("Sun Sep 13 21:28:15 2020") +
                         "NTP: Time Auto Update - Ok\n" + PASS + AFTER);
}

/* The second update sets the clock back by 20 hours. What counts is still the time before it: the
 * next update comes more than four hours after the clock has reached that again. */
TEST_F(NtpThread, WaitsForTheClockToCatchUpAfterAJumpBackward)
{
    make_passes(3364);
    machine.exchange = [this, jump = 72000]() mutable {
        Exchange answer = right_time();
        answer.seconds += static_cast<uint32_t>(jump);
        jump = jump > 0 ? -jump : 0;
        return answer;
    };
    EXPECT_EQ(run(), BEFORE + passes(482) + "NTP: Auto Restart\n" +
                         set_to("Mon Sep 14 12:27:45 2020") + "NTP: Time Auto Update - Ok\n" +
                         PASS + "NTP: Auto Restart\n" + set_to("Sun Sep 13 16:28:15 2020") +
                         "NTP: Time Auto Update - Ok\n" + passes(2881) + "NTP: Auto Restart\n" +
                         set_to("Mon Sep 14 16:28:45 2020") + "NTP: Time Auto Update - Ok\n" +
                         AFTER);
}

TEST_F(NtpThread, FailsTheUpdateWhenTheClockIsRefused)
{
    make_passes(482);
    machine.clockRefused = true;
    machine.exchange = [this] { return right_time(); };
    EXPECT_EQ(run(), BEFORE + passes(482) + "NTP: Auto Restart\n" +
                         set_to("Sun Sep 13 16:27:45 2020") + "NTP: Time Auto Update - Fail\n" +
                         AFTER);
}

const std::string BEFORE_IN_1970 = "--->>>NTP_Thread_Func ip=ntp.example\n"
                                   "--->>>NTP_Thread_Func flag=0\n"
                                   "--->>>NTP_Thread wake up\n"
                                   "--->>>NTP_Thread Time 23\n";

TEST_F(NtpThread, SetsAClockThatWasNeverSetInTheFirstPass)
{
    machine.clock = 0;
    machine.exchange = [] { return Exchange{.seconds = 3908988800}; };
    EXPECT_EQ(run(), BEFORE_IN_1970 + PASS + set_to("Tue Nov 14 22:13:20 2023") +
                         "NTP: Time Initial Update - Ok\n" + AFTER);
    EXPECT_EQ(machine.clock, 1700000000 + 30);
}

/* The last update becomes the time after the initial one: no automatic update before four hours. */
TEST_F(NtpThread, CountsTheIntervalFromAfterTheInitialUpdate)
{
    machine.clock = 0;
    make_passes(482);
    machine.exchange = [this, first = true]() mutable {
        return std::exchange(first, false) ? Exchange{.seconds = 3908988800} : right_time();
    };
    EXPECT_EQ(run(), BEFORE_IN_1970 + PASS + set_to("Tue Nov 14 22:13:20 2023") +
                         "NTP: Time Initial Update - Ok\n" + passes(481) + "NTP: Auto Restart\n" +
                         set_to("Wed Nov 15 02:13:50 2023") + "NTP: Time Auto Update - Ok\n" +
                         AFTER);
}

TEST_F(NtpThread, RepeatsAFailedInitialUpdateInEveryPass)
{
    machine.clock = 0;
    make_passes(4);
    int attempts = 0;
    machine.exchange = [&] {
        ++attempts;
        return attempts <= 10 ? Exchange{.readable = false} : Exchange{.seconds = 3908988800};
    };
    const std::string failed = PASS + ASK + "NTP: Time Initial Update - Failed \n";
    EXPECT_EQ(run(), BEFORE_IN_1970 + failed + failed + PASS + set_to("Tue Nov 14 22:13:20 2023") +
                         "NTP: Time Initial Update - Ok\n" + PASS + AFTER);
}

/* Both updates in one pass: "1970" is looked for in the time read before the first of them. */
TEST_F(NtpThread, AsksTwiceInAPassThatIsDueAndIn1970)
{
    machine.clock = 0;
    make_passes(483);
    int attempts = 0;
    machine.exchange = [&] {
        ++attempts;
        return attempts <= 481 * 5 ? Exchange{.readable = false} : Exchange{.seconds = 3908988800};
    };
    std::string expected = BEFORE_IN_1970;
    for (int pass = 0; pass < 481; ++pass) {
        expected += PASS + ASK + "NTP: Time Initial Update - Failed \n";
    }
    EXPECT_EQ(run(), expected + PASS + "NTP: Auto Restart\n" + set_to("Tue Nov 14 22:13:20 2023") +
                         "NTP: Time Auto Update - Ok\n" + set_to("Tue Nov 14 22:13:20 2023") +
                         "NTP: Time Initial Update - Ok\n" + PASS + AFTER);
}

struct Year {
    const char *name;
    const char *zone;
    time_t clock; /* at the first pass */
    bool updated;
};

void PrintTo(const Year &row, std::ostream *out)
{
    *out << row.name;
}

class NtpInitialUpdate : public NtpThread, public testing::WithParamInterface<Year>
{
};

TEST_P(NtpInitialUpdate, IsMadeWhileTheLocalYearIs1970)
{
    setenv("TZ", GetParam().zone, 1);
    machine.clock = GetParam().clock - 35;
    const std::string output = run();
    EXPECT_EQ(output.substr(output.find(PASS)),
              GetParam().updated ? PASS + ASK + "NTP: Time Initial Update - Failed \n" + AFTER
                                 : PASS + AFTER);
}

const Year YEARS[] = {
    {"FirstSecond", "UTC", 0, true},
    {"LastSecond", "UTC", 31535999, true},
    {"FirstSecondOf1971", "UTC", 31536000, false},
    {"LastSecondOf1969", "UTC", -1, false},
    {"StillLocally1969", "XYZ5", 0, false},
    {"StillLocally1970", "XYZ5", 31536000, true},
};

INSTANTIATE_TEST_SUITE_P(Table, NtpInitialUpdate, testing::ValuesIn(YEARS),
                         [](const auto &row) { return row.param.name; });

/* The text of an unterminated record is its first 19 bytes. */
TEST_F(NtpThread, NeverReadsPastTheServerText)
{
    memset(settings.server, 'x', sizeof settings.server);
    settings.runFlag = 0x41414141;
    machine.onSleep = [this](size_t) { settings.runFlag = 0; };
    machine.clock = 0;
    const std::string server(19, 'x');
    EXPECT_EQ(run(), "--->>>NTP_Thread_Func ip=" + server +
                         "\n"
                         "--->>>NTP_Thread_Func flag=1094795585\n"
                         "--->>>NTP_Thread wake up\n"
                         "--->>>NTP_Thread Time 23\n"
                         "--->>>NTP_Thread Time ntp_remote_server-" +
                         server +
                         "\n"
                         "NTP_Time_Get remote_server-" +
                         server +
                         "\n"
                         "NTP: Time Initial Update - Failed \n" +
                         AFTER);
}

class NtpPollingPeriod : public NtpThread
{
protected:
    ~NtpPollingPeriod() override { NTP_Set_Polling_Period(30); }
};

TEST_F(NtpPollingPeriod, IsTheSleepOfEveryPassAndFiveLessThanTheFirst)
{
    ASSERT_TRUE(NTP_Set_Polling_Period(7));
    make_passes(2);
    run();
    EXPECT_EQ(machine.sleeps, (Sleeps{12, 7, 7}));
}

TEST_F(NtpPollingPeriod, CanChangeWhileTheThreadRuns)
{
    machine.onSleep = [this](size_t sleep) {
        settings.runFlag = sleep < 3;
        NTP_Set_Polling_Period(sleep == 1 ? 1 : 2147483642);
    };
    run();
    EXPECT_EQ(machine.sleeps, (Sleeps{35, 2147483642, 1, 2147483642}));
}

TEST_F(NtpPollingPeriod, TakesTheLargestThatHasAFirstSleep)
{
    ASSERT_TRUE(NTP_Set_Polling_Period(2147483642));
    run();
    EXPECT_EQ(machine.sleeps, (Sleeps{2147483647, 2147483642}));
}

TEST_F(NtpPollingPeriod, RefusesOthersAndStays)
{
    for (const int32_t refused : {0, -1, -2147483647 - 1, 2147483643, 2147483647}) {
        EXPECT_FALSE(NTP_Set_Polling_Period(refused)) << refused;
    }
    run();
    EXPECT_EQ(machine.sleeps, (Sleeps{35, 30}));
}

class NtpStart : public NtpThread
{
protected:
    std::string start(bool created)
    {
        Output_Capture capture;
        EXPECT_EQ(NTP_Thread_Init(&settings), created);
        return capture.finish();
    }
};

TEST_F(NtpStart, CreatesNoThreadWithoutTheRunFlag)
{
    EXPECT_EQ(start(false), ">>>NTP Thread_Init\n"
                            ">>>NTP Thread_Init:IP=ntp.example\n"
                            ">>>NTP Thread_Init:start=0\n");
    EXPECT_EQ(machine.threadFunction, nullptr);
}

TEST_F(NtpStart, ClearsTheFlagBeforeItCreatesTheThread)
{
    settings.runFlag = 1;
    int32_t seen = -1;
    machine.onStart = [&] { seen = settings.runFlag; };
    EXPECT_EQ(start(true), ">>>NTP Thread_Init\n"
                           ">>>NTP Thread_Init:IP=ntp.example\n"
                           ">>>NTP Thread_Init:start=1\n"
                           "--->>>NTP Tres_create 0\n");
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(machine.threadFunction, &NTP_Thread_Func);
    EXPECT_EQ(machine.threadArgument, &settings);
    EXPECT_EQ(machine.journal, std::vector<std::string>{});
}

TEST_F(NtpStart, TakesANegativeFlagForSet)
{
    settings.runFlag = -5;
    EXPECT_EQ(start(true), ">>>NTP Thread_Init\n"
                           ">>>NTP Thread_Init:IP=ntp.example\n"
                           ">>>NTP Thread_Init:start=-5\n"
                           "--->>>NTP Tres_create 0\n");
}

/* 11 is EAGAIN, in hexadecimal. */
TEST_F(NtpStart, ReportsAThreadThatCannotBeCreated)
{
    settings.runFlag = 1;
    machine.threadResult = 11;
    EXPECT_EQ(start(false), ">>>NTP Thread_Init\n"
                            ">>>NTP Thread_Init:IP=ntp.example\n"
                            ">>>NTP Thread_Init:start=1\n"
                            "--->>>NTP Tres_create b\n");
    EXPECT_EQ(settings.runFlag, 0);
}

TEST_F(NtpStart, NeverReadsPastTheServerText)
{
    memset(settings.server, 'y', sizeof settings.server);
    settings.runFlag = 0x41414141;
    EXPECT_EQ(start(true), ">>>NTP Thread_Init\n"
                           ">>>NTP Thread_Init:IP=yyyyyyyyyyyyyyyyyyy\n"
                           ">>>NTP Thread_Init:start=1094795585\n"
                           "--->>>NTP Tres_create 0\n");
}

} // namespace
