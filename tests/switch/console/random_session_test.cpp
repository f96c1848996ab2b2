/* Random lines typed into the full menu on the simulated chip. */

#include "tests/support/random_seed.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/console_session.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>

namespace
{

constexpr int LINES_PER_INPUT = 500;

/* Few VLANs are ever named, so that the startup file stays small when they are saved. */
constexpr const char *VALUES[] = {
    "0",
    "1",
    "2",
    "3",
    "4",
    "7",
    "8",
    "12",
    "13",
    "63",
    "64",
    "4095",
    "4096",
    "-1",
    "-3",
    "65537",
    "256",
    "y",
    "n",
    "Y",
    "yes",
    "abc",
    "0-4",
    "1-2",
    "1,2",
    "0-7",
    "0-63",
    "4-0",
    "1,,2",
    ",",
    " ",
    "1 - 2",
    "1-",
    "-",
    "\r",
    "0x",
    "999999999999",
    "2147483648",
    "1,4095",
    "1-34",
    "%s%n",
    "10",
};
constexpr char KEYS[] = "1234567812345678aAbBcCdDpPsSlLrR9eftz?\n";

class Lines
{
public:
    explicit Lines(uint32_t seed) : random_(seed) {}

    std::string next()
    {
        switch (below(8)) {
        case 0:
            return "\n";
        case 1:
            return below(12) == 0 ? "0\n" : "2\n";
        case 2:
            return bytes(below(40)) + "\n";
        case 3:
            return below(40) == 0 ? bytes(900 + below(300)) + "\n" : "y\n";
        case 4:
        case 5:
            return std::string(VALUES[below(std::size(VALUES))]) + "\n";
        default:
            return std::string(1, KEYS[below(sizeof KEYS - 1)]) + "\n";
        }
    }

private:
    uint32_t below(size_t bound) { return static_cast<uint32_t>(random_() % bound); }

    std::string bytes(uint32_t length)
    {
        std::string text;
        while (text.size() < length)
            text += static_cast<char>(below(256));
        return text;
    }

    std::mt19937 random_;
};

class RandomSession : public ConsoleSession
{
};

TEST_F(RandomSession, EndsWithItsInput)
{
    const Temporary_Folder folder;
    for (int vid = 1; vid <= 10; vid++)
        define_vlan(&running_, vid);
    applied_ = running_;
    use_startup_file(folder.write("startup.cfg", StartupFileText(running_)));

    Lines lines(test_seed());
    const int all = test_rounds(100000);
    for (int typed = 0; typed < all; typed += LINES_PER_INPUT) {
        std::string input;
        for (int i = 0; i < LINES_PER_INPUT; i++)
            input += lines.next();
        Input_Feed feed(input);
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
