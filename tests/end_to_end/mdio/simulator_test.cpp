/*
 * The built mdio_simulator as far as it gets without the kernel's CUSE: its options and its errors.
 * What it serves is tested in tests/simulator/ and on the virtual board.
 */

#include "tests/support/child_process.h"
#include "tests/support/private_root.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

constexpr const char *USAGE =
    "usage: mdio_simulator [--name NAME] [--chip CHIP] [--direct ADDRESS | --indirect ADDRESS]\n"
    "                      [--fault FAULT]... [--vanish N]\n"
    "                      [--trace FILE] [--counters FILE] [--registers FILE]\n"
    "\n"
    "Serves the device /dev/mdio with a simulated switch chip behind it, until SIGTERM or SIGINT.\n"
    "Needs the kernel's CUSE and the right to open /dev/cuse.\n"
    "\n"
    "  --name NAME         the device's name below /dev in place of mdio\n"
    "  --chip CHIP         the chip, as --chips lists it; default 0x105, the board's\n"
    "  --chips             list the chips\n"
    "  --direct ADDRESS    the chip is on the bus itself, the older ones from this SMI address "
    "on;\n"
    "                      the default, with 16\n"
    "  --indirect ADDRESS  it is reached through two registers of this SMI address\n"
    "  --fault FAULT       break requests: N[:COUNT[:KIND[:ADDRESS[:REGISTER]]]], up to 8 times\n"
    "                        N         the first one broken of those that fit, from 1\n"
    "                        COUNT     how many from there, or forever; default 1\n"
    "                        KIND      ones, busy, or an error's name; default EIO\n"
    "                        ADDRESS   SMI address, or any, the default; REGISTER likewise\n"
    "  --vanish N          end after N requests, so that the device vanishes\n"
    "  --trace FILE        write a line for each request: R or W, SMI address, register, value\n"
    "  --counters FILE     write the numbers of opens, requests, failures and closes\n"
    "  --registers FILE    write the chip's registers and its VLAN table\n"
    "  --help              print this text\n"
    "  --version           print the version\n"
    "\n"
    "Numbers are decimal, or hexadecimal after 0x. Counters and registers are written at the end\n"
    "and on SIGUSR1.\n";

struct Ended {
    int status;
    std::string output;
    std::string errors;

    bool operator==(const Ended &) const = default;
};

void PrintTo(const Ended &ended, std::ostream *out)
{
    *out << "status " << ended.status << "\n--- output\n"
         << ended.output << "--- errors\n"
         << ended.errors;
}

Ended run(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), MDIO_SIMULATOR);
    Child_Process program(arguments);
    std::string output = program.output();
    std::string errors = program.errors();
    return {program.wait(), output, errors};
}

TEST(MdioSimulator, HelpPrintsTheUsage)
{
    EXPECT_EQ(run({"--help"}), (Ended{0, USAGE, ""}));
    EXPECT_EQ(run({"--chip", "0x095", "--help", "--nonsense"}), (Ended{0, USAGE, ""}));
}

TEST(MdioSimulator, PrintsItsVersion)
{
    EXPECT_EQ(run({"--version"}), (Ended{0, "mdio_simulator 0.1.0\n", ""}));
}

TEST(MdioSimulator, ListsItsChips)
{
    EXPECT_EQ(run({"--chips", "--nonsense"}),
              (Ended{0,
                     "0x105  ports 0x03f  PHYs 0x007  newer, the board's\n"
                     "0x095  ports 0x7ff  PHYs 0x0ff  newer\n"
                     "0x106  ports 0x0ff  PHYs 0x0ff  newer\n"
                     "0x1a7  ports 0x3ff  PHYs 0x000  newer\n"
                     "0x083  ports 0x3ff  PHYs 0x0ff  newer\n"
                     "0x165  ports 0x03f  PHYs 0x01f  newer\n"
                     "0x352  ports 0x07f  PHYs 0x01f  newer\n"
                     "0x065  ports 0x03f  PHYs 0x01f  older, group A\n"
                     "0x063  ports 0x03f  PHYs 0x01f  older, group A\n"
                     "0x052  ports 0x03f  PHYs 0x01f  older, group A\n"
                     "0x060  ports 0x03f  PHYs 0x01f  older, group A\n"
                     "0x250  ports 0x063  PHYs 0x003  older, group B\n"
                     "0x071  ports 0x07f  PHYs 0x01f  older, group B\n"
                     "0xc00  ports 0x7ff  PHYs 0x1ff  newer\n",
                     ""}));
}

