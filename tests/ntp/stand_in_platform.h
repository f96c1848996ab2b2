#pragma once

#include "ntp/platform.h"

#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

/* What one request meets. The defaults are an answer of the right length. */
struct Exchange {
    int sent = 48;
    bool readable = true;
    int received = 48;
    uint32_t seconds = 0;
};

/*
 * A machine that exists in the test only: sleeping moves its clock on, its server answers as the
 * test says, and every call but the clock's reading is a line of the journal. In use as the
 * client's platform from its construction to its destruction; one at a time.
 */
class Stand_In_Platform
{
public:
    Stand_In_Platform();
    ~Stand_In_Platform();
    Stand_In_Platform(const Stand_In_Platform &) = delete;
    Stand_In_Platform &operator=(const Stand_In_Platform &) = delete;

    time_t clock = 1600000000;
    bool clockRefused = false;
    uint32_t address = 0x0100007F;
    int socket = 0;
    int threadResult = 0;

    /* The next request's fate; the default is no answer. */
    std::function<Exchange()> exchange = [] { return Exchange{.readable = false}; };

    /* Runs in each sleep, with its number from 0. */
    std::function<void(size_t)> onSleep = [](size_t) {};

    /* Runs in place of the creation of a thread. */
    std::function<void()> onStart = [] {};

    std::vector<std::string> journal;
    std::vector<uint32_t> sleeps;
    NTP_Packet request{};
    void *(*threadFunction)(void *) = nullptr;
    void *threadArgument = nullptr;

    /* Of the request under way. */
    Exchange current;
};
