#include "bench/config/config_baselines.h"
#include "bench/config/pair_texts.h"
#include "switch/config/model.h"
#include "switch/config/reader.h"
#include "switch/config/writer.h"
#include "tests/support/heap_count.h"
#include "tests/support/startup_file.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr size_t PAIRS = 114848;

SW_Config record;
SW_Config other;

/*
 * Reader and writer beside what they are held against. The ratio of two lines is what counts:
 *   Load and TightScan, Load and InihFile or InihText, LoadShuffled and InihShuffled, Save and
 *   OneWrite, Compare and Memcmp.
 * Files are in memory, so that no disk is measured. All of them hold the same 114,848 pairs.
 */

/* The file with all VLANs, in memory and as a file: as saved, with one pair a line, with the pairs
 * of each section in random order, and without a blank around "=": the last two are not as the
 * reader expects them. */
struct Files {
    std::string text;
    std::string path;
    std::string lines;
    std::string linesPath;
    std::string shuffled;
    std::string shuffledPath;
    std::string tight;
    std::string tightPath;
    std::string smallestPath; /* of a file with one pair */
    std::string savePath;
};

void write_file(const std::string &path, const std::string &text)
{
    FILE *file = fopen(path.c_str(), "w");
    if (file == nullptr || fwrite(text.data(), 1, text.size(), file) != text.size() ||
        fclose(file) != 0) {
        abort();
    }
}

std::string without_blanks(const std::string &text)
{
    std::string tight;
    for (size_t at = 0; at < text.size(); at++) {
        const bool equals = text.compare(at, 3, " = ") == 0;
        tight += equals ? '=' : text[at];
        at += equals ? 2 : 0;
    }
    return tight;
}

Files make_files()
{
    char folder[] = "/dev/shm/bench_config_XXXXXX";
    if (mkdtemp(folder) == nullptr) {
        abort();
    }
    const std::string base = folder;
    SetAllVlans(&record);
    Files files;
    files.text = StartupFileText(record);
    files.path = base + "/all_vlans.cfg";
    files.lines = OnePairALine(files.text);
    files.linesPath = base + "/one_a_line.ini";
    files.shuffled = ShuffledPairs(files.lines);
    files.shuffledPath = base + "/shuffled.ini";
    files.tight = without_blanks(files.text);
    files.tightPath = base + "/tight.cfg";
    files.smallestPath = base + "/one_pair.cfg";
    files.savePath = base + "/saved.cfg";
    write_file(files.path, files.text);
    write_file(files.linesPath, files.lines);
    write_file(files.shuffledPath, files.shuffled);
    write_file(files.tightPath, files.tight);
    write_file(files.smallestPath, "[SW_COMMON]\nMAX_FRAME_SIZE = 1522\n");
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
    unlink(files().shuffledPath.c_str());
    unlink(files().tightPath.c_str());
    unlink(files().smallestPath.c_str());
    unlink(files().savePath.c_str());
    rmdir(files().path.substr(0, files().path.rfind('/')).c_str());
}

void set_bytes(benchmark::State &state, const std::string &text)
{
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

size_t size_of(const std::string &path)
{
    struct stat file = {};
    return stat(path.c_str(), &file) == 0 ? static_cast<size_t>(file.st_size) : 0;
}

/* What a load takes from the heap. */
Heap_Count heap_of_load(const std::string &path)
{
    ClearSwitchConfig(&other);
    ResetHeapCount();
    if (!LoadSwitchConfigFile(path.c_str(), &other)) {
        return {};
    }
    return GetHeapCount();
}

void load(benchmark::State &state, const std::string &path)
{
    const Heap_Count smallest = heap_of_load(files().smallestPath);
    const Heap_Count heap = heap_of_load(path);
    if (smallest.allocations == 0 || memcmp(&record, &other, sizeof record) != 0) {
        state.SkipWithError("the file was not read");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(LoadSwitchConfigFile(path.c_str(), &other));
    }
    set_bytes(state, files().text);
    state.counters["allocations"] = static_cast<double>(heap.allocations);
    state.counters["allocations_of_pairs"] =
        static_cast<double>(heap.allocations) - static_cast<double>(smallest.allocations);
    state.counters["heap_beyond_file"] =
        static_cast<double>(heap.peak) - static_cast<double>(size_of(path));
}

void Load(benchmark::State &state)
{
    load(state, files().path);
}
BENCHMARK(Load);

void LoadOnePairALine(benchmark::State &state)
{
    load(state, files().linesPath);
}
BENCHMARK(LoadOnePairALine);

void LoadShuffled(benchmark::State &state)
{
    load(state, files().shuffledPath);
}
BENCHMARK(LoadShuffled);

void LoadWithoutBlanks(benchmark::State &state)
{
    load(state, files().tightPath);
}
BENCHMARK(LoadWithoutBlanks);

void Parse(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            ParseSwitchConfig(files().text.c_str(), files().text.size(), &other));
    }
    set_bytes(state, files().text);
}
BENCHMARK(Parse);

void TightScan(benchmark::State &state)
{
    size_t lengths = 0;
    if (ScanPairs(files().text.c_str(), &lengths) != PAIRS) {
        state.SkipWithError("the scan missed pairs");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(ScanPairs(files().text.c_str(), &lengths));
    }
    set_bytes(state, files().text);
}
BENCHMARK(TightScan);

void inih_file(benchmark::State &state, const std::string &path)
{
    if (ReadFileWithInih(path.c_str()) != PAIRS) {
        state.SkipWithError("inih missed pairs");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadFileWithInih(path.c_str()));
    }
    set_bytes(state, files().lines);
}

void InihFile(benchmark::State &state)
{
    inih_file(state, files().linesPath);
}
BENCHMARK(InihFile);

void InihShuffled(benchmark::State &state)
{
    inih_file(state, files().shuffledPath);
}
BENCHMARK(InihShuffled);

void InihText(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadTextWithInih(files().lines.c_str()));
    }
    set_bytes(state, files().lines);
}
BENCHMARK(InihText);

void Save(benchmark::State &state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(SaveSwitchConfigFile(&record, files().savePath.c_str()));
    }
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
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 2;
    }
    files();
    benchmark::RunSpecifiedBenchmarks();
    remove_files();
    return 0;
}