struct Bad_Usage {
    const char *name;
    std::vector<std::string> arguments;
    std::string message;
};

void PrintTo(const Bad_Usage &usage, std::ostream *out)
{
    *out << usage.name;
}

#define NAME_OF_20 "nodenodenodenodenode"
const std::string LONG_NAME = NAME_OF_20 NAME_OF_20 NAME_OF_20 NAME_OF_20 NAME_OF_20;

const Bad_Usage BAD_USAGES[] = {
    {"UnknownOption", {"--fast"}, "unknown option: --fast"},
    {"ShortOption", {"-f"}, "unknown option: -f"},
    {"AbbreviatedOption", {"--reg", "a"}, "unknown option: --reg"},
    {"Argument", {"mdio"}, "not an option: mdio"},
    {"EmptyArgument", {""}, "not an option: "},
    {"NoName", {"--name"}, "--name needs a name below /dev"},
    {"EmptyName", {"--name", ""}, "--name needs a name below /dev: "},
    {"NameInAFolder", {"--name", "a/b"}, "--name needs a name below /dev: a/b"},
    {"NameOfTheFolder", {"--name", "."}, "--name needs a name below /dev: ."},
    {"NameOfTheFolderAbove", {"--name", ".."}, "--name needs a name below /dev: .."},
    {"NameTooLong", {"--name", LONG_NAME}, "--name needs a name below /dev: " + LONG_NAME},
    {"NoChip", {"--chip"}, "--chip needs a chip of the list"},
    {"UnknownChip", {"--chip", "0x104"}, "--chip needs a chip of the list: 0x104"},
    {"ChipNoNumber", {"--chip", "board"}, "--chip needs a chip of the list: board"},
    {"ChipTooHigh", {"--chip", "0x1105"}, "--chip needs a chip of the list: 0x1105"},
    {"NoDirect", {"--direct"}, "--direct needs an SMI address from 0 to 31"},
    {"DirectTooHigh", {"--direct", "32"}, "--direct needs an SMI address from 0 to 31: 32"},
    {"IndirectTooHigh",
     {"--indirect", "0x20"},
     "--indirect needs an SMI address from 0 to 31: 0x20"},
    {"NoFault", {"--fault"}, "--fault needs a fault that can be planned, one of 8"},
    {"FaultNever", {"--fault", "0"}, "--fault needs a fault that can be planned, one of 8: 0"},
    {"FaultWithoutAnEnd",
     {"--fault", "1:forever:ones"},
     "--fault needs a fault that can be planned, one of 8: 1:forever:ones"},
    {"NineFaults",
     {"--fault", "1", "--fault", "2", "--fault", "3", "--fault", "4", "--fault", "5", "--fault",
      "6", "--fault", "7", "--fault", "8", "--fault", "9"},
     "--fault needs a fault that can be planned, one of 8: 9"},
    {"NoVanish", {"--vanish"}, "--vanish needs a number of requests from 1"},
    {"VanishAtOnce", {"--vanish", "0"}, "--vanish needs a number of requests from 1: 0"},
    {"TraceWithoutAFile", {"--trace"}, "--trace needs the path of a file"},
    {"CountersWithoutAFile", {"--counters"}, "--counters needs the path of a file"},
    {"RegistersWithoutAFile", {"--registers"}, "--registers needs the path of a file"},
};

class MdioSimulatorUsage : public testing::TestWithParam<Bad_Usage>
{
};

TEST_P(MdioSimulatorUsage, IsRefused)
{
    EXPECT_EQ(run(GetParam().arguments),
              (Ended{2, "", "mdio_simulator: " + GetParam().message + "\n" + USAGE}));
}

INSTANTIATE_TEST_SUITE_P(Arguments, MdioSimulatorUsage, testing::ValuesIn(BAD_USAGES),
                         [](const auto &row) { return std::string(row.param.name); });

/* With /dev a folder of the test's own. */
class MdioSimulatorStart : public testing::Test
{
protected:
    Private_Root root;
};

constexpr int STATUS_1 = 1 << 8; /* as waitpid gives it */

