#include "switch/config/keywords.h"
#include "switch/engine/apply.h"
#include "tests/switch/engine/board.h"

#include <initializer_list>
#include <string>

namespace
{

constexpr const char *OK = "Switch: Apply Changes - Ok\n";
constexpr const char *FAILED = "Switch: Apply Changes - Failed\n";
constexpr const char *FLUSH = "R 1b 05 0000\nW 1b 05 9000\n";
constexpr const char *ADD_10 = "R 1b 05 1000\nW 1b 06 100a\n"
                               "W 1b 07 1111\nW 1b 08 0001\nW 1b 09 0000\nW 1b 05 b000\n";

/* That the lines stand in the trace in this order, others between them. */
void expect_in_order(const std::string &trace, std::initializer_list<const char *> lines)
{
    size_t place = 0;
    for (const char *line : lines) {
        place = trace.find(line, place);
        ASSERT_NE(place, std::string::npos) << line;
    }
}

class Changes_Board : public Board
{
protected:
    Changes_Board()
    {
        set_custom_defaults();
        bring_up();
    }

    std::string apply(bool log, bool write)
    {
        return printed([&] { result_ = SW_Apply_Changes(&control_, log, write); });
    }

    std::string configure(bool log)
    {
        return printed([&] { result_ = SW_Configure(&control_, log); });
    }

