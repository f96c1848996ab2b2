#include "tests/switch/config/records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>

Record filled_record(int byte)
{
    Record record = std::make_unique<SW_Config>();
    memset(record.get(), byte, sizeof *record);
    return record;
}

Record factory_record()
{
    Record record = filled_record(0xA5);
    SetSwitchConfigDefaults(record.get());
    return record;
}

bool same_bytes(const SW_Config &a, const SW_Config &b)
{
    return memcmp(&a, &b, sizeof a) == 0;
}

std::string file_text(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
