#include "tests/support/hook_faults.h"

#include <cstdlib>

Hook_Faults *Hook_Faults::current_ = nullptr;

Hook_Faults::Hook_Faults(SW_Hooks *hooks) : hooks_(hooks), before_(*hooks)
{
    if (current_ != nullptr) {
        std::abort();
    }
    current_ = this;
    hooks->readRegister = read;
    hooks->writeRegister = write;
}

Hook_Faults::~Hook_Faults()
{
    *hooks_ = before_;
    current_ = nullptr;
}

void Hook_Faults::break_calls(size_t first, size_t count)
{
    calls_ = 0;
    first_ = first;
    count_ = count;
}

bool Hook_Faults::next_is_broken()
{
    const size_t call = calls_++;
    return call >= first_ && call - first_ < count_;
}

int Hook_Faults::read(SW_Device *device, uint32_t address, uint32_t number, uint32_t *value)
{
    return current_->next_is_broken()
               ? 0
               : current_->before_.readRegister(device, address, number, value);
}

int Hook_Faults::write(SW_Device *device, uint32_t address, uint32_t number, uint32_t value)
{
    return current_->next_is_broken()
               ? 0
               : current_->before_.writeRegister(device, address, number, value);
}
