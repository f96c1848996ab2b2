#include "ntp/client.h"
#include "ntp/dry_run.h"
#include "tests/ntp/stand_in_platform.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

namespace
{

class NtpDryRun : public testing::Test
{
protected:
    NtpDryRun()
    {
        setenv("TZ", "UTC", 1);
        machine.exchange = [] { return Exchange{.seconds = 3908988800}; };
        NTP_Use_Dry_Run_Clock();
    }

    Stand_In_Platform machine;
};

const std::string REPORT = "NTP_Time_Get remote_server-192.0.2.1\n"
                           "NTP: Dry run, clock would be set to 1700000000\n"
                           "NTP: Local Time Updated: Tue Nov 14 22:13:20 2023\n"
                           "\n";

TEST_F(NtpDryRun, ReportsTheTimeAndLeavesTheClockAlone)
{
    Output_Capture capture;
    EXPECT_TRUE(NTP_Time_Get("192.0.2.1"));
    EXPECT_EQ(capture.finish(), REPORT);
    EXPECT_EQ(machine.clock, 1600000000);
    EXPECT_EQ(machine.journal,
              (std::vector<std::string>{"resolve 192.0.2.1", "open", "send 0 127.0.0.1",
                                        "wait 0 100000", "receive 0", "close 0"}));
}

TEST_F(NtpDryRun, ReadsTheClockOfBeforeUntilItIsSet)
{
    EXPECT_EQ(NTP_Current_Platform().now(), 1600000000);
    machine.clock = 5;
    EXPECT_EQ(NTP_Current_Platform().now(), 5);
}

TEST_F(NtpDryRun, RunsOnFromTheTimeItWasSetTo)
{
    Output_Capture capture;
    NTP_Current_Platform().setClock(100);
    capture.finish();
    EXPECT_EQ(NTP_Current_Platform().now(), 100);
    usleep(1000000);
    EXPECT_GE(NTP_Current_Platform().now(), 101);
}

TEST_F(NtpDryRun, CanBeAskedForTwice)
{
    NTP_Use_Dry_Run_Clock();
    EXPECT_EQ(NTP_Current_Platform().now(), 1600000000);
    Output_Capture capture;
    EXPECT_TRUE(NTP_Time_Get("192.0.2.1"));
    EXPECT_EQ(capture.finish(), REPORT);
}

} // namespace
