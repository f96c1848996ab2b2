#include "simulator/seam.h"
#include "simulator/trace.h"
#include "switch/chip/driver.h"
#include "tests/end_to_end/mdio/board_device.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

/*
 * What a register access costs. kernel_*: one driver field write on the kernel device beside the
 * bare calls that it makes; their ratio counts, not the times. They run on a stand-in only:
 * tools/bench_private puts one at /dev/mdio and preloads an ioctl that succeeds. simulated_*:
 * accesses answered by the simulated chip.
 */

namespace
{

constexpr uint32_t PORT = 1;

/* The machine's zero device at the node's place; a real MDIO device is never opened. */
bool is_stand_in()
{
    struct stat node = {};
    struct stat zero = {};
    return stat("/dev/mdio", &node) == 0 && stat("/dev/zero", &zero) == 0 &&
           S_ISCHR(node.st_mode) && node.st_rdev == zero.st_rdev;
}

bool bare_access(MDIO_Record *record)
{
    const int node = open("/dev/mdio", O_RDWR);
    const int answer = ioctl(node, MDIO_REQUEST, record);
    close(node);
    return answer >= 0;
}

void kernel_bare_calls(benchmark::State &state)
{
    if (!is_stand_in()) {
        state.SkipWithError("no stand-in at /dev/mdio: use tools/bench_private");
        return;
    }
    while (state.KeepRunning()) {
        MDIO_Record read = {0x11, MDIO_READ, 7, 0, 0};
        const bool read_well = bare_access(&read);
        MDIO_Record write = {0x11, MDIO_WRITE, 7, 0, (read.value & 0xF000) | 5};
        if (!bare_access(&write) || !read_well) {
            state.SkipWithError("the stand-in does not answer");
            break;
        }
    }
}
BENCHMARK(kernel_bare_calls);

void kernel_field_write(benchmark::State &state)
{
    if (!is_stand_in()) {
        state.SkipWithError("no stand-in at /dev/mdio: use tools/bench_private");
        return;
    }
    SW_Device device = board_device();
    while (state.KeepRunning()) {
        if (swSetPortVid(&device, PORT, 5) != SW_STATUS_OK) {
            state.SkipWithError("the field write failed");
            break;
        }
    }
}
BENCHMARK(kernel_field_write);

/* The simulated chip behind the seam for as long as a benchmark runs. */
class Simulation
{
public:
    explicit Simulation(Sim_Placement placement)
    {
        Sim_Chip_Init(chip.get(), Sim_Board_Chip(), placement);
        Sim_Seam_Install(&seam_, chip.get());
    }
    ~Simulation() { Sim_Layer_Remove(&seam_); }
    Simulation(const Simulation &) = delete;
    Simulation &operator=(const Simulation &) = delete;

    const std::unique_ptr<Sim_Chip> chip = std::make_unique<Sim_Chip>();

private:
    Sim_Layer seam_{};
};

void simulated_read(benchmark::State &state)
{
    const Simulation simulation({SIM_DIRECT, 16});
    uint32_t value = 0;
    while (state.KeepRunning()) {
        MDIO_Bus_Read(nullptr, 0x11, 7, &value);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(simulated_read);

void simulated_write(benchmark::State &state)
{
    const Simulation simulation({SIM_DIRECT, 16});
    while (state.KeepRunning()) {
        MDIO_Bus_Write(nullptr, 0x11, 7, 5);
    }
}
BENCHMARK(simulated_write);

/* The register accesses that an operation makes. */
double count_accesses(const std::function<void()> &operation)
{
    Sim_Counters counters = {};
    Sim_Counters_Install(&counters);
    operation();
    Sim_Layer_Remove(&counters.layer);
    return static_cast<double>(counters.reads + counters.writes);
}

void simulated_field_write(benchmark::State &state, Sim_Access_Mode mode)
{
    const Simulation simulation({mode, 16});
    SW_Sys_Config config = {};
    config.cpuPort = 3;
    config.hooks.readRegister = MDIO_Bus_Read;
    config.hooks.writeRegister = MDIO_Bus_Write;
    config.accessMode = mode == SIM_INDIRECT ? SW_ACCESS_INDIRECT : 0;
    config.address = 16;
    SW_Device device = {};
    if (swLoadDriver(&config, &device) != SW_STATUS_OK) {
        state.SkipWithError("the driver does not load");
        return;
    }
    state.counters["accesses"] = count_accesses([&device] { swSetPortVid(&device, PORT, 5); });
    while (state.KeepRunning()) {
        swSetPortVid(&device, PORT, 5);
    }
}
BENCHMARK_CAPTURE(simulated_field_write, direct, SIM_DIRECT);
BENCHMARK_CAPTURE(simulated_field_write, indirect, SIM_INDIRECT);

/* The chip's table is idle at every access. */
void simulated_vlan_entry(benchmark::State &state)
{
    const Simulation simulation({SIM_DIRECT, 16});
    SW_Device device = board_device();
    Vlan_Table_Entry entry = {};
    entry.vid = 7;
    state.counters["accesses"] = count_accesses([&] { swVtuAddEntry(&device, &entry); });
    while (state.KeepRunning()) {
        swVtuAddEntry(&device, &entry);
    }
}
BENCHMARK(simulated_vlan_entry);

} // namespace

BENCHMARK_MAIN();
