#include "switch/engine/commands.h"

#include "switch/chip/vlan_table.h"
#include "switch/config/keywords.h"
#include "switch/config/reader.h"
#include "switch/engine/apply.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/engine/board.h"

#include <cstring>

namespace
{

/* Sets two fields; the rest is left to what is there. */
constexpr const char *PARTIAL_FILE = "[SW_COMMON]\n"
                                     "MAX_FRAME_SIZE = 1632\n"
                                     "[SW_PORT1]\n"
                                     "VID = 10\n";
/* One bad entry between two good ones. */
constexpr const char *BAD_ENTRY_FILE = "[SW_PORT1]\n"
                                       "VID = 10 PORT_TYPE = NO TRAFF_CLASS = 3\n";
constexpr const char *BAD_ENTRY_LINE = "[1:2][SW_PORT1] PORT_TYPE = NO - bad variable value\n";
constexpr const char *BAD_SYNTAX_FILE = "[SW_PORT1]\nVID = 10\n]\n";
constexpr const char *FILE_NAME = "startup.ini";

bool same(const SW_Config &a, const SW_Config &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class Commands : public Board
{
protected:
    Commands() : missing_(folder_.path() + "/missing/startup.ini")
    {
        SetSwitchConfigDefaults(&defaults_);
    }

    /* Writes the startup file and makes it the control's. */
    void write_file(const std::string &text)
    {
        path_ = folder_.write(FILE_NAME, text);
        control_.startupPath = path_.c_str();
    }

    std::string load_line(const char *result) const { return load_line(path_, result); }

    static std::string load_line(const std::string &path, const char *result)
    {
        return "Switch: Load SW Config from \"" + path + "\" - " + result + "\n";
    }

    Temporary_Folder folder_;
    std::string path_;
    const std::string missing_;
    SW_Config defaults_;
    SW_Config expected_{};
};

/* The console's start. */
class Start : public Commands
{
protected:
    std::string start(const std::string &path, bool load)
    {
        return printed([&] { result_ = SW_Start(&control_, path.c_str(), load); });
    }

    int result_ = 12345;
};

TEST_F(Start, LoadsTheFileIntoBothConfigurationsAndBringsTheChipUp)
{
    write_file(StartupFileText(defaults_));
    EXPECT_EQ(start(path_, true), load_line("Ok"));
    EXPECT_EQ(result_, 0);
    EXPECT_TRUE(same(running_, defaults_));
    EXPECT_TRUE(same(applied_, defaults_));
    EXPECT_EQ(device_.loaded, 1U);
    EXPECT_EQ(waits_.size(), 2U);
    EXPECT_EQ(take_access_count(), 20U); /* the load of the driver: no setting is written */
}

TEST_F(Start, KeepsWhatTheFileLeavesOut)
{
    write_file(PARTIAL_FILE);
    running_.ports[2].vid = 77;
    define_vlan(&running_, 5);
    EXPECT_EQ(start(path_, true), load_line("Ok"));
    EXPECT_EQ(running_.maxFrameSize, 1U);
    EXPECT_EQ(running_.ports[1].vid, 10);
    EXPECT_EQ(running_.ports[2].vid, 77);
    EXPECT_EQ(running_.vlanEntryCount, 1U);
    EXPECT_TRUE(same(running_, applied_));
}

TEST_F(Start, MissingFileLeavesTheConfigurationAsItWas)
{
    running_.ports[2].vid = 77;
    expected_ = running_;
    EXPECT_EQ(start(missing_, true), load_line(missing_, "Failed"));
    EXPECT_EQ(result_, 0);
    EXPECT_TRUE(same(running_, expected_));
    EXPECT_TRUE(same(applied_, expected_));
    EXPECT_EQ(device_.loaded, 1U);
}

TEST_F(Start, BadEntryLeavesTheGoodOnes)
{
    write_file(BAD_ENTRY_FILE);
    expected_.ports[1].vid = 10;
    expected_.ports[1].portPrio = 3;
    EXPECT_EQ(start(path_, true), BAD_ENTRY_LINE + load_line("Failed"));
    EXPECT_TRUE(same(running_, expected_));
    EXPECT_TRUE(same(applied_, expected_));
}

TEST_F(Start, WithoutTheLoadFlagTouchesNoConfiguration)
{
    write_file(StartupFileText(defaults_));
    applied_.maxFrameSize = 1;
    expected_ = applied_;
    EXPECT_EQ(start(path_, false), "");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(running_.maxFrameSize, 0U);
    EXPECT_TRUE(same(applied_, expected_));
    EXPECT_EQ(device_.loaded, 1U);
}

TEST_F(Start, FailedBringUpIsShownBehindTheLoad)
{
    write_file(StartupFileText(defaults_));
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 1, SIM_FOREVER, SIM_ANY, SIM_ANY}));
    EXPECT_EQ(start(path_, true), load_line("Ok") + "...load driver failed! Error:1\n");
    EXPECT_EQ(result_, 1);
    EXPECT_TRUE(same(applied_, defaults_));
}

