#include "switch/console/input.h"

#include <cstdio>

namespace
{

bool inputEnded = false;

} // namespace

bool SW_Read_Line(char *buffer, int size)
{
    std::fflush(stdout);
    inputEnded = std::fgets(buffer, size, stdin) == nullptr;
    if (inputEnded) {
        buffer[0] = '\0';
    }
    return !inputEnded;
}

bool SW_Input_Ended()
{
    return inputEnded;
}
