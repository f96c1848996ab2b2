/* How long the full main menu takes to show with a startup file of all 4,095 VLANs, beside the load
 * of that file, which showing it includes. */

#include "simulator/seam.h"
#include "switch/config/reader.h"
#include "switch/console/main_menu.h"
#include "switch/engine/wait.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace
{

SW_Config running;
SW_Config applied;
SW_Config startup_image;
SW_Config device_image;
SW_Device device;
SW_Sys_Config sys_config;
Sim_Chip chip;
Sim_Layer seam;

constexpr int ENTERS = 50;

/* The file with all VLANs, and lines for an operator who presses Enter. */
struct Files {
    Temporary_Folder folder;
    std::string startup;
    std::string enters;
};

const Files &files()
{
    static Files made;
    if (made.startup.empty()) {
        SetAllVlans(&running);
        made.startup = made.folder.write("all_vlans.cfg", StartupFileText(running));
        made.enters = made.folder.write("enters", std::string(ENTERS, '\n'));
    }
    return made;
}

/* Sends what the console prints to nowhere. */
class No_Output
{
public:
    No_Output() : saved_(dup(1))
    {
        fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, 1);
        close(nowhere);
    }
    ~No_Output()
    {
        fflush(stdout);
        dup2(saved_, 1);
        close(saved_);
    }
    No_Output(const No_Output &) = delete;
    No_Output &operator=(const No_Output &) = delete;

private:
    int saved_;
};

void no_wait(void * /*context*/, uint32_t /*microseconds*/) {}

/* An iteration shows the menu ENTERS + 1 times; the start of the console is a small part of it. */
void MenuShown(benchmark::State &state)
{
    SW_Control control = {.running = &running,
                          .applied = &applied,
                          .startupImage = &startup_image,
                          .deviceImage = &device_image,
                          .startupPath = files().startup.c_str(),
                          .device = &device,
                          .sysConfig = &sys_config};
    applied = running;
    if (freopen(files().enters.c_str(), "r", stdin) == nullptr) {
        abort();
    }
    {
        const No_Output quiet;
        for (auto _ : state) {
            rewind(stdin);
            uint32_t forceExit = 0;
            Main_Menu(&control, control.startupPath, &forceExit, false);
        }
    }
    if (memcmp(&running, &startup_image, sizeof running) != 0) {
        state.SkipWithError("the file was not read");
    }
    state.counters["menu"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * (ENTERS + 1),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(MenuShown)->Unit(benchmark::kMillisecond);

void Load(benchmark::State &state)
{
    for (auto _ : state) {
        if (!LoadSwitchConfigFile(files().startup.c_str(), &startup_image)) {
            state.SkipWithError("the file was not read");
        }
    }
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char **arguments)
{
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 2;
    }
    files();
    /* As switch_console does: the blocks of a load go back to the system after it. */
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    Sim_Chip_Init(&chip, Sim_Board_Chip(), {SIM_DIRECT, 16});
    Sim_Seam_Install(&seam, &chip);
    SW_Install_Wait({no_wait, nullptr});
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
