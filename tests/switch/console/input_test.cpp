#include "switch/console/input.h"

#include "tests/support/input_feed.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
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

/* The answer is typed once the prompt shows, here in a file, where stdio would hold it back. */
TEST(ReadLine, ShowsThePromptBeforeItWaits)
{
    Input_Feed input("");
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
    close(ends[0]);

    Output_Capture output;
    bool shown = false;
    std::thread typist([&shown, end = ends[1]] {
        struct stat captured = {};
        for (int i = 0; i < 1000 && !shown; i++) {
            shown = fstat(STDOUT_FILENO, &captured) == 0 && captured.st_size == 6;
            if (!shown) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
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

} // namespace