/* Key l and the operation below it. */
struct Load_Row {
    const char *name;
    const char *file; /* null: none */
    bool loaded;
    const char *reader_lines;
};

void PrintTo(const Load_Row &row, std::ostream *out)
{
    *out << row.name;
}

constexpr Load_Row LOADS[] = {
    {"Good", PARTIAL_FILE, true, ""},
    {"Missing", nullptr, false, ""},
    {"Empty", "", false, ""},
    {"BadSyntax", BAD_SYNTAX_FILE, false, ""},
    {"BadEntry", BAD_ENTRY_FILE, false, BAD_ENTRY_LINE},
};

class Load : public Commands, public testing::WithParamInterface<Load_Row>
{
protected:
    Load()
    {
        path_ = missing_;
        control_.startupPath = path_.c_str();
        if (GetParam().file != nullptr) {
            write_file(GetParam().file);
        }
        for (SW_Config *config : {&running_, &applied_}) {
            config->ports[2].vid = 77;
            define_vlan(config, 5);
        }
        applied_before_ = applied_;
        cleared_and_loaded_.maxFrameSize = 1;
        cleared_and_loaded_.ports[1].vid = 10;
    }

    SW_Config applied_before_;
    SW_Config cleared_and_loaded_{};
};

TEST_P(Load, StartupConfigClearsThenFallsBackToTheDefaults)
{
    bool result = false;
    EXPECT_EQ(
        printed([&] { result = SW_Load_Startup_Config(&control_, path_.c_str(), &device_image_); }),
        GetParam().reader_lines);
    EXPECT_EQ(result, GetParam().loaded);
    EXPECT_TRUE(same(device_image_, result ? cleared_and_loaded_ : defaults_));
    EXPECT_EQ(running_.ports[2].vid, 77);
}

TEST_P(Load, RunningConfigGetsItAndOneLineIsPrinted)
{
    const bool loaded = GetParam().loaded;
    bool result = !loaded;
    EXPECT_EQ(printed([&] { result = SW_Load_Running_Config(&control_); }),
              std::string(GetParam().reader_lines) +
                  "Switch: Load Startup Config To Running Config - " + (loaded ? "Ok" : "Failed") +
                  "\n");
    EXPECT_EQ(result, loaded);
    EXPECT_TRUE(same(running_, loaded ? cleared_and_loaded_ : defaults_));
    EXPECT_TRUE(same(applied_, applied_before_));
    EXPECT_EQ(take_access_count(), 0U);
}

