#include "switch/config/reader.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_file.h"
#include "tests/support/output_capture.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/config/records.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

size_t missing_bytes = 0;

} // namespace

/* The linker puts this in the place of fread: a file gives fewer bytes than there are, as one does
 * that is cut after its size is known. */
extern "C" size_t __wrap_fread(void *to, size_t size, size_t count, FILE *file);
extern "C" size_t __real_fread(void *to, size_t size, size_t count, FILE *file);

extern "C" size_t __wrap_fread(void *to, size_t size, size_t count, FILE *file)
{
    return __real_fread(to, size, count, file) - missing_bytes;
}

namespace
{

constexpr int BEFORE = 0x5A;

/* Loads a file into a record of BEFORE bytes and expects that nothing is printed. */
bool load_silently(const std::string &path, SW_Config *config)
{
    memset(config, BEFORE, sizeof *config);
    Output_Capture lines;
    const bool good = LoadSwitchConfigFile(path.c_str(), config);
    EXPECT_EQ(lines.finish(), "");
    return good;
}

void expect_refused(const std::string &path)
{
    const Record record = filled_record(0);
    EXPECT_FALSE(load_silently(path, record.get())) << path;
    EXPECT_TRUE(same_bytes(*record, *filled_record(BEFORE))) << path;
}

TEST(ReaderFile, ExampleFilesAreReadToTheirEnd)
{
    const Record factory = filled_record(0);
    EXPECT_TRUE(LoadSwitchConfigFile(EXAMPLES_FOLDER "/factory.cfg", factory.get()));
    EXPECT_TRUE(same_bytes(*factory, *factory_record()));

    const Record office = filled_record(0);
    Output_Capture lines;
    EXPECT_TRUE(LoadSwitchConfigFile(EXAMPLES_FOLDER "/small_office.cfg", office.get()));
    EXPECT_EQ(lines.finish(), "");
    EXPECT_EQ(office->vlanEntryCount, 3U);
    EXPECT_EQ(office->vlans[30].vtu.memberTagP[2], 3);
    EXPECT_EQ(office->vlans[20].vtu.vidPriority, 6);
    EXPECT_STREQ(office->vlanPortList[3], "20");
    EXPECT_EQ(office->vlanPortType[3], 3U);
    EXPECT_EQ(office->cosDscp[63], 3);
}

TEST(ReaderFile, MissingEmptyAndUnreadableFilesAreRefusedWithoutALine)
{
    const Temporary_Folder folder;
    expect_refused(folder.path() + "/missing.cfg");
    expect_refused("");
    expect_refused(folder.path()); /* a directory */
    expect_refused(folder.write("empty.cfg", ""));
    expect_refused("/proc/self/mem");
}

/* Opening the FIFO would wait for a writer for ever. */
TEST(ReaderFile, WhatIsNoRegularFileIsRefusedUnopened)
{
    const Temporary_Folder folder;
    const std::string fifo = folder.path() + "/fifo";
    const std::string link = folder.path() + "/link";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_EQ(symlink(fifo.c_str(), link.c_str()), 0);
    expect_refused(fifo);
    expect_refused(link);
    expect_refused("/dev/null");
}

TEST(ReaderFile, WithoutMemoryAFileIsRefusedAndNothingChanges)
{
    const Memory_File file("[SW_PORT1]\nVID = 7\n");
    const std::string path = file.path();
    const Record before = filled_record(BEFORE);
    const Record record = filled_record(BEFORE);
    const auto load = [&](int allowed) {
        const Failing_Memory memory(allowed);
        return LoadSwitchConfigFile(path.c_str(), record.get());
    };
    int allowed = 0;
    for (; allowed < 100 && !load(allowed); allowed++) {
        EXPECT_TRUE(same_bytes(*record, *before)) << allowed;
    }
    EXPECT_GT(allowed, 0);
    EXPECT_LT(allowed, 100);
    EXPECT_EQ(record->ports[1].vid, 7);
}

TEST(ReaderFile, FileThatIsCutWhileItIsReadGivesItsCompleteEntries)
{
    const Memory_File file("[SW_PORT1]\nVID = 7\nVID = 8\n");
    const Record record = filled_record(0);
    missing_bytes = 8;
    EXPECT_TRUE(load_silently(file.path(), record.get()));
    EXPECT_EQ(record->ports[1].vid, 7);
    missing_bytes = 27; /* all */
    expect_refused(file.path());
    missing_bytes = 0;
}

TEST(ReaderFile, SyntaxErrorIsRefusedWithoutALine)
{
    const Temporary_Folder folder;
    expect_refused(folder.write("bad.cfg", "[SW_PORT1]\nVID = 7\nFOO = BAR\nVID\n"));
}

TEST(ReaderFile, LengthAboveTheLimitIsRefusedUnread)
{
    const Record record = filled_record(BEFORE);
    EXPECT_FALSE(ParseSwitchConfig("[SW_PORT1]\nVID = 7\n", 2147483647, record.get()));
    EXPECT_TRUE(same_bytes(*record, *filled_record(BEFORE)));
}

TEST(ReaderFile, TruncatedTextsGiveTheirCompleteEntries)
{
    const std::string text = file_text(EXAMPLES_FOLDER "/factory.cfg");
    const Record record = filled_record(0);
    Output_Capture lines;
    for (size_t size = 0; size < text.size(); size++) {
        memset(record.get(), BEFORE, sizeof *record);
        ASSERT_TRUE(ParseSwitchConfig(text.substr(0, size).c_str(), size, record.get())) << size;
    }
    EXPECT_EQ(lines.finish(), "");
    /* The last of them lacks only the last line feed, and with it the last entry. */
    const Record expected = filled_record(BEFORE);
    ASSERT_TRUE(ParseSwitchConfig(text.c_str(), text.size(), expected.get()));
    EXPECT_EQ(expected->cosDscp[63], 3);
    expected->cosDscp[63] = BEFORE;
    EXPECT_TRUE(same_bytes(*record, *expected));
}

TEST(ReaderFile, BinaryFilesEndAtTheirFirstOtherByte)
{
    const Record record = filled_record(0);
    std::string bytes;
    for (int code = 0; code < 256; code++) {
        bytes += static_cast<char>(code);
    }
    EXPECT_TRUE(load_silently(Memory_File(bytes).path(), record.get()));
    EXPECT_TRUE(load_silently(Memory_File(std::string(100000, '\xFF')).path(), record.get()));
    EXPECT_TRUE(load_silently(Memory_File(std::string(100000, '\0')).path(), record.get()));
    const std::string hidden("[SW_PORT1]\nVID = 7\n\0VID = 8\n", 28);
    EXPECT_TRUE(load_silently(Memory_File(hidden).path(), record.get()));
    EXPECT_EQ(record->ports[1].vid, 7);
    expect_refused(Memory_File(std::string(100000, 'A')).path());
}

TEST(ReaderFile, HundredMegabytesAreReadToTheirEnd)
{
    constexpr size_t SIZE = 100000000;
    const std::string last = "[SW_PORT1]\nVID = 7\n";
    const Memory_File file(std::string(SIZE - last.size(), '\n') + last);
    const Record record = filled_record(0);
    EXPECT_TRUE(load_silently(file.path(), record.get()));
    EXPECT_EQ(record->ports[1].vid, 7);
}

} // namespace
