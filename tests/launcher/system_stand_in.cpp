#include "tests/launcher/system_stand_in.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <syslog.h>
#include <utility>

namespace
{

std::vector<std::string> journal;
std::function<void()> record_function;

} // namespace

std::vector<std::string> take_system_calls()
{
    return std::exchange(journal, {});
}

void on_record(std::function<void()> function)
{
    record_function = std::move(function);
}

extern "C" {

void openlog(const char *ident, int options, int facility)
{
    journal.push_back("openlog " + std::string(ident) + " " + std::to_string(options) + " " +
                      std::to_string(facility));
}

void syslog(int priority, const char *format, ...)
{
    char text[20000];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    journal.push_back("syslog " + std::to_string(priority) + " " + text);
    if (record_function) {
        record_function();
    }
}

void closelog()
{
    journal.push_back("closelog");
}

int system(const char *command)
{
    journal.push_back("system " + std::string(command));
    return 0;
}
}
