#include "tests/support/scripted_server.h"

#include <algorithm>
#include <poll.h>
#include <stdexcept>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace
{

using Clock = std::chrono::steady_clock;

constexpr uint8_t FILLER = 0xAB;
constexpr size_t TRANSMIT_TIMESTAMP = 40;

int bound_socket(uint32_t address, uint16_t port)
{
    sockaddr_in local{};
    local.sin_family = AF_INET;
    local.sin_addr.s_addr = htonl(address);
    local.sin_port = htons(port);
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (bind(descriptor, reinterpret_cast<const sockaddr *>(&local), sizeof local) != 0) {
        close(descriptor);
        throw std::runtime_error("the server's port is not free");
    }
    return descriptor;
}

std::vector<uint8_t> datagram(const Scripted_Answer &answer)
{
    std::vector<uint8_t> bytes(std::max(answer.size, TRANSMIT_TIMESTAMP + 4), FILLER);
    for (size_t i = 0; i < 4; ++i) {
        bytes[TRANSMIT_TIMESTAMP + i] = static_cast<uint8_t>(answer.seconds >> (24 - 8 * i));
    }
    bytes.resize(answer.size);
    return bytes;
}

} // namespace

Scripted_Server::Scripted_Server(Scripted_Answers answers, std::function<void()> on_request)
    : answers_(std::move(answers)), on_request_(std::move(on_request)),
      socket_(bound_socket(INADDR_LOOPBACK, 123)), elsewhere_(bound_socket(INADDR_LOOPBACK + 1, 0)),
      stop_(eventfd(0, EFD_CLOEXEC)), thread_([this] { serve(); })
{
}

Scripted_Server::~Scripted_Server()
{
    finish();
    close(socket_);
    close(elsewhere_);
    close(stop_);
}

Seen_Requests Scripted_Server::finish()
{
    if (thread_.joinable()) {
        eventfd_write(stop_, 1);
        thread_.join();
    }
    return requests_;
}

void Scripted_Server::serve()
{
    /* On a busy machine an answer that is late counts as none. Refused without the right to. */
    setpriority(PRIO_PROCESS, 0, -20);
    pollfd watched[] = {{socket_, POLLIN, 0}, {stop_, POLLIN, 0}};
    /* What has come before the stop is taken too, however late this thread is. */
    while (watched[1].revents == 0 || watched[0].revents != 0) {
        poll(watched, std::size(watched), milliseconds_to_next());
        if (watched[0].revents != 0) {
            take_request();
        }
        send_due_answers();
    }
}

void Scripted_Server::take_request()
{
    sockaddr_in client{};
    socklen_t size = sizeof client;
    std::vector<uint8_t> bytes(2000);
    const ssize_t got = recvfrom(socket_, bytes.data(), bytes.size(), MSG_TRUNC,
                                 reinterpret_cast<sockaddr *>(&client), &size);
    const Clock::time_point arrival = Clock::now();
    bytes.resize(static_cast<size_t>(std::max<ssize_t>(got, 0)));
    requests_.push_back({std::move(bytes), {}});
    on_request_();
    const size_t number = requests_.size() - 1;
    if (number < answers_.size() && !answers_[number].silent) {
        const std::chrono::milliseconds delay(answers_[number].milliseconds);
        pending_.push_back({arrival + delay, number, client});
    }
}

void Scripted_Server::send_due_answers()
{
    for (const Pending &one : pending_) {
        if (one.due <= Clock::now()) {
            const Scripted_Answer &answer = answers_[one.request];
            const std::vector<uint8_t> bytes = datagram(answer);
            sendto(answer.fromElsewhere ? elsewhere_ : socket_, bytes.data(), bytes.size(), 0,
                   reinterpret_cast<const sockaddr *>(&one.client), sizeof one.client);
            requests_[one.request].answered = Clock::now();
        }
    }
    std::erase_if(pending_, [this](const Pending &one) {
        return requests_[one.request].answered != Clock::time_point{};
    });
}

int Scripted_Server::milliseconds_to_next() const
{
    if (pending_.empty()) {
        return -1;
    }
    const auto next =
        std::min_element(pending_.begin(), pending_.end(),
                         [](const Pending &a, const Pending &b) { return a.due < b.due; });
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(next->due - Clock::now());
    return static_cast<int>(std::max<long long>(left.count(), 0));
}
