#include "switch/chip/vlan_table.h"

#include "tests/switch/chip/board_test.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace
{

/* A chip, an entry on it, and how the chip holds the entry. */
struct Packing {
    const char *name;
    uint32_t familyA;
    uint32_t familyB;
    uint16_t validPorts;
    unsigned global;
    Vlan_Table_Entry entry;
    uint16_t operation;
    uint16_t words[3];
};

void PrintTo(const Packing &row, std::ostream *stream)
{
    *stream << row.name;
}

Vlan_Table_Entry make_entry(unsigned vid, const std::vector<uint8_t> &tags,
                            const std::vector<uint8_t> &states = {}, unsigned database = 0)
{
    Vlan_Table_Entry entry = {};
    entry.vid = static_cast<uint16_t>(vid);
    entry.dbNum = static_cast<uint16_t>(database);
    for (size_t k = 0; k < tags.size(); ++k) {
        entry.memberTagP[k] = tags[k];
    }
    for (size_t k = 0; k < states.size(); ++k) {
        entry.portStateP[k] = states[k];
    }
    return entry;
}

Vlan_Table_Entry with_override(Vlan_Table_Entry entry, uint8_t priority)
{
    entry.vidPriOverride = 1;
    entry.vidPriority = priority;
    return entry;
}

Vlan_Table_Entry with_extended(Vlan_Table_Entry entry)
{
    entry.extPriOverride = 1;
    entry.extPriority = 5;
    entry.extSecondOverride = 1;
    entry.extSecondPriority = 2;
    entry.extRateLimit = 1;
    return entry;
}

const std::vector<uint8_t> TAGS_6 = {2, 3, 1, 1, 0, 0};
const std::vector<uint8_t> STATES_6 = {3, 3, 2, 1, 0, 3};
const std::vector<uint8_t> TAGS_8 = {2, 3, 1, 1, 0, 0, 3, 1};
const std::vector<uint8_t> STATES_8 = {0, 1, 2, 3, 0, 1, 2, 3};
const std::vector<uint8_t> TAGS_11 = {3, 0, 1, 2, 3, 0, 1, 2, 3, 1, 2};

const Packing PACKINGS[] = {
    {"TagsOnly", 1U << 11, 0, 0x3F, 0x1B, make_entry(1, TAGS_6), 0xB000, {0x1132, 0, 0}},
    {"TagsAndStates",
     1U << 13,
     0,
     0x3F,
     0x1B,
     make_entry(4095, TAGS_6, STATES_6),
     0xB000,
     {0x59FE, 0x00C0, 0}},
    {"PriorityOverride",
     1U << 13,
     0,
     0x3F,
     0x1B,
     with_override(make_entry(10, TAGS_6, STATES_6, 63), 5),
     0xB30F,
     {0x59FE, 0x00C0, 0xD000}},
    {"PriorityOverrideOfSevenPorts",
     1U << 27,
     0,
     0x7F,
     0x1B,
     with_override(make_entry(10, {2, 3, 1, 1, 0, 0, 3}, {}, 16), 0),
     0xB100,
     {0x1132, 0x0300, 0x8000}},
    {"EightPorts",
     1U << 15,
     0,
     0xFF,
     0x1B,
     make_entry(0, TAGS_8, STATES_8, 15),
     0xB00F,
     {0xD972, 0xDB40, 0}},
    {"ElevenPorts",
     1U << 11,
     0,
     0x7FF,
     0x1B,
     make_entry(2000, TAGS_11, {}, 0x2A),
     0xB20A,
     {0x2103, 0x2103, 0x0213}},
    {"TenPortsWithStates",
     1U << 16,
     0,
     0x3FF,
     0x1B,
     make_entry(2, {3, 0, 1, 2, 3, 0, 1, 2, 3, 1}, {3, 0, 1, 2, 3, 0, 1, 2, 3, 1}),
     0xB000,
     {0xA50F, 0xA50F, 0x005F}},
    {"ExtendedFields",
     1U << 17,
     0,
     0x3F,
     0x1F,
     with_extended(make_entry(9, TAGS_6)),
     0xB000,
     {0x1132, 0xDD00, 0}},
    {"ExtendedFieldsAndStates",
     1U << 18,
     0,
     0x3F,
     0x1F,
     with_extended(make_entry(9, TAGS_6, STATES_6, 33)),
     0xB201,
     {0x59FE, 0xDDC0, 0}},
    {"Oldest", 1U << 2, 0, 0x3F, 0x1F, make_entry(9, TAGS_6, {}, 15), 0xB00F, {0x1132, 0, 0}},
    {"GroupBWithStates",
     0,
     1U << 4,
     0x7F,
     0x1F,
     make_entry(9, {2, 3, 1, 1, 0, 0, 1}, {3, 3, 2, 1, 0, 3, 2}, 48),
     0xB300,
     {0x59FE, 0x09C0, 0}},
    /* Driver ports 2 and 3 are hardware ports 5 and 6. */
    {"GroupBWithAGap",
     0,
     1U << 9,
     0x63,
     0x1F,
     make_entry(9, {1, 2, 3, 1}, {1, 2, 3, 0}),
     0xB000,
     {0x00A5, 0x01F0, 0}},
};

class VtuPacking : public testing::TestWithParam<Packing>
{
protected:
    VtuPacking() { bus.vtu_address = static_cast<int>(GetParam().global); }

    std::string line(char operation, unsigned number, unsigned value) const
    {
        char text[40];
        snprintf(text, sizeof text, "%c %02x %02x %04x\n", static_cast<unsigned char>(operation),
                 GetParam().global, number, value);
        return text;
    }

    Fake_Bus bus;
    SW_Device device = make_device(GetParam().familyA, GetParam().familyB, GetParam().validPorts);
};

TEST_P(VtuPacking, AddTakesSixAccessesOnAnIdleChip)
{
    const Packing &row = GetParam();
    EXPECT_EQ(swVtuAddEntry(&device, &row.entry), SW_STATUS_OK);
    EXPECT_EQ(bus.accesses, 6U);
    EXPECT_EQ(bus.take_trace(), line('R', 5, 0) + line('W', 6, 0x1000U | row.entry.vid) +
                                    line('W', 7, row.words[0]) + line('W', 8, row.words[1]) +
                                    line('W', 9, row.words[2]) + line('W', 5, row.operation));
}

TEST_P(VtuPacking, EntryIsReadBackWhole)
{
    const Packing &row = GetParam();
    const uint16_t database = row.operation & 0x030F;
    bus.vtu[row.entry.vid] = {database, {row.words[0], row.words[1], row.words[2]}};
    Vlan_Table_Entry got;
    std::memset(&got, 0xEE, sizeof got);
    EXPECT_EQ(swVtuGetFirst(&device, &got), SW_STATUS_OK);
    EXPECT_EQ(std::memcmp(&got, &row.entry, sizeof got), 0);
    EXPECT_EQ(bus.take_trace(), line('R', 5, 0) + line('W', 6, 0x0FFF) + line('W', 5, 0xC000) +
                                    line('R', 5, 0x4000U | database) +
                                    line('R', 6, 0x1000U | row.entry.vid) +
                                    line('R', 7, row.words[0]) + line('R', 8, row.words[1]) +
                                    line('R', 9, row.words[2]));
}

INSTANTIATE_TEST_SUITE_P(Chips, VtuPacking, testing::ValuesIn(PACKINGS),
                         [](const auto &row) { return row.param.name; });

class VlanTable : public Board_Test
{
protected:
    VlanTable() { bus.vtu_address = 0x1B; }

    /* The IDs that First and Next give, and the count, which must agree. */
    std::vector<uint16_t> walk()
    {
        std::vector<uint16_t> vids;
        Vlan_Table_Entry entry = {};
        int status = swVtuGetFirst(&device, &entry);
        while (status == SW_STATUS_OK && vids.size() <= 4096) {
            vids.push_back(entry.vid);
            status = swVtuGetNext(&device, &entry);
        }
        EXPECT_EQ(status, SW_STATUS_FAIL);
        uint32_t count = 9999;
        EXPECT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_OK);
        EXPECT_EQ(count, vids.size());
        return vids;
    }

    Fake_Bus bus;
    SW_Device device = make_board_device();
};

