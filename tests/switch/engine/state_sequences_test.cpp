#include "switch/config/keywords.h"
#include "switch/engine/apply.h"
#include "switch/engine/bring_up.h"
#include "switch/engine/commands.h"
#include "switch/engine/existing_vlans.h"
#include "switch/engine/vlan_modes.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/engine/board.h"

#include <numeric>
#include <vector>

namespace
{

/*
 * What the operator sees of a sequence of commands: the chip, and the two marks of the main menus.
 * The VLAN port modes edit the running configuration while it is applied, in all 4096 slots of the
 * VLAN table, and only defined VLANs are saved: so "not saved" comes back after an apply although
 * nothing was edited.
 */
class Sequence : public Board
{
protected:
    Sequence() : path_(folder_.path() + "/startup.ini") { control_.startupPath = path_.c_str(); }

    void write_factory_file()
    {
        SetSwitchConfigDefaults(&running_);
        folder_.write("startup.ini", StartupFileText(running_));
        running_ = {};
    }

    void start()
    {
        quietly([&] { SW_Start(&control_, path_.c_str(), true); });
    }
    void apply()
    {
        quietly([&] { SW_Apply_Changes(&control_, true, true); });
    }
    void save()
    {
        quietly([&] { SW_Save_Running_Config(&control_, path_.c_str()); });
    }
    void load()
    {
        quietly([&] { SW_Load_Running_Config(&control_); });
    }
    void set_factory_settings()
    {
        quietly([&] { SW_Set_Factory_Settings(&control_); });
    }
    void remove_vlan(int vid)
    {
        running_.vlans[vid] = {};
        running_.vlanEntryCount--;
    }

    template <class Call>
    void quietly(Call call)
    {
        take_trace();
        printed(call);
    }

    /* The marks, "applied" or "NOT applied", "saved" or "NOT saved". */
    std::string marks()
    {
        bool not_applied = true;
        bool not_saved = true;
        SW_Get_Config_State(&control_, &not_applied, &not_saved);
        return std::string(not_applied ? "NOT applied" : "applied") +
               (not_saved ? ", NOT saved" : ", saved");
    }

    /* What the last command wrote: whether the chip's VLAN table, and the ports by their names. */
    std::string written()
    {
        const std::string trace = take_trace();
        std::string text = trace.find("W 1b 05 9000\n") == std::string::npos ? "" : "VLANs ";
        constexpr const char *port_writes[SW_PORTS] = {"W 12 07", "W 11 07", "W 10 07", "W 14 07",
                                                       "W 13 07"};
        for (int port = 0; port < SW_PORTS; ++port) {
            if (trace.find(port_writes[port]) != std::string::npos) {
                text += SW_Port_Names[port];
                text += ' ';
            }
        }
        return text;
    }

