#pragma once

#include "switch/chip/device.h"

/*
 * Holds one lock of the device record while it lives: taken with a time-out of 10, given back when
 * it was taken. Without a take hook every lock is taken at once.
 */
class Held_Lock
{
public:
    Held_Lock(SW_Device *device, SW_Lock_Index index)
        : device_(device), lock_(device->locks[index]),
          taken_(device->hooks.lockTake == nullptr || device->hooks.lockTake(lock_, TIME_OUT) != 0)
    {
    }
    ~Held_Lock()
    {
        if (taken_ && device_->hooks.lockGive != nullptr) {
            device_->hooks.lockGive(lock_);
        }
    }
    Held_Lock(const Held_Lock &) = delete;
    Held_Lock &operator=(const Held_Lock &) = delete;

    bool taken() const { return taken_; }

private:
    static constexpr uint32_t TIME_OUT = 10;

    SW_Device *device_;
    SW_Lock lock_;
    bool taken_;
};

/* Fills the record's locks. False when the create hook gives none; those created before stay. */
bool Lock_Create_All(SW_Device *device);

/* Hands every created lock to the delete hook, when there is one. */
void Lock_Delete_All(SW_Device *device);
