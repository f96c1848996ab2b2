#include "switch/range/range_lists.h"
#include "switch/range/vlan_ranges.h"
#include "tests/support/output_capture.h"
#include "tests/support/random_seed.h"
#include "tests/switch/range/range_row.h"

#include <cstring>
#include <memory>
#include <random>

namespace
{

constexpr size_t LARGE = 20000; /* for every text that a VLAN table can give */
constexpr uint8_t UNMODIFIED = 0;
constexpr uint8_t NOT_A_MEMBER = 1;
constexpr uint8_t UNTAGGED = 2;
constexpr uint8_t TAGGED = 3;

std::unique_ptr<SW_Config> config_with(const std::vector<int32_t> &vids)
{
    auto config = std::make_unique<SW_Config>();
    ClearSwitchConfig(config.get());
    for (const int32_t vid : vids) {
        config->vlans[vid].defined = 1;
    }
    return config;
}

/* What a formatter writes into size bytes; the bytes behind it are checked to be left alone. */
struct Formatted {
    std::string text;
    std::string printed;
    bool within; /* nothing written at or behind size, and a NUL in front of it */
};

template <class Format>
Formatted formatted(size_t size, const Format &format)
{
    std::string buffer(size + 8, '#');
    Output_Capture output;
    format(buffer.data());
    Formatted result{"", output.finish(), buffer.substr(size) == "########"};
    const size_t end = buffer.substr(0, size).find('\0');
    if (end != std::string::npos) {
        result.text = buffer.substr(0, end);
    } else {
        result.within = result.within && size == 0;
    }
    return result;
}

Formatted defined_vlans(const SW_Config &config, size_t size)
{
    return formatted(size, [&](char *buffer) { Format_Defined_Vlans(&config, buffer, size); });
}

Formatted port_vlans(const SW_Config &config, int chipPort, size_t size)
{
    return formatted(size,
                     [&](char *buffer) { Format_Port_Vlans(&config, chipPort, buffer, size); });
}

struct Set_Row {
    const char *name;
    std::vector<int32_t> vids;
    std::string text;
};

void PrintTo(const Set_Row &row, std::ostream *out)
{
    *out << row.name;
}

class VlanRanges : public testing::TestWithParam<Set_Row>
{
protected:
    const std::unique_ptr<SW_Config> config = config_with(GetParam().vids);
};

TEST_P(VlanRanges, AreTheRunsOfDefinedVlans)
{
    const Formatted result = defined_vlans(*config, LARGE);
    EXPECT_EQ(result.text, GetParam().text);
    EXPECT_EQ(result.printed, "");
    EXPECT_TRUE(result.within);
}

TEST_P(VlanRanges, AreTheRunsOfAPortThatIsAMemberOfAll)
{
    const Formatted result = port_vlans(*config, 10, LARGE);
    EXPECT_EQ(result.text, GetParam().text);
    EXPECT_EQ(result.printed, "");
    EXPECT_TRUE(result.within);
}

TEST_P(VlanRanges, AreCutAtEverySizeOfTheBuffer)
{
    const std::string &text = GetParam().text;
    for (size_t size = 0; size <= text.size() + 2; ++size) {
        const std::string cut = text.substr(0, size == 0 ? 0 : size - 1);
        const Formatted defined = defined_vlans(*config, size);
        EXPECT_EQ(defined.text, cut) << size;
        EXPECT_EQ(defined.printed, "") << size;
        EXPECT_TRUE(defined.within) << size;
        const Formatted port = port_vlans(*config, 0, size);
        EXPECT_EQ(port.text, cut) << size;
        EXPECT_TRUE(port.within) << size;
    }
}

const Set_Row SETS[] = {
    {"Example", {1, 2, 3, 10, 12}, "1-3,10,12"},
    {"OneVlan", {7}, "7"},
    {"RunOfTwo", {1, 2}, "1-2"},
    {"TwoApart", {1, 3}, "1,3"},
    {"VlanZero", {0}, "0"},
    {"RunFromZero", {0, 1, 2}, "0-2"},
    {"LastVlan", {4095}, "4095"},
    {"RunToTheLastVlan", {4093, 4094, 4095}, "4093-4095"},
    {"BothEnds", {0, 4095}, "0,4095"},
    {"AllFromOne", run(1, 4095), "1-4095"},
    {"AllFromZero", run(0, 4095), "0-4095"},
    {"AllButOne", run(1, 99) + run(101, 4095), "1-99,101-4095"},
    {"ManyDigits", {8, 9, 10, 99, 100, 999, 1000, 2000}, "8-10,99-100,999-1000,2000"},
};

INSTANTIATE_TEST_SUITE_P(Sets, VlanRanges, testing::ValuesIn(SETS),
                         [](const auto &row) { return row.param.name; });

TEST(DefinedVlans, WithoutAnyPrintsNoneWithoutALineFeed)
{
    const auto config = config_with({});
    for (const size_t size : {size_t{0}, size_t{1}, size_t{100}}) {
        const Formatted result = defined_vlans(*config, size);
        EXPECT_EQ(result.text, "");
        EXPECT_EQ(result.printed, "<none>");
        EXPECT_TRUE(result.within);
    }
}

TEST(DefinedVlans, LongListIsCutToTheBufferOfARangeText)
{
    std::vector<int32_t> vids;
    std::string whole = "1";
    for (int32_t vid = 1; vid <= 4095; vid += 2) {
        vids.push_back(vid);
    }
    for (int32_t vid = 3; vid <= 4095; vid += 2) {
        whole.append(",").append(std::to_string(vid));
    }
    const auto config = config_with(vids);
    EXPECT_EQ(defined_vlans(*config, SW_RANGE_TEXT_SIZE).text, whole.substr(0, 99));
    EXPECT_EQ(defined_vlans(*config, LARGE).text, whole);
}

TEST(DefinedVlans, AreKnownByTheFlagAloneNotByMembers)
{
    const auto config = config_with({5});
    config->vlans[6].vtu.vid = 6;
    config->vlans[6].vtu.memberTagP[0] = TAGGED;
    config->vlanEntryCount = 2;
    EXPECT_EQ(defined_vlans(*config, LARGE).text, "5");
}

TEST(DefinedVlans, LeaveBytesBehindTheTextAlone)
{
    const auto config = config_with({5});
    char buffer[] = "########";
    Format_Defined_Vlans(config.get(), buffer, sizeof buffer);
    EXPECT_EQ(std::string(buffer, sizeof buffer), std::string("5\0######\0", 9));
}

TEST(PortVlans, WithoutAnyAreEmptyAndPrintNothing)
{
    const auto config = config_with({5, 6});
    config->vlans[5].vtu.memberTagP[2] = NOT_A_MEMBER;
    config->vlans[6].vtu.memberTagP[2] = NOT_A_MEMBER;
    for (const size_t size : {size_t{0}, size_t{1}, size_t{100}}) {
        const Formatted result = port_vlans(*config, 2, size);
        EXPECT_EQ(result.text, "");
        EXPECT_EQ(result.printed, "");
        EXPECT_TRUE(result.within);
    }
}

TEST(PortVlans, OnlyMemberCodeOneIsNoMember)
{
    const auto config = config_with({10, 12, 14, 16, 18});
    config->vlans[10].vtu.memberTagP[3] = UNMODIFIED;
    config->vlans[12].vtu.memberTagP[3] = NOT_A_MEMBER;
    config->vlans[14].vtu.memberTagP[3] = UNTAGGED;
    config->vlans[16].vtu.memberTagP[3] = TAGGED;
    config->vlans[18].vtu.memberTagP[3] = 255;
    EXPECT_EQ(port_vlans(*config, 3, LARGE).text, "10,14,16,18");
}

TEST(PortVlans, EndARunWhereThePortIsNoMember)
{
    const auto config = config_with(run(1, 9));
    config->vlans[4].vtu.memberTagP[0] = NOT_A_MEMBER;
    config->vlans[8].vtu.memberTagP[0] = NOT_A_MEMBER;
    EXPECT_EQ(port_vlans(*config, 0, LARGE).text, "1-3,5-7,9");
    EXPECT_EQ(defined_vlans(*config, LARGE).text, "1-9");
}

TEST(PortVlans, NeedTheVlanToBeDefined)
{
    const auto config = config_with({5});
    config->vlans[6].vtu.memberTagP[1] = TAGGED;
    EXPECT_EQ(port_vlans(*config, 1, LARGE).text, "5");
}

TEST(PortVlans, AreEachPortsOwn)
{
    const auto config = config_with(run(20, 20 + VLAN_ENTRY_PORTS - 1));
    for (int port = 0; port < VLAN_ENTRY_PORTS; ++port) {
        for (SW_Vlan_Entry &entry : config->vlans) {
            entry.vtu.memberTagP[port] = NOT_A_MEMBER;
        }
        config->vlans[20 + port].vtu.memberTagP[port] = UNTAGGED;
    }
    for (int port = 0; port < VLAN_ENTRY_PORTS; ++port) {
        EXPECT_EQ(port_vlans(*config, port, LARGE).text, std::to_string(20 + port));
    }
}

TEST(PortVlans, OfNoPortAreEmpty)
{
    const auto config = config_with({5});
    for (const int port : {-1, VLAN_ENTRY_PORTS, INT32_MAX, INT32_MIN}) {
        const Formatted result = port_vlans(*config, port, 100);
        EXPECT_EQ(result.text, "");
        EXPECT_EQ(result.printed, "");
        EXPECT_TRUE(result.within);
    }
}

/* VLANs 1 to 4095, each in the set with the same probability. */
std::vector<int32_t> random_set(std::mt19937 &random)
{
    const double share = std::uniform_real_distribution<double>(0, 1)(random);
    std::vector<int32_t> vids;
    for (int32_t vid = 1; vid <= 4095; ++vid) {
        if (std::bernoulli_distribution(share)(random)) {
            vids.push_back(vid);
        }
    }
    if (vids.empty()) {
        vids.push_back(1);
    }
    return vids;
}

/* Both parsers of long texts read it as these VLANs. */
void expect_read_back(const std::string &text, const std::vector<int32_t> &vids)
{
    std::vector<int32_t> values;
    int32_t count = 0;
    ASSERT_TRUE(Range_Str_To_Vector(text.c_str(), values, 1, 4095, true)) << text;
    ASSERT_EQ(values, vids);
    ASSERT_TRUE(Int_Range_To_Int_List2(text.c_str(), nullptr, false, values, count, 1, 4095));
    ASSERT_EQ(values, vids);
    ASSERT_EQ(count, static_cast<int32_t>(vids.size()));
}

TEST(VlanRangesRandom, ComeBackFromBothLongParsers)
{
    std::mt19937 random(test_seed());
    const int rounds = test_rounds(200);
    for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
        const std::vector<int32_t> vids = random_set(random);
        expect_read_back(defined_vlans(*config_with(vids), LARGE).text, vids);
    }
}

/* Tags of VLANs that do not exist are there as well, and of other ports. */
TEST(VlanRangesRandom, OfAPortComeBackAsTheDefinedOnesThatItIsIn)
{
    std::mt19937 random(test_seed());
    const int rounds = test_rounds(200);
    for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
        const auto config = config_with(random_set(random));
        const auto port = static_cast<int>(random() % VLAN_ENTRY_PORTS);
        std::vector<int32_t> members;
        for (int32_t vid = 1; vid <= 4095; ++vid) {
            for (uint8_t &tag : config->vlans[vid].vtu.memberTagP) {
                tag = static_cast<uint8_t>(random() % 4);
            }
            if (config->vlans[vid].defined != 0 &&
                config->vlans[vid].vtu.memberTagP[port] != NOT_A_MEMBER) {
                members.push_back(vid);
            }
        }
        const std::string text = port_vlans(*config, port, LARGE).text;
        if (!members.empty()) {
            expect_read_back(text, members);
        }
        const size_t size = 1 + random() % (text.size() + 2);
        const Formatted cut = port_vlans(*config, port, size);
        EXPECT_EQ(cut.text, text.substr(0, size - 1));
        EXPECT_TRUE(cut.within);
    }
}

} // namespace
