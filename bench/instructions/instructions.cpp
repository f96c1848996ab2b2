/*
 * One operation, some times over, for tools/measure_instructions, which counts the instructions of
 * the whole program and takes the difference between two numbers of times: what comes before the
 * operation, and its first time, fall out.
 *
 *   bench_instructions --list                   operations, what each is counted per, and how many
 *   bench_instructions --files FOLDER           writes the files that the operations work on
 *   bench_instructions OPERATION TIMES FOLDER   runs it, with standard output to be thrown away
 */

#include "bench/config/pair_texts.h"
#include "switch/chip/driver.h"
#include "switch/config/reader.h"
#include "switch/config/writer.h"
#include "switch/console/main_menu.h"
#include "switch/range/range_lists.h"
#include "tests/end_to_end/mdio/board_device.h"
#include "tests/support/startup_file.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace
{

constexpr int PAIRS = 114848;
constexpr int32_t MAX_VID = 4095;

SW_Config record;
SW_Config other;
std::string folder;

std::string path_of(const char *name)
{
    return folder + "/" + name;
}

bool write_file(const char *name, const std::string &text)
{
    FILE *file = fopen(path_of(name).c_str(), "w");
    return file != nullptr && fwrite(text.data(), 1, text.size(), file) == text.size() &&
           fclose(file) == 0;
}

bool write_files()
{
    SetAllVlans(&record);
    const std::string all = StartupFileText(record);
    SetSwitchConfigDefaults(&record);
    return write_file("all.cfg", all) &&
           write_file("shuffled.cfg", ShuffledPairs(OnePairALine(all))) &&
           write_file("factory.cfg", StartupFileText(record));
}

void load_file(const char *name, SW_Config *config)
{
    if (!LoadSwitchConfigFile(path_of(name).c_str(), config)) {
        fprintf(stderr, "bench_instructions: %s cannot be read\n", path_of(name).c_str());
        exit(1);
    }
}

template <class Action>
void repeat(int times, const Action &action)
{
    while (times-- > 0) {
        action();
    }
}

void load(int times)
{
    repeat(times, [] { load_file("all.cfg", &record); });
}

void load_shuffled(int times)
{
    repeat(times, [] { load_file("shuffled.cfg", &record); });
}

void save(int times)
{
    load_file("all.cfg", &record);
    repeat(times, [] { SaveSwitchConfigFile(&record, path_of("saved.cfg").c_str()); });
}

void compare(int times)
{
    repeat(times, [] {
        SW_Config_Changes changes = {};
        CompareSwitchConfig(&changes, &record, &other);
    });
}

std::string odd_numbers()
{
    std::string text = "1";
    for (int32_t number = 3; number <= MAX_VID; number += 2) {
        text.append(",").append(std::to_string(number));
    }
    return text;
}

void parse_list(const std::string &text, int times)
{
    std::vector<int32_t> values;
    int32_t count = 0;
    repeat(times, [&] {
        Int_Range_To_Int_List2(text.c_str(), nullptr, false, values, count, 1, MAX_VID);
    });
}

void list_all(int times)
{
    parse_list("1-4095", times);
}

void list_odd(int times)
{
    parse_list(odd_numbers(), times);
}

void parse_vector(const std::string &text, int times)
{
    std::vector<int32_t> values;
    repeat(times, [&] { Range_Str_To_Vector(text.c_str(), values, 1, MAX_VID, false); });
}

void vector_all(int times)
{
    parse_vector("1-4095", times);
}

void vector_odd(int times)
{
    parse_vector(odd_numbers(), times);
}

/* A chip that answers every access at once. */
int answer(void * /*context*/, unsigned long /*number*/, MDIO_Record * /*record*/)
{
    return 0;
}

void field_write(int times)
{
    MDIO_Install({answer, nullptr});
    SW_Device device = board_device();
    repeat(times, [&device] { swSetPortVid(&device, 1, 5); });
}

/* The menu is shown once, and once more for each Enter. */
void show_menu(const char *startup, int times)
{
    if (!write_file("enters", std::string(static_cast<size_t>(times), '\n')) ||
        freopen(path_of("enters").c_str(), "r", stdin) == nullptr) {
        exit(1);
    }
    static SW_Config applied;
    static SW_Config device_image;
    static SW_Device device;
    static SW_Sys_Config sys_config;
    const std::string path = path_of(startup);
    MDIO_Install({answer, nullptr});
    load_file(startup, &record);
    memcpy(&applied, &record, sizeof applied);
    SW_Control control = {.running = &record,
                          .applied = &applied,
                          .startupImage = &other,
                          .deviceImage = &device_image,
                          .startupPath = path.c_str(),
                          .device = &device,
                          .sysConfig = &sys_config};
    uint32_t force_exit = 0;
    Main_Menu(&control, path.c_str(), &force_exit, false);
}

void menu_all(int times)
{
    show_menu("all.cfg", times);
}

void menu_factory(int times)
{
    show_menu("factory.cfg", times);
}

struct Operation {
    const char *name;
    const char *unit;
    int units;
    void (*run)(int times);
};

const Operation OPERATIONS[] = {
    {"load", "pair", PAIRS, load},
    {"load_shuffled", "pair", PAIRS, load_shuffled},
    {"save", "pair", PAIRS, save},
    {"compare", "record", 1, compare},
    {"list_all", "value", MAX_VID, list_all},
    {"list_odd", "value", (MAX_VID + 1) / 2, list_odd},
    {"vector_all", "value", MAX_VID, vector_all},
    {"vector_odd", "value", (MAX_VID + 1) / 2, vector_odd},
    {"menu", "display", 1, menu_all},
    {"menu_factory", "display", 1, menu_factory},
    {"field_write", "write", 1, field_write},
};

} // namespace

int main(int count, char **arguments)
{
    const std::string command = count > 1 ? arguments[1] : "";
    folder = arguments[count - 1];
    if (count == 2 && command == "--list") {
        for (const Operation &operation : OPERATIONS) {
            printf("%s %s %d\n", operation.name, operation.unit, operation.units);
        }
        return 0;
    }
    if (count == 3 && command == "--files") {
        return write_files() ? 0 : 1;
    }
    for (const Operation &operation : OPERATIONS) {
        if (count == 4 && command == operation.name) {
            operation.run(atoi(arguments[2]));
            return 0;
        }
    }
    fprintf(stderr, "usage: bench_instructions --list | --files FOLDER | OPERATION TIMES FOLDER\n");
    return 2;
}
