#include "switch/engine/apply.h"
#include "tests/switch/engine/board.h"

#include <algorithm>
#include <array>

namespace
{

constexpr size_t NEVER = 1000000;

class Apply_Board : public Board
{
protected:
    Apply_Board()
    {
        set_custom_defaults();
        bring_up();
    }

    /* What the call prints; what it returns goes to result_. */
    template <class Call>
    std::string run(Call call)
    {
        return printed([&] { result_ = call(); });
    }

    bool result_ = false;
};

struct Frame_Row {
    const char *name;
    uint32_t value;
    uint32_t before;
    bool log;
    bool write;
    size_t broken; /* hook call */
    const char *text;
    bool result;
    uint32_t value_then;
    const char *trace; /* the register reads 0x0403 before */
};

void PrintTo(const Frame_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr const char *WRITES_1522 = "R 1b 04 0403\nW 1b 04 0003\n";
constexpr const char *WRITES_1632 = "R 1b 04 0403\nW 1b 04 0403\n";

constexpr Frame_Row FRAMES[] = {
    {"To1522", 0, 1, true, true, NEVER, "Switch: Max Frame Size: 1632->1522\n", true, 0,
     WRITES_1522},
    {"To1632", 1, 0, true, true, NEVER, "Switch: Max Frame Size: 1522->1632\n", true, 1,
     WRITES_1632},
    {"SameIsWrittenWithoutALine", 0, 0, true, true, NEVER, "", true, 0, WRITES_1522},
    {"WithoutTheLog", 0, 1, false, true, NEVER, "", true, 0, WRITES_1522},
    {"OutOfRangeBecomes1632", 7, 1, true, true, NEVER, "", true, 1, WRITES_1632},
    {"OutOfRangeBecomes1632AndIsShownSo", 2, 0, true, true, NEVER,
     "Switch: Max Frame Size: 1522->1632\n", true, 1, WRITES_1632},
    {"OldOutOfRange", 0, 7, true, true, NEVER,
     "Switch: Max Frame Size: ????"
     "->1522\n",
     true, 0, WRITES_1522},
    {"BothOutOfRange", 7, 9, true, true, NEVER,
     "Switch: Max Frame Size: ????"
     "->1632\n",
     true, 1, WRITES_1632},
    {"WithoutWriteOnlyALine", 0, 1, true, false, NEVER, "Switch: Max Frame Size: 1632->1522\n",
     true, 0, ""},
    {"WithoutWriteOutOfRangeStays", 7, 1, true, false, NEVER,
     "Switch: Max Frame Size: 1632->????\n", true, 7, ""},
    {"NeitherLogNorWrite", 7, 1, false, false, NEVER, "", true, 7, ""},
    {"FailedReadIsShownThenTheChange", 0, 1, true, true, 0,
     "Switch: ...Set Max Frame Size! Error:1\nSwitch: Max Frame Size: 1632->1522\n", false, 0, ""},
    {"FailedWriteIsShownThenTheChange", 0, 1, true, true, 1,
     "Switch: ...Set Max Frame Size! Error:1\nSwitch: Max Frame Size: 1632->1522\n", false, 0,
     "R 1b 04 0403\n"},
    {"FailureIsSilentWithoutTheLog", 0, 1, false, true, 1, "", false, 0, "R 1b 04 0403\n"},
};

class FrameSize : public Apply_Board, public testing::WithParamInterface<Frame_Row>
{
};

TEST_P(FrameSize, IsWrittenInvertedAndLogged)
{
    const Frame_Row &row = GetParam();
    chip_.global[4] = 0x0403;
    Hook_Faults hooks(&device_);
    hooks.break_calls(row.broken);
    running_.maxFrameSize = row.value;
    applied_.maxFrameSize = row.before;
    EXPECT_EQ(run([&] {
                  return SW_Apply_Max_Frame_Size(&control_, &running_.maxFrameSize,
                                                 &applied_.maxFrameSize, row.log, row.write);
              }),
              row.text);
    EXPECT_EQ(result_, row.result);
    EXPECT_EQ(running_.maxFrameSize, row.value_then);
    EXPECT_EQ(applied_.maxFrameSize, row.before);
    EXPECT_EQ(take_trace(), row.trace);
}

INSTANTIATE_TEST_SUITE_P(Apply, FrameSize, testing::ValuesIn(FRAMES),
                         [](const auto &row) { return std::string(row.param.name); });

constexpr const char *FLUSH = "R 1b 05 0000\nW 1b 05 9000\n";
constexpr size_t FLUSH_CALLS = 2;
constexpr size_t ADD_CALLS = 6;

class VlanTable : public Apply_Board
{
protected:
    std::string rebuild(uint32_t count)
    {
        return run([&] { return SW_Rebuild_VTU(&control_, running_.vlans, count); });
    }
};

TEST_F(VlanTable, EntryGoesToTheChipAsItStands)
{
    Vlan_Table_Entry *entry = define_vlan(&running_, 10);
    entry->memberTagP[SW_Chip_Ports[0]] = 3;
    entry->memberTagP[SW_Chip_Ports[1]] = 3;
    entry->portStateP[SW_Chip_Ports[2]] = 3;
    entry->dbNum = 0x25;
    entry->vidPriOverride = 1;
    entry->vidPriority = 5;
    EXPECT_EQ(rebuild(1), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), std::string(FLUSH) +
                                "R 1b 05 1000\nW 1b 06 100a\n"
                                "W 1b 07 133d\nW 1b 08 0001\nW 1b 09 d000\nW 1b 05 b205\n");
    EXPECT_EQ(vlans_on_chip(), "10");
    EXPECT_EQ(chip_.vlans.entries[10].data[0], 0x133D);
}

TEST_F(VlanTable, EntriesAreAddedInTheOrderOfTheirVlanIds)
{
    define_vlan(&running_, 4095);
    define_vlan(&running_, 0);
    define_vlan(&running_, 7);
    EXPECT_EQ(rebuild(3), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), std::string(FLUSH) +
                                "R 1b 05 1000\nW 1b 06 1000\n"
                                "W 1b 07 1111\nW 1b 08 0001\nW 1b 09 0000\nW 1b 05 b000\n"
                                "R 1b 05 3000\nW 1b 06 1007\n"
                                "W 1b 07 1111\nW 1b 08 0001\nW 1b 09 0000\nW 1b 05 b000\n"
                                "R 1b 05 3000\nW 1b 06 1fff\n"
                                "W 1b 07 1111\nW 1b 08 0001\nW 1b 09 0000\nW 1b 05 b000\n");
    EXPECT_EQ(vlans_on_chip(), "0 7 4095");
}