TEST_F(VlanTable, FlushIsOperationOne)
{
    bus.vtu[5] = {};
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 05 0000\nW 1b 05 9000\n");
    EXPECT_TRUE(bus.vtu.empty());
}

TEST_F(VlanTable, OperationsWaitUntilTheChipIsIdle)
{
    bus.vtu_busy_reads = 3;
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    bus.take_trace();
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    EXPECT_EQ(bus.take_trace(), "R 1b 05 9000\nR 1b 05 9000\nR 1b 05 9000\nR 1b 05 1000\n"
                                "W 1b 05 9000\n");
}

TEST_F(VlanTable, WaitHasNoLimitOfItsOwn)
{
    bus.vtu_busy_reads = 100000;
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    bus.accesses = 0;
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    EXPECT_EQ(bus.accesses, 100002U);
}

TEST_F(VlanTable, OnlyAFailedReadEndsTheWait)
{
    bus.vtu_busy_reads = 100000;
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    bus.accesses = 0;
    bus.fail_at = 5000;
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_FAIL);
    EXPECT_EQ(bus.accesses, 5000U);
    EXPECT_EQ(bus.held[102], 0);
}

TEST_F(VlanTable, TagsStatesAndPrioritiesAreCutToTheirBits)
{
    Vlan_Table_Entry entry = make_entry(1, {6, 255, 1, 1, 4, 4}, {7, 255, 2, 1, 8, 7});
    entry.vidPriOverride = 1;
    entry.vidPriority = 0xFD;
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.vtu[1].data, (std::array<uint16_t, 3>{0x59FE, 0x00C0, 0xD000}));
}

