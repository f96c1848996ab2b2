#pragma once

#include "ntp/packet.h"

#include <cstddef>
#include <cstdint>
#include <ctime>

/*
 * What the time client needs of the machine: clock, sleep, name resolution, a UDP socket, a thread.
 * All of it goes through one process-wide record of operations, so that a host can put another
 * clock in place of the machine's.
 */
struct NTP_Platform {
    /* Seconds since 1970. */
    time_t (*now)();

    /* Sets the clock to a second, with microseconds 0. False when that is refused. */
    bool (*setClock)(time_t seconds);

    /* Returns after that many seconds, signals notwithstanding. */
    void (*sleepSeconds)(uint32_t seconds);

    /* The first IPv4 address, in network byte order, of a host name or dotted address; 0 when there
     * is none. May block for as long as the resolver does. */
    uint32_t (*resolve)(const char *server);

    /* A non-blocking IPv4 UDP socket, or -1. Every number from 0 up is a valid socket. */
    int (*openSocket)();

    /* Sends one packet to the NTP port of the address (network byte order). Returns the count of
     * bytes sent; not positive on failure. */
    int (*sendPacket)(int socket, uint32_t address, const NTP_Packet &packet);

    /* True when the socket is readable, or becomes so within the time, which is below 1000000;
     * false on time-out and error, and when a signal comes first. */
    bool (*waitReadable)(int socket, uint32_t microseconds);

    /* Receives one datagram from any sender. Returns its real length, also when that exceeds the
     * packet and the rest is lost; -1 on failure. Packet bytes beyond the length are unchanged. */
    int (*receivePacket)(int socket, NTP_Packet *packet);

    void (*closeSocket)(int socket);

    /* Starts a joinable thread with default attributes, without keeping its handle. Returns 0 or
     * the error number. */
    int (*startThread)(void *(*function)(void *), void *argument);
};

/* The machine's own. */
extern const NTP_Platform NTP_System_Platform;

/* The one in use: NTP_System_Platform unless another one was set. */
const NTP_Platform &NTP_Current_Platform();

/* Puts another platform in use; the record must outlive its use. Not while a client thread runs. */
void NTP_Set_Platform(const NTP_Platform *platform);
