/* The built switch_console in a terminal. */

#include "tests/end_to_end/console/session.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/menu_texts.h"
#include "tests/switch/console/table_texts.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <utility>
#include <vector>

namespace
{

class SwitchConsoleTerminal : public testing::Test
{
protected:
    Temporary_Folder folder;
    std::vector<std::string> arguments = {"--simulate", folder.path() + "/startup.cfg"};
};

/* What is typed, and what shows before the next line is typed. */
const std::vector<std::pair<std::string, std::string>> SESSION = {
    {"", MAIN_MENU},
    {"1\n", FRAME_SIZE_PROMPT "(1632 Bytes):"},
    {"2\n", "Value out of range!\n"},
    {"5\n", vlan_menu({})},
    {"2\n", "Ports Range(0):"},
    {"\n", "Port VID(1):"},
    {"20\n", vlan_menu({.vid = " CPU:20"})},
    {"0\n", MAIN_TITLE NOT_APPLIED "\n" MAIN_KEYS("1632 Bytes")},
    {"8\n", QOS_MENU},
    {"b\n", "Ports Range(0):"},
    {"0\n", "Port prio(0):"},
    {"9\n", "Value out of range!" QOS_MENU},
    {"0\n", MAIN_TITLE NOT_APPLIED "\n" MAIN_KEYS("1632 Bytes")},
    {"d\n", "Set Factory Settings?(y/n)(no):"},
    {"y\n", "Switch: Factory Settings\n"},
};

/* In pipes nothing shows unless it is flushed; stdio itself flushes a terminal before a read. */
TEST_F(SwitchConsoleTerminal, ShowsEveryPromptBeforeItWaits)
{
    for (const Line line : {Line::TERMINAL, Line::PIPES}) {
        Live_Session session(arguments, line);
        std::string expected;
        for (const auto &[typed, shown] : SESSION) {
            session.type(typed);
            expected += shown;
            session.wait_for(expected.size());
            ASSERT_EQ(session.shown, expected);
        }
        session.type("0\n");
        EXPECT_EQ(session.finish(), exit_status(0));
        EXPECT_EQ(session.shown, expected);
    }
}

TEST_F(SwitchConsoleTerminal, ShowsWhatAPipeGets)
{
    std::string typed;
    std::string shown;
    for (const auto &[line, text] : SESSION) {
        typed += line;
        shown += text;
    }
    const Program_Run run = run_in_pipe(arguments, typed + "0\n");
    EXPECT_EQ(run.output, shown);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.status, exit_status(0));
}

TEST_F(SwitchConsoleTerminal, IsLeftWithControlDInEveryMenuAndPrompt)
{
    std::string typed;
    size_t length = 0;
    for (const auto &[line, text] : SESSION) {
        typed += line;
        length += text.size();
        Live_Session terminal(arguments);
        terminal.type(typed);
        terminal.wait_for(length);
        terminal.type("\x04");
        EXPECT_EQ(terminal.finish(), exit_status(0)) << "after: " << typed;
    }
}

TEST_F(SwitchConsoleTerminal, IsEndedByControlC)
{
    Live_Session terminal(arguments);
    terminal.wait_for(std::string(MAIN_MENU).size());
    terminal.type("\x03");
    EXPECT_EQ(terminal.finish(), SIGINT);
    EXPECT_EQ(terminal.shown, MAIN_MENU);
}

} // namespace
