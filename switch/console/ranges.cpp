#include "switch/console/ranges.h"

SW_Range_Texts SW_Ranges = SW_INITIAL_RANGES;
