/*
 * The driver's way to the kernel: a program with the driver in a private mount namespace, where a
 * character device stands at /dev/mdio and a preloaded ioctl answers; its calls are observed.
 */

#include "tests/support/private_root.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace
{

struct Row {
    const char *name;
    std::vector<std::string> arguments;
    std::string output;
    std::string calls;
};

void PrintTo(const Row &row, std::ostream *stream)
{
    *stream << row.name;
}

/* Expected bytes are those of a little-endian machine; flags 2 are O_RDWR. */
const Row ROWS[] = {
    {"WriteSendsTheRecord",
     {"write", "0x11", "7", "0x1234"},
     "[write 1]",
     "open 2\nioctl c0085701 11 01 07 00 34 12 00 00\nclose\n"},
    {"WriteSendsTheValueInAllFourBytes",
     {"write", "0x11", "7", "0x89ABCDEF"},
     "[write 1]",
     "open 2\nioctl c0085701 11 01 07 00 ef cd ab 89\nclose\n"},
    {"ReadSendsZeroAndTakesTheAnswer",
     {"read", "0x1B", "4"},
     "[read 1 00001364]",
     "open 2\nioctl c0085701 1b 00 04 00 00 00 00 00\nclose\n"},
    {"AddressAndRegisterAreCutTo8Bits",
     {"write", "0x1FE11", "0x107", "1"},
     "[write 1]",
     "open 2\nioctl c0085701 11 01 07 00 01 00 00 00\nclose\n"},
    {"EachAccessOpensAndClosesAnew",
     {"read", "0", "0", "write", "0x1F", "31", "0xFFFF", "read", "0x1F", "0x1F"},
     "[read 1 00001000][write 1][read 1 000013ff]",
     "open 2\nioctl c0085701 00 00 00 00 00 00 00 00\nclose\n"
     "open 2\nioctl c0085701 1f 01 1f 00 ff ff 00 00\nclose\n"
     "open 2\nioctl c0085701 1f 00 1f 00 00 00 00 00\nclose\n"},
    /* What is read, 0x1227, keeps its bits 12 to 15. */
    {"FieldWriteReadsAndWritesOnce",
     {"vid", "1", "0xF055"},
     "[vid 0]",
     "open 2\nioctl c0085701 11 00 07 00 00 00 00 00\nclose\n"
     "open 2\nioctl c0085701 11 01 07 00 55 10 00 00\nclose\n"},
    {"PortThatIsNotThereDoesNothing", {"vid", "6", "1"}, "[vid 4]", ""},
};

class MdioDevice : public testing::Test
{
protected:
    static std::string bytes_of(const char *path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    Private_Root::Run run(const std::vector<std::string> &arguments,
                          const std::string &more = "GATEWAY_MDIO_TEST=1") const
    {
        root.write("/tmp/mdio_preload.so", bytes_of(MDIO_PRELOAD));
        return root.run(MDIO_ACCESSES, arguments,
                        {"LD_PRELOAD=/tmp/mdio_preload.so", "GATEWAY_MDIO_LOG=/tmp/calls", more});
    }

    std::string calls() const { return root.read("/tmp/calls"); }

    Private_Root root;
};

class MdioAccess : public MdioDevice, public testing::WithParamInterface<Row>
{
};

TEST_P(MdioAccess, SeesExactlyTheCallsOfEachAccess)
{
    root.lend_device("/dev/zero", "/dev/mdio");
    const Private_Root::Run run = this->run(GetParam().arguments);
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, GetParam().output);
    EXPECT_EQ(calls(), GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(Accesses, MdioAccess, testing::ValuesIn(ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(MdioDevice, ThatFailsIsStillClosedAndReadsZero)
{
    root.lend_device("/dev/zero", "/dev/mdio");
    const Private_Root::Run run =
        this->run({"read", "0x11", "7", "write", "0x11", "7", "1"}, "GATEWAY_MDIO_FAIL=1");
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "ioctl failed[read 1 00000000]ioctl failed[write 1]");
    EXPECT_EQ(calls(), "open 2\nioctl c0085701 11 00 07 00 00 00 00 00\nclose\n"
                       "open 2\nioctl c0085701 11 01 07 00 01 00 00 00\nclose\n");
}

TEST_F(MdioDevice, ThatIsNotThereIsNotAskedAndReadsZero)
{
    const Private_Root::Run run = this->run({"read", "0x11", "7", "write", "0x11", "7", "1"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "couldn't open node[read 1 00000000]couldn't open node[write 1]");
    EXPECT_EQ(calls(), "open 2 failed\nopen 2 failed\n");
}

/* Without the preloaded answer: a real device that does not know the request. */
TEST_F(MdioDevice, ThatDoesNotKnowTheRequestFails)
{
    root.lend_device("/dev/zero", "/dev/mdio");
    const Private_Root::Run run = root.run(MDIO_ACCESSES, {"read", "0x11", "7"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "ioctl failed[read 1 00000000]");
}

/* The node gets descriptor 0 then, as in a host that a start-up script runs without input. */
TEST_F(MdioDevice, IsReachedWithoutAStandardInput)
{
    root.lend_device("/dev/zero", "/dev/mdio");
    root.write("/tmp/accesses", bytes_of(MDIO_ACCESSES), 0755);
    const Private_Root::Run run = root.run("/bin/sh", {"-c", "exec /tmp/accesses read 0x11 7 <&-"});
    SKIP_IF_REFUSED(run);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "ioctl failed[read 1 00000000]");
}

} // namespace
