/*
 * console_long_run [LINES]: types that many random lines, a million unless told otherwise, into the
 * full menu on the simulated chip, applies, saves and loads among them, and looks at what the
 * process holds: its memory after the first 100,000 lines and after the last, its descriptors
 * before and after. Ends with 1 when the memory has grown by more than 64 KB, a descriptor is left
 * open, or fewer applies, saves or loads were done than one in 10,000 lines.
 */

#include "simulator/seam.h"
#include "switch/console/main_menu.h"
#include "switch/engine/wait.h"
#include "tests/support/input_feed.h"
#include "tests/support/random_seed.h"
#include "tests/support/startup_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/switch/console/random_lines.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace
{

constexpr int ALL_LINES = 1000000;
constexpr int FIRST_LINES = 100000; /* by then everything that is kept has been allocated */
constexpr int FEWEST_LINES = 2 * FIRST_LINES;
constexpr int LINES_PER_INPUT = 500;
constexpr long MOST_GROWTH = 64;      /* KB */
constexpr int LINES_PER_DEED = 10000; /* at the most */
constexpr int FILE_VLANS = 10;

SW_Config running;
SW_Config applied;
SW_Config startup_image;
SW_Config device_image;
SW_Device device;
SW_Sys_Config sys_config;
Sim_Chip chip;
Sim_Layer seam;

/* The memory of the process that is resident, in KB. */
long resident()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    long kilobytes = 0;
    while (status >> word && word != "VmRSS:") {
    }
    if (!(status >> kilobytes)) {
        std::perror("/proc/self/status");
        std::abort();
    }
    return kilobytes;
}

/* The open descriptors, the one that counts them among them. */
long descriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/* What the console tells that it has done, by the line that tells it. */
struct Deed {
    const char *name;
    std::string_view line;
    long times;
};
Deed deeds[] = {{"applies", "Switch: Apply Changes - Ok\n", 0},
                {"saves", "startup.cfg\" - Ok\n", 0},
                {"loads", "Switch: Load Startup Config To Running Config - Ok\n", 0}};

ssize_t count_deeds(void * /*cookie*/, const char *text, size_t size)
{
    for (Deed &deed : deeds) {
        deed.times += std::string_view(text, size).ends_with(deed.line) ? 1 : 0;
    }
    return static_cast<ssize_t>(size);
}

/* Standard output from now on: nothing is kept but the counts. */
bool count_output()
{
    stdout = fopencookie(nullptr, "w", {nullptr, count_deeds, nullptr, nullptr});
    return stdout != nullptr && std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ) == 0;
}

/* True when the lines were not idle ones. */
bool enough_done(int lines)
{
    bool enough = true;
    for (const Deed &deed : deeds) {
        std::fprintf(stderr, "%ld %s\n", deed.times, deed.name);
        enough = enough && deed.times >= lines / LINES_PER_DEED;
    }
    return enough;
}

void no_wait(void * /*context*/, uint32_t /*microseconds*/) {}

/* The chip, and a running configuration with a few VLANs. */
void prepare()
{
    Sim_Chip_Init(&chip, Sim_Board_Chip(), {SIM_DIRECT, 16});
    Sim_Seam_Install(&seam, &chip);
    SW_Install_Wait({no_wait, nullptr});
    SetSwitchConfigDefaults(&running);
    for (uint16_t vid = 1; vid <= FILE_VLANS; vid++) {
        running.vlans[vid].vtu.vid = vid;
        running.vlans[vid].defined = 1;
    }
    running.vlanEntryCount = FILE_VLANS;
    applied = running;
}

/* Types `count` lines. Left by "0", the menu is entered again; at the end it has read everything.
 */
void type_lines(SW_Control *control, Random_Lines *lines, int count)
{
    for (int left = count; left > 0; left -= LINES_PER_INPUT) {
        const Input_Feed feed(lines->next(std::min(left, LINES_PER_INPUT)));
        while (!std::feof(stdin)) {
            uint32_t force_exit = 0;
            Main_Menu(control, control->startupPath, &force_exit, false);
        }
    }
}

/* True when the run did its work and left the process as it was. */
bool run(int all)
{
    const Temporary_Folder folder;
    const std::string path = folder.write("startup.cfg", StartupFileText(running));
    SW_Control control = {.running = &running,
                          .applied = &applied,
                          .startupImage = &startup_image,
                          .deviceImage = &device_image,
                          .startupPath = path.c_str(),
                          .device = &device,
                          .sysConfig = &sys_config};
    Random_Lines lines(test_seed());
    const long open_before = descriptors();
    type_lines(&control, &lines, FIRST_LINES);
    const long first = resident();
    type_lines(&control, &lines, all - FIRST_LINES);
    const long growth = resident() - first;
    const long left_open = descriptors() - open_before;
    std::fprintf(stderr, "%d lines: %ld KB resident, grown by %ld KB (at most %ld), %ld open\n",
                 all, first + growth, growth, MOST_GROWTH, left_open);
    return enough_done(all) && growth <= MOST_GROWTH && left_open == 0;
}

} // namespace

int main(int count, char **arguments)
{
    const int all = count > 1 ? std::atoi(arguments[1]) : ALL_LINES;
    if (count > 2 || all < FEWEST_LINES) {
        std::fprintf(stderr, "usage: console_long_run [LINES], %d or more\n", FEWEST_LINES);
        return 2;
    }
    if (!count_output()) {
        std::perror("console_long_run");
        return 1;
    }
    prepare();
    const auto start = std::chrono::steady_clock::now();
    const bool same = run(all);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::fprintf(stderr, "console_long_run: %s after %.1f s\n", same ? "passed" : "FAILED",
                 taken.count());
    return same ? 0 : 1;
}
