#include "tests/switch/config/reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Values = std::vector<std::pair<std::string, uint32_t>>;

const Values FRAME_SIZES = {{"1522", 0}, {"1632", 1}};
const Values PORT_TYPES = {{"CPU", 1}, {"COPPER", 2}, {"SFP", 3}};
const Values AUTO_MODES = {
    {"SPEED_AUTO_DUPLEX_AUTO", 0}, {"SPEED_1000_DUPLEX_AUTO", 1}, {"SPEED_100_DUPLEX_AUTO", 2},
    {"SPEED_10_DUPLEX_AUTO", 3},   {"SPEED_AUTO_DUPLEX_FULL", 4}, {"SPEED_AUTO_DUPLEX_HALF", 5},
    {"SPEED_1000_DUPLEX_FULL", 6}, {"SPEED_1000_DUPLEX_HALF", 7}, {"SPEED_100_DUPLEX_FULL", 8},
    {"SPEED_100_DUPLEX_HALF", 9},  {"SPEED_10_DUPLEX_FULL", 10},  {"SPEED_10_DUPLEX_HALF", 11}};
const Values FLAGS = {{"NO", 0}, {"YES", 1}};
const Values DOT1Q_MODES = {{"DISABLE", 0}, {"FALLBACK", 1}, {"CHECK", 2}, {"SECURE", 3}};
const Values EGRESS_MODES = {
    {"UNMODIFY_EGRESS", 0}, {"UNTAGGED_EGRESS", 1}, {"TAGGED_EGRESS", 2}, {"ADD_TAG", 3}};
const Values RATES = {{"NO_LIMIT", 0}, {"128K", 1},  {"256K", 2}, {"512K", 3}, {"1M", 4},
                      {"2M", 5},       {"4M", 6},    {"8M", 7},   {"16M", 8},  {"32M", 9},
                      {"64M", 10},     {"128M", 11}, {"256M", 12}};
const Values VLAN_PORT_TYPES = {
    {"NO", 0}, {"DEFAULT", 1}, {"ACCESS", 2}, {"TRUNK", 3}, {"CUSTOM", 4}};
/* Numbers saturate at 2147483647 and are then cut to the width of the field. */
const Values NUMBERS = {{"0", 0},
                        {"7", 7},
                        {"007", 7},
                        {"255", 255},
                        {"256", 256},
                        {"1522", 1522},
                        {"65535", 65535},
                        {"70000", 70000},
                        {"999999999", 999999999},
                        {"1000000000", 1000000000},
                        {"2147483647", 2147483647},
                        {"4294967297", 2147483647},
                        {"99999999999", 2147483647},
                        {"00000000000000000000000000000042", 42}};

/* A key: the sections and index numbers that it is tried with, the values that it accepts, and how
 * they are stored; n is the section's number, i the index behind the key. */
struct Key {
    const char *name;
    std::string section;
    std::vector<int> numbers;
    std::vector<int> indexes;
    const Values &values;
    void (*store)(SW_Config &, int n, int i, uint32_t value);
};

void PrintTo(const Key &key, std::ostream *out)
{
    *out << key.section << " " << key.name;
}

const std::vector<int> NONE = {-1};
const std::vector<int> PORTS = {0, 1, 2, 3, 4};
const std::vector<int> SOME_VLANS = {1, 2, 9, 10, 999, 4094, 4095};
const std::vector<int> CHIP_PORTS = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10};

std::vector<int> numbers_below(int end)
{
    std::vector<int> numbers;
    for (int number = 0; number < end; number++) {
        numbers.push_back(number);
    }
    return numbers;
}

template <auto Field>
void store_port(SW_Config &config, int n, int, uint32_t value)
{
    auto &field = config.ports[n].*Field;
    field = static_cast<std::remove_reference_t<decltype(field)>>(value);
}

template <auto Field>
void store_vlan(SW_Config &config, int n, int i, uint32_t value)
{
    auto &field = config.vlans[n].vtu.*Field;
    if constexpr (std::is_array_v<std::remove_reference_t<decltype(field)>>) {
        field[i] = static_cast<uint8_t>(value);
    } else {
        field = static_cast<std::remove_reference_t<decltype(field)>>(value);
    }
    config.vlans[n].defined = 1;
}

