#pragma once

#include "simulator/chip.h"
#include "simulator/faults.h"
#include "simulator/seam.h"
#include "simulator/trace.h"
#include "switch/engine/control.h"
#include "switch/engine/wait.h"
#include "tests/support/hook_faults.h"
#include "tests/support/output_capture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

/*
 * The engine on a board whose chip is simulated: everything that a host of the console owns, all
 * zero, register accesses recorded and open to faults, waits that only count. The chip is as after
 * power-on. Nothing outside the process is touched.
 */
class Board : public testing::Test
{
protected:
    Board();
    ~Board() override;
    Board(const Board &) = delete;
    Board &operator=(const Board &) = delete;

    /* Runs the quiet bring-up, which must succeed, and forgets its accesses and waits. */
    void bring_up();

    /* Gives running and applied the factory defaults, every port of the type that the VLAN port
     * modes leave alone. */
    void set_custom_defaults();

    /* Puts another chip on the bus, as after power-on; one of the simulator's. */
    void use_chip(uint16_t identifier);

    bool applied_is_running() const;

    /* The VLAN IDs that the chip's table holds: "10 20"; empty for none. */
    std::string vlans_on_chip() const;

    /* The register accesses since the last call, a line each: "W 14 07 0001\n". */
    std::string take_trace();

    /* How many they are. */
    size_t take_access_count();

    SW_Config running_;
    SW_Config applied_;
    SW_Config startup_image_;
    SW_Config device_image_;
    SW_Device device_;
    SW_Sys_Config sys_config_;
    SW_Control control_;
    Sim_Chip chip_;
    Sim_Layer seam_;
    Sim_Faults faults_;
    Sim_Recorder recorder_;
    std::vector<uint32_t> waits_;

private:
    SW_Wait_Handler real_wait_;
};

/* Defines the VLAN in config, the board's five ports no members; returns its entry. */
Vlan_Table_Entry *define_vlan(SW_Config *config, int vid);

/* What the call prints on standard output. */
template <class Call>
std::string printed(Call call)
{
    Output_Capture output;
    call();
    return output.finish();
}
