#include "tests/ntp/libc_stand_in.h"

#include <cstring>
#include <dlfcn.h>
#include <netdb.h>
#include <sys/time.h>
#include <unistd.h>
#include <utility>

namespace
{

std::vector<std::string> journal;
std::vector<unsigned> sleep_answers;
int settimeofday_answer = 0;

int held = 0;

const char *address_of(const addrinfo &hints)
{
    return hints.ai_family == AF_INET ? "192.0.2.8" : "2001:db8::8";
}

} // namespace

int held_addresses()
{
    return held;
}

std::vector<std::string> take_libc_calls()
{
    return std::exchange(journal, {});
}

void answer_settimeofday(int result)
{
    settimeofday_answer = result;
}

void answer_sleep(std::vector<unsigned> left)
{
    sleep_answers = std::move(left);
}

extern "C" {

int getaddrinfo(const char *name, const char *service, const addrinfo *hints, addrinfo **found)
{
    static const auto real =
        reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    const bool ours = strcmp(name, NAME_OF_BOTH_FAMILIES) == 0;
    if (ours && (hints->ai_flags & AI_NUMERICHOST)) {
        return EAI_NONAME;
    }
    const int result = real(ours ? address_of(*hints) : name, service, hints, found);
    held += result == 0 ? 1 : 0;
    return result;
}

void freeaddrinfo(addrinfo *found) noexcept
{
    static const auto real =
        reinterpret_cast<decltype(&freeaddrinfo)>(dlsym(RTLD_NEXT, "freeaddrinfo"));
    --held;
    real(found);
}

int settimeofday(const timeval *time, const struct timezone *zone) noexcept
{
    journal.push_back("settimeofday " + std::to_string(time->tv_sec) + " " +
                      std::to_string(time->tv_usec) + (zone ? " zone" : ""));
    return settimeofday_answer;
}

unsigned sleep(unsigned seconds)
{
    journal.push_back("sleep " + std::to_string(seconds));
    if (sleep_answers.empty()) {
        return 0;
    }
    const unsigned left = sleep_answers.front();
    sleep_answers.erase(sleep_answers.begin());
    return left;
}
}