TEST_F(VlanTable, OverrideIsSetByAFlagOfExactlyOne)
{
    for (const uint32_t flag : {0U, 2U, 0xFFFFFFFFU}) {
        Vlan_Table_Entry entry = make_entry(1, TAGS_6);
        entry.vidPriOverride = flag;
        entry.vidPriority = 7;
        EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
        EXPECT_EQ(bus.vtu[1].data[2], 0) << flag;
    }
}

TEST_F(VlanTable, OverrideIsNotCarriedByEightPortsOrTheOlderLayout)
{
    const Vlan_Table_Entry entry = with_override(make_entry(1, TAGS_6), 7);
    device = make_device(1U << 15, 0, 0xFF);
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.vtu[1].data[2], 0);
    bus.vtu[1].data[2] = 0xF000;
    Vlan_Table_Entry got = {};
    EXPECT_EQ(swVtuGetFirst(&device, &got), SW_STATUS_OK);
    EXPECT_EQ(got.vidPriOverride + got.vidPriority, 0U);
    device = make_device(1U << 2, 0);
    bus.vtu_address = 0x1F;
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.vtu[1].data[2], 0);
}

TEST_F(VlanTable, OldestChipsHaveNoMoreThanFourDatabaseBits)
{
    bus.vtu[1].database = 0x030F;
    Vlan_Table_Entry got = {};
    EXPECT_EQ(swVtuGetFirst(&device, &got), SW_STATUS_OK);
    EXPECT_EQ(got.dbNum, 63);
    device = make_device(1U << 2, 0);
    bus.vtu_address = 0x1F;
    EXPECT_EQ(swVtuGetFirst(&device, &got), SW_STATUS_OK);
    EXPECT_EQ(got.dbNum, 15);
}

TEST_F(VlanTable, ExtendedFlagsAreSetByExactlyOne)
{
    device = make_device(1U << 17, 0);
    bus.vtu_address = 0x1F;
    Vlan_Table_Entry entry = with_extended(make_entry(1, TAGS_6));
    entry.extPriOverride = 2;
    entry.extSecondOverride = 3;
    entry.extRateLimit = 255;
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.vtu[1].data[1], 0);
    entry.extSecondOverride = 1;
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.vtu[1].data[1], 0x0C00);
}

TEST_F(VlanTable, SlotsBeyondTheChipsPortsAreNotWritten)
{
    Vlan_Table_Entry entry =
        make_entry(1, std::vector<uint8_t>(11, 3), std::vector<uint8_t>(11, 3));
    entry.sid = 255;
    entry.vidPolicy = 1;
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(bus.vtu[1].data, (std::array<uint16_t, 3>{0xFFFF, 0x00FF, 0}));
}

TEST_F(VlanTable, EntryOutOfRangeIsABadParameterWithoutAccess)
{
    for (const unsigned vid : {4096U, 4097U, 65535U}) {
        const Vlan_Table_Entry entry = make_entry(vid, TAGS_6);
        EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_BAD_PARAM) << vid;
    }
    for (const unsigned database : {64U, 65U, 256U, 65535U}) {
        const Vlan_Table_Entry entry = make_entry(1, TAGS_6, {}, database);
        EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_BAD_PARAM) << database;
    }
    device = make_device(1U << 2, 0);
    for (const unsigned database : {16U, 63U, 65535U}) {
        const Vlan_Table_Entry entry = make_entry(1, TAGS_6, {}, database);
        EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_BAD_PARAM) << database;
    }
    EXPECT_EQ(bus.take_trace(), "");
    EXPECT_TRUE(bus.lock_calls.empty());
}