const Key KEYS[] = {
    {"MAX_FRAME_SIZE", "SW_COMMON", NONE, NONE, FRAME_SIZES,
     [](SW_Config &config, int, int, uint32_t value) { config.maxFrameSize = value; }},
    {"PORT_TYPE", "SW_PORT", PORTS, NONE, PORT_TYPES, store_port<&SW_Port_Config::portType>},
    {"AUTO_MODE", "SW_PORT", PORTS, NONE, AUTO_MODES, store_port<&SW_Port_Config::autoMode>},
    {"VID", "SW_PORT", PORTS, NONE, NUMBERS, store_port<&SW_Port_Config::vid>},
    {"VID_FORCE_DEFAULT", "SW_PORT", PORTS, NONE, FLAGS,
     store_port<&SW_Port_Config::vidForceDefault>},
    {"DOT1Q_MODE", "SW_PORT", PORTS, NONE, DOT1Q_MODES, store_port<&SW_Port_Config::dot1qMode>},
    {"DISCARD_TAGGED", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::discardTagged>},
    {"DISCARD_UNTAGGED", "SW_PORT", PORTS, NONE, FLAGS,
     store_port<&SW_Port_Config::discardUntagged>},
    {"EGRESS_MODE", "SW_PORT", PORTS, NONE, EGRESS_MODES, store_port<&SW_Port_Config::egressMode>},
    {"USE_CORE_TAG", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::useCoreTag>},
    {"EGRESS_RATE", "SW_PORT", PORTS, NONE, RATES, store_port<&SW_Port_Config::egressRate>},
    {"LIMIT_MGMT", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::limitMgmt>},
    {"COUNT_IFG", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::countIfg>},
    {"COUNT_PRE", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::countPre>},
    {"PRI0RATE", "SW_PORT", PORTS, NONE, RATES, store_port<&SW_Port_Config::pri0Rate>},
    {"PRI1RATE", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::pri1Rate>},
    {"PRI2RATE", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::pri2Rate>},
    {"PRI3RATE", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::pri3Rate>},
    {"PRIOMAPRULE", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::prioMapRule>},
    {"IP_PRIO", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::ipPrio>},
    {"USER_PRIO", "SW_PORT", PORTS, NONE, FLAGS, store_port<&SW_Port_Config::userPrio>},
    {"TRAFF_CLASS", "SW_PORT", PORTS, NONE, NUMBERS, store_port<&SW_Port_Config::portPrio>},
    {"VLAN_PORT_TYPE", "SW_PORT", PORTS, NONE, VLAN_PORT_TYPES,
     [](SW_Config &config, int n, int, uint32_t value) { config.vlanPortType[n] = value; }},
    {"DBNUM", "SW_VLAN", SOME_VLANS, NONE, NUMBERS, store_vlan<&Vlan_Table_Entry::dbNum>},
    {"VLAN_VID", "SW_VLAN", SOME_VLANS, NONE, NUMBERS, store_vlan<&Vlan_Table_Entry::vid>},
    {"VID_PRI_OVERRIDE", "SW_VLAN", SOME_VLANS, NONE, FLAGS,
     store_vlan<&Vlan_Table_Entry::vidPriOverride>},
    {"VID_PRIORITY", "SW_VLAN", SOME_VLANS, NONE, NUMBERS,
     store_vlan<&Vlan_Table_Entry::vidPriority>},
    {"SID", "SW_VLAN", SOME_VLANS, NONE, NUMBERS, store_vlan<&Vlan_Table_Entry::sid>},
    {"VID_POLICY", "SW_VLAN", SOME_VLANS, NONE, FLAGS, store_vlan<&Vlan_Table_Entry::vidPolicy>},
    {"MEMBER_TAG_P", "SW_VLAN", SOME_VLANS, CHIP_PORTS, NUMBERS,
     store_vlan<&Vlan_Table_Entry::memberTagP>},
    {"PORT_STATE_P", "SW_VLAN", SOME_VLANS, CHIP_PORTS, NUMBERS,
     store_vlan<&Vlan_Table_Entry::portStateP>},
    {"V", "SW_COS_USER_PRIO", NONE, numbers_below(8), NUMBERS,
     [](SW_Config &config, int, int i, uint32_t value) {
         config.cosUserPrio[i] = static_cast<uint8_t>(value);
     }},
    {"V", "SW_COS_DSCP", NONE, numbers_below(64), NUMBERS,
     [](SW_Config &config, int, int i, uint32_t value) {
         config.cosDscp[i] = static_cast<uint8_t>(value);
     }},
};

std::string numbered(const std::string &name, int number)
{
    return number < 0 ? name : name + std::to_string(number);
}

std::string pair_text(const std::string &section, const std::string &key, const std::string &value)
{
    return "[" + section + "]\n" + key + " = " + value + "\n";
}

class ReaderKey : public testing::TestWithParam<Key>
{
};

/* A value, the key that takes it, and what stands behind the names of its section and the key. */
struct Pair {
    const Key &key;
    int number;
    int index;
    const std::pair<std::string, uint32_t> &value;
};

std::string pair_text(const Pair &pair)
{
    return numbered(pair.key.name, pair.index) + " = " + pair.value.first;
}

