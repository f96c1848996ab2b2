#include "switch/config/reader.h"
#include "switch/config/writer.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/config/records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <ostream>
#include <string>

namespace
{

/* The file that a record is saved as, and the record that it is then loaded into, cleared before.
 */
struct Round_Trip {
    std::string text;
    bool loaded;
    Record read;
};

Round_Trip write_and_read(const SW_Config &config)
{
    const Temporary_Folder folder;
    const std::string path = folder.path() + "/startup.cfg";
    EXPECT_TRUE(SaveSwitchConfigFile(&config, path.c_str()));
    Round_Trip trip = {folder.read("startup.cfg"), false, filled_record(0)};
    trip.loaded = LoadSwitchConfigFile(path.c_str(), trip.read.get());
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

TEST(Writer, EveryVlanIsWrittenAndReadBack)
{
    const Record record = filled_record(0);
    SetAllVlans(record.get());
    const Round_Trip trip = write_and_read(*record);
    EXPECT_EQ(trip.text.size(), 2071454U);
    EXPECT_TRUE(trip.text == StartupFileText(*record));
    EXPECT_TRUE(trip.loaded);
    EXPECT_TRUE(same_bytes(*trip.read, *record));
}

} // namespace
