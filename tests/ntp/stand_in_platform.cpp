#include "tests/ntp/stand_in_platform.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

namespace
{

Stand_In_Platform *machine;

std::string dotted(uint32_t address)
{
    char text[INET_ADDRSTRLEN];
    return inet_ntop(AF_INET, &address, text, sizeof text);
}

time_t now()
{
    return machine->clock;
}

bool set_clock(time_t seconds)
{
    machine->journal.push_back("set " + std::to_string(seconds));
    if (!machine->clockRefused) {
        machine->clock = seconds;
    }
    return !machine->clockRefused;
}

void sleep_seconds(uint32_t seconds)
{
    machine->journal.push_back("sleep " + std::to_string(seconds));
    machine->sleeps.push_back(seconds);
    machine->clock += seconds;
    machine->onSleep(machine->sleeps.size() - 1);
}

uint32_t resolve(const char *server)
{
    machine->journal.push_back("resolve " + std::string(server));
    return machine->address;
}

int open_socket()
{
    machine->journal.push_back("open");
    return machine->socket;
}

int send_packet(int socket, uint32_t address, const NTP_Packet &packet)
{
    machine->journal.push_back("send " + std::to_string(socket) + " " + dotted(address));
    machine->request = packet;
    machine->current = machine->exchange();
    return machine->current.sent;
}

bool wait_readable(int socket, uint32_t microseconds)
{
    machine->journal.push_back("wait " + std::to_string(socket) + " " +
                               std::to_string(microseconds));
    return machine->current.readable;
}

int receive_packet(int socket, NTP_Packet *packet)
{
    machine->journal.push_back("receive " + std::to_string(socket));
    const uint32_t seconds = htonl(machine->current.seconds);
    memcpy(packet->data() + NTP_TRANSMIT_TIMESTAMP, &seconds, sizeof seconds);
    return machine->current.received;
}

void close_socket(int socket)
{
    machine->journal.push_back("close " + std::to_string(socket));
}

int start_thread(void *(*function)(void *), void *argument)
{
    machine->threadFunction = function;
    machine->threadArgument = argument;
    machine->onStart();
    return machine->threadResult;
}

const NTP_Platform PLATFORM = {
    .now = now,
    .setClock = set_clock,
    .sleepSeconds = sleep_seconds,
    .resolve = resolve,
    .openSocket = open_socket,
    .sendPacket = send_packet,
    .waitReadable = wait_readable,
    .receivePacket = receive_packet,
    .closeSocket = close_socket,
    .startThread = start_thread,
};

} // namespace

Stand_In_Platform::Stand_In_Platform()
{
    machine = this;
    NTP_Set_Platform(&PLATFORM);
}

Stand_In_Platform::~Stand_In_Platform()
{
    NTP_Set_Platform(&NTP_System_Platform);
    machine = nullptr;
}
