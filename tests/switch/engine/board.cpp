#include "tests/switch/engine/board.h"

#include "switch/config/keywords.h"
#include "switch/engine/bring_up.h"

#include <cstring>
#include <utility>

namespace
{

constexpr Sim_Placement ON_THE_BUS = {SIM_DIRECT, 16};

void keep_wait(void *context, uint32_t microseconds)
{
    static_cast<std::vector<uint32_t> *>(context)->push_back(microseconds);
}

} // namespace

Board::Board()
    : running_{}, applied_{}, startup_image_{}, device_image_{}, device_{},
      sys_config_{}, control_{.running = &running_,
                              .applied = &applied_,
                              .startupImage = &startup_image_,
                              .deviceImage = &device_image_,
                              .startupPath = "",
                              .device = &device_,
                              .sysConfig = &sys_config_},
      seam_{}, faults_{}, recorder_{}, real_wait_(SW_Install_Wait({keep_wait, &waits_}))
{
    Sim_Chip_Init(&chip_, Sim_Board_Chip(), ON_THE_BUS);
    EXPECT_TRUE(Sim_Seam_Install(&seam_, &chip_));
    EXPECT_TRUE(Sim_Faults_Install(&faults_));
    EXPECT_TRUE(Sim_Recorder_Install(&recorder_));
}

Board::~Board()
{
    EXPECT_TRUE(Sim_Layer_Remove(&recorder_.layer));
    EXPECT_TRUE(Sim_Layer_Remove(&faults_.layer));
    EXPECT_TRUE(Sim_Layer_Remove(&seam_));
    SW_Install_Wait(real_wait_);
}

void Board::bring_up()
{
    EXPECT_EQ(SW_Init_Quiet(&control_), 0);
    recorder_.records.clear();
    waits_.clear();
}

void Board::set_custom_defaults()
{
    SetSwitchConfigDefaults(&running_);
    for (uint32_t &type : running_.vlanPortType) {
        type = SW_Vlan_Port_Type_CUSTOM;
    }
    applied_ = running_;
}

void Board::use_chip(uint16_t identifier)
{
    for (const Sim_Chip_Row &row : Sim_Chip_Rows()) {
        if (row.identifier == identifier) {
            Sim_Chip_Init(&chip_, row, ON_THE_BUS);
        }
    }
    ASSERT_EQ(chip_.row.identifier, identifier);
}

bool Board::applied_is_running() const
{
    return std::memcmp(&applied_, &running_, sizeof running_) == 0;
}

Vlan_Table_Entry *define_vlan(SW_Config *config, int vid)
{
    SW_Vlan_Entry &entry = config->vlans[vid];
    entry.vtu.vid = static_cast<uint16_t>(vid);
    for (const int chip_port : SW_Chip_Ports) {
        entry.vtu.memberTagP[chip_port] = SW_Member_Tag_NONE;
    }
    entry.defined = 1;
    config->vlanEntryCount++;
    return &entry.vtu;
}

std::string Board::vlans_on_chip() const
{
    std::string vids;
    for (int vid = 0; vid < SIM_VLANS; ++vid) {
        if (chip_.vlans.entries[vid].valid) {
            vids += vids.empty() ? "" : " ";
            vids += std::to_string(vid);
        }
    }
    return vids;
}

std::string Board::take_trace()
{
    std::string trace;
    for (const MDIO_Record &record : std::exchange(recorder_.records, {})) {
        char line[SIM_TRACE_LINE];
        Sim_Trace_Line(record, line);
        trace += line;
        trace += '\n';
    }
    return trace;
}

size_t Board::take_access_count()
{
    return std::exchange(recorder_.records, {}).size();
}
