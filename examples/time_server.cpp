/*
 * An example of an NTP server, the smallest that a simple client (RFC 4330) takes. It serves one
 * command: in a private network, in which 127.0.0.1 is its own, it answers on port 123 while the
 * command runs, and ends with the command's exit status. On a board of one's own the machine's
 * 127.0.0.1 will do. It never answers on a real network.
 */

#include "ntp/packet.h"
#include "tests/support/private_network.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

/* Offsets of the timestamps that a client does not need, as RFC 4330, section 4, places them. */
constexpr size_t REFERENCE_TIMESTAMP = 16;
constexpr size_t ORIGINATE_TIMESTAMP = 24;
constexpr size_t RECEIVE_TIMESTAMP = 32;

constexpr unsigned NO_WARNING = 0;
constexpr unsigned SYMMETRIC_ACTIVE = 1;
constexpr unsigned SYMMETRIC_PASSIVE = 2;
constexpr unsigned SERVER = 4;
constexpr uint8_t STRATUM_PRIMARY = 1;
constexpr uint8_t PRECISION_ONE_SECOND = 0;

constexpr const char *USAGE =
    "usage: time_server [--open] [--time SECONDS] COMMAND [ARGUMENT...]\n"
    "\n"
    "Runs the command in a private network in which 127.0.0.1 serves the time over NTP.\n"
    "\n"
    "  --open          serve all of this machine on its own 127.0.0.1, without a private network\n"
    "  --time SECONDS  serve this time, in seconds since 1970, instead of the machine's\n"
    "  --help          print this text\n";

struct Options {
    bool open;
    bool fixedTime;
    time_t time;
    char **command;
};

void put_seconds(NTP_Packet *packet, size_t timestamp, time_t time)
{
    const uint32_t seconds = static_cast<uint32_t>(time) + NTP_SECONDS_1900_TO_1970;
    const uint32_t big_endian = htonl(seconds);
    memcpy(packet->data() + timestamp, &big_endian, sizeof big_endian);
}

/* RFC 4330, section 6: the version is the request's; a symmetric request gets a symmetric reply. */
NTP_Packet reply_to(const NTP_Packet &request, time_t now)
{
    constexpr size_t TIMESTAMP_SIZE = 8;
    const unsigned version = request[0] >> 3 & 7U;
    const unsigned mode = (request[0] & 7U) == SYMMETRIC_ACTIVE ? SYMMETRIC_PASSIVE : SERVER;

    NTP_Packet reply{};
    reply[0] = NTP_First_Byte(NO_WARNING, version, mode);
    reply[1] = STRATUM_PRIMARY;
    reply[2] = request[2]; /* poll interval */
    reply[3] = PRECISION_ONE_SECOND;
    memcpy(reply.data() + 12, "LOCL", 4); /* reference identifier: an uncalibrated local clock */
    memcpy(reply.data() + ORIGINATE_TIMESTAMP, request.data() + NTP_TRANSMIT_TIMESTAMP,
           TIMESTAMP_SIZE);
    put_seconds(&reply, REFERENCE_TIMESTAMP, now);
    put_seconds(&reply, RECEIVE_TIMESTAMP, now);
    put_seconds(&reply, NTP_TRANSMIT_TIMESTAMP, now);
    return reply;
}

[[noreturn]] void serve(int socket, Options options)
{
    while (true) {
        NTP_Packet request{};
        sockaddr_in client{};
        socklen_t size = sizeof client;
        const ssize_t got = recvfrom(socket, request.data(), request.size(), 0,
                                     reinterpret_cast<sockaddr *>(&client), &size);
        if (got != static_cast<ssize_t>(request.size())) {
            continue;
        }
        const NTP_Packet reply =
            reply_to(request, options.fixedTime ? options.time : time(nullptr));
        sendto(socket, reply.data(), reply.size(), 0, reinterpret_cast<const sockaddr *>(&client),
               size);
    }
}

int open_server()
{
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    local.sin_port = htons(NTP_PORT);
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (bind(descriptor, reinterpret_cast<const sockaddr *>(&local), sizeof local) != 0) {
        perror("time_server: port 123");
        return -1;
    }
    return descriptor;
}

/* Runs the command to its end; returns its exit status. */
int run_command(char **command)
{
    pid_t process = -1;
    const int result = posix_spawnp(&process, command[0], nullptr, nullptr, command, environ);
    if (result != 0) {
        fprintf(stderr, "time_server: %s: %s\n", command[0], strerror(result));
        return 1;
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}

int run(const Options &options)
{
    const Private_Network network = options.open ? Private_Network{} : enter_private_network();
    if (!network.refusal.empty()) {
        fprintf(stderr, "time_server: %s\n", network.refusal.c_str());
        return 1;
    }
    const int socket = open_server();
    if (socket < 0) {
        return 1;
    }
    /* Ends with the process. */
    std::thread(serve, socket, options).detach();
    return run_command(options.command);
}

/* False when the arguments are not of the usage. */
bool read_arguments(char **argument, Options *options)
{
    if (argument[0] && strcmp(argument[0], "--open") == 0) {
        options->open = true;
        ++argument;
    }
    if (argument[0] && strcmp(argument[0], "--time") == 0) {
        char *end = nullptr;
        options->fixedTime = true;
        options->time = argument[1] ? strtoll(argument[1], &end, 10) : 0;
        if (!end || end == argument[1] || *end != '\0') {
            return false;
        }
        argument += 2;
    }
    options->command = argument;
    return argument[0] && argument[0][0] != '-';
}

} // namespace

int main(int, char **arguments)
{
    if (arguments[1] && strcmp(arguments[1], "--help") == 0) {
        fputs(USAGE, stdout);
        return 0;
    }
    Options options{};
    if (!read_arguments(arguments + 1, &options)) {
        fprintf(stderr, "time_server: bad arguments\n%s", USAGE);
        return 2;
    }
    return run(options);
}
