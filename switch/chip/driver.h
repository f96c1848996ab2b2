#pragma once

/* The whole interface of the switch driver. */

#include "switch/chip/device.h"
#include "switch/chip/load.h"
#include "switch/chip/phy.h"
#include "switch/chip/port_operations.h"
#include "switch/chip/rates.h"
#include "switch/chip/system.h"
#include "switch/chip/vlan_table.h"
