#include "switch/config/keywords.h"
#include "switch/engine/apply.h"
#include "tests/switch/engine/board.h"

#include <cstring>
#include <vector>

namespace
{

/* A run of register accesses of a whole apply and the line that each of them prints when the hook
 * answers false; no line: nobody looks at the status. */
struct Segment {
    size_t accesses;
    std::string line;
};

constexpr const char *PORT_LINES[] = {
    "VID",           "Force Default VID", "Vlan Dot1q Mode", "Discard Tagged",  "Discard Untagged",
    "Egress Mode",   "Use Core Tag",      "Egress Rate",     "Bytes Count",     "QOS Pri0Rate",
    "QOS Pri1Rate",  "QOS Pri2Rate",      "QOS Pri3Rate",    "QOS PrioMapRule", "QOS IP prio",
    "QOS User prio", "QOS Port prio",
};

constexpr size_t FRAME_ACCESSES = 2;
constexpr size_t WHOLE_APPLY = 2 + 2 + 2 * 6 + 3 * 36 + 2 * 46 + 8 * 2 + 64 * 4;
constexpr const char *CHANGE_LINE = "Switch: Max Frame Size: 1632->1522\n";

void append_port(std::vector<Segment> *segments, const std::string &name, bool copper)
{
    const auto line = [&name](const char *setting) {
        return "Switch: ...Set Port " + name + " " + setting + "! Error:1\n";
    };
    if (copper) {
        segments->push_back({10, line("Auto Mode")});
    }
    for (const char *setting : PORT_LINES) {
        segments->push_back({std::strcmp(setting, "Bytes Count") == 0 ? 4U : 2U, line(setting)});
    }
}

void append_classes(std::vector<Segment> *segments, int entries, bool twice)
{
    for (int entry = 0; entry < entries; ++entry) {
        if (twice) {
            segments->push_back({2, ""});
        }
        segments->push_back({2, "Switch: ...Set User prio " + std::to_string(entry) +
                                    " to traff class! Error:1\n"});
    }
}

/* All accesses of the apply that the fixture prepares, in their order. */
std::vector<Segment> whole_apply()
{
    std::vector<Segment> segments = {
        {FRAME_ACCESSES, "Switch: ...Set Max Frame Size! Error:1\n"},
        {2, "Switch: ...Remove All VTU Entries !Error:1\n"},
        {6, "Switch: ...Add VTU Entry with Vlan ID 10 !Error:1\n"},
        {6, "Switch: ...Add VTU Entry with Vlan ID 20 !Error:1\n"},
    };
    append_port(&segments, "CPU", false);
    append_port(&segments, "LAN", true);
    append_port(&segments, "WAN", true);
    append_port(&segments, "SFP0", false);
    append_port(&segments, "SFP1", false);
    append_classes(&segments, 8, false);
    append_classes(&segments, 64, true);
    return segments;
}

/* A driver operation ends at its first failed access; every other one still runs. */
size_t accesses_left_out(const Segment &segment, size_t failed_access)
{
    return segment.accesses - failed_access - 1;
}

class ApplyFaults : public Board
{
protected:
    /* A board with something to write in every area and nothing to log but the frame size. */
    void prepare()
    {
        use_chip(0x105);
        Sim_Faults_Clear(&faults_);
        set_custom_defaults();
        running_.maxFrameSize = SW_Max_Frame_Size_1522;
        running_.cosUserPrio[0] = 3;
        running_.cosDscp[0] = 3;
        running_.vlanEntryCount = 0;
        define_vlan(&running_, 10);
        define_vlan(&running_, 20);
        for (SW_Port_Config &port : applied_.ports) {
            port.portType = SW_Port_Type_NO;
        }
        bring_up();
    }

    std::string apply()
    {
        return printed([&] { result_ = SW_Apply_Changes(&control_, true, true); });
    }

