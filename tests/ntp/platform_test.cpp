/* The machine's own platform, without a network. */

#include "ntp/platform.h"
#include "tests/ntp/libc_stand_in.h"

#include <arpa/inet.h>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>

namespace
{

using Calls = std::vector<std::string>;

TEST(NtpPlatform, SetsWholeSecondsWithoutATimeZone)
{
    take_libc_calls();
    answer_settimeofday(0);
    EXPECT_TRUE(NTP_System_Platform.setClock(1700000000));
    EXPECT_EQ(take_libc_calls(), Calls{"settimeofday 1700000000 0"});
}

TEST(NtpPlatform, SetsTimesBeyond2038And2106)
{
    take_libc_calls();
    answer_settimeofday(0);
    EXPECT_TRUE(NTP_System_Platform.setClock(2147483648));
    EXPECT_TRUE(NTP_System_Platform.setClock(4294967295));
    EXPECT_EQ(take_libc_calls(), (Calls{"settimeofday 2147483648 0", "settimeofday 4294967295 0"}));
}

TEST(NtpPlatform, ReportsARefusedClock)
{
    answer_settimeofday(-1);
    EXPECT_FALSE(NTP_System_Platform.setClock(1));
    answer_settimeofday(0);
}

TEST(NtpPlatform, ReadsTheMachinesClock)
{
    const time_t before = time(nullptr);
    const time_t now = NTP_System_Platform.now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, time(nullptr));
}

TEST(NtpPlatform, SleepsOnAfterASignal)
{
    take_libc_calls();
    answer_sleep({20, 3});
    NTP_System_Platform.sleepSeconds(35);
    EXPECT_EQ(take_libc_calls(), (Calls{"sleep 35", "sleep 20", "sleep 3"}));
}

struct Name {
    const char *name;
    const char *server;
    const char *address;
};

void PrintTo(const Name &row, std::ostream *out)
{
    *out << row.name;
}

class NtpResolver : public testing::TestWithParam<Name>
{
};

TEST_P(NtpResolver, GivesTheFirstIpv4AddressInNetworkByteOrder)
{
    EXPECT_EQ(NTP_System_Platform.resolve(GetParam().server), inet_addr(GetParam().address));
    EXPECT_EQ(held_addresses(), 0);
}

const Name NAMES[] = {
    {"Dotted", "192.0.2.7", "192.0.2.7"},
    {"HostName", NAME_OF_BOTH_FAMILIES, "192.0.2.8"},
    {"Zero", "0.0.0.0", "0.0.0.0"},
    {"Empty", "", "0.0.0.0"},
    {"PartOutOfRange", "192.0.2.256", "0.0.0.0"},
    {"Ipv6Only", "::1", "0.0.0.0"},
};

INSTANTIATE_TEST_SUITE_P(Table, NtpResolver, testing::ValuesIn(NAMES),
                         [](const auto &row) { return row.param.name; });

int option(int socket, int name)
{
    int value = -1;
    socklen_t size = sizeof value;
    EXPECT_EQ(getsockopt(socket, SOL_SOCKET, name, &value, &size), 0);
    return value;
}

TEST(NtpSocket, IsIpv4UdpAndNonBlockingAlone)
{
    const int socket = NTP_System_Platform.openSocket();
    ASSERT_GE(socket, 0);
    EXPECT_EQ(option(socket, SO_DOMAIN), AF_INET);
    EXPECT_EQ(option(socket, SO_TYPE), SOCK_DGRAM);
    EXPECT_EQ(fcntl(socket, F_GETFL), O_RDWR | O_NONBLOCK);

    NTP_System_Platform.closeSocket(socket);
    EXPECT_EQ(fcntl(socket, F_GETFL), -1);
}

TEST(NtpSocket, MayBeNumberZero)
{
    const int input = dup(0);
    close(0);
    const int socket = NTP_System_Platform.openSocket();
    EXPECT_EQ(socket, 0);
    NTP_System_Platform.closeSocket(socket);
    EXPECT_EQ(fcntl(0, F_GETFD), -1);
    if (input >= 0) {
        dup2(input, 0);
        close(input);
    }
}

