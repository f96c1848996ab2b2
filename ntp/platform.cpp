#include "ntp/platform.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <pthread.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{

time_t system_now()
{
    return time(nullptr);
}

bool set_system_clock(time_t seconds)
{
    timeval value{};
    value.tv_sec = seconds;
    return settimeofday(&value, nullptr) == 0;
}

void sleep_seconds(uint32_t seconds)
{
    unsigned left = seconds;
    while (left > 0) {
        left = sleep(left);
    }
}

uint32_t resolve_server(const char *server)
{
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(server, nullptr, &hints, &found) != 0) {
        return 0;
    }
    const auto *first = reinterpret_cast<const sockaddr_in *>(found->ai_addr);
    const uint32_t address = first->sin_addr.s_addr;
    freeaddrinfo(found);
    return address;
}

int open_udp_socket()
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM, 0);
    /* select() cannot watch a descriptor of FD_SETSIZE or more. */
    if (descriptor >= FD_SETSIZE) {
        close(descriptor);
        return -1;
    }
    if (descriptor >= 0) {
        /* Non-blocking alone: other status flags are not kept, which is meant. */
        fcntl(descriptor, F_SETFL, O_NONBLOCK);
    }
    return descriptor;
}

int send_packet(int socket, uint32_t address, const NTP_Packet &packet)
{
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(NTP_PORT);
    server.sin_addr.s_addr = address;
    return static_cast<int>(sendto(socket, packet.data(), packet.size(), 0,
                                   reinterpret_cast<const sockaddr *>(&server), sizeof server));
}

bool wait_readable(int socket, uint32_t microseconds)
{
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socket, &readable);
    timeval limit{};
    limit.tv_usec = static_cast<suseconds_t>(microseconds);
    return select(socket + 1, &readable, nullptr, nullptr, &limit) > 0;
}

int receive_packet(int socket, NTP_Packet *packet)
{
    /* MSG_TRUNC: the real length, so that a longer datagram is not taken for one that fits. */
    return static_cast<int>(recv(socket, packet->data(), packet->size(), MSG_TRUNC));
}

void close_socket(int socket)
{
    close(socket);
}

int start_thread(void *(*function)(void *), void *argument)
{
    pthread_t thread{};
    return pthread_create(&thread, nullptr, function, argument);
}

const NTP_Platform *current = &NTP_System_Platform;

} // namespace

const NTP_Platform NTP_System_Platform = {
    .now = system_now,
    .setClock = set_system_clock,
    .sleepSeconds = sleep_seconds,
    .resolve = resolve_server,
    .openSocket = open_udp_socket,
    .sendPacket = send_packet,
    .waitReadable = wait_readable,
    .receivePacket = receive_packet,
    .closeSocket = close_socket,
    .startThread = start_thread,
};

const NTP_Platform &NTP_Current_Platform()
{
    return *current;
}

void NTP_Set_Platform(const NTP_Platform *platform)
{
    current = platform;
}
