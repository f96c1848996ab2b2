#include "tests/support/hook_faults.h"

#include <cstdlib>

Hook_Faults *Hook_Faults::current_ = nullptr;

Hook_Faults::Hook_Faults(const SW_Hooks &below) : below_(below)
{
    if (current_ != nullptr) {
        std::abort();
    }
    current_ = this;
}

Hook_Faults::~Hook_Faults()
{
    current_ = nullptr;
}

SW_Hooks Hook_Faults::hooks() const
{
    SW_Hooks replaced = below_;
    replaced.readRegister = read;
    replaced.writeRegister = write;
    return replaced;
}

void Hook_Faults::fail(unsigned first, unsigned count)
{
    calls_ = 0;
    first_ = first;
    count_ = count;
}

bool Hook_Faults::next_fails()
{
    ++calls_;
    return first_ != 0 && calls_ >= first_ && calls_ - first_ < count_;
}

int Hook_Faults::read(SW_Device *device, uint32_t address, uint32_t number, uint32_t *value)
{
    return current_->next_fails() ? 0
                                  : current_->below_.readRegister(device, address, number, value);
}

int Hook_Faults::write(SW_Device *device, uint32_t address, uint32_t number, uint32_t value)
{
    return current_->next_fails() ? 0
                                  : current_->below_.writeRegister(device, address, number, value);
}
