#include "switch/console/input.h"

#include "tests/support/input_feed.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace std::string_view_literals;

namespace
{

std::string read_line(int size)
{
    char buffer[SW_MENU_LINE_SIZE];
    std::memset(buffer, '#', sizeof buffer);
    return SW_Read_Line(buffer, size) ? buffer : "end:" + std::string(buffer);
}

TEST(ReadLine, TakesALineWithItsLineFeed)
{
    Input_Feed input("first\nsecond\n");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "first\n");
    EXPECT_EQ(input.rest(), "second\n");
}

TEST(ReadLine, CountsALastLineWithoutALineFeedOnce)
{
    Input_Feed input("last");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "last");
    EXPECT_FALSE(SW_Input_Ended());
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "end:");
    EXPECT_TRUE(SW_Input_Ended());
}

TEST(ReadLine, FindsNothingAgainAfterTheEnd)
{
    Input_Feed input("");
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(read_line(SW_MENU_LINE_SIZE), "end:");
        EXPECT_TRUE(SW_Input_Ended());
    }
}

TEST(ReadLine, FindsTheEndOfAClosedStandardInput)
{
    Input_Feed input("never read\n");
    close(STDIN_FILENO);
    EXPECT_EQ(read_line(SW_MENU_LINE_SIZE), "end:");
    EXPECT_EQ(read_line(SW_MENU_LINE_SIZE), "end:");
    EXPECT_TRUE(SW_Input_Ended());
}

TEST(ReadLine, ForgetsTheEndWithTheNextLine)
{
    {
        Input_Feed input("");
        EXPECT_EQ(read_line(SW_MENU_LINE_SIZE), "end:");
    }
    Input_Feed input("more\n");
    EXPECT_EQ(read_line(SW_MENU_LINE_SIZE), "more\n");
    EXPECT_FALSE(SW_Input_Ended());
}

TEST(ReadLine, LeavesTheRestOfALongLineToTheNextRead)
{
    Input_Feed input("123456789012345678901\nnext\n");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "123456789012345678");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "901\n");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "next\n");
}

TEST(ReadLine, TakesAtMost999CharactersForAMenu)
{
    const std::string line(1500, 'x');
    Input_Feed input(line + "\n");
    EXPECT_EQ(read_line(SW_MENU_LINE_SIZE), line.substr(0, 999));
    EXPECT_EQ(input.rest(), line.substr(999) + "\n");
}

TEST(ReadLine, EndsTheTextAtANulByte)
{
    Input_Feed input("ab\0cd\n\0\nz\n"sv);
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "ab");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "z\n");
}

/* Makes the reading end of a pipe the standard input, which an Input_Feed of the caller puts back;
 * returns the writing end. */
int type_into_pipe(int flags)
{
    int ends[2] = {-1, -1};
    EXPECT_EQ(pipe2(ends, flags), 0);
    EXPECT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
    close(ends[0]);
    return ends[1];
}

void pause_for(int milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

/* The answer is typed once the prompt shows, here in a file, where stdio would hold it back. */
TEST(ReadLine, ShowsThePromptBeforeItWaits)
{
    Input_Feed input("");
    const int end = type_into_pipe(0);

    Output_Capture output;
    bool shown = false;
    std::thread typist([&shown, end] {
        struct stat captured = {};
        for (int i = 0; i < 1000 && !shown; i++) {
            shown = fstat(STDOUT_FILENO, &captured) == 0 && captured.st_size == 6;
            if (!shown) {
                pause_for(10);
            }
        }
        EXPECT_EQ(write(end, "yes\n", 4), 4);
        close(end);
    });
    std::printf("Value:");
    const std::string line = read_line(SW_VALUE_LINE_SIZE);
    typist.join();
    EXPECT_EQ(output.finish(), "Value:");
    EXPECT_EQ(line, "yes\n");
    EXPECT_TRUE(shown);
}

/* The processor time of this thread. */
std::chrono::nanoseconds time_used()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

class ReadLineInPieces : public testing::TestWithParam<int>
{
};

/* Each piece comes once the one before is taken, after a while in which signals interrupt the
 * wait. */
TEST_P(ReadLineInPieces, WaitsForTheWholeLineWithoutSpinning)
{
    struct sigaction interrupt = {};
    struct sigaction before = {};
    interrupt.sa_handler = [](int) {};
    sigaction(SIGUSR1, &interrupt, &before);
    Input_Feed input("");
    const int end = type_into_pipe(GetParam());

    std::thread typist([end, reader = pthread_self()] {
        for (const std::string_view piece : {"1234", "5678", "9\nnext", "\n"}) {
            for (int i = 0; i < 10; i++) {
                pause_for(10);
                pthread_kill(reader, SIGUSR1);
            }
            EXPECT_EQ(write(end, piece.data(), piece.size()), static_cast<ssize_t>(piece.size()));
            int left = 1;
            for (int i = 0; i < 1000 && left > 0; i++) {
                pause_for(1);
                EXPECT_EQ(ioctl(end, FIONREAD, &left), 0);
            }
        }
        close(end);
    });
    const auto used_before = time_used();
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "123456789\n");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "next\n");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "end:");
    EXPECT_LT(time_used() - used_before, std::chrono::milliseconds(200)) << "of 400 waited";
    typist.join();
    sigaction(SIGUSR1, &before, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Input, ReadLineInPieces, testing::Values(0, O_NONBLOCK),
                         [](const auto &row) {
                             return row.param == 0 ? "Waiting" : "NonBlocking";
                         });

/* A peer that ends with unread bytes resets the connection. */
TEST(ReadLine, DropsHalfALineWhenTheReadFails)
{
    Input_Feed input("");
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    ASSERT_EQ(write(ends[0], "unread", 6), 6);
    ASSERT_EQ(write(ends[1], "whole\nhalf", 10), 10);
    close(ends[1]);
    ASSERT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
    close(ends[0]);
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "whole\n");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "end:");
    EXPECT_EQ(read_line(SW_VALUE_LINE_SIZE), "end:");
}

} // namespace
