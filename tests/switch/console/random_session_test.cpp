/* Random lines typed into the full menu on the simulated chip. */

#include "tests/support/random_seed.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/console_session.h"
#include "tests/switch/console/random_lines.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr int LINES_PER_INPUT = 500;

class RandomSession : public ConsoleSession
{
};

TEST_F(RandomSession, EndsWithItsInput)
{
    const Temporary_Folder folder;
    for (int vid = 1; vid <= 10; vid++) {
        define_vlan(&running_, vid);
    }
    applied_ = running_;
    use_startup_file(folder.write("startup.cfg", StartupFileText(running_)));

    Random_Lines lines(test_seed());
    const int all = test_rounds(100000);
    for (int typed = 0; typed < all; typed += LINES_PER_INPUT) {
        Input_Feed feed(lines.next(LINES_PER_INPUT));
        Output_Capture output;
        /* Left by "0", the menu is entered again; at the end it has read everything. */
        while (!std::feof(stdin)) {
            force_exit_ = 0;
            Main_Menu(&control_, path_.c_str(), &force_exit_, false);
        }
        EXPECT_EQ(feed.rest(), "");
        recorder_.records.clear();
        EXPECT_NE(output.finish().find(MAIN_TITLE), std::string::npos);
    }
}

} // namespace