    Temporary_Folder folder_;
    const std::string path_;
};

TEST_F(Sequence, FactoryFileAppliedSavedLoadedApplied)
{
    write_factory_file();
    start();
    EXPECT_EQ(marks(), "applied, saved");

    apply();
    EXPECT_EQ(written(), "");
    EXPECT_EQ(marks(), "applied, NOT saved");
    EXPECT_STREQ(running_.vlanPortList[0], "");
    EXPECT_EQ(running_.vlans[0].vtu.memberTagP[2], SW_Member_Tag_NONE);
    EXPECT_EQ(running_.vlans[4095].vtu.memberTagP[3], SW_Member_Tag_NONE);

    save();
    EXPECT_EQ(marks(), "applied, NOT saved");

    load();
    EXPECT_EQ(marks(), "NOT applied, saved");

    apply();
    EXPECT_EQ(written(), "VLANs ");
    EXPECT_EQ(vlans_on_chip(), "");
    EXPECT_EQ(marks(), "applied, NOT saved");
}

TEST_F(Sequence, NoFileFactorySettingsAppliedSaved)
{
    start();
    EXPECT_EQ(marks(), "applied, saved");

    set_factory_settings();
    EXPECT_EQ(marks(), "NOT applied, saved");

    apply();
    EXPECT_EQ(written(), "CPU LAN WAN SFP0 SFP1 ");
    EXPECT_EQ(chip_.ports[0][7], 1);
    EXPECT_EQ(marks(), "applied, saved");

    save();
    EXPECT_EQ(marks(), "applied, NOT saved");
}

TEST_F(Sequence, FactorySettingsOverFactorySettingsShowNothingAndWriteNoPort)
{
    SetSwitchConfigDefaults(&running_);
    SetSwitchConfigDefaults(&applied_);
    start();
    set_factory_settings();
    EXPECT_EQ(marks(), "applied, saved");
    apply();
    EXPECT_EQ(written(), "");
}

TEST_F(Sequence, RemovedVlanStaysInTheImageForEver)
{
    write_factory_file();
    start();
    for (uint32_t &type : running_.vlanPortType) {
        type = SW_Vlan_Port_Type_CUSTOM;
    }
    define_vlan(&running_, 10);
    apply();
    EXPECT_EQ(written(), "VLANs ");
    EXPECT_EQ(vlans_on_chip(), "10");
    save();
    EXPECT_EQ(marks(), "applied, saved");

    remove_vlan(10);
    apply();
    EXPECT_EQ(written(), "VLANs ");
    EXPECT_EQ(vlans_on_chip(), "");
    save();
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(marks(), "applied, NOT saved");
        save();
    }
    load();
    EXPECT_EQ(marks(), "applied, NOT saved");
}

TEST_F(Sequence, MembersOfDefaultModePortsReachTheChipAndNotTheModel)
{
    write_factory_file();
    start();
    Vlan_Table_Entry *entry = define_vlan(&running_, 10);
    entry->memberTagP[2] = SW_Member_Tag_TAGGED;
    entry->memberTagP[1] = SW_Member_Tag_TAGGED;
    apply();
    EXPECT_EQ(written(), "VLANs ");
    EXPECT_EQ(vlans_on_chip(), "10");
    EXPECT_EQ(chip_.vlans.entries[10].data[0], 0x1331);
    EXPECT_EQ(chip_.vlans.entries[10].data[1], 0x0001);
    for (const int chip_port : SW_Chip_Ports) {
        EXPECT_EQ(running_.vlans[10].vtu.memberTagP[chip_port], SW_Member_Tag_NONE);
    }
    EXPECT_EQ(marks(), "applied, NOT saved");

    apply();
    EXPECT_EQ(written(), "");
    EXPECT_EQ(chip_.vlans.entries[10].data[0], 0x1331);
}

TEST_F(Sequence, AccessModeAppliedSaved)
{
    write_factory_file();
    start();
    const int32_t lan[] = {1};
    quietly([&] { SW_Set_Access_Mode(&control_, lan, 100); });
    apply();
    EXPECT_EQ(written(), "VLANs LAN ");
    EXPECT_EQ(vlans_on_chip(), "");
    EXPECT_EQ(chip_.ports[1][7], 100);
    save();
    EXPECT_EQ(marks(), "applied, NOT saved");
}

TEST_F(Sequence, EveryVlanDefinedStillLeavesSlotZeroUnsaved)
{
    write_factory_file();
    start();
    for (int vid = 1; vid < SW_VLANS; ++vid) {
        define_vlan(&running_, vid);
    }
    apply();
    save();
    EXPECT_EQ(marks(), "applied, NOT saved");
}

TEST_F(Sequence, PortModesWithoutACopyShowNotApplied)
{
    write_factory_file();
    start();
    quietly([&] { SW_Apply_Vlan_Port_Modes(&control_, true); });
    EXPECT_EQ(marks(), "NOT applied, NOT saved");
    apply();
    EXPECT_EQ(marks(), "applied, NOT saved");
}

