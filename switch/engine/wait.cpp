#include "switch/engine/wait.h"

#include <cerrno>
#include <ctime>
#include <utility>

namespace
{

constexpr uint32_t MICROSECONDS = 1000000;

void sleep_for(void * /*context*/, uint32_t microseconds)
{
    timespec left = {static_cast<time_t>(microseconds / MICROSECONDS),
                     static_cast<long>(microseconds % MICROSECONDS) * 1000};
    /* A signal must not shorten the time that the chip gets. */
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

constexpr SW_Wait_Handler SLEEP = {sleep_for, nullptr};

constinit SW_Wait_Handler current_handler = SLEEP;

} // namespace

SW_Wait_Handler SW_Install_Wait(SW_Wait_Handler handler)
{
    return std::exchange(current_handler, handler.wait != nullptr ? handler : SLEEP);
}

void SW_Wait(uint32_t microseconds)
{
    current_handler.wait(current_handler.context, microseconds);
}
