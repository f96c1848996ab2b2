#include "switch/console/input.h"

#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <unistd.h>

namespace
{

bool inputEnded = false;

/* After a read that gave nothing: whether nothing was there yet, as on a non-blocking
 * terminal, or a signal came. Waits then. */
bool wait_for_input()
{
    if (std::feof(stdin) != 0 || (errno != EAGAIN && errno != EINTR)) {
        return false;
    }
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    poll(&input, 1, -1);
    return true;
}

/* fgets would give half a line, or lose it, when the rest is not there yet. */
int next_character()
{
    int character = std::getc(stdin);
    while (character == EOF && wait_for_input()) {
        character = std::getc(stdin);
    }
    return character;
}

} // namespace

bool SW_Read_Line(char *buffer, int size)
{
    std::fflush(stdout);
    int length = 0;
    int character = 0;
    while (length < size - 1 && character != '\n' && (character = next_character()) != EOF) {
        buffer[length++] = static_cast<char>(character);
    }
    const bool failed = character == EOF && std::feof(stdin) == 0;
    inputEnded = length == 0 || failed;
    buffer[inputEnded ? 0 : length] = '\0';
    return !inputEnded;
}

bool SW_Input_Ended()
{
    return inputEnded;
}