TEST_F(VlanTable, OldEntriesAreRemovedFromTheChip)
{
    define_vlan(&running_, 5);
    rebuild(1);
    running_.vlans[5].defined = 0;
    define_vlan(&running_, 6);
    rebuild(1);
    EXPECT_EQ(vlans_on_chip(), "6");
}

TEST_F(VlanTable, CountOfZeroAddsNothing)
{
    define_vlan(&running_, 10);
    EXPECT_EQ(rebuild(0), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), FLUSH);
}

TEST_F(VlanTable, SmallCountCutsTheRestOff)
{
    define_vlan(&running_, 10);
    define_vlan(&running_, 20);
    define_vlan(&running_, 30);
    rebuild(2);
    EXPECT_EQ(vlans_on_chip(), "10 20");
    EXPECT_EQ(take_access_count(), FLUSH_CALLS + 2 * ADD_CALLS);
}

TEST_F(VlanTable, LargeCountEndsWithTheTable)
{
    define_vlan(&running_, 10);
    define_vlan(&running_, 4095);
    EXPECT_EQ(rebuild(0xFFFFFFFF), "");
    EXPECT_EQ(vlans_on_chip(), "10 4095");
}

TEST_F(VlanTable, AnyDefinedFlagCounts)
{
    define_vlan(&running_, 10);
    running_.vlans[10].defined = 0xFF;
    rebuild(1);
    EXPECT_EQ(vlans_on_chip(), "10");
}

TEST_F(VlanTable, FailedFlushIsShownAndTheEntriesAreStillAdded)
{
    define_vlan(&running_, 10);
    Hook_Faults hooks(&device_);
    hooks.break_calls(1);
    EXPECT_EQ(rebuild(1), "Switch: ...Remove All VTU Entries !Error:1\n");
    EXPECT_FALSE(result_);
    EXPECT_EQ(vlans_on_chip(), "10");
}

TEST_F(VlanTable, FailedEntryIsShownAndTheNextIsStillAdded)
{
    define_vlan(&running_, 10);
    define_vlan(&running_, 4095);
    Hook_Faults hooks(&device_);
    for (size_t call = 0; call < ADD_CALLS; ++call) {
        hooks.break_calls(FLUSH_CALLS + call);
        EXPECT_EQ(rebuild(2), "Switch: ...Add VTU Entry with Vlan ID 10 !Error:1\n");
        EXPECT_FALSE(result_);
        EXPECT_EQ(vlans_on_chip(), "4095");
    }
}

TEST_F(VlanTable, FailedEntriesCount)
{
    define_vlan(&running_, 10);
    define_vlan(&running_, 20);
    Hook_Faults hooks(&device_);
    hooks.break_calls(FLUSH_CALLS);
    EXPECT_EQ(rebuild(1), "Switch: ...Add VTU Entry with Vlan ID 10 !Error:1\n");
    EXPECT_EQ(vlans_on_chip(), "");
}