TEST_F(Sequence, FullConfigurationShowsNotApplied)
{
    write_factory_file();
    start();
    quietly([&] { SW_Configure(&control_, false); });
    EXPECT_EQ(written(), "VLANs CPU LAN WAN SFP0 SFP1 ");
    EXPECT_EQ(marks(), "NOT applied, NOT saved");
}

/* The membership that a VLAN has on the chip: a digit for each of the chip ports 3 to 0. */
constexpr uint16_t NOBODY = 0x1111;

TEST_F(Sequence, NewVlansReachTheChipWithTheMembersThatTheirPortsRegain)
{
    write_factory_file();
    start();
    const int32_t lan[] = {1};
    const int32_t wan[] = {2};
    const int32_t existing[] = {10, 11, 12};
    std::vector<int32_t> allowed(11);
    std::iota(allowed.begin(), allowed.end(), 10);
    quietly([&] {
        SW_Set_Access_Mode(&control_, lan, 10);
        SW_Set_Trunk_Mode(&control_, wan, 1, false, {"10-20", allowed});
        SW_Set_Existing_Vlans(&control_, existing, true);
        SW_Apply_Vlan_Port_Modes(&control_, true);
    });
    apply();
    EXPECT_EQ(written(), "VLANs LAN WAN ");
    EXPECT_EQ(vlans_on_chip(), "10 11 12");
    EXPECT_EQ(chip_.vlans.entries[10].data[0], 0x1123);
    EXPECT_EQ(chip_.vlans.entries[11].data[0], 0x1113);
    EXPECT_EQ(chip_.vlans.entries[12].data[0], 0x1113);
    EXPECT_EQ(running_.vlans[20].vtu.memberTagP[0], SW_Member_Tag_TAGGED);
    EXPECT_EQ(running_.vlans[20].defined, 0);
}

TEST_F(Sequence, TrunkOfAllVlansIsAMemberOnTheChipFromTheNextRebuildOn)
{
    write_factory_file();
    start();
    const int32_t lan[] = {1};
    const int32_t existing[] = {10};
    std::vector<int32_t> allowed(4095);
    std::iota(allowed.begin(), allowed.end(), 1);
    quietly([&] {
        SW_Set_Existing_Vlans(&control_, existing, false);
        SW_Set_Trunk_Mode(&control_, lan, 1, false, {"1-4095", allowed});
    });
    apply();
    EXPECT_EQ(chip_.vlans.entries[10].data[0], NOBODY);
    EXPECT_EQ(running_.vlans[10].vtu.memberTagP[1], SW_Member_Tag_TAGGED);
    apply();
    EXPECT_EQ(written(), "");
    define_vlan(&running_, 11);
    apply();
    EXPECT_EQ(chip_.vlans.entries[10].data[0], 0x1131);
}

/* Global register 4, whose bit 10 stands for large frames. */
constexpr uint16_t SMALL_FRAMES = 0x0000;
constexpr uint16_t LARGE_FRAMES = 0x0400;

TEST_F(Sequence, LargeFramesOfAReInitStayUntilTheFullConfiguration)
{
    folder_.write("startup.ini", "[SW_COMMON]\nMAX_FRAME_SIZE = 1522\n");
    start();
    quietly([&] { SW_ReInit(&control_); });
    EXPECT_EQ(marks(), "applied, saved");
    apply();
    EXPECT_EQ(chip_.global[4], LARGE_FRAMES);
    quietly([&] { SW_Configure(&control_, false); });
    EXPECT_EQ(chip_.global[4], SMALL_FRAMES);
}

TEST_F(Sequence, LargeFramesOfAReInitStayUntilTheFrameSizeIsEdited)
{
    folder_.write("startup.ini", "[SW_COMMON]\nMAX_FRAME_SIZE = 1632\n");
    start();
    quietly([&] { SW_ReInit(&control_); });
    running_.maxFrameSize = 0;
    apply();
    EXPECT_EQ(chip_.global[4], SMALL_FRAMES);
}

} // namespace
