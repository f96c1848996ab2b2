#include "switch/config/reader.h"
#include "tests/support/heap_count.h"
#include "tests/support/memory_file.h"
#include "tests/support/output_capture.h"
#include "tests/support/startup_file.h"
#include "tests/switch/config/records.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <unistd.h>

namespace
{

constexpr size_t HEADROOM = size_t{384} * 1024;

std::string repeated(const std::string &piece, size_t size)
{
    std::string text;
    text.reserve(size + piece.size());
    while (text.size() < size) {
        text += piece;
    }
    return text;
}

std::string every_vlan()
{
    const Record record = filled_record(0);
    SetAllVlans(record.get());
    return StartupFileText(*record);
}

/* A file, and whether it is read without an error. */
struct File {
    const char *name;
    std::string (*text)();
    bool good;
};

void PrintTo(const File &file, std::ostream *out)
{
    *out << file.name;
}

class ReaderMemory : public testing::TestWithParam<File>
{
};

TEST_P(ReaderMemory, IsTheFilesSizeAndAFixedAmountInAFewAllocations)
{
    const std::string text = GetParam().text();
    const Memory_File file(text);
    const Record record = filled_record(0);
    Output_Capture lines;
    printf("%s", ""); /* standard output has its buffer before the count begins */
    fflush(stdout);
    ResetHeapCount();
    const bool good = LoadSwitchConfigFile(file.path().c_str(), record.get());
    const Heap_Count heap = GetHeapCount();
    lines.finish();
    EXPECT_EQ(good, GetParam().good);
    EXPECT_LE(heap.peak, text.size() + HEADROOM);
    EXPECT_LE(heap.allocations, 5U);
    EXPECT_EQ(heap.left, 0);
}

/* One byte above the limit; and a size whose low 32 bits are those of a good file. */
TEST(ReaderMemoryLimit, LongerFilesAreRefusedUnread)
{
    const std::string text = "[SW_PORT1]\nVID = 7\n";
    const Memory_File file(text);
    const Record record = filled_record(0);
    for (const off_t size : {off_t{2147483647}, off_t{4294967296} + off_t(text.size())}) {
        ASSERT_EQ(truncate(file.path().c_str(), size), 0);
        ResetHeapCount();
        EXPECT_FALSE(LoadSwitchConfigFile(file.path().c_str(), record.get())) << size;
        EXPECT_LE(GetHeapCount().peak, HEADROOM) << size;
    }
    EXPECT_TRUE(same_bytes(*record, *filled_record(0)));
}

constexpr size_t LARGE = 100000000;

const File FILES[] = {
    {"EveryVlan", every_vlan, true},
    {"Small", [] { return std::string("[SW_PORT1]\nVID = 7\n"); }, true},
    {"ManyErrors", [] { return repeated("[NOWHERE]\nFOO = BAR\n", 1000000); }, false},
    {"SyntaxErrorAtTheEnd", [] { return repeated("[SW_PORT1]\nVID = 7\n", 1000000) + "="; }, false},
    {"LongWords",
     [] {
         const std::string word(300000, 'A');
         return std::string("[") + word + "]" + word + "=" + word + "\n";
     },
     false},
    {"HundredMegabytesOfEntries", [] { return repeated("[SW_PORT1]\nVID = 7\n", LARGE); }, true},
    {"HundredMegabytesOfAQuotedList",
     [] { return "[SW_PORT1]VLAN_PORT_LIST=\"" + std::string(LARGE, '7'); }, true},
};

INSTANTIATE_TEST_SUITE_P(Files, ReaderMemory, testing::ValuesIn(FILES),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