TEST_F(VlanTable, SupportIsCheckedAfterPointersAndBeforeTheEntry)
{
    device = make_device(1U << 0, 0);
    const Vlan_Table_Entry entry = make_entry(4096, TAGS_6);
    EXPECT_EQ(swVtuAddEntry(&device, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swVtuAddEntry(&device, &entry), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_NOT_SUPPORTED);
    EXPECT_EQ(swVtuGetFirst(&device, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swVtuGetNext(&device, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(swVtuGetEntryCount(&device, nullptr), SW_STATUS_BAD_PARAM);
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(VlanTable, GetOperationsRunOnEveryChip)
{
    device = make_device(1U << 0, 0);
    bus.vtu_address = 0x1F;
    bus.vtu[7] = {};
    EXPECT_EQ(walk(), std::vector<uint16_t>{7});
}

TEST_F(VlanTable, EmptyTableHasNoFirstAndCountZero)
{
    Vlan_Table_Entry entry = make_entry(77, TAGS_6);
    const Vlan_Table_Entry before = entry;
    uint32_t count = 99;
    EXPECT_EQ(swVtuGetFirst(&device, &entry), SW_STATUS_FAIL);
    EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_FAIL);
    EXPECT_EQ(std::memcmp(&entry, &before, sizeof entry), 0);
    EXPECT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_OK);
    EXPECT_EQ(count, 0U);
}

TEST_F(VlanTable, NothingLiesBehindVlan4095)
{
    bus.vtu[1] = {};
    for (const unsigned vid : {4095U, 8191U, 65535U}) {
        Vlan_Table_Entry entry = make_entry(vid, TAGS_6);
        EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_FAIL) << vid;
    }
    EXPECT_EQ(bus.take_trace(), "");
}

TEST_F(VlanTable, NextTakesOnlyTheIdModulo4096AndSendsNoDatabaseNumber)
{
    bus.vtu[3] = {};
    Vlan_Table_Entry entry = make_entry(4096 + 2, TAGS_6, {}, 63);
    EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_OK);
    EXPECT_EQ(entry.vid, 3);
    EXPECT_EQ(bus.take_trace().substr(0, 39), "R 1b 05 0000\nW 1b 06 0002\nW 1b 05 c000\n");
}

TEST_F(VlanTable, WrapIsTheEndOfTheWalk)
{
    bus.vtu[5] = {};
    bus.vtu[9] = {};
    Vlan_Table_Entry entry = make_entry(9, TAGS_6);
    EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_FAIL);
    EXPECT_EQ(entry.vid, 9);
    /* The answer is the start itself: also the end. */
    bus.vtu.erase(5);
    EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_FAIL);
}

TEST_F(VlanTable, WalksEndForEveryContent)
{
    std::vector<std::set<uint16_t>> contents = {
        {}, {0}, {4095}, {0, 4095}, {4094, 4095}, {1, 2, 3}, {0, 1, 2047, 2048, 4094, 4095}};
    contents.emplace_back();
    for (uint16_t vid = 0; vid < 4096; ++vid) {
        contents.back().insert(vid);
    }
    std::mt19937 random(20240607);
    SCOPED_TRACE("seed 20240607");
    for (int k = 0; k < 30; ++k) {
        contents.emplace_back();
        for (auto left = random() % 40; left > 0; --left) {
            contents.back().insert(static_cast<uint16_t>(random() % 4096));
        }
    }
    for (const auto &content : contents) {
        bus.vtu.clear();
        for (const uint16_t vid : content) {
            bus.vtu[vid] = {};
        }
        EXPECT_EQ(walk(), std::vector<uint16_t>(content.begin(), content.end()));
    }
}

TEST_F(VlanTable, CountReadsEachEntryOnceAndTheEnd)
{
    bus.vtu[5] = {};
    bus.vtu[4095] = {};
    uint32_t count = 0;
    EXPECT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_OK);
    EXPECT_EQ(count, 2U);
    /* 4095 is the end without asking: two get-next of 8 accesses. */
    EXPECT_EQ(bus.accesses, 16U);
}

TEST_F(VlanTable, FailedWalkLeavesItsResults)
{
    bus.vtu[5] = {};
    bus.vtu[6] = {};
    for (unsigned k = 1; k <= 24; ++k) {
        bus.accesses = 0;
        bus.fail_at = k;
        uint32_t count = 99;
        EXPECT_EQ(swVtuGetEntryCount(&device, &count), SW_STATUS_FAIL) << k;
        EXPECT_EQ(count, 99U);
    }
    for (unsigned k = 1; k <= 8; ++k) {
        bus.accesses = 0;
        bus.fail_at = k;
        Vlan_Table_Entry entry = make_entry(5, TAGS_6);
        const Vlan_Table_Entry before = entry;
        EXPECT_EQ(swVtuGetNext(&device, &entry), SW_STATUS_FAIL) << k;
        EXPECT_EQ(std::memcmp(&entry, &before, sizeof entry), 0);
    }
}

TEST_F(VlanTable, TableLockIsHeldAroundTheWholeOperation)
{
    EXPECT_EQ(swVtuFlush(&device), SW_STATUS_OK);
    EXPECT_EQ(bus.lock_calls, (std::vector<std::string>{"take 102 10", "take 101 10", "give 101",
                                                        "take 101 10", "give 101", "give 102"}));
}

} // namespace
