#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <netinet/in.h>
#include <thread>
#include <vector>

/* What one request gets. The bytes other than the transmit timestamp are 0xAB. */
struct Scripted_Answer {
    size_t size = 48;           /* of the datagram; bytes beyond the 48th follow the packet */
    uint32_t seconds = 0;       /* of the transmit timestamp, since 1900 */
    int milliseconds = 0;       /* after the request */
    bool silent = false;        /* no answer at all */
    bool fromElsewhere = false; /* sent from 127.0.0.2, from a port of its own */
};

using Scripted_Answers = std::vector<Scripted_Answer>;

struct Seen_Request {
    std::vector<uint8_t> bytes;
    std::chrono::steady_clock::time_point answered; /* zero when not */
};

using Seen_Requests = std::vector<Seen_Request>;

/*
 * A UDP server on 127.0.0.1, port 123, for tests in a private network namespace: the n-th request
 * gets the n-th answer, further ones get none.
 */
class Scripted_Server
{
public:
    /* on_request runs in the server's thread for each request, before its answer. Throws
     * std::runtime_error when the port is not free. */
    explicit Scripted_Server(
        std::vector<Scripted_Answer> answers, std::function<void()> on_request = [] {});
    ~Scripted_Server();
    Scripted_Server(const Scripted_Server &) = delete;
    Scripted_Server &operator=(const Scripted_Server &) = delete;

    /* Stops the server; returns the requests in the order of their arrival. */
    Seen_Requests finish();

private:
    struct Pending {
        std::chrono::steady_clock::time_point due;
        size_t request;
        sockaddr_in client;
    };

    void serve();
    void take_request();
    void send_due_answers();
    int milliseconds_to_next() const;

    Scripted_Answers answers_;
    std::function<void()> on_request_;
    Seen_Requests requests_;
    std::vector<Pending> pending_;
    int socket_;
    int elsewhere_;
    int stop_;
    std::thread thread_;
};