TEST_F(MdioSimulatorStart, NeedsTheKernelsCuseAndTouchesNoTraceWithout)
{
    root.write("/tmp/trace", "R 10 03 1052\n");
    const Private_Root::Run run = root.run(MDIO_SIMULATOR, {"--trace", "/tmp/trace"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "mdio_simulator: /dev/cuse: No such file or directory\n"
                          "mdio_simulator: this kernel offers no CUSE; its module is named cuse\n");
    EXPECT_EQ(root.read("/tmp/trace"), "R 10 03 1052\n");
}

TEST_F(MdioSimulatorStart, NeedsTheRightToServe)
{
    root.write("/dev/cuse", "", 0000);
    const std::string program = "/tmp/mdio_simulator"; /* found wherever the project lies */
    std::filesystem::copy_file(MDIO_SIMULATOR, root.outside(program));
    const Private_Root::Run run =
        root.run("/usr/bin/setpriv", {"--bounding-set=-dac_override,-dac_read_search", program});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "mdio_simulator: /dev/cuse: Permission denied\n"
                          "mdio_simulator: to serve a device takes root's rights\n");
}

TEST_F(MdioSimulatorStart, LeavesADeviceThatIsThereAndItsTraceAlone)
{
    root.write("/dev/cuse", "");
    root.write("/dev/switch", "");
    root.write("/tmp/trace", "R 10 03 1052\n");
    const Private_Root::Run run =
        root.run(MDIO_SIMULATOR, {"--name", "switch", "--trace", "/tmp/trace"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "mdio_simulator: /dev/switch: File exists\n");
    EXPECT_EQ(root.read("/tmp/trace"), "R 10 03 1052\n");
}

TEST_F(MdioSimulatorStart, DoesNotServeWithoutTheTraceThatWasAskedFor)
{
    root.write("/dev/cuse", "");
    const Private_Root::Run run = root.run(MDIO_SIMULATOR, {"--trace", "/tmp/no folder/trace"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "mdio_simulator: /tmp/no folder/trace: No such file or directory\n");
}

/* Another file in the place of /dev/cuse, where no call ever comes from. The chip is as after
 * power-on: its first PHY negotiates, and has ended it with a link. */
TEST_F(MdioSimulatorStart, EndsWithItsReportsWhenTheKernelIsLost)
{
    root.write("/dev/cuse", "");
    const Private_Root::Run run =
        root.run(MDIO_SIMULATOR, {"--chip", "0x060", "--direct", "0", "--counters", "/tmp/counters",
                                  "--registers", "/tmp/registers"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "short read on fuse device\n"
                          "mdio_simulator: /dev/mdio: Input/output error\n");
    EXPECT_EQ(root.read("/tmp/counters"), "opens 0\nrequests 0\nfailed 0\ncloses 0\nmost open 0\n");
    const std::string registers = root.read("/tmp/registers");
    EXPECT_EQ(registers.substr(0, 51), "chip 060 1\nregister 00 00 3100\nregister 00 01 786d\n");
}

TEST_F(MdioSimulatorStart, WritesAReportIntoAPipeOrADeviceAndLeavesItInPlace)
{
    root.write("/dev/cuse", "");
    ASSERT_EQ(symlink("/proc/self/fd/1", root.outside("/dev/pipe").c_str()), 0);
    const Private_Root::Run run =
        root.run(MDIO_SIMULATOR, {"--counters", "/dev/pipe", "--registers", "/dev/null"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "short read on fuse device\n"
                          "mdio_simulator: /dev/mdio: Input/output error\n"
                          "opens 0\nrequests 0\nfailed 0\ncloses 0\nmost open 0\n");
}

TEST_F(MdioSimulatorStart, TellsOfReportsThatCannotBeWritten)
{
    root.write("/dev/cuse", "");
    root.write("/tmp/registers/file", "");
    const Private_Root::Run run = root.run(
        MDIO_SIMULATOR, {"--counters", "/tmp/no/counters", "--registers", "/tmp/registers"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, STATUS_1);
    EXPECT_EQ(run.output, "short read on fuse device\n"
                          "mdio_simulator: /dev/mdio: Input/output error\n"
                          "mdio_simulator: /tmp/no/counters.new: No such file or directory\n"
                          "mdio_simulator: /tmp/registers: Is a directory\n");
}

} // namespace