    bool result_ = false;
};

/* One change of the running configuration against the applied one, both with factory settings on
 * ports of custom VLAN mode. */
struct Change_Row {
    const char *name;
    void (*change)(SW_Config *running);
    const char *lines; /* before the result line */
    const char *trace; /* where it is short */
    size_t accesses;
    const char *vlans; /* on the chip then */
};

void PrintTo(const Change_Row &row, std::ostream *out)
{
    *out << row.name;
}

void add_vlan_10(SW_Config *config)
{
    define_vlan(config, 10);
}

constexpr const char *LONG_TRACE = nullptr;

const Change_Row CHANGES[] = {
    {"Nothing", [](SW_Config *) {}, "", "", 0, ""},
    {"FrameSize", [](SW_Config *running) { running->maxFrameSize = 0; },
     "Switch: Max Frame Size: 1632->1522\n", "R 1b 04 0000\nW 1b 04 0000\n", 2, ""},
    {"FrameSizeOutOfRange", [](SW_Config *running) { running->maxFrameSize = 7; }, "",
     "R 1b 04 0000\nW 1b 04 0400\n", 2, ""},
    {"VlanAdded", add_vlan_10, "",
     "R 1b 05 0000\nW 1b 05 9000\n"
     "R 1b 05 1000\nW 1b 06 100a\nW 1b 07 1111\nW 1b 08 0001\nW 1b 09 0000\nW 1b 05 b000\n",
     8, "10"},
    {"VlanAddedWithoutCount",
     [](SW_Config *running) {
         add_vlan_10(running);
         running->vlanEntryCount = 0;
     },
     "", FLUSH, 2, ""},
    {"UndefinedVlanEdited", [](SW_Config *running) { running->vlans[10].vtu.sid = 1; }, "", FLUSH,
     2, ""},
    {"OnlyTheVlanCount", [](SW_Config *running) { running->vlanEntryCount = 3; }, "", "", 0, ""},
    {"OnlyTheVlanRangeText",
     [](SW_Config *running) { SetRangeText(&running->vlanPortList[2], "7"); }, "", "", 0, ""},
    {"OnePortNotCopper", [](SW_Config *running) { running->ports[3].countPre = 0; },
     "Switch: Port 3 Count Pre: True -> False\n", LONG_TRACE, 36, ""},
    {"OnePortCopper", [](SW_Config *running) { running->ports[1].vid = 10; },
     "Switch: Port 1 VID: 1 -> 10\n", LONG_TRACE, 46, ""},
    {"OnlyThePortType", [](SW_Config *running) { running->ports[4].portType = SW_Port_Type_NO; },
     "", LONG_TRACE, 36, ""},
    {"TwoPorts",
     [](SW_Config *running) {
         running->ports[2].vid = 10;
         running->ports[1].vid = 10;
     },
     "Switch: Port 1 VID: 1 -> 10\nSwitch: Port 2 VID: 1 -> 10\n", LONG_TRACE, 92, ""},
    {"SettingsOfAPortInTheirOrder",
     [](SW_Config *running) {
         running->ports[0].portPrio = 1;
         running->ports[0].userPrio = 0;
         running->ports[0].vid = 4095;
     },
     "Switch: Port 0 VID: 1 -> 4095\nSwitch: Port 0 User prio: True -> False\n"
     "Switch: Port 0 Port prio: 0 -> 1\n",
     LONG_TRACE, 36, ""},
    {"UserPriorities", [](SW_Config *running) { running->cosUserPrio[7] = 0; }, "", LONG_TRACE, 16,
     ""},
    {"Dscps", [](SW_Config *running) { running->cosDscp[63] = 0; }, "", LONG_TRACE, 256, ""},
};

class OneChange : public Changes_Board, public testing::WithParamInterface<Change_Row>
{
protected:
    OneChange() { GetParam().change(&running_); }
};

TEST_P(OneChange, IsWrittenLoggedAndCopied)
{
    const Change_Row &row = GetParam();
    EXPECT_EQ(apply(true, true), std::string(row.lines) + OK);
    EXPECT_TRUE(result_);
    EXPECT_TRUE(applied_is_running());
    EXPECT_EQ(recorder_.records.size(), row.accesses);
    if (row.trace != LONG_TRACE) {
        EXPECT_EQ(take_trace(), row.trace);
    }
    EXPECT_EQ(vlans_on_chip(), row.vlans);
}

TEST_P(OneChange, IsWrittenSilentlyWithoutTheLog)
{
    EXPECT_EQ(apply(false, true), "");
    EXPECT_TRUE(result_);
    EXPECT_TRUE(applied_is_running());
    EXPECT_EQ(take_access_count(), GetParam().accesses);
}

TEST_P(OneChange, IsCopiedWithoutAccessWhenNotWriting)
{
    apply(true, false);
    EXPECT_TRUE(result_);
    EXPECT_TRUE(applied_is_running());
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_P(OneChange, IsNotWrittenASecondTime)
{
    apply(true, true);
    take_trace();
    EXPECT_EQ(apply(true, true), OK);
    EXPECT_EQ(take_access_count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Apply, OneChange, testing::ValuesIn(CHANGES),
                         [](const auto &row) { return std::string(row.param.name); });

class ApplyChanges : public Changes_Board
{
protected:
    /* A change in every area. */
    void change_everything()
    {
        running_.maxFrameSize = 0;
        add_vlan_10(&running_);
        for (SW_Port_Config &port : running_.ports) {
            port.vid = 10;
        }
        running_.cosUserPrio[0] = 0;
        running_.cosDscp[0] = 1;
    }
};

TEST_F(ApplyChanges, StepsComeInTheirOrder)
{
    change_everything();
    EXPECT_EQ(apply(true, true), "Switch: Max Frame Size: 1632->1522\n"
                                 "Switch: Port 0 VID: 1 -> 10\n"
                                 "Switch: Port 1 VID: 1 -> 10\n"
                                 "Switch: Port 2 VID: 1 -> 10\n"
                                 "Switch: Port 3 VID: 1 -> 10\n"
                                 "Switch: Port 4 VID: 1 -> 10\n"
                                 "Switch: Apply Changes - Ok\n");
    const std::string trace = take_trace();
    EXPECT_EQ(trace.find(std::string("R 1b 04 0000\nW 1b 04 0000\n") + FLUSH + ADD_10 +
                         "R 12 07 0001\nW 12 07 000a\n"),
              0U);
    expect_in_order(trace, {"W 12 07 000a\n", "W 11 07 000a\n", "W 10 07 000a\n", "W 14 07 000a\n",
                            "W 13 07 000a\n", "W 1b 18 fa50\n", "W 1b 10 0001\n"});
}

TEST_F(ApplyChanges, WithoutWriteOnlyTheFrameSizeLineRemains)
{
    change_everything();
    EXPECT_EQ(apply(true, false), std::string("Switch: Max Frame Size: 1632->1522\n") + OK);
    EXPECT_EQ(take_access_count(), 0U);
    EXPECT_TRUE(applied_is_running());
}

TEST_F(ApplyChanges, WithoutWriteVlanPortModesAreNotApplied)
{
    running_.vlanPortType[1] = SW_Vlan_Port_Type_DEFAULT;
    running_.ports[1].vid = 10;
    apply(true, false);
    EXPECT_EQ(running_.ports[1].vid, 10);
}

TEST_F(ApplyChanges, NeverReportsThatNothingChanged)
{
    EXPECT_EQ(apply(true, true), OK);
    EXPECT_EQ(apply(true, true), OK);
}

TEST_F(ApplyChanges, NothingEditedTakesNoAccess)
{
    SetSwitchConfigDefaults(&running_);
    applied_ = running_;
    apply(true, true);
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(ApplyChanges, OneCopperPortTakesFortySixAccesses)
{
    running_.ports[2].ipPrio = 0;
    apply(true, true);
    EXPECT_EQ(take_access_count(), 46U);
}

TEST_F(ApplyChanges, OneOtherPortTakesThirtySixAccesses)
{
    running_.ports[0].ipPrio = 0;
    apply(true, true);
    EXPECT_EQ(take_access_count(), 36U);
}

TEST_F(ApplyChanges, AllVlansTakeSixAccessesEachAndTwoForTheFlush)
{
    for (int vid = 1; vid < SW_VLANS; ++vid) {
        define_vlan(&running_, vid);
    }
    EXPECT_EQ(apply(true, true), OK);
    EXPECT_EQ(take_access_count(), 24572U);
    EXPECT_TRUE(chip_.vlans.entries[1].valid);
    EXPECT_TRUE(chip_.vlans.entries[4095].valid);
    EXPECT_FALSE(chip_.vlans.entries[0].valid);
}

TEST_F(ApplyChanges, EditOfADefaultModePortIsLost)
{
    SetSwitchConfigDefaults(&running_);
    applied_ = running_;
    running_.ports[1].vid = 10;
    running_.ports[2].vid = 10;
    EXPECT_EQ(apply(true, true), OK);
    EXPECT_EQ(take_access_count(), 92U); /* both were changed before the modes took it back */
    EXPECT_EQ(running_.ports[1].vid, 1);
    EXPECT_EQ(applied_.ports[2].vid, 1);
    EXPECT_EQ(chip_.ports[1][7], 1);
}

TEST_F(ApplyChanges, EditOfAPortWithoutVlanModeReachesTheChip)
{
    running_.vlanPortType[1] = SW_Vlan_Port_Type_NO;
    running_.ports[1].vid = 10;
    running_.ports[2].vid = 10;
    EXPECT_EQ(apply(true, true), std::string("Switch: Port 1 VID: 1 -> 10\n"
                                             "Switch: Port 2 VID: 1 -> 10\n") +
                                     OK);
    EXPECT_EQ(chip_.ports[1][7], 10);
    EXPECT_EQ(chip_.ports[0][7], 10);
}

TEST_F(ApplyChanges, CorrectionByTheModeIsCopiedAndNeverWritten)
{
    running_.vlanPortType[1] = SW_Vlan_Port_Type_ACCESS;
    applied_ = running_;
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(apply(true, true), OK);
        EXPECT_EQ(take_access_count(), 0U);
        EXPECT_EQ(running_.ports[1].dot1qMode, SW_Dot1q_Mode_SECURE);
        EXPECT_EQ(applied_.ports[1].dot1qMode, SW_Dot1q_Mode_SECURE);
        EXPECT_EQ(chip_.ports[1][8], 0);
    }
}

TEST_F(ApplyChanges, EditBySomeoneElseBringsTheCorrectionToTheChip)
{
    running_.vlanPortType[1] = SW_Vlan_Port_Type_ACCESS;
    applied_ = running_;
    running_.ports[1].vid = 100;
    EXPECT_EQ(apply(true, true), std::string("Switch: Port 1 VID: 1 -> 100\n"
                                             "Switch: Port 1 VLAN Dot1Q Mode: Disable -> Secure\n"
                                             "Switch: Port 1 Discard Tagged: False -> True\n") +
                                     OK);
    EXPECT_EQ(chip_.ports[1][8], 0x0E00);
}

TEST_F(ApplyChanges, MembershipByTheModeComesAfterTheVlanTable)
{
    running_.vlanPortType[1] = SW_Vlan_Port_Type_ACCESS;
    running_.ports[1].vid = 10;
    applied_ = running_;
    define_vlan(&running_, 10);
    apply(true, true);
    EXPECT_EQ(chip_.vlans.entries[10].data[0], 0x1111);
    EXPECT_EQ(running_.vlans[10].vtu.memberTagP[1], SW_Member_Tag_UNTAGGED);
    take_trace();
    apply(true, true);
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_F(ApplyChanges, FailureIsReportedCopiedAndNotTriedAgain)
{
    running_.ports[3].vid = 10;
    Hook_Faults hooks(&device_);
    hooks.break_calls(1);
    EXPECT_EQ(apply(true, true), std::string("Switch: ...Set Port SFP0 VID! Error:1\n") + FAILED);
    EXPECT_FALSE(result_);
    EXPECT_TRUE(applied_is_running());
    EXPECT_EQ(apply(true, true), OK);
    EXPECT_EQ(chip_.ports[4][7], 1);
}

TEST_F(ApplyChanges, WithoutTheLogAFailedFrameSizeIsSilentAndAFailedSettingIsNot)
{
    running_.maxFrameSize = 0;
    running_.ports[3].vid = 10;
    Hook_Faults hooks(&device_);
    hooks.break_calls(0, 2); /* one call of each */
    EXPECT_EQ(apply(false, true), "Switch: ...Set Port SFP0 VID! Error:1\n");
    EXPECT_FALSE(result_);
}

TEST_F(ApplyChanges, WithoutALoadedDriverEverythingIsTriedAndFails)
{
    device_ = {};
    running_.maxFrameSize = 0;
    add_vlan_10(&running_);
    running_.cosUserPrio[0] = 0;
    EXPECT_EQ(apply(true, true), "Switch: ...Set Max Frame Size! Error:1\n"
                                 "Switch: Max Frame Size: 1632->1522\n"
                                 "Switch: ...Remove All VTU Entries !Error:16\n"
                                 "Switch: ...Add VTU Entry with Vlan ID 10 !Error:16\n"
                                 "Switch: ...Set User prio 0 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 1 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 2 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 3 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 4 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 5 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 6 to traff class! Error:16\n"
                                 "Switch: ...Set User prio 7 to traff class! Error:16\n"
                                 "Switch: Apply Changes - Failed\n");
}

class Configure : public Changes_Board
{
};

/* Frame size, flush, two copper ports and three others, eight user priorities, 64 DSCPs twice. */
constexpr size_t ALL_ACCESSES = 2 + 2 + 2 * 46 + 3 * 36 + 8 * 2 + 64 * 4;

TEST_F(Configure, WritesEverythingWhateverDiffers)
{
    EXPECT_EQ(configure(true), "");
    EXPECT_TRUE(result_);
    EXPECT_EQ(take_access_count(), ALL_ACCESSES);
}

TEST_F(Configure, StepsComeInTheirOrder)
{
    add_vlan_10(&running_);
    configure(false);
    const std::string trace = take_trace();
    EXPECT_EQ(
        trace.find(std::string("R 1b 04 0000\nW 1b 04 0400\n") + FLUSH + ADD_10 + "R 12 07 0001\n"),
        0U);
    expect_in_order(trace, {"W 12 07 0001\n", "W 11 07 0001\n", "W 10 07 0001\n", "W 14 07 0001\n",
                            "W 13 07 0001\n", "W 1b 18 fa51\n", "W 1b 10 0000\n"});
}

TEST_F(Configure, LogsAgainstTheAppliedConfigurationAndLeavesIt)
{
    running_.maxFrameSize = 0;
    running_.ports[4].vid = 20;
    EXPECT_EQ(configure(true), "Switch: Max Frame Size: 1632->1522\nSwitch: Port 4 VID: 1 -> 20\n");
    EXPECT_TRUE(result_);
    EXPECT_EQ(applied_.maxFrameSize, 1U);
    EXPECT_EQ(applied_.ports[4].vid, 1);
    EXPECT_EQ(configure(false), "");
}

TEST_F(Configure, PortModesComeBeforeThePorts)
{
    running_.vlanPortType[1] = SW_Vlan_Port_Type_ACCESS;
    configure(false);
    EXPECT_EQ(chip_.ports[1][8], 0x0E00);
    EXPECT_FALSE(applied_is_running());
}

TEST_F(Configure, OutOfRangeFrameSizeIsReplaced)
{
    running_.maxFrameSize = 7;
    configure(false);
    EXPECT_EQ(running_.maxFrameSize, 1U);
    EXPECT_EQ(chip_.global[4], 0x0400);
}

struct Step_Row {
    const char *name;
    size_t call; /* the hook call that fails */
    const char *line;
};

void PrintTo(const Step_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Step_Row STEPS[] = {
    {"FrameSize", 1, "Switch: ...Set Max Frame Size! Error:1\n"},
    {"Flush", 3, "Switch: ...Remove All VTU Entries !Error:1\n"},
    {"FirstPort", 5, "Switch: ...Set Port CPU VID! Error:1\n"},
    {"LastPort", 203, "Switch: ...Set Port SFP1 QOS Port prio! Error:1\n"},
    {"UserPriority", 205, "Switch: ...Set User prio 0 to traff class! Error:1\n"},
    {"Dscp", 475, "Switch: ...Set User prio 63 to traff class! Error:1\n"},
};

class FailedStep : public Changes_Board, public testing::WithParamInterface<Step_Row>
{
};

TEST_P(FailedStep, IsShownAndAllOthersRun)
{
    Hook_Faults hooks(&device_);
    hooks.break_calls(GetParam().call);
    EXPECT_EQ(configure(true), GetParam().line);
    EXPECT_FALSE(result_);
    EXPECT_EQ(hooks.calls(), ALL_ACCESSES);
}

INSTANTIATE_TEST_SUITE_P(Configure, FailedStep, testing::ValuesIn(STEPS),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
