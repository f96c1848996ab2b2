#include "switch/config/reader.h"
#include "switch/config/writer.h"
#include "tests/support/memory_file.h"
#include "tests/support/output_capture.h"
#include "tests/support/random_config.h"
#include "tests/support/random_seed.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/config/records.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <ostream>
#include <random>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/* The file that a record is saved as, and the record, cleared before, that it is then loaded into;
 * the lines of the load are the reader's subject.
 */
struct Round_Trip {
    std::string text;
    bool loaded;
    Record read;
};

Round_Trip write_and_read(const SW_Config &config)
{
    const Memory_File file;
    EXPECT_TRUE(SaveSwitchConfigFile(&config, file.path().c_str()));
    Round_Trip trip = {file.read(), false, filled_record(0)};
    Output_Capture lines;
    trip.loaded = LoadSwitchConfigFile(file.path().c_str(), trip.read.get());
    lines.finish();
    return trip;
}

TEST(Writer, FactoryDefaultsAreTheExampleFileByteForByte)
{
    const Round_Trip trip = write_and_read(*factory_record());
    EXPECT_EQ(trip.text, file_text(EXAMPLES_FOLDER "/factory.cfg"));
    EXPECT_EQ(trip.text.size(), 2875U);
    EXPECT_TRUE(trip.loaded);
    EXPECT_TRUE(same_bytes(*trip.read, *factory_record()));
}

/* What an apply leaves in the record when every port is in the default mode. */
void apply_default_modes(SW_Config &config)
{
    for (int port = 0; port < SW_PORTS; port++) {
        SetRangeText(&config.vlanPortList[port], "");
        for (SW_Vlan_Entry &vlan : config.vlans) {
            vlan.vtu.memberTagP[SW_Chip_Ports[port]] = 1;
        }
    }
}

/* A change of the factory defaults, the size of its file, whether the file can be loaded, and
 * whether it then gives the same record; the two last are not the same on purpose. */
struct Asymmetry {
    const char *name;
    void (*change)(SW_Config &);
    size_t size;
    bool loads;
    bool same;
};

void PrintTo(const Asymmetry &asymmetry, std::ostream *out)
{
    *out << asymmetry.name;
}

class WriterAsymmetry : public testing::TestWithParam<Asymmetry>
{
};

TEST_P(WriterAsymmetry, IsKept)
{
    const Record record = factory_record();
    GetParam().change(*record);
    const Round_Trip trip = write_and_read(*record);
    EXPECT_EQ(trip.text.size(), GetParam().size);
    EXPECT_EQ(trip.text, StartupFileText(*record));
    EXPECT_EQ(trip.loaded, GetParam().loads);
    EXPECT_EQ(same_bytes(*trip.read, *record), GetParam().same);
}

const Asymmetry ASYMMETRIES[] = {
    {"FactoryDefaults", [](SW_Config &) {}, 2875, true, true},
    {"AfterAnApplyInDefaultMode", apply_default_modes, 2870, true, false},
    {"EveryVlan", [](SW_Config &c) { SetAllVlans(&c); }, 2071454, true, true},
    {"EveryVlanAfterAnApplyInDefaultMode",
     [](SW_Config &c) {
         SetAllVlans(&c);
         apply_default_modes(c);
     },
     2071449, true, false},
    {"VlanWithAnotherVid",
     [](SW_Config &c) {
         c.vlans[5].vtu.vid = 6;
         c.vlans[5].defined = 1;
         c.vlanEntryCount = 1;
     },
     3372, true, true},
    {"UndefinedVlanWithAField", [](SW_Config &c) { c.vlans[5].vtu.sid = 1; }, 2875, true, false},
    {"TrunkListWithAMinus",
     [](SW_Config &c) {
         SetRangeText(&c.vlanPortList[1], "10-20");
         c.vlanPortType[1] = 3;
     },
     2877, true, false},
    {"ListWithAComma", [](SW_Config &c) { SetRangeText(&c.vlanPortList[1], "10,20"); }, 2879, true,
     false},
    {"ListWithABlank", [](SW_Config &c) { SetRangeText(&c.vlanPortList[1], "10 20"); }, 2879, true,
     true},
    {"LongestList", [](SW_Config &c) { SetRangeText(&c.vlanPortList[1], std::string(99, '7')); },
     2973, true, true},
    {"RateOutsideItsList", [](SW_Config &c) { c.ports[1].egressRate = 0xFFFFFFFD; }, 2876, false,
     false},
    {"FrameSizeOutsideItsList", [](SW_Config &c) { c.maxFrameSize = 7; }, 2880, false, false},
    {"FrameSizeLast", [](SW_Config &c) { c.maxFrameSize = 2; }, 2875, false, false},
    /* refused, and still what the cleared record holds */
    {"PortTypeNo", [](SW_Config &c) { c.ports[0].portType = 0; }, 2874, false, true},
    {"VlanPortTypeLast", [](SW_Config &c) { c.vlanPortType[0] = 5; }, 2872, false, false},
    {"FlagTwo", [](SW_Config &c) { c.ports[1].useCoreTag = 2; }, 2875, true, false},
    {"SlotZeroDefined",
     [](SW_Config &c) {
         c.vlans[0].defined = 1;
         c.vlanEntryCount = 1;
     },
     3372, false, false},
};

