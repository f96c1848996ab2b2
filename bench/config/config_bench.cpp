#include "bench/config/config_baselines.h"
#include "bench/config/heap_count.h"
#include "switch/config/model.h"
#include "switch/config/reader.h"
#include "switch/config/writer.h"
#include "tests/support/startup_file.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace
{

constexpr size_t PAIRS = 114848;

SW_Config record;
SW_Config other;

/* The file with all VLANs, in memory and on disk, as saved and one pair a line. */
struct Files {
    std::string text;
    std::string path;
    std::string lines;
    std::string linesPath;
    std::string savePath;
};

void write_file(const std::string &path, const std::string &text)
{
    FILE *file = fopen(path.c_str(), "w");
    if (file == nullptr || fwrite(text.data(), 1, text.size(), file) != text.size() ||
        fclose(file) != 0)
        abort();
}

Files make_files()
{
    char folder[] = "/dev/shm/bench_config_XXXXXX";
    if (mkdtemp(folder) == nullptr)
        abort();
    const std::string base = folder;
    SetAllVlans(&record);
    Files files = {StartupFileText(record), base + "/all_vlans.cfg", "", base + "/one_a_line.ini",
                   base + "/saved.cfg"};
    files.lines = OnePairALine(files.text);
    write_file(files.path, files.text);
    write_file(files.linesPath, files.lines);
    return files;
}

const Files &files()
{
    static const Files made = make_files();
    return made;
}

void remove_files()
{
    unlink(files().path.c_str());
    unlink(files().linesPath.c_str());
    unlink(files().savePath.c_str());
    rmdir(files().path.substr(0, files().path.rfind('/')).c_str());
}

void set_bytes(benchmark::State &state, const std::string &text)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void Load(benchmark::State &state, const std::string &path)
{
    ClearSwitchConfig(&other);
    ResetHeapCount();
    if (!LoadSwitchConfigFile(path.c_str(), &other) || memcmp(&record, &other, sizeof record) != 0)
        state.SkipWithError("the file was not read");
    const Heap_Count heap = GetHeapCount();
    for (auto _ : state)
        benchmark::DoNotOptimize(LoadSwitchConfigFile(path.c_str(), &other));
    set_bytes(state, files().text);
    state.counters["allocations"] = static_cast<double>(heap.allocations);
    state.counters["heap"] = static_cast<double>(heap.peak);
    state.counters["file"] = static_cast<double>(files().text.size());
}

void LoadAsWritten(benchmark::State &state)
{
    Load(state, files().path);
}
BENCHMARK(LoadAsWritten);

void LoadOnePairALine(benchmark::State &state)
{
    Load(state, files().linesPath);
}
BENCHMARK(LoadOnePairALine);

void Parse(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(
            ParseSwitchConfig(files().text.c_str(), files().text.size(), &other));
    set_bytes(state, files().text);
}
BENCHMARK(Parse);

void TightScan(benchmark::State &state)
{
    size_t lengths = 0;
    if (ScanPairs(files().text.c_str(), &lengths) != PAIRS)
        state.SkipWithError("the scan missed pairs");
    for (auto _ : state)
        benchmark::DoNotOptimize(ScanPairs(files().text.c_str(), &lengths));
    set_bytes(state, files().text);
}
BENCHMARK(TightScan);

void InihFile(benchmark::State &state)
{
    if (ReadFileWithInih(files().linesPath.c_str()) != PAIRS)
        state.SkipWithError("inih missed pairs");
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadFileWithInih(files().linesPath.c_str()));
    set_bytes(state, files().lines);
}
BENCHMARK(InihFile);

void InihText(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadTextWithInih(files().lines.c_str()));
    set_bytes(state, files().lines);
}
BENCHMARK(InihText);

void Save(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(SaveSwitchConfigFile(&record, files().savePath.c_str()));
    set_bytes(state, files().text);
}
BENCHMARK(Save);

void OneWrite(benchmark::State &state)
{
    for (auto _ : state) {
        const int file = open(files().savePath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        benchmark::DoNotOptimize(write(file, files().text.data(), files().text.size()));
        close(file);
    }
    set_bytes(state, files().text);
}
BENCHMARK(OneWrite);

void Compare(benchmark::State &state)
{
    memcpy(&other, &record, sizeof record);
    for (auto _ : state) {
        SW_Config_Changes changes = {};
        benchmark::DoNotOptimize(CompareSwitchConfig(&changes, &record, &other));
        benchmark::DoNotOptimize(changes);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Compare);

void Memcmp(benchmark::State &state)
{
    memcpy(&other, &record, sizeof record);
    for (auto _ : state) {
        benchmark::DoNotOptimize(memcmp(&record, &other, sizeof record));
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Memcmp);

} // namespace

int main(int count, char **arguments)
{
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments))
        return 2;
    files();
    benchmark::RunSpecifiedBenchmarks();
    remove_files();
    return 0;
}