/* Expects that pairs of one section are stored, over zeroes and over other bytes: a value of 0 is
 * stored as well, and no other byte changes. */
void expect_stored(const std::vector<Pair> &pairs)
{
    const Pair &first = pairs.front();
    std::string text = std::string("[").append(numbered(first.key.section, first.number)) + "]";
    for (const Pair &pair : pairs) {
        text.append(" ").append(pair_text(pair));
    }
    const std::string rest(100, '\n'); /* close before its end no pair is taken on a shorter way */
    for (const int byte : {0, 0xA5}) {
        const Reading reading = read_text(text + rest, byte);
        const Record expected = filled_record(byte);
        for (const Pair &pair : pairs) {
            pair.key.store(*expected, pair.number, pair.index, pair.value.second);
        }
        const uint32_t vlans = first.key.section == "SW_VLAN" ? 1 : 0;
        expected->vlanEntryCount = byte == 0 ? vlans : uint32_t{SW_VLANS};
        EXPECT_TRUE(reading.good) << text;
        EXPECT_EQ(reading.output, "");
        EXPECT_TRUE(same_bytes(*reading.record, *expected)) << text << ", over " << byte;
    }
}

TEST_P(ReaderKey, StoresEachGoodValueInItsFieldAlone)
{
    const Key &key = GetParam();
    for (const auto &value : key.values) {
        expect_stored({{key, key.numbers.back(), key.indexes.back(), value}});
    }
}

/* The pair that is saved before the last one of a key, lists aside: that of its index before, or of
 * the key before. The first key of a section follows itself. */
Pair pair_before(const Key &key)
{
    const Key *before = &key;
    if (key.indexes == NONE) {
        for (const Key *other = KEYS + 1; other != std::end(KEYS); other++) {
            if (std::string(other->name) == key.name && other[-1].section == key.section) {
                before = other - 1;
            }
        }
    }
    const int index = before->indexes.back();
    return {*before, key.numbers.back(), index < 0 ? index : index - 1, before->values.front()};
}

/* The reader knows this pair, and takes it on a shorter way. */
TEST_P(ReaderKey, StoresEachGoodValueBehindThePairThatIsSavedBeforeIt)
{
    const Key &key = GetParam();
    for (const auto &value : key.values) {
        expect_stored({pair_before(key), {key, key.numbers.back(), key.indexes.back(), value}});
    }
}

TEST_P(ReaderKey, IsFoundInEachSectionAndWithEachIndex)
{
    const Key &key = GetParam();
    for (const int n : key.numbers) {
        for (const int i : key.indexes) {
            expect_stored({{key, n, i, key.values.back()}});
        }
    }
}

/* One value of each kind; numbers and quoted ones are values, whatever they say. */
const std::pair<const char *, bool> SOME_VALUES[] = {
    {"NO", true},       {"YES", true},      {"1522", true},      {"1632", true},
    {"COPPER", true},   {"SECURE", true},   {"ADD_TAG", true},   {"SPEED_10_DUPLEX_HALF", true},
    {"NO_LIMIT", true}, {"128K", true},     {"DEFAULT", true},   {"CUSTOM", true},
    {"5", true},        {"\"7\"", true},    {"\"NO\"", true},    {"\"\"", true},
    {"VID", false},     {"SW_PORT", false}, {"LAST", false},     {"UNDEFINED", false},
    {"7x", false},      {"yes", false},     {"SW_PORT0", false}, {"FOO", false},
};

bool accepts(const Key &key, const std::string &value)
{
    const bool digits = std::all_of(value.begin(), value.end(), [](char character) {
        return character >= '0' && character <= '9';
    });
    if (&key.values == &NUMBERS) {
        return digits;
    }
    return std::any_of(key.values.begin(), key.values.end(),
                       [&value](const auto &good) { return good.first == value; });
}

/* The keyword text of a value that can be none. */
std::string keyword_text(const std::string &value)
{
    const bool known = value == "VID" || value == "SW_PORT" || value == "LAST";
    return known ? value : "UNDEFINED";
}

TEST_P(ReaderKey, RefusesValuesOfEveryOtherKind)
{
    const Key &key = GetParam();
    const std::string section = numbered(key.section, key.numbers.back());
    const std::string name = numbered(key.name, key.indexes.back());
    for (const auto &[value, isValue] : SOME_VALUES) {
        if (accepts(key, value)) {
            continue;
        }
        std::string lines;
        if (!isValue) {
            lines = std::string("ERROR: [2][") + std::to_string(name.size() + 4) + "][\"" +
                    section + "\"][\"" + name + "\"]: Value \"" + value + "\" - \"" +
                    keyword_text(value) + "\"\n";
        }
        lines += "[1:2][" + section + "] " + name + " = " + value + " - bad variable value\n";
        const Reading reading = read_text(pair_text(section, name, value));
        EXPECT_FALSE(reading.good) << value;
        EXPECT_EQ(reading.output, lines);
        EXPECT_TRUE(same_bytes(*reading.record, *filled_record(0))) << value;
    }
}

