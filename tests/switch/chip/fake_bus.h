#pragma once

#include "switch/chip/device.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

/*
 * A register array behind the driver's hooks that keeps an ordered trace of all accesses, fails the
 * one it is told to, and counts locks. It knows two things about a chip, each only where it is
 * told: the VLAN table engine and the command registers of indirect mode. One bus exists at a time:
 * the hooks find it in a static.
 */
class Fake_Bus
{
public:
    Fake_Bus();
    ~Fake_Bus();
    Fake_Bus(const Fake_Bus &) = delete;
    Fake_Bus &operator=(const Fake_Bus &) = delete;

    /* Hooks of this bus; with `locks`, all four lock hooks too. */
    static SW_Hooks hooks(bool locks = true);

    /* Sets every register to `value`. */
    void fill(uint16_t value);

    /* The accesses since the last call, one line each: "R 11 07 1234", "W 11 07 1234"; a failed one
     * ends in "failed" in place of a value. */
    std::string take_trace();

    std::array<std::array<uint16_t, 32>, 32> registers{};
    unsigned accesses = 0;
    unsigned fail_at = 0; /* the access of that number, counted from 1, answers false */

    /* VLAN table engine: at this address register 5 works on the table. A read of register 5 shows
     * the busy bit for as many reads after each command as `vtu_busy_reads`. */
    struct Vtu_Row {
        uint16_t database;
        std::array<uint16_t, 3> data;
    };
    int vtu_address = -1;
    unsigned vtu_busy_reads = 0;
    std::map<uint16_t, Vtu_Row> vtu;

    /* Indirect mode: the command and data registers are at this address, the registers above behind
     * them. The busy bit shows for as many reads after each command as `command_busy_reads`. */
    int command_address = -1;
    unsigned command_busy_reads = 0;

    /* Locks. Handles are 101, 102, ...; `lock_to_refuse` is not given (create) or not taken. */
    unsigned locks_created = 0;
    unsigned creations_before_refusal = 1000;
    std::vector<SW_Lock> deleted;
    SW_Lock lock_to_refuse = 0;
    std::map<SW_Lock, int> held;
    std::vector<std::string> lock_calls; /* "take 101 10", "give 101" */
    bool lock_misused = false;           /* given while not held, or taken twice */

private:
    static int read_hook(SW_Device *device, uint32_t address, uint32_t number, uint32_t *value);
    static int write_hook(SW_Device *device, uint32_t address, uint32_t number, uint32_t value);
    static SW_Lock create_hook(uint32_t initialState);
    static int delete_hook(SW_Lock lock);
    static int take_hook(SW_Lock lock, uint32_t timeOut);
    static int give_hook(SW_Lock lock);

    uint16_t load(uint32_t address, uint32_t number);
    void store(uint32_t address, uint32_t number, uint16_t value);
    void run_vtu(uint16_t command);
    void run_command(uint16_t command);
    bool fails_now(char operation, uint32_t address, uint32_t number);

    std::string trace_;
    unsigned vtu_busy_left_ = 0;
    unsigned command_busy_left_ = 0;
};

/* A device record as a load leaves it, on the current bus with all lock hooks: 16 as base address,
 * locks 101 to 110, ports `validPorts` all with PHYs, the families as given. */
SW_Device make_device(uint32_t familyA, uint32_t familyB, uint16_t validPorts = 0x3F);

/* The board's chip: 0x105. */
SW_Device make_board_device();
