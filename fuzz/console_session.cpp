/*
 * A session of an operator on the simulated board. The first byte chooses the session (1: the menu
 * of VLAN port modes, 2: the startup file is loaded first, 4: about one in twenty register accesses
 * fails); the rest is what is typed.
 */

#include "fuzz/sound_config.h"
#include "simulator/faults.h"
#include "simulator/seam.h"
#include "simulator/trace.h"
#include "switch/config/writer.h"
#include "switch/console/main_menu.h"
#include "switch/console/ranges.h"
#include "switch/engine/apply.h"
#include "switch/engine/wait.h"
#include "tests/support/input_feed.h"
#include "tests/support/memory_file.h"

namespace
{

constexpr unsigned VLAN_MODE = 1;
constexpr unsigned LOAD = 2;
constexpr unsigned FAULTS = 4;
constexpr uint32_t ONE_IN = 20;

/* All that a host of the console owns. */
struct Host {
    SW_Config running;
    SW_Config applied;
    SW_Config startupImage;
    SW_Config deviceImage;
    SW_Device device;
    SW_Sys_Config sysConfig;
    Sim_Chip chip;
    Sim_Layer seam;
    Sim_Faults faults;
};
Host host;
Sim_Recorder recorder;

/* The chip's PHYs, ports and global blocks, and the one register by which an older chip, which the
 * load looks for when nobody answers, would show itself. */
bool is_on_the_chip(const MDIO_Record &record)
{
    const int address = record.phyAddress;
    const bool isDevice = address <= 0x05 || (address >= 0x10 && address <= 0x15) ||
                          (address >= 0x1B && address <= 0x1D) ||
                          (address == 0x18 && record.registerNumber == 3);
    return isDevice && record.registerNumber < SIM_BUS_REGISTERS && record.reserved == 0 &&
           record.operation <= MDIO_WRITE && record.value <= 0xFFFF;
}

void set_up(unsigned choice)
{
    SW_Install_Wait({[](void *, uint32_t) {}, nullptr});
    host = {};
    SetSwitchConfigDefaults(&host.running);
    SetSwitchConfigDefaults(&host.applied);
    SW_Ranges = SW_INITIAL_RANGES;
    Sim_Chip_Init(&host.chip, Sim_Board_Chip(), {SIM_DIRECT, 16});
    REQUIRE(Sim_Seam_Install(&host.seam, &host.chip));
    REQUIRE(Sim_Faults_Install(&host.faults));
    if ((choice & FAULTS) != 0)
        REQUIRE(Sim_Faults_At_Random(&host.faults, choice, ONE_IN));
    REQUIRE(Sim_Recorder_Install(&recorder));
}

void take_down()
{
    REQUIRE(Sim_Layer_Remove(&recorder.layer));
    REQUIRE(Sim_Layer_Remove(&host.faults.layer));
    REQUIRE(Sim_Layer_Remove(&host.seam));
    recorder.records.clear();
}

SW_Control control_of(const std::string &startupPath)
{
    return {.running = &host.running,
            .applied = &host.applied,
            .startupImage = &host.startupImage,
            .deviceImage = &host.deviceImage,
            .startupPath = startupPath.c_str(),
            .device = &host.device,
            .sysConfig = &host.sysConfig};
}

/* A startup file with the factory settings and one VLAN. */
std::string startup_text()
{
    static FILE *file;
    static Caught_Stream written(file);
    SetSwitchConfigDefaults(&host.running);
    host.running.vlans[7].defined = 1;
    WriteSwitchConfig(&host.running, file);
    return written.take();
}

/* What was typed is read to its end, unless "0" was typed to leave. */
void require_left(std::string_view typed, const std::string &rest, uint32_t forceExit)
{
    const std::string_view read = typed.substr(0, typed.size() - rest.size());
    REQUIRE(rest.empty() || read.find('0') != read.npos);
    REQUIRE(forceExit == 0 || (forceExit == 1 && read.find("00") != read.npos));
}

void require_sound_host()
{
    for (const MDIO_Record &record : recorder.records)
        REQUIRE(is_on_the_chip(record));
    require_sound_config(host.running, Origin::OPERATOR);
    require_sound_config(host.applied, Origin::OPERATOR);
    for (const auto &text :
         {SW_Ranges.ports, SW_Ranges.vlanIds, SW_Ranges.userPrios, SW_Ranges.dscps})
        REQUIRE(memchr(text, '\0', SW_RANGE_TEXT_SIZE) != nullptr);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::string startupText = startup_text();
    const unsigned choice = size > 0 ? data[0] : 0;
    const std::string typed(data + (size > 0 ? 1 : 0), data + size);
    const Memory_File startupFile(startupText);
    SW_Control control = control_of(startupFile.path());
    uint32_t forceExit = 0;
    set_up(choice);
    Input_Feed input(typed);
    const auto menu = (choice & VLAN_MODE) != 0 ? Vlan_Main_Menu : Main_Menu;
    menu(&control, control.startupPath, &forceExit, (choice & LOAD) != 0);
    require_left(typed, input.rest(), forceExit);
    require_sound_host();
    take_down();
    REQUIRE(caughtOutput.take().find("\nMarvell Switch Control Main Menu:\n") != std::string::npos);
    return 0;
}
