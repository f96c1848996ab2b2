#pragma once

#include "switch/engine/control.h"

#include <cstdint>

/*
 * The menus in which the operator changes the running configuration, and looks at it and at the
 * chip. Nothing reaches the chip but by their key "a". Each returns when it is left with "0", with
 * "00", which sets *forceExit to 1 as well, or at the end of input, which does not. With *forceExit
 * set it returns at once. Single-threaded.
 */
void Vtu_Setting_Menu(SW_Control *control, uint32_t *forceExit);   /* the VLAN table's entries */
void Qos_Setting_Menu(SW_Control *control, uint32_t *forceExit);   /* rates, priorities, classes */
void Vlan_Setting_Menu(SW_Control *control, uint32_t *forceExit);  /* the ports' VLAN settings */
void Ports_Setting_Menu(SW_Control *control, uint32_t *forceExit); /* LAN's and WAN's auto mode */
