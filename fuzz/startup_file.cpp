/* The reader of startup files, and the writer that must give back what was read. */

#include "fuzz/sound_config.h"
#include "switch/config/reader.h"
#include "switch/config/writer.h"

namespace
{

SW_Config record;
SW_Config again;

/* The record as a file, read once more, is the same record. */
void require_round_trip()
{
    static FILE *file;
    static Caught_Stream written(file);
    REQUIRE(WriteSwitchConfig(&record, file));
    const std::string text = written.take();
    SetSwitchConfigDefaults(&again);
    REQUIRE(ParseSwitchConfig(text.c_str(), text.size(), &again));
    REQUIRE(memcmp(&again, &record, sizeof record) == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    SetSwitchConfigDefaults(&record);
    const bool good = ParseSwitchConfig(terminated(data, size).get(), size, &record);
    const std::string lines = caughtOutput.take();
    require_sound_config(record, Origin::STARTUP_FILE);
    REQUIRE(!good || lines.empty());
    REQUIRE(lines.empty() || lines.ends_with(" - bad section name\n") ||
            lines.ends_with(" - bad variable name\n") ||
            lines.ends_with(" - bad variable value\n") || lines.ends_with("\"\n"));
    if (!good && lines.empty()) {
        SetSwitchConfigDefaults(&again);
        REQUIRE(memcmp(&again, &record, sizeof record) == 0);
    } else {
        require_round_trip();
        REQUIRE(caughtOutput.take().empty());
    }
    return 0;
}
