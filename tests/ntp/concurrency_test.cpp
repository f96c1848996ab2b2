/* Real threads over real, short sleeps; the run flag is the only word shared with the owner. */

#include "ntp/client.h"
#include "ntp/platform.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <sstream>
#include <string>
#include <vector>

namespace
{

std::atomic<int> sleeps;
std::atomic<bool> held;
std::vector<pthread_t> threads;

time_t steady_clock_of_2020()
{
    return 1600000000;
}

/* The first sleep lasts until the owner is done with the start, as 35 seconds surely do. */
void short_sleep(uint32_t)
{
    do {
        usleep(1000);
    } while (held.load(std::memory_order_relaxed));
    sleeps.fetch_add(1, std::memory_order_relaxed);
}

/* As the machine's, with the handle kept, so that a test can wait for the end. */
int start_thread(void *(*function)(void *), void *argument)
{
    pthread_t thread{};
    const int result = pthread_create(&thread, nullptr, function, argument);
    if (result == 0) {
        threads.push_back(thread);
    }
    return result;
}

std::vector<std::string> sorted_lines(const std::string &text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

class NtpConcurrency : public testing::Test
{
protected:
    NtpConcurrency() : platform(NTP_System_Platform)
    {
        sleeps = 0;
        held = false;
        threads.clear();
        platform.now = steady_clock_of_2020;
        platform.sleepSeconds = short_sleep;
        platform.startThread = start_thread;
        NTP_Set_Platform(&platform);
    }
    ~NtpConcurrency() override { NTP_Set_Platform(&NTP_System_Platform); }

    /* Starts the thread and sets the flag again during its first sleep. */
    void start_and_keep()
    {
        held.store(true, std::memory_order_relaxed);
        ASSERT_TRUE(NTP_Thread_Init(&settings));
        settings.runFlag.store(1, std::memory_order_relaxed);
        held.store(false, std::memory_order_relaxed);
    }

    static void wait_for_sleeps(int count)
    {
        for (int tries = 0; sleeps.load(std::memory_order_relaxed) < count; ++tries) {
            ASSERT_LT(tries, 100000) << "the thread sleeps no more";
            usleep(100);
        }
    }

    static void join_threads()
    {
        for (const pthread_t thread : threads) {
            EXPECT_EQ(pthread_join(thread, nullptr), 0);
        }
    }

    static std::string passes(int count)
    {
        std::string text;
        for (int pass = 0; pass < count; ++pass) {
            text += "--->>>NTP_Thread Time ntp_remote_server-10.0.0.1\n";
        }
        return text;
    }

    NTP_Platform platform;
    NTP_Settings settings{"10.0.0.1", 1};
};

/* The thread may look at the flag before or after the owner has set it again. */
TEST_F(NtpConcurrency, KeepsPollingUntilTheOwnerClearsTheFlag)
{
    Output_Capture capture;
    start_and_keep();
    wait_for_sleeps(10);
    settings.runFlag.store(0, std::memory_order_relaxed);
    join_threads();

    std::string output = capture.finish();
    const std::string later = "_Func flag=1";
    const size_t place = output.find(later);
    if (place != std::string::npos) {
        output.replace(place, later.size(), "_Func flag=0");
    }
    EXPECT_GE(sleeps, 10);
    /* The two threads' first lines have no fixed order. */
    EXPECT_EQ(sorted_lines(output),
              sorted_lines(">>>NTP Thread_Init\n"
                           ">>>NTP Thread_Init:IP=10.0.0.1\n"
                           ">>>NTP Thread_Init:start=1\n"
                           "--->>>NTP Tres_create 0\n"
                           "--->>>NTP_Thread_Func ip=10.0.0.1\n"
                           "--->>>NTP_Thread_Func flag=0\n"
                           "--->>>NTP_Thread wake up\n"
                           "--->>>NTP_Thread Time 5f5e1000\n" +
                           passes(sleeps - 1) + ">>>>>>>>>>>>>>>>>>>>>>>>exit NTP_Thread\n"));
}

TEST_F(NtpConcurrency, EndsAfterOnePassWhenTheFlagIsLeftAlone)
{
    Output_Capture capture;
    ASSERT_TRUE(NTP_Thread_Init(&settings));
    join_threads();
    capture.finish();
    EXPECT_EQ(sleeps, 2);
}

/* The second start clears the flag that the first thread runs by. */
TEST_F(NtpConcurrency, EndsBothThreadsWhenASecondIsStarted)
{
    Output_Capture capture;
    start_and_keep();
    wait_for_sleeps(5);
    ASSERT_TRUE(NTP_Thread_Init(&settings));
    join_threads();
    const std::vector<std::string> lines = sorted_lines(capture.finish());
    EXPECT_EQ(threads.size(), 2U);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), ">>>>>>>>>>>>>>>>>>>>>>>>exit NTP_Thread"), 2);
    EXPECT_EQ(settings.runFlag.load(), 0);
}

} // namespace