TEST_P(ReaderKey, IsRefusedInEveryOtherSection)
{
    const Key &key = GetParam();
    const std::string name = numbered(key.name, key.indexes.front());
    const std::string value = key.values.front().first;
    for (const std::string other :
         {"SW_COMMON", "SW_PORT", "SW_VLAN", "SW_COS_USER_PRIO", "SW_COS_DSCP"}) {
        const bool cos = other.starts_with("SW_COS");
        if (other == key.section || (cos && name == "V0")) {
            continue;
        }
        const std::string section = other == "SW_PORT" || other == "SW_VLAN" ? other + "4" : other;
        std::string lines;
        if (name == "V0") {
            lines = "ERROR: [2][1][\"" + section + "\"]: Name \"V0\" - \"UNDEFINED\"\n";
        }
        lines += "[1:2][" + section + "] " + name + " - bad variable name\n";
        const Reading reading = read_text(pair_text(section, name, value));
        EXPECT_FALSE(reading.good) << section;
        EXPECT_EQ(reading.output, lines);
        EXPECT_TRUE(same_bytes(*reading.record, *filled_record(0))) << section;
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, ReaderKey, testing::ValuesIn(KEYS),
                         [](const auto &row) { return row.param.section + "_" + row.param.name; });

/* VLAN_PORT_LIST takes a text, which makes it the odd one out. */
void expect_list(const std::string &value, const std::string &list)
{
    for (int n = 0; n < SW_PORTS; n++) {
        const Reading reading =
            read_text(pair_text(numbered("SW_PORT", n), "VLAN_PORT_LIST", value), 'x');
        const Record expected = filled_record('x');
        memset(expected->vlanPortList[n], 0, sizeof expected->vlanPortList[n]);
        memcpy(expected->vlanPortList[n], list.data(), list.size());
        expected->vlanEntryCount = SW_VLANS;
        EXPECT_TRUE(reading.good) << value;
        EXPECT_EQ(reading.output, "");
        EXPECT_TRUE(same_bytes(*reading.record, *expected)) << value;
    }
}

TEST(ReaderList, IsTheTextBetweenTheQuotesAndFillsTheFieldWithZeroes)
{
    expect_list("\"\"", "");
    expect_list("\"1\"", "1");
    expect_list("\"10 20\"", "10 20");
    expect_list("\"[a]=\tB_7\"", "[a]=\tB_7");
    expect_list(std::string("\"") + std::string(99, '9') + "\"", std::string(99, '9'));
}

TEST(ReaderList, LoneQuoteIsTheEmptyList)
{
    expect_list("\"", "");
}

TEST(ReaderList, LongerThanTheFieldIsRefusedNotCut)
{
    for (const size_t length : {size_t{100}, size_t{101}, size_t{5000}}) {
        const std::string list = std::string("\"") + std::string(length, '9') + "\"";
        const Reading reading = read_text("[SW_PORT2]\nVLAN_PORT_LIST = " + list + "\n", 'x');
        const Record expected = filled_record('x');
        expected->vlanEntryCount = SW_VLANS;
        EXPECT_FALSE(reading.good);
        EXPECT_EQ(reading.output,
                  "[1:2][SW_PORT2] VLAN_PORT_LIST = " + list + " - bad variable value\n");
        EXPECT_TRUE(same_bytes(*reading.record, *expected));
    }
}

TEST(ReaderList, ValuesWithoutTwoQuotesAreRefused)
{
    const Reading number = read_text("[SW_PORT2]\nVLAN_PORT_LIST = 10\n");
    EXPECT_FALSE(number.good);
    EXPECT_EQ(number.output, "[1:2][SW_PORT2] VLAN_PORT_LIST = 10 - bad variable value\n");
    const Reading word = read_text("[SW_PORT2]\nVLAN_PORT_LIST = NO\n");
    EXPECT_FALSE(word.good);
    EXPECT_EQ(word.output, "[1:2][SW_PORT2] VLAN_PORT_LIST = NO - bad variable value\n");
    const Reading open = read_text("[SW_PORT2]\nVLAN_PORT_LIST = \"12\n");
    EXPECT_FALSE(open.good);
    EXPECT_EQ(open.output,
              "ERROR: [2][18][\"SW_PORT2\"][\"VLAN_PORT_LIST\"]: Value \"\"12\" - \"UNDEFINED\"\n"
              "[1:2][SW_PORT2] VLAN_PORT_LIST = \"12 - bad variable value\n");
}

} // namespace
