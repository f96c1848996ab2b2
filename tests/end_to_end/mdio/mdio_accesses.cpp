/*
 * Carries out register accesses through the driver on the kernel device, for the test beside it:
 *   read ADDRESS REGISTER          the bus read hook; prints the value
 *   write ADDRESS REGISTER VALUE   the bus write hook
 *   vid PORT VALUE                 swSetPortVid on the board's chip; prints the status
 * Numbers as strtoul takes them. The accesses are done in the order of the arguments.
 */

#include "switch/chip/driver.h"
#include "tests/end_to_end/mdio/board_device.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{

uint32_t number(const char *text)
{
    return static_cast<uint32_t>(strtoul(text, nullptr, 0));
}

int do_read(char **words)
{
    uint32_t value = 0xFFFFFFFF;
    const int answer = MDIO_Bus_Read(nullptr, number(words[1]), number(words[2]), &value);
    printf("[read %d %08x]", answer, static_cast<unsigned>(value));
    return 3;
}

int do_write(char **words)
{
    const int answer =
        MDIO_Bus_Write(nullptr, number(words[1]), number(words[2]), number(words[3]));
    printf("[write %d]", answer);
    return 4;
}

int do_vid(char **words)
{
    SW_Device device = board_device();
    printf("[vid %d]", swSetPortVid(&device, number(words[1]), number(words[2])));
    return 3;
}

constexpr struct {
    const char *name;
    int words;
    int (*act)(char **words);
} ACCESSES[] = {{"read", 3, do_read}, {"write", 4, do_write}, {"vid", 3, do_vid}};

} // namespace

int main(int count, char **words)
{
    int place = 1;
    while (place < count) {
        int used = 0;
        for (const auto &access : ACCESSES) {
            if (used == 0 && std::strcmp(words[place], access.name) == 0 &&
                count - place >= access.words) {
                used = access.act(words + place);
            }
        }
        if (used == 0) {
            return 2;
        }
        place += used;
    }
    return 0;
}
