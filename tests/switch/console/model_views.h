#pragma once

#include "tests/switch/console/console_model.h"

/* What the console prints of a state of the model, written from the layouts of the tables. The
 * device views take the chip's state. */
std::string shown_frame_size(const Model_State &state);
std::string shown_ports_status(const Model_State &chip); /* header and rows */
std::string shown_vlan_row(const Model_State &state, int port);
std::string shown_vlan_rows(const Model_State &state); /* header and rows */
std::string shown_qos_rows(const Model_State &state);  /* header and rows */
std::string shown_vtu_rows(const Model_State &state);  /* header and rows, or that there are none */
std::string shown_cos_tables(const Model_State &state);
std::string shown_summary(const Model_State &state);

/* Keys "p" and "c" of the full main menu, key "p" of the VLAN menu. */
std::string shown_device_status(const Model_State &chip);
std::string shown_running_config(const Model_State &running);
std::string shown_vlan_status(const Model_State &chip);
