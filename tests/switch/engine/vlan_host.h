#pragma once

#include "switch/engine/control.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

/*
 * A host for the operations that edit the running configuration alone. All bytes of running are
 * 0x5A at first, so that a write to any field shows; everything else that the context points to is
 * 0xA5.
 */
class Vlan_Host
{
public:
    static constexpr int UNTOUCHED = 0x5A;

    Vlan_Host();

    SW_Config &running() { return *running_; }
    SW_Control *control() { return &control_; }
    std::unique_ptr<SW_Config> copy_of_running() const;

    /* Puts running back to all bytes 0x5A, and to the factory settings. */
    void set_untouched();
    void set_factory();

    /* Fails when anything but running was written. */
    testing::AssertionResult only_running_was_edited() const;

private:
    std::unique_ptr<SW_Config> running_;
    std::unique_ptr<SW_Config> others_[3];
    std::unique_ptr<SW_Device> device_;
    std::unique_ptr<SW_Sys_Config> sysConfig_;
    SW_Control control_;
    SW_Control controlAtFirst_;
};

/* Compares all bytes; names the first that differs. */
testing::AssertionResult SameConfig(const SW_Config &actual, const SW_Config &expected);

/* The chip's number of a port, for port indices 0 to 4. */
inline constexpr int CHIP_PORTS[] = {2, 1, 0, 4, 3};

/* Sets the tag of a port in the entries first to last. */
void SetTags(SW_Config &config, int port, int first, int last, uint8_t tag);

/* Writes text to the list of a port, without the product's routine. */
void SetList(SW_Config &config, int port, const char *text);

/* Gives a port what the default mode, and the access mode with the port's VID, edit; not its type.
 * list is the VID in decimal. */
void SetDefaultPort(SW_Config &config, int port);
void SetAccessPort(SW_Config &config, int port, const char *list);

/* first, first + 1, ... last. */
std::vector<int32_t> Numbers(int32_t first, int32_t last);