TEST_P(Load, ConfigIsNotClearedFirstAndFallsBackWithItsLine)
{
    const bool loaded = GetParam().loaded;
    expected_ = running_;
    expected_.maxFrameSize = 1;
    expected_.ports[1].vid = 10;
    int result = 12345;
    EXPECT_EQ(printed([&] { result = SW_Load_Config(&control_, path_.c_str(), false); }),
              GetParam().reader_lines + load_line(loaded ? "Ok" : "Failed") +
                  (loaded ? "" : "Switch: Default settings used"));
    EXPECT_EQ(result, 0);
    EXPECT_TRUE(same(running_, loaded ? expected_ : defaults_));
    EXPECT_TRUE(same(applied_, applied_before_));
    EXPECT_EQ(take_access_count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Commands, Load, testing::ValuesIn(LOADS),
                         [](const auto &row) { return std::string(row.param.name); });

class LoadAndConfigure : public Commands
{
protected:
    std::string load(const std::string &path)
    {
        return printed([&] { result_ = SW_Load_Config(&control_, path.c_str(), true); });
    }

    std::string load_and_configure(const std::string &path)
    {
        return printed([&] { result_ = SW_Load_Config_And_Configure(&control_, path.c_str()); });
    }

    int result_ = 12345;
};

constexpr const char *CUSTOM_PORT_FILE = "[SW_COMMON]\nMAX_FRAME_SIZE = 1522\n"
                                         "[SW_PORT1]\nVID = 10 VLAN_PORT_TYPE = CUSTOM\n"
                                         "[SW_VLAN10]\nVLAN_VID = 10 MEMBER_TAG_P1 = 2\n";

TEST_F(LoadAndConfigure, WritesTheWholeConfigurationWithoutALog)
{
    write_file(CUSTOM_PORT_FILE);
    bring_up();
    chip_.global[4] = 0x0400;
    EXPECT_EQ(load_and_configure(path_), load_line("Ok") + "Switch: Configure: Ok\n");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(chip_.global[4], 0);
    EXPECT_EQ(chip_.ports[1][7], 10);
    EXPECT_EQ(vlans_on_chip(), "10");
    EXPECT_EQ(applied_.ports[1].vid, 0);
}

TEST_F(LoadAndConfigure, IsTheLoadWithTheFlag)
{
    write_file(CUSTOM_PORT_FILE);
    bring_up();
    const std::string text = load_and_configure(path_);
    const std::string trace = take_trace();
    running_ = {};
    use_chip(0x105);
    bring_up();
    EXPECT_EQ(load(path_), text);
    EXPECT_EQ(take_trace(), trace);
    EXPECT_EQ(result_, 0);
}

TEST_F(LoadAndConfigure, DefaultsStandOnTheLineOfTheResult)
{
    bring_up();
    EXPECT_EQ(load_and_configure(missing_),
              load_line(missing_, "Failed") +
                  "Switch: Default settings usedSwitch: Configure: Ok\n");
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(chip_.global[4], 0x0400);
    EXPECT_TRUE(same(applied_, expected_));
    EXPECT_EQ(running_.ports[1].vid, 1);
}

TEST_F(LoadAndConfigure, FailedWriteIsShownAndStillReturnsZero)
{
    write_file(CUSTOM_PORT_FILE);
    bring_up();
    Hook_Faults hooks(&device_);
    hooks.break_calls(0, 3); /* the frame size, silent without the log, and the flush */
    EXPECT_EQ(load_and_configure(path_), load_line("Ok") +
                                             "Switch: ...Remove All VTU Entries !Error:1\n"
                                             "Switch: ...Add VTU Entry with Vlan ID 10 !Error:1\n"
                                             "Switch: Configure: Failed\n");
    EXPECT_EQ(result_, 0);
}

/* The start that also configures the chip. */
class StartConfigured : public Commands
{
protected:
    StartConfigured() { running_ = applied_ = defaults_; }

    std::string start(const std::string &path)
    {
        return printed([&] { SW_Start_Configured(&control_, path.c_str()); });
    }

    std::string banners()
    {
        bool notApplied = true;
        bool notSaved = true;
        SW_Get_Config_State(&control_, &notApplied, &notSaved);
        return std::string(notApplied ? "not applied " : "") + (notSaved ? "not saved" : "");
    }

    int tag_on_chip(uint16_t vid, int port)
    {
        Vlan_Table_Entry entry = {};
        entry.vid = static_cast<uint16_t>(vid - 1);
        EXPECT_EQ(swVtuGetNext(&device_, &entry), 0);
        EXPECT_EQ(entry.vid, vid);
        return entry.memberTagP[SW_Chip_Ports[port]];
    }
};

/* The file's own tags say that LAN and WAN are in neither VLAN. */
constexpr const char *MODES_FILE =
    "[SW_COMMON]\nMAX_FRAME_SIZE = 1522\n"
    "[SW_PORT1]\nVID = 10 VLAN_PORT_TYPE = ACCESS\n"
    "[SW_PORT2]\nVID = 10 VLAN_PORT_TYPE = TRUNK\n"
    "VLAN_PORT_LIST = \"20\"\n"
    "[SW_VLAN10]\nVLAN_VID = 10 MEMBER_TAG_P0 = 1 MEMBER_TAG_P1 = 1\n"
    "[SW_VLAN20]\nVLAN_VID = 20 MEMBER_TAG_P0 = 1 MEMBER_TAG_P1 = 1\n";

TEST_F(StartConfigured, TheChipHoldsTheFileAndTheMembershipOfThePortModes)
{
    write_file(MODES_FILE);
    EXPECT_EQ(start(path_), load_line("Ok") + "Switch: Configure: Ok\n");
    EXPECT_EQ(chip_.global[4], 0);
    EXPECT_EQ(chip_.ports[SW_Chip_Ports[1]][7], 10);
    EXPECT_EQ(vlans_on_chip(), "10 20");
    EXPECT_EQ(tag_on_chip(10, 1), SW_Member_Tag_UNTAGGED);
    EXPECT_EQ(tag_on_chip(20, 1), SW_Member_Tag_NONE);
    EXPECT_EQ(tag_on_chip(10, 2), SW_Member_Tag_UNTAGGED);
    EXPECT_EQ(tag_on_chip(20, 2), SW_Member_Tag_TAGGED);
}

/* On the chip, too. What the port modes have edited is taken back: running is what --load would
 * have made of the file. */
TEST_F(StartConfigured, RunningIsTheFileOverTheFactorySettings)
{
    write_file(MODES_FILE);
    running_.ports[4].vid = 77;
    running_.vlanPortType[4] = SW_Vlan_Port_Type_CUSTOM;
    start(path_);
    EXPECT_EQ(chip_.ports[SW_Chip_Ports[4]][7], 1);
    expected_ = defaults_;
    ASSERT_TRUE(LoadSwitchConfigFile(path_.c_str(), &expected_));
    EXPECT_TRUE(same(running_, expected_));
    EXPECT_TRUE(applied_is_running());
}

TEST_F(StartConfigured, NoBannerShowsForAFileWithAllItsKeys)
{
    defaults_.ports[1].vid = 5;
    write_file(StartupFileText(defaults_));
    start(path_);
    EXPECT_EQ(banners(), "");
}

TEST_F(StartConfigured, AFileThatCannotBeLoadedMeansTheFactorySettings)
{
    write_file(MODES_FILE);
    start(path_);
    write_file(BAD_ENTRY_FILE);
    EXPECT_EQ(start(path_), BAD_ENTRY_LINE + load_line("Failed") +
                                "Switch: Default settings usedSwitch: Configure: Ok\n" +
                                BAD_ENTRY_LINE);
    EXPECT_TRUE(same(running_, defaults_));
    EXPECT_TRUE(applied_is_running());
    EXPECT_EQ(chip_.global[4], 0x0400);
    EXPECT_EQ(chip_.ports[SW_Chip_Ports[1]][7], 1);
    EXPECT_EQ(vlans_on_chip(), "");
}

/* The PHY of LAN answers nobody. */
TEST_F(StartConfigured, AWriteThatFailsStopsNothing)
{
    write_file(MODES_FILE);
    ASSERT_TRUE(Sim_Faults_Add(&faults_, {SIM_FAULT_FAIL, 1, SIM_FOREVER, 1, SIM_ANY}));
    EXPECT_EQ(start(path_), load_line("Ok") + "Switch: ...Set Port LAN Auto Mode! Error:1\n"
                                              "Switch: Configure: Failed\n");
    EXPECT_EQ(chip_.ports[SW_Chip_Ports[1]][7], 10);
    EXPECT_EQ(tag_on_chip(20, 2), SW_Member_Tag_TAGGED);
    EXPECT_TRUE(applied_is_running());
}

class Save : public Commands
{
protected:
    std::string save(const std::string &path)
    {
        return printed([&] { result_ = SW_Save_Running_Config(&control_, path.c_str()); });
    }

    bool result_ = false;
};

TEST_F(Save, WritesTheRunningConfigurationToTheGivenPath)
{
    const std::string other = folder_.path() + "/other.ini";
    write_file(PARTIAL_FILE);
    running_ = defaults_;
    EXPECT_EQ(save(other), "Save to \"" + other + "\" - Ok\n");
    EXPECT_TRUE(result_);
    EXPECT_EQ(folder_.read("other.ini"), StartupFileText(defaults_));
    EXPECT_EQ(folder_.read(FILE_NAME), PARTIAL_FILE);
}

TEST_F(Save, FailureChangesNothing)
{
    running_ = defaults_;
    EXPECT_EQ(save(missing_), "Save to \"" + missing_ + "\" - Failed\n");
    EXPECT_FALSE(result_);
    EXPECT_TRUE(same(running_, defaults_));
}

TEST_F(Commands, FactorySettingsReplaceTheRunningConfigurationOnly)
{
    define_vlan(&running_, 10);
    running_.ports[3].vid = 9;
    running_.accessWords[2] = 5;
    define_vlan(&applied_, 10);
    const SW_Config applied_before = applied_;
    EXPECT_EQ(printed([&] { SW_Set_Factory_Settings(&control_); }), "Switch: Factory Settings\n");
    EXPECT_TRUE(same(running_, defaults_));
    EXPECT_TRUE(same(applied_, applied_before));
    EXPECT_EQ(take_access_count(), 0U);
}

class State : public Commands
{
protected:
    /* "A" for not applied, "S" for not saved; the same whatever the flags are before. */
    std::string state()
    {
        std::string marks[2];
        reader_lines_ = printed([&] {
            for (const bool before : {false, true}) {
                bool not_applied = before;
                bool not_saved = before;
                SW_Get_Config_State(&control_, &not_applied, &not_saved);
                marks[before] = std::string(not_applied ? "A" : "") + (not_saved ? "S" : "");
            }
        });
        EXPECT_EQ(marks[0], marks[1]);
        return marks[0];
    }

    void use_defaults_everywhere()
    {
        running_ = defaults_;
        applied_ = defaults_;
        write_file(StartupFileText(defaults_));
    }

    std::string reader_lines_;
};

TEST_F(State, EqualConfigurationsGiveNoMark)
{
    use_defaults_everywhere();
    EXPECT_EQ(state(), "");
    EXPECT_EQ(reader_lines_, "");
    EXPECT_TRUE(same(startup_image_, defaults_));
}

TEST_F(State, FactorySettingsOverOtherValuesGiveBothMarks)
{
    running_ = defaults_;
    running_.ports[1].vid = 10;
    applied_ = running_;
    write_file(StartupFileText(running_));
    EXPECT_EQ(state(), "");
    printed([&] { SW_Set_Factory_Settings(&control_); });
    EXPECT_EQ(state(), "AS");
}

TEST_F(State, SaveTakesTheSavedMarkAway)
{
    use_defaults_everywhere();
    running_.ports[1].vid = 10;
    EXPECT_EQ(state(), "AS");
    printed([&] { SW_Save_Running_Config(&control_, path_.c_str()); });
    EXPECT_EQ(state(), "A");
}

TEST_F(State, ApplyTakesTheAppliedMarkAwayEvenWhenItFails)
{
    set_custom_defaults(); /* the modes of such ports edit nothing */
    running_.maxFrameSize = SW_Max_Frame_Size_1522;
    write_file(StartupFileText(running_));
    EXPECT_EQ(state(), "A");
    /* no driver is loaded */
    EXPECT_EQ(printed([&] { SW_Apply_Changes(&control_, true, true); }),
              "Switch: ...Set Max Frame Size! Error:1\n"
              "Switch: Max Frame Size: 1632->1522\n"
              "Switch: Apply Changes - Failed\n");
    EXPECT_EQ(state(), "");
}

TEST_F(State, EveryByteOfTheRecordCounts)
{
    use_defaults_everywhere();
    for (const size_t place : {size_t{0}, sizeof(SW_Config) / 2, sizeof(SW_Config) - 1}) {
        auto *bytes = reinterpret_cast<unsigned char *>(&running_);
        bytes[place] ^= 1;
        EXPECT_EQ(state(), "AS") << place;
        bytes[place] ^= 1;
        EXPECT_EQ(state(), "");
    }
}

TEST_F(State, FileThatCannotBeLoadedNeverCountsAsNotSaved)
{
    use_defaults_everywhere();
    control_.startupPath = missing_.c_str();
    running_.ports[1].vid = 10;
    EXPECT_EQ(state(), "A");
    applied_ = running_;
    EXPECT_EQ(state(), "");
}

TEST_F(State, BadEntryIsShownAtEveryCheckAndNeverCountsAsNotSaved)
{
    running_ = defaults_;
    applied_ = defaults_;
    write_file(BAD_ENTRY_FILE);
    EXPECT_EQ(state(), "");
    EXPECT_EQ(reader_lines_, std::string(BAD_ENTRY_LINE) + BAD_ENTRY_LINE); /* two checks */
    EXPECT_EQ(startup_image_.ports[1].vid, 10);
}

TEST_F(State, ImageKeepsWhatTheFileNoLongerHas)
{
    use_defaults_everywhere();
    startup_image_.ports[1].vid = 99;
    write_file(PARTIAL_FILE);
    startup_image_.ports[4].vid = 44;
    running_ = startup_image_;
    running_.maxFrameSize = 1;
    running_.ports[1].vid = 10;
    applied_ = running_;
    EXPECT_EQ(state(), "");
    EXPECT_EQ(startup_image_.ports[4].vid, 44);
}

TEST_F(State, FileIsReadAfreshEachTime)
{
    use_defaults_everywhere();
    EXPECT_EQ(state(), "");
    write_file(PARTIAL_FILE);
    EXPECT_EQ(state(), "S");
    write_file(StartupFileText(defaults_));
    EXPECT_EQ(state(), "");
}

} // namespace
