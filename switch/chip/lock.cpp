#include "switch/chip/lock.h"

namespace
{

constexpr uint32_t INITIAL_STATE = 1;
constexpr SW_Lock PLACEHOLDER = 1;

} // namespace

bool Lock_Create_All(SW_Device *device)
{
    for (SW_Lock &lock : device->locks) {
        lock = device->hooks.lockCreate != nullptr ? device->hooks.lockCreate(INITIAL_STATE)
                                                   : PLACEHOLDER;
        if (lock == 0) {
            return false;
        }
    }
    return true;
}

void Lock_Delete_All(SW_Device *device)
{
    for (SW_Lock &lock : device->locks) {
        if (device->hooks.lockDelete != nullptr && lock != 0) {
            device->hooks.lockDelete(lock);
        }
        lock = 0;
    }
}
