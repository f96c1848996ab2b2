#pragma once

/*
 * A stand-in for the driver's load and enable operations, linked in place of the real ones: the
 * load always makes the board's chip usable, the enable step returns what a test chooses. The real
 * enable step cannot fail.
 */
extern int stand_in_enable_status;
