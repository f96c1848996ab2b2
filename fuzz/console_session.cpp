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
    if ((choice & FAULTS) != 0) {
        REQUIRE(Sim_Faults_At_Random(&host.faults, choice, ONE_IN));
    }
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

/* The operator's lines as standard input, for one session. */
struct Typed {
    std::string_view left;
    bool ended;
    std::string shown; /* until the end was met */
};

ssize_t give(void *cookie, char *buffer, size_t size)
{
    Typed *const typed = static_cast<Typed *>(cookie);
    const size_t given = typed->left.copy(buffer, size);
    typed->left.remove_prefix(given);
    if (given == 0 && !typed->ended) {
        typed->ended = true;
        typed->shown = caughtOutput.take();
    }
    return static_cast<ssize_t>(given);
}

/* Runs a menu on the lines; returns how many of their bytes it has read. */
template <class Menu>
size_t run(const Menu &menu, std::string_view lines, Typed *typed)
{
    *typed = {lines, false, ""};
    stdin = fopencookie(typed, "r", {give, nullptr, nullptr, nullptr});
    REQUIRE(stdin != nullptr);
    menu();
    size_t unread = 0;
    while (fgetc(stdin) != EOF) {
        unread++;
    }
    fclose(stdin);
    return lines.size() - unread;
}

/* All is read, unless "0" was typed to leave. */
void require_left(std::string_view lines, size_t read, uint32_t forceExit)
{
    const std::string_view taken = lines.substr(0, read);
    REQUIRE(read == lines.size() || taken.find('0') != taken.npos);
    REQUIRE(forceExit == 0 || (forceExit == 1 && taken.find("00") != taken.npos));
}

void require_sound_host()
{
    for (const MDIO_Record &record : recorder.records) {
        REQUIRE(is_on_the_chip(record));
    }
    require_sound_config(host.running, Origin::OPERATOR);
    require_sound_config(host.applied, Origin::OPERATOR);
    for (const auto &text :
         {SW_Ranges.ports, SW_Ranges.vlanIds, SW_Ranges.userPrios, SW_Ranges.dscps}) {
        REQUIRE(memchr(text, '\0', SW_RANGE_TEXT_SIZE) != nullptr);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::string startupText = startup_text();
    const unsigned choice = size > 0 ? data[0] : 0;
    std::string lines(data + (size > 0 ? 1 : 0), data + size);
    lines += '\n';
    const Memory_File startupFile(startupText);
    SW_Control control = control_of(startupFile.path());
    uint32_t forceExit = 0;
    Typed typed;
    set_up(choice);
    const auto menu = (choice & VLAN_MODE) != 0 ? Vlan_Main_Menu : Main_Menu;
    const size_t read =
        run([&] { menu(&control, control.startupPath, &forceExit, (choice & LOAD) != 0); }, lines,
            &typed);
    require_left(lines, read, forceExit);
    require_sound_host();
    take_down();
    REQUIRE(typed.shown.find(" Menu:\n") != std::string::npos);
    REQUIRE(caughtOutput.take().find(" Menu:\n") == std::string::npos);
    return 0;
}
