#include "ntp/client.h"

#include "ntp/packet.h"
#include "ntp/platform.h"

#include <cstdio>
#include <cstring>
#include <ctime>
#include <limits>

namespace
{

constexpr int ATTEMPTS = 5;
constexpr uint32_t ANSWER_MICROSECONDS = 100000;
constexpr double AUTO_UPDATE_SECONDS = 4 * 3600;
constexpr int32_t FIRST_SLEEP_EXTRA = 5;

std::atomic<int32_t> polling_period{30};

/* What ctime_r() fills. */
struct Calendar_Text {
    char text[26];
};

Calendar_Text calendar_text(time_t seconds)
{
    Calendar_Text calendar{};
    /* As ctime() does and ctime_r() need not: a changed time zone is seen. */
    tzset();
    if (!ctime_r(&seconds, calendar.text)) {
        calendar.text[0] = '\0';
    }
    return calendar;
}

/* One request and its answer; true when an answer of the right length came. */
bool ask_server(const NTP_Platform &platform, int socket, uint32_t address, time_t *seconds)
{
    if (platform.sendPacket(socket, address, NTP_REQUEST) <= 0) {
        return false;
    }
    if (!platform.waitReadable(socket, ANSWER_MICROSECONDS)) {
        return false;
    }
    NTP_Packet reply{};
    if (platform.receivePacket(socket, &reply) != static_cast<int>(reply.size())) {
        return false;
    }
    *seconds = NTP_Transmit_Time(reply);
    return true;
}

bool set_clock(const NTP_Platform &platform, time_t seconds)
{
    const bool set = platform.setClock(seconds);
    /* The calendar text ends in a line feed of its own; the empty line is meant. */
    printf("NTP: Local Time Updated: %s\n", calendar_text(platform.now()).text);
    return set;
}

bool query_server(const NTP_Settings &settings)
{
    char server[NTP_SERVER_SIZE];
    snprintf(server, sizeof server, "%.19s", settings.server);
    return NTP_Time_Get(server);
}

/* last_update moves before the query: a failed one is repeated after the full interval only. */
void update_when_due(const NTP_Settings &settings, time_t now, time_t *last_update)
{
    if (difftime(now, *last_update) > AUTO_UPDATE_SECONDS) {
        *last_update = now;
        printf("NTP: Auto Restart\n");
        const bool updated = query_server(settings);
        printf("NTP: Time Auto Update - %s\n", updated ? "Ok" : "Fail");
    }
}

void update_while_never_set(const NTP_Settings &settings, time_t now, time_t *last_update)
{
    if (!strstr(calendar_text(now).text, "1970")) {
        return;
    }
    if (query_server(settings)) {
        printf("NTP: Time Initial Update - Ok\n");
        *last_update = NTP_Current_Platform().now();
    } else {
        /* The trailing blank is meant. */
        printf("NTP: Time Initial Update - Failed \n");
    }
}

void make_pass(const NTP_Settings &settings, time_t *last_update)
{
    const NTP_Platform &platform = NTP_Current_Platform();
    printf("--->>>NTP_Thread Time ntp_remote_server-%.19s\n", settings.server);
    const time_t now = platform.now();
    update_when_due(settings, now, last_update);
    update_while_never_set(settings, now, last_update);
    platform.sleepSeconds(static_cast<uint32_t>(polling_period.load(std::memory_order_relaxed)));
}

} // namespace

bool NTP_Thread_Init(NTP_Settings *settings)
{
    const int32_t run_flag = settings->runFlag.load(std::memory_order_relaxed);
    printf(">>>NTP Thread_Init\n");
    printf(">>>NTP Thread_Init:IP=%.19s\n", settings->server);
    printf(">>>NTP Thread_Init:start=%d\n", run_flag);
    if (run_flag == 0) {
        return false;
    }
    /* Cleared before the thread exists: without the owner's setting it again, one pass. Meant. */
    settings->runFlag.store(0, std::memory_order_relaxed);
    const int result = NTP_Current_Platform().startThread(NTP_Thread_Func, settings);
    printf("--->>>NTP Tres_create %x\n", static_cast<unsigned>(result));
    return result == 0;
}

void *NTP_Thread_Func(void *settings)
{
    const NTP_Settings &shared = *static_cast<const NTP_Settings *>(settings);
    const NTP_Platform &platform = NTP_Current_Platform();
    printf("--->>>NTP_Thread_Func ip=%.19s\n", shared.server);
    printf("--->>>NTP_Thread_Func flag=%d\n", shared.runFlag.load(std::memory_order_relaxed));
    platform.sleepSeconds(
        static_cast<uint32_t>(polling_period.load(std::memory_order_relaxed) + FIRST_SLEEP_EXTRA));
    printf("--->>>NTP_Thread wake up\n");
    time_t last_update = platform.now();
    printf("--->>>NTP_Thread Time %x\n", static_cast<uint32_t>(last_update));
    do {
        make_pass(shared, &last_update);
    } while (shared.runFlag.load(std::memory_order_relaxed) != 0);
    printf(">>>>>>>>>>>>>>>>>>>>>>>>exit NTP_Thread\n");
    return nullptr;
}

bool NTP_Time_Get(const char *server)
{
    printf("NTP_Time_Get remote_server-%s\n", server);
    const NTP_Platform &platform = NTP_Current_Platform();
    const uint32_t address = platform.resolve(server);
    if (address == 0) {
        return false;
    }
    const int socket = platform.openSocket();
    if (socket < 0) {
        return false;
    }
    bool answered = false;
    time_t seconds = 0;
    for (int attempt = 0; attempt < ATTEMPTS && !answered; ++attempt) {
        answered = ask_server(platform, socket, address, &seconds);
    }
    const bool set = answered && set_clock(platform, seconds);
    platform.closeSocket(socket);
    return set;
}

bool NTP_Set_Polling_Period(int32_t seconds)
{
    if (seconds < 1 || seconds > std::numeric_limits<int32_t>::max() - FIRST_SLEEP_EXTRA) {
        return false;
    }
    polling_period.store(seconds, std::memory_order_relaxed);
    return true;
}