/* Puts the limit of descriptors back. */
class Descriptor_Limit
{
public:
    Descriptor_Limit() { getrlimit(RLIMIT_NOFILE, &before_); }
    ~Descriptor_Limit() { setrlimit(RLIMIT_NOFILE, &before_); }
    Descriptor_Limit(const Descriptor_Limit &) = delete;
    Descriptor_Limit &operator=(const Descriptor_Limit &) = delete;

    bool set(rlim_t limit) const
    {
        rlimit changed = before_;
        changed.rlim_cur = limit;
        return setrlimit(RLIMIT_NOFILE, &changed) == 0;
    }

private:
    rlimit before_{};
};

TEST(NtpSocket, IsRefusedWhenThereIsNoDescriptorLeft)
{
    const Descriptor_Limit limit;
    ASSERT_TRUE(limit.set(0));
    EXPECT_EQ(NTP_System_Platform.openSocket(), -1);
}

/* A number that select() cannot watch would be written past its set. */
TEST(NtpSocket, IsRefusedBeyondTheReachOfSelect)
{
    const Descriptor_Limit limit;
    if (!limit.set(FD_SETSIZE + 10)) {
        GTEST_SKIP() << "the limit of descriptors cannot be raised above " << FD_SETSIZE;
    }
    std::vector<int> taken;
    int descriptor = -1;
    while ((descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC)) < FD_SETSIZE) {
        ASSERT_GE(descriptor, 0);
        taken.push_back(descriptor);
    }
    close(descriptor);
    EXPECT_EQ(NTP_System_Platform.openSocket(), -1);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1) << "the refused socket was left open";
    for (const int one : taken) {
        close(one);
    }
}

TEST(NtpSocket, IsNotReadableWhenItIsNone)
{
    const int closed = NTP_System_Platform.openSocket();
    NTP_System_Platform.closeSocket(closed);
    EXPECT_FALSE(NTP_System_Platform.waitReadable(closed, 1000));
}

/* The rest of the time is not waited for. */
TEST(NtpSocket, IsNotReadableWhenASignalComesFirst)
{
    const int socket = NTP_System_Platform.openSocket();
    struct sigaction action {
    };
    struct sigaction before {
    };
    action.sa_handler = [](int) {};
    sigaction(SIGALRM, &action, &before);
    /* Again and again: the first may come before the wait. */
    const itimerval every_10_milliseconds{{0, 10000}, {0, 10000}};
    const itimerval none{};
    setitimer(ITIMER_REAL, &every_10_milliseconds, nullptr);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(NTP_System_Platform.waitReadable(socket, 999999));
    const auto waited = std::chrono::steady_clock::now() - start;
    setitimer(ITIMER_REAL, &none, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    NTP_System_Platform.closeSocket(socket);
    EXPECT_LT(waited, std::chrono::microseconds(999999));
}

TEST(NtpSocket, GivesNothingWhenNothingCame)
{
    const int socket = NTP_System_Platform.openSocket();
    NTP_Packet packet{};
    EXPECT_FALSE(NTP_System_Platform.waitReadable(socket, 1000));
    EXPECT_EQ(NTP_System_Platform.receivePacket(socket, &packet), -1);
    NTP_System_Platform.closeSocket(socket);
}

struct Started {
    sem_t ran;
    pthread_t thread;
};

void *note_start(void *argument)
{
    auto *started = static_cast<Started *>(argument);
    started->thread = pthread_self();
    sem_post(&started->ran);
    return started;
}

TEST(NtpPlatform, StartsAThreadThatCanBeJoined)
{
    Started started{};
    sem_init(&started.ran, 0, 0);
    ASSERT_EQ(NTP_System_Platform.startThread(note_start, &started), 0);
    while (sem_wait(&started.ran) != 0) {
    }
    void *result = nullptr;
    EXPECT_EQ(pthread_join(started.thread, &result), 0);
    EXPECT_EQ(result, &started);
    sem_destroy(&started.ran);
}

TEST(NtpPlatform, IsTheMachinesUntilAnotherIsSet)
{
    EXPECT_EQ(&NTP_Current_Platform(), &NTP_System_Platform);
    const NTP_Platform other = NTP_System_Platform;
    NTP_Set_Platform(&other);
    EXPECT_EQ(&NTP_Current_Platform(), &other);
    NTP_Set_Platform(&NTP_System_Platform);
    EXPECT_EQ(&NTP_Current_Platform(), &NTP_System_Platform);
}

} // namespace
