#pragma once

/*
 * Puts a clock in use that never touches the machine's: setting it prints "NTP: Dry run, clock
 * would be set to %lld\n" with the seconds since 1970, succeeds, and from then on the time client
 * reads the time that the clock would show. Until then it reads the clock in use before the call.
 * The rest of the platform stays. Has no effect while this clock is in use already.
 *
 * Not while a client thread runs; afterwards one thread at a time may use the clock.
 */
void NTP_Use_Dry_Run_Clock();
