/* What the built switch_console keeps in memory while its menu waits. */

#include "tests/end_to_end/console/session.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/menu_texts.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{

/* The records of the console, the simulated chip and what the libraries need. */
constexpr size_t MOST_KIB = 1536;

/* The menu loads the file again each time that it is shown. */
TEST(SwitchConsoleMemory, TheLargestFileLeavesNothingBehindHoweverOftenItIsLoaded)
{
    const Temporary_Folder folder;
    const auto config = std::make_unique<SW_Config>();
    SetAllVlans(config.get());
    const std::string startup = folder.write("all_vlans.cfg", StartupFileText(*config));
    Live_Session terminal({"--simulate", "--load", startup});
    std::string expected = "Switch: Load SW Config from \"" + startup + "\" - Ok\n" + MAIN_MENU;
    for (int shown = 1; shown <= 5; shown++) {
        terminal.wait_for(expected.size());
        ASSERT_EQ(terminal.shown, expected);
        EXPECT_GT(terminal.private_memory(), 0U);
        EXPECT_LE(terminal.private_memory(), MOST_KIB) << "menu shown " << shown << " times";
        terminal.type("\n");
        expected += MAIN_MENU;
    }
}

} // namespace
