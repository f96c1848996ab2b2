#pragma once

#include "switch/engine/control.h"

#include <cstdint>

/*
 * TDM quality of service: the priority of telephony traffic, which the CPU port sends. Edits the
 * running configuration only; nothing here reads the console. The key of the default settings asks
 * for a confirmation; after a "no" it calls SW_Print_Vlan_Properties alone. One thread.
 */

/*
 * Lets every port map priorities by the user priority of the frame's tag only (IEEE 802.1Q, 6.9.4)
 * and have port priority 0, then gives the CPU port the priority prio, and prints the VLAN
 * properties. False, after "TDM prio %d out of range" and with nothing changed, for a prio above 7.
 */
bool SW_Set_Tdm_Qos(SW_Control *control, uint16_t prio);

/* Gives every port the factory's priority mapping and port priority 0, and prints the VLAN
 * properties. */
void SW_Set_Default_Tdm_Qos(SW_Control *control);
