#pragma once

#include "switch/engine/control.h"

/*
 * The VLAN properties summary: an empty line, the VLANs that exist, and one line for each port with
 * its VLAN mode as its settings and the VLAN table show it, and what is unusual in its quality of
 * service. Range texts are cut at 99 characters. Prints on standard output; one thread.
 */

/* Of the running configuration. */
void SW_Print_Vlan_Properties(const SW_Control *control);

/* Of any record, such as the device image. */
void SW_Print_Vlan_Properties_Of(const SW_Config *config);
