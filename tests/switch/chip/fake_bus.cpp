#include "tests/switch/chip/fake_bus.h"

#include <bit>
#include <cstdio>
#include <stdexcept>

namespace
{

Fake_Bus *current = nullptr;

constexpr SW_Lock FIRST_LOCK = 101;

std::string line(char operation, uint32_t address, uint32_t number)
{
    char text[40];
    snprintf(text, sizeof text, "%c %02x %02x ", static_cast<unsigned char>(operation), address,
             number);
    return text;
}

std::string word(uint32_t value)
{
    char text[20];
    snprintf(text, sizeof text, "%04x\n", value);
    return text;
}

} // namespace

Fake_Bus::Fake_Bus()
{
    current = this;
}

Fake_Bus::~Fake_Bus()
{
    current = nullptr;
}

SW_Hooks Fake_Bus::hooks(bool locks)
{
    if (!locks) {
        return {0, read_hook, write_hook, nullptr, nullptr, nullptr, nullptr};
    }
    return {0, read_hook, write_hook, create_hook, delete_hook, take_hook, give_hook};
}

void Fake_Bus::fill(uint16_t value)
{
    for (auto &device : registers) {
        device.fill(value);
    }
}

std::string Fake_Bus::take_trace()
{
    std::string trace;
    trace.swap(trace_);
    return trace;
}

bool Fake_Bus::fails_now(char operation, uint32_t address, uint32_t number)
{
    if (address > 31 || number > 31) {
        throw std::out_of_range("access outside the bus");
    }
    trace_ += line(operation, address, number);
    if (++accesses != fail_at) {
        return false;
    }
    trace_ += "failed\n";
    return true;
}

uint16_t Fake_Bus::load(uint32_t address, uint32_t number)
{
    uint16_t value = registers[address][number];
    if (static_cast<int>(address) == vtu_address && number == 5) {
        value = static_cast<uint16_t>((value & 0x7FFFU) | (vtu_busy_left_ > 0 ? 0x8000U : 0));
        vtu_busy_left_ -= vtu_busy_left_ > 0 ? 1 : 0;
    }
    return value;
}

void Fake_Bus::store(uint32_t address, uint32_t number, uint16_t value)
{
    registers[address][number] = value;
    if (static_cast<int>(address) == vtu_address && number == 5) {
        run_vtu(value);
    }
}

void Fake_Bus::run_vtu(uint16_t command)
{
    auto &block = registers[static_cast<size_t>(vtu_address)];
    const auto vid = static_cast<uint16_t>(block[6] & 0x0FFF);
    vtu_busy_left_ = vtu_busy_reads;
    switch ((command >> 12) & 7) {
    case 1:
        vtu.clear();
        break;
    case 3:
        vtu[vid] = {static_cast<uint16_t>(command & 0x030F), {block[7], block[8], block[9]}};
        break;
    case 4: {
        auto row = vtu.upper_bound(vid);
        row = row != vtu.end() ? row : vtu.begin(); /* wraps */
        if (row == vtu.end()) {
            block[6] = 0x0FFF;
            break;
        }
        block[5] = static_cast<uint16_t>((command & 0xFC00) | row->second.database);
        block[6] = 0x1000 | row->first;
        block[7] = row->second.data[0];
        block[8] = row->second.data[1];
        block[9] = row->second.data[2];
        break;
    }
    default:
        throw std::logic_error("unknown table operation");
    }
}

void Fake_Bus::run_command(uint16_t command)
{
    auto &block = registers[static_cast<size_t>(command_address)];
    const uint32_t address = (command >> 5) & 31;
    const uint32_t number = command & 31;
    command_busy_left_ = command_busy_reads;
    switch (command & 0xFC00) {
    case 0x9400:
        store(address, number, block[1]);
        break;
    case 0x9800:
        block[1] = load(address, number);
        break;
    default:
        throw std::logic_error("unknown command word");
    }
}

int Fake_Bus::read_hook(SW_Device * /*device*/, uint32_t address, uint32_t number, uint32_t *value)
{
    Fake_Bus &bus = *current;
    if (bus.fails_now('R', address, number)) {
        return 0;
    }
    uint16_t content = 0;
    if (static_cast<int>(address) != bus.command_address) {
        content = bus.load(address, number);
    } else if (number == 0) {
        content = bus.command_busy_left_ > 0 ? 0x8000 : 0;
        bus.command_busy_left_ -= bus.command_busy_left_ > 0 ? 1 : 0;
    } else {
        content = bus.registers[address][number];
    }
    bus.trace_ += word(content);
    /* Bits above the register's sixteen are the bus's business, not the driver's. */
    *value = 0xABCD0000 | content;
    return 1;
}

int Fake_Bus::write_hook(SW_Device * /*device*/, uint32_t address, uint32_t number, uint32_t value)
{
    Fake_Bus &bus = *current;
    if (bus.fails_now('W', address, number)) {
        return 0;
    }
    bus.trace_ += word(value);
    const auto content = static_cast<uint16_t>(value);
    if (static_cast<int>(address) != bus.command_address) {
        bus.store(address, number, content);
    } else if (number == 0) {
        bus.run_command(content);
    } else {
        bus.registers[address][number] = content;
    }
    return 1;
}

SW_Lock Fake_Bus::create_hook(uint32_t initialState)
{
    Fake_Bus &bus = *current;
    if (initialState != 1 || bus.locks_created == bus.creations_before_refusal) {
        return 0;
    }
    return FIRST_LOCK + bus.locks_created++;
}

int Fake_Bus::delete_hook(SW_Lock lock)
{
    current->deleted.push_back(lock);
    return 1;
}

int Fake_Bus::take_hook(SW_Lock lock, uint32_t timeOut)
{
    Fake_Bus &bus = *current;
    bus.lock_calls.push_back("take " + std::to_string(lock) + " " + std::to_string(timeOut));
    if (lock == bus.lock_to_refuse) {
        return 0;
    }
    bus.lock_misused |= bus.held[lock]++ != 0;
    return 1;
}

int Fake_Bus::give_hook(SW_Lock lock)
{
    Fake_Bus &bus = *current;
    bus.lock_calls.push_back("give " + std::to_string(lock));
    bus.lock_misused |= bus.held[lock]-- != 1;
    return 1;
}

SW_Device make_device(uint32_t familyA, uint32_t familyB, uint16_t validPorts)
{
    SW_Device device = {};
    device.baseRegAddr = 16;
    device.validPortMask = validPorts;
    device.phyPortMask = validPorts;
    device.numberOfPorts = static_cast<uint8_t>(std::popcount(validPorts));
    device.familyA = familyA;
    device.familyB = familyB;
    device.loaded = 1;
    device.hooks = Fake_Bus::hooks();
    for (SW_Lock k = 0; k < SW_LOCK_COUNT; ++k) {
        device.locks[k] = FIRST_LOCK + k;
    }
    return device;
}

SW_Device make_board_device()
{
    SW_Device device = make_device(1U << 13, 0, 0x3F);
    device.deviceId = 0x105;
    device.cpuPort = 3;
    device.phyPortMask = 0x07;
    return device;
}
