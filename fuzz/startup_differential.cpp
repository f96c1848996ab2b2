/* The reader of startup files against the plain one of the tests: result, lines and record. */

#include "fuzz/target.h"
#include "switch/config/reader.h"
#include "tests/switch/config/plain_reader.h"

#include <cstring>

namespace
{

SW_Config record;
SW_Config expected;

/* A record of this byte before; the text leaves most of it. */
void require_alike(const char *text, size_t size, int byte)
{
    memset(&record, byte, sizeof record);
    memset(&expected, byte, sizeof expected);
    std::string lines;
    const bool good = ReadPlainly(std::string(text, size), &expected, &lines);
    REQUIRE(ParseSwitchConfig(text, size, &record) == good);
    REQUIRE(caughtOutput.take() == lines);
    REQUIRE(memcmp(&record, &expected, sizeof record) == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::unique_ptr<char[]> text = terminated(data, size);
    require_alike(text.get(), size, 0xA5);
    return 0;
}
