#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ctime>

/* The NTP packet (RFC 5905, section 7.3) as far as this client uses it. */

inline constexpr size_t NTP_PACKET_SIZE = 48;
inline constexpr uint16_t NTP_PORT = 123;

/* First byte: leap indicator (2 bits), version number (3 bits), mode (3 bits). */
constexpr uint8_t NTP_First_Byte(unsigned leap, unsigned version, unsigned mode)
{
    return static_cast<uint8_t>(leap << 6 | version << 3 | mode);
}

/* Offset of the transmit timestamp's seconds word, big-endian, counted from 1900-01-01. */
inline constexpr size_t NTP_TRANSMIT_TIMESTAMP = 40;

/* From 1900-01-01 to 1970-01-01 (RFC 5905, figure 4). */
inline constexpr uint32_t NTP_SECONDS_1900_TO_1970 = 2208988800U;

using NTP_Packet = std::array<uint8_t, NTP_PACKET_SIZE>;

/* What the client sends: clock not synchronised, version 3, mode 1 (symmetric active); all other
 * fields are zero. Mode 1 is meant. */
inline constexpr NTP_Packet NTP_REQUEST = {NTP_First_Byte(3, 3, 1)};
static_assert(NTP_REQUEST[0] == 0xD9);

/* The time in seconds since 1970 that a 32-bit count of seconds since 1900 stands for. The count
 * wraps in 2036: counts below 2208988800 stand for 2036-02-07 06:28:16 and later, up to
 * 2106-02-07 06:28:15. */
time_t NTP_Seconds_To_Time(uint32_t seconds);

/* The transmit time of a reply of exactly NTP_PACKET_SIZE bytes; no other field is examined. */
time_t NTP_Transmit_Time(const NTP_Packet &reply);