INSTANTIATE_TEST_SUITE_P(Records, WriterAsymmetry, testing::ValuesIn(ASYMMETRIES),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Writer, MinusInAListHidesAllThatFollowsItFromTheReader)
{
    const Record record = factory_record();
    SetRangeText(&record->vlanPortList[1], "10-20");
    record->vlanPortType[1] = 3;
    const Round_Trip trip = write_and_read(*record);
    EXPECT_TRUE(trip.loaded);
    const Record expected = filled_record(0);
    expected->maxFrameSize = 1;
    expected->ports[0] = record->ports[0];
    expected->ports[1] = record->ports[1];
    SetRangeText(&expected->vlanPortList[0], "1");
    expected->vlanPortType[0] = 1;
    EXPECT_TRUE(same_bytes(*trip.read, *expected));
}

/* The words of the file are the words of the model, outside their lists too. */
TEST(Writer, EveryFieldOfARecordOfAnyBytesIsWrittenAsItsWord)
{
    for (const int byte : {0, 1, 2, 3, 4, 5, 12, 13, 48, 255}) {
        const Record record = filled_record(byte);
        for (auto &list : record->vlanPortList) {
            SetRangeText(&list, "7");
        }
        const Round_Trip trip = write_and_read(*record);
        EXPECT_TRUE(trip.text == StartupFileText(*record)) << byte;
    }
}

TEST(Writer, ListWithoutItsNulIsWrittenToItsLastCharacter)
{
    const Record record = factory_record();
    memset(record->vlanPortList[1], '7', sizeof record->vlanPortList[1]);
    const Round_Trip trip = write_and_read(*record);
    EXPECT_NE(trip.text.find("\nVLAN_PORT_LIST = \"" + std::string(100, '7') + "\"\n"),
              std::string::npos);
    EXPECT_FALSE(trip.loaded);
}

TEST(Writer, RandomRecordsAreReadBackTheSame)
{
    std::mt19937 generator(test_seed());
    const Record record = filled_record(0);
    const int rounds = test_rounds(200);
    for (int round = 0; round < rounds; round++) {
        SetRandomConfig(record.get(), &generator);
        const Round_Trip trip = write_and_read(*record);
        ASSERT_EQ(trip.text, StartupFileText(*record)) << round;
        ASSERT_TRUE(trip.loaded) << round;
        ASSERT_TRUE(same_bytes(*trip.read, *record)) << round;
    }
}

TEST(Writer, NoVlanSectionWithoutADefinedVlan)
{
    const std::string text = write_and_read(*factory_record()).text;
    EXPECT_EQ(text.find("SW_VLAN"), std::string::npos);
    EXPECT_NE(text.find("VLAN_PORT_TYPE = DEFAULT\n[SW_COS_USER_PRIO]\n"), std::string::npos);
}

TEST(Writer, WritesToAStream)
{
    char *bytes = nullptr;
    size_t size = 0;
    FILE *stream = open_memstream(&bytes, &size);
    ASSERT_NE(stream, nullptr);
    fputs("before\n", stream);
    EXPECT_TRUE(WriteSwitchConfig(factory_record().get(), stream));
    fputs("after\n", stream);
    fclose(stream);
    const std::string text(bytes, size);
    free(bytes);
    EXPECT_EQ(text, "before\n" + file_text(EXAMPLES_FOLDER "/factory.cfg") + "after\n");
}

TEST(Writer, MissingStreamIsFalse)
{
    EXPECT_FALSE(WriteSwitchConfig(factory_record().get(), nullptr));
}

TEST(Writer, FullDeviceIsNotNoticed)
{
    EXPECT_TRUE(SaveSwitchConfigFile(factory_record().get(), "/dev/full"));
}

/* With a reader at its other end, too: the save must not depend on who listens. */
TEST(Writer, FifoIsRefusedUnopened)
{
    const Temporary_Folder folder;
    const std::string path = folder.path() + "/fifo";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(SaveSwitchConfigFile(factory_record().get(), path.c_str()));
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_FALSE(SaveSwitchConfigFile(factory_record().get(), path.c_str()));
    char byte = 0;
    EXPECT_EQ(read(reader, &byte, 1), 0);
    close(reader);
}

TEST(Writer, ReplacesALongerFile)
{
    const Temporary_Folder folder;
    const std::string path = folder.write("startup.cfg", std::string(100000, 'x'));
    EXPECT_TRUE(SaveSwitchConfigFile(factory_record().get(), path.c_str()));
    EXPECT_EQ(folder.read("startup.cfg"), file_text(EXAMPLES_FOLDER "/factory.cfg"));
}

TEST(Writer, PathsThatCannotBeOpenedAreFalse)
{
    const Temporary_Folder folder;
    EXPECT_FALSE(SaveSwitchConfigFile(factory_record().get(), folder.path().c_str()));
    EXPECT_FALSE(SaveSwitchConfigFile(factory_record().get(), ""));
    const std::string missing = folder.path() + "/missing/startup.cfg";
    EXPECT_FALSE(SaveSwitchConfigFile(factory_record().get(), missing.c_str()));
}

} // namespace
