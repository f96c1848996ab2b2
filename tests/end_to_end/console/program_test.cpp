/* The built switch_console: its options, its host's part, and sessions from a pipe. */

#include "tests/end_to_end/console/session.h"
#include "tests/support/private_root.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/menu_texts.h"
#include "tests/switch/console/table_texts.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <ostream>
#include <regex>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace
{

constexpr const char *USAGE =
    "usage: switch_console [--vlan] [--load | --configure] [--backup] [--simulate] [--trace FILE]\n"
    "                      STARTUP_FILE\n"
    "\n"
    "Runs the switch console on standard input and output until its menu is left.\n"
    "\n"
    "  --vlan        show the menu for VLAN port modes in place of the full one\n"
    "  --load        load the startup file first, for a chip that was configured from it before\n"
    "  --configure   load the startup file first and write it to the chip; the factory settings\n"
    "                when it cannot be loaded\n"
    "  --backup      keep the startup file as it is now as STARTUP_FILE.bak first\n"
    "  --simulate    use a simulated chip in place of the device /dev/mdio\n"
    "  --trace FILE  write a line for each register access: R or W, SMI address, register, value\n"
    "  --help        print this text\n"
    "  --version     print the version\n"
    "\n"
    "STARTUP_FILE is what the console loads from and saves to.\n";

TEST(SwitchConsole, HelpPrintsTheUsage)
{
    EXPECT_EQ(run_in_pipe({"--help"}, ""), (Program_Run{exit_status(0), USAGE, ""}));
    EXPECT_EQ(run_in_pipe({"--vlan", "--help", "--nonsense"}, ""),
              (Program_Run{exit_status(0), USAGE, ""}));
}

TEST(SwitchConsole, PrintsItsVersion)
{
    EXPECT_EQ(run_in_pipe({"--simulate", "--version"}, ""),
              (Program_Run{exit_status(0), "switch_console 0.1.0\n", ""}));
}

struct Bad_Usage {
    const char *name;
    std::vector<std::string> arguments;
    const char *message;
};

void PrintTo(const Bad_Usage &usage, std::ostream *out)
{
    *out << usage.name;
}

const Bad_Usage BAD_USAGES[] = {
    {"NoStartupFile", {}, "no startup file"},
    {"OptionsOnly", {"--vlan", "--load", "--simulate"}, "no startup file"},
    {"UnknownOption", {"--fast", "a.cfg"}, "unknown option: --fast"},
    {"ShortOption", {"-v", "a.cfg"}, "unknown option: -v"},
    {"AbbreviatedOption", {"--sim", "a.cfg"}, "unknown option: --sim"},
    {"TwoStartupFiles", {"a.cfg", "b.cfg"}, "more than one startup file: b.cfg"},
    {"EmptyStartupFile", {""}, "the startup file's path is empty"},
    {"TraceWithoutAFile", {"a.cfg", "--trace"}, "--trace needs the path of a file"},
    {"TraceToNoFile", {"--trace=", "a.cfg"}, "--trace needs the path of a file: "},
    {"AbbreviatedOptionWithoutItsValue", {"--trac"}, "unknown option: --trac"},
    {"LetterAboveAscii", {"-\xE9", "a.cfg"}, "unknown option: -\xE9"},
    {"LoadAndConfigure",
     {"--load", "--configure", "a.cfg"},
     "--configure loads the file: not with --load"},
    {"TraceTakesTheNextArgument", {"--trace", "a.cfg"}, "no startup file"},
};

class SwitchConsoleUsage : public testing::TestWithParam<Bad_Usage>
{
};

TEST_P(SwitchConsoleUsage, IsRefused)
{
    EXPECT_EQ(run_in_pipe(GetParam().arguments, "0\n"),
              (Program_Run{exit_status(2), "",
                           std::string("switch_console: ") + GetParam().message + "\n" + USAGE}));
}

INSTANTIATE_TEST_SUITE_P(Arguments, SwitchConsoleUsage, testing::ValuesIn(BAD_USAGES),
                         [](const auto &row) { return std::string(row.param.name); });

class SwitchConsoleSession : public testing::Test
{
protected:
    Temporary_Folder folder;
    std::string startup = folder.path() + "/startup.cfg";

    std::string start_load(const char *result) const
    {
        return "Switch: Load SW Config from \"" + startup + "\" - " + result + "\n";
    }
};

TEST_F(SwitchConsoleSession, ATraceThatCannotBeOpenedIsOneLine)
{
    const std::string trace = folder.path() + "/no such folder/trace";
    EXPECT_EQ(run_in_pipe({"--simulate", "--trace", trace, startup}, "0\n"),
              (Program_Run{exit_status(1), "",
                           "switch_console: " + trace + ": No such file or directory\n"}));
}

/* Nothing is started: not even the trace's file is made. */
TEST_F(SwitchConsoleSession, ABackupThatCannotBeMadeIsOneLine)
{
    const std::string trace = folder.path() + "/trace";
    folder.write("startup.cfg", "[SW_PORT1]\nVID = 5\n");
    folder.write("startup.cfg.bak/taken", "");
    EXPECT_EQ(
        run_in_pipe({"--simulate", "--backup", "--trace", trace, startup}, "0\n"),
        (Program_Run{exit_status(1), "", "switch_console: " + startup + ".bak: Is a directory\n"}));
    EXPECT_NE(access(trace.c_str(), F_OK), 0);
    EXPECT_NE(access((startup + ".bak.new").c_str(), F_OK), 0);
}

TEST_F(SwitchConsoleSession, ABackupHoldsTheFileAsItWasBeforeTheSession)
{
    const std::string before = "[SW_PORT1]\nVID = 5 # five\n";
    folder.write("startup.cfg", before);
    folder.write("startup.cfg.bak", "an older and a longer one, of another session\n");
    EXPECT_EQ(run_in_pipe({"--simulate", "--backup", startup}, "s\n0\n").status, exit_status(0));
    EXPECT_EQ(folder.read("startup.cfg.bak"), before);
    EXPECT_NE(folder.read("startup.cfg"), before);
}

TEST_F(SwitchConsoleSession, WithoutAStartupFileThereIsNothingToBackUp)
{
    EXPECT_EQ(run_in_pipe({"--simulate", "--backup", startup}, ""),
              (Program_Run{exit_status(0), MAIN_MENU, ""}));
    EXPECT_NE(access((startup + ".bak").c_str(), F_OK), 0);
}

/* A pipe would keep the start waiting. */
TEST_F(SwitchConsoleSession, WhatIsNoFileIsNotBackedUp)
{
    ASSERT_EQ(mkfifo(startup.c_str(), 0600), 0);
    EXPECT_EQ(
        run_in_pipe({"--simulate", "--backup", startup}, "0\n"),
        (Program_Run{exit_status(1), "", "switch_console: " + startup + ": not a regular file\n"}));
}

TEST_F(SwitchConsoleSession, ALostTraceIsToldOnceAndStopsNothing)
{
    EXPECT_EQ(run_in_pipe({"--simulate", "--trace", "/dev/full", startup}, "0\n"),
              (Program_Run{exit_status(0), MAIN_MENU,
                           "switch_console: /dev/full: No space left on device\n"}));
}

TEST_F(SwitchConsoleSession, AReaderThatIsGoneStopsNothing)
{
    EXPECT_EQ(run_without_a_reader({"--simulate", startup}, "1\n0\ns\n0\n"),
              (Program_Run{exit_status(0), "", ""}));
    EXPECT_NE(folder.read("startup.cfg").find("MAX_FRAME_SIZE = 1522"), std::string::npos);
}

/* The saved file has all its keys, so that no banner shows. */
TEST_F(SwitchConsoleSession, ConfiguresTheChipFromTheFile)
{
    run_in_pipe({"--simulate", startup}, "s\n0\n");
    folder.write("startup.cfg",
                 std::regex_replace(folder.read("startup.cfg"),
                                    std::regex(" EGRESS_RATE = NO_LIMIT"), " EGRESS_RATE = 64M"));
    EXPECT_EQ(run_in_pipe({"--simulate", "--configure", startup}, "4\n3\n0\n"),
              (Program_Run{exit_status(0),
                           start_load("Ok") +
                               "Switch: Configure: Ok\n" MAIN_MENU "Ports Range(0):" VLAN_HEADER
                               "SFP0|   1|False   |Disable   |False  |False   |Unmodify "
                               "egress|False   | 64M bits/sec|False|True |True \n",
                           ""}));
}

/* The list ends the reading; it and the key after it are lost. */
TEST_F(SwitchConsoleSession, KeysThatAreNotReadAreToldOnceBeforeTheMenu)
{
    folder.write("startup.cfg", "[SW_PORT1]\nVLAN_PORT_LIST = \"10-20\"\nVLAN_PORT_TYPE = TRUNK\n");
    Live_Session session({"--simulate", "--load", startup});
    session.type("x\n0\n");
    EXPECT_EQ(session.finish(), exit_status(0));
    const std::string menu = MAIN_TITLE NOT_SAVED "\n" MAIN_KEYS("1632 Bytes");
    EXPECT_EQ(session.shown, "switch_console: " + startup + ": 2 keys after line 2 are not read\n" +
                                 start_load("Ok") + menu + menu);
}

/* As ./run shows it. */
TEST_F(SwitchConsoleSession, TheExampleOnTheChipShowsNoBanner)
{
    startup = EXAMPLE_STARTUP_FILE;
    EXPECT_EQ(
        run_in_pipe({"--simulate", "--configure", startup}, ""),
        (Program_Run{exit_status(0), start_load("Ok") + "Switch: Configure: Ok\n" MAIN_MENU, ""}));
}

/* The host presets the factory settings: a failed load leaves them. */
TEST_F(SwitchConsoleSession, WithoutAStartupFileItHasTheFactorySettings)
{
    EXPECT_EQ(run_in_pipe({"--simulate", "--load", startup}, "c\n0\n"),
              (Program_Run{exit_status(0), start_load("Failed") + MAIN_MENU FACTORY_CONFIG, ""}));
}

TEST_F(SwitchConsoleSession, WithoutTheLoadOptionItStartsFromTheFactorySettings)
{
    EXPECT_EQ(run_in_pipe({"--simulate", startup}, "1\n0\ns\n0\n").status, exit_status(0));
    EXPECT_EQ(run_in_pipe({"--simulate", startup}, "00\n"),
              (Program_Run{exit_status(0), MAIN_TITLE NOT_SAVED "\n" MAIN_KEYS("1632 Bytes"), ""}));
}

TEST_F(SwitchConsoleSession, LoadsWhatItSaved)
{
    const std::string saving = "5\n2\n1\n77\n0\ns\n0\n";
    EXPECT_EQ(run_in_pipe({"--simulate", startup}, saving).status, exit_status(0));
    EXPECT_NE(folder.read("startup.cfg").find("VID = 77"), std::string::npos);
    EXPECT_EQ(run_in_pipe({"--load", "--simulate", startup}, "0\n"),
              (Program_Run{exit_status(0), start_load("Ok") + MAIN_MENU, ""}));
}

TEST_F(SwitchConsoleSession, TheVlanOptionShowsTheOtherMenu)
{
    EXPECT_EQ(run_in_pipe({"--simulate", "--vlan", startup}, "g\n0\n"),
              (Program_Run{exit_status(0), VLAN_MAIN_MENU FACTORY_VLAN_SUMMARY, ""}));
}

TEST_F(SwitchConsoleSession, AnEmptyInputLeavesAtOnce)
{
    EXPECT_EQ(run_in_pipe({"--simulate", startup}, ""),
              (Program_Run{exit_status(0), MAIN_MENU, ""}));
}

/* The device views read at once, and both flags are on: nothing has to be refreshed first. */
TEST_F(SwitchConsoleSession, StartsWithTheReadAndPrintFlagsSet)
{
    EXPECT_EQ(run_in_pipe({"--simulate", startup}, "4\n1\n0\n"),
              (Program_Run{exit_status(0),
                           MAIN_MENU "Ports Range(0):" VLAN_HEADER
                                     "LAN |   1|False   |Disable   |False  |False   |Unmodify "
                                     "egress|False   |  Not limited|False|False|False\n",
                           ""}));
}

TEST_F(SwitchConsoleSession, TracesEveryAccessInALine)
{
    const std::string trace = folder.path() + "/trace";
    run_in_pipe({startup, "--trace=" + trace, "--simulate"}, "1\n0\na\n0\n");
    const std::string lines = folder.read("trace");
    const std::regex access("[RW] [0-9a-f]{2} [0-9a-f]{2} [0-9a-f]{4}");
    std::istringstream stream(lines);
    std::string line;
    std::getline(stream, line);
    /* The load looks for the chip's identifier first. */
    EXPECT_EQ(line.substr(0, 11), "R 10 03 105");
    while (std::getline(stream, line)) {
        EXPECT_TRUE(std::regex_match(line, access)) << line;
    }
    EXPECT_EQ(lines.back(), '\n');
}

/* With /dev a folder of the test's own, in which there is no device. */
TEST(SwitchConsoleDevice, IsMissedOnceAndTheConsoleGoesOn)
{
    const Private_Root root;
    std::ifstream file(SWITCH_CONSOLE, std::ios::binary);
    const std::string program{std::istreambuf_iterator<char>(file), {}};
    root.write("/tmp/switch_console", program, 0755);
    root.write("/tmp/typed", "2\n6\nr\ny\n0\n");
    root.write("/tmp/session", "exec /tmp/switch_console --load /tmp/startup.cfg </tmp/typed\n");
    const Private_Root::Run run = root.run("/bin/sh", {"/tmp/session"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, exit_status(0));
    EXPECT_EQ(run.output,
              "switch_console: /dev/mdio: No such file or directory\n"
              "Switch: Load SW Config from \"/tmp/startup.cfg\" - Failed\n"
              "couldn't open nodecouldn't open node...load driver failed! Error:1\n" MAIN_MENU
                  PORTS_STATUS_HEADER ZERO_PORTS_STATUS_ROWS "No VTU Entries\n"
              "Switch ReInit?(y/n)(no):Try load marvell switch driver..."
              "couldn't open nodecouldn't open node...load driver failed! Error:1\n"
              "...Set Max Frame Size! Error:1\n");
}

} // namespace