TEST_F(VlanTable, LineShowsTheSlotAndTheChipGetsTheEntrysOwnId)
{
    define_vlan(&running_, 10)->vid = 4096;
    define_vlan(&running_, 11)->vid = 500;
    define_vlan(&running_, 12)->dbNum = 64;
    EXPECT_EQ(rebuild(3), "Switch: ...Add VTU Entry with Vlan ID 10 !Error:4\n"
                          "Switch: ...Add VTU Entry with Vlan ID 12 !Error:4\n");
    EXPECT_FALSE(result_);
    EXPECT_EQ(vlans_on_chip(), "500");
}

class PriorityMaps : public Apply_Board
{
};

TEST_F(PriorityMaps, UserPrioritiesAreWrittenInOrder)
{
    EXPECT_EQ(run([&] { return SW_Apply_User_Prio_Map(&control_, running_.cosUserPrio, 8); }), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), "R 1b 18 fa50\nW 1b 18 fa51\n"
                            "R 1b 18 fa51\nW 1b 18 fa51\n"
                            "R 1b 18 fa51\nW 1b 18 fa41\n"
                            "R 1b 18 fa41\nW 1b 18 fa41\n"
                            "R 1b 18 fa41\nW 1b 18 fa41\n"
                            "R 1b 18 fa41\nW 1b 18 fa41\n"
                            "R 1b 18 fa41\nW 1b 18 fa41\n"
                            "R 1b 18 fa41\nW 1b 18 fa41\n");
}

TEST_F(PriorityMaps, FailedUserPrioritiesAreShownEach)
{
    Hook_Faults hooks(&device_);
    hooks.break_calls(5); /* the write of the third */
    EXPECT_EQ(run([&] { return SW_Apply_User_Prio_Map(&control_, running_.cosUserPrio, 8); }),
              "Switch: ...Set User prio 2 to traff class! Error:1\n");
    EXPECT_FALSE(result_);
    EXPECT_EQ(hooks.calls(), 16U);
}

TEST_F(PriorityMaps, EveryDscpIsWrittenTwice)
{
    const uint8_t classes[] = {3, 1};
    EXPECT_EQ(run([&] { return SW_Apply_Dscp_Map(&control_, classes, 2); }), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_trace(), "R 1b 10 0000\nW 1b 10 0003\nR 1b 10 0003\nW 1b 10 0003\n"
                            "R 1b 10 0003\nW 1b 10 0007\nR 1b 10 0007\nW 1b 10 0007\n");
}

TEST_F(PriorityMaps, AllDscpsReachTheirRegisters)
{
    for (int dscp = 0; dscp < SW_DSCPS; ++dscp) {
        running_.cosDscp[dscp] = static_cast<uint8_t>(dscp % 4);
    }
    run([&] { return SW_Apply_Dscp_Map(&control_, running_.cosDscp, 64); });
    EXPECT_TRUE(result_);
    for (int number = 16; number < 24; ++number) {
        EXPECT_EQ(chip_.global[number], 0xE4E4);
    }
    EXPECT_EQ(take_access_count(), 256U);
}

TEST_F(PriorityMaps, OnlyTheSecondWriteOfADscpCounts)
{
    constexpr size_t first_of_12 = 48;
    constexpr const char *line = "Switch: ...Set User prio 12 to traff class! Error:1\n";
    const std::array<const char *, 6> lines = {"", "", "", line, line, ""};
    Hook_Faults hooks(&device_);
    for (size_t call = 0; call < lines.size(); ++call) {
        hooks.break_calls(first_of_12 - 1 + call);
        const bool of_11 = call == 0;
        EXPECT_EQ(run([&] { return SW_Apply_Dscp_Map(&control_, running_.cosDscp, 64); }),
                  of_11 ? "Switch: ...Set User prio 11 to traff class! Error:1\n" : lines[call]);
        EXPECT_EQ(result_, !of_11 && *lines[call] == '\0');
    }
}

TEST_F(PriorityMaps, EveryFailedDscpIsShown)
{
    Hook_Faults hooks(&device_);
    hooks.break_calls(0, 1000);
    const std::string text =
        run([&] { return SW_Apply_Dscp_Map(&control_, running_.cosDscp, 64); });
    EXPECT_EQ(std::ranges::count(text, '\n'), 64);
    EXPECT_EQ(text.substr(0, text.find('\n')),
              "Switch: ...Set User prio 0 to traff class! Error:1");
    EXPECT_NE(text.find("Switch: ...Set User prio 63 to traff class! Error:1\n"),
              std::string::npos);
    EXPECT_EQ(hooks.calls(), 128U);
}

TEST_F(Apply_Board, StatusOfAChipWithoutTheSettingStandsInTheLine)
{
    use_chip(0x165); /* without a global frame size */
    bring_up();
    EXPECT_EQ(run([&] {
                  return SW_Apply_Max_Frame_Size(&control_, &running_.maxFrameSize,
                                                 &applied_.maxFrameSize, true, true);
              }),
              "Switch: ...Set Max Frame Size! Error:16\n");
    EXPECT_FALSE(result_);
}

} // namespace
