/*
 * The time client's query against a server that answers with anything. The first byte tells how the
 * machine fares (1: the name does not resolve, 2: no socket, 4: the clock is refused); then, for
 * each request, a byte (1: it cannot be sent, 2: nothing comes, otherwise a datagram comes), the
 * datagram's length, and as many of its bytes as the packet holds.
 */

#include "fuzz/target.h"
#include "ntp/client.h"
#include "ntp/platform.h"

#include <algorithm>

namespace
{

constexpr unsigned MACHINE_UNRESOLVED = 1;
constexpr unsigned MACHINE_SOCKETLESS = 2;
constexpr unsigned MACHINE_CLOCK_REFUSED = 4;
constexpr unsigned REQUEST_UNSENT = 1;
constexpr unsigned REQUEST_UNANSWERED = 2;
constexpr int SOCKET = 0;
constexpr int MOST_REQUESTS = 5;

/* What is left of the input, what the client did, and what it should do. */
struct Machine {
    const uint8_t *next;
    size_t left;
    unsigned fate;
    unsigned request; /* the one under way */
    int requests;
    int sockets;
    int clockSettings;
    time_t clock;
    bool answered;
    time_t answer;
};
Machine machine;

unsigned next_byte()
{
    if (machine.left == 0) {
        return 0;
    }
    machine.left--;
    return *machine.next++;
}

time_t now()
{
    return machine.clock;
}

bool set_clock(time_t seconds)
{
    machine.clockSettings++;
    if ((machine.fate & MACHINE_CLOCK_REFUSED) == 0) {
        machine.clock = seconds;
    }
    REQUIRE(machine.answered && seconds == machine.answer);
    return (machine.fate & MACHINE_CLOCK_REFUSED) == 0;
}

void sleep_seconds(uint32_t)
{
    abort(); /* a query does not sleep */
}

uint32_t resolve(const char *)
{
    return (machine.fate & MACHINE_UNRESOLVED) != 0 ? 0 : 0x0100007F;
}

int open_socket()
{
    if ((machine.fate & MACHINE_SOCKETLESS) != 0) {
        return -1;
    }
    machine.sockets++;
    return SOCKET;
}

int send_packet(int socket, uint32_t, const NTP_Packet &packet)
{
    REQUIRE(socket == SOCKET && packet == NTP_REQUEST && !machine.answered);
    machine.requests++;
    machine.request = next_byte();
    return (machine.request & REQUEST_UNSENT) != 0 ? -1 : static_cast<int>(packet.size());
}

bool wait_readable(int, uint32_t microseconds)
{
    REQUIRE(microseconds == 100000 && (machine.request & REQUEST_UNSENT) == 0);
    return (machine.request & REQUEST_UNANSWERED) == 0;
}

/* The bytes at 40 to 43 counted from 1900, as a time of the years 1970 to 2106. */
time_t time_of(const NTP_Packet &packet)
{
    constexpr int64_t SECONDS_1900_TO_1970 = 25567LL * 24 * 3600;
    int64_t seconds = 0;
    for (size_t place = 40; place < 44; place++) {
        seconds = seconds * 256 + packet[place];
    }
    return seconds >= SECONDS_1900_TO_1970 ? seconds - SECONDS_1900_TO_1970
                                           : seconds - SECONDS_1900_TO_1970 + (1LL << 32);
}

int receive_packet(int, NTP_Packet *packet)
{
    REQUIRE((machine.request & REQUEST_UNANSWERED) == 0);
    const size_t length = next_byte();
    const size_t given = std::min({length, packet->size(), machine.left});
    std::copy_n(machine.next, given, packet->begin());
    machine.next += given;
    machine.left -= given;
    machine.answered = length == packet->size();
    machine.answer = time_of(*packet);
    return length == 0 ? -1 : static_cast<int>(length);
}

void close_socket(int socket)
{
    REQUIRE(socket == SOCKET);
    machine.sockets--;
}

int start_thread(void *(*)(void *), void *)
{
    abort(); /* nor start a thread */
}

constexpr NTP_Platform PLATFORM = {now,          set_clock,   sleep_seconds, resolve,
                                   open_socket,  send_packet, wait_readable, receive_packet,
                                   close_socket, start_thread};

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    NTP_Set_Platform(&PLATFORM);
    machine = {};
    machine.next = data;
    machine.left = size;
    machine.fate = next_byte();
    const bool set = NTP_Time_Get("server");
    const std::string lines = caughtOutput.take();
    REQUIRE(machine.sockets == 0 && machine.requests <= MOST_REQUESTS);
    REQUIRE(machine.clockSettings == (machine.answered ? 1 : 0));
    REQUIRE(set == (machine.answered && (machine.fate & MACHINE_CLOCK_REFUSED) == 0));
    const bool asks = (machine.fate & (MACHINE_UNRESOLVED | MACHINE_SOCKETLESS)) == 0;
    REQUIRE(machine.answered || machine.requests == (asks ? MOST_REQUESTS : 0));
    REQUIRE(lines.starts_with("NTP_Time_Get remote_server-server\n"));
    REQUIRE(machine.answered == (lines.find("\nNTP: Local Time Updated: ") != lines.npos));
    return 0;
}