    /* Prepares a board for each register access of the whole apply, breaks that hook call during
     * the operation and checks what both kinds of whole pass have in common. */
    template <class Check>
    void break_each_call(Check check)
    {
        size_t call = 0;
        for (const Segment &segment : whole_apply()) {
            for (size_t access = 0; access < segment.accesses; ++access, ++call) {
                SCOPED_TRACE(call);
                prepare();
                Hook_Faults hooks(&device_);
                hooks.break_calls(call);
                check(segment, call < FRAME_ACCESSES);
                EXPECT_EQ(result_, segment.line.empty());
                EXPECT_EQ(hooks.calls(), WHOLE_APPLY - accesses_left_out(segment, access));
            }
        }
        EXPECT_EQ(call, WHOLE_APPLY);
    }

    bool result_ = false;
};

TEST_F(ApplyFaults, WithoutAFaultTheWholeApplyIsOk)
{
    prepare();
    Hook_Faults hooks(&device_);
    hooks.break_calls(WHOLE_APPLY);
    EXPECT_EQ(apply(), std::string(CHANGE_LINE) + "Switch: Apply Changes - Ok\n");
    EXPECT_EQ(hooks.calls(), WHOLE_APPLY);
}

TEST_F(ApplyFaults, EveryHookCallThatFailsPrintsTheLineOfItsStep)
{
    break_each_call([this](const Segment &segment, bool at_frame_size) {
        EXPECT_EQ(apply(),
                  (at_frame_size ? segment.line + CHANGE_LINE : CHANGE_LINE + segment.line) +
                      "Switch: Apply Changes - " + (segment.line.empty() ? "Ok" : "Failed") + "\n");
        EXPECT_TRUE(applied_is_running());
    });
}

struct Seam_Row {
    const char *name;
    Sim_Fault_Kind kind;
};

void PrintTo(const Seam_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Seam_Row SEAM_ROWS[] = {
    {"Failed", SIM_FAULT_FAIL},
    {"AllOnes", SIM_FAULT_ALL_ONES},
    {"Busy", SIM_FAULT_BUSY},
};

class SeamFaults : public ApplyFaults, public testing::WithParamInterface<Seam_Row>
{
};

TEST_P(SeamFaults, EveryRequestThatFailsIsHiddenByTheHooks)
{
    for (uint32_t request = 1; request <= WHOLE_APPLY; ++request) {
        SCOPED_TRACE(request);
        prepare();
        ASSERT_TRUE(Sim_Faults_Add(&faults_, {GetParam().kind, request, 1, SIM_ANY, SIM_ANY}));
        EXPECT_EQ(apply(), std::string(CHANGE_LINE) + "Switch: Apply Changes - Ok\n");
        EXPECT_TRUE(result_);
        EXPECT_TRUE(applied_is_running());
    }
}

INSTANTIATE_TEST_SUITE_P(ApplyFaults, SeamFaults, testing::ValuesIn(SEAM_ROWS),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_F(ApplyFaults, DeviceThatIsGoneShowsOnlyAtThePhys)
{
    prepare();
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}));
    EXPECT_EQ(apply(), std::string(CHANGE_LINE) + "Switch: ...Set Port LAN Auto Mode! Error:1\n"
                                                  "Switch: ...Set Port WAN Auto Mode! Error:1\n"
                                                  "Switch: Apply Changes - Failed\n");
}

TEST_F(ApplyFaults, HiddenFaultMayMakeAGigabitPhyLookLikeAnother)
{
    prepare();
    running_.ports[1].autoMode = SPEED_1000_DUPLEX_FULL;
    applied_.ports[1].autoMode = SPEED_1000_DUPLEX_FULL;
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 1, 1, 1, 1})); /* LAN's PHY, status */
    EXPECT_EQ(apply(), std::string(CHANGE_LINE) + "Switch: ...Set Port LAN Auto Mode! Error:16\n"
                                                  "Switch: Apply Changes - Failed\n");
}

TEST_F(ApplyFaults, EveryHookCallThatFailsMakesTheConfigurationFail)
{
    break_each_call([this](const Segment &segment, bool at_frame_size) {
        EXPECT_EQ(printed([this] { result_ = SW_Configure(&control_, false); }),
                  at_frame_size ? "" : segment.line);
        EXPECT_FALSE(applied_is_running());
    });
}

} // namespace
