#include "switch/config/model.h"
#include "tests/switch/config/records.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace
{

TEST(Model, FieldsStandInTheFixedOrder)
{
    EXPECT_EQ(offsetof(SW_Config, maxFrameSize), 0U);
    EXPECT_EQ(offsetof(SW_Config, ports), 4U);
    EXPECT_EQ(offsetof(SW_Config, vlanEntryCount), 424U);
    EXPECT_EQ(offsetof(SW_Config, vlans), 428U);
    EXPECT_EQ(offsetof(SW_Config, cosUserPrio), 262572U);
    EXPECT_EQ(offsetof(SW_Config, cosDscp), 262580U);
    EXPECT_EQ(offsetof(SW_Config, vlanPortType), 262644U);
    EXPECT_EQ(offsetof(SW_Config, vlanPortList), 262664U);
    EXPECT_EQ(offsetof(SW_Config, accessWords), 263164U);
    EXPECT_EQ(offsetof(SW_Port_Config, vid), 8U);
    EXPECT_EQ(offsetof(SW_Port_Config, vidForceDefault), 12U);
    EXPECT_EQ(offsetof(SW_Port_Config, portPrio), 80U);
}

TEST(Model, PortTablesNameAndNumberTheBoardsPorts)
{
    const char *const names[] = {"CPU", "LAN", "WAN", "SFP0", "SFP1"};
    const int chipPorts[] = {2, 1, 0, 4, 3};
    for (int port = 0; port < SW_PORTS; port++) {
        EXPECT_STREQ(SW_Port_Names[port], names[port]);
        EXPECT_EQ(SW_Chip_Ports[port], chipPorts[port]);
    }
}

TEST(Model, ClearSetsEveryByteToZero)
{
    Record record = filled_record(0xFF);
    ClearSwitchConfig(record.get());
    EXPECT_TRUE(same_bytes(*record, *filled_record(0)));
}

TEST(Model, DefaultsAreTheFactorySettingsAndZeroElsewhere)
{
    const uint32_t portTypes[] = {1, 2, 2, 3, 3};
    const uint8_t userPrios[] = {1, 0, 0, 1, 2, 2, 3, 3};
    Record expected = filled_record(0);
    expected->maxFrameSize = 1;
    for (int port = 0; port < SW_PORTS; port++) {
        SW_Port_Config &settings = expected->ports[port];
        settings.portType = portTypes[port];
        settings.vid = 1;
        settings.countIfg = settings.countPre = 1;
        settings.prioMapRule = settings.ipPrio = settings.userPrio = 1;
        expected->vlanPortType[port] = 1;
        expected->vlanPortList[port][0] = '1';
    }
    memcpy(expected->cosUserPrio, userPrios, sizeof userPrios);
    memset(expected->cosDscp + 16, 1, 16);
    memset(expected->cosDscp + 32, 2, 16);
    memset(expected->cosDscp + 48, 3, 16);
    EXPECT_TRUE(same_bytes(*factory_record(), *expected));
}

TEST(Model, ClearVlanTableLeavesEverythingElse)
{
    Record record = filled_record(0xFF);
    ClearVlanTable(record.get());
    Record expected = filled_record(0xFF);
    memset(expected->vlans, 0, sizeof expected->vlans);
    expected->vlanEntryCount = 0;
    EXPECT_TRUE(same_bytes(*record, *expected));
}

/* The sixteen flags in their order, as one digit each. */
std::string flags(const SW_Config_Changes &changes)
{
    uint8_t bytes[sizeof changes];
    memcpy(bytes, &changes, sizeof bytes);
    std::string text;
    for (const uint8_t byte : bytes) {
        text += std::to_string(byte);
    }
    return text;
}

struct Difference {
    const char *name;
    std::function<void(SW_Config &)> edit;
    const char *flags;
};

void PrintTo(const Difference &difference, std::ostream *out)
{
    *out << difference.name;
}

class CompareConfig : public testing::TestWithParam<Difference>
{
};

TEST_P(CompareConfig, SetsTheFlagsOfTheAreaAndReturnsTrue)
{
    const Record a = factory_record();
    Record b = factory_record();
    GetParam().edit(*b);
    SW_Config_Changes changes = {};
    EXPECT_TRUE(CompareSwitchConfig(&changes, a.get(), b.get()));
    EXPECT_EQ(flags(changes), GetParam().flags);
    SW_Config_Changes reversed = {};
    EXPECT_TRUE(CompareSwitchConfig(&reversed, b.get(), a.get()));
    EXPECT_EQ(flags(reversed), GetParam().flags);
}

/* maxFrameSize, anyPort, port 0-4, vlanTable, cosUserPrio, cosDscp, anyVlanPortMode and its ports
 */
const Difference DIFFERENCES[] = {
    {"EqualRecords", [](SW_Config &) {}, "0000000000111111"},
    {"FrameSize", [](SW_Config &c) { c.maxFrameSize = 0; }, "1000000000111111"},
    {"FirstPort", [](SW_Config &c) { c.ports[0].portType = 0; }, "0110000000111111"},
    {"PortTwo", [](SW_Config &c) { c.ports[2].vid = 2; }, "0100100000111111"},
    {"LastFieldOfLastPort", [](SW_Config &c) { c.ports[4].portPrio = 1; }, "0100001000111111"},
    {"TwoPorts",
     [](SW_Config &c) {
         c.ports[1].countPre = 0;
         c.ports[3].countPre = 0;
     },
     "0101010000111111"},
    {"DefinedVlan", [](SW_Config &c) { c.vlans[4095].defined = 1; }, "0000000100111111"},
    {"UndefinedVlan", [](SW_Config &c) { c.vlans[7].vtu.sid = 1; }, "0000000100111111"},
    {"VlanSlotZero", [](SW_Config &c) { c.vlans[0].vtu.memberTagP[0] = 1; }, "0000000100111111"},
    {"UserPriority", [](SW_Config &c) { c.cosUserPrio[7] = 0; }, "0000000010111111"},
    {"Dscp", [](SW_Config &c) { c.cosDscp[63] = 0; }, "0000000001111111"},
    {"EntryCountIsNotCompared", [](SW_Config &c) { c.vlanEntryCount = 9; }, "0000000000111111"},
    {"PortTypeIsNotCompared", [](SW_Config &c) { c.vlanPortType[1] = 3; }, "0000000000111111"},
    {"PortListIsNotCompared", [](SW_Config &c) { SetRangeText(&c.vlanPortList[1], "2"); },
     "0000000000111111"},
    {"AccessWordsAreNotCompared", [](SW_Config &c) { c.accessWords[4] = 1; }, "0000000000111111"},
};

INSTANTIATE_TEST_SUITE_P(Areas, CompareConfig, testing::ValuesIn(DIFFERENCES),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(CompareConfig, OnlySetsFlagsThatItsCallerHasCleared)
{
    const Record record = factory_record();
    SW_Config_Changes changes;
    memset(&changes, 1, sizeof changes);
    EXPECT_TRUE(CompareSwitchConfig(&changes, record.get(), record.get()));
    EXPECT_EQ(flags(changes), "1111111111111111");
}

TEST(ConfigChanges, AreReadPerPortAndFalseOutsideThePorts)
{
    SW_Config_Changes changes = {};
    changes.port[0] = changes.port[4] = 1;
    changes.vlanPortMode[2] = 1;
    changes.vlanTable = changes.anyVlanPortMode = 1; /* the bytes around the arrays */
    for (const int port : {-2147483647, -1, 1, 2, 3, 5, 6, 2147483647}) {
        EXPECT_FALSE(PortChanged(&changes, port)) << port;
    }
    for (const int port : {-2147483647, -1, 0, 1, 3, 4, 5, 2147483647}) {
        EXPECT_FALSE(VlanPortModeChanged(&changes, port)) << port;
    }
    EXPECT_TRUE(PortChanged(&changes, 0));
    EXPECT_TRUE(PortChanged(&changes, 4));
    EXPECT_TRUE(VlanPortModeChanged(&changes, 2));
}

std::vector<char> range_text(const std::string &text)
{
    std::vector<char> bytes(text.begin(), text.end());
    bytes.resize(SW_RANGE_TEXT_SIZE);
    return bytes;
}

std::vector<char> bytes_of(const char (&field)[SW_RANGE_TEXT_SIZE])
{
    return {field, field + sizeof field};
}

TEST(RangeText, IsWrittenWholeWithZeroesBehindIt)
{
    for (const size_t length : {size_t{0}, size_t{1}, size_t{98}, size_t{99}}) {
        char field[SW_RANGE_TEXT_SIZE];
        memset(field, 'x', sizeof field);
        const std::string text(length, '7');
        EXPECT_TRUE(SetRangeText(&field, text));
        EXPECT_EQ(bytes_of(field), range_text(text)) << length;
    }
}

TEST(RangeText, LongerThan99CharactersIsRefusedNotCut)
{
    char field[SW_RANGE_TEXT_SIZE] = "1-5";
    EXPECT_FALSE(SetRangeText(&field, std::string(100, '7')));
    EXPECT_FALSE(SetRangeText(&field, std::string(5000, '7')));
    EXPECT_EQ(bytes_of(field), range_text("1-5"));
}

TEST(RangeText, MayBeTakenFromTheFieldItself)
{
    char field[SW_RANGE_TEXT_SIZE] = "10-20,30";
    EXPECT_TRUE(SetRangeText(&field, field));
    EXPECT_EQ(bytes_of(field), range_text("10-20,30"));
    EXPECT_TRUE(SetRangeText(&field, field + 6));
    EXPECT_EQ(bytes_of(field), range_text("30"));
}

TEST(RangeText, MissingTextGivesTheEmptyOne)
{
    char field[SW_RANGE_TEXT_SIZE] = "1-5";
    EXPECT_TRUE(SetRangeText(&field, {}));
    EXPECT_EQ(bytes_of(field), range_text(""));
}

} // namespace
